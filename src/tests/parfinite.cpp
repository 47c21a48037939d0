#include "tests/parfinite.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "montecarlo/finitesample.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/proportions.h"
#include "tests/lists/testorprecision.h"
#include "tests/lists/turningpoint.h"
#include "tests/normaltest.h"
#include "tests/parbin.h"
#include "tests/parhyper.h"
#include "tests/precisioneq.h"
#include "tests/simprecision.h"

#include <cmath>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
SampleValues parameter; // the standard deviation, or the proportion of an estimate
FiniteSamples samples;

// A census has no error, and the standard errors of a test there no sign by which to tell on which
// side of H0 the truth lies: the smallest error stands for none.
constexpr f64 SmallestWeight = 1e-16;

f64 Weight() {
    return MaxOf(SmallestWeight, WeightsOf(samples).First);
}

// --- Its simulation ------------------------------------------------------------------------------

ScorePopulation population; // of standardised values
Urn urn;

f64 PopulationSize() {
    return f64{samples.Populations().First()};
}

// The variance of the mean of n of the population over that of one.
f64 WeightOfSize(i16 n) {
    return FiniteCorrection(samples.Populations().First(), n) / n;
}

void PrepareHypotheses() {
    if (IsEstimation())
        return;
    SimLoc1 = Single(hypotheses.NullTruth());
    SimLoc2 = Single(hypotheses.Truth());
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

void PARFINNOR::GetSimPar() {
    PrepareHypotheses();
    population.Fill(ToI32(PopulationSize()));
}

void PARFINNOR::SimSample(i16 n1, i16, bool isH1) {
    if (SimStage == 1)
        population.Restart();
    const f64 location{isH1 ? SimLoc2 : SimLoc1};
    SimStudy.Sum1 =
        Single(f64{SimStudy.Sum1} + n1 * location + f64{parameter.First()} * population.Draw(n1));
}

f32 PARFINNOR::SimTest(i16 n1, i16) {
    if (n1 == 0)
        return 1;
    const f64 mean = f64{SimStudy.Sum1} / n1;
    const f64 weight = MaxOf(SmallestWeight, WeightOfSize(n1));
    const f32 se = Single(f64{parameter.First()} * std::sqrt(weight));
    return NormalPValue(
        hypotheses, [mean](f64 null) { return mean - null; }, [se](f64) { return se; });
}

void PARFINNOR::SimInterval() {
    const i16 n = SimSize1(1);
    if (n < 1)
        return JudgeNoData();
    population.Restart();
    const f64 sd{parameter.First()};
    JudgeNormal(sd * population.Draw(n) / n, sd * std::sqrt(WeightOfSize(n)));
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

void PARFINITE::GetSimPar() {
    PrepareHypotheses();
}

void PARFINITE::SimSample(i16 n1, i16, bool isH1) {
    if (SimStage == 1)
        urn =
            Urn(ToI32(PopulationSize()), MarkedOf(PopulationSize(), f64{isH1 ? SimLoc2 : SimLoc1}));
    SimStudy.Sum1 += static_cast<f32>(urn.Draw(n1));
}

f32 PARFINITE::SimTest(i16 n1, i16) {
    if (n1 == 0)
        return 1;
    const f64 share = f64{SimStudy.Sum1} / n1;
    const f64 weight = MaxOf(SmallestWeight, WeightOfSize(n1));
    return NormalPValue(
        hypotheses, [share](f64 null) { return share - null; },
        [weight](f64 null) { return Single(std::sqrt(null * (1 - null) * weight)); });
}

void PARFINITE::SimInterval() {
    const i16 n = SimSize1(1);
    if (n < 1)
        return JudgeNoData();
    JudgeProportion(DrawFinite(samples.Populations().First(), parameter.First(), n));
}

} // namespace quorvanta
