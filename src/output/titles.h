// The texts that a table or graph starts with: its title and the labels of its axes.
#pragma once

#include <string>
#include <vector>

namespace quorvanta {

// Gives the current analysis the texts that follow from its test and from the parameters on its
// axes. What the user has edited is kept as long as it stands for the same: a label, and the
// limits of its axis, until another parameter takes the axis; the title until the analysis is
// another one.
void BuildDefaultTitles();

// The analysis comes from its file, where its texts go with the parameters that it has now.
void TakeTitlesFromFile();

// The lines over the current result. A calculation that was given none has its headline, and so
// has one that was given them under another headline.
std::vector<std::string> CurrentTitle();

// The user has edited them.
void TakeTitle(const std::vector<std::string>& lines);

} // namespace quorvanta
