#include "tests/testmh.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
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

#include <cmath>
#include <span>

namespace quorvanta {

i16 MhCorrection;

namespace {

// A table of proportions is no table of odds ratios: each has a store of its own.
constexpr i16 ProportionsStore = 1;
constexpr i16 OddsRatiosStore = 4;

enum Column : i16 { FirstProportion = 1, SecondEntry, FirstSize, SecondSize };

bool asOddsRatio;
i16 difference;
i16 nullVariance;
i16 variance;
i16 strata;
i16 size;

i16 StrataStore() {
    return asOddsRatio ? OddsRatiosStore : ProportionsStore;
}

// One stratum: its proportions and the parts of all subjects that its two groups have.
struct Stratum {
    f64 P1;
    f64 P2;
    f64 Part1;
    f64 Part2;
};

// The second proportion r/(1/o + r), with o the odds of the first one, in a form that a proportion
// of 0 or 1 does no harm.
f64 FromOddsRatio(f64 p1, f64 r) {
    return r * p1 / ((1 - p1) + r * p1);
}

std::vector<Stratum> ReadStrata() {
    const Array2<f32>& cells = GridData(StrataStore());
    f64 all = 0;
    for (int i = 1; i <= cells.HighBound1(); ++i)
        all += f64{cells(i, FirstSize)} + f64{cells(i, SecondSize)};
    std::vector<Stratum> list;
    for (int i = 1; i <= cells.HighBound1(); ++i) {
        const f64 p1{cells(i, FirstProportion)};
        const f64 second{cells(i, SecondEntry)};
        list.push_back({p1, asOddsRatio ? FromOddsRatio(p1, second) : second,
                        f64{cells(i, FirstSize)} / all, f64{cells(i, SecondSize)} / all});
    }
    return list;
}

// What a stratum adds to the three sums, where t is its part of all subjects and s1, s2 the parts
// of its groups within it: w (p2 - p1), w p (1 - p) with the average p, and w (s2 p1 q1 + s1 p2
// q2), all with w = t s1 s2. They are mean and variances, under H0 and under H1, of the number of
// events less the one expected, for each subject (R. F. Woolson, J. A. Bean and P. B. Rojas,
// Biometrics 42, 1986, 927-932; J.-M. Nam, Biometrics 48, 1992, 389-395).
f64 Contribution(i16 kind, const Stratum& stratum) {
    const auto& [p1, p2, part1, part2] = stratum;
    const f64 t = part1 + part2;
    const f64 s1 = part1 / t;
    const f64 s2 = part2 / t;
    const f64 w = t * s1 * s2;
    if (kind == Kind::H1SumOfDifferences)
        return w * (p2 - p1);
    if (kind == Kind::H1SumOfVariances)
        return w * (s2 * p1 * (1 - p1) + s1 * p2 * (1 - p2));
    const f64 p = s1 * p1 + s2 * p2;
    return w * p * (1 - p);
}

Grid StrataGrid(i16 rows) {
    return {.Store = StrataStore(),
            .Rows = rows,
            .Columns = SecondSize,
            .Title = "Proportions and Sizes of the Strata",
            .RowHeads = "Stratum No",
            .ColumnHeads = asOddsRatio ? "Proportion 1,OddsRatio,Size 1,Size 2"
                                       : "Proportion 1,Proportion 2,Size 1,Size 2",
            .Check = AllOf({InColumns(FirstProportion, FirstProportion, ProportionCells()),
                            InColumns(SecondEntry, SecondEntry,
                                      asOddsRatio ? RatioCells() : ProportionCells()),
                            InColumns(FirstSize, SecondSize, RatioCells())})};
}

// --- Its simulation ------------------------------------------------------------------------------

std::vector<Stratum> simStrata;
Allocation allocation; // of group 1 and 2 of each stratum

// Where no strata were filled: strata alike, with groups alike in size, that have the difference
// and the variance under H0 that were entered. Without a solution the proportions are below 0.
Stratum PlainStratum(f64 part) {
    const f64 d = 4 * ParValue(difference);
    const f64 spread = 4 * ParValue(nullVariance); // p (1 - p)
    const f64 p = spread > 0.25 ? -1 : (1 - std::sqrt(1 - 4 * spread)) / 2;
    return {p - d / 2, p + d / 2, part / 2, part / 2};
}

bool IsProportion(f64 p) {
    return p >= 0 && p <= 1;
}

// The successes of one group in a stratum stand in SimStudy.Value, those of group 1 before those of
// group 2.
std::size_t CellOf(std::size_t stratum, int group) {
    return 2 * stratum + static_cast<std::size_t>(group - 1);
}

} // namespace

void TESTMH::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Correction, Check::OddsRatio});
}

