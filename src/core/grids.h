// Values that derive from an input grid, or from a distribution that is chosen.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// Asks for the input grids of the parameter, or for its distribution, and puts the value that
// derives from them into its text, and into those of the other parameters that derive from the
// same. Nothing for a parameter without either, or when the user cancels. A step that can be taken
// back.
void GetFromTable(i16 parNo);

// The distribution that the parameter's value derives from, in words; empty where it derives from
// none, or where another value has taken its place.
std::string DistributionBehind(i16 parNo);

// The parameter's value is derived: its box is blue.
bool IsBluePar(i16 parNo);

} // namespace quorvanta
