// The statistic of a scale parameter, a variance or an exponential mean: what the tests of such a
// parameter and the precision of its estimate have in common.
#pragma once

#include "core/types.h"

namespace quorvanta {

class SampleValues;
struct SampleTest;

// One sample: df times estimate over true value, chi-square distributed. Two samples: the estimate
// of sample 2 over that of sample 1, over the true ratio, F distributed.
class ScaleStatistic {
  public:
    explicit ScaleStatistic(f32 df) : df1_(df) {}
    // df1 belongs to the numerator, sample 2.
    ScaleStatistic(f32 df1, f32 df2) : df1_(df1), df2_(df2) {}

    // P(statistic <= x); x is cut to what 32 bits hold.
    f64 Cdf(f64 x) const;

    // The x with P(statistic <= x) = p. The quantile of F caps its df where one is small, for the
    // distribution function that follows as well.
    f64 Quantile(f64 p);

    // Notes the distribution of the statistic of a test (tests/teststatistic.h) that is smaller by
    // these factors under H1; the second one is that of the right limit.
    void Note(f64 factor, f64 factorRight) const;

    // There is something to estimate the parameter from.
    bool HasDf() const { return df1_ >= 1; }

    // The statistic of an estimate that equals the true value.
    f64 AtTruth() const { return df2_ > 0 ? 1 : f64{df1_}; }

  private:
    f32 df1_;
    f32 df2_ = 0; // 0: chi-square
};

// The statistic of samples of these sizes, with so many df for each subject; a location that has to
// be estimated costs those of one subject.
ScaleStatistic StatisticOf(const SampleValues& sizes, i16 dfPerSubject, bool locationKnown);
ScaleStatistic StatisticOf(f32 n1, f32 n2, i16 dfPerSubject, bool locationKnown);

// Power of the test minus the power entered. Under H1 the statistic is smaller than it should be
// under H0 by the factor (H0 value / H1 value)^exponent; exponent is 2 for standard deviations.
f64 ScalePowerEq(ScaleStatistic statistic, const SampleTest& list, int exponent);

// p-value of a sum of squares, or of n estimates of a scale, that is chi-square with df degrees of
// freedom when it is divided by its H0 value; with two one-sided tests null and right are the
// limits.
f32 Chi2PValue(f64 x, f64 null, f64 right, f64 df);

// The same of a ratio of two estimates that is F distributed.
f32 FPValue(f64 x, f64 null, f64 right, f64 df1, f64 df2);

// Estimates of scale parameters in simulated samples: of group 1 in units of its true value, of
// group 2 of the same as long as the truth is 1, with their degrees of freedom.
struct ScaleEstimates {
    f64 First = 0;
    f64 Second = 0;
    f64 Df1 = 0;
    f64 Df2 = 0;
};

// p-value of the test, where the true value, or ratio, is truth. The estimates are those of the
// power with this exponent, 1 or 2. 1 where a degree of freedom is below 1.
f32 ScalePValue(const SampleTest& list, const ScaleEstimates& estimates, f64 truth, int exponent);

} // namespace quorvanta
