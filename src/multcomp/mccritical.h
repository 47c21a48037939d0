// Critical values of multiple comparisons: of one hypothesis under each method of adjustment, and
// of simultaneous confidence intervals.
#pragma once

#include "core/types.h"

namespace quorvanta {

// What the critical values of the current family depend on beside the arguments.
extern f32 FamilyGroups;   // k of Dunnett's and Tukey's methods
extern f32 SizeRatio;      // size of a group beside that of the control
extern f32 ErrorDf;        // degrees of freedom of the error
extern f32 WidthLimit;     // largest s for which an interval is as narrow as wanted
extern bool KnownVariance; // critical values are those of a normal distribution
extern f32 WeightedLevel;  // of the hypothesis, under the weighted method

// No quantile found.
inline constexpr f32 NoQuantile = 99999.0F;

// The c with the integral of that number (numeric/integra2.h) equal to 1 - alpha, for FamilyGroups
// and SizeRatio, sought from 1 to 5; NoQuantile where there is none. Tukey's c is the quantile of
// the studentized range over the square root of 2. The last one of each function is kept.
f32 QuantileIntegral(f32 df, f32 alpha, i16 funcNo);

// The probability that all comparisons of k groups stay within c while s is at most WidthLimit.
f32 WidthIntegral(f32 c, f32 k, f32 df, i16 funcNo);

// The point that a statistic exceeds with probability p: of Student's t, or with KnownVariance of
// the normal distribution. That of a p of 0 is infinite.
f32 McTailValue(f32 p, f32 df);

// The critical value of one hypothesis of a family of noInFamily, under an AdjustMethod, at the
// confidence `level` of the family: testIndex is its rank in the order of the method (Holm: from
// the largest statistic, Hochberg: from the smallest). S. Holm, Scandinavian Journal of Statistics
// 6, 1979, 65-70; Y. Hochberg, Biometrika 75, 1988, 800-802; Z. Sidak, Journal of the American
// Statistical Association 62, 1967, 626-633; H. Scheffe, Biometrika 40, 1953, 87-104.
//
// A one-sided comparison with a control takes the two-sided value of twice the error: exact to
// 0.0006 from 20 degrees of freedom on.
f32 McCritValue(i16 testIndex, i16 noInFamily, f32 df, f32 level, i16 method);

// The critical value of simultaneous confidence intervals among so many groups, under AdjustMethod.
// NoQuantile where there is none.
f32 McIntervalCrit(f32 groups, f32 df, f32 level, i16 kind);

// Residual of a family of intervals: the probability that they all cover and are narrower than the
// width, minus the one that is asked for. Parameters: confidence level, probability, width,
// standard deviation, number of groups, size of a group (of the control), size of each other
// group. Width and coverage are independent but for the common s (J. C. Hsu, Journal of the
// American Statistical Association 84, 1989, 1077-1083).
f64 McIntervalRoot(f32 size, f32 otherSize);

} // namespace quorvanta
