// The normal and the arc-sine form of the power of tests of proportions.
#pragma once

#include "core/types.h"
#include "tests/lists/proportions.h"

namespace quorvanta {

// Residuals: power for NoOfTails and LeftTail minus the power entered. factor is the finite
// population correction (N - n)/(N - 1) of the variance of a sample, 1 for an endless population.
// The continuity correction is half a subject: 1/(2 n), and (1/n1 + 1/n2)/2 for two samples.

// One proportion, its variance taken at H0 and at H1.
f64 OneProportionEq(const ProportionValues& values, f32 n, f32 factor, bool corrected);

// The difference of two proportions (J. L. Fleiss, Statistical Methods for Rates and Proportions,
// 1981, chapter 3; with a difference under H0 the unpooled variance, W. C. Blackwelder 1982).
f64 TwoProportionsEq(const ProportionValues& values, f32 n1, f32 n2, f32 factor1, f32 factor2,
                     bool corrected);

// The same on the scale arcsin(sqrt p), where the variance does not depend on p (J. Cohen,
// Statistical Power Analysis for the Behavioral Sciences, 1988, chapter 6).
f64 ArcSineEq(const ProportionValues& values, f32 n);
f64 ArcSineEq(const ProportionValues& values, f32 n1, f32 n2);

// --- Simulated tables ---------------------------------------------------------------------------

// Successes x of n subjects: their p-values for NoOfTails and LeftTail by the same forms, of which
// Null and Right of the values are the hypotheses. Variances under H0 are those of the null value
// of one proportion; of two proportions those of the table, in the place of the true ones. n > 0;
// where that variance is 0 the p-value is 1.
f32 OneProportionPValue(const ProportionValues& values, i32 x, i16 n, f32 factor, bool corrected);
f32 ArcSinePValue(const ProportionValues& values, i32 x, i16 n);

struct TwoCounts {
    i32 X1;
    i16 N1;
    i32 X2;
    i16 N2;
};
f32 TwoProportionsPValue(const ProportionValues& values, const TwoCounts& counts, f32 factor1,
                         f32 factor2, bool corrected);
// An H0 difference is carried over to the arc-sine scale as in the equation, by the proportions
// that are planned.
f32 ArcSinePValue(const ProportionValues& values, const TwoCounts& counts);

// arcsin x for 0 <= x <= 1, with the digits of pi that the results are defined with at 1.
f32 ArcSin(f32 x);

// Standard error of p2 - p1 under H0: pooled where H0 says that the two are equal (d0 = 0), else
// that of p1 and p2. The second one in finite populations.
f32 PooledSe(f32 n1, f32 n2, f32 p1, f32 p2, f32 d0);
f32 HyperPooledSe(f32 n1, f32 n2, f32 p1, f32 p2, f32 d0, f32 factor1, f32 factor2);

// Two proportions with a given difference.
struct ProportionPair {
    f32 Low = 0;  // of sample 1
    f32 High = 0; // of sample 2: Low + difference
};

// The pair with p2 - p1 = limit nearest to p1 and p2: the one with the same average, moved inside
// the guarded edges where it would leave them. |limit| < 1.
ProportionPair ProportionsFromDiff(f32 p1, f32 p2, f32 limit);

} // namespace quorvanta
