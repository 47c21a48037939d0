#include "tests/parfinite.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/precision.h"
#include "tests/lists/proportions.h"
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

void Offer(const OneSampleKinds& kinds) {
    FixSamples(OneSample);
    if (IsEstimation())
        OfferPrecision();
    else
        OfferForms(kinds);
}

void StartList(const OneSampleKinds& kinds) {
    if (IsEstimation()) {
        StartPrecisionList(Precision::Absolute);
    } else {
        StartTestList();
        hypotheses = AddHypotheses(kinds, EffectScale::Plain);
    }
}

} // namespace

void PARFINNOR::SetupTest() {
    Offer(OneMeanKinds);
}

void PARFINNOR::SetParList() {
    StartList(OneMeanKinds);
    parameter = AddCommonValue(SdKinds);
    samples.Add();
}

bool PARFINNOR::CheckPar() {
    return (IsEstimation() || hypotheses.Check()) && samples.Check();
}

void PARFINNOR::SearchLimits(f64& lower, f64& upper) {
    if (!IsEstimation())
        hypotheses.Narrow(lower, upper);
    samples.Narrow(lower, upper);
}

f64 PARFINNOR::RootFunction() {
    const f64 sd{parameter.First()};
    if (IsEstimation())
        return NormalPrecisionEq(Single(sd * std::sqrt(WeightsOf(samples).First)));
    const f32 se = Single(sd * std::sqrt(Weight()));
    return NormalTestEq(
        hypotheses, PlainDistance, [se](f64) { return se; }, se);
}

void PARFINITE::SetupTest() {
    Offer(OneProportionKinds);
}

void PARFINITE::SetParList() {
    StartList(OneProportionKinds);
    if (IsEstimation())
        parameter = AddCommonValue(ProportionKinds);
    samples.Add();
}

bool PARFINITE::CheckPar() {
    return (IsEstimation() || hypotheses.Check()) && samples.Check();
}

void PARFINITE::SearchLimits(f64& lower, f64& upper) {
    samples.Narrow(lower, upper);
    if (IsEstimation())
        return NarrowProportions(lower, upper, parameter, WeightsOf(samples), &RootFunction);
    hypotheses.Narrow(lower, upper);
    KeepOneSide(lower, upper, hypotheses.BaseOfLeastPower(0.5), SideOfTail(), &RootFunction);
}

f64 PARFINITE::RootFunction() {
    if (IsEstimation())
        return NormalPrecisionEq(ProportionStandardError(parameter, WeightsOf(samples)));
    const auto se = [](f64 p) { return Single(std::sqrt(p * (1 - p) * Weight())); };
    return NormalTestEq(hypotheses, PlainDistance, se, se(hypotheses.Truth()));
}

} // namespace quorvanta
