#include "tests/association.h"

#include "core/general.h"
#include "montecarlo/samplemoments.h"
#include "numeric/fastlog.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/normaltest.h"

#include <cmath>

namespace quorvanta {

// N. R. Draper and H. Smith, Applied Regression Analysis, 2nd edition, 1981, chapter 1.
f32 SlopeError(f64 residualSd, f64 covariateSd, f64 n) {
    return Single(residualSd / std::sqrt(n) / covariateSd);
}

f32 FisherZError(f64 n) {
    return Single(1 / std::sqrt(n - 3));
}

f64 CorrelationTestEq(const Hypotheses& hypotheses, f32 se) {
    const f64 first = hypotheses.HasTwo() ? f64{hypotheses.First()} : 0;
    return NormalTestEq(
        hypotheses,
        [first](f64 truth, f64 null) { return FisherZ(first + truth) - FisherZ(first + null); },
        [se](f64) { return se; }, se);
}

f64 FisherZOfSample(f64 r) {
    constexpr f64 most{0.99999F};
    const f64 cut = MaxOf(-most, MinOf(most, r));
    return 0.5 * FastLog((1 + cut) / (1 - cut));
}

f32 CorrelationPValue(const Hypotheses& hypotheses, f64 r, f32 se) {
    return CorrelationPValue(hypotheses, 0, r, se);
}

f32 CorrelationPValue(const Hypotheses& hypotheses, f64 r1, f64 r2, f32 se) {
    const f64 first = hypotheses.HasTwo() ? f64{hypotheses.First()} : 0;
    const f64 difference = FisherZOfSample(r2) - FisherZOfSample(r1);
    return NormalPValue(
        hypotheses,
        [=](f64 null) {
            return difference - (FisherZOfSample(first + null) - FisherZOfSample(first));
        },
        [se](f64) { return se; });
}

// N. R. Draper and H. Smith, Applied Regression Analysis, 2nd edition, 1981, chapter 1.
SlopeEstimate EstimateSlope(const PairMoments& sample, f64 slope, f64 residualSd, f64 covariateSd) {
    const f64 df = sample.First.Size - 2;
    const f64 spread = std::sqrt(sample.First.Squares);
    if (df < 1 || spread == 0)
        return {slope, 0, df};
    const f64 unit = residualSd / covariateSd;
    return {slope + unit * sample.Slope(), unit * std::sqrt(sample.Residual() / df) / spread, df};
}

} // namespace quorvanta
