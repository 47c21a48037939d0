#include "ui/filedialogs.h"

#include "core/analysis_state.h"
#include "ui/qttext.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

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

// The endings that the masks ask for, in the order of the filters; none for "*.*".
QStringList EndingsOf(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList endings;
    for (qsizetype i = 1; i < parts.size(); i += 2)
        endings << (parts[i] == "*.*" ? QString() : parts[i].mid(1));
    return endings;
}

// The name with an extension, whatever other points it has: "Phase 2.5" becomes "Phase 2.5.dim",
// which the filter finds again. A name that ends as one of the other filters asks has chosen that.
QString WithExtension(const QString& path, const FileDialog& dialog, const QString& chosenFilter) {
    const QStringList endings = EndingsOf(dialog.Filter);
    for (const QString& ending : endings)
        if (!ending.isEmpty() && path.endsWith(ending, Qt::CaseInsensitive))
            return path;
    // A dialog that hides the details of its filters may answer without them.
    const QStringList filters = FiltersOf(dialog.Filter);
    const auto chosen = std::ranges::find_if(
        filters, [&](const QString& filter) { return filter.startsWith(chosenFilter); });
    const QString ending = endings.value(chosen - filters.begin());
    return path + (ending.isEmpty() ? "." + ToQt(dialog.DefaultExtension) : ending);
}

} // namespace

Answer AskToReplace(const QString& path) {
    return ThePlatform().MsgBox(FromQt(QFileInfo(path).fileName()) + " Already Exists." + CrLf +
                                    CrLf + "Replace It?",
                                Buttons::YesNoCancel, Icon::Exclamation, "");
}

std::optional<std::string> FileDialogs::AskOpenName(QWidget* parent, const FileDialog& dialog) {
    QFileDialog window(parent);
    window.setAcceptMode(QFileDialog::AcceptOpen);
    window.setFileMode(QFileDialog::ExistingFile);
    Prepare(window, dialog);
    const auto path = Ask(window);
    return path ? std::optional(FromQt(*path)) : std::nullopt;
}

std::optional<std::string> FileDialogs::AskSaveName(QWidget* parent, const FileDialog& dialog) {
    QFileDialog window(parent);
    window.setAcceptMode(QFileDialog::AcceptSave);
    window.setFileMode(QFileDialog::AnyFile);
    // The dialogs of some desktops ask about the name as typed, before it has its extension.
    window.setOption(QFileDialog::DontConfirmOverwrite);
    Prepare(window, dialog);
    while (const auto typed = Ask(window)) {
        const QString path = WithExtension(*typed, dialog, window.selectedNameFilter());
        const Answer answer = QFileInfo(path).isFile() ? AskToReplace(path) : Answer::Yes;
        if (answer == Answer::Yes)
            return FromQt(path);
        if (answer == Answer::Cancel)
            break;
    }
    return std::nullopt;
}

void FileDialogs::Remember(const QString& path) {
    folder_ = QFileInfo(path).absolutePath();
}

void FileDialogs::Prepare(QFileDialog& window, const FileDialog& dialog) {
    if (folder_.isEmpty())
        folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    window.setObjectName("frmCmdialog");
    window.setOption(QFileDialog::HideNameFilterDetails);
    window.setWindowTitle(ToQt(dialog.Title));
    const QStringList filters = FiltersOf(dialog.Filter);
    window.setNameFilters(filters);
    window.selectNameFilter(filters.value(dialog.FilterIndex - 1));
    const QString own = ToQt(dialog.Folder);
    const QString start = !own.isEmpty() && QDir(own).exists() ? own : folder_;
    window.setDirectory(QDir(start).exists() ? start : QDir::homePath());
    if (!dialog.FileName.empty())
        window.selectFile(ToQt(dialog.FileName));
}

std::optional<QString> FileDialogs::Ask(QFileDialog& window) {
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty())
        return std::nullopt;
    const QString path = window.selectedFiles().front();
    Remember(path);
    return path;
}

} // namespace quorvanta
