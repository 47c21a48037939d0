#include "ui/titlebarstyle.h"

#include "ui/colors.h"

#include <QApplication>
#include <QStyleOptionTitleBar>

namespace quorvanta {

TitleBarStyle::TitleBarStyle() : QProxyStyle(QApplication::style()->name()) {}

void TitleBarStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    const bool isInactive = bar != nullptr && (bar->titleBarState & State_Active) == 0;
    if (control != CC_TitleBar || !isInactive || baseStyle()->name() != "fusion" ||
        !IsDark(bar->palette.color(QPalette::Window)))
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    QStyleOptionTitleBar lit(*bar);
    lit.titleBarState |= static_cast<int>(State_Active);
    lit.palette.setColor(QPalette::Highlight, bar->palette.color(QPalette::Window));
    QProxyStyle::drawComplexControl(control, &lit, painter, widget);
}

} // namespace quorvanta
