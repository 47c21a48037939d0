// The list of a regression of events, or of rates, on one covariate of interest beside others:
// what holds at the covariate's mean, or where it is 0, and the effect of one standard deviation,
// or of 1; how the covariate lies among the subjects and how it goes along with the others.
#pragma once

#include "core/types.h"
#include "tests/lists/samples.h"

namespace quorvanta {

struct CovariateKinds {
    i16 Group;      // how the effect is entered
    i16 Baseline;   // the value at the mean, or where the covariate is 0
    i16 Value;      // option 0: the value at one standard deviation more, or where it is 1
    i16 Ratio;      // option 1: how it compares with the baseline
    i16 Proportion; // of the subjects where it is 1; NoKind for a continuous covariate
};

class CovariateEffect {
  public:
    static void Offer(const CovariateKinds& kinds);
    void Add(const CovariateKinds& kinds);

    bool IsBinary() const { return proportion_ != 0; }
    f64 Baseline() const;
    // The effect as a ratio of what scale makes of the values: of odds, of rates.
    f32 Ratio(f64 (*scale)(f64)) const;
    // The proportion of the subjects whose binary covariate is 1.
    f64 Proportion() const;
    // The part of the covariate's variance that the other covariates don't explain.
    f64 Unexplained() const;

    // Keeps the effect on its side of none, and an effect or a proportion that has two values of
    // the same power on one side of where the power turns: the smaller effect, the larger
    // proportion where it can be.
    void Narrow(f64& lower, f64& upper, f64 (*residual)()) const;

  private:
    i16 baseline_ = 0;
    i16 effect_ = 0;
    bool isRatio_ = false;
    i16 proportion_ = 0; // 0: the covariate is continuous
    i16 correlation_ = 0;
};

} // namespace quorvanta
