// Values that derive from an input grid.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Asks for the input grid of the parameter and puts the value that derives from it into its text;
// nothing for a parameter without a grid, or when the user cancels.
void GetFromTable(i16 parNo);

// The parameter's value is derived from an input grid: its box is blue.
bool IsBluePar(i16 parNo);

} // namespace quorvanta
