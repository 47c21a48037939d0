#include "tests/testcorrel.h"

#include "core/analysis_state.h"
#include "core/general.h"
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

} // namespace quorvanta
