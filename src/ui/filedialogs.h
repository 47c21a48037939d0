// frmCmdialog: the file dialogs.
#pragma once

#include "core/platform.h"

#include <optional>
#include <string>

class QFileDialog;
class QString;
class QWidget;

namespace quorvanta {

class FileDialogs {
  public:
    // Ask for a name as the dialog says; nothing when the user gives up. The folder of the last
    // file is the one to start with, as long as the program runs.
    std::optional<std::string> AskOpenName(QWidget* parent, const FileDialog& dialog);
    std::optional<std::string> AskSaveName(QWidget* parent, const FileDialog& dialog);

  private:
    std::optional<std::string> Ask(QFileDialog& window, const FileDialog& dialog);

    std::string folder_;
};

} // namespace quorvanta
