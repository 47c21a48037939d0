// The design behind a simulated group sequential trial. The simulated test compares its p-value
// with the nominal levels of the bounds, which is the comparison of its statistic with the bounds.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// Works the design of the current analysis out, from ParValue and the answers that its dialog has:
// the nominal levels become RejectP and AcceptP (0..K), levels and sizes go into the texts of the
// dialog, and the exact probabilities are shown in the window of designs. A bound that nothing
// reaches has the level 0, a design that accepts nothing early the level 1. Sets Cancelled, after a
// message, where there is no such design.
void SimReadDesign();

// Are its analyses made when a share of the information is there, which takes another time if H0 is
// true than if H1 is?
bool SimHasTwoClocks();

} // namespace quorvanta
