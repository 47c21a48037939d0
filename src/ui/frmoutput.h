// frmOutput: the result of the current analysis with its statement, as it is printed.
#pragma once

#include "output/document.h"

#include <QDialog>

namespace quorvanta {

class ScrolledPicture;

class frmOutput : public QDialog {
    Q_OBJECT

  public:
    explicit frmOutput(QWidget* parent);

    // Takes the result from the state: what it shows stays as it is until the next one.
    void Refresh();

    void cmdPrintOutput_Click();
    void cmdCopyOutput_Click();
    void cmdSave_Click();
    void cmdEditOutput_Click();
    void cmdCancel_Click();

  private:
    OutputDocument document_;
    ScrolledPicture* picture_;
};

} // namespace quorvanta
