// Whether the distribution function of a sample leaves a band about a null distribution, when the
// sample comes from another one: the power of the one-sample Kolmogorov-Smirnov test, without an
// approximation of its sampling distribution.
#pragma once

#include "core/types.h"

#include <functional>
#include <span>

namespace quorvanta {

// Where the distribution function of the sample crosses to be rejected: above that of the null, its
// observations too small, below it, or on either side.
enum class Crossing { Above, Below, Either };

// A time at which a count of observations has to lie within bounds: Share is the probability under
// the true distribution that an observation has come by then, and must not decrease from one time
// to the next; no count is below 0 or above n, so that bounds beyond ask nothing.
struct CountBounds {
    f64 Share;
    i32 Low;
    i32 High;
};

// The probability that the count of n independent observations is within the bounds at every time.
// 1 without times. n from 0 on.
//
// E. Khmaladze and E. Shinjikashvili, Advances in Applied Probability 33, 2001, 702-716: the counts
// are those of a Poisson process, given that it ends at n. Every term is positive, so nothing
// cancels as it does in the recursions of M. Noe, Annals of Mathematical Statistics 43, 1972,
// 58-64; what has no part in the fifteenth digit is left out.
f64 StaysWithin(i32 n, std::span<const CountBounds> bounds);

// P(D > d) of n observations, n from 1 on, d above 0 and below 1, for a continuous null: the
// largest distance between the distribution function of the sample and that of the null, on the
// side asked for. trueCdf(p) is the true distribution function at the quantile p of the null, p in
// 0..1, and must not decrease; where it is p itself, the null holds.
f64 KolSmiCrossing(i32 n, f64 d, Crossing side, const std::function<f64(f64)>& trueCdf);

// The same for a discrete null: the two distributions by the proportions of their categories, in
// order, of which both have the same number.
f64 KolSmiDiscreteCrossing(i32 n, f64 d, Crossing side, std::span<const f64> null,
                           std::span<const f64> truth);

// The distance beyond which the one-sided test of n observations rejects at the level, 0 or above;
// 99999 if there is none. KolSmiInv, and above n = 50, where that is a limit, with what the next
// terms of the expansion in 1/sqrt(n) add: the level is right to 0.0001 for levels up to 0.5 (N. V.
// Smirnov, Uspekhi Matematicheskikh Nauk 10, 1944, 179-206; H. A. Lauwerier, Zeitschrift fuer
// Wahrscheinlichkeitstheorie 2, 1963, 61-68).
f64 KolSmiCriticalDistance(i32 n, f64 level);

// The largest sample whose power is that of its own distribution.
inline constexpr i32 LargestKolSmiSample = 1000;

// Power of the test at the level for a continuous null, with trueCdf as above; on either side each
// side has half of the level. 0 where there is no critical distance.
//
// Of more than LargestKolSmiSample observations it is that of so many, the alternative as much
// farther away as the larger sample shows it better: what both have in common in the limit.
f64 KolSmiPower(i32 n, f64 level, Crossing side, const std::function<f64(f64)>& trueCdf);

} // namespace quorvanta
