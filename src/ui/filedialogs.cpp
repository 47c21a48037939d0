#include "ui/filedialogs.h"

#include "ui/qttext.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace quorvanta {

namespace {

// From pairs of name and mask ("All Files (*.*)|*.*|...") to filters that show the name and look
// for the mask; here "*.*" would leave out names without a dot.
QStringList FiltersOf(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i] + " (" + (parts[i + 1] == "*.*" ? QString("*") : parts[i + 1]) + ")";
    return filters;
}

} // namespace

std::optional<std::string> FileDialogs::AskOpenName(QWidget* parent, const FileDialog& dialog) {
    QFileDialog window(parent);
    window.setAcceptMode(QFileDialog::AcceptOpen);
    window.setFileMode(QFileDialog::ExistingFile);
    return Ask(window, dialog);
}

std::optional<std::string> FileDialogs::AskSaveName(QWidget* parent, const FileDialog& dialog) {
    QFileDialog window(parent);
    window.setAcceptMode(QFileDialog::AcceptSave);
    window.setFileMode(QFileDialog::AnyFile);
    return Ask(window, dialog);
}

std::optional<std::string> FileDialogs::Ask(QFileDialog& window, const FileDialog& dialog) {
    if (folder_.empty())
        folder_ = FromQt(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    window.setObjectName("frmCmdialog");
    window.setOption(QFileDialog::HideNameFilterDetails);
    window.setWindowTitle(ToQt(dialog.Title));
    const QStringList filters = FiltersOf(dialog.Filter);
    window.setNameFilters(filters);
    window.selectNameFilter(filters.value(dialog.FilterIndex - 1));
    window.setDefaultSuffix(ToQt(dialog.DefaultExtension));
    window.setDirectory(QDir(ToQt(folder_)).exists() ? ToQt(folder_) : QDir::homePath());
    if (!dialog.FileName.empty())
        window.selectFile(ToQt(dialog.FileName));
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty())
        return std::nullopt;
    const QString path = window.selectedFiles().front();
    folder_ = FromQt(QFileInfo(path).absolutePath());
    return FromQt(path);
}

} // namespace quorvanta
