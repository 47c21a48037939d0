// The sizes of an analysis together, as a note on each of them.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// For one of two sizes of a calculation with a valid result: "Total sample size of 51 (17 in sample
// 1 and 34 in sample 2)", whole subjects, however the second one is entered. Empty for any other
// parameter.
std::string SizesNote(i16 parNo);

} // namespace quorvanta
