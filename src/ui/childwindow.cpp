#include "ui/childwindow.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"

#include <QCloseEvent>
#include <QLayout>
#include <QVariant>

#include <algorithm>

namespace quorvanta {

ChildWindow::ChildWindow(i16 windowKind, i16 windowNo, i16 analysisNo)
    : windowKind_(windowKind), windowNo_(windowNo) {
    setProperty("tag", QString::number(analysisNo));
}

i16 ChildWindow::AnalysisTag() const {
    return property("tag").toString().toShort();
}

void ChildWindow::FitToContent() {
    QWidget* frame = parentWidget();
    if (frame == nullptr || frame->isMaximized() || frame->isMinimized())
        return;
    layout()->activate();
    const int width = sizeHint().width();
    const int height =
        layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height();
    // The frame keeps the size hint of its content from before.
    frame->layout()->invalidate();
    frame->resize(frame->sizeHint() - sizeHint() + QSize(width, height));
    KeepInside();
}

void ChildWindow::KeepInside() {
    QWidget* frame = parentWidget();
    if (frame == nullptr || frame->isMaximized() || frame->isMinimized() ||
        frame->parentWidget() == nullptr)
        return;
    const QSize area = frame->parentWidget()->size();
    frame->resize(frame->size().boundedTo(area).expandedTo(frame->minimumSizeHint()));
    const QPoint limit(area.width() - frame->width(), area.height() - frame->height());
    frame->move(std::clamp(frame->x(), 0, std::max(0, limit.x())),
                std::clamp(frame->y(), 0, std::max(0, limit.y())));
}

void ChildWindow::RequestOutputMenu(const QPoint& at) {
    if (AnalysisTag() == AnalysisNo && Calculating == False && Calculated != False)
        emit OutputMenuRequested(at);
}

void ChildWindow::Form_Activate() {
    // A window also comes to the front when a message before it closes. Its analysis is current
    // then and must stay as it is: taken back from its record, a stale result would look valid.
    if (AnalysisTag() != AnalysisNo)
        ChildActivated(AnalysisTag());
}

bool ChildWindow::Form_QueryUnload(i16 closeMode) {
    return QueryCloseChild(AnalysisTag(), closeMode);
}

void ChildWindow::Unload() {
    mayUnload_ = true;
    if (parentWidget() != nullptr)
        parentWidget()->close();
}

bool ChildWindow::focusNextPrevChild(bool next) {
    emit FocusStep(next);
    return true;
}

void ChildWindow::closeEvent(QCloseEvent* event) {
    if (!mayUnload_ && !Form_QueryUnload(CloseByUser)) {
        event->ignore();
        return;
    }
    event->accept();
    Form_Unload();
}

void ChildWindow::Form_Unload() {
    ChildClosed(AnalysisTag());
}

} // namespace quorvanta
