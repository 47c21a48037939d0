// frmTable: a parameter tabulated against two others.
#pragma once

#include "core/types.h"
#include "ui/childwindow.h"

class QLabel;
class QPushButton;

namespace quorvanta {

class ScrolledPicture;

class frmTable : public ChildWindow {
    Q_OBJECT

  public:
    frmTable(i16 windowNo, i16 analysisNo);

    void Refresh() override;

    void cmdEditTable_Click();

  private:
    QLabel* lblHint_;
    ScrolledPicture* picture_;
    QPushButton* cmdEditTable_;
};

} // namespace quorvanta
