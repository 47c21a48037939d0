#include "core/gridpaste.h"

#include "core/gridtable.h"
#include "core/platform.h"
#include "core/reading.h"

#include <string>
#include <vector>

namespace quorvanta {

namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

// The last line ends with a line break, or without one.
std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines = Split(text, '\n');
    if (lines.back().empty())
        lines.pop_back();
    for (std::string_view& line : lines)
        if (line.ends_with('\r'))
            line.remove_suffix(1);
    return lines;
}

// Half of a matrix whose other half mirrors it comes with blanks in the other one.
bool IsOfOtherHalf(const PastedText& pasted) {
    return pasted.Text.empty() && CurrentGrid().Symmetric;
}

} // namespace

void PasteIntoGrid(i16 row, i16 column, std::string_view text) {
    const GridCells cells(GridText);
    std::string note;
    bool isBeyond = false;
    int i = row; // a whole column of a spreadsheet has more lines than 16 bits count
    for (const std::string_view line : LinesOf(text)) {
        int j = column;
        for (const std::string_view field : Split(line, '\t')) {
            const PastedText pasted = FromPasted(field);
            if (i > cells.Rows() || j > cells.Columns())
                isBeyond = isBeyond || !pasted.Text.empty();
            else if (!IsOfOtherHalf(pasted))
                GridOK(static_cast<i16>(i), static_cast<i16>(j), pasted.Text, Leaving::Nothing);
            if (note.empty())
                note = pasted.Note;
            if (const std::string reading = ReadingNote(pasted.Text);
                note.empty() && !reading.empty())
                note = reading + ".";
            ++j;
        }
        ++i;
    }
    if (isBeyond)
        note += std::string(note.empty() ? "" : " ") + "The grid has no cells for the figures " +
                "beyond its last row or column.";
    ThePlatform().ShowStatus(note);
}

} // namespace quorvanta
