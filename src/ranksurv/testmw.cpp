#include "ranksurv/testmw.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/records.h"
#include "core/values.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "output/format.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 TestOfCategories = 42;
constexpr i16 EqualProportions = 1; // option of Group::AverageProportions
constexpr i16 CategoryStore = 1;

constexpr EffectKinds OrderKinds{Kind::H1ProbabilityOfOrder, Kind::ProportionLeftLimit,
                                 Kind::ProportionRightLimit};
constexpr EffectKinds OddsRatioKinds{Kind::H1OddsRatio, NoKind, NoKind};

bool ordered; // categories
bool equalProportions;
Hypotheses hypotheses;
i16 average; // the sum of the cubes of the average proportions, or the number of equal ones
SampleValues sizes;

// --- A continuous outcome ------------------------------------------------------------------------

// The number of pairs in which sample 2 has the larger value, with the variance that it has under
// H0 (H. B. Mann and D. R. Whitney, Annals of Mathematical Statistics 18, 1947, 50-60; the power:
// G. E. Noether, Journal of the American Statistical Association 82, 1987, 645-647).
f64 OrderEq() {
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const f64 p = hypotheses.Truth();
    const f32 s = Single(std::sqrt(n1 * n2 * (n1 + n2 + 1) / 12));
    const auto pairs = [pairs = n1 * n2](f64 distance) { return Single(distance * pairs); };
    NormalStatistic statistic{
        .Effect = pairs(p - 0.5), .Se0 = s, .Se1 = s, .Se0Left = s, .Se0Right = s};
    if (NoOfTails == TwoOneSided) {
        statistic.AboveLeft = pairs(p - f64{hypotheses.Left()});
        statistic.BelowRight = pairs(f64{hypotheses.Right()} - p);
    }
    return NormalPowerEq(statistic);
}

// --- Its simulation ------------------------------------------------------------------------------

f32 shiftH0; // of group 2 where H0 is true: between two limits, at the one nearer to H1

// The distribution that was chosen, if the probability is the one that follows from it; else one
// of its family, or a normal one, shifted so that the probability that was typed holds.
DistrRow ShiftedDistribution() {
    DistrRow distr{SimNormal, 0, 1};
    if (NoOfDistr() > 0 && IsOffered(DistrList::ShiftModels, Distr(NoOfDistr()).Code))
        distr = Distr(NoOfDistr());
    const f32 p = Single(hypotheses.Truth());
    SimDistrNo = distr.Code;
    ShiftPar1 = distr.Par1;
    ShiftPar2 = distr.Par2;
    constexpr f32 asShown = 1e-6F;
    if (std::fabs(f64{PrMWFromShift()} - f64{p}) > f64{asShown})
        distr.Par1 = Single(f64{ShiftOf(PrMWFromShift, p)} * f64{distr.Par2});
    return distr;
}

// --- Ordered categories --------------------------------------------------------------------------

const Grid& CategoryGrid() {
    static const Grid grid{.Store = CategoryStore,
                           .Rows = 1,
                           .Columns = MaxGridLines,
                           .Title = "Proportion in Category",
                           .RowHeads = "Control Group",
                           .ColumnHeads = "Category",
                           .Check = RowsOfProportions(),
                           .RowSum = 1,
                           .Start = "0"};
    return grid;
}

// Is the sum of cubes sought, or on an axis?
bool VariesAverage() {
    return UnknownParNo == average ||
           (IsTableOrGraph() && (XParNo == average || ZParNo == average));
}

// The control proportions stand in the grid. A sum of cubes that is typed, sought or on an axis
// takes their place.
bool HasControlGroup() {
    return ordered && !equalProportions && HasGridData == True && !VariesAverage() &&
           IsFilled(CategoryGrid());
}

std::vector<f32> ControlGroup() {
    std::vector<f32> proportions;
    for (i16 i = 1; i <= MaxGridLines; ++i)
        proportions.push_back(GridData(CategoryStore)(1, i));
    return proportions;
}

f32 ControlCubeSum() {
    return OrdCubeSum(Single(hypotheses.Truth()), sizes.First(), sizes.Second(), ControlGroup());
}

f32 CubeSum() {
    if (HasControlGroup())
        return ControlCubeSum();
    const f64 value{Single(ParValue(average))};
    return Single(equalProportions ? 1 / (value * value) : value);
}

