#include "tests/anovaeq.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"
#include "tests/teststatistic.h"
#include "tests/teststud.h"

#include <cmath>
#include <cstddef>

namespace quorvanta {

// H. Scheffe, The Analysis of Variance, 1959, section 2.8 and chapter 3. For means of which only
// one difference is known, lambda is that of the configuration with the least power: any two means
// apart and the others midway, or one mean apart from all others.
AnovaDesign OneWayDesign(f32 k, f32 n1, f32 nk) {
    const f64 first{n1};
    const f64 other{nk};
    const f64 others = f64{k} - 1;
    const f64 total{Single(others * other + first)};
    // The one mean that is apart is that of the smallest group.
    const f64 apart = nk < n1 ? ((others - 1) * other + first) * other / total
                              : others * first * other / (others * other + first);
    return {Single(others),
            Single(total - f64{k}),
            {total, first * other / (first + other), apart},
            n1};
}

std::vector<f64> OneWayMeans(i16 k, f64 n1, f64 nk, AnovaEffectType type, f64 effect) {
    std::vector<f64> means(static_cast<std::size_t>(k), 0.0);
    switch (type) {
    case AnovaEffectType::AnyDifference: // the others at the weighted mean of the two
        means.front() = effect * nk / (n1 + nk);
        means.back() = -effect * n1 / (n1 + nk);
        break;
    case AnovaEffectType::MinDifference:
        (nk < n1 ? means.back() : means.front()) = effect;
        break;
    default: {
        const f64 others = (k - 1) * nk;
        means.front() = effect * (n1 + others) / std::sqrt(n1 * others);
    }
    }
    return means;
}

AnovaDesign MainEffect(f32 levels, f32 perLevel, f64 errorDf) {
    const f64 a{levels};
    const f64 n{perLevel};
    return {Single(a - 1), Single(errorDf), {a * n, n / 2, (a - 1) * n / a}, perLevel};
}

// The differences of the types "any" and "smallest" are between cells here.
AnovaDesign InteractionEffect(f32 a, f32 b, f32 perCell, f64 errorDf) {
    const f64 cells = f64{a} * f64{b};
    const f64 n{perCell};
    return {Single((f64{a} - 1) * (f64{b} - 1)),
            Single(errorDf),
            {cells * n, cells * n, (cells - 1) * n},
            perCell};
}

f64 FTestEq(f32 df1, f32 df2, f32 lambda) {
    const f64 alpha{SignificanceLevel()};
    // The quantile cuts large degrees of freedom, and the distribution function has to use the
    // same.
    const f32 critical = FInv(Single(1 - alpha), df1, df2);
    NotedStatistic = {
        .Law = StatisticLaw::FRatio, .Df1 = f64{df1}, .Df2 = f64{df2}, .Truth = f64{lambda}};
    return 1 - f64{NcFCdf(critical, df1, df2, lambda)} - ParValue(PowerParNo);
}

f32 FTestPValue(f64 between, f64 within, f64 df1, f64 df2) {
    constexpr f64 certain = 1e30;
    if (df1 < 1 || df2 < 1)
        return 1;
    if (within <= 0)
        return between > 0 ? 0.0F : 1.0F;
    const f64 f = MinOf(certain, between / df1 / (within / df2));
    return Single(1 - f64{FCdf(Single(f), Single(df1), Single(df2))});
}

f64 AnovEq(const AnovaDesign& design, AnovaEffectType type, f32 effect, f32 sd) {
    const f64 standardised = f64{effect} / f64{sd};
    const f64 lambda = design.Lambda[static_cast<int>(type)] * standardised * standardised;
    return FTestEq(design.Df1, design.Df2, Single(lambda));
}

f64 ContrastPowerEq(const AnovaDesign& design, f32 contrast, f32 contrastSd, f32 deltaLow,
                    f32 deltaHigh) {
    const f32 se = Single(f64{contrastSd} / std::sqrt(f64{design.PerMean}));
    return TPowerEq(contrast, se, deltaLow, deltaHigh, design.Df2);
}

} // namespace quorvanta
