#include "tests/parfinite.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/proportions.h"
#include "tests/lists/testorprecision.h"
#include "tests/lists/turningpoint.h"
#include "tests/normaltest.h"
#include "tests/parbin.h"
#include "tests/parhyper.h"
#include "tests/precisioneq.h"

#include <cmath>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
SampleValues parameter; // the standard deviation, or the proportion of an estimate
FiniteSamples samples;

// A census has no error, and the standard errors of a test there no sign by which to tell on which
// side of H0 the truth lies: the smallest error stands for none.
f64 Weight() {
    constexpr f64 smallest = 1e-16;
    return MaxOf(smallest, WeightsOf(samples).First);
}

} // namespace

void PARFINNOR::SetupTest() {
    OfferTestOrPrecision(OneMeanKinds);
}

void PARFINNOR::SetParList() {
    hypotheses = StartTestOrPrecision(OneMeanKinds, EffectScale::Plain, Precision::Absolute);
    parameter = AddCommonValue(SdKinds);
    samples.Add();
}

bool PARFINNOR::CheckPar() {
    return CheckTest(hypotheses) && samples.Check();
}

void PARFINNOR::SearchLimits(f64& lower, f64& upper) {
    NarrowTest(hypotheses, lower, upper);
    samples.Narrow(lower, upper);
}

// The variance of a mean without replacement (W. G. Cochran, Sampling Techniques, 3rd edition,
// 1977, chapter 2).
f64 PARFINNOR::RootFunction() {
    const f64 sd{parameter.First()};
    if (IsEstimation())
        return NormalPrecisionEq(Single(sd * std::sqrt(WeightsOf(samples).First)));
    const f32 se = Single(sd * std::sqrt(Weight()));
    return NormalTestEq(
        hypotheses, PlainDistance, [se](f64) { return se; }, se);
}

void PARFINITE::SetupTest() {
    OfferTestOrPrecision(OneProportionKinds);
}

void PARFINITE::SetParList() {
    hypotheses = StartTestOrPrecision(OneProportionKinds, EffectScale::Plain, Precision::Absolute);
    if (IsEstimation())
        parameter = AddCommonValue(ProportionKinds);
    samples.Add();
}

bool PARFINITE::CheckPar() {
    return CheckTest(hypotheses) && samples.Check();
}

void PARFINITE::SearchLimits(f64& lower, f64& upper) {
    samples.Narrow(lower, upper);
    if (IsEstimation())
        return NarrowProportions(lower, upper, parameter, WeightsOf(samples), &RootFunction);
    hypotheses.Narrow(lower, upper);
    KeepOneSide(lower, upper, hypotheses.BaseOfLeastPower(0.5), SideOfTail(), &RootFunction);
}

// The variance of a proportion without replacement (the same, chapter 3).
f64 PARFINITE::RootFunction() {
    if (IsEstimation())
        return NormalPrecisionEq(ProportionStandardError(parameter, WeightsOf(samples)));
    const auto se = [](f64 p) { return Single(std::sqrt(p * (1 - p) * Weight())); };
    return NormalTestEq(hypotheses, PlainDistance, se, se(hypotheses.Truth()));
}

} // namespace quorvanta
