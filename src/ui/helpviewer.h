// The help, opened by context number.
#pragma once

#include "core/types.h"

class QWidget;

namespace quorvanta {

// Opens the help on the topic of that number.
void OpenHelp(i32 number);

// The same for a number that belongs to the current analysis. A window without a chosen test, which
// has none, opens the help of its own kind.
void OpenHelpOfAnalysis(i32 number);

// The help number that the help key opens with the focus in this widget: the topic of the window
// that it stands in, or, in the windows that show an analysis, the description of that.
i32 HelpNumberAt(const QWidget& widget);

// Opens the help for the help key with the focus in this widget: in the box of a parameter, on that
// parameter of the analysis, and on the description of the analysis if that is what is shown
// already.
void OpenHelpAt(const QWidget& widget);

// Opens the help on its search.
void OpenHelpSearch();

} // namespace quorvanta
