#include "tests/testpairbin.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simtable.h"
#include "numeric/rounding.h"
#include "tests/lists/proportions.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/trialvalue.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 DiscordantKinds[] = {Kind::H1Proportion11, Kind::H1Proportion10Plus01,
                                   Kind::H1Proportion10Over01};

// How the discordant pairs are entered, by option of the group.
constexpr i16 ByBoth = 0;  // p11, the pairs with both events
constexpr i16 BySum = 1;   // s = p10 + p01
constexpr i16 ByRatio = 2; // p10/p01

// The least probability of a discordant pair.
constexpr f64 LeastSum = ProbabilityFloor;

// The variance of the difference under H0. Under H1 it is (s - d^2)/n (R. J. Connor 1987,
// Biometrics 43, 207-211).
enum class NullVariance {
    Unrestricted, // (s - d0^2)/n (Y. Lu and J. A. Bean 1995, Statistics in Medicine 14, 1831-1839)
    Score,        // the same with the s that H0 makes the most likely one
    AsUnderH1
};
NullVariance nullVariance = NullVariance::Unrestricted;

ProportionList list;
i16 third;
i16 thirdMode;
SampleValues sizes;

// s as a multiple of |d|, from the ratio of the two kinds of discordant pairs. It is the same for
// the ratio and its reciprocal, so it does not matter which kind comes first.
f64 SumPerDifference(f64 ratio) {
    return (1 + ratio) / std::fabs(1 - ratio);
}

// The ratio above 1 that has s = multiple |d|.
f64 RatioOfMultiple(f64 multiple) {
    return (multiple + 1) / (multiple - 1);
}

f64 DiscordantSum(f64 p1, f64 p2) {
    const f64 entered = ParValue(third);
    if (thirdMode == BySum)
        return entered;
    const f64 d = std::fabs(p2 - p1);
    if (thirdMode == ByBoth)
        return p1 + p2 - 2 * entered;
    // A ratio of 1 says that the proportions are equal and no more.
    return entered == 1 ? 0 : d * SumPerDifference(entered);
}

// The largest s that two proportions allow. The 32-bit 2.00001 leaves room for their rounding. It
// is for this sum alone: a proportion that is entered relative to another one stays below 1 itself.
f64 LargestSum(f64 p1, f64 p2) {
    constexpr f64 two = 2.00001F;
    return MinOf(p1 + p2, two - (p1 + p2));
}

// s under the H0 difference d0 >= 0 when the cells are estimated under H0, in large samples with
// the probabilities "larger" and "smaller" of discordant pairs: restricted maximum likelihood of
// the smaller cell (T. Tango 1998, Statistics in Medicine 17, 891-908; J. Nam 1997, Biometrics 53,
// 1422-1430).
f64 RestrictedSum(f64 larger, f64 smaller, f64 d0) {
    constexpr f64 a = 2;
    const f64 b = -larger - smaller + (2 - larger + smaller) * d0;
    const f64 c = -smaller * d0 * (1 - d0);
    const f64 cell = (std::sqrt(b * b - 4 * a * c) - b) / (2 * a);
    return 2 * cell + d0;
}

f32 NullSe(f64 s, f64 d, f64 d0, f64 n) {
    f64 variance = s - d0 * d0;
    if (nullVariance == NullVariance::AsUnderH1) {
        variance = s - d * d;
    } else if (nullVariance == NullVariance::Score) {
        // The H0 difference counts towards the larger cell.
        const f64 towards = d0 < 0 ? -d : d;
        const f64 size0 = std::fabs(d0);
        variance = RestrictedSum((s + towards) / 2, (s - towards) / 2, size0) - size0 * size0;
    }
    // Fewer discordant pairs than the H0 difference needs: the unrestricted variance is used up.
    return Single(std::sqrt(MaxOf(0, variance) / n));
}

struct Pairs {
    f64 P1;
    f64 P2;
    f64 S;
};

