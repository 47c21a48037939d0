#include "tests/tests2.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds DeviationTest{EffectScale::Log,
                                        {Group::H1Sd,
                                         Kind::H0Sd,
                                         {Kind::H1Sd, Kind::H1SdMinusH0, Kind::H1SdOverH0},
                                         Kind::SdLeftLimit,
                                         Kind::SdRightLimit},
                                        TwoSdsKinds,
                                        SizeKinds};

SampleTest list;

// --- Its simulation ------------------------------------------------------------------------------

// Both samples in units of their true standard deviations.
SampleMoments first;
SampleMoments second;
f64 truth = 1; // of the study

bool MeanIsKnown() {
    constexpr i16 meanKnown = 2;
    return ParListNo == meanKnown;
}

} // namespace

void TESTS2::SetupTest() {
    SampleTest::Offer(DeviationTest);
}

void TESTS2::SetParList() {
    list.Build(DeviationTest);
}

bool TESTS2::CheckPar() {
    return list.Check();
}

void TESTS2::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

// df estimated variance / true variance is chi-square, the ratio of two such over their df F
// distributed (A. M. Mood, F. A. Graybill and D. C. Boes, Introduction to the Theory of Statistics,
// 3rd edition, 1974, chapter VI).
f64 TESTS2::RootFunction() {
    return ScalePowerEq(StatisticOf(list.Sizes, 1, MeanIsKnown()), list, 2);
}

void TESTS2::GetSimPar() {
    SimScale1 = Single(list.Hypothesis.NullTruth());
    SimScale2 = Single(list.Hypothesis.Truth());
}

void TESTS2::SimSample(i16 n1, i16 n2, bool isH1) {
    if (SimStage == 1)
        first = second = {};
    first.Add(DrawNormalMoments(n1));
    second.Add(DrawNormalMoments(n2));
    truth = f64{isH1 ? SimScale2 : SimScale1};
}

f32 TESTS2::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || (list.Sizes.HasSecond() && n2 == 0))
        return 1;
    const VarianceEstimate variance1 = EstimateVariance(first, MeanIsKnown());
    const VarianceEstimate variance2 = EstimateVariance(second, MeanIsKnown());
    return ScalePValue(list, {variance1.Variance, variance2.Variance, variance1.Df, variance2.Df},
                       truth, 2);
}

} // namespace quorvanta
