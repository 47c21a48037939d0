// PARHYPER: point estimates of, and confidence intervals for, the proportion of a finite population
// that has a property, or the difference of two such proportions.
#pragma once

#include "core/types.h"
#include "tests/parbin.h"
#include "tests/samplevalues.h"

namespace quorvanta {

struct PARHYPER {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// Samples without replacement from finite populations (W. G. Cochran, Sampling Techniques, 3rd
// edition, 1977, chapters 2 and 3).
class FiniteSamples {
  public:
    // Adds populations and sizes to the list.
    void Add();

    // No sample is larger than its population.
    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    // (N - n)/(N - 1)/n: the variance of a mean over that of an observation.
    SampleWeights Weights() const;

  private:
    SampleValues populations_;
    SampleValues sizes_;
};

inline constexpr SampleKinds PopulationKinds{31, 25, 196, {197, 198, 199}};

} // namespace quorvanta
