// How a design spends its error over the information, and what two tails make of a probability.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The error spent up to the information fraction t, by the spending type (BoundType 4 to 7) with
// its FamilyPar; 0 at 0 and for any other type. alpha is the one-sided error of the whole design.
//
// On the Student scale the type of O'Brien and Fleming uses t distributions with the degrees of
// freedom of the first analysis.
f32 GsSpend(f32 t, f32 alpha, i16 boundType);

// With two tails a one-sided probability becomes the two-sided one, in place: up to 0.5 its double,
// above that twice it minus 1.
void GsFoldTwoSided(f32& x);

} // namespace quorvanta
