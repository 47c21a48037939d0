#include "core/gridpaste.h"

#include "core/gridtable.h"
#include "core/platform.h"
#include "core/reading.h"

#include <sstream>
#include <string>

namespace quorvanta {

void PasteIntoGrid(i16 row, i16 column, std::string_view text) {
    const GridCells cells(GridText);
    std::string note;
    bool isBeyond = false;
    std::istringstream lines{std::string(text)};
    i16 i = row;
    for (std::string line; std::getline(lines, line); ++i) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        i16 j = column;
        std::istringstream fields(line);
        for (std::string field; std::getline(fields, field, '\t'); ++j) {
            const PastedText pasted = FromPasted(field);
            if (note.empty())
                note = pasted.Note;
            if (i > cells.Rows() || j > cells.Columns())
                isBeyond = isBeyond || !pasted.Text.empty();
            else
                GridOK(i, j, pasted.Text, Leaving::Nothing);
        }
    }
    if (isBeyond)
        note += std::string(note.empty() ? "" : " ") + "The grid has no cells for the figures " +
                "beyond its last row or column.";
    ThePlatform().ShowStatus(note);
}

} // namespace quorvanta
