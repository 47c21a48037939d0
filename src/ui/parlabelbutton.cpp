#include "ui/parlabelbutton.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace quorvanta {

void ParLabelButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString text = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);

    const int indent = fontMetrics().averageCharWidth();
    const QRect area = style()
                           ->subElementRect(QStyle::SE_PushButtonContents, &option, this)
                           .adjusted(indent / 2, 0, -indent / 2, 0);
    painter.drawItemText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
                         option.palette, isEnabled(), text, QPalette::ButtonText);
}

void ParLabelButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

} // namespace quorvanta
