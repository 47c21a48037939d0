// Interim analyses, in a statement.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// The interim analyses and the final one; 1 without any.
i16 NoOfAnalyses();

// The levels and sizes of the analyses, as the interim window shows them for one calculation or
// simulation; a table or graph has other ones at each of its points.
std::string InterimSentences();

} // namespace quorvanta
