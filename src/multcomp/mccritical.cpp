#include "multcomp/mccritical.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/root.h"
#include "multcomp/family.h"
#include "numeric/integra2.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <array>
#include <cmath>
#include <limits>

namespace quorvanta {

f32 FamilyGroups = 2;
f32 SizeRatio = 1;
f32 ErrorDf = 1;
f32 WidthLimit = SUpper;
bool KnownVariance = false;
f32 WeightedLevel = 0;

namespace {

constexpr f32 MostQuantileDf = 250;
constexpr f64 LowestQuantile = 1;
constexpr f64 HighestQuantile = 5;

struct KeptQuantile {
    f32 Df = 0;
    f32 Alpha = 0;
    f32 Groups = 0;
    f32 Ratio = 0;
    f32 Value = NoQuantile;
};

f32 FindQuantile(const StudentizedIntegral& integral, f32 alpha) {
    const f64 target = 1 - f64{alpha};
    i16 iterations = 0;
    f64 root = NoValue;
    f64 residual = NoValue;
    FindRootOf([&integral, target](
                   f64 c) { return f64{StudentizedProbability(integral, Single(c))} - target; },
               LowestQuantile, HighestQuantile, RootTolerance, RootIterations, iterations, root,
               residual);
    const bool found =
        std::fabs(residual) <= RootResidual && !IsRangeEndMark(root) && root <= HighestQuantile;
    return found ? Single(root) : NoQuantile;
}

f32 TailQuantile(f64 confidence, f32 df) {
    return TInv(Single(confidence), df);
}

// The error of both tails together counts in a test with two.
f64 Tails() {
    return NoOfTails == OneSided ? 1 : 2;
}

f32 FPoint(f64 p, f32 df1, f32 df2) {
    return FInv(Single(p), df1, df2);
}

// Every linear combination at once, at one tail or two.
f32 ScheffeValue(f64 error, f64 m, f32 df) {
    const f64 level = 1 - (NoOfTails == OneSided ? 2 : 1) * error;
    if (IsMultivariate())
        return Single(std::sqrt(f64{Chi2Inv(Single(level), Single(m))}));
    return Single(std::sqrt(m * f64{FPoint(level, Single(m), df)}));
}

f32 JointValue(f64 error, i16 noInFamily, f32 df) {
    const f32 quantileDf = MinSingle(df, MostQuantileDf);
    switch (MultCompKind()) {
    case Comparison::ControlTest:
        return QuantileIntegral(quantileDf, Single(NoOfTails == OneSided ? 2 * error : error),
                                Studentized::Dunnett);
    case Comparison::PairwiseTest:
        return QuantileIntegral(quantileDf, Single(error), Studentized::Tukey);
    case Comparison::EachMeanTest: {
        const f32 groups = FamilyGroups;
        FamilyGroups = noInFamily;
        const f32 value = QuantileIntegral(quantileDf, Single(error), Studentized::MaximumModulus);
        FamilyGroups = groups;
        return value;
    }
    default:
        return ScheffeValue(error, noInFamily, df);
    }
}

} // namespace

f32 QuantileIntegral(f32 df, f32 alpha, i16 funcNo) {
    static std::array<KeptQuantile, Studentized::MaximumModulus + 1> kept;
    KeptQuantile& last = kept.at(static_cast<std::size_t>(funcNo));
    if (last.Df != df || last.Alpha != alpha || last.Groups != FamilyGroups ||
        last.Ratio != SizeRatio)
        last = {.Df = df,
                .Alpha = alpha,
                .Groups = FamilyGroups,
                .Ratio = SizeRatio,
                .Value = FindQuantile(
                    {.FuncNo = funcNo, .Groups = FamilyGroups, .Df = df, .SizeRatio = SizeRatio},
                    alpha)};
    return last.Value;
}

f32 WidthIntegral(f32 c, f32 k, f32 df, i16 funcNo) {
    return StudentizedProbability(
        {.FuncNo = funcNo, .Groups = k, .Df = df, .SizeRatio = SizeRatio, .Upper = WidthLimit}, c);
}

f32 McTailValue(f32 p, f32 df) {
    // The quantiles end at marks, which a statistic may pass.
    if (p <= 0)
        return std::numeric_limits<f32>::infinity();
    return KnownVariance ? -NorInv(p) : -TInv(p, df);
}

f32 McCritValue(i16 testIndex, i16 noInFamily, f32 df, f32 level, i16 method) {
    const f64 error = 1 - f64{level};
    const f64 m = noInFamily;
    const f64 i = testIndex;
    switch (method) {
    case Adjust::Weighted:
        return McTailValue(Single(f64{WeightedLevel} / Tails()), df);
    case Adjust::Bonferroni:
        return McTailValue(Single(error / m / Tails()), df);
    case Adjust::Sidak:
        return McTailValue(Single((1 - std::pow(f64{level}, 1 / m)) / Tails()), df);
    case Adjust::JointOrScheffe:
        return JointValue(error, noInFamily, df);
    case Adjust::Holm:
        return McTailValue(Single(error / (m - i + 1) / Tails()), df);
    case Adjust::Hochberg:
        return McTailValue(Single(error / i / Tails()), df);
    default:
        return McTailValue(Single(error / Tails()), df);
    }
}

f32 McIntervalCrit(f32 groups, f32 df, f32 level, i16 kind) {
    const f64 error = 1 - f64{level};
    const f64 m = NoOfComparisons(groups);
    switch (AdjustMethod) {
    case Adjust::Bonferroni:
        return TailQuantile(1 - error / Tails() / m, df);
    case Adjust::Sidak:
        return TailQuantile(1 - (1 - std::pow(f64{level}, 1 / m)) / Tails(), df);
    case Adjust::JointOrScheffe: {
        const f64 others = f64{groups} - 1;
        return Single(std::sqrt(others * f64{FPoint(f64{level}, Single(others), df)}));
    }
    default:
        FamilyGroups = groups;
        return QuantileIntegral(MinSingle(df, MostQuantileDf), Single(error),
                                static_cast<i16>(kind + Studentized::Dunnett));
    }
}

namespace {

// The last critical value of intervals: a search for a width or a deviation asks for one again and
// again.
struct KeptCrit {
    f32 Groups = 0;
    f32 Df = 0;
    f32 Level = 0;
    f32 Ratio = 0;
    i16 Kind = -1;
    i16 Tails = 0;
    i16 Method = 0;
    f32 Value = 0;

