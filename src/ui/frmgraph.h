// frmGraph: a parameter plotted against another, with a curve for each value of a third.
#pragma once

#include "core/types.h"
#include "ui/runwindow.h"

namespace quorvanta {

class GraphPicture;

class frmGraph : public RunWindow {
    Q_OBJECT

  public:
    frmGraph(i16 windowNo, i16 analysisNo);

    // The size of the picture as it stands on the screen, inches.
    QSizeF PictureInches() const;

    void cmdEditGraph_Click();

  private:
    void Redraw(const QString& words) override;
    void Dim(bool isDimmed) override;
    void TellProblem();

    GraphPicture* picture_;
};

} // namespace quorvanta
