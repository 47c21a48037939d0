// The widths of the program and the values that stand for "no value".
//
// Widths and rounding points are behaviour here: a result is defined by the 32-bit and 64-bit
// values that its formula passes through.
#pragma once

#include <cstdint>

namespace quorvanta {

using i16 = std::int16_t;
using i32 = std::int32_t;
using i64 = std::int64_t;
using f32 = float;
using f64 = double;

// A truth value in the state and in the analysis record is an i16: -1 or 0.
inline constexpr i16 True = -1;
inline constexpr i16 False = 0;

constexpr i16 ToFlag(bool condition) {
    return condition ? True : False;
}

// "No value", in parameters, in table cells and in the results of searches.
inline constexpr f64 NoValue = 99999.0;

// Marks of a search that ran to the end of a scaled range.
inline constexpr i32 RangeEndMarks[] = {66666, 6666, 66667, 9999};

// The guarded edges of probabilities: 32-bit floats, widened where they are compared.
inline constexpr f64 ProbabilityFloor = 0.00001F;
inline constexpr f64 ProbabilityCeiling = 0.99999F;

// Highest parameter index of an analysis.
inline constexpr i16 MaxPar = 12;
// Highest parameter kind of the catalogue.
inline constexpr i16 MaxKind = 370;

} // namespace quorvanta
