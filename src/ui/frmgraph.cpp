#include "ui/frmgraph.h"

#include "core/catalogue.h"
#include "core/platform.h"
#include "ui/frmeditgraph.h"
#include "ui/graphpicture.h"
#include "ui/qttext.h"

#include <QPushButton>

namespace quorvanta {

frmGraph::frmGraph(i16 windowNo, i16 analysisNo)
    : RunWindow(GraphWindow, windowNo, analysisNo), picture_(new GraphPicture(analysisNo, this)) {
    setObjectName(ControlName("frmGraph", windowNo));
    connect(picture_, &GraphPicture::MenuRequested, this, &frmGraph::RequestOutputMenu);
    connect(picture_, &GraphPicture::DblClick, this, &frmGraph::cmdEditGraph_Click);
    // Told from the event loop, when the window has the size that it gets.
    connect(picture_, &GraphPicture::RoomLost, this, &frmGraph::TellProblem, Qt::QueuedConnection);
    const auto* edit = LayOut(picture_, "cmdEditGraph", "Edit Graph");
    connect(edit, &QPushButton::clicked, this, &frmGraph::cmdEditGraph_Click);
}

QSizeF frmGraph::PictureInches() const {
    return QSizeF(picture_->size()) / logicalDpiY();
}

void frmGraph::Redraw(const QString& words) {
    picture_->Redraw();
    picture_->setAccessibleDescription(words);
}

void frmGraph::Dim(bool isDimmed) {
    picture_->SetDimmed(isDimmed);
    picture_->setAccessibleName(isDimmed ? tr("Graph, not up to date") : tr("Graph"));
}

void frmGraph::TellProblem() {
    const QString problem = picture_->Problem();
    if (picture_->isVisible() && !problem.isEmpty())
        ShowMessage(FromQt(problem));
}

void frmGraph::cmdEditGraph_Click() {
    if (MayBeEdited())
        frmEditGraph(this).exec();
}

} // namespace quorvanta
