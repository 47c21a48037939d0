// Numbers in texts, whatever the locale of the process: the windows take that of their user.
#pragma once

#include "core/types.h"

#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace quorvanta::validation {

// The number that the whole text stands for, 0 where 64 bits are too few for it; throws
// std::runtime_error for anything else.
inline f64 ParseNumber(std::string_view text) {
    f64 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range && text.find("e-") != std::string_view::npos)
        return 0;
    if (error != std::errc() || end != text.data() + text.size())
        throw std::runtime_error("not a number: " + std::string(text));
    return number;
}

// The number with so many digits: of all (general), or after the point (fixed, scientific).
inline std::string NumberText(f64 number, int digits,
                              std::chars_format format = std::chars_format::general) {
    char text[64];
    const auto [end, error] =
        std::to_chars(std::begin(text), std::end(text), number, format, digits);
    if (error != std::errc())
        throw std::runtime_error("a number too long");
    return {std::begin(text), end};
}

} // namespace quorvanta::validation
