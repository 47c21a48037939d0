// What becomes of a text that the user types into a box for numbers.
#pragma once

#include "core/types.h"

#include <string>
#include <string_view>

namespace quorvanta {

// What a value box may hold.
inline constexpr std::string_view ValueCharacters = "0123456789.-, ";

// The text without what no number contains: each such character is told, in the order of the text.
std::string OnlyAllowed(std::string text);

// A text of the value boxes of the current analysis has changed. Returns the text that the box
// has to show: the first character that no number contains is told and taken out.
std::string TypedParText(i16 parNo, const std::string& text);

// The same rule for a box that holds no parameter value (axis limits, z-values). The text goes to
// where it is stored, if it is, before the result is given up.
std::string CheckTyped(const std::string& text, std::string* stored = nullptr);

} // namespace quorvanta
