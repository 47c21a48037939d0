#include "tests/lists/finitesamples.h"

#include "core/analysis_state.h"

namespace quorvanta {

void FiniteSamples::Offer() {
    OfferForms(PopulationKinds);
    OfferForms(SizeKinds);
}

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
        first.Max = populations_.FirstAt(0);
        if (sizes_.HasSecond())
            second.Max = f64{populations_.Second()};
        sizes_.Narrow(lower, upper, first, second);
    }
}

} // namespace quorvanta
