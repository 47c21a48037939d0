#include "ranksurv/testkolsmi.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/distrcdf.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
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
Crossing Side() {
    if (NoOfTails == TwoSided)
        return Crossing::Either;
    return LeftTail == True ? Crossing::Above : Crossing::Below;
}

f64 ContinuousPower(i32 n, f64 level, const TestedDistributions& tested) {
    return KolSmiPower(n, level, Side(), [&tested](f64 p) {
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
    return KolSmiDiscreteCrossing(n, d, Side(), null, truth);
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

} // namespace quorvanta
