#include "ranksurv/testsavage.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "ranksurv/scalekinds.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
SampleValues sizes;

} // namespace

void TESTSAVAGE::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(ScaleKinds);
    OfferForms(SizeKinds);
}

void TESTSAVAGE::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(ScaleKinds, EffectScale::Log);
    sizes = AddSizes();
}

bool TESTSAVAGE::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

void TESTSAVAGE::SearchLimits(f64& lower, f64& upper) {
    constexpr f64 equalScales = 1;
    if (hypotheses.TruthIsUnknown())
        hypotheses.KeepEffect(lower, upper, SideOfTail(), equalScales);
    sizes.Narrow(lower, upper);
}

// The scores are those of exponential observations (I. R. Savage, Annals of Mathematical Statistics
// 27, 1956, 590-615); the power is that of the difference of the two estimated rates.
f64 TESTSAVAGE::RootFunction() {
    const bool two = hypotheses.HasTwo();
    const f64 r1{Single(two ? 1 / f64{hypotheses.First()} : 1)};
    const f64 r2{Single(1 / (two ? f64{hypotheses.Second()} : hypotheses.Truth()))};
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const f64 mean = (n1 * r1 + n2 * r2) / (n1 + n2);
    const f32 s0 = Single(mean * std::sqrt(1 / n2 + 1 / n1));
    const f32 s1 = Single(std::sqrt(r1 * r1 / n1 + r2 * r2 / n2));
    return NorPowerEq(Single(r1 - r2), s0, s1, 0, 0, 0, 0, 0);
}

void TESTSAVAGE::GetSimPar() {
    SimDistrNo = SimExponential;
    SimLoc1 = SimLoc2 = 0;
    SimScale1 = hypotheses.HasTwo() ? hypotheses.First() : 1.0F;
    SimScale2 = hypotheses.HasTwo() ? hypotheses.Second() : Single(hypotheses.Truth());
}

void TESTSAVAGE::SimSample(i16 n1, i16 n2, bool isH1) {
    SimTwoSamples(n1, n2, 0, SimScale1, isH1 ? SimScale2 : SimScale1);
}

f32 TESTSAVAGE::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) {
        f64 score = -1;
        for (i32 j = 1; j <= rank; ++j)
            score += 1.0 / static_cast<f64>(n - j + 1);
        return score;
    });
    if (n1 == 0 || n2 == 0)
        return 1;
    const RankStatistic statistic = scores.Statistic(n1, n2);
    return NorPValue(statistic.Sum, statistic.Mean, statistic.Se, 0, 0, 0);
}

} // namespace quorvanta
