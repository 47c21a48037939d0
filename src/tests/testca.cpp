#include "tests/testca.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simtable.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/simproportions.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 GroupsStore = 1;

enum Row : i16 { ProportionRow = 1, LevelRow, FractionRow };

i16 trend;
i16 average;
i16 variance;
i16 levelVariance;
i16 groups;
i16 size;

f64 Proportion(i16 group) {
    return f64{GridData(GroupsStore)(ProportionRow, group)};
}
f64 Level(i16 group) {
    return f64{GridData(GroupsStore)(LevelRow, group)};
}
f64 Fraction(i16 group) {
    return f64{GridData(GroupsStore)(FractionRow, group)};
}

template <class Value>
f64 Mean(const Value& value) {
    f64 sum = 0;
    for (i16 i = 1; i <= GridData(GroupsStore).HighBound2(); ++i)
        sum += Fraction(i) * value(i);
    return sum;
}

Grid GroupsGrid(i16 columns) {
    return {.Store = GroupsStore,
            .Rows = FractionRow,
            .Columns = columns,
            .Title = "Groups",
            .RowHeads = "Proportion,Group Level,Fract.of Sample,",
            .ColumnHeads = "Group",
            .Check =
                AllOf({InRow(ProportionRow, ProportionCells()), InRow(LevelRow, IncreasingRows()),
                       InRow(FractionRow, AllOf({ProbabilityCells(1), RowsOfProportions()}))}),
            .RowSum = 1,
            .RowOfSum = FractionRow};
}

f64 LeastSpacing(i16 count) {
    f64 least = Level(2) - Level(1);
    for (i16 i = 3; i <= count; ++i)
        least = std::min(least, Level(i) - Level(static_cast<i16>(i - 1)));
    return least;
}

// Of equally large groups at equal distances, from the variance of their levels.
f64 EqualSpacing() {
    const f64 k{Single(ParValue(groups))};
    return std::sqrt(12 * f64{Single(ParValue(levelVariance))} / (k * k - 1));
}

// How many groups were filled; 0 if none were.
i16 FilledGroups() {
    const i16 count = static_cast<i16>(GridData(GroupsStore).HighBound2());
    const bool known = count > 1 && HasGridData == True && IsFilled(GroupsGrid(count));
    return known ? count : i16{0};
}

// --- Its simulation ------------------------------------------------------------------------------

struct SimGroup {
    f64 Level;
    f32 P; // under H1
};
std::vector<SimGroup> simGroups;
f32 simAverage; // the proportion of all groups under H0
f32 simCorrection;
Allocation allocation;

// Where no groups were filled: equally large ones at equal distances, with proportions that rise in
// a line and have the trend and the average that were entered.
std::vector<SimGroup> PlainGroups() {
    const int k = ToI32(ParValue(groups));
    const f64 slope = ParValue(trend) / ParValue(levelVariance);
    std::vector<SimGroup> plain;
    for (int i = 1; i <= k; ++i) {
        const f64 level = (i - (k + 1) / 2.0) * EqualSpacing();
        plain.push_back({level, Single(ParValue(average) + slope * level)});
    }
    return plain;
}

} // namespace

f64 CaCorrection() {
    if (!Ticked(Check::Correction))
        return 0;
    const i16 count = FilledGroups();
    return count > 0 ? LeastSpacing(count) : EqualSpacing();
}

void TESTCA::SetupTest() {
    FixSamples(MoreSamples);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Correction});
}

void TESTCA::SetParList() {
    StartTestList();
    trend = AddPar(Kind::H1Trend);
    average = AddPar(Kind::AverageProportion);
    variance = AddPar(Kind::TrendVariance);
    levelVariance = AddPar(Kind::LevelVariance);
    groups = AddPar(Kind::NoOfGroups);
    size = AddPar(Kind::TotalSize);
}

// p (1 - p) has the same value on both sides of 1/2. Of two tails a small variance under H1 fills
// the one that the trend lies in, a large one both.
void TESTCA::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == trend)
        LeftTailLimit(lower, upper, 0);
    else if (UnknownParNo == average)
        KeepOneSide(lower, upper, 0.5, Side::Below, &RootFunction);
    else if (UnknownParNo == variance)
        KeepOneSideOfTurn(lower, upper, Side::Below, &RootFunction);
}

