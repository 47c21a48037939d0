#include "core/general.h"

#include "core/fault.h"
#include "core/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvanta {

namespace {

template <class Integer>
Integer RoundTo(f64 x) {
    const f64 rounded = std::nearbyint(x);
    if (!(rounded >= std::numeric_limits<Integer>::min() &&
          rounded <= std::numeric_limits<Integer>::max()))
        throw RunTimeError(Fault::Overflow);
    return static_cast<Integer>(rounded);
}

} // namespace

f64 ExpClamped(f32 v) {
    return std::exp(f64{v > 75.0F ? 75.0F : v});
}

f64 Int(f64 x) {
    return std::floor(x);
}

i16 ToI16(f64 x) {
    return RoundTo<i16>(x);
}

i32 ToI32(f64 x) {
    return RoundTo<i32>(x);
}

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string StripAmpersand(std::string_view text) {
    std::string stripped(text);
    std::erase(stripped, '&');
    return stripped;
}

namespace {

std::string WithPoints(std::string_view text) {
    std::string point(text);
    std::replace(point.begin(), point.end(), ',', '.');
    return point;
}

} // namespace

std::string OneLine(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() || line.empty() ? "" : " ") + line;
    return text;
}

f64 ReadNumber(std::string_view text) {
    return Val(WithPoints(text));
}

bool IsReadable(std::string_view text) {
    return NumberIn(WithPoints(text)).has_value();
}

} // namespace quorvanta
