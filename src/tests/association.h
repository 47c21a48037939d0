// What the tests of a correlation and of a slope share with the analyses of a bivariate normal
// distribution: their standard errors and the equation of correlations.
#pragma once

#include "core/types.h"

namespace quorvanta {

class Hypotheses;
struct PairMoments;

// Standard error of a slope in n subjects, from the standard deviations of residuals and covariate.
f32 SlopeError(f64 residualSd, f64 covariateSd, f64 n);

// Standard error of Fisher's z of a correlation in n subjects, n above 3.
f32 FisherZError(f64 n);

// Power minus the power entered of the test of one correlation, or of two, on the scale of Fisher's
// z with standard error se (R. A. Fisher, Metron 1, 1921, 3-32). The difference of two correlations
// under H0, or a limit of it, is taken from the first one.
f64 CorrelationTestEq(const Hypotheses& hypotheses, f32 se);

// Fisher's z of a correlation that was drawn, with the same bits on every machine.
f64 FisherZOfSample(f64 r);

// p-value of that test: of the correlation r of one sample, or of r1 and r2 of two. Of two samples
// a difference under H0, or a limit, goes over to the scale of z as in the equation, from the first
// correlation that is planned.
f32 CorrelationPValue(const Hypotheses& hypotheses, f64 r, f32 se);
f32 CorrelationPValue(const Hypotheses& hypotheses, f64 r1, f64 r2, f32 se);

// One sample of a covariate and an outcome that follows it, standard normal: the slope as it was
// estimated where the true one is slope, and its standard error, estimated on df degrees of
// freedom. 0 where the covariate does not vary.
struct SlopeEstimate {
    f64 Slope = 0;
    f64 Se = 0;
    f64 Df = 0;
};
SlopeEstimate EstimateSlope(const PairMoments& sample, f64 slope, f64 residualSd, f64 covariateSd);

} // namespace quorvanta
