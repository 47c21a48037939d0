// Values of parameter kinds as text.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// The text of a value of a parameter kind: a count is a whole number, any other value is shown by
// its size.
std::string FormatPar(i16 kind, f64 x);

// The whole number that a solved count stands for: rounded up, since power and precision grow with
// it; a population rounded down, since they fall. A count that is beyond a whole number by 1e-5 or
// less is that number.
f64 WholeCount(i16 kind, f64 x);

} // namespace quorvanta
