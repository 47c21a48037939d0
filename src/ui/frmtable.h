// frmTable: a parameter tabulated against two others.
#pragma once

#include "core/types.h"
#include "ui/runwindow.h"

namespace quorvanta {

class ScrolledPicture;

class frmTable : public RunWindow {
    Q_OBJECT

  public:
    frmTable(i16 windowNo, i16 analysisNo);

    void cmdEditTable_Click();

  private:
    void Redraw(const QString& words) override;
    void Dim(bool isDimmed) override;

    ScrolledPicture* picture_;
};

} // namespace quorvanta
