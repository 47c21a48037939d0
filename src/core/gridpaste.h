// Blocks of figures that go into an input grid at once.
#pragma once

#include "core/types.h"

#include <string_view>

namespace quorvanta {

// A block of figures, lines set apart by line breaks and cells by tabs as spreadsheets give it,
// goes into the cells of the current grid from this one on. Characters that belong to no number are
// left out, and so are figures beyond the last cell; the status line tells so.
void PasteIntoGrid(i16 row, i16 column, std::string_view text);

} // namespace quorvanta
