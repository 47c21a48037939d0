#include "tour/hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <iostream>

namespace quorvanta::hands {

namespace {

// All in milliseconds.
constexpr int patience = 30000; // for what has to come, on a busy machine too
constexpr int focusPatience = 1000;
constexpr int betweenLooks = 5;

[[noreturn]] void Fail(const QString& what) {
    std::cerr << "Not found: " << qPrintable(what) << std::endl;
    std::abort();
}

QAction* Entry(const QWidget& menu, const QString& caption) {
    for (QAction* action : menu.actions()) {
        if (action->text() == caption)
            return action;
    }
    Fail(caption);
}

} // namespace

void UseMemoryForDisplay(int dotsPerInch) {
    static QTemporaryFile screen;
    if (!screen.open())
        Fail("room for a temporary file");
    constexpr int usual = 96;
    screen.write(QString(R"({ "screens": [ { "name": "memory", "x": 0, "y": 0, "width": %1,
                              "height": %2, "logicalDpi": %3, "logicalBaseDpi": %4, "dpr": 1 } ] })")
                     .arg(1440 * dotsPerInch / usual)
                     .arg(900 * dotsPerInch / usual)
                     .arg(dotsPerInch)
                     .arg(usual)
                     .toUtf8());
    screen.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
}

QWidget* Control(const QWidget& window, const QString& name) {
    auto* found = window.findChild<QWidget*>(name);
    if (found == nullptr)
        Fail(name);
    return found;
}

QWidget* TopWindow(const QString& name) {
    const auto find = [&name]() -> QWidget* {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->objectName() == name)
                return window;
        }
        return nullptr;
    };
    return QTest::qWaitFor([&find] { return find() != nullptr; }, patience) ? find() : nullptr;
}

void Click(QWidget& control) {
    QTest::mouseClick(&control, Qt::LeftButton);
    Settle();
}

void Click(const QWidget& window, const QString& name) {
    QWidget* control = Control(window, name);
    // The text of an option or check box takes a click anywhere, its free space behind it none.
    const bool isOption = qobject_cast<QAbstractButton*>(control) != nullptr &&
                          qobject_cast<QAbstractButton*>(control)->isCheckable();
    const QPoint at = isOption ? QStyle::visualPos(control->layoutDirection(), control->rect(),
                                                   {control->height() / 2, control->height() / 2})
                               : control->rect().center();
    QTest::mouseClick(control, Qt::LeftButton, {}, at);
    Settle();
}

void TypeInto(const QWidget& window, const QString& name, const QString& text) {
    auto* box = Control<QLineEdit>(window, name);
    Click(*box);
    if (!box->text().isEmpty() && box->selectedText() != box->text())
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, text);
    Settle();
}

QString TextOf(const QWidget& window, const QString& name) {
    const QWidget* control = Control(window, name);
    if (const auto* box = qobject_cast<const QLineEdit*>(control))
        return box->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(control))
        return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(control))
        return label->text();
    Fail(name + " has no text");
}

void ChooseMenu(QMenuBar& bar, const QStringList& captions) {
    QAction* top = Entry(bar, captions.front());
    // A menu takes a click for one that opened it until the pointer has come from somewhere.
    QTest::mouseMove(&bar, bar.actionGeometry(top).center());
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(top).center());
    QMenu* menu = top->menu();
    for (qsizetype i = 1; i < captions.size(); ++i) {
        if (!QTest::qWaitFor([menu] { return menu->isVisible(); }, patience))
            Fail("open menu " + captions[i - 1]);
        QAction* entry = Entry(*menu, captions[i]);
        QTest::mouseMove(menu, menu->actionGeometry(entry).center());
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
        menu = entry->menu();
    }
    Settle();
}

void WhenModal(const QString& name, std::function<void(QWidget&)> act) {
    auto* look = new QTimer(qApp);
    look->setInterval(betweenLooks);
    QObject::connect(look, &QTimer::timeout, look,
                     [look, name, act = std::move(act), seen = 0]() mutable {
                         QWidget* modal = QApplication::activeModalWidget();
                         if (modal == nullptr || modal->objectName() != name || !modal->isVisible())
                             return;
                         // Keys need an active window, which a display without a window manager may
                         // never make.
                         if (!modal->isActiveWindow() && ++seen < focusPatience / betweenLooks)
                             return;
                         look->stop();
                         look->deleteLater();
                         act(*modal);
                     });
    look->start();
}

void Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace quorvanta::hands
