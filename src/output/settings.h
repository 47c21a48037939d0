// What the edit windows of tables, graphs, outputs and summaries change, as texts that the user
// types, and the checks that these texts have to pass.
#pragma once

#include "core/checked_array.h"

#include <string>
#include <vector>

namespace quorvanta {

struct TypeSettings {
    std::string FontName;
    std::string FontSize;
    bool Bold = false;
};

struct TableSettings {
    std::vector<std::string> Title; // lines
    std::string Columns;            // of a block; of no meaning but for a table
    std::string Decimals;           // "Auto" or a number
    TypeSettings Type;
};

struct GraphSettings {
    std::vector<std::string> Title;
    FixedArray<std::string, 0, 3> XAxis; // label, minimum, maximum, tick: "Auto" or a number
    FixedArray<std::string, 0, 3> YAxis;
    std::string ZLabel;
    TypeSettings Type;
    std::string CurveWidth; // 0: each curve wider than the one before
};

// The settings of the current analysis.
TableSettings CurrentTableSettings();
GraphSettings CurrentGraphSettings();

// Takes edited settings into the current analysis and draws it anew. False after a message, with
// everything as it was, if a text is missing or can't be what it stands for.
bool ApplySettings(const TableSettings& settings);
bool ApplySettings(const GraphSettings& settings);
// The checks of it alone.
bool CheckSettings(const GraphSettings& settings);

// The same for the type in which statements are shown.
TypeSettings CurrentSummarySettings();
bool ApplySummarySettings(const TypeSettings& settings);

// The setting that the last of these messages was about, by the text of its label.
const std::string& RefusedSetting();

} // namespace quorvanta
