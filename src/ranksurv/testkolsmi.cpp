#include "ranksurv/testkolsmi.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/distrcdf.h"
#include "montecarlo/simdistr.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "numeric/sortind.h"
#include "tests/exactsums.h"
#include "tests/lists/hypotheses.h"

#include <algorithm>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 TestDiscrete = 108;
constexpr i16 NullRow = 1;
constexpr TestedDistributions StartContinuous{{SimNormal, 0, 1}, {SimNormal, 0.3F, 1}};
constexpr TestedDistributions StartDiscrete{{SimPoisson, 2, 1}, {SimPoisson, 3, 1}};

i16 size;

bool IsDiscrete() {
    return TestNo == TestDiscrete;
}

// Larger observations keep the distribution function of the sample below that of the null.
Crossing TestedSide() {
    if (NoOfTails == TwoSided)
        return Crossing::Either;
    return LeftTail == True ? Crossing::Above : Crossing::Below;
}

f64 ContinuousPower(i32 n, f64 level, const TestedDistributions& tested) {
    return KolSmiPower(n, level, TestedSide(), [&tested](f64 p) {
        return DistrCdf(tested.Truth, DistrQuantile(tested.Null, p));
    });
}

// With the critical distance of a continuous null, which a discrete one does not reach so often.
f64 DiscretePower(i32 n, f64 level, const TestedDistributions& tested) {
    const f64 d = KolSmiCriticalDistance(n, NoOfTails == TwoSided ? level / 2 : level);
    if (d == NoValue)
        return 0;
    const i32 categories = std::max(DistrCategories(tested.Null), DistrCategories(tested.Truth));
    const std::vector<f64> null = DistrProportions(tested.Null, categories);
    const std::vector<f64> truth = DistrProportions(tested.Truth, categories);
    return KolSmiDiscreteCrossing(n, d, TestedSide(), null, truth);
}

bool CanBeTested(const TestedDistributions& tested) {
    if (IsDiscrete())
        return IsDiscreteDistr(tested.Null) && IsDiscreteDistr(tested.Truth);
    return IsContinuousDistr(tested.Null) && IsContinuousDistr(tested.Truth);
}

// NoValue where the table holds what is no distribution of the list.
f64 PowerOf(f64 n, f64 level) {
    const TestedDistributions tested = KolSmiDistributions();
    if (!CanBeTested(tested))
        return NoValue;
    return AtWholeSize(n, [&tested, level](f64 whole) {
        const i32 subjects = ToI32(whole);
        return IsDiscrete() ? DiscretePower(subjects, level, tested)
                            : ContinuousPower(subjects, level, tested);
    });
}

} // namespace

void TESTKOLSMI::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
}

void TESTKOLSMI::SetParList() {
    StartTestList();
    size = AddPar(Kind::Size);
}

// The exact distribution of the distance for a sample from the true distribution: numeric/
// kolsmicrossing.h. On two sides the p-value is the sum of both one-sided ones, so that each side
// has half of the level.
f64 TESTKOLSMI::RootFunction() {
    return PowerOf(f64{Single(ParValue(size))}, f64{SignificanceLevel()}) - ParValue(1);
}

bool TESTKOLSMI::IsTablePar(i16 parNo) {
    return parNo == PowerParNo;
}

std::optional<DistrList> TESTKOLSMI::TableDistr(i16 /*parNo*/) {
    return IsDiscrete() ? DistrList::Discrete : DistrList::GeneralModels;
}

f32 TESTKOLSMI::CalcTablePar(i16 /*parNo*/) {
    const f64 n = ParValue(size);
    const f64 level = ParValue(0);
    if (!(n >= 1 && n < NoValue && level > 0 && level < 1))
        return Single(NoValue);
    return Single(PowerOf(f64{Single(n)}, level));
}

std::string TESTKOLSMI::Hypothesis(i16 row) {
    const TestedDistributions tested = KolSmiDistributions();
    const DistrRow& distr = row == NullRow ? tested.Null : tested.Truth;
    const std::string text = DistrText(distr.Par1, distr.Par2, distr.Code);
    if (row == NullRow || NoOfTails == TwoSided)
        return text;
    return text + (LeftTail == True ? " (smaller observations)" : " (larger observations)");
}

i16 TESTKOLSMI::ExactUpTo() {
    return IsDiscrete() ? i16{0} : static_cast<i16>(LargestKolSmiSample);
}

