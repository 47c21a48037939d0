#include "ui/graphpicture.h"

#include "output/xyzplot.h"
#include "ui/accessible.h"
#include "ui/paintsurface.h"
#include "ui/qttext.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>

namespace quorvanta {

namespace {

QSizeF InchesOf(const QWidget& widget) {
    return QSizeF(widget.width(), widget.height()) / widget.logicalDpiY();
}

} // namespace

GraphPicture::GraphPicture(i16 analysisNo, QWidget* parent)
    : QWidget(parent), analysisNo_(analysisNo) {
    setObjectName("PicGraph");
    MakeAccessiblePicture(*this);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize GraphPicture::InPixels(f64 widthInches, f64 heightInches) const {
    return (QSizeF(widthInches, heightInches) * logicalDpiY()).toSize();
}

QSize GraphPicture::sizeHint() const {
    return InPixels(6.6, 4.6);
}

QSize GraphPicture::minimumSizeHint() const {
    return InPixels(2, 1.5);
}

void GraphPicture::Redraw() {
    LookForRoom();
    update();
}

void GraphPicture::SetDimmed(bool isDimmed) {
    isDimmed_ = isDimmed;
    update();
}

QString GraphPicture::Problem() const {
    QPixmap device(1, 1);
    QPainter painter(&device);
    PaintSurface surface(painter, {.Inches = InchesOf(*this), .TurnPage = {}});
    return ToQt(PlotProblem(surface, PresentationOf(analysisNo_)));
}

// Tells once when the room is gone, and not at every size that the window passes.
void GraphPicture::LookForRoom() {
    const bool hadRoom = hasRoom_;
    hasRoom_ = Problem().isEmpty();
    if (hadRoom && !hasRoom_)
        emit RoomLost();
}

void GraphPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paper paper;
    paper.Inches = InchesOf(*this);
    paper.Ink = palette().color(QPalette::Text);
    paper.Ground = palette().color(QPalette::Base);
    painter.fillRect(rect(), paper.Ground);
    PaintSurface surface(painter, paper);
    // A message can't open in the midst of painting, so the picture itself says what is wrong.
    const Presentation graph = PresentationOf(analysisNo_);
    if (const std::string problem = PlotProblem(surface, graph); problem.empty()) {
        PlotGraph(surface, graph);
    } else {
        painter.setPen(paper.Ink);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, ToQt(problem));
    }
    if (isDimmed_)
        Dim(painter, rect(), paper.Ground);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void GraphPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LookForRoom();
}

void GraphPicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        emit MenuRequested(event->globalPosition().toPoint());
}

void GraphPicture::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit DblClick();
}

void GraphPicture::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its own road (the release of the right button); this is the menu key.
    if (event->reason() == QContextMenuEvent::Keyboard)
        emit MenuRequested(mapToGlobal(rect().center()));
    event->accept();
}

} // namespace quorvanta
