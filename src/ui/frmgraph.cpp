#include "ui/frmgraph.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "output/presentation.h"
#include "ui/frmeditgraph.h"
#include "ui/graphpicture.h"
#include "ui/qttext.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvanta {

frmGraph::frmGraph(i16 windowNo, i16 analysisNo)
    : ChildWindow(GraphWindow, windowNo, analysisNo), lblHint_(new QLabel(this)),
      picture_(new GraphPicture(analysisNo, this)),
      cmdEditGraph_(new QPushButton("Edit Graph", this)) {
    setObjectName(ControlName("frmGraph", windowNo));
    lblHint_->setObjectName("lblHint");
    lblHint_->setWordWrap(true);
    lblHint_->setAlignment(Qt::AlignCenter);
    connect(picture_, &GraphPicture::MenuRequested, this, &frmGraph::RequestOutputMenu);
    connect(picture_, &GraphPicture::DblClick, this, &frmGraph::cmdEditGraph_Click);
    // Told from the event loop, when the window has the size that it gets.
    connect(picture_, &GraphPicture::RoomLost, this, &frmGraph::TellProblem, Qt::QueuedConnection);
    cmdEditGraph_->setObjectName("cmdEditGraph");
    cmdEditGraph_->setAutoDefault(true);
    connect(cmdEditGraph_, &QPushButton::clicked, this, &frmGraph::cmdEditGraph_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHint_, 1);
    column->addWidget(picture_, 1);
    column->addWidget(cmdEditGraph_, 0, Qt::AlignRight);
    Refresh();
}

QSizeF frmGraph::PictureInches() const {
    return QSizeF(picture_->size()) / logicalDpiY();
}

void frmGraph::Refresh() {
    const bool hasResult = PresentationOf(AnalysisTag()).HasResult();
    const bool hadResult = !picture_->isHidden();
    lblHint_->setText(RunHint());
    lblHint_->setVisible(!hasResult);
    picture_->setVisible(hasResult);
    setFocusProxy(hasResult ? picture_ : nullptr); // what is not seen can't have the focus
    cmdEditGraph_->setVisible(hasResult);
    if (!hasResult)
        return;
    if (!hadResult)
        FitToContent();
    picture_->Redraw();
    picture_->setAccessibleDescription(ResultInWords());
}

void frmGraph::TellProblem() {
    const QString problem = picture_->Problem();
    if (picture_->isVisible() && !problem.isEmpty())
        ShowMessage(FromQt(problem));
}

void frmGraph::cmdEditGraph_Click() {
    if (Calculating == False && AnalysisTag() == AnalysisNo)
        frmEditGraph(this).exec();
}

} // namespace quorvanta
