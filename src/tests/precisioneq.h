// The equations of precision that the point estimates and confidence intervals of all parameters
// share.
#pragma once

#include "core/types.h"

namespace quorvanta {

class ScaleStatistic;

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

// Residual of the probability that the relative error of such a point estimate is kept.
f64 LogErrorEq(f32 se);

// How far the limits of an interval lie from its estimate on the scale of logarithms where the
// relative width is the one entered.
f64 LogHalfWidth();

// The width of the interval of a scale parameter in units of its estimate; as below.
f64 ScaleWidth(ScaleStatistic& statistic, int exponent);

// An estimate of a scale parameter whose power with this exponent is proportional to the statistic.
// The relative error of a point estimate is that of this power: of the variance, for a standard
// deviation, whose exponent is 2. The width of an interval is random and told in units of unit
// times the true value.
f64 ScalePrecisionEq(ScaleStatistic statistic, int exponent, f64 unit);

} // namespace quorvanta
