// Growing samples of exponential times with location 0 and scale 1, by their sum and their smallest
// one, which SimStudy holds.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Adds n new times to the sum of a sample and to its smallest one, which 99999 stands for in an
// empty one.
void DrawExponentialTimes(i16 n, f32& sum, f32& smallest);

// The estimate of the scale of n times with its degrees of freedom, two for each time; a location
// that is not known costs those of one. 0 without a degree of freedom.
struct ScaleOfTimes {
    f64 Scale = 0;
    f64 Df = 0;
};
ScaleOfTimes EstimateScale(i16 n, f32 sum, f32 smallest, bool locationIsKnown);

} // namespace quorvanta
