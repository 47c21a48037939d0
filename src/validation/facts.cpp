#include "validation/facts.h"

#include "core/program_name.h"
#include "validation/data.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <algorithm>

namespace quorvanta::validation {

namespace {

constexpr const char* dateFact = "Date";

std::string Compiler() {
#if defined(__clang__)
    return "Clang " __clang_version__;
#elif defined(__GNUC__)
    return "GCC " __VERSION__;
#elif defined(_MSC_VER)
    return "Visual C++ " + std::to_string(_MSC_FULL_VER);
#else
    return "unknown";
#endif
}

// The file with its checksum.
std::string FileFact(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return path.toStdString() + ", which can't be read";
    return QFileInfo(path).canonicalFilePath().toStdString() + ", SHA-256 " +
           hash.result().toHex().toStdString();
}

std::string DataFact(const std::vector<DataFile>& data, const QString& folder) {
    const std::string place = folder.isEmpty()
                                  ? "part of the program"
                                  : "NOT those of the program, but of " +
                                        QFileInfo(folder).canonicalFilePath().toStdString();
    return place + ", " + std::to_string(data.size()) + " files, SHA-256 " + ChecksumOf(data);
}

} // namespace

std::vector<std::pair<std::string, std::string>>
FactsOf(const std::vector<DataFile>& data, const QString& dataFolder, const QString& startedFrom) {
    std::vector<std::pair<std::string, std::string>> facts{
        {dateFact, QDateTime::currentDateTime().toString(Qt::ISODate).toStdString() + " " +
                       QDateTime::currentDateTime().timeZoneAbbreviation().toStdString()},
        {"Program", std::string(ProgramName) + " " + ProgramVersion},
        {"Program file", FileFact(QCoreApplication::applicationFilePath())}};
    if (!startedFrom.isEmpty())
        facts.emplace_back("Started from", FileFact(startedFrom));
    facts.emplace_back("Reference values", DataFact(data, dataFolder));
    facts.emplace_back("Compiler", Compiler() + ", build type " QUORVANTA_BUILD_TYPE);
    facts.emplace_back("Qt", std::string(qVersion()) + ", built with " QT_VERSION_STR);
    facts.emplace_back("Operating system",
                       (QSysInfo::prettyProductName() + ", " + QSysInfo::kernelType() + " " +
                        QSysInfo::kernelVersion())
                           .toStdString());
    facts.emplace_back("Computer",
                       (QSysInfo::machineHostName() + ", " + QSysInfo::currentCpuArchitecture() +
                        ", built for " + QSysInfo::buildAbi())
                           .toStdString());
    return facts;
}

QString FootOf(const Report& report) {
    const auto date =
        std::ranges::find(report.Facts, dateFact, &std::pair<std::string, std::string>::first);
    return QStringLiteral("Validation of %1 %2, %3")
        .arg(ProgramName, ProgramVersion,
             date == report.Facts.end() ? QString() : QString::fromStdString(date->second));
}

} // namespace quorvanta::validation
