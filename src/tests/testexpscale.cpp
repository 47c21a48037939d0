#include "tests/testexpscale.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "montecarlo/exponentialsample.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds ScaleTest{EffectScale::Log,
                                    {Group::H1Scale,
                                     Kind::H0Scale,
                                     {Kind::H1Scale, Kind::H1ScaleMinusH0, Kind::H1ScaleOverH0},
                                     Kind::ScaleLeftLimit,
                                     Kind::ScaleRightLimit},
                                    {Group::H1Scale2,
                                     Kind::H0Scale2Over1,
                                     Kind::H1Scale2Over1,
                                     Kind::H1Scale1,
                                     {Kind::H1Scale2, NoKind, NoKind},
                                     Kind::ScaleLeftLimit,
                                     Kind::ScaleRightLimit},
                                    SizeKinds};

SampleTest list;

// --- Its simulation ------------------------------------------------------------------------------

f64 truth = 1; // of the study

bool LocationIsKnown() {
    constexpr i16 locationKnown = 1;
    return ParListNo == locationKnown;
}

} // namespace

void TESTEXPSCALE::SetupTest() {
    SampleTest::Offer(ScaleTest);
}

void TESTEXPSCALE::SetParList() {
    list.Build(ScaleTest);
}

bool TESTEXPSCALE::CheckPar() {
    return list.Check();
}

void TESTEXPSCALE::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

// 2 n estimate / scale is chi-square with 2 n df, with 2 (n - 1) where the location is estimated
// (B. Epstein and M. Sobel, Annals of Mathematical Statistics 25, 1954, 373-381).
f64 TESTEXPSCALE::RootFunction() {
    return ScalePowerEq(StatisticOf(list.Sizes, 2, LocationIsKnown()), list, 1);
}

void TESTEXPSCALE::GetSimPar() {
    SimScale1 = Single(list.Hypothesis.NullTruth());
    SimScale2 = Single(list.Hypothesis.Truth());
}

void TESTEXPSCALE::SimSample(i16 n1, i16 n2, bool isH1) {
    DrawExponentialTimes(n1, SimStudy.Sum1, SimStudy.Min1);
    DrawExponentialTimes(n2, SimStudy.Sum2, SimStudy.Min2);
    truth = f64{isH1 ? SimScale2 : SimScale1};
}

f32 TESTEXPSCALE::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || (list.Sizes.HasSecond() && n2 == 0))
        return 1;
    const ScaleOfTimes scale1 = EstimateScale(n1, SimStudy.Sum1, SimStudy.Min1, LocationIsKnown());
    const ScaleOfTimes scale2 = EstimateScale(n2, SimStudy.Sum2, SimStudy.Min2, LocationIsKnown());
    return ScalePValue(list, {scale1.Scale, scale2.Scale, scale1.Df, scale2.Df}, truth, 1);
}

} // namespace quorvanta
