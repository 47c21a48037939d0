#include "ui/parlabelbutton.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace quorvanta {

int ParLabelButton::Indent() const {
    return fontMetrics().height() * 2 / 5; // the same in the plain and in the bold face
}

void ParLabelButton::SetUnknown(bool unknown) {
    QFont font = this->font();
    if (font.bold() == unknown)
        return;
    font.setBold(unknown);
    setFont(font);
}

QSize ParLabelButton::sizeHint() const {
    ensurePolished();
    QFont bold = font();
    bold.setBold(true);
    const QSize text = QFontMetrics(bold).size(Qt::TextShowMnemonic, this->text());
    return {text.width() + 3 * Indent(), QPushButton::sizeHint().height()};
}

void ParLabelButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString text = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);

    painter.drawItemText(rect().adjusted(Indent(), 0, -Indent(), 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, option.palette,
                         isEnabled(), text, QPalette::ButtonText);
}

void ParLabelButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

} // namespace quorvanta
