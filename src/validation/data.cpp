#include "validation/data.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <stdexcept>

namespace quorvanta::validation {

namespace {

constexpr const char* builtInFolder = ":/validation";

std::vector<DataFile> ReadFolder(const QString& folder) {
    std::vector<DataFile> data;
    const QDir root(folder);
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const std::string name = root.relativeFilePath(path).toStdString();
        if (!IsDataFile(name))
            continue;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("can't read " + path.toStdString());
        data.push_back({name, file.readAll().toStdString()});
    }
    std::ranges::sort(data, {}, &DataFile::Name);
    return data;
}

} // namespace

std::vector<DataFile> BuiltInData() {
    return ReadFolder(builtInFolder);
}

std::vector<DataFile> DataInFolder(const QString& folder) {
    if (!QDir(folder).exists())
        throw std::runtime_error("no folder " + folder.toStdString());
    return ReadFolder(folder);
}

std::string ChecksumOf(const std::vector<DataFile>& data) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const DataFile& file : data) {
        hash.addData(QByteArray::fromStdString(file.Name) + '\n');
        hash.addData(QByteArray::fromStdString(file.Bytes));
    }
    return hash.result().toHex().toStdString();
}

} // namespace quorvanta::validation
