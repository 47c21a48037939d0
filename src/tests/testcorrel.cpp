#include "tests/testcorrel.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/association.h"
#include "tests/lists/regression.h"
#include "tests/lists/turningpoint.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr SampleTestKinds CorrelationKinds{EffectScale::FisherZ, OneCorrelationKinds,
                                           TwoCorrelationsKinds, CorrelationSizeKinds};

SampleTest test;

// What a sample's size leaves for the variance of z, above 0 at any size.
f64 Weight(f32 n) {
    return f64{MaxSingle(3.00001F, n)} - 3;
}

f32 StandardError() {
    if (!test.Sizes.HasSecond())
        return FisherZError(f64{test.Sizes.First()});
    return Single(std::sqrt(1 / Weight(test.Sizes.Second()) + 1 / Weight(test.Sizes.First())));
}

// A first correlation beside a second one that is entered itself lies on the other side.
Side SideOfEffect() {
    const Hypotheses& hypotheses = test.Hypothesis;
    const bool falls = hypotheses.BaseIsUnknown() && hypotheses.TruthForm() == AsValue;
    return falls ? Opposite(SideOfTail()) : SideOfTail();
}

// --- Its simulation ------------------------------------------------------------------------------

PairMoments first;
PairMoments second;

f32 Drawable(f64 rho) {
    constexpr f64 most{0.99999F};
    return Single(MaxOf(-most, MinOf(most, rho)));
}

} // namespace

void TESTCORREL::SetupTest() {
    SampleTest::Offer(CorrelationKinds);
}

void TESTCORREL::SetParList() {
    test.Build(CorrelationKinds);
}

bool TESTCORREL::CheckPar() {
    return test.Check();
}

// Between two limits the power is highest where z of the second of two correlations lies in the
// middle; where their difference is kept, they differ least on the scale of z when they lie around
// 0.
void TESTCORREL::SearchLimits(f64& lower, f64& upper) {
    test.Narrow(lower, upper);
    const Hypotheses& hypotheses = test.Hypothesis;
    if (!hypotheses.HasTwo())
        KeepOneSide(lower, upper, hypotheses.BaseOfLeastPower(0), SideOfTail(), &RootFunction);
    else if (hypotheses.TruthIsUnknown())
        KeepOneSideOfTurn(lower, upper, SideOfEffect(), &RootFunction);
}

f64 TESTCORREL::RootFunction() {
    return CorrelationTestEq(test.Hypothesis, StandardError());
}

// Of two samples the first one has its correlation under both hypotheses.
void TESTCORREL::GetSimPar() {
    const Hypotheses& hypotheses = test.Hypothesis;
    const f64 base = hypotheses.HasTwo() ? f64{hypotheses.First()} : 0;
    SimLoc1 = Drawable(base + hypotheses.NullTruth());
    SimLoc2 = Drawable(base + hypotheses.Truth());
}

void TESTCORREL::SimSample(i16 n1, i16 n2, bool isH1) {
    const f32 rho = isH1 ? SimLoc2 : SimLoc1;
    if (SimStage == 1)
        first = second = {};
    if (!test.Hypothesis.HasTwo())
        return first.Add(DrawPairMoments(n1, rho));
    first.Add(DrawPairMoments(n1, test.Hypothesis.First()));
    second.Add(DrawPairMoments(n2, rho));
}

// 1 where a sample is too small to have a variance of z.
f32 TESTCORREL::SimTest(i16 n1, i16 n2) {
    const bool hasTwo = test.Hypothesis.HasTwo();
    if (n1 < 4 || (hasTwo && n2 < 4))
        return 1;
    if (!hasTwo)
        return CorrelationPValue(test.Hypothesis, first.Correlation(), FisherZError(n1));
    const f32 se = Single(std::sqrt(1.0 / (n2 - 3) + 1.0 / (n1 - 3)));
    return CorrelationPValue(test.Hypothesis, first.Correlation(), second.Correlation(), se);
}

} // namespace quorvanta
