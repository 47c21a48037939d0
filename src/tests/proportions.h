// What the tests of proportions share: their parameter lists and the reading of them, the limits
// of a search, and the normal and the arc-sine form of the power equation.
#pragma once

#include "core/types.h"

namespace quorvanta {

// --- Parameter lists --------------------------------------------------------------------------

// Where the proportions of the current test stand in its parameter list; 0 where there is none.
struct ProportionList {
    bool Odds = false; // proportions are entered as odds; a difference and limits never are
    i16 Mode = 0;      // form of the last H1 entry: value (0), difference (1), ratio (2)
    i16 H0 = 0;        // H0 proportion or difference; with two one-sided tests the left limit, the
                       // right one next; none: the H0 difference is 0
    i16 H1 = 0;        // H1 proportion; the first of two
    i16 Second = 0;    // the second of two
    bool Paired = false; // of two measurements of the same subjects
};

// The group of interchangeable parameters of one proportion, or of two. Between two limits there is
// no single H0 proportion to relate one proportion to, so it has no group there.
void OfferOneProportion(bool odds);
void OfferTwoProportions(bool odds);

// Adds the proportions of one sample, or of two, to the parameter list.
ProportionList AddOneProportion(bool odds);
enum class NullDifference { Entered, Zero };
ProportionList AddTwoProportions(bool odds, NullDifference null);

bool CheckProportions(const ProportionList& list);

// Narrows the search for one of the proportions to where H1 lies on its side of H0: above it, or
// below it when the search goes left. With two one-sided tests the true value lies between the
// middle of the limits and one of them.
//
// Where a proportion is sought to which another is entered in relation, the power has the same
// value twice, on both sides of the point at which the two add up to 1: the search takes the side
// above that point, or below it when it goes left.
void LimitProportions(const ProportionList& list, f64& lower, f64& upper, f64 (*residual)());

// Narrows the search to where the effect (H1 proportion, or difference of the two) lies between a
// and b. The unknown is an H1 proportion of the list.
void KeepEffectBetween(const ProportionList& list, f64& lower, f64& upper, f64 a, f64 b);

// "Sample Size 1" and the second size in its form: adds them and sets WorkNo; returns the position
// of the first. The second size has the range of its kind, and may have a least upper bound of its
// own: the size of its population.
inline constexpr f64 AnySize = 1.0E+300;
i16 AddTwoSizes();
bool CheckTwoSizes(i16 size1, f64 largestSize2 = AnySize);
void LimitTwoSizes(i16 size1, f64& lower, f64& upper, f64 largestSize2 = AnySize);

// Two proportions and the sizes of their samples together.
bool CheckTwoSamples(const ProportionList& list, i16 size1);
void LimitTwoSamples(const ProportionList& list, i16 size1, f64& lower, f64& upper,
                     f64 (*residual)());

// --- Values -----------------------------------------------------------------------------------

struct ProportionValues {
    f32 Null = 0;  // H0 proportion or difference; with two one-sided tests the left limit
    f32 Right = 0; // the right limit
    f32 P1 = 0;    // H1 proportion; of the first of two samples
    f32 P2 = 0;
};

ProportionValues ReadProportions(const ProportionList& list);

// o/(o + 1), for odds o >= 0.
f32 OddsToProp(f32 odds);

// --- Equations --------------------------------------------------------------------------------
//
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
