#include "tests/parhyper.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "tests/lists/precision.h"
#include "tests/precisioneq.h"

namespace quorvanta {

namespace {

SampleValues proportions;
FiniteSamples samples;

f64 Weight(f32 population, f32 size) {
    // Beyond a census, where a search may try, there is no less than no error.
    return MaxOf(0, FiniteCorrection(population, size) / f64{size});
}

} // namespace

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

} // namespace quorvanta
