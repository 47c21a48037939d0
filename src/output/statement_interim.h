// Interim analyses, in a statement.
#pragma once

#include <string>

namespace quorvanta {

// The levels and sizes of the analyses, as the interim window shows them for one calculation or
// simulation; a table or graph has other ones at each of its points.
std::string InterimSentences();

} // namespace quorvanta
