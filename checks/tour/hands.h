// The user's hands: real mouse and key events for the real windows, found by control name.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QMenuBar;

namespace quorvanta::hands {

// Without a display the windows are drawn into memory, on a screen of an ordinary size: 15 by 9.4
// inches. Called before the application is made.
void UseMemoryForDisplay(int dotsPerInch = 96);

// The control of that name in the window; a failed search ends the program with a message, since
// nothing after it could be done.
QWidget* Control(const QWidget& window, const QString& name);

template <class Widget>
Widget* Control(const QWidget& window, const QString& name) {
    auto* found = qobject_cast<Widget*>(Control(window, name));
    Q_ASSERT(found != nullptr);
    return found;
}

// The visible top-level window of that name, waited for; nullptr if it does not appear.
QWidget* TopWindow(const QString& name);

// Clicks the middle of the control.
void Click(QWidget& control);
void Click(const QWidget& window, const QString& name);

// Clicks into a box, types over what stands there.
void TypeInto(const QWidget& window, const QString& name, const QString& text);

// The text that a box, button or label shows.
QString TextOf(const QWidget& window, const QString& name);

// Opens the menus of these captions one after another and clicks the last entry.
void ChooseMenu(QMenuBar& bar, const QStringList& captions);

// As soon as the modal window of that name is there, does this to it. The call that opens the
// window follows.
void WhenModal(const QString& name, std::function<void(QWidget&)> act);

// Lets all waiting events through.
void Settle();

} // namespace quorvanta::hands