// The log odds ratio under proportional odds, in ordered categories (J. Whitehead, Statistics in
// Medicine 12, 1993, 2257-2271).
f64 CategoriesEq() {
    constexpr f32 most = 0.99999F;
    const f64 rest = 1 - f64{MinSingle(CubeSum(), most)};
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const f32 s = Single(std::sqrt(3 * (n1 + n2) / (n1 * n2 * rest)));
    return NorPowerEq(Single(std::log(hypotheses.Truth())), s, s, 0, 0, 0, 0, 0);
}

// --- Their simulation ----------------------------------------------------------------------------

Array1<f32> control; // (1..c) proportions of group 1, and of group 2 where H0 is true
Array1<f32> shifted; // of group 2 under H1
Array1<f32> counts1; // (1..c) subjects in the categories so far
Array1<f32> counts2;

// Those of the grid; else as many equal categories as have the sum of cubes that was typed.
std::vector<f32> SimulatedControl() {
    if (HasControlGroup())
        return ControlGroup();
    const f64 categories = MaxOf(2, std::nearbyint(1 / std::sqrt(f64{CubeSum()})));
    return std::vector<f32>(static_cast<std::size_t>(categories), Single(1 / categories));
}

void FindCategories() {
    const std::vector<f32> proportions = SimulatedControl();
    const int c = static_cast<int>(proportions.size());
    control.ReDim(1, c);
    shifted.ReDim(1, c);
    const f64 factor = 1 / hypotheses.Truth();
    f64 Q = 0;
    f64 before = 0;
    for (int j = 1; j <= c; ++j) {
        control(j) = proportions[static_cast<std::size_t>(j - 1)];
        Q = MinOf(1, Q + f64{control(j)});
        const f64 P = Q / (Q + (1 - Q) * factor);
        shifted(j) = Single(P - before);
        before = P;
    }
}

void DrawCategories(i16 n1, i16 n2, bool isH1) {
    const int c = control.HighBound();
    if (SimStage == 1) {
        counts1.ReDim(1, c);
        counts2.ReDim(1, c);
    }
    const auto draw = [c](i16 n, const Array1<f32>& proportions, Array1<f32>& counts) {
        RandSample.ReDim(0, c);
        RandMultinomial(n, proportions);
        for (int j = 1; j <= c; ++j)
            counts(j) += RandSample(j);
    };
    draw(n1, control, counts1);
    draw(n2, isH1 ? shifted : control, counts2);
}

// The value that stands for no effect.
f64 NoEffect() {
    return ordered ? 1 : 0.5;
}

bool HasAllValues() {
    for (i16 i = hypotheses.TruthParNo(); i <= NoOfPar; ++i)
        if (i != average && !HasValue(ParText(ParKind(i))))
            return false;
    return true;
}

} // namespace

void TESTMW::SetupTest() {
    FixSamples(TwoSamples);
    if (TestNo == TestOfCategories) {
        OfferTails({OneSided, TwoSided});
        OfferGroups({Group::AverageProportions});
    }
    OfferForms(SizeKinds);
}

void TESTMW::SetParList() {
    ordered = TestNo == TestOfCategories;
    equalProportions = ordered && ChosenOption(Group::AverageProportions) == EqualProportions;
    StartTestList();
    hypotheses = AddHypotheses(ordered ? OddsRatioKinds : OrderKinds);
    if (ordered)
        average = AddPar(equalProportions ? Kind::NoOfCategories : Kind::SumOfCubedProportions);
    sizes = AddSizes();
}

bool TESTMW::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

void TESTMW::SearchLimits(f64& lower, f64& upper) {
    if (NoOfTails == TwoOneSided)
        hypotheses.Narrow(lower, upper);
    else if (hypotheses.TruthIsUnknown())
        LeftTailLimit(lower, upper, NoEffect());
    sizes.Narrow(lower, upper);
}

f64 TESTMW::RootFunction() {
    return ordered ? CategoriesEq() : OrderEq();
}

void TESTMW::GetSimPar() {
    if (ordered)
        return FindCategories();
    const DistrRow distr = ShiftedDistribution();
    SimulateDistr(distr);
    SimLoc1 = 0;
    SimLoc2 = distr.Par1;
    SimScale1 = SimScale2 = distr.Par2;
    shiftH0 = 0;
    if (NoOfTails != TwoOneSided)
        return;
    SimLoLimit = hypotheses.Left();
    SimHiLimit = hypotheses.Right();
    const f64 middle = (f64{SimLoLimit} + f64{SimHiLimit}) / 2;
    const f32 nearer = hypotheses.Truth() > middle ? SimHiLimit : SimLoLimit;
    shiftH0 = Single(f64{ShiftOf(PrMWFromShift, nearer)} * f64{SimScale1});
}

