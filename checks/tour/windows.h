// A walk through every window of the program, each with something in it.
#pragma once

#include "ui/frmmain.h"

#include <QString>

namespace quorvanta {

class WindowVisitor {
  public:
    virtual ~WindowVisitor() = default;

    // One window alone, by a name of its own.
    virtual void Take(const QString& name, QWidget& window) = 0;

    // The main window with all that stands over it; unless told otherwise, one after another.
    virtual void TakeAll(const QString& name);
};

// Opens one window after the other, as a user does, and shows each to the visitor. Nobody else may
// answer the messages that come up.
void WalkWindows(frmMain& window, WindowVisitor& visitor);

} // namespace quorvanta
