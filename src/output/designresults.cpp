#include "output/designresults.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "core/records.h"
#include "groupseq/designs.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

// The window of the analysis whose design is worked out.
i32 workedOut = 0;

constexpr const char* Blanks = "   ";

bool IsUnreachable(f64 x) {
    return std::fabs(x) == f64{BoundAboveAll} || std::fabs(x) == NoValue;
}

// Four decimals; what is above 0 is 0.0001 at least. Blanks for a bound that nothing reaches.
std::string Shown(f64 x) {
    constexpr f64 least = 0.0001;
    if (IsUnreachable(x))
        return Blanks;
    return Format(x > 0 ? std::max(x, least) : x, "0.0000");
}

// Rejected, accepted, either; without a lower boundary there is only the first.
std::string ShownExits(f64 upper, f64 lower) {
    if (!GsHasLowerBound())
        return Shown(upper);
    return Shown(upper) + "    " + Shown(lower) + "    " + Shown(upper + lower);
}

std::string ShownBounds(const GsColumn& column) {
    if (!GsHasLowerBound())
        return Shown(f64{column.Upp});
    return Shown(f64{column.Upp}) + "    " + Shown(f64{column.Low});
}

std::string AnalysisName(i16 k) {
    if (k > NoOfAnal)
        return "Over-All";
    return k == NoOfAnal ? "Final Analysis" : "Interim Analysis " + std::to_string(k);
}

i16 NoOfRows() {
    return static_cast<i16>(NoOfAnal > 1 ? NoOfAnal + 1 : 1);
}

// What is accepted in the end was rejected never.
std::string ShownAccept(i16 k) {
    const GsColumn all = GsColumnOf(static_cast<i16>(NoOfAnal + 1));
    if (GsHasLowerBound() && k < NoOfAnal)
        return Shown(f64{GsColumnOf(k).LowH1});
    const f64 power{all.UppH1};
    if (!GsHasLowerBound())
        return k < NoOfAnal ? Blanks : Shown(1 - power);
    f64 before = 0;
    for (i16 i = 1; i < NoOfAnal; ++i)
        before += f64{GsColumnOf(i).LowH1};
    return Shown(k == NoOfAnal ? 1 - power - before : 1 - power);
}

std::string SizeShown(f64 size) {
    return Format(size, FormatBySize(size));
}

bool IsSimulated() {
    return CurrentWindowKind() == SimulationWindow;
}

bool IsWorkedOut() {
    return AnalysisNo != 0 && workedOut == OpeningOf(AnalysisNo) && IsGroupSeq == True &&
           (Calculated == True || IsSimulated());
}

} // namespace

void GsShowIntPar() {
    if (BoundType != BoundUserDefined)
        WriteInterimLevels();
    if (NoOfInterim > 0)
        ThePlatform().Show(FloatingWindow::InterimParameters);
}

void DropDesign() {
    workedOut = 0;
}

namespace {

// The probabilities of a calculation are those of its design; a simulation has its estimates there.
void KeepInTexts() {
    for (auto* texts : {&SignEstimateText, &PowerEstimateText, &PrAcceptEstimateText})
        texts->Fill("");
    SampleSizeEstimateText.Fill("");
    i16 i = 0;
    for (const DesignRow& row : DesignRows()) {
        SignEstimateText(i) = row.Level;
        PowerEstimateText(i) = row.Power;
        PrAcceptEstimateText(i++) = row.Accept;
    }
    const DesignAverage average = AverageOfDesign();
    SampleSizeEstimateText(0) = average.H0;
    SampleSizeEstimateText(1) = average.H1;
}

} // namespace

void GsShowResults() {
    DropDesign();
    if (GsWorkOut())
        workedOut = OpeningOf(AnalysisNo);
    if (!IsSimulated())
        KeepInTexts();
    if (workedOut != 0)
        ThePlatform().Show(FloatingWindow::SequentialMonitor);
}

std::vector<DesignRow> DesignRows() {
    std::vector<DesignRow> rows;
    if (!IsWorkedOut())
        return rows;
    for (i16 k = 1; k <= NoOfRows(); ++k) {
        const bool isOverAll = k > NoOfAnal;
        const GsColumn column = GsColumnOf(k);
        rows.push_back({AnalysisName(k), isOverAll ? "" : Format(f64{column.Fraction}, "0.000"),
                        isOverAll ? "" : ShownBounds(column),
                        ShownExits(f64{column.UppH0}, f64{column.LowH0}),
                        ShownExits(f64{column.UppH1}, f64{column.LowH1}), ShownAccept(k)});
    }
    return rows;
}

std::string DesignPairHead() {
    return GsHasLowerBound() ? "Rej.H0    Acc.H0    Either" : "";
}

std::string DesignBoundHead() {
    return GsHasLowerBound() ? "Reject H0      Accept H0" : "";
}

DesignAverage AverageOfDesign() {
    if (!IsWorkedOut() || NoOfAnal == 1)
        return {};
    return {GsAverageCaption(), SizeShown(GsAverageSize(false)), SizeShown(GsAverageSize(true))};
}

Presentation BoundaryPlot(BoundScale scale) {
    Presentation plot;
    if (!IsWorkedOut())
        return plot;
    const bool isLevel = scale == BoundScale::Level;
    const bool hasLower = GsHasLowerBound() || (NoOfTails == TwoSided && !isLevel);
    plot.Title = {isLevel ? "Nominal Significance Levels" : "Stopping Boundaries"};
    plot.XAxis = {};
    plot.XAxis(0) = "Information Fraction";
    plot.XAxis(1) = "0";
    plot.XAxis(2) = "1";
    plot.XAxis(3) = "0.2";
    plot.YAxis(0) = isLevel ? "Nominal p" : GsTestKind == GsStudent ? "t" : "Z";
    for (int i = 1; i <= 3; ++i)
        plot.YAxis(i) = AutoLimit;
    // Both bounds of a two-sided test reject.
    plot.ZLabel = GsHasLowerBound() ? "1 Reject H0, 2 Accept H0" : "";
    plot.Type = TypeOf(OutFontName, OutFontSize, OutFontBold == 1);
    const i16 curves = hasLower ? 2 : 1;
    plot.X.ReDim(1, NoOfAnal);
    plot.Y.ReDim(1, NoOfAnal, 1, curves);
    plot.Z.ReDim(1, curves);
    const auto value = [](f32 x) { return IsUnreachable(f64{x}) ? Single(NoValue) : x; };
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const GsColumn column = GsColumnOf(k);
        plot.X(k) = column.Fraction;
        plot.Y(k, 1) = isLevel ? column.Reject : value(column.Upp);
        if (hasLower)
            plot.Y(k, 2) = isLevel ? column.Accept : value(column.Low);
    }
    for (i16 curve = 1; curve <= curves; ++curve)
        plot.Z(curve) = static_cast<f32>(curve);
    return plot;
}

} // namespace quorvanta
