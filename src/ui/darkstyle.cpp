#include "ui/darkstyle.h"

#include "ui/colors.h"

#include <QApplication>
#include <QStyleOptionTitleBar>

namespace quorvanta {

DarkStyle::DarkStyle() : QProxyStyle(QApplication::style()->name()) {}

void DarkStyle::Dress(QWidget& widget) {
    auto* style = new DarkStyle;
    style->setParent(&widget);
    widget.setStyle(style);
}

bool DarkStyle::Mends(const QStyleOption* option) const {
    return option != nullptr && baseStyle()->name() == "fusion" &&
           IsDark(option->palette.color(QPalette::Window));
}

void DarkStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    const bool isInactive = bar != nullptr && (bar->titleBarState & State_Active) == 0;
    if (control != CC_TitleBar || !isInactive || !Mends(option))
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    QStyleOptionTitleBar lit(*bar);
    lit.titleBarState |= static_cast<int>(State_Active);
    lit.palette.setColor(QPalette::Highlight, bar->palette.color(QPalette::Window));
    QProxyStyle::drawComplexControl(control, &lit, painter, widget);
}

int DarkStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint != SH_Table_GridLineColor || !Mends(option))
        return QProxyStyle::styleHint(hint, option, widget, data);
    const QColor cell = option->palette.color(QPalette::Base);
    const QColor ink = option->palette.color(QPalette::Text);
    const auto between = [](int a, int b) { return (3 * a + b) / 4; };
    return static_cast<int>(QColor(between(cell.red(), ink.red()),
                                   between(cell.green(), ink.green()),
                                   between(cell.blue(), ink.blue()))
                                .rgba());
}

} // namespace quorvanta
