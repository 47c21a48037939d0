// Tables in the rich text format.
#pragma once

#include "output/table_layout.h"

#include <string>

namespace quorvanta {

// The title as paragraphs and each block as a table, after an empty paragraph. A column is as wide
// as its widest text by a rough measure, and narrower where the table would not fit on a page: a
// text too wide for its cell goes on in the next line of the cell, never into another column. The
// heads come again on each page.
std::string RtfTable(const TableLayout& table);

} // namespace quorvanta
