#include "ui/accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>
#include <QWidget>

namespace quorvanta {

namespace {

constexpr const char* IsPicture = "isPicture";

QAccessibleInterface* PictureInterface(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->property(IsPicture).toBool())
        return nullptr;
    return new QAccessibleWidget(widget, QAccessible::Graphic); // Qt takes it over
}

} // namespace

void MakeAccessiblePicture(QWidget& widget) {
    widget.setProperty(IsPicture, true);
    widget.setLayoutDirection(Qt::LeftToRight);
    QAccessible::installFactory(PictureInterface); // once only, however often it is called
}

void NameTabs(QTabWidget& tabs, const QString& name) {
    tabs.setAccessibleName(name);
    tabs.tabBar()->setAccessibleName(name);
}

} // namespace quorvanta
