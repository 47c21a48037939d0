// The double integrals of the critical values of multiple comparisons (the module INTEGRA2): over a
// standard normal x, the estimate that all comparisons share, and over s, the estimated standard
// deviation in units of the true one.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The weight, in thirds of the step, of point i of a composite Simpson rule of `intervals`
// intervals, an even number.
constexpr f64 SimpsonWeight(int i, int intervals) {
    if (i == 0 || i == intervals)
        return 1.0;
    return i % 2 == 1 ? 4.0 : 2.0;
}

// The integral of f(x, s) over x from a to b and s from 0 to sUpper, by Simpson's composite rule
// (Abramowitz and Stegun 25.4.6) in both directions: 2n intervals of x, and 2m intervals of s for
// each of them. Exact for f of at most third degree in x and in s.
template <class Function>
f64 NestedSimpson(Function&& f, f64 a, f64 b, i16 n, f64 sUpper, i16 m) {
    const int outer = 2 * n;
    const int inner = 2 * m;
    const f64 xStep = (b - a) / outer;
    const f64 sStep = sUpper / inner;
    f64 outerSum = 0;
    for (int i = 0; i <= outer; ++i) {
        const f64 x = a + i * xStep;
        f64 innerSum = 0;
        for (int j = 0; j <= inner; ++j)
            innerSum += SimpsonWeight(j, inner) * f(x, j * sStep);
        outerSum += SimpsonWeight(i, outer) * innerSum;
    }
    return outerSum * xStep / 3.0 * sStep / 3.0;
}

// The integrands, by function number. Those of widths have the same form as the quantiles' and an
// upper limit of s of the caller's.
namespace Studentized {

inline constexpr i16 Dunnett = 3; // |difference| of each of k - 1 groups from a control
inline constexpr i16 Tukey = 4;   // range of k groups
inline constexpr i16 Best = 5;    // one-sided differences from the best of k groups
inline constexpr i16 DunnettWidth = 6;
inline constexpr i16 TukeyWidth = 7;
inline constexpr i16 BestWidth = 8;
inline constexpr i16 MaximumModulus = 9; // the largest of k independent |t|

// What takes a quantile's function to its width's.
inline constexpr i16 ToWidth = 3;

} // namespace Studentized

// Up to which s quantiles are integrated.
inline constexpr f32 SUpper = 4.1335F;

// The chi-square density at x; 0 for x <= 0, and from x = 100 on.
f32 Chi2DensityRaw(f32 x, f32 df);

// One of the integrals. Groups is k, df the degrees of freedom of s (above 0), SizeRatio the size
// of a group beside that of the control.
struct StudentizedIntegral {
    i16 FuncNo = Studentized::Tukey;
    f32 Groups = 2;
    f32 Df = 1;
    f32 SizeRatio = 1;
    f32 Upper = SUpper; // of s
};

// The integrand at x and s for the quantile c, without the density of s: the probability that all
// comparisons stay within c, given x and s (C. W. Dunnett, Journal of the American Statistical
// Association 50, 1955, 1096-1121; J. W. Tukey, The Problem of Multiple Comparisons, 1953;
// J. C. Hsu, Annals of Statistics 12, 1984, 1136-1144; K. C. S. Pillai and K. V. Ramachandran,
// Annals of Mathematical Statistics 25, 1954, 565-572).
f64 ComparisonIntegrand(const StudentizedIntegral& integral, f32 c, f64 x, f64 s);

// The density of s, a chi-square variable over its df under the root: exact below 60, the normal
// approximation of R. A. Fisher from 60 on, and above 300 uniform over the range of s, which leaves
// the integral of a known variance. The normal approximation holds for widths whatever df is: no
// uniform s has a probability to be small.
//
// The exact density ends where chi-square reaches 100, which for 50 to 59 degrees of freedom cuts
// off up to 7e-4 of it.
f64 DeviationDensity(const StudentizedIntegral& integral, f64 s);

// The probability, in 32 bits, by NestedSimpson's rule: x from -10 to 10 with 60 intervals, s from
// 0 to Upper with 100; for the maximum modulus, where x does nothing, x from 0 to 1 with 2 and s
// with 60. Widths with very many degrees of freedom have the points of s where its density is.
// Points that add next to nothing, 1e-12 all together, are left out, and the densities of s are
// kept from one call to the next.
f32 StudentizedProbability(const StudentizedIntegral& integral, f32 c);

} // namespace quorvanta
