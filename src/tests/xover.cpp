#include "tests/xover.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/anovaeq.h"
#include "tests/crossoverdesign.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta {

i16 XoverCarry;
i16 XoverContrast;

namespace {

// A combination has no H0 value but 0, or 1 for a product of medians.
constexpr OneSampleKinds MeanKinds{Group::H1Mean,
                                   NoKind,
                                   {Kind::ContrastMean, Kind::ContrastMean, Kind::ContrastMean},
                                   Kind::MeanLeftLimit,
                                   Kind::MeanRightLimit};
constexpr OneSampleKinds MedianKinds{
    Group::H1Mean,
    NoKind,
    {Kind::H1MedianOfCombination, Kind::H1MedianOfCombination, Kind::H1MedianOfCombination},
    Kind::RatioLeftLimit,
    Kind::RatioRightLimit};

constexpr i16 DesignStore = 1;
constexpr i16 EffectsStore = 4;

enum Row : i16 { EffectRow = 1, WeightRow };

bool onLogScale;
Hypotheses hypotheses;
i16 effect;
i16 residualSd;
i16 designVariance;
i16 sequences;
i16 periods;
i16 treatments;
i16 size;

void Build(bool logScale) {
    onLogScale = logScale;
    XoverCarry = Ticked(Check::Carryover) ? 1 : 0;
    XoverContrast = Ticked(Check::LinearCombination) ? 1 : 0;
    StartTestList();
    if (XoverContrast == 1)
        hypotheses = logScale ? AddHypotheses(MedianKinds, EffectScale::Log)
                              : AddHypotheses(MeanKinds, EffectScale::Plain);
    else
        AddPar(Kind::MahalanobisDistance);
    effect = NoOfPar;
    residualSd = AddPar(logScale ? Kind::LogSd : Kind::ResidualSd);
    designVariance = XoverContrast == 1 ? AddPar(Kind::DesignVariance) : i16{0};
    sequences = AddPar(Kind::NoOfSequences);
    periods = AddPar(Kind::NoOfPeriods);
    treatments = AddPar(Kind::NoOfTreatments);
    size = AddPar(Kind::SizePerSequence);
}

f64 Value(i16 parNo) {
    return f64{Single(ParValue(parNo))};
}

// Treatments, and with carryover as many such effects, but for one of each.
f64 DfOfTreatments() {
    return (Value(treatments) - 1) * (1 + XoverCarry);
}

f32 ErrorDf() {
    const f64 p = Value(periods) - 1;
    const f64 df = Value(sequences) * Value(size) * p - p - DfOfTreatments();
    return MaxSingle(1e-5F, Single(df));
}

// Keeps at least one degree of freedom for the error.
void KeepErrorDf(f64& lower, f64& upper) {
    constexpr f64 least = 1;
    const f64 p = Value(periods) - 1;
    const f64 g = Value(sequences);
    const f64 n = Value(size);
    if (UnknownParNo == size)
        lower = MaxOf(lower, (least + p + DfOfTreatments()) / (g * p));
    else if (UnknownParNo == sequences)
        lower = MaxOf(lower, (least + p + DfOfTreatments()) / (n * p));
    else if (UnknownParNo == periods)
        lower = MaxOf(lower, 1 + (least + DfOfTreatments()) / (g * n - 1));
    else if (UnknownParNo == treatments)
        upper = MinOf(upper, 1 + ((g * n - 1) * p - least) / (1 + XoverCarry));
}

// The F test of equal treatments: lambda = n D/s^2.
f64 OverallEq() {
    const f64 s = Value(residualSd);
    constexpr f64 largest = 1e20; // and beyond, what no 32-bit number holds
    const f64 lambda = MinOf(Value(size) * Value(effect) / (s * s), largest);
    return FTestEq(Single(Value(treatments) - 1), ErrorDf(), Single(lambda));
}

f64 OnItsScale(f64 value) {
    return onLogScale ? std::log(value) : value;
}

f64 CombinationEq() {
    const f32 se = Single(Value(residualSd) * std::sqrt(Value(designVariance) / Value(size)));
    const f64 truth = OnItsScale(Value(effect));
    if (NoOfTails != TwoOneSided)
        return TPowerEq(Single(truth), se, 0, 0, ErrorDf());
    const f32 low = Single(truth - OnItsScale(f64{hypotheses.Left()}));
    const f32 high = Single(OnItsScale(f64{hypotheses.Right()}) - truth);
    return TPowerEq(Single(truth), se, low, high, ErrorDf());
}

// --- What derives from the grids ----------------------------------------------------------------

Grid EffectsGrid(i16 columns) {
    Grid grid{.Store = EffectsStore,
              .Rows = XoverContrast == 1 ? WeightRow : EffectRow,
              .Columns = columns,
              .Title = onLogScale ? "Medians of the Treatments" : "Means of the Treatments",
              .RowHeads = onLogScale ? "Median" : "Mean",
              .ColumnHeads = "Treatment"};
    const GridCheck anyNumber = AllOf({});
    const GridCheck effects = onLogScale ? RatioCells() : anyNumber;
    if (XoverContrast == 0) {
        grid.Check = effects;
        return grid;
    }
    grid.RowHeads += ",Linear Comb.";
    grid.Check = AllOf({InRow(EffectRow, effects), InRow(WeightRow, RowsAddTo(0))});
    grid.RowSum = 0;
    grid.RowOfSum = WeightRow;
    return grid;
}

std::vector<f64> EffectsOf(i16 row) {
    const Array2<f32>& cells = GridData(EffectsStore);
    std::vector<f64> values;
    for (int j = 1; j <= cells.HighBound2(); ++j) {
        const f64 value{cells(row, j)};
        values.push_back(row == EffectRow ? OnItsScale(value) : value);
    }
    return values;
}

f64 Combination() {
    const std::vector<f64> effects = EffectsOf(EffectRow);
    const std::vector<f64> weights = EffectsOf(WeightRow);
    f64 sum = 0;
    for (std::size_t j = 0; j < effects.size(); ++j)
        sum += weights[j] * effects[j];
    return onLogScale ? std::exp(sum) : sum;
}

CrossoverDesign Design() {
    return {GridData(DesignStore), static_cast<i16>(GridData(EffectsStore).HighBound2()),
            XoverCarry == 1};
}

} // namespace

