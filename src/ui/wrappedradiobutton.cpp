#include "ui/wrappedradiobutton.h"

#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include <algorithm>

namespace quorvanta {

namespace {

constexpr int CharactersPerLine = 64;
constexpr int TextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;

} // namespace

WrappedRadioButton::WrappedRadioButton(QWidget* parent) : QRadioButton(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum, QSizePolicy::RadioButton);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrappedRadioButton::TextLeft() const {
    return style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, this);
}

// Where the text stands in a button of that width.
QRect WrappedRadioButton::TextArea(int width) const {
    const QRect room(TextLeft(), 0, width - TextLeft(), 100 * fontMetrics().height());
    return fontMetrics().boundingRect(room, TextFlags, text());
}

QSize WrappedRadioButton::sizeHint() const {
    ensurePolished();
    const int width = TextLeft() + CharactersPerLine * fontMetrics().averageCharWidth();
    return {width, heightForWidth(width)};
}

int WrappedRadioButton::heightForWidth(int width) const {
    const int indicator = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, this);
    return std::max(indicator, TextArea(width).height()) + fontMetrics().leading() + 2;
}

void WrappedRadioButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    const QRect text = QStyle::visualRect(layoutDirection(), rect(), TextArea(width()));
    // The indicator stands beside the first line.
    const int indicator = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, this);
    option.rect.setHeight(std::max(indicator, fontMetrics().height()));
    painter.drawControl(QStyle::CE_RadioButton, option);
    painter.drawItemText(text, TextFlags, palette(), isEnabled(), this->text(),
                         QPalette::WindowText);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = text.adjusted(-2, 0, 2, 0);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace quorvanta
