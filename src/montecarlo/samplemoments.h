// Moments of the growing samples of a simulated study: size, means and sums of squared deviations
// are all that most parametric statistics need of what was drawn.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Of one variable.
struct SampleMoments {
    f64 Size = 0;
    f64 Mean = 0;
    f64 Squares = 0; // of the deviations from the mean

    // Puts two samples together (T. F. Chan, G. H. Golub and R. J. LeVeque, The American
    // Statistician 37, 1983, 242-247).
    void Add(const SampleMoments& other);

    // The same sample in other units and from another origin.
    SampleMoments Scaled(f64 scale, f64 location) const {
        return {Size, location + scale * Mean, scale * scale * Squares};
    }
};

// The estimated variance of a sample whose mean is 0, where that is known; 0 without a degree of
// freedom.
struct VarianceEstimate {
    f64 Variance = 0;
    f64 Df = 0;
};
VarianceEstimate EstimateVariance(const SampleMoments& sample, bool meanIsKnown);

// Of two variables of the same subjects.
struct PairMoments {
    SampleMoments First;
    SampleMoments Second;
    f64 Products = 0; // of the deviations from both means

    void Add(const PairMoments& other);

    // The sample correlation; 0 where a variable does not vary.
    f64 Correlation() const;
    // The slope of the second variable on the first; 0 where the first one does not vary.
    f64 Slope() const;
    // The squares of the second variable that the first one does not explain.
    f64 Residual() const;
};

// n standard normal variates, n >= 0.
SampleMoments DrawNormalMoments(i16 n);

// n pairs of standard normal variates with correlation rho, -1..1.
PairMoments DrawPairMoments(i16 n, f32 rho);

} // namespace quorvanta