Pairs PairsAt(f64 unknown) {
    const TrialValue trial(unknown);
    const ProportionValues values = ReadProportions(list);
    return {values.P1, values.P2, DiscordantSum(values.P1, values.P2)};
}

// Narrows the search to where a quantity that is linear in the unknown is not negative.
void KeepNotNegative(f64& lower, f64& upper, f64 atLower, f64 atUpper) {
    constexpr f64 rounding = -1e-6;
    if (atLower >= rounding && atUpper >= rounding)
        return;
    if (atLower < 0 && atUpper < 0) {
        upper = lower;
        return;
    }
    const f64 zero = lower + (upper - lower) * atLower / (atLower - atUpper);
    if (atLower < 0)
        lower = zero;
    else
        upper = zero;
}

// The unknown is one of the two proportions: keeps all four kinds of pairs possible. Their
// probabilities are linear in the unknown, with the ratio as long as the difference keeps its sign.
void LimitByCells(f64& lower, f64& upper) {
    if (thirdMode == ByRatio)
        list.Hypothesis.KeepEffect(lower, upper, SideOfTail(), 0);
    const auto keep = [&lower, &upper](auto&& quantity) {
        if (upper > lower)
            KeepNotNegative(lower, upper, quantity(PairsAt(lower)), quantity(PairsAt(upper)));
    };
    keep([](const Pairs& p) { return p.S - (p.P2 - p.P1); });
    keep([](const Pairs& p) { return p.S + (p.P2 - p.P1); });
    keep([](const Pairs& p) { return p.P1 + p.P2 - p.S; });
    keep([](const Pairs& p) { return 2 - p.P1 - p.P2 - p.S; });
}

// s as the equation sees it: a search may touch the ends of what is possible, where rounding
// decides.
f32 PossibleSum(const ProportionValues& values, f64 d) {
    return Single(MaxOf(DiscordantSum(values.P1, values.P2), MaxOf(std::fabs(d), LeastSum)));
}

// The probabilities of the two kinds of discordant pairs, for a simulation: that of an event at the
// second measurement only comes first.
Array1<f32> drawnH0(1, 2);
Array1<f32> drawnH1(1, 2);

// What the third parameter may be with the two proportions as they are, in its form. Of the ratios
// that above 1 while the ratio is sought, and the side of the one entered otherwise.
Range ThirdRange(f64 p1, f64 p2) {
    const f64 d = std::fabs(p2 - p1);
    const f64 sum = LargestSum(p1, p2);
    const i16 kind = DiscordantKinds[thirdMode];
    if (thirdMode == BySum)
        return {MaxOf(ParMin(kind), d), MinOf(ParMax(kind), sum)};
    if (thirdMode == ByBoth)
        return {MaxOf(ParMin(kind), (p1 + p2 - sum) / 2),
                MinOf(ParMax(kind), (p1 + p2 - MaxOf(d, LeastSum)) / 2)};
    const f64 least = RatioOfMultiple(sum / MaxOf(d, LeastSum));
    if (UnknownParNo != third && ParValue(third) < 1)
        return {ParMin(kind), 1 / least};
    return {least, ParMax(kind)};
}

// Equal proportions leave nothing for a ratio of discordant pairs to say.
bool CheckDifferent(f64 p1, f64 p2) {
    if (thirdMode != ByRatio || std::fabs(p2 - p1) >= LeastSum)
        return true;
    const i16 second = list.Hypothesis.TruthParNo();
    const i16 kind = ParKind(second);
    const f64 step = SearchesLeft() ? -LeastSum : LeastSum;
    const f64 entry =
        ParValue(second) + (list.Hypothesis.TruthForm() == AsRatio ? step / p1 : step);
    return SearchesLeft() ? CheckRange(second, ParMin(kind), entry)
                          : CheckRange(second, entry, ParMax(kind));
}

} // namespace

void TESTPAIRBIN::SetupTest() {
    FixSamples(OneSample);
    OfferChecks({Check::Score, Check::UnrestrictedMl, Check::VarianceOfH1});
    OfferPairedProportions();
    OfferGroups({Group::Discordant});
}

