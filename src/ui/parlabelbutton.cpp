#include "ui/parlabelbutton.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace quorvanta {

int ParLabelButton::Indent() const {
    return fontMetrics().averageCharWidth();
}

QSize ParLabelButton::sizeHint() const {
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return {text.width() + 3 * Indent(), QPushButton::sizeHint().height()};
}

void ParLabelButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString text = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);

    painter.drawItemText(rect().adjusted(Indent(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
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
