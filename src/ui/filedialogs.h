// frmCmdialog: the file dialogs.
#pragma once

#include "core/platform.h"

#include <QString>

#include <optional>
#include <string>

class QFileDialog;
class QWidget;

namespace quorvanta {

// Asks whether a file that exists may be replaced: Yes, No (by another name) or Cancel.
Answer AskToReplace(const QString& path);

class FileDialogs {
  public:
    // Ask for a name as the dialog says; nothing when the user gives up. Where it names no folder
    // that exists, the folder of the last file is the one to start with, as long as the program
    // runs.
    std::optional<std::string> AskOpenName(QWidget* parent, const FileDialog& dialog);
    // Asks before a file is overwritten.
    std::optional<std::string> AskSaveName(QWidget* parent, const FileDialog& dialog);

    // The user has used this file in another way: the next dialog starts with its folder.
    void Remember(const QString& path);

  private:
    void Prepare(QFileDialog& window, const FileDialog& dialog);
    std::optional<QString> Ask(QFileDialog& window);

    QString folder_;
};

} // namespace quorvanta
