// The parameter list of an analysis of precision: of a point estimate or a confidence interval.
// Position 0 is the error or confidence level, position 1 the error or the width; where the width
// is random the last position is the probability that it is small.
//
// An interval is two-sided or, with its check box cleared, has one limit; the width is then the
// distance from the estimate to that limit.
#pragma once

#include "core/types.h"

namespace quorvanta {

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

// The probability of a small width that is asked for.
f64 WidthProbability();

// The probability below the quantile that limits the error or the interval.
f32 PrecisionLevel();

} // namespace quorvanta
