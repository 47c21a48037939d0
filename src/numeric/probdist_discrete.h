// Discrete distributions and exact calculation (module PROBDIST): binomial, hypergeometric and
// Poisson, tables of category proportions, and the Kolmogorov-Smirnov distributions.
//
// Counts are 16-bit: a count above 32767 is a RunTimeError (Overflow) and thereby the ceiling of
// every exact calculation. A sum is held in 32 bits and so is each of its terms.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <span>

namespace quorvanta {

// The largest x at which BinInv and PoissonInv stop, whatever the distribution.
inline constexpr i16 LastQuantile = 502;

// --- Binomial coefficients --------------------------------------------------------------------

// n over k by its product of k factors; 1 for k < 1.
f64 ChooseProduct(i16 n, i16 k);

// n over k; 0 for k < 0 and for k > n. Rows of Pascal's triangle that were asked for are kept for
// the whole run, up to n = 1029: above, the middle of a row is more than 64 bits hold.
f64 Choose(i16 n, i16 k);

// --- Binomial ---------------------------------------------------------------------------------

// P(X = x). A broken n counts whole in the coefficient and as it is in the power.
f32 BinDensity(f32 n, i16 x, f32 p);

// P(X <= x), summed from the nearer end; 0 for x < 0, 1 for x >= n.
f32 BinCdf(f32 n, i16 x, f32 p);

// The smallest x with P(X <= x) >= q - 1e-5, but 502 at most.
f32 BinInv(f32 q, f32 n, f32 p);

// --- Hypergeometric ---------------------------------------------------------------------------

// P(X = x) for a sample of n from a population of popsize, of which the share p, in whole numbers,
// is marked. 0 for what can't be.
f64 HyperDensity(i16 popsize, i16 n, i16 x, f32 p);

// P(X <= x), summed from the nearer end; 0 for x < 0, 1 for x >= n.
f32 HyperCdf(i16 popsize, i16 n, i16 x, f32 p);

// --- Poisson ----------------------------------------------------------------------------------

// P(X = x); 0 for x < 0. Above x = 50 the difference of two chi-square values.
f32 PoissonDensity(i16 x, f32 lambda);

// P(X <= x) as an upper tail of chi-square with 2 x + 2 degrees of freedom.
f32 PoissonCdf(f32 x, f32 lambda);

// The smallest x with P(X <= x) >= q - 1e-5, but 502 at most.
f32 PoissonInv(f32 q, f32 lambda);

// --- Tables of category proportions -----------------------------------------------------------

// The sum of the first x proportions, x rounded to a whole number; 0 for x < 0, 1 from their
// number on.
f32 DiscreteCdf(f32 x, const Array1<f32>& probs);

// The number of the category, counted from 1, at which the running sum exceeds q - 1e-5; the last
// one if none does.
i16 DiscreteInv(f32 q, const Array1<f32>& probs);

// --- Kolmogorov-Smirnov -----------------------------------------------------------------------

// P(D < d) of the one-sided distance between the distribution function of a sample of n and a
// continuous null; 0 for d <= 0, 1 for d >= 1. Exact for n up to 50, a whole number then
// (Z. W. Birnbaum and F. H. Tingey 1951); above by the limit 1 - exp(-2 n d^2) (N. V. Smirnov
// 1944).
f32 KolSmiCdf(f32 n, f32 d);

// The same for a discrete null with the proportions probs (W. J. Conover 1972). side 0: the sample
// lies below the null, else above it.
f32 KolSmiDiscreteCdf(f32 n, f32 d, const Array1<f32>& probs, i16 side);

// 1 - P(D < d) from the bounds b(0) to b(m): c(0) = 1, c(j) = 1 - sum over i < j of (j over i)
// b(i)^(j - i) c(i), and the result is the sum over j of (n over j) b(j)^(n - j) c(j). Real is the
// width that holds the c and their sums: 32 bits for the continuous null, 64 for a discrete one,
// whose bounds cancel more.
template <class Real>
Real KolSmiExactSum(i16 n, i16 m, std::span<const f32> bounds);

// The d with P(D < d) = q for a continuous null; 99999 if none is found. The continuous null is
// the same from both sides, so flag, the side, makes no difference.
f32 KolSmiInv(f32 n, f32 q, i16 flag);

// P(D < d) of the distance between two samples, in the limit: two-sided (A. N. Kolmogorov 1933) by
// 20 terms of the series, with flag set one-sided. 0 for d <= 0.
f32 KolSmiTwoCdf(i16 n1, i16 n2, f32 d, i16 flag);

} // namespace quorvanta
