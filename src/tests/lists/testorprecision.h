// The lists of modules that serve the test of a parameter of one sample as well as its estimation.
#pragma once

#include "core/options.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/precision.h"

namespace quorvanta {

// Offers the forms of the truth, or what an analysis of precision offers.
template <class Kinds>
void OfferTestOrPrecision(const Kinds& kinds) {
    FixSamples(OneSample);
    if (IsEstimation())
        OfferPrecision();
    else
        OfferForms(kinds);
}

// Starts the list; the hypotheses are those of a test, and none of an estimation.
template <class Kinds>
Hypotheses StartTestOrPrecision(const Kinds& kinds, EffectScale scale, Precision precision) {
    if (IsEstimation()) {
        StartPrecisionList(precision);
        return {};
    }
    StartTestList();
    return AddHypotheses(kinds, scale);
}

inline bool CheckTest(const Hypotheses& hypotheses) {
    return IsEstimation() || hypotheses.Check();
}

inline void NarrowTest(const Hypotheses& hypotheses, f64& lower, f64& upper) {
    if (!IsEstimation())
        hypotheses.Narrow(lower, upper);
}

} // namespace quorvanta
