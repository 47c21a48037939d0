// The cells of a line of data.
#pragma once

#include <string>
#include <vector>

namespace quorvanta::validation {

// The parts of the text between separators; one, which is empty, of an empty text.
inline std::vector<std::string> CellsOf(const std::string& text, char separator = '\t') {
    std::vector<std::string> cells{""};
    for (const char c : text) {
        if (c == separator)
            cells.emplace_back();
        else
            cells.back() += c;
    }
    return cells;
}

} // namespace quorvanta::validation
