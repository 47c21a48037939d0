// PARHYPER: point estimates of, and confidence intervals for, the proportion of a finite population
// that has a property, or the difference of two such proportions.
#pragma once

#include "core/types.h"
#include "tests/lists/finitesamples.h"
#include "tests/parbin.h"

namespace quorvanta {

struct PARHYPER {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimInterval();
};

// The finite population correction (N - n)/(N - 1) of the variance of a mean.
f64 FiniteCorrection(f32 population, f32 size);

// How many of a population have a property of this share.
i32 MarkedOf(f64 population, f64 share);

// The share in a sample of n >= 1 that is drawn from a population where so many have the property.
SampledProportion DrawFinite(f32 population, f32 share, i16 n);

// (N - n)/(N - 1)/n: the variance of the mean of a sample without replacement over that of an
// observation (W. G. Cochran, Sampling Techniques, 3rd edition, 1977, chapters 2 and 3).
SampleWeights WeightsOf(const FiniteSamples& samples);

} // namespace quorvanta
