#include "ui/mnemoniclabel.h"

#include "core/general.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStyle>
#include <QStylePainter>

#include <algorithm>

namespace quorvanta {

namespace {

QList<MnemonicLabel*> LabelsOf(const QWidget& window, const QKeyEvent& key) {
    QList<MnemonicLabel*> labels;
    if (key.modifiers() != Qt::AltModifier)
        return labels;
    const QKeySequence pressed(key.keyCombination());
    for (MnemonicLabel* label : window.findChildren<MnemonicLabel*>()) {
        if (label->isVisible() && label->Control()->isEnabled() &&
            QKeySequence::mnemonic(label->text()) == pressed)
            labels << label;
    }
    return labels;
}

} // namespace

MnemonicLabel::MnemonicLabel(QWidget* control, QWidget* parent)
    : QLabel(parent), control_(control) {
    setTextFormat(Qt::PlainText);
}

void MnemonicLabel::setText(const QString& text) {
    QLabel::setText(text);
    setAccessibleName(ToQt(StripAmpersand(FromQt(text))));
}

QSize MnemonicLabel::sizeHint() const {
    ensurePolished();
    return fontMetrics().size(Qt::TextShowMnemonic, text());
}

void MnemonicLabel::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    painter.drawItemText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, palette(),
                         isEnabled(), text(), foregroundRole());
}

bool HasMnemonic(const QWidget& window, const QKeyEvent& key) {
    return !LabelsOf(window, key).isEmpty();
}

bool FocusByMnemonic(const QWidget& window, const QKeyEvent& key) {
    const QList<MnemonicLabel*> labels = LabelsOf(window, key);
    if (labels.isEmpty())
        return false;
    const auto focused = std::ranges::find_if(
        labels, [](const MnemonicLabel* label) { return label->Control()->hasFocus(); });
    const bool last = focused == labels.end() || focused + 1 == labels.end();
    (last ? labels.front() : *(focused + 1))->Control()->setFocus(Qt::ShortcutFocusReason);
    return true;
}

} // namespace quorvanta
