#include "ui/plotpicture.h"

#include "output/xyzplot.h"
#include "ui/accessible.h"
#include "ui/paintsurface.h"
#include "ui/qttext.h"

#include <QMouseEvent>
#include <QPainter>

namespace quorvanta {

PlotPicture::PlotPicture(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    MakeAccessiblePicture(*this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlotPicture::Draw(const Presentation& plot, const QString& words) {
    plot_ = plot;
    words_ = words;
    setAccessibleDescription(words);
    update();
}

QSize PlotPicture::sizeHint() const {
    return (QSizeF(6.2, 4.2) * logicalDpiY()).toSize();
}

QSize PlotPicture::minimumSizeHint() const {
    return (QSizeF(2, 1.5) * logicalDpiY()).toSize();
}

void PlotPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paper paper;
    paper.Inches = QSizeF(size()) / logicalDpiY();
    paper.Ink = palette().color(QPalette::Text);
    paper.Ground = palette().color(QPalette::Base);
    painter.fillRect(rect(), paper.Ground);
    PaintSurface surface(painter, paper);
    // A message can't open in the midst of painting, so the picture itself says what is wrong.
    const QString problem = plot_.HasResult() ? ToQt(PlotProblem(surface, plot_)) : words_;
    if (problem.isEmpty()) {
        PlotGraph(surface, plot_);
    } else {
        painter.setPen(paper.Ink);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, problem);
    }
}

void PlotPicture::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit DblClick();
}

} // namespace quorvanta
