#include "output/distrplot.h"

#include "core/analysis_state.h"
#include "core/checked_array.h"
#include "core/menus.h"
#include "core/records.h"
#include "numeric/rounding.h"
#include "output/distrtable.h"
#include "output/format.h"
#include "output/scale.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace quorvanta {

namespace {

constexpr f64 Steps = 400; // of a continuous plot

// What the user has set, and for which analysis.
struct Edited {
    i32 Opening = 0;
    std::string Headline;
    DistrPlotKind Kind = SurvivalPlot;
    GraphSettings Settings;
};
Edited edited;

bool IsSurvival() {
    return CurrentDistributions().Kind == DistrTableKind::Survival;
}

std::string YLabel(DistrPlotKind kind, bool isDiscrete) {
    switch (kind) {
    case SurvivalPlot:
        return "Survival Function";
    case CdfPlot:
        return "Cumulative Distribution Function";
    case HazardPlot:
        return "Hazard Function";
    default:
        return isDiscrete ? "Probability Mass Function" : "Probability Density Function";
    }
}

std::string HeadOf(const DistrTable& table) {
    if (table.Kind == DistrTableKind::Survival)
        return "Survival";
    return table.Kind == DistrTableKind::Family ? "Distribution" : "Hypothesis";
}

std::string CriticalText(const DistrTable& table) {
    if (table.CriticalValues.empty())
        return "";
    std::string text = table.CriticalValues.size() > 1 ? "Critical Values: " : "Critical Value: ";
    for (std::size_t i = 0; i < table.CriticalValues.size(); ++i)
        text += (i > 0 ? ", " : "") + Format(table.CriticalValues[i], "#####0.0##");
    return text;
}

GraphSettings StartSettings(DistrPlotKind kind, const DistrTable& table) {
    GraphSettings settings;
    settings.Title = {Headline()};
    if (const std::string critical = CriticalText(table); !critical.empty())
        settings.Title.push_back(critical);
    settings.XAxis(0) = table.What;
    settings.YAxis(0) = YLabel(kind, table.IsDiscrete);
    for (int i = 1; i <= 3; ++i)
        settings.XAxis(i) = settings.YAxis(i) = AutoLimit;
    if (kind == CdfPlot || kind == SurvivalPlot) {
        settings.YAxis(1) = "0";
        settings.YAxis(2) = "1.2";
        settings.YAxis(3) = "0.2";
    }
    settings.ZLabel = HeadOf(table);
    settings.Type = {OutFontName, OutFontSize, OutFontBold == 1};
    settings.CurveWidth = "2";
    return settings;
}

GraphSettings SettingsFor(DistrPlotKind kind, const DistrTable& table) {
    const bool isSame = edited.Opening == OpeningOf(AnalysisNo) && edited.Kind == kind &&
                        edited.Headline == Headline();
    return isSame ? edited.Settings : StartSettings(kind, table);
}

using AxisTexts = FixedArray<std::string, 0, 3>; // label, minimum, maximum, tick

// The axis with limits in the place of "Auto" that are the next multiples of a round step, no more
// than so many steps apart: the curves fill the plot from one end to the other.
AxisTexts WithRoundLimits(const AxisTexts& axis, f64 low, f64 high, f64 mostSteps) {
    AxisTexts round = axis;
    if (!(high > low) || !std::isfinite(high - low))
        return round;
    f64 step = std::pow(10, std::floor(std::log10((high - low) / mostSteps)));
    for (const f64 factor : {2.0, 2.5, 2.0}) // 1, 2, 5, 10
        if (high - low > mostSteps * step)
            step *= factor;
    constexpr f64 slack = 1e-6;
    const f64 first = std::floor(low / step + slack) * step;
    const f64 last = std::ceil(high / step - slack) * step;
    const std::string format = TickFormat(Single(step), Single(first));
    const f64 limits[] = {first, last, step};
    for (int i = 1; i <= 3; ++i)
        if (!TypedLimit(axis(i)))
            round(i) = Format(limits[i - 1], format);
    return round;
}

// The x-values of the plot; of counts both ends of each column.
std::vector<f64> XValues(const DistrTable& table, const AxisTexts& axis, DistrPlotKind kind) {
    const f64 low = TypedLimit(axis(1)).value_or(table.Low);
    const f64 high = TypedLimit(axis(2)).value_or(table.High);
    std::vector<f64> values;
    if (!(high > low) && !table.IsDiscrete)
        return values;
    constexpr f64 mostCounts = 2000;
    if (table.IsDiscrete) {
        const f64 half = kind == CdfPlot ? 0 : 0.5; // a column stands around its count
        const f64 first = std::floor(low);
        const f64 last = std::min(std::floor(high), first + mostCounts);
        for (f64 x = first; x <= last; ++x) {
            values.push_back(x - half);
            values.push_back(x + 1 - half);
        }
        return values;
    }
    const f64 step = (high - low) / Steps;
    const i32 points = static_cast<i32>(std::floor((high - low) / step + 0.5)) + 1;
    for (i32 i = 0; i < points; ++i)
        values.push_back(low + i * step);
    return values;
}

f64 HazardAt(const PlottedDistr& distr, f64 x) {
    const f64 left = 1 - distr.Cdf(x);
    constexpr f64 none = 1e-6; // what the distribution functions in 32 bits leave of 1
    return left <= none ? NoValue : distr.Density(x) / left;
}

f64 ValueAt(const PlottedDistr& distr, DistrPlotKind kind, f64 x) {
    switch (kind) {
    case SurvivalPlot:
        return 1 - distr.Cdf(x);
    case CdfPlot:
        return distr.Cdf(x);
    case HazardPlot:
        return HazardAt(distr, x);
    default:
        return distr.Density(x);
    }
}

// A number that a cell can hold; NoValue for all others.
f32 CellOf(f64 value) {
    return std::isfinite(value) && std::fabs(value) < NoValue ? Single(value) : Single(NoValue);
}

Presentation TableOf(DistrPlotKind kind, const DistrTable& table, const GraphSettings& settings) {
    Presentation plot;
    plot.Title = settings.Title;
    constexpr f64 mostXSteps = 20;
    plot.XAxis = WithRoundLimits(settings.XAxis, table.Low, table.High, mostXSteps);
    plot.YAxis = settings.YAxis;
    plot.ZLabel = settings.ZLabel;
    plot.Type = TypeOf(settings.Type.FontName, settings.Type.FontSize, settings.Type.Bold);
    plot.CurveWidth = static_cast<i16>(TypedLimit(settings.CurveWidth).value_or(0));
    const std::vector<f64> xs = XValues(table, plot.XAxis, kind);
    if (xs.empty() || table.Distributions.empty())
        return plot;
    const int rows = static_cast<int>(xs.size());
    const int columns = static_cast<int>(table.Distributions.size());
    plot.X.ReDim(1, rows);
    plot.Y.ReDim(1, rows, 1, columns);
    f64 highest = 0;
    for (int i = 1; i <= rows; ++i) {
        const f64 x = xs[static_cast<std::size_t>(i - 1)];
        plot.X(i) = Single(x);
        // Both ends of a column have the value of its count.
        const f64 half = kind == CdfPlot ? 0.0 : 0.5;
        const f64 at = !table.IsDiscrete ? x : i % 2 == 1 ? x + half : x - 1 + half;
        for (int j = 1; j <= columns; ++j) {
            const PlottedDistr& distr = table.Distributions[static_cast<std::size_t>(j - 1)];
            plot.Y(i, j) = CellOf(ValueAt(distr, kind, at));
            // Where next to nothing is left a hazard may be of any size.
            constexpr f64 few = 0.01;
            if (HasCellValue(plot.Y(i, j)) && (kind != HazardPlot || 1 - distr.Cdf(at) >= few))
                highest = std::max(highest, f64{plot.Y(i, j)});
        }
    }
    constexpr f64 mostYSteps = 10;
    plot.YAxis = WithRoundLimits(plot.YAxis, 0, highest, mostYSteps);
    for (int j = 1; j <= columns; ++j) {
        const PlottedDistr& distr = table.Distributions[static_cast<std::size_t>(j - 1)];
        plot.ZTexts.push_back(distr.Label);
        if (kind == DensityPlot)
            for (const auto& [from, to] : distr.Areas)
                plot.Areas.push_back({j, from, to});
    }
    plot.Marks = table.CriticalValues;
    return plot;
}

DistrPlotKind KindIn(const DistrTable& table) {
    const auto kind = static_cast<DistrPlotKind>(DistrGraphStyle);
    return kind == SurvivalPlot && table.Kind != DistrTableKind::Survival ? DensityPlot : kind;
}

} // namespace

