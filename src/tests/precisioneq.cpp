#include "tests/precisioneq.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/precision.h"
#include "tests/scalestatistic.h"

#include <cmath>

namespace quorvanta {

namespace {

// The error or the width entered, and the level.
f64 Entered() {
    return ParValue(1);
}
f64 Level() {
    return f64{Single(ParValue(0))};
}

f64 Width(f64 other, f64 single) {
    return IsTwoSidedPrecision() ? other + single : single;
}

// How much larger than its true value an estimated deviation may be if the width is to stay below
// the one entered; an interval of no width is always short enough.
f64 WidthRatio(f64 entered, f64 width) {
    constexpr f64 always = 1e12;
    return width > 0 ? MinOf(always, entered / width) : always;
}

f64 WidthProbabilityEq(f64 probability) {
    return probability - WidthProbability();
}

// A width that shrinks and grows with a deviation estimated on df degrees of freedom (L. L. Kupper
// and K. B. Hafner, The American Statistician 43, 1989, 101-105).
f64 RandomWidthEq(f64 ratio, f32 df) {
    return WidthProbabilityEq(ScaleStatistic(df).Cdf(f64{df} * ratio * ratio));
}

} // namespace

f64 ErrorProbabilityEq(f64 belowLowerEdge, f64 belowUpperEdge) {
    return belowUpperEdge - (IsTwoSidedPrecision() ? belowLowerEdge : 0) - (1 - Level());
}

f64 WidthEq(f64 other, f64 single) {
    return Entered() - Width(other, single);
}

f64 NormalPrecisionEq(f32 se) {
    const f64 error = f64{NorInv(PrecisionLevel())} * f64{se};
    return IsInterval() ? WidthEq(error, error) : error - Entered();
}

f64 StudentPrecisionEq(f32 se, f32 df) {
    const f64 error = f64{TInv(PrecisionLevel(), df)} * f64{se};
    return IsInterval() ? RandomWidthEq(WidthRatio(Entered(), Width(error, error)), df)
                        : error - Entered();
}

f64 LogErrorEq(f32 se) {
    const auto below = [se](f64 x) { return f64{LognormCdf(Single(x), 0, se)}; };
    return ErrorProbabilityEq(below(1 - Entered()), below(1 + Entered()));
}

f64 LogHalfWidth() {
    return IsTwoSidedPrecision() ? std::asinh(Entered() / 2) : std::log(1 + Entered());
}

f64 LogPrecisionEq(f32 se) {
    if (!IsInterval())
        return LogErrorEq(se);
    const f64 error = f64{NorInv(PrecisionLevel())} * f64{se};
    return WidthEq(1 - ExpClamped(Single(-error)), ExpClamped(Single(error)) - 1);
}

f64 LogStudentPrecisionEq(f32 se, f32 df) {
    if (!IsInterval())
        return LogErrorEq(se);
    const f64 error = f64{TInv(PrecisionLevel(), df)} * f64{se};
    return RandomWidthEq(WidthRatio(LogHalfWidth(), error), df);
}

f64 ScaleWidth(ScaleStatistic& statistic, int exponent) {
    const f64 truth = statistic.AtTruth();
    const f64 level{PrecisionLevel()};
    const auto limit = [&](f64 p) {
        return std::pow(truth / statistic.Quantile(p), 1.0 / exponent);
    };
    return Width(1 - limit(level), limit(1 - level) - 1);
}

f64 ScalePrecisionEq(ScaleStatistic statistic, int exponent, f64 unit) {
    const f64 truth = statistic.AtTruth();
    if (!IsInterval())
        return ErrorProbabilityEq(statistic.Cdf((1 - Entered()) * truth),
                                  statistic.Cdf((1 + Entered()) * truth));
    const f64 ratio = WidthRatio(Entered() / unit, ScaleWidth(statistic, exponent));
    return WidthProbabilityEq(statistic.Cdf(truth * std::pow(ratio, exponent)));
}

} // namespace quorvanta
