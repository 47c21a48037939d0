// Small helpers that every floor uses (the module DIMGNRL).
#pragma once

#include "core/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

// exp(min(v, 75)): v is rounded to 32 bits on its way in, the result is a 64-bit float.
f64 ExpClamped(f32 v);

constexpr f32 MinSingle(f32 a, f32 b) {
    return b < a ? b : a;
}
constexpr f32 MaxSingle(f32 a, f32 b) {
    return b > a ? b : a;
}
constexpr f64 MinDouble(f64 a, f64 b) {
    return b < a ? b : a;
}
constexpr i16 MinInteger(i16 a, i16 b) {
    return b < a ? b : a;
}
constexpr i16 MaxInteger(i16 a, i16 b) {
    return b > a ? b : a;
}
constexpr f64 MaxOf(f64 a, f64 b) {
    return b > a ? b : a;
}
constexpr f64 MinOf(f64 a, f64 b) {
    return b < a ? b : a;
}

// -1, 0 or 1.
constexpr f64 Sgn(f64 x) {
    return x > 0 ? 1.0 : (x < 0 ? -1.0 : 0.0);
}

// The largest integer not above x.
f64 Int(f64 x);

// Rounded to the nearest integer, halves to even; outside the width a RunTimeError (Overflow), for
// a NaN as well.
i16 ToI16(f64 x);
i32 ToI32(f64 x);

// Letters of ASCII in the other case, whatever the locale makes of them; any other character as it
// is.
char LowerCase(char c);
char UpperCase(char c);

// The text without any "&".
std::string StripAmpersand(std::string_view text);

// Lines as one, with a blank where one ended.
std::string OneLine(const std::vector<std::string>& lines);

// The number that an entered text stands for: a comma counts as a decimal point, reading stops at
// the first character that is not part of a number, a text without a number is 0.
f64 ReadNumber(std::string_view text);

// False for a text whose number is too large for ReadNumber.
bool IsReadable(std::string_view text);

} // namespace quorvanta
