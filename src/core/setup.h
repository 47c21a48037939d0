// From the menu to an analysis: choosing a test, its options, and accepting them.
#pragma once

#include "core/catalogue.h"
#include "core/types.h"

namespace quorvanta {

// True if this version has what an entry of the menus opens; of a test, a distribution or a window.
// Any other entry is always served.
bool IsEntryServed(const MenuItem& item);

// A test was chosen from the menus: asks for a window if none is open, sets up the test and shows
// its options. Says so and changes nothing when the test is not available.
void NewTest(i16 menuNo);

// A distribution was chosen from the menus; likewise.
void NewDistribution(i16 distrNo);

// The options are accepted: builds the parameter list and shows it; a Calculation window whose
// values are all present is solved at once.
void AcceptOptions();

// The options of the current analysis, as they are chosen at present, to be chosen again. Once they
// are accepted, unknown and axes are the parameters that they were, as far as the new list has
// them, and the values stay. Nothing where CanReopenOptions says no.
void ReopenOptions();

// True for a window with an analysis, unless its options are open or it is being calculated.
bool CanReopenOptions();

// The options are given up: the analysis that the window held before comes back.
void CancelOptions();

} // namespace quorvanta
