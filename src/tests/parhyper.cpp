#include "tests/parhyper.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "montecarlo/finitesample.h"
#include "montecarlo/simstudy.h"
#include "tests/lists/precision.h"
#include "tests/precisioneq.h"
#include "tests/simprecision.h"

namespace quorvanta {

namespace {

SampleValues proportions;
FiniteSamples samples;

f64 Weight(f32 population, f32 size) {
    // Beyond a census, where a search may try, there is no less than no error.
    return MaxOf(0, FiniteCorrection(population, size) / f64{size});
}

} // namespace

i32 MarkedOf(f64 population, f64 share) {
    return ToI32(population * share);
}

f64 FiniteCorrection(f32 population, f32 size) {
    return (f64{population} - f64{size}) / (f64{population} - 1);
}

SampleWeights WeightsOf(const FiniteSamples& samples) {
    const SampleValues& populations = samples.Populations();
    const SampleValues& sizes = samples.Sizes();
    return {Weight(populations.First(), sizes.First()),
            sizes.HasSecond() ? Weight(populations.Second(), sizes.Second()) : 0};
}

void PARHYPER::SetupTest() {
    OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(ProportionKinds);
    FiniteSamples::Offer();
}

void PARHYPER::SetParList() {
    StartPrecisionList(Precision::Absolute);
    proportions = AddSampleValues(ProportionKinds);
    samples.Add();
}

bool PARHYPER::CheckPar() {
    return proportions.Check() && samples.Check();
}

void PARHYPER::SearchLimits(f64& lower, f64& upper) {
    proportions.Narrow(lower, upper);
    samples.Narrow(lower, upper);
    NarrowProportions(lower, upper, proportions, WeightsOf(samples), &RootFunction);
}

// The normal form with the variance of sampling without replacement (W. G. Cochran, Sampling
// Techniques, 3rd edition, 1977, chapter 3).
f64 PARHYPER::RootFunction() {
    return NormalPrecisionEq(ProportionStandardError(proportions, WeightsOf(samples)));
}

SampledProportion DrawFinite(f32 population, f32 share, i16 n) {
    const i32 all = ToI32(f64{population});
    const i32 marked = MarkedOf(all, f64{share});
    Urn urn(all, marked);
    return {n, urn.Draw(n), static_cast<f64>(marked) / all, Weight(population, n)};
}

// Nothing to prepare.
void PARHYPER::GetSimPar() {}

void PARHYPER::SimInterval() {
    const i16 n1 = SimSize1(1);
    const i16 n2 = SimSize2(1);
    const bool hasTwo = samples.Sizes().HasSecond();
    if (n1 < 1 || (hasTwo && n2 < 1))
        return JudgeNoData();
    const SampleValues& populations = samples.Populations();
    const SampledProportion first = DrawFinite(populations.First(), proportions.First(), n1);
    if (!hasTwo)
        return JudgeProportion(first);
    JudgeDifference(first, DrawFinite(populations.Second(), proportions.Second(), n2));
}

} // namespace quorvanta
