// The effect of a test of one location or two, and its distances to the limits of an equivalence.
#pragma once

#include "core/types.h"

namespace quorvanta {

class Hypotheses;

// On the log scale these are differences of natural logarithms.
struct LocationEffect {
    f32 Delta = 0;    // with one or two tails: H1 minus H0
    f32 DeltaLow = 0; // with two one-sided tests
    f32 DeltaHigh = 0;
};

// The locations themselves: the one sample's, or the difference between the two; under H0, which is
// the left limit with two one-sided tests, at the right limit, and in truth.
struct Locations {
    f32 Null = 0;
    f32 Right = 0;
    f32 Truth = 0;
};
Locations ReadLocations(const Hypotheses& hypotheses, bool logScale);

// What the hypotheses say; on the log scale each location is replaced by its logarithm as it is
// read.
LocationEffect ReadLocationEffect(const Hypotheses& hypotheses, bool logScale);

} // namespace quorvanta
