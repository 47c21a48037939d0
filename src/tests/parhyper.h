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
};

// The finite population correction (N - n)/(N - 1) of the variance of a mean.
f64 FiniteCorrection(f32 population, f32 size);

// (N - n)/(N - 1)/n: the variance of the mean of a sample without replacement over that of an
// observation (W. G. Cochran, Sampling Techniques, 3rd edition, 1977, chapters 2 and 3).
SampleWeights WeightsOf(const FiniteSamples& samples);

} // namespace quorvanta
