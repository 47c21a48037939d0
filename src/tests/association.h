// What the tests of a correlation and of a slope share with the analyses of a bivariate normal
// distribution: their standard errors and the equation of correlations.
#pragma once

#include "core/types.h"

namespace quorvanta {

class Hypotheses;

// Standard error of a slope in n subjects, from the standard deviations of residuals and covariate.
f32 SlopeError(f64 residualSd, f64 covariateSd, f64 n);

// Standard error of Fisher's z of a correlation in n subjects, n above 3.
f32 FisherZError(f64 n);

// Power minus the power entered of the test of one correlation, or of two, on the scale of Fisher's
// z with standard error se (R. A. Fisher, Metron 1, 1921, 3-32). The difference of two correlations
// under H0, or a limit of it, is taken from the first one.
f64 CorrelationTestEq(const Hypotheses& hypotheses, f32 se);

} // namespace quorvanta
