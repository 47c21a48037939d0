// What a user answers who sets up a group sequential design.
#pragma once

#include "groupseq/boundchoice.h"
#include "support/grid_filling.h"
#include "support/scripted_platform.h"

#include <string>
#include <vector>

namespace quorvanta::checks {

// The boundaries of that type with their parameter, levels of his own where they are asked for, and
// the fractions of the interim analyses.
inline void AnswerDesign(ScriptedPlatform& platform, i16 type, const std::string& par,
                         const std::vector<std::string>& fractions,
                         const GridRowTexts& levels = {}) {
    platform.BoundaryChoices = {[type, par] {
        ChooseBoundType(type);
        if (!FamilyParCaption(type).empty())
            FamilyParText = par;
        return AcceptBoundary();
    }};
    platform.GridFillings.clear();
    if (!levels.empty())
        platform.GridFillings.push_back([levels] { return FillCurrentGrid(levels); });
    platform.GridFillings.push_back([fractions] {
        GridRowTexts rows;
        for (const std::string& fraction : fractions)
            rows.push_back({fraction});
        return FillCurrentGrid(rows);
    });
}

} // namespace quorvanta::checks
