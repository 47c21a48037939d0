#include "tests/proportions.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"
#include "tests/turningpoint.h"

#include <cmath>
#include <optional>

namespace quorvanta {

namespace {

constexpr i16 groupSize2 = 2;
constexpr i16 kindSize1 = 4;
constexpr i16 kindSize2[] = {37, 38, 5};

struct OneKinds {
    i16 Group;
    i16 H0;
    i16 H1[3];
};
constexpr OneKinds proportionKinds{11, 35, {83, 40, 41}};
constexpr OneKinds oddsKinds{34, 225, {226, 227, 228}};
constexpr i16 leftLimitKind = 47;
constexpr i16 rightLimitKind = 48;

struct TwoKinds {
    i16 Group;
    i16 First;
    i16 Second[3];
};
constexpr TwoKinds proportionsKinds{12, 8, {69, 52, 70}};
constexpr TwoKinds twoOddsKinds{35, 229, {230, 231, 232}};
constexpr i16 differenceKind = 51;
constexpr i16 leftDifferenceKind = 71;
constexpr i16 rightDifferenceKind = 72;

const OneKinds& KindsOfOne(bool odds) {
    return odds ? oddsKinds : proportionKinds;
}

const TwoKinds& KindsOfTwo(bool odds) {
    return odds ? twoOddsKinds : proportionsKinds;
}

bool HasTwo(const ProportionList& list) {
    return list.Second != 0;
}

// The kind of an H1 proportion entered as itself: its range is that of the others.
i16 ValueKind(const ProportionList& list) {
    return HasTwo(list) ? KindsOfTwo(list.Odds).Second[0] : KindsOfOne(list.Odds).H1[0];
}

// A proportion as it is entered; what lies outside 0 to 1 is the end of the scale.
f64 Entry(const ProportionList& list, f64 p) {
    if (!list.Odds)
        return p;
    if (p <= 0)
        return 0;
    return p >= 1 ? ParMax(ValueKind(list)) : p / (1 - p);
}

f64 FromEntry(const ProportionList& list, f64 entry) {
    return list.Odds ? entry / (entry + 1) : entry;
}

// The second value of a pair from the first and its own entry, and the entry from both values.
f64 FromForm(f64 base, f64 entry, i16 mode) {
    return mode == AsValue ? entry : (mode == AsDifference ? base + entry : base * entry);
}

f64 InForm(f64 base, f64 value, i16 mode) {
    return mode == AsValue ? value : (mode == AsDifference ? value - base : value / base);
}

// The true effect: the H1 proportion, or the difference of the two.
f64 EnteredEffect(const ProportionList& list) {
    const f64 first = ParValue(list.H1);
    if (!HasTwo(list))
        return FromEntry(list, first);
    const f64 second = FromForm(first, ParValue(list.Second), list.Mode);
    return FromEntry(list, second) - FromEntry(list, first);
}

// The parameter to which the last H1 entry is a difference or a ratio.
i16 BaseOf(const ProportionList& list) {
    return HasTwo(list) ? list.H1 : list.H0;
}

// The value of the unknown at which the effect is what is asked for; nothing where the effect
// does not follow from the unknown alone.
std::optional<f64> UnknownAt(const ProportionList& list, f64 effect) {
    if (!HasTwo(list))
        return Entry(list, effect);
    if (UnknownParNo == list.Second) {
        const f64 first = ParValue(list.H1);
        return InForm(first, Entry(list, FromEntry(list, first) + effect), list.Mode);
    }
    const f64 second = ParValue(list.Second);
    if (list.Mode == AsValue)
        return Entry(list, FromEntry(list, second) - effect);
    if (list.Mode == AsRatio && !list.Odds && second != 1)
        return effect / (second - 1);
    return std::nullopt;
}

// The base at which the proportion and the one in relation to it add up to 1.
f64 MirrorPoint(const ProportionList& list) {
    const f64 kept = ParValue(BaseOf(list) + 1);
    if (list.Mode == AsDifference)
        return list.Odds ? (std::sqrt(kept * kept + 4) - kept) / 2 : (1 - kept) / 2;
    return list.Odds ? 1 / std::sqrt(kept) : 1 / (1 + kept);
}

// The variance is largest in the middle, so the power has two values on both sides of it, but where
// an effect that grows all the way outweighs that: a ratio of proportions, and a difference of odds
// (it shrinks), under equal proportions.
bool IsMirrored(const ProportionList& list) {
    if (list.Paired)
        return false;
    const bool equalUnderH0 =
        NoOfTails != TwoOneSided && (!HasTwo(list) || list.H0 == 0 || ParValue(list.H0) == 0);
    return !equalUnderH0 || (list.Mode == AsDifference) != list.Odds;
}

void LimitBase(const ProportionList& list, f64& lower, f64& upper, f64 (*residual)()) {
    if (IsMirrored(list))
        KeepOneSide(lower, upper, MirrorPoint(list), SearchesLeft() ? Side::Below : Side::Above,
                    residual);
}

void LimitEffect(const ProportionList& list, f64& lower, f64& upper, f64 (*residual)()) {
    if (NoOfTails == TwoOneSided) {
        const f64 left = ParValue(list.H0);
        const f64 right = ParValue(list.H0 + 1);
        KeepEffectBetween(list, lower, upper, (left + right) / 2, SearchesLeft() ? left : right);
    } else if (HasTwo(list)) {
        const f64 null = list.H0 == 0 ? 0 : ParValue(list.H0);
        KeepEffectBetween(list, lower, upper, null, SearchesLeft() ? -1 : 1);
    } else {
        // The H0 value in the form of the H1 entry.
        LeftTailLimit(lower, upper, InForm(ParValue(list.H0), ParValue(list.H0), list.Mode));
    }
    if (HasTwo(list) && UnknownParNo == list.H1 && list.Mode != AsValue)
        LimitBase(list, lower, upper, residual);
}

void LimitNull(const ProportionList& list, f64& lower, f64& upper, f64 (*residual)()) {
    if (HasTwo(list))
        RightTailLimit(lower, upper, EnteredEffect(list));
    else if (list.Mode == AsValue)
        RightTailLimit(lower, upper, ParValue(list.H1));
    else
        LimitBase(list, lower, upper, residual);
}

f32 AsProportion(const ProportionList& list, f32 entered) {
    return list.Odds ? OddsToProp(entered) : entered;
}

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
    const f32 delta = Single(f64{effect} - null);
    return NorPowerEq(delta, se, se, delta, Single(f64{right} - effect), se, se, 0);
}

} // namespace

