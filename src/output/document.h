// What goes out of the program as text: the result of the window in front and its statement.
#pragma once

#include "output/surface.h"
#include "output/table_layout.h"

#include <string>

namespace quorvanta {

struct OutputDocument {
    TableLayout Table;     // empty for the statement alone
    std::string Statement; // one paragraph, unless the user has made it more
};

// The statement of the current analysis and nothing else.
OutputDocument StatementDocument();

// The table of a table or graph, the values of all parameters of a calculation, and the statement.
OutputDocument ResultDocument();

// For pasting: the cells of a table set apart by tabs, the statement as one paragraph without
// breaks.
std::string PlainText(const OutputDocument& document);

// The same as an RTF document, in which a table is one.
std::string RtfOf(const OutputDocument& document);

// The same as a web page that names the program.
std::string HtmlOf(const OutputDocument& document);

// The table, with the statement and the name of the program, as comma-separated values.
std::string CsvOf(const OutputDocument& document);

// Draws the document with the statement under the table, in lines as wide as the page; on a
// surface without pages, in lines as WrapText breaks them. Returns its right and its lower edge.
Point DrawDocument(Surface& surface, const OutputDocument& document);

// Draws a graph on a page with the statement under it, in the graph's type and in lines as wide as
// the page. A statement that would take more than half of the page has the next one to itself.
void DrawGraphPage(Surface& surface, const Presentation& graph, const std::string& statement);

} // namespace quorvanta
