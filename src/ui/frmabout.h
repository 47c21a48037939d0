// The window of "About...".
#pragma once

#include <QDialog>

namespace quorvanta {

class frmAbout : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent);

    // Validates the program, with a report where the user wants it.
    void cmdValidate_Click();
};

} // namespace quorvanta