void OfferOneProportion(bool odds) {
    if (NoOfTails != TwoOneSided)
        OfferGroups({KindsOfOne(odds).Group});
}

void OfferTwoProportions(bool odds) {
    OfferGroups({KindsOfTwo(odds).Group});
}

ProportionList AddOneProportion(bool odds) {
    const OneKinds& kinds = KindsOfOne(odds);
    ProportionList list;
    list.Odds = odds;
    list.Mode = ChosenOption(kinds.Group);
    if (NoOfTails == TwoOneSided) {
        list.H0 = AddPar(leftLimitKind);
        AddPar(rightLimitKind);
    } else {
        list.H0 = AddPar(kinds.H0);
    }
    list.H1 = AddPar(ParSelect(list.Mode, kinds.H1[0], kinds.H1[1], kinds.H1[2]));
    return list;
}

ProportionList AddTwoProportions(bool odds, NullDifference null) {
    const TwoKinds& kinds = KindsOfTwo(odds);
    ProportionList list;
    list.Odds = odds;
    list.Mode = ChosenOption(kinds.Group);
    if (NoOfTails == TwoOneSided) {
        list.H0 = AddPar(leftDifferenceKind);
        AddPar(rightDifferenceKind);
    } else if (null == NullDifference::Entered) {
        list.H0 = AddPar(differenceKind);
    }
    list.H1 = AddPar(kinds.First);
    list.Second = AddPar(ParSelect(list.Mode, kinds.Second[0], kinds.Second[1], kinds.Second[2]));
    return list;
}

bool CheckProportions(const ProportionList& list) {
    if (NoOfTails == TwoOneSided && !CheckPairs(list.H0))
        return false;
    if (!HasTwo(list) && NoOfTails == TwoOneSided)
        return true;
    const i16 kind = ValueKind(list);
    const i16 base = BaseOf(list);
    return CheckPair(base, static_cast<i16>(base + 1), ParMin(kind), ParMax(kind), list.Mode);
}

void LimitProportions(const ProportionList& list, f64& lower, f64& upper, f64 (*residual)()) {
    const i16 kind = ValueKind(list);
    if (HasTwo(list) || NoOfTails != TwoOneSided)
        PairLimits(lower, upper, BaseOf(list), ParMin(kind), ParMax(kind), list.Mode);
    if (UnknownParNo == list.H1 || (HasTwo(list) && UnknownParNo == list.Second)) {
        LimitEffect(list, lower, upper, residual);
    } else if (list.H0 != 0 && NoOfTails == TwoOneSided) {
        if (UnknownParNo == list.H0)
            upper = MinOf(upper, EnteredEffect(list));
        else if (UnknownParNo == list.H0 + 1)
            lower = MaxOf(lower, EnteredEffect(list));
    } else if (list.H0 != 0 && UnknownParNo == list.H0) {
        LimitNull(list, lower, upper, residual);
    }
}

