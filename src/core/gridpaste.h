// Blocks of figures that go into an input grid at once.
#pragma once

#include "core/types.h"

#include <string_view>

namespace quorvanta {

// A block of figures, lines set apart by line breaks and cells by tabs as spreadsheets give it,
// goes into the cells of the current grid from this one on; a blank empties its cell, but not in a
// symmetric grid, where half of a matrix may come in. Characters that belong to no number are left
// out, and so are figures beyond the last cell; the status line tells so, or of the first figure
// that is read as another number than it seems to say.
void PasteIntoGrid(i16 row, i16 column, std::string_view text);

} // namespace quorvanta
