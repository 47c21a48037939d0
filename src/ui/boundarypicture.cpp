#include "ui/boundarypicture.h"

#include "output/xyzplot.h"
#include "ui/paintsurface.h"
#include "ui/qttext.h"

#include <QPainter>

namespace quorvanta {

BoundaryPicture::BoundaryPicture(QWidget* parent) : QWidget(parent) {
    setObjectName("picBoundary");
    setAccessibleName(tr("Picture of the boundaries"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void BoundaryPicture::Draw(const Presentation& plot) {
    plot_ = plot;
    update();
}

QSize BoundaryPicture::sizeHint() const {
    return (QSizeF(5, 3.2) * logicalDpiY()).toSize();
}

QSize BoundaryPicture::minimumSizeHint() const {
    return (QSizeF(2, 1.5) * logicalDpiY()).toSize();
}

void BoundaryPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paper paper;
    paper.Inches = QSizeF(width(), height()) / logicalDpiY();
    paper.Ink = palette().color(QPalette::Text);
    paper.Ground = palette().color(QPalette::Base);
    painter.fillRect(rect(), paper.Ground);
    if (!plot_.HasResult())
        return;
    PaintSurface surface(painter, paper);
    // A message can't open in the midst of painting, so the picture itself says what is wrong.
    if (const std::string problem = PlotProblem(surface, plot_); !problem.empty()) {
        painter.setPen(paper.Ink);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, ToQt(problem));
        return;
    }
    PlotGraph(surface, plot_);
}

} // namespace quorvanta
