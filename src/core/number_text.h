// The number that a text stands for.
#pragma once

#include "core/types.h"

#include <string_view>

namespace quorvanta {

// The number at the start of a text, after blanks; reading stops at the first character that is
// not part of a number. 0 for a text that does not begin with a number. Only "." is a decimal
// point; an exponent ("1E-5", "1d3") is read. A number too large for 64 bits is a RunTimeError
// (Overflow), one too small is 0.
f64 Val(std::string_view text);

} // namespace quorvanta
