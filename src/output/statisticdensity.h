// Densities of test statistics in 64 bits, for pictures: the distribution functions that powers
// follow from have 32 bits, and their differences would show every step of these.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Of Student's t with df > 0 and non-centrality delta at t: the integral over the standard
// deviation (N. L. Johnson, S. Kotz and N. Balakrishnan, Continuous Univariate Distributions, vol.
// 2, 2nd edition, 1995, chapter 31). Good to 1e-7.
f64 StudentDensity(f64 t, f64 df, f64 delta);

// Of chi-square with df > 0 and non-centrality lambda >= 0: the mean of central densities over a
// Poisson distribution (chapter 29 there). 0 for x <= 0.
f64 ChiSquareDensity(f64 x, f64 df, f64 lambda);

// Of F with df1, df2 > 0 and non-centrality lambda >= 0, likewise (chapter 30). 0 for x <= 0.
f64 FDensity(f64 x, f64 df1, f64 df2, f64 lambda);

} // namespace quorvanta
