#include "ui/statusline.h"

#include <QPainter>
#include <QSizeGrip>
#include <QStyleOption>

namespace quorvanta {

StatusLine::StatusLine(QWidget* parent) : QStatusBar(parent) {
    connect(this, &QStatusBar::messageChanged, this, &StatusLine::Describe);
}

QString StatusLine::ShownMessage() const {
    return fontMetrics().elidedText(currentMessage(), Qt::ElideRight, MessageRect().width());
}

QRect StatusLine::MessageRect() const {
    const int margin = fontMetrics().averageCharWidth();
    const auto* grip = findChild<QSizeGrip*>();
    const int room = grip != nullptr && grip->isVisible() ? grip->width() : 0;
    return QStyle::visualRect(layoutDirection(), rect(),
                              rect().adjusted(margin, 0, -margin - room, 0));
}

void StatusLine::Describe() {
    setToolTip(ShownMessage() == currentMessage() ? QString() : currentMessage());
}

void StatusLine::paintEvent(QPaintEvent* event) {
    if (currentMessage().isEmpty()) {
        QStatusBar::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_PanelStatusBar, &option, &painter, this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(MessageRect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     ShownMessage());
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QStatusBar::resizeEvent(event);
    Describe();
}

} // namespace quorvanta