void TESTMH::SetParList() {
    MhCorrection = Ticked(Check::Correction) ? 1 : 0;
    asOddsRatio = Ticked(Check::OddsRatio);
    StartTestList();
    difference = AddPar(Kind::H1SumOfDifferences);
    nullVariance = AddPar(Kind::H0SumOfVariances);
    variance = AddPar(Kind::H1SumOfVariances);
    strata = AddPar(Kind::NoOfStrata);
    size = AddPar(Kind::TotalSize);
}

// Of two tails a small variance under H1 fills the one that the effect lies in, a large one both.
void TESTMH::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == difference)
        LeftTailLimit(lower, upper, 0);
    else if (UnknownParNo == variance)
        KeepOneSideOfTurn(lower, upper, Side::Below, &RootFunction);
}

// The labels of the two variances speak of standard deviations; it is the variances that are
// entered.
f64 TESTMH::RootFunction() {
    if (NoOfTails == TwoOneSided)
        return 0;
    const f64 n{Single(ParValue(size))};
    const auto se = [n](i16 parNo) { return ErrorOfVariance(f64{Single(ParValue(parNo))} / n); };
    return NormalPowerEq({.Effect = Single(ParValue(difference)),
                          .Se0 = se(nullVariance),
                          .Se1 = se(variance),
                          .Correction = Single(MhCorrection == 1 ? 0.5 / n : 0)});
}

bool TESTMH::IsTablePar(i16 parNo) {
    return parNo == difference || parNo == nullVariance || parNo == variance;
}

std::vector<Grid> TESTMH::TableGrids(i16 /*parNo*/) {
    const auto rows = GridLines(strata);
    if (!rows)
        return {};
    return {StrataGrid(*rows)};
}

f32 TESTMH::CalcTablePar(i16 parNo) {
    f64 sum = 0;
    for (const Stratum& stratum : ReadStrata())
        sum += Contribution(ParKind(parNo), stratum);
    return Single(sum);
}

void TESTMH::GetSimPar() {
    const i16 rows = ToI16(ParValue(strata));
    if (HasGridData == True && IsFilled(StrataGrid(rows)))
        simStrata = ReadStrata();
    else
        simStrata.assign(static_cast<std::size_t>(rows), PlainStratum(1.0 / rows));
    std::vector<f64> parts;
    for (const Stratum& stratum : simStrata) {
        if (!IsProportion(stratum.P1) || !IsProportion(stratum.P2)) {
            ShowMessage("Difference and Variance Leave No Proportions Between 0 and 1.");
            Cancelled = True;
            return;
        }
        parts.push_back(stratum.Part1);
        parts.push_back(stratum.Part2);
    }
    allocation.Prepare(parts);
}

// Under H0 both groups of a stratum have its average proportion.
void TESTMH::SimSample(i16 /*n1*/, i16 /*n2*/, bool isH1) {
    const int cells = static_cast<int>(2 * simStrata.size());
    if (SimStudy.Value.HighBound() < cells)
        SimStudy.Value.ReDim(1, cells);
    const std::span<f32> successes = SimStudy.Value.Raw();
    for (std::size_t i = 0; i < simStrata.size(); ++i) {
        const auto& [p1, p2, part1, part2] = simStrata[i];
        const f64 average = (part1 * p1 + part2 * p2) / (part1 + part2);
        const std::size_t first = CellOf(i, 1);
        const std::size_t second = CellOf(i, 2);
        successes[first] += CountSuccesses(allocation.NewOnes(first), Single(isH1 ? p1 : average));
        successes[second] +=
            CountSuccesses(allocation.NewOnes(second), Single(isH1 ? p2 : average));
    }
}

// The successes in group 2 less those expected given all margins, over their hypergeometric
// variance (N. Mantel and W. Haenszel 1959). A stratum with an empty group adds nothing.
f32 TESTMH::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 < 1)
        return 1;
    const std::span<const f32> successes = SimStudy.Value.Raw();
    f64 excess = 0;
    f64 sumOfVariances = 0;
    for (std::size_t i = 0; i < simStrata.size(); ++i) {
        const f64 size1 = allocation.Size(CellOf(i, 1));
        const f64 size2 = allocation.Size(CellOf(i, 2));
        const f64 all = size1 + size2;
        if (size1 < 1 || size2 < 1)
            continue;
        const f64 second{successes[CellOf(i, 2)]};
        const f64 both = f64{successes[CellOf(i, 1)]} + second;
        excess += second - size2 * both / all;
        sumOfVariances += size1 * size2 * both * (all - both) / (all * all * (all - 1));
    }
    const f32 se = Single(std::sqrt(sumOfVariances));
    return NullErrorPValue(Single(excess), 0, 0, se, 0, MhCorrection == 1 ? 0.5F : 0.0F);
}

} // namespace quorvanta
