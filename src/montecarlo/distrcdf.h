// Distribution functions and quantiles of the rows of the table of distributions, in 64 bits: where
// a distance between two distributions counts, one must be the inverse of the other.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <vector>

namespace quorvanta {

// Can the row be calculated with, as a continuous distribution (the list General Models) or as a
// discrete one (binomial of up to 9999, Poisson with a mean of up to 9999)?
bool IsContinuousDistr(const DistrRow& distr);
bool IsDiscreteDistr(const DistrRow& distr);

// P(X <= x) of a continuous row. 0..1.
f64 DistrCdf(const DistrRow& distr, f64 x);

// The x with P(X <= x) = p of a continuous row, p within 0..1. At 0 and 1 the ends of the
// distribution, infinite where it has none.
f64 DistrQuantile(const DistrRow& distr, f64 p);

// The probabilities of 0, 1, 2, ... of a discrete row; the last one is that of all further values.
std::vector<f64> DistrProportions(const DistrRow& distr, i32 categories);

// How many categories hold all values of a discrete row that matter.
i32 DistrCategories(const DistrRow& distr);

} // namespace quorvanta
