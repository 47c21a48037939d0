#include "tests/proportions.h"

#include "core/analysis_state.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

f64 VarianceOfOne(f32 p, f32 n, f32 factor) {
    return p * (1 - f64{p}) * factor / n;
}

f32 SeOfOne(f32 p, f32 n, f32 factor) {
    return Single(std::sqrt(VarianceOfOne(p, n, factor)));
}

f32 UnpooledSe(f32 n1, f32 n2, f32 p1, f32 p2, f32 factor1, f32 factor2) {
    return Single(std::sqrt(VarianceOfOne(p1, n1, factor1) + VarianceOfOne(p2, n2, factor2)));
}

f32 ArcSinRoot(f32 p) {
    return ArcSin(Single(std::sqrt(f64{p})));
}

// The difference on the arc-sine scale of the pair that has this difference of proportions.
f32 ArcSineDifference(const ProportionValues& values, f32 difference) {
    const ProportionPair pair = ProportionsFromDiff(values.P1, values.P2, difference);
    return Single(f64{ArcSinRoot(pair.High)} - ArcSinRoot(pair.Low));
}

// The equation on a scale with one standard error: the effect, its H0 value or left limit, its
// right limit.
f64 EqualSeEq(f32 effect, f32 null, f32 right, f32 se) {
    const f32 above = Single(f64{effect} - null);
    return NormalPowerEq({.Effect = above,
                          .Se0 = se,
                          .Se1 = se,
                          .AboveLeft = above,
                          .BelowRight = Single(f64{right} - effect),
                          .Se0Left = se,
                          .Se0Right = se});
}

} // namespace

// J. L. Fleiss, Statistical Methods for Rates and Proportions, 2nd edition, 1981, chapters 1 and 3;
// with a difference under H0: W. C. Blackwelder, Controlled Clinical Trials 3, 1982, 345-353.
f64 OneProportionEq(const ProportionValues& values, f32 n, f32 factor, bool corrected) {
    const f32 above = Single(f64{values.P1} - values.Null);
    const f32 se0 = SeOfOne(values.Null, n, factor);
    return NormalPowerEq({.Effect = above,
                          .Se0 = se0,
                          .Se1 = SeOfOne(values.P1, n, factor),
                          .AboveLeft = above,
                          .BelowRight = Single(f64{values.Right} - values.P1),
                          .Se0Left = se0,
                          .Se0Right = SeOfOne(values.Right, n, factor),
                          .Correction = corrected ? Single(1 / f64{n} / 2) : 0.0F});
}

f64 TwoProportionsEq(const ProportionValues& values, f32 n1, f32 n2, f32 factor1, f32 factor2,
                     bool corrected) {
    const f32 difference = Single(f64{values.P2} - values.P1);
    NormalStatistic statistic;
    statistic.Effect = statistic.AboveLeft = Single(f64{difference} - values.Null);
    statistic.Se1 = UnpooledSe(n1, n2, values.P1, values.P2, factor1, factor2);
    if (corrected)
        statistic.Correction = Single((1 / f64{n1} + 1 / f64{n2}) / 2);
    if (NoOfTails == TwoOneSided) {
        const auto seAt = [&](f32 limit) {
            const ProportionPair pair = ProportionsFromDiff(values.P1, values.P2, limit);
            return HyperPooledSe(n1, n2, pair.Low, pair.High, limit, factor1, factor2);
        };
        statistic.BelowRight = Single(f64{values.Right} - difference);
        statistic.Se0Left = seAt(values.Null);
        statistic.Se0Right = seAt(values.Right);
    } else {
        statistic.Se0 = HyperPooledSe(n1, n2, values.P1, values.P2, values.Null, factor1, factor2);
    }
    return NormalPowerEq(statistic);
}

// J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd edition, 1988, chapter 6.
f64 ArcSineEq(const ProportionValues& values, f32 n) {
    return EqualSeEq(ArcSinRoot(values.P1), ArcSinRoot(values.Null), ArcSinRoot(values.Right),
                     Single(0.5 / std::sqrt(f64{n})));
}

f64 ArcSineEq(const ProportionValues& values, f32 n1, f32 n2) {
    // An H0 difference is carried over by the pair that has it, as the limits are; without that the
    // H0 value would have no part in the test.
    return EqualSeEq(Single(f64{ArcSinRoot(values.P2)} - ArcSinRoot(values.P1)),
                     ArcSineDifference(values, values.Null),
                     ArcSineDifference(values, values.Right),
                     Single(0.5 * std::sqrt(1 / f64{n1} + 1 / f64{n2})));
}