void KeepEffectBetween(const ProportionList& list, f64& lower, f64& upper, f64 a, f64 b) {
    const auto first = UnknownAt(list, a);
    const auto second = UnknownAt(list, b);
    if (!first || !second)
        return;
    lower = MaxOf(lower, MinOf(*first, *second));
    upper = MinOf(upper, MaxOf(*first, *second));
}

i16 AddTwoSizes() {
    WorkNo = ChosenOption(groupSize2);
    const i16 size1 = AddPar(kindSize1);
    AddPar(ParSelect(WorkNo, kindSize2[0], kindSize2[1], kindSize2[2]));
    return size1;
}

bool CheckTwoSizes(i16 size1, f64 largestSize2) {
    const f64 max = MinOf(largestSize2, ParMax(kindSize2[0]));
    return CheckPair(size1, static_cast<i16>(size1 + 1), ParMin(kindSize2[0]), max, WorkNo);
}

void LimitTwoSizes(i16 size1, f64& lower, f64& upper, f64 largestSize2) {
    const f64 max = MinOf(largestSize2, ParMax(kindSize2[0]));
    PairLimits(lower, upper, size1, ParMin(kindSize2[0]), max, WorkNo);
}

bool CheckTwoSamples(const ProportionList& list, i16 size1) {
    return CheckProportions(list) && CheckTwoSizes(size1);
}

void LimitTwoSamples(const ProportionList& list, i16 size1, f64& lower, f64& upper,
                     f64 (*residual)()) {
    LimitProportions(list, lower, upper, residual);
    LimitTwoSizes(size1, lower, upper);
}

ProportionValues ReadProportions(const ProportionList& list) {
    ProportionValues values;
    if (list.H0 != 0)
        values.Null = Single(ParValue(list.H0));
    if (NoOfTails == TwoOneSided)
        values.Right = Single(ParValue(list.H0 + 1));
    if (HasTwo(list)) {
        const f32 first = Single(ParValue(list.H1));
        values.P1 = AsProportion(list, first);
        values.P2 = AsProportion(list, ParDep(list.Second, first, list.Mode));
        return values;
    }
    values.P1 = AsProportion(list, ParDep(list.H1, values.Null, list.Mode));
    // Limits are proportions even where the rest is entered as odds.
    if (NoOfTails != TwoOneSided)
        values.Null = AsProportion(list, values.Null);
    return values;
}

f32 OddsToProp(f32 odds) {
    return Single(odds / (f64{odds} + 1));
}

f64 OneProportionEq(const ProportionValues& values, f32 n, f32 factor, bool corrected) {
    const f32 delta = Single(f64{values.P1} - values.Null);
    const f32 se0 = SeOfOne(values.Null, n, factor);
    const f32 correction = corrected ? Single(1 / f64{n} / 2) : 0.0F;
    return NorPowerEq(delta, se0, SeOfOne(values.P1, n, factor), delta,
                      Single(f64{values.Right} - values.P1), se0, SeOfOne(values.Right, n, factor),
                      correction);
}

f64 TwoProportionsEq(const ProportionValues& values, f32 n1, f32 n2, f32 factor1, f32 factor2,
                     bool corrected) {
    const f32 difference = Single(f64{values.P2} - values.P1);
    const f32 delta = Single(f64{difference} - values.Null);
    const f32 se1 = UnpooledSe(n1, n2, values.P1, values.P2, factor1, factor2);
    const f32 correction = corrected ? Single((1 / f64{n1} + 1 / f64{n2}) / 2) : 0.0F;
    if (NoOfTails == TwoOneSided) {
        const auto seAt = [&](f32 limit) {
            const ProportionPair pair = ProportionsFromDiff(values.P1, values.P2, limit);
            return HyperPooledSe(n1, n2, pair.Low, pair.High, limit, factor1, factor2);
        };
        return NorPowerEq(0, 0, se1, delta, Single(f64{values.Right} - difference),
                          seAt(values.Null), seAt(values.Right), correction);
    }
    const f32 se0 = HyperPooledSe(n1, n2, values.P1, values.P2, values.Null, factor1, factor2);
    return NorPowerEq(delta, se0, se1, 0, 0, 0, 0, correction);
}

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