    bool Is(f32 groups, f32 level, i16 kind) const {
        return Groups == groups && Df == ErrorDf && Level == level && Ratio == SizeRatio &&
               Kind == kind && Tails == NoOfTails && Method == AdjustMethod;
    }
};

f32 CritOf(f32 groups, f32 level, i16 kind) {
    static KeptCrit kept;
    if (!kept.Is(groups, level, kind))
        kept = {groups, ErrorDf,   level,        SizeRatio,
                kind,   NoOfTails, AdjustMethod, McIntervalCrit(groups, ErrorDf, level, kind)};
    return kept.Value;
}

} // namespace

f64 McIntervalRoot(f32 size, f32 otherSize) {
    const f32 level = Single(ParValue(0));
    const f64 width{Single(ParValue(2))};
    const f64 sd{Single(ParValue(3))};
    const f32 k = Single(ParValue(4));
    const i16 kind = MultCompKind();
    const f64 n{size};
    const f64 n2{otherSize};
    SizeRatio = Single(n2 / n);
    ErrorDf = Single((f64{k} - 1) * n2 + n - f64{k});
    const f32 c = CritOf(k, level, kind);
    // A negative critical value, that of a one-sided family at a small level, allows any width.
    WidthLimit =
        c > 0 ? MinSingle(SUpper, Single(width / 2 / sd / f64{c} / std::sqrt(1 / n + 1 / n2)))
              : SUpper;
    const f32 p = WidthIntegral(c, k, ErrorDf, static_cast<i16>(kind + Studentized::DunnettWidth));
    return MinDouble(p, ParValue(0)) - ParValue(1);
}

} // namespace quorvanta
