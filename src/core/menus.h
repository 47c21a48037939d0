// What the menus offer, and what they say of the current analysis.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// Enables the entries of "Current Analysis" that apply.
void UpdateMenus();

// The analysis in words, for the head of the window.
std::string Headline();

// Tells that something is not available in this version.
void ShowNotAvailable(const std::string& what);

// The analysis is a confidence interval of a parameter.
bool IsIntervalAnalysis();

} // namespace quorvanta