TestedDistributions KolSmiDistributions() {
    constexpr i16 both = 2;
    if (NoOfDistr() == both)
        return {Distr(NullRow), Distr(both)};
    return IsDiscrete() ? StartDiscrete : StartContinuous;
}

namespace {

TestedDistributions simulated;
std::vector<f64> nullProportions; // of a discrete null
Array1<f32> nullCells;            // (1..categories) the same

// Greatest distances of the sample: above the null, and below it.
struct Distances {
    f64 Above = 0;
    f64 Below = 0;
};

Distances ContinuousDistances(i16 n) {
    static Array1<i32> order; // keeps its memory
    SortIndex(SimStudy.Value, order, n);
    Distances d;
    f64 before = 0;
    for (i16 i = 1; i <= n; ++i) {
        const f64 null = DistrCdf(simulated.Null, f64{SimStudy.Value(order(i))});
        const f64 upTo = static_cast<f64>(i) / n;
        d.Above = MaxOf(d.Above, upTo - null);
        d.Below = MaxOf(d.Below, null - before);
        before = upTo;
    }
    return d;
}

Distances DiscreteDistances(i16 n) {
    static std::vector<i32> counts; // keeps its memory
    counts.assign(nullProportions.size(), 0);
    for (const f32 value : SimStudy.Value.Raw())
        ++counts[std::min(static_cast<std::size_t>(value), counts.size() - 1)];
    Distances d;
    f64 null = 0;
    f64 sample = 0;
    for (std::size_t j = 0; j < counts.size(); ++j) {
        null += nullProportions[j];
        sample += static_cast<f64>(counts[j]) / n;
        d.Above = MaxOf(d.Above, sample - null);
        d.Below = MaxOf(d.Below, null - sample);
    }
    return d;
}

f64 TailOf(i16 n, f64 distance, Crossing side) {
    const f32 d = Single(distance);
    if (!IsDiscrete())
        return 1 - f64{KolSmiCdf(static_cast<f32>(n), d)};
    const i16 below = side == Crossing::Below ? i16{0} : i16{1};
    return 1 - f64{KolSmiDiscreteCdf(static_cast<f32>(n), d, nullCells, below)};
}

// Draws into SimStudy; the discrete families are called directly.
void Draw(i16 n, const DistrRow& distr) {
    if (!IsDiscrete())
        return SimDistr(n, 1, distr);
    RandSample.ReDim(0, n);
    if (distr.Code == SimBinomial)
        RandBinomial(ToI16(f64{distr.Par1}), distr.Par2);
    else
        RandPoisson(distr.Par1);
    const int before = SimStudy.Value.HighBound();
    SimStudy.Value.ReDimPreserve(before + n);
    std::ranges::copy(RandSample.Raw().subspan(1), SimStudy.Value.Raw().begin() + before);
}

} // namespace

void TESTKOLSMI::GetSimPar() {
    simulated = KolSmiDistributions();
    if (!CanBeTested(simulated)) {
        ShowMessage("No Distribution Is Chosen.");
        Cancelled = True;
        return;
    }
    if (!IsDiscrete())
        return;
    const i32 categories =
        std::max(DistrCategories(simulated.Null), DistrCategories(simulated.Truth));
    nullProportions = DistrProportions(simulated.Null, categories);
    nullCells.ReDim(1, categories);
    std::ranges::transform(nullProportions, nullCells.Raw().begin(),
                           [](f64 p) { return Single(p); });
}

void TESTKOLSMI::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    if (n1 > 0)
        Draw(n1, isH1 ? simulated.Truth : simulated.Null);
}

// One-sided against larger observations the distance below the null counts, where the sample's
// distribution function then lies. On two sides both terms are taken at the larger distance.
f32 TESTKOLSMI::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 == 0)
        return 1;
    const Distances d = IsDiscrete() ? DiscreteDistances(n1) : ContinuousDistances(n1);
    if (TestedSide() != Crossing::Either)
        return Single(
            TailOf(n1, TestedSide() == Crossing::Below ? d.Below : d.Above, TestedSide()));
    const f64 largest = MaxOf(d.Above, d.Below);
    return Single(
        MinOf(1, TailOf(n1, largest, Crossing::Below) + TailOf(n1, largest, Crossing::Above)));
}

} // namespace quorvanta
