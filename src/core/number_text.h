// The number that a text stands for.
#pragma once

#include "core/types.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// The number at the start of a text, after blanks; reading stops at the first character that is
// not part of a number. 0 for a text that does not begin with a number. Only "." is a decimal
// point; an exponent ("1E-5", "1d3") is read. Nothing for a number too large for 64 bits; one too
// small is 0.
std::optional<f64> NumberIn(std::string_view text);

// The same; a number too large for 64 bits is a RunTimeError (Overflow).
f64 Val(std::string_view text);

// A text that is a number and nothing else, blanks around it aside, as every program reads it: with
// a decimal point where a comma was typed. Nothing for any other text.
std::optional<std::string> DecimalText(std::string_view text);

} // namespace quorvanta
