// frmSplash: the program's name while it starts. Any key or click ends it, and so does a second.
#pragma once

#include <QDialog>

namespace quorvanta {

class frmSplash : public QDialog {
    Q_OBJECT

  public:
    frmSplash();

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace quorvanta