void TESTPAIRBIN::SetParList() {
    nullVariance = Ticked(Check::Score)          ? NullVariance::Score
                   : Ticked(Check::VarianceOfH1) ? NullVariance::AsUnderH1
                                                 : NullVariance::Unrestricted;
    StartTestList();
    list = AddPairedProportions();
    thirdMode = ChosenOption(Group::Discordant);
    third = AddPar(DiscordantKinds[thirdMode]);
    sizes = AddCommonValue(SizeKinds);
}

bool TESTPAIRBIN::CheckPar() {
    if (!list.Check())
        return false;
    if (list.Hypothesis.TruthIsUnknown())
        return true;
    const ProportionValues values = ReadProportions(list);
    if (!CheckDifferent(values.P1, values.P2))
        return false;
    if (UnknownParNo == third)
        return true;
    // The range is formed of 32-bit values: what equals its end in 32 bits is at the end.
    const Range range = ThirdRange(values.P1, values.P2);
    const f64 entered = ParValue(third);
    const auto end = [entered](f64 limit) {
        return Single(entered) == Single(limit) ? entered : limit;
    };
    return CheckRange(third, end(range.Min), end(range.Max));
}

void TESTPAIRBIN::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper, RootFunction);
    if (list.Hypothesis.TruthIsUnknown()) {
        LimitByCells(lower, upper);
    } else if (UnknownParNo == third) {
        const ProportionValues values = ReadProportions(list);
        const Range range = ThirdRange(values.P1, values.P2);
        lower = MaxOf(lower, range.Min);
        upper = MinOf(upper, range.Max);
    }
}

f64 TESTPAIRBIN::RootFunction() {
    const ProportionValues values = ReadProportions(list);
    const f32 n = sizes.First();
    const f32 difference = Single(f64{values.P2} - values.P1);
    const f64 d = difference;
    const f64 s = PossibleSum(values, d);
    const auto se0 = [s, d, n](f32 d0) { return NullSe(s, d, d0, n); };
    const f32 above = Single(d - values.Null);
    return NormalPowerEq({.Effect = above,
                          .Se0 = se0(values.Null),
                          .Se1 = Single(std::sqrt((s - d * d) / n)),
                          .AboveLeft = above,
                          .BelowRight = Single(values.Right - d),
                          .Se0Left = se0(values.Null),
                          .Se0Right = se0(values.Right)});
}

// Under H0 the pairs are as often discordant as under H1, more often where the H0 difference needs
// it.
void TESTPAIRBIN::GetSimPar() {
    const ProportionValues values = ReadProportions(list);
    const f32 difference = Single(f64{values.P2} - f64{values.P1});
    SetSimLocations(values.Null, values.Right, difference);
    const f64 s{PossibleSum(values, difference)};
    const auto prepare = [s](Array1<f32>& drawn, f64 d) {
        const f64 sum = MaxOf(s, std::fabs(d));
        drawn(1) = Single((sum + d) / 2);
        drawn(2) = Single((sum - d) / 2);
    };
    prepare(drawnH0, SimLocation(false));
    prepare(drawnH1, SimLocation(true));
}

void TESTPAIRBIN::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    AddToCells(n1, isH1 ? drawnH1 : drawnH0);
}

// The variances under H0 are those of the equation, of the pairs that were drawn.
f32 TESTPAIRBIN::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 < 1)
        return 1;
    const f64 p01 = f64{SimStudy.Value(1)} / n1;
    const f64 p10 = f64{SimStudy.Value(2)} / n1;
    const f64 d = p01 - p10;
    const auto se = [=](f32 d0) { return NullSe(p01 + p10, d, d0, n1); };
    const f32 right = NoOfTails == TwoOneSided ? SimHiLimit : SimLoLimit;
    return NullErrorPValue(Single(d), SimLoLimit, right, se(SimLoLimit), se(right), 0);
}

} // namespace quorvanta
