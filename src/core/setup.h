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

// The options are given up: the analysis that the window held before comes back.
void CancelOptions();

} // namespace quorvanta
