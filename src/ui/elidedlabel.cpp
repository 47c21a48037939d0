#include "ui/elidedlabel.h"

#include <QPainter>

namespace quorvanta {

QSize ElidedLabel::minimumSizeHint() const {
    constexpr int characters = 12;
    return {characters * fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    setToolTip(shown == text() ? QString() : text());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     shown);
}

} // namespace quorvanta
