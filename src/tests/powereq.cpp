#include "tests/powereq.h"

#include "core/form.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "groupseq/designs.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/teststatistic.h"

#include <cmath>

namespace quorvanta {

namespace {

f64 NormalCdf(f64 z) {
    return f64{NorCdf(Single(z))};
}

// A correction is taken off the effect, as the power has it.
void NoteNormal(const NormalStatistic& statistic) {
    const f64 effect{statistic.Effect};
    const f64 less{statistic.Correction};
    NotedStatistic = {.Law = StatisticLaw::Normal,
                      .Truth = effect - less,
                      .NullError = f64{statistic.Se0},
                      .TruthError = f64{statistic.Se1}};
    if (NoOfTails == TwoOneSided) {
        NotedStatistic.Truth = f64{statistic.AboveLeft} - less;
        NotedStatistic.TruthRight = -(f64{statistic.BelowRight} + less);
        NotedStatistic.NullError = f64{statistic.Se0Left};
        NotedStatistic.NullErrorRight = f64{statistic.Se0Right};
    } else if (NoOfTails == TwoSided) {
        NotedStatistic.Truth = std::copysign(MaxOf(0, std::fabs(effect) - less), effect);
    } else if (LeftTail == True) {
        NotedStatistic.Truth = effect + less;
    }
}

} // namespace

f32 SignificanceLevel() {
    if (ParKind(0) != Kind::TestConfidenceLevel)
        return Single(ParValue(0));
    return LevelOfInterval(ParValue(0));
}

f32 LevelOfInterval(f64 confidence) {
    const bool halved = NoOfTails == TwoOneSided || CheckValue(Check::TwoSidedInterval) == 1;
    return Single((1 - confidence) / (halved ? 2 : 1));
}

f64 PowerZ(f32 x, f32 c, f32 s, f32 z) {
    if (s <= 0)
        return NoValue;
    return (f64{x} - f64{c} * f64{z}) / f64{s};
}

f64 PowerOneTail(f32 x, f32 c, f32 s, f32 z) {
    return NormalCdf(PowerZ(x, c, s, z));
}

f64 PowerTwoTails(f32 x, f32 c, f32 s, f32 z) {
    return 1 - NormalCdf(PowerZ(x, c, s, -z)) + NormalCdf(PowerZ(x, c, s, z));
}

f64 PowerBetween(f32 xa, f32 xb, f32 ca, f32 cb, f32 s, f32 z) {
    return NormalCdf(PowerZ(xa, ca, s, z)) + NormalCdf(PowerZ(xb, cb, s, z)) - 1;
}

f32 ErrorAboveZero(f64 error) {
    constexpr f64 least = 1e-20;
    return Single(MaxOf(least, error));
}

f32 ErrorOfVariance(f64 variance) {
    return ErrorAboveZero(std::sqrt(MaxOf(0, variance)));
}

f64 GroupSequentialEq(f64 power) {
    return power == NoValue ? NoValue : power - ParValue(1);
}

// J. M. Lachin, Controlled Clinical Trials 2, 1981, 93-113; two one-sided tests: D. J. Schuirmann,
// Journal of Pharmacokinetics and Biopharmaceutics 15, 1987, 657-680.
f64 NormalPowerEq(const NormalStatistic& statistic) {
    const auto& [effect, se0, se1, aboveLeft, belowRight, se0Left, se0Right, correction] =
        statistic;
    if (IsGroupSeq == True)
        return GroupSequentialEq(GsPowerCalc(effect, se1, se1, aboveLeft, belowRight, se0Left,
                                             se0Right, correction, false));
    NoteNormal(statistic);
    const f64 alpha{SignificanceLevel()};
    const f64 less{correction};
    f64 power = 0;
    if (NoOfTails == TwoOneSided) {
        const f32 z = NorInv(Single(1 - alpha));
        power = PowerBetween(Single(aboveLeft - less), Single(belowRight + less), se0Left, se0Right,
                             se1, z);
    } else if (NoOfTails == TwoSided) {
        const f32 z = NorInv(Single(1 - alpha / 2));
        // A correction larger than the effect leaves no effect: below 0 the other tail would make
        // the power fall while the effect grows.
        const f64 distance = MaxOf(0, std::fabs(f64{effect}) - less);
        power = PowerTwoTails(Single(distance), se0, se1, z);
    } else if (LeftTail == True) {
        const f32 z = -NorInv(Single(1 - alpha));
        power = 1 - PowerOneTail(Single(effect + less), se0, se1, z);
    } else {
        const f32 z = NorInv(Single(1 - alpha));
        power = PowerOneTail(Single(effect - less), se0, se1, z);
    }
    return power - ParValue(1);
}

f64 NorPowerEq(f32 delta, f32 se0, f32 se1, f32 deltaLow, f32 deltaHigh, f32 se0Low, f32 se0High,
               f32 correction) {
    return NormalPowerEq({delta, se0, se1, deltaLow, deltaHigh, se0Low, se0High, correction});
}

// The F test of a ratio of variances (A. M. Mood, F. A. Graybill and D. C. Boes, Introduction to
// the Theory of Statistics, 3rd edition, 1974, chapter IX).
f64 FPowerEq(f32 ratio, f32 right, f32 df1, f32 df2) {
    const f64 residual = QuantilePowerEq(ratio, right, [&df1, &df2](f32 factor, f64 p) {
        const f64 quantile{FInv(Single(p), df1, df2)};
        return f64{FCdf(Single(f64{factor} * quantile), df1, df2)};
    });
    NotedStatistic = {.Law = StatisticLaw::VarianceRatio,
                      .Df1 = f64{df1},
                      .Df2 = f64{df2},
                      .Truth = f64{ratio},
                      .TruthRight = f64{right}};
    return residual;
}

f32 NorPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 correction) {
    if (se <= 0)
        return 0;
    const f64 s{se};
    const f64 c{correction};
    const f64 d = f64{mean} - f64{m0};
    if (NoOfTails == TwoOneSided) {
        const f64 left = 1 - NormalCdf((f64{mean} - f64{low} - c) / s);
        const f64 right = NormalCdf((f64{mean} - f64{high} + c) / s);
        return Single(left > right ? left : right);
    }
    if (NoOfTails == TwoSided)
        return Single(2 * (1 - NormalCdf(MaxOf(0, std::fabs(d) - c) / s)));
    if (LeftTail == True)
        return Single(NormalCdf((d + c) / s));
    return Single(1 - NormalCdf((d - c) / s));
}

f32 NullErrorPValue(f32 mean, f32 m0, f32 right, f32 se0, f32 seRight, f32 correction) {
    if (se0 <= 0 || (NoOfTails == TwoOneSided && seRight <= 0))
        return 1;
    if (NoOfTails != TwoOneSided)
        return NorPValue(mean, m0, se0, 0, 0, correction);
    // Each distance in its own standard errors.
    const f64 c{correction};
    const f64 above = (f64{mean} - f64{m0} - c) / f64{se0};
    const f64 below = (f64{right} - f64{mean} - c) / f64{seRight};
    return NorPValue(0, 0, 1, Single(-above), Single(below), 0);
}

f32 ParDep(i16 position, f32 base, i16 mode) {
    if (mode < AsValue || mode > AsRatio)
        return 0;
    return Single(FromForm(static_cast<Form>(mode), f64{base}, ParValue(position)));
}

i16 ParSelect(i16 mode, i16 a, i16 b, i16 c) {
    return mode == 0 ? a : (mode == 1 ? b : c);
}

} // namespace quorvanta
