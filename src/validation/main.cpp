// quorvanta-validate: validates the engine from the command line, and for the window of "About...".
#include "core/program_name.h"
#include "core/save_file.h"
#include "validation/data.h"
#include "validation/facts.h"
#include "validation/report.h"
#include "validation/reportpdf.h"
#include "validation/run.h"
#include "validation/silentplatform.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace quorvanta;
using namespace quorvanta::validation;

// What the program ends with.
enum ExitCode { AllPass = 0, SomeFail = 1, NotRun = 2 };

constexpr std::size_t failuresShown = 20;

constexpr const char* description =
    "Computes every reference value of Quorvanta once more with the engine that is installed, and\n"
    "compares. The values come from other programs and from publications and are part of this\n"
    "program. Without a display; takes about half a minute.\n"
    "\n"
    "Exit status: 0 if every case is within the deviation allowed, 1 if one is not, 2 if the\n"
    "validation could not be done or its report not be written.";

void SetUp(QCommandLineParser& parser) {
    parser.setApplicationDescription(description);
    parser.addOptions(
        {{"text", "Writes the report as text.", "file"},
         {"pdf", "Writes the report as PDF.", "file"},
         {"data",
          "Takes the reference values from this folder, which the report then "
          "names.",
          "folder"},
         {"write-data", "Writes the reference values into this folder, and ends.", "folder"},
         {"started-from", "Names this program file with its checksum in the report.", "file"},
         {"progress", "Tells how far the validation has come: lines \"progress 120 "
                      "5000\"."}});
    parser.addHelpOption();
    parser.addVersionOption();
}

void Print(const std::string& line) {
    std::fprintf(stdout, "%s\n", line.c_str());
    std::fflush(stdout);
}

std::vector<DataFile> DataOf(const QCommandLineParser& options) {
    return options.isSet("data") ? DataInFolder(options.value("data")) : BuiltInData();
}

void Save(const QString& path, std::string_view bytes) {
    if (!SaveFile(path.toStdString(), bytes))
        throw std::runtime_error("can't write " + path.toStdString());
}

// A line for each hundredth of the way.
Progress ProgressLines(std::size_t total) {
    return [total](std::size_t done) {
        const std::size_t step = total / 100 + 1;
        if (done % step == 0 || done == total)
            Print("progress " + std::to_string(done) + " " + std::to_string(total));
        return true;
    };
}

Progress Silence() {
    return [](std::size_t) { return true; };
}

// The first cases that fail, as the report has them.
void PrintFailures(const std::vector<Line>& document) {
    std::size_t shown = 0;
    for (const Line& line : document) {
        if (line.What != Line::Kind::Case || !line.Fails || ++shown > failuresShown)
            continue;
        Print(line.Cells[CaseCell::Name] + ": expected " + line.Cells[CaseCell::Expected] +
              ", found " + line.Cells[CaseCell::Found] + ", allowed " +
              line.Cells[CaseCell::Allowed] + ". " + line.Cells[CaseCell::Question]);
    }
    if (shown > failuresShown)
        Print("and " + std::to_string(shown - failuresShown) + " more.");
}

ExitCode Validate(const QCommandLineParser& options) {
    const std::vector<DataFile> data = DataOf(options);
    const std::vector<CaseSection> sections = ReadSections(data);
    const std::size_t total = CountCases(sections);
    if (total == 0)
        throw std::runtime_error("no reference values");
    SilentPlatform platform;
    auto results = Compute(sections, options.isSet("progress") ? ProgressLines(total) : Silence());
    Report report{FactsOf(data, options.value("data"), options.value("started-from")),
                  std::move(*results)};
    const std::vector<Line> document = Document(report);
    if (options.isSet("text"))
        Save(options.value("text"), PlainText(document));
    if (options.isSet("pdf")) {
        const QByteArray pdf = Pdf(document, FootOf(report));
        Save(options.value("pdf"), {pdf.data(), static_cast<std::size_t>(pdf.size())});
    }
    PrintFailures(document);
    Print(Summary(report));
    return report.Passes() ? AllPass : SomeFail;
}

void WriteData(const QDir& folder) {
    for (const DataFile& file : BuiltInData()) {
        const QString path = folder.filePath(QString::fromStdString(file.Name));
        if (!QDir().mkpath(QFileInfo(path).path()))
            throw std::runtime_error("can't make " + QFileInfo(path).path().toStdString());
        Save(path, file.Bytes);
    }
}

ExitCode Run(const QStringList& arguments) {
    QCommandLineParser options;
    SetUp(options);
    if (!options.parse(arguments))
        throw std::runtime_error(options.errorText().toStdString());
    if (options.isSet("help")) {
        Print(options.helpText().toStdString());
        return AllPass;
    }
    if (options.isSet("version")) {
        Print(std::string(ProgramName) + " " + ProgramVersion);
        return AllPass;
    }
    if (!options.positionalArguments().isEmpty())
        throw std::runtime_error("unexpected: " +
                                 options.positionalArguments().front().toStdString());
    if (options.isSet("write-data")) {
        WriteData(QDir(options.value("write-data")));
        return AllPass;
    }
    return Validate(options);
}

} // namespace

int main(int argc, char** argv) {
    OutliveFileSizeLimit();
    // Nothing is shown; fonts are all that the report needs of a desktop.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("quorvanta-validate"));
    try {
        return Run(QGuiApplication::arguments());
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "quorvanta-validate: %s\n", problem.what());
        return NotRun;
    }
}
