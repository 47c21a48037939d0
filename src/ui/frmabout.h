// The window of "About...".
#pragma once

#include <QDialog>

namespace quorvanta {

class frmAbout : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent);
};

} // namespace quorvanta
