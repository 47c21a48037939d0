#include "tests/parhyper.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "tests/precision.h"

namespace quorvanta {

namespace {

SampleValues proportions;
FiniteSamples samples;

f64 Weight(f32 population, f32 size) {
    const f64 N{population};
    const f64 n{size};
    // Beyond a census, where a search may try, there is no less than no error.
    return MaxOf(0, (N - n) / (N - 1) / n);
}

} // namespace

void FiniteSamples::Add() {
    populations_ = AddSampleValues(PopulationKinds);
    sizes_ = AddSizes();
}

bool FiniteSamples::Check() const {
    if (!populations_.Check())
        return false;
    // A population that depends on the unknown is narrowed by the search instead.
    Range first = sizes_.FirstRange();
    Range second = sizes_.SecondRange();
    if (!populations_.FirstIsUnknown())
        first.Max = populations_.FirstAt(0);
    if (sizes_.HasSecond() && !populations_.SecondDependsOnUnknown())
        second.Max = f64{populations_.Second()};
    return sizes_.Check(first, second);
}

void FiniteSamples::Narrow(f64& lower, f64& upper) const {
    Range first = sizes_.FirstRange();
    Range second = sizes_.SecondRange();
    if (populations_.HasUnknown()) {
        Range population1 = populations_.FirstRange();
        Range population2 = populations_.SecondRange();
        population1.Min = f64{sizes_.First()};
        if (sizes_.HasSecond())
            population2.Min = f64{sizes_.Second()};
        populations_.Narrow(lower, upper, population1, population2);
    } else {
        first.Max = f64{populations_.First()};
        if (sizes_.HasSecond())
            second.Max = f64{populations_.Second()};
        sizes_.Narrow(lower, upper, first, second);
    }
}

SampleWeights FiniteSamples::Weights() const {
    return {Weight(populations_.First(), sizes_.First()),
            sizes_.HasSecond() ? Weight(populations_.Second(), sizes_.Second()) : 0};
}

void PARHYPER::SetupTest() {
    OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(ProportionKinds);
    OfferForms(PopulationKinds);
    OfferForms(SizeKinds);
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
    NarrowProportions(lower, upper, proportions, samples.Weights(), &RootFunction);
}

f64 PARHYPER::RootFunction() {
    return NormalPrecisionEq(ProportionStandardError(proportions, samples.Weights()));
}

} // namespace quorvanta
