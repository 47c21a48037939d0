// The gamma function (module GAMMA0).
#pragma once

#include "core/types.h"

namespace quorvanta {

// Gamma(x) by Stirling's series at x + 2, two terms (M. Abramowitz and I. A. Stegun, Handbook of
// Mathematical Functions, 1964, 6.1.40), brought back by Gamma(x + 2) = (x + 1) x Gamma(x).
//
// Gamma(0) is 0, deliberately: tables divide by it. A negative x goes back to a positive one by
// the recurrence; at the negative whole numbers, and above 169, the function has no value and the
// calculation raises a float fault.
f64 GammaFn(f64 x);

} // namespace quorvanta
