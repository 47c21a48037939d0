#include "output/settings.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "core/records.h"
#include "output/scale.h"
#include "output/statement.h"
#include "output/titles.h"

#include <cmath>
#include <optional>

namespace quorvanta {

namespace {

constexpr std::size_t MaxTitleLines = 16;

std::string refused;

bool TellMissing(const std::string& name) {
    refused = name;
    ThePlatform().MsgBox("A Value Is Missing.", Buttons::Ok, Icon::Exclamation, "Can't Calculate.");
    return false;
}

bool Tell(const std::string& name, const std::string& text) {
    refused = name;
    ShowMessage(text);
    return false;
}

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

bool IsAuto(const std::string& text) {
    return text == AutoLimit;
}

bool IsWholeWithin(const std::string& text, f64 low, f64 high) {
    const auto value = TypedLimit(text);
    return value && *value >= low && *value <= high && std::trunc(*value) == *value;
}

bool CheckWhole(const std::string& name, const std::string& text, int low, int high) {
    if (IsBlank(text))
        return TellMissing(name);
    if (IsWholeWithin(text, low, high))
        return true;
    return Tell(name, name + " Has To Be a Whole Number from " + std::to_string(low) + " to " +
                          std::to_string(high) + ".");
}

bool CheckTitle(const std::vector<std::string>& lines) {
    return lines.size() <= MaxTitleLines || Tell("Title", "The Title Has More Than 16 Lines.");
}

bool CheckType(const TypeSettings& type) {
    if (IsBlank(type.FontName))
        return TellMissing("Font Name");
    if (IsBlank(type.FontSize))
        return TellMissing("Font Size");
    const auto size = TypedLimit(type.FontSize);
    if (size && *size >= 1 && *size <= 200)
        return true;
    return Tell("Font Size", "Font Size Has To Be a Number from 1 to 200.");
}

bool CheckAxis(const std::string& name, const FixedArray<std::string, 0, 3>& axis) {
    constexpr const char* parts[] = {"", "min", "max", "tick"};
    for (int i = 1; i <= 3; ++i) {
        const std::string field = name + parts[i];
        if (IsBlank(axis(i)))
            return TellMissing(field);
        if (!IsAuto(axis(i)) && !TypedLimit(axis(i)))
            return Tell(field, field + " Has To Be a Number or Auto.");
    }
    const auto min = TypedLimit(axis(1));
    const auto max = TypedLimit(axis(2));
    if (min && max && !(*min < *max))
        return Tell(name + "min", name + "min Must Be < " + name + "max.");
    const auto tick = TypedLimit(axis(3));
    if (tick && !(*tick > 0))
        return Tell(name + "tick", name + "tick Has To Be Greater Than 0.");
    return true;
}

TypeSettings CurrentType() {
    return {OutFontName, OutFontSize, OutFontBold == 1};
}

void TakeType(const TypeSettings& type) {
    OutFontName = type.FontName;
    OutFontSize = type.FontSize;
    OutFontBold = type.Bold ? 1 : 0;
}

bool ShowEdited() {
    MarkChanged();
    StoreAnalysis();
    ThePlatform().RefreshChild();
    return true;
}

i16 WholeNumber(const std::string& text) {
    return static_cast<i16>(TypedLimit(text).value_or(0));
}

} // namespace

const std::string& RefusedSetting() {
    return refused;
}

TableSettings CurrentTableSettings() {
    TableSettings settings;
    settings.Title = CurrentTitle();
    settings.Columns = std::to_string(OutCurveWidth);
    settings.Decimals = OutDecimals < 0 ? AutoLimit : std::to_string(OutDecimals);
    settings.Type = CurrentType();
    return settings;
}

GraphSettings CurrentGraphSettings() {
    return {CurrentTitle(), OutXAxis,      OutYAxis,
            OutZLabel,      CurrentType(), std::to_string(OutCurveWidth)};
}

bool ApplySettings(const TableSettings& settings) {
    constexpr int mostColumns = 100;
    constexpr int mostDecimals = 8;
    // In a graph the place of the columns holds the curve width.
    const bool hasColumns = CurrentWindowKind() == TableWindow;
    if (!CheckTitle(settings.Title) ||
        (hasColumns && !CheckWhole("No Of Columns", settings.Columns, 1, mostColumns)))
        return false;
    if (!IsAuto(settings.Decimals) &&
        !CheckWhole("No Of Decimals", settings.Decimals, 0, mostDecimals))
        return false;
    if (!CheckType(settings.Type))
        return false;
    TakeTitle(settings.Title);
    if (hasColumns)
        OutCurveWidth = WholeNumber(settings.Columns);
    OutDecimals = IsAuto(settings.Decimals) ? AutoDecimals : WholeNumber(settings.Decimals);
    TakeType(settings.Type);
    return ShowEdited();
}

bool CheckSettings(const GraphSettings& settings) {
    constexpr int widestCurve = 50;
    return CheckTitle(settings.Title) && CheckAxis("X", settings.XAxis) &&
           CheckAxis("Y", settings.YAxis) && CheckType(settings.Type) &&
           CheckWhole("Curve Width", settings.CurveWidth, 0, widestCurve);
}

bool ApplySettings(const GraphSettings& settings) {
    if (!CheckSettings(settings))
        return false;
    TakeTitle(settings.Title);
    OutXAxis = settings.XAxis;
    OutYAxis = settings.YAxis;
    OutZLabel = settings.ZLabel;
    TakeType(settings.Type);
    OutCurveWidth = WholeNumber(settings.CurveWidth);
    return ShowEdited();
}

TypeSettings CurrentSummarySettings() {
    return {SummaryFont, std::to_string(SummaryFontSize), SummaryBold == 1};
}

bool ApplySummarySettings(const TypeSettings& settings) {
    if (IsBlank(settings.FontName))
        return TellMissing("Font Name");
    if (!CheckWhole("Font Size", settings.FontSize, 1, 200))
        return false;
    SummaryFont = settings.FontName;
    SummaryFontSize = WholeNumber(settings.FontSize);
    SummaryBold = settings.Bold ? 1 : 0;
    return true;
}

} // namespace quorvanta
