// What holds of state and windows whenever the program waits for its user and no question is open,
// whatever the user has done before.
#pragma once

#include <QString>

class QWidget;

namespace quorvanta {

class frmMain;

// The name of the first invariant that is broken and what breaks it; empty if all hold.
QString BrokenInvariant(const frmMain& window);

// The same for what costs a calculation: a result that counts as valid is the solution for the
// values that the window shows. One point of a table or graph is taken, of the number given.
QString BrokenResult(unsigned point);

// The same for the dialog frmShiftModel, which shows the selection as it stands.
QString BrokenShiftModel(const QWidget& dialog);

} // namespace quorvanta
