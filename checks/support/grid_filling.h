// An input grid as a user fills it.
#pragma once

#include "core/gridtable.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvanta::checks {

using GridRowTexts = std::vector<std::vector<std::string>>;

// Types the rows into the current grid and accepts it; false if a check refuses.
inline bool FillCurrentGrid(const GridRowTexts& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows[i].size(); ++j)
            GridOK(static_cast<i16>(i + 1), static_cast<i16>(j + 1), rows[i][j], Leaving::Nothing);
    return !AcceptGrid().has_value();
}

} // namespace quorvanta::checks
