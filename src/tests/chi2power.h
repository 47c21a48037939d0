// The power of chi-square tests whose alternative is a non-centrality.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Power of a chi-square test for the significance level, minus the power entered: df >= 1 degrees
// of freedom, non-centrality lambda >= 0. Exact up to the distribution functions where the
// statistic itself is chi-square; that of a contingency table is so in large samples (J. Cohen,
// Statistical Power Analysis for the Behavioral Sciences, 2nd edition, 1988, chapter 7).
//
// A broken df, as a search for the number of rows of a table tries it, lies on the straight line
// between the powers at its whole neighbours.
f64 Chi2PowerEq(f64 df, f64 lambda);

} // namespace quorvanta
