// Rounding points and constants that the numeric modules share.
#pragma once

#include "core/types.h"

namespace quorvanta {

// A rounding point inside an expression: x as a 32-bit float.
constexpr f32 Single(f64 x) {
    return static_cast<f32>(x);
}

// Pi and twice pi to the ten digits that the results are defined with.
inline constexpr f64 Pi = 3.141592654;
inline constexpr f64 TwoPi = 6.283185308;

} // namespace quorvanta