f32 OneProportionPValue(const ProportionValues& values, i32 x, i16 n, f32 factor, bool corrected) {
    const f32 size = n;
    return NullErrorPValue(Single(static_cast<f64>(x) / n), values.Null, values.Right,
                           SeOfOne(values.Null, size, factor), SeOfOne(values.Right, size, factor),
                           corrected ? Single(1.0 / n / 2) : 0.0F);
}

f32 ArcSinePValue(const ProportionValues& values, i32 x, i16 n) {
    const f32 se = Single(0.5 / std::sqrt(static_cast<f64>(n)));
    return NorPValue(ArcSinRoot(Single(static_cast<f64>(x) / n)), ArcSinRoot(values.Null), se,
                     ArcSinRoot(values.Null), ArcSinRoot(values.Right), 0);
}

f32 TwoProportionsPValue(const ProportionValues& values, const TwoCounts& counts, f32 factor1,
                         f32 factor2, bool corrected) {
    const auto [x1, n1, x2, n2] = counts;
    const f32 p1 = Single(static_cast<f64>(x1) / n1);
    const f32 p2 = Single(static_cast<f64>(x2) / n2);
    const f32 correction = corrected ? Single((1.0 / n1 + 1.0 / n2) / 2) : 0.0F;
    const auto se = [&](f32 low, f32 high, f32 null) {
        return HyperPooledSe(counts.N1, counts.N2, low, high, null, factor1, factor2);
    };
    const f32 difference = Single(f64{p2} - f64{p1});
    if (NoOfTails != TwoOneSided)
        return NullErrorPValue(difference, values.Null, 0, se(p1, p2, values.Null), 0, correction);
    const ProportionPair left = ProportionsFromDiff(p1, p2, values.Null);
    const ProportionPair right = ProportionsFromDiff(p1, p2, values.Right);
    return NullErrorPValue(difference, values.Null, values.Right,
                           se(left.Low, left.High, values.Null),
                           se(right.Low, right.High, values.Right), correction);
}

f32 ArcSinePValue(const ProportionValues& values, const TwoCounts& counts) {
    const auto [x1, n1, x2, n2] = counts;
    const f64 a1{ArcSinRoot(Single(static_cast<f64>(x1) / n1))};
    const f64 a2{ArcSinRoot(Single(static_cast<f64>(x2) / n2))};
    const f32 null = ArcSineDifference(values, values.Null);
    return NorPValue(Single(a2 - a1), null, Single(0.5 * std::sqrt(1.0 / n1 + 1.0 / n2)), null,
                     ArcSineDifference(values, values.Right), 0);
}

f32 ArcSin(f32 x) {
    if (x >= 1)
        return Single(std::sqrt(f64{x}) * Pi / 2);
    return Single(std::atan(x / std::sqrt(1 - f64{x} * x)));
}

f32 PooledSe(f32 n1, f32 n2, f32 p1, f32 p2, f32 d0) {
    return HyperPooledSe(n1, n2, p1, p2, d0, 1, 1);
}

f32 HyperPooledSe(f32 n1, f32 n2, f32 p1, f32 p2, f32 d0, f32 factor1, f32 factor2) {
    if (d0 != 0)
        return UnpooledSe(n1, n2, p1, p2, factor1, factor2);
    const f32 pooled = Single((f64{n2} * p2 + f64{n1} * p1) / (f64{n1} + n2));
    const f64 p = pooled;
    return Single(std::sqrt(p * (1 - p) * (f64{factor2} / n2 + f64{factor1} / n1)));
}

ProportionPair ProportionsFromDiff(f32 p1, f32 p2, f32 limit) {
    const f64 sum = f64{p1} + p2;
    f32 low = Single((sum - limit) / 2);
    f32 high = Single((sum + limit) / 2);
    if (limit >= 0) {
        if (low < ProbabilityFloor) {
            low = Single(ProbabilityFloor);
            high = limit;
        }
        if (high > ProbabilityCeiling) {
            high = Single(ProbabilityCeiling);
            low = Single(1 - f64{limit});
        }
    } else {
        if (high < ProbabilityFloor) {
            high = Single(ProbabilityFloor);
            low = -limit;
        }
        if (low > ProbabilityCeiling) {
            low = Single(ProbabilityCeiling);
            high = Single(1 + f64{limit});
        }
    }
    return {low, high};
}

} // namespace quorvanta
