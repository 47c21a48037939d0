// Outputs as web pages (HTML 5), which spreadsheets and word processors read from the clipboard
// too.
#pragma once

#include "output/table_layout.h"

#include <string>
#include <string_view>

namespace quorvanta {

// A UTF-8 text as it may stand in HTML and XML, in quotation marks too: what would be markup is
// escaped, control characters that XML 1.0 has no place for are left out, and a byte that is no
// text becomes the replacement character.
std::string MarkupText(std::string_view text);

// The title as paragraphs and each block as a table. A cell that is a number carries it with a
// decimal point beside its text, so that a spreadsheet of any language takes it for one.
std::string HtmlTable(const TableLayout& table);

// A page of what is HTML already, with its title, a description, and the name of the program.
std::string HtmlPage(const std::string& title, const std::string& description,
                     const std::string& body);

// A text as paragraphs, one for each line.
std::string HtmlParagraphs(std::string_view text);

} // namespace quorvanta
