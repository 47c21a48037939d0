// A reader of RTF documents, as small as those of the program allow, for the checks alone.
#pragma once

#include <string>
#include <vector>

namespace quorvanta::checks {

// A row of a table as a reader shows it.
struct RtfRow {
    std::vector<int> Edges; // right edges of the cells, twips
    std::vector<std::u16string> Cells;
    std::vector<bool> FlushRight;
    bool IsHead = false; // comes again on each page
};

// What a reader would show: the text of the last group, "\n" for a paragraph mark and for the end
// of a row, "\t" between cells, UTF-16 units for whatever is not ASCII.
struct ShownRtf {
    std::u16string Text;
    std::vector<RtfRow> Rows; // of all tables
    bool Bold = false;
    int FontSize = 0; // half points
};

// Reads the document. A check fails on a byte that is not ASCII, on a brace that is left open, and
// on a control word that the program has no reason to write.
ShownRtf Read(const std::string& rtf);

} // namespace quorvanta::checks
