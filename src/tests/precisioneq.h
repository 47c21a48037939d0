// Precision of an estimate: the equations that the point estimates and confidence intervals of all
// parameters share. Position 0 of the list is the error or confidence level, position 1 the error
// or the width; where the width is random the last position is the probability that it is small.
//
// An interval is two-sided or, with its check box cleared, has one limit; the width is then the
// distance from the estimate to that limit.
#pragma once

#include "core/types.h"

namespace quorvanta {

class ScaleStatistic;

// A point estimate or a confidence interval is asked for, not a test.
bool IsEstimation();

// A confidence interval is.
bool IsInterval();

// The error counts in both directions, or the interval has two limits.
bool IsTwoSidedPrecision();

// What every analysis of precision offers: a point estimate errs in one direction or in both, an
// interval has its check box.
void OfferPrecision();

// Starts the parameter list. Errors are absolute, or relative to the true value; widths likewise,
// or relative to the estimate where the width is not random.
enum class Precision { Absolute, Relative };
void StartPrecisionList(Precision precision);

// At the end of the list of an interval whose width depends on an estimated deviation: the
// probability of a width below the one entered.
void AddWidthProbability();

// The probability below the quantile that limits the error or the interval.
f32 PrecisionLevel();

// Residuals of an estimate with these probabilities to lie below the lower edge of the error
// allowed and below the upper one: the error allowed is kept with probability 1 - level.
f64 ErrorProbabilityEq(f64 belowLowerEdge, f64 belowUpperEdge);

// Residual of an interval that reaches so far from the estimate in either direction; a single limit
// is the one at distance single.
f64 WidthEq(f64 other, f64 single);

// --- Whole residuals, of point estimate or interval -------------------------------------------

// A normal estimate with standard error se.
f64 NormalPrecisionEq(f32 se);

// The same with se estimated on df degrees of freedom. The width is random: the probability that it
// is small is that of a small estimate of se (L. L. Kupper and K. B. Hafner, How appropriate are
// popular sample size formulas?, The American Statistician 43, 1989).
f64 StudentPrecisionEq(f32 se, f32 df);

// An estimate whose logarithm is normal with standard error se; error and width are relative.
f64 LogPrecisionEq(f32 se);

// The same with se estimated on df degrees of freedom. The error of a point estimate is the same
// whether se is known or not.
f64 LogStudentPrecisionEq(f32 se, f32 df);

// An estimate of a scale parameter whose power with this exponent is proportional to the statistic.
// The relative error of a point estimate is that of this power: of the variance, for a standard
// deviation, whose exponent is 2. The width of an interval is random and told in units of unit
// times the true value.
f64 ScalePrecisionEq(ScaleStatistic statistic, int exponent, f64 unit);

} // namespace quorvanta