void TESTMW::SimSample(i16 n1, i16 n2, bool isH1) {
    if (ordered)
        return DrawCategories(n1, n2, isH1);
    const f32 shift = isH1 ? Single(f64{SimLoc2} - f64{SimLoc1}) : shiftH0;
    SimTwoSamples(n1, n2, shift, SimScale1, SimScale2);
}

f32 TESTMW::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || n2 == 0)
        return 1;
    if (ordered)
        return NorPValue(OrderedZ(counts1, counts2), 0, 1, 0, 0, 0);
    RankStatistic w = RankSumMoments(n1, n2);
    w.Sum = RankSumOfGroup2();
    const f64 pairs = static_cast<f64>(n1) * n2;
    const auto limit = [&w, pairs](f32 p) { return Single(f64{w.Mean} + pairs * (f64{p} - 0.5)); };
    return NorPValue(w.Sum, w.Mean, w.Se, limit(SimLoLimit), limit(SimHiLimit), 0);
}

bool TESTMW::IsTablePar(i16 parNo) {
    return ordered ? !equalProportions && parNo == average : parNo == hypotheses.TruthParNo();
}

std::vector<Grid> TESTMW::TableGrids(i16) {
    return {CategoryGrid()};
}

std::optional<DistrList> TESTMW::TableDistr(i16) {
    return ordered ? std::nullopt : std::optional(DistrList::ShiftModels);
}

// Under H0 the distribution is the same, not shifted. Without an odds ratio, or sizes, the average
// proportions are those of the control group, until these are there.
f32 TESTMW::CalcTablePar(i16) {
    if (!ordered) {
        SetNullFromShift();
        return PrMWFromShift();
    }
    return HasAllValues() ? ControlCubeSum() : OrdCubeSum(1, 1, 1, ControlGroup());
}

// A sum that was sought is no longer that of the control group.
void TESTMW::RenewTablePars() {
    if (IsTablePar(UnknownParNo) && ordered)
        DropGrids();
    else if (HasControlGroup())
        ParText(ParKind(average)) = Format(DecimalOf(ControlCubeSum()), "#####0.0#####");
}

// Under proportional odds (P. McCullagh, Journal of the Royal Statistical Society B 42, 1980,
// 109-142) P/(1 - P) of the other group is the odds ratio times Q/(1 - Q).
f32 OrdCubeSum(f32 oddsRatio, f32 n1, f32 n2, const std::vector<f32>& control) {
    const f64 factor = std::exp(-std::log(f64{oddsRatio}));
    const f64 all = f64{n1} + f64{n2};
    f32 Q = 0;
    f32 before = 0;
    f32 sum = 0;
    for (const f32 q : control) {
        Q = Single(f64{Q} + f64{q});
        const f32 P = Single(f64{Q} / (f64{Q} + (1 - f64{Q}) * factor));
        const f64 e = f64{P} - f64{before};
        before = P;
        const f64 m{Single((f64{q} * n1 + e * n2) / all)};
        sum = Single(f64{sum} + m * m * m);
    }
    return sum;
}

// An odds ratio above 1 keeps group 2 in the lower categories, so that the statistic counts these
// (J. Whitehead, Statistics in Medicine 12, 1993, 2257-2271).
f32 OrderedZ(const Array1<f32>& counts1, const Array1<f32>& counts2) {
    f64 n1 = 0;
    f64 n2 = 0;
    for (int j = 1; j <= counts1.HighBound(); ++j) {
        n1 += f64{counts1(j)};
        n2 += f64{counts2(j)};
    }
    f64 below = 0; // subjects of group 1 in lower categories
    f64 sum = 0;
    f64 cubes = 0;
    for (int j = 1; j <= counts1.HighBound(); ++j) {
        const f64 here{counts1(j)};
        const f64 above = n1 - below - here;
        sum += (below - above) * f64{counts2(j)};
        below += here;
        const f64 share = (here / n1 + f64{counts2(j)} / n2) / 2;
        cubes += share * share * share;
    }
    constexpr f64 least = 1e-5F;
    const f64 variance = MaxOf(least, n1 * n2 * (n1 + n2) * (1 - cubes) / 3);
    return Single(-sum / std::sqrt(variance));
}

} // namespace quorvanta
