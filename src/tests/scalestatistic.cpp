#include "tests/scalestatistic.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/hypotheses.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

// Chi2Inv climbs in steps over a broken df up to 10, where a size could not be found, or one that
// is too small: between whole df the quantile is interpolated, as FInv does it.
f32 Chi2Quantile(f32 p, f32 df) {
    const f32 part = FracPart(df);
    if (df > 10 || part == 0)
        return Chi2Inv(p, df);
    const f32 whole = Single(Int(f64{df}));
    return InterpLinear(Chi2Inv(p, whole), Chi2Inv(p, whole + 1), part);
}

} // namespace

f64 ScaleStatistic::Cdf(f64 x) const {
    constexpr f64 largest = 1e30;
    const f32 value = Single(MinOf(x, largest));
    return df2_ > 0 ? f64{FCdf(value, df1_, df2_)} : f64{Chi2Cdf(value, df1_)};
}

f64 ScaleStatistic::Quantile(f64 p) {
    return df2_ > 0 ? f64{FInv(Single(p), df1_, df2_)} : f64{Chi2Quantile(Single(p), df1_)};
}

ScaleStatistic StatisticOf(const SampleValues& sizes, i16 dfPerSubject, bool locationKnown) {
    const auto df = [=](f32 n) {
        return Single(dfPerSubject * (f64{n} - (locationKnown ? 0 : 1)));
    };
    const f32 df1 = df(sizes.First());
    return NoOfSamples == OneSample ? ScaleStatistic(df1) : ScaleStatistic(df(sizes.Second()), df1);
}

f64 ScalePowerEq(ScaleStatistic statistic, const SampleTest& list, int exponent) {
    const f64 truth = list.Hypothesis.Truth();
    const auto below = [&](f32 hypothesis, f64 p) {
        const f32 factor = Single(std::pow(f64{hypothesis} / truth, exponent));
        return statistic.Cdf(f64{factor} * statistic.Quantile(p));
    };
    const f64 alpha{SignificanceLevel()};
    const f32 null = list.Hypothesis.H0();
    f64 power = 0;
    if (NoOfTails == TwoOneSided)
        power = below(list.Hypothesis.Right(), alpha) - below(list.Hypothesis.Left(), 1 - alpha);
    else if (NoOfTails == TwoSided)
        power = below(null, alpha / 2) + 1 - below(null, 1 - alpha / 2);
    else if (LeftTail == True)
        power = below(null, alpha);
    else
        power = 1 - below(null, 1 - alpha);
    return power - ParValue(1);
}

} // namespace quorvanta
