// Values that derive from an input grid.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Asks for the input grids of the parameter and puts the value that derives from them into its
// text, and into those of the other parameters that derive from the same grids. Nothing for a
// parameter without a grid, or when the user cancels. A step that can be taken back.
void GetFromTable(i16 parNo);

// The parameter's value is derived from an input grid: its box is blue.
bool IsBluePar(i16 parNo);

} // namespace quorvanta
