// Survival at a time in the models whose parameters are a median and a shape: what the life-table
// tests and the log-rank tests of these models share.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The models, by their numbers as distributions.
enum SurvivalModel : i16 { WeibullSurvival = 5, LognormalSurvival = 8, GammaSurvival = 10 };

// The least shape of a Weibull or gamma distribution that has a median in 32 bits.
inline constexpr f64 LeastSurvivalShape = 0.02;

// The share S(t) that survives the time t >= 0, with this median > 0. Shape: of the Weibull and the
// gamma distribution from LeastSurvivalShape; of the lognormal distribution the standard deviation
// on its scale of logarithms, above 0. 1 at t = 0.
f64 SurvivalAtModel(SurvivalModel model, f64 t, f64 median, f64 shape);

// The median of the standard form of the distribution, that with scale 1.
f64 StandardMedian(SurvivalModel model, f64 shape);

} // namespace quorvanta
