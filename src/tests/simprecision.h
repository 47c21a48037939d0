// What one simulated study says of an interval, or of a point estimate: SimStudy.Covers and
// SimStudy.IsNarrow.
//
// An interval covers when it holds the true value, and is narrow when its width is at most the one
// entered. A point estimate covers when it is within the error allowed of the true value, and is
// narrow when the error that the data promise at the error level, their estimates in the place of
// the true values, is at most the one allowed. Widths and errors are those of the equations in
// tests/precisioneq.h: absolute, or relative to the estimate or the true value.
#pragma once

#include "core/types.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

// An interval that reaches so far from the estimate in either direction; a single limit is the one
// at distance single, above the estimate. error is the estimate minus the true value.
void JudgeInterval(f64 error, f64 other, f64 single);

// A point estimate, in the units of the error entered; promised is the error that the data promise.
void JudgeEstimate(f64 error, f64 promised);

// The same where the data promise a probability to stay within the error: its residual of
// ErrorProbabilityEq.
void JudgeByProbability(f64 error, f64 residual);

// No data to estimate from: an interval of width 99999 that holds everything; no point estimate.
void JudgeNoData();

// A normal estimate with standard error se as the data have it.
void JudgeNormal(f64 error, f64 se);
// The same with se estimated on df degrees of freedom; below 1 there are no data to estimate from.
void JudgeStudent(f64 error, f64 se, f64 df);
// An estimate whose logarithm has that error; error and width are relative.
void JudgeLogNormal(f64 logError, f64 se);
void JudgeLogStudent(f64 logError, f64 se, f64 df);

// The estimate of a scale parameter as ScalePrecisionEq has it, prepared once before the run.
class ScaleJudge {
  public:
    ScaleJudge() = default;
    ScaleJudge(ScaleStatistic statistic, int exponent, f64 unit);

    // ratio is the estimate over the true value, to the power of the exponent.
    void Judge(f64 ratio) const;

  private:
    f64 low_ = 0; // the ratios whose intervals hold the true value
    f64 high_ = 0;
    f64 widest_ = 0;   // the largest ratio whose interval is narrow
    f64 residual_ = 0; // of a point estimate: that of its probability
};

} // namespace quorvanta
