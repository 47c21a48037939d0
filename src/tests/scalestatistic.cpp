#include "tests/scalestatistic.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"
#include "tests/teststatistic.h"

#include <cmath>

namespace quorvanta {

namespace {

// Over a broken df the chi-square functions are no curves, and a search ends where they jump: up to
// 21 the distribution function is one of F with 10000 df, in which the 32-bit logarithms of two
// gamma functions leave steps of up to 0.005, and up to 10 the quantile climbs in steps, towards
// that of F with more df than at 10 itself. Between whole df both are interpolated, as FInv does
// it; the distribution function at the same multiple of the df.
constexpr f32 SteppedCdf = 21;
constexpr f32 SteppedQuantile = 11;

template <class AtWholeDf>
f32 BetweenWholeDf(f32 df, const AtWholeDf& atWhole) {
    const f32 whole = Single(Int(f64{df}));
    return InterpLinear(atWhole(whole), atWhole(whole + 1), FracPart(df));
}

f32 Chi2Probability(f32 x, f32 df) {
    if (df > SteppedCdf || FracPart(df) == 0)
        return Chi2Cdf(x, df);
    return BetweenWholeDf(
        df, [=](f32 whole) { return Chi2Cdf(Single(f64{x} * f64{whole} / f64{df}), whole); });
}

f32 Chi2Quantile(f32 p, f32 df) {
    if (df > SteppedQuantile || FracPart(df) == 0)
        return Chi2Inv(p, df);
    return BetweenWholeDf(df, [p](f32 whole) { return Chi2Inv(p, whole); });
}

} // namespace

f64 ScaleStatistic::Cdf(f64 x) const {
    constexpr f64 largest = 1e30;
    const f32 value = Single(MinOf(x, largest));
    return df2_ > 0 ? f64{FCdf(value, df1_, df2_)} : f64{Chi2Probability(value, df1_)};
}

f64 ScaleStatistic::Quantile(f64 p) {
    return df2_ > 0 ? f64{FInv(Single(p), df1_, df2_)} : f64{Chi2Quantile(Single(p), df1_)};
}

void ScaleStatistic::Note(f64 factor, f64 factorRight) const {
    NotedStatistic = {.Law = df2_ > 0 ? StatisticLaw::VarianceRatio : StatisticLaw::VarianceShare,
                      .Df1 = f64{df1_},
                      .Df2 = f64{df2_},
                      .Truth = factor,
                      .TruthRight = factorRight};
}

ScaleStatistic StatisticOf(const SampleValues& sizes, i16 dfPerSubject, bool locationKnown) {
    const f32 n2 = NoOfSamples == OneSample ? 0.0F : sizes.Second();
    return StatisticOf(sizes.First(), n2, dfPerSubject, locationKnown);
}

ScaleStatistic StatisticOf(f32 n1, f32 n2, i16 dfPerSubject, bool locationKnown) {
    const auto df = [=](f32 n) {
        return Single(dfPerSubject * (f64{n} - (locationKnown ? 0 : 1)));
    };
    const f32 df1 = df(n1);
    return NoOfSamples == OneSample ? ScaleStatistic(df1) : ScaleStatistic(df(n2), df1);
}

// The chi-square test of a variance and the F test of two (A. M. Mood, F. A. Graybill and D. C.
// Boes, Introduction to the Theory of Statistics, 3rd edition, 1974, chapter IX).
f64 ScalePowerEq(ScaleStatistic statistic, const SampleTest& list, int exponent) {
    const f64 truth = list.Hypothesis.Truth();
    const auto factorOf = [&](f32 hypothesis) {
        return Single(std::pow(f64{hypothesis} / truth, exponent));
    };
    const auto below = [&](f32 hypothesis, f64 p) {
        const f32 factor = factorOf(hypothesis);
        return statistic.Cdf(f64{factor} * statistic.Quantile(p));
    };
    const f64 residual = QuantilePowerEq(list.Hypothesis.H0(), list.Hypothesis.Right(), below);
    statistic.Note(f64{factorOf(list.Hypothesis.H0())}, f64{factorOf(list.Hypothesis.Right())});
    return residual;
}

f32 Chi2PValue(f64 x, f64 null, f64 right, f64 df) {
    const ScaleStatistic statistic(Single(df));
    return QuantilePValue(null, right, [&](f64 value) { return statistic.Cdf(x / value); });
}

f32 FPValue(f64 x, f64 null, f64 right, f64 df1, f64 df2) {
    const ScaleStatistic statistic(Single(df1), Single(df2));
    return QuantilePValue(null, right, [&](f64 value) { return statistic.Cdf(x / value); });
}

f32 ScalePValue(const SampleTest& list, const ScaleEstimates& estimates, f64 truth, int exponent) {
    const bool hasTwo = list.Sizes.HasSecond();
    if (estimates.Df1 < 1 || (hasTwo && estimates.Df2 < 1))
        return 1;
    const auto relative = [=](f32 null) {
        const f64 ratio = f64{null} / truth;
        return exponent == 2 ? ratio * ratio : ratio;
    };
    const f64 null = relative(list.Hypothesis.H0());
    const f64 right = NoOfTails == TwoOneSided ? relative(list.Hypothesis.Right()) : null;
    if (!hasTwo)
        return Chi2PValue(estimates.Df1 * estimates.First, null, right, estimates.Df1);
    // Where sample 1 does not vary the ratio is beyond all measure.
    constexpr f64 smallest = 1e-30;
    return FPValue(estimates.Second / MaxOf(smallest, estimates.First), null, right, estimates.Df2,
                   estimates.Df1);
}

} // namespace quorvanta