// J.-M. Nam, Biometrics 43, 1987, 701-705; before him D. G. Chapman and J.-M. Nam, Biometrics 24,
// 1968, 315-327. The trend is the covariance of level and proportion over the subjects.
f64 TESTCA::RootFunction() {
    if (NoOfTails == TwoOneSided)
        return 0;
    const f64 n{Single(ParValue(size))};
    const f64 p{Single(ParValue(average))};
    const f64 b{Single(ParValue(levelVariance))};
    const f64 c{Single(ParValue(variance))};
    return NormalPowerEq({.Effect = Single(ParValue(trend)),
                          .Se0 = ErrorOfVariance(p * (1 - p) * b / n),
                          .Se1 = ErrorOfVariance(c / n),
                          .Correction = Single(CaCorrection() / 2 / n)});
}

bool TESTCA::IsTablePar(i16 parNo) {
    return parNo == trend || parNo == average || parNo == variance || parNo == levelVariance;
}

std::vector<Grid> TESTCA::TableGrids(i16 /*parNo*/) {
    const auto columns = GridLines(groups);
    if (!columns)
        return {};
    return {GroupsGrid(*columns)};
}

f32 TESTCA::CalcTablePar(i16 parNo) {
    const f64 level = Mean(Level);
    const auto distance = [level](i16 i) { return Level(i) - level; };
    switch (ParKind(parNo)) {
    case Kind::H1Trend:
        return Single(Mean([&](i16 i) { return distance(i) * Proportion(i); }));
    case Kind::AverageProportion:
        return Single(Mean(Proportion));
    case Kind::TrendVariance:
        return Single(Mean([&](i16 i) {
            return distance(i) * distance(i) * Proportion(i) * (1 - Proportion(i));
        }));
    default:
        return Single(Mean([&](i16 i) { return distance(i) * distance(i); }));
    }
}

void TESTCA::GetSimPar() {
    simGroups.clear();
    std::vector<f64> parts;
    for (i16 i = 1; i <= FilledGroups(); ++i) {
        simGroups.push_back({Level(i), Single(Proportion(i))});
        parts.push_back(Fraction(i));
    }
    if (simGroups.empty()) {
        simGroups = PlainGroups();
        parts.assign(simGroups.size(), 1);
    }
    const auto isProportion = [](const SimGroup& group) { return group.P >= 0 && group.P <= 1; };
    if (!std::ranges::all_of(simGroups, isProportion)) {
        ShowMessage("The Trend Leaves No Proportions Between 0 and 1.");
        Cancelled = True;
        return;
    }
    simAverage = Single(ParValue(average));
    simCorrection = Single(CaCorrection());
    allocation.Prepare(parts);
}

// The events of all groups, and the levels of all events; of all subjects that is computed below.
void TESTCA::SimSample(i16 /*n1*/, i16 /*n2*/, bool isH1) {
    for (std::size_t i = 0; i < simGroups.size(); ++i) {
        const i16 events =
            CountSuccesses(allocation.NewOnes(i), isH1 ? simGroups[i].P : simAverage);
        SimStudy.Sum1 += events;
        SimStudy.Sum2 = Single(f64{SimStudy.Sum2} + events * simGroups[i].Level);
    }
}

// The covariance of level and event over the subjects, its variance given the number of events that
// of the equation.
f32 TESTCA::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 < 1)
        return 1;
    const f64 n = n1;
    f64 mean = 0;
    f64 squares = 0;
    for (std::size_t i = 0; i < simGroups.size(); ++i)
        mean += allocation.Size(i) / n * simGroups[i].Level;
    for (std::size_t i = 0; i < simGroups.size(); ++i) {
        const f64 distance = simGroups[i].Level - mean;
        squares += allocation.Size(i) / n * distance * distance;
    }
    const f64 p = f64{SimStudy.Sum1} / n;
    const f32 covariance = Single((f64{SimStudy.Sum2} - f64{SimStudy.Sum1} * mean) / n);
    const f32 se = Single(std::sqrt(p * (1 - p) * squares / n));
    return NullErrorPValue(covariance, 0, 0, se, 0, Single(f64{simCorrection} / 2 / n));
}

} // namespace quorvanta
