// frmOutput: the result of the current analysis with its statement, as it is printed.
#pragma once

#include "core/platform.h"

#include <QDialog>

namespace quorvanta {

class ScrolledPicture;

class frmOutput : public QDialog {
    Q_OBJECT

  public:
    explicit frmOutput(QWidget* parent);

    // Takes the result from the state.
    void Refresh();

    void cmdPrintOutput_Click();
    void cmdCopyOutput_Click();
    void cmdSave_Click();
    void cmdEditOutput_Click();
    void cmdCancel_Click();

  private:
    ScrolledPicture* picture_;
};

} // namespace quorvanta
