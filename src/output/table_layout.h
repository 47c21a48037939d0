// Tables of numbers as they stand on the screen and on paper: blocks of columns under their heads.
#pragma once

#include "output/presentation.h"
#include "output/surface.h"

#include <string>
#include <vector>

namespace quorvanta {

// Columns side by side; a table with more of them goes on in a further block under the first.
struct TableBlock {
    std::vector<std::string> Heads;             // of the columns after the first
    std::vector<std::vector<std::string>> Rows; // first cell and one for each head
};

struct TableLayout {
    std::vector<std::string> Title;
    std::string CornerLabel; // over the first column: what x is
    std::string CellLabel;   // over all columns: what the cells are
    std::string HeadLabel;   // over the heads: what they are
    Font Type;
    bool StartsWithWords = false; // the first column holds words and starts at the left
    std::vector<TableBlock> Blocks;
};

// A result as a table, with as many columns of z-values in a block as the setting says, which a
// table keeps in the place of the curve width, but one at least: a first column of x, then one
// column for each z-value. Automatic decimals show every x in full and the y with the decimals that
// their range asks for; a count is then a whole number, rounded up as everywhere. A cell without a
// value is "-".
TableLayout LayOutTable(const Presentation& result);

// The table in lines of equally wide characters, each column as wide as its picture.
std::vector<std::string> TableLines(const TableLayout& table);

// The same lines with their cells set apart by tabs.
std::vector<std::string> TabbedLines(const TableLayout& table);

// The text of a cell without the blanks that align it.
std::string TrimmedCell(const std::string& text);

// Draws the table from the upper left corner of the surface, and under it paragraphs of text, in
// the table's type. A surface with pages gets a new one, with the heads once more, where a page is
// full; there the paragraphs are broken into lines as wide as the page. Returns where the drawing
// ends: its right and its lower edge on the last page.
Point DrawTable(Surface& surface, const TableLayout& table,
                const std::vector<std::string>& paragraphs = {});

} // namespace quorvanta
