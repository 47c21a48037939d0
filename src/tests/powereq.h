// The power equations that a large part of all test modules share, on the normal distribution.
//
// All arguments are 32-bit floats: an engine rounds what it hands over. The results are residuals:
// achieved power minus ParValue(1).
#pragma once

#include "core/analysis_state.h"
#include "core/types.h"

namespace quorvanta {

// The significance level of the current analysis. Tests that are stated through a confidence
// interval have a confidence level c in its place: alpha = (1 - c)/(1 + m), where m is 1 for
// equivalence and for a non-inferiority test with a two-sided interval, otherwise 0.
f32 SignificanceLevel();
// That alpha of a confidence level c, 0..1, of the current analysis.
f32 LevelOfInterval(f64 confidence);

// (x - c z)/s: the standardised distance from the critical value; 99999 if s <= 0.
f64 PowerZ(f32 x, f32 c, f32 s, f32 z);

// Probability of rejecting in the right tail: x the effect, c its standard error under H0, s under
// H1, z the normal quantile of the level.
f64 PowerOneTail(f32 x, f32 c, f32 s, f32 z);

// Probability of rejecting in either tail.
f64 PowerTwoTails(f32 x, f32 c, f32 s, f32 z);

// Probability that both one-sided tests reject; below 0 where their tails overlap.
f64 PowerBetween(f32 xa, f32 xb, f32 ca, f32 cb, f32 s, f32 z);

// A statistic that is normal, and what its power follows from. With one or two tails that is the
// effect, with two one-sided tests the distances to the two limits.
struct NormalStatistic {
    f32 Effect = 0;     // H1 minus H0
    f32 Se0 = 0;        // its standard error under H0
    f32 Se1 = 0;        // its standard error under H1, also between two limits
    f32 AboveLeft = 0;  // how far the truth lies above the left limit
    f32 BelowRight = 0; // how far it lies below the right one
    f32 Se0Left = 0;    // standard errors where the truth is a limit
    f32 Se0Right = 0;
    f32 Correction = 0; // for continuity
};

// A standard error that is never 0, which would be taken for certainty, nor so close to it that a
// division by it leaves 32 bits.
f32 ErrorAboveZero(f64 error);
// That of a variance. Below 0, where a search may try it, it is no variance at all.
f32 ErrorOfVariance(f64 variance);

// The power of a group sequential design minus the power entered; 99999 for a design without one.
f64 GroupSequentialEq(f64 power);

// Its power for NoOfTails and LeftTail, minus the power entered. The continuity correction makes
// the distance smaller; in two one-sided tests it is subtracted on the left and added on the right,
// deliberately. Where the analysis is a group sequential design, its power is that
// of the design (groupseq/designs.h), with the standard error under H1 for both hypotheses.
f64 NormalPowerEq(const NormalStatistic& statistic);

// The same with the members of the record one by one, in its order.
f64 NorPowerEq(f32 delta, f32 se0, f32 se1, f32 deltaLow, f32 deltaHigh, f32 se0Low, f32 se0High,
               f32 correction);

// Power of a statistic that rejects beyond quantiles of its own, for NoOfTails and LeftTail, minus
// the power entered. below(null, p) is the probability under H1 that it lies below the quantile p
// that it has under this null value; with two one-sided tests the first null is the left limit.
template <class Below>
f64 QuantilePowerEq(f32 null, f32 right, const Below& below) {
    const f64 alpha{SignificanceLevel()};
    f64 power = 0;
    if (NoOfTails == TwoOneSided)
        power = below(right, alpha) - below(null, 1 - alpha);
    else if (NoOfTails == TwoSided)
        power = below(null, alpha / 2) + 1 - below(null, 1 - alpha / 2);
    else if (LeftTail == True)
        power = below(null, alpha);
    else
        power = 1 - below(null, 1 - alpha);
    return power - ParValue(1);
}

// p-value of such a statistic: below(null) is the probability of a smaller one where this null
// value is true.
template <class Null, class Below>
f32 QuantilePValue(Null null, Null right, const Below& below) {
    const f64 left = below(null);
    if (NoOfTails == TwoOneSided) {
        const f64 belowRight = below(right);
        return static_cast<f32>(1 - left > belowRight ? 1 - left : belowRight);
    }
    if (NoOfTails == TwoSided)
        return static_cast<f32>(2 * (left < 0.5 ? left : 1 - left));
    return static_cast<f32>(LeftTail == True ? left : 1 - left);
}

// The power of a ratio that is F distributed when it is divided by its true value: ratio is its
// null value (with two one-sided tests the left limit, right the other one) over its true value,
// all above 0; df1 and df2 at least 1. FInv may cap both, and the distribution function has them
// then.
f64 FPowerEq(f32 ratio, f32 right, f32 df1, f32 df2);

// p-value of a z statistic for NoOfTails and LeftTail: the estimate, its H0 value (or the two
// limits), its standard error and a continuity correction; one that is larger than the distance
// leaves none. 0 if se <= 0.
f32 NorPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 correction);

// The same of an estimate whose standard error depends on the null value, se0 that of m0, or of the
// left limit, seRight that of the right one. A standard error of 0 says that the data, a table with
// all subjects in one cell, tell nothing of the chance they are due to: 1.
f32 NullErrorPValue(f32 mean, f32 m0, f32 right, f32 se0, f32 seRight, f32 correction);

// A quantity entered in one of three forms: itself (mode 0), its difference from base (1), its
// ratio to base (2); any other mode gives 0.
f32 ParDep(i16 position, f32 base, i16 mode);

// a, b or c by the same mode.
i16 ParSelect(i16 mode, i16 a, i16 b, i16 c);

} // namespace quorvanta