void XOVER::SetupTest() {
    FixSamples(MoreSamples);
    OfferChecks({Check::LinearCombination, Check::Carryover});
    if (Ticked(Check::LinearCombination))
        OfferTails({OneSided, TwoSided, TwoOneSided});
    else
        OfferTails({TwoSided});
}

void XOVER::SetParList() {
    Build(false);
}

void XOVERLOG::SetParList() {
    Build(true);
}

bool XOVER::CheckPar() {
    return XoverContrast == 0 || hypotheses.Check();
}

void XOVER::SearchLimits(f64& lower, f64& upper) {
    KeepErrorDf(lower, upper);
    if (XoverContrast == 0)
        return;
    if (NoOfTails == TwoOneSided)
        hypotheses.Narrow(lower, upper);
    else if (UnknownParNo == effect)
        LeftTailLimit(lower, upper, onLogScale ? 1 : 0);
    if (UnknownParNo == size || UnknownParNo == sequences || UnknownParNo == periods)
        StartWherePowerRises(lower, upper, &RootFunction);
    else if (UnknownParNo == treatments)
        EndWherePowerFalls(lower, upper, &RootFunction);
}

f64 XOVER::RootFunction() {
    return XoverContrast == 0 ? OverallEq() : CombinationEq();
}

bool XOVER::IsTablePar(i16 parNo) {
    return parNo == effect || (XoverContrast == 1 && parNo == designVariance);
}

std::vector<Grid> XOVER::TableGrids(i16 /*parNo*/) {
    const auto rows = GridLines(sequences);
    const auto columns = rows ? GridLines(periods) : std::nullopt;
    const auto numbers = columns ? GridLines(treatments) : std::nullopt;
    if (!numbers)
        return {};
    return {{.Store = DesignStore,
             .Rows = *rows,
             .Columns = *columns,
             .Title = "Treatment in Period",
             .RowHeads = "Sequence",
             .ColumnHeads = "Period",
             .Check = TreatmentCells(*numbers)},
            EffectsGrid(*numbers)};
}

f32 XOVER::CalcTablePar(i16 parNo) {
    if (parNo == effect && XoverContrast == 1)
        return Single(Combination());
    const auto value = XoverContrast == 1 ? Design().VarianceOf(EffectsOf(WeightRow))
                                          : Design().DistanceOf(EffectsOf(EffectRow));
    return Single(value.value_or(NoValue));
}

} // namespace quorvanta
