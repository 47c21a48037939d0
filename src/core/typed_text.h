// What becomes of a text that the user types into a box for numbers.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// A text of the value boxes of the current analysis has changed. Returns the text that the box
// has to show: the first character that no number contains is told and taken out.
std::string TypedParText(i16 parNo, const std::string& text);

// The same rule for a box that holds no parameter value (axis limits, z-values).
std::string CheckTyped(const std::string& text);

} // namespace quorvanta