std::vector<DistrPlotOption> AllDistrPlotOptions() {
    return {{SurvivalPlot, "Survival Function"},
            {CdfPlot, "Distribution Function"},
            {DensityPlot, "Probability Function"},
            {HazardPlot, "Hazard Function"}};
}

std::vector<DistrPlotOption> DistrPlotOptions() {
    std::vector<DistrPlotOption> options = AllDistrPlotOptions();
    if (!IsSurvival())
        options.erase(options.begin());
    return options;
}

DistrPlotKind CurrentDistrPlot() {
    return KindIn(CurrentDistributions());
}

void ChooseDistrPlot(DistrPlotKind kind) {
    DistrGraphStyle = kind;
    StoreAnalysis();
}

Presentation FillDistrTable(DistrPlotKind kind) {
    const DistrTable table = CurrentDistributions();
    return TableOf(kind, table, SettingsFor(kind, table));
}

Presentation DistrGraph() {
    return FillDistrTable(CurrentDistrPlot());
}

std::string DistrGraphInWords() {
    const DistrTable table = CurrentDistributions();
    if (table.Distributions.empty())
        return "There Is No Distribution to Show.";
    std::string words = YLabel(KindIn(table), table.IsDiscrete) + " of " + table.What + ": ";
    for (std::size_t i = 0; i < table.Distributions.size(); ++i)
        words += (i > 0 ? ", " : "") + table.Distributions[i].Label;
    const std::string critical = CriticalText(table);
    return words + (critical.empty() ? "." : ". " + critical + ".");
}

GraphSettings DistrGraphSettings() {
    const DistrTable table = CurrentDistributions();
    return SettingsFor(KindIn(table), table);
}

bool ApplyDistrGraphSettings(const GraphSettings& settings) {
    if (!CheckSettings(settings))
        return false;
    edited = {OpeningOf(AnalysisNo), Headline(), CurrentDistrPlot(), settings};
    return true;
}

} // namespace quorvanta
