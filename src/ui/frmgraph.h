// frmGraph: a parameter plotted against another, with a curve for each value of a third.
#pragma once

#include "core/types.h"
#include "ui/childwindow.h"

class QLabel;
class QPushButton;

namespace quorvanta {

class GraphPicture;

class frmGraph : public ChildWindow {
    Q_OBJECT

  public:
    frmGraph(i16 windowNo, i16 analysisNo);

    void Refresh() override;

    // The size of the picture as it stands on the screen, inches.
    QSizeF PictureInches() const;

    void cmdEditGraph_Click();

  private:
    void TellProblem();

    QLabel* lblHint_;
    GraphPicture* picture_;
    QPushButton* cmdEditGraph_;
};

} // namespace quorvanta
