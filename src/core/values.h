// The values of the current analysis, between their texts and their numbers.
#pragma once

#include <string>

namespace quorvanta {

// True if the text stands for a value: neither blank nor "-".
bool HasValue(const std::string& text);

// True if every parameter but the unknown has a value.
bool AllValuesPresent();

// Takes every ParValue from its text; a text without a value gives 0.
void ReadParValues();

} // namespace quorvanta
