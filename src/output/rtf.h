// The rich text format, as its specification (version 1.9, 2008) has it.
#pragma once

#include "output/table_layout.h"

#include <string>
#include <string_view>

namespace quorvanta {

// A UTF-8 text in RTF: whatever is not plain ASCII is escaped, a line separator ends a paragraph.
std::string RtfText(std::string_view text);

// A document in the Summary settings from what is RTF already.
std::string RtfDocumentOf(const std::string& body);

// The title as paragraphs and each block as a table, after an empty paragraph. A column is as wide
// as its widest text by a rough measure, and narrower where the table would not fit on a page: a
// text too wide for its cell goes on in the next line of the cell, never into another column. The
// heads come again on each page.
std::string RtfTable(const TableLayout& table);

} // namespace quorvanta
