#include "tests/testmcn.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simtable.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "tests/exactsums.h"
#include "tests/powereq.h"
#include "tests/simproportions.h"

#include <array>
#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 SumParNo = 2;
constexpr i16 DifferenceParNo = 3;
constexpr i16 SizeParNo = 4;

// From this number of discordant pairs on the test, given their number, is normal.
constexpr i16 NormalFrom = 200;

enum class Approach { Multinomial, FirstOrder, SecondOrder };
Approach approach = Approach::Multinomial;

// Probabilities of the discordant pairs: s = p10 + p01 and d = p10 - p01.
struct DiscordantPairs {
    f32 S;
    f32 D;
};

// All discordant pairs of one kind leave the first order form no variance; the least one lets the
// sign of the effect decide, where a standard error of 0 would give power 1, and 0 in the left
// tail, whatever the effect is.
f32 SeFromVariance(f64 variance) {
    constexpr f64 least = 1e-12;
    return Single(std::sqrt(MaxOf(least, variance)));
}

// Unconditional normal forms of O. S. Miettinen (1968), Biometrics 24, 339-352: the variance of
// the difference given the discordant pairs, at their mean number (first order) and with the term
// that accounts for their number being random (second order).
f64 NormalEq(const DiscordantPairs& pairs, f32 n) {
    const f64 s = pairs.S;
    const f64 d = pairs.D;
    const f64 loss = approach == Approach::FirstOrder ? d * d / s : d * d * (3 + s) / (4 * s);
    return NormalPowerEq({.Effect = pairs.D,
                          .Se0 = Single(std::sqrt(s / n)),
                          .Se1 = SeFromVariance((s - loss) / n)});
}

// The test given m discordant pairs, r of them expected to be of the kind that d counts: the sign
// test, exact for few pairs.
class ConditionalTest {
  public:
    // The powers of one test stay until another one is asked for: while a size is sought the test
    // is always the same.
    void SetUp(f32 r) {
        const Test test{SignificanceLevel(), NoOfTails, LeftTail, r};
        if (test == test_)
            return;
        test_ = test;
        exact_.fill(unknown);
        const f64 alpha = test.Alpha;
        z_ = NorInv(Single(NoOfTails == TwoSided ? 1 - alpha / 2 : 1 - alpha));
    }

    f32 Power(i32 m) {
        if (m >= NormalFrom)
            return NormalPower(m);
        f32& power = exact_[static_cast<std::size_t>(m)];
        if (power == unknown)
            power = ExactPowerOf(static_cast<i16>(m));
        return power;
    }

  private:
    struct Test {
        f32 Alpha;
        i16 Tails;
        i16 Left;
        f32 R;
        friend bool operator==(const Test&, const Test&) = default;
    };
    static constexpr f32 unknown = -1;

    f32 ExactPowerOf(i16 m) const {
        const auto null = [m](i16 x) { return BinDensity(m, x, 0.5F); };
        return ExactPower(m, null, null, [this, m](i16 x) { return BinCdf(m, x, test_.R); });
    }

    f32 NormalPower(i32 m) const {
        constexpr f64 correction = 0.5;
        const f64 r = test_.R;
        // In the left tail the other kind of pair takes the place of the first.
        const f64 excess = (test_.Left == True && test_.Tails == OneSided ? 0.5 - r : r - 0.5) * m;
        const f32 x = Single(test_.Tails == TwoSided ? std::fabs(excess) : excess);
        const f32 distance = Single(x - correction);
        const f32 se0 = Single(std::sqrt(static_cast<f64>(m) / 4));
        const f32 se1 = SeFromVariance(r * (1 - r) * m);
        return Single(test_.Tails == TwoSided ? PowerTwoTails(distance, se0, se1, z_)
                                              : PowerOneTail(distance, se0, se1, z_));
    }

    Test test_{-1, 0, 0, 0};
    std::array<f32, NormalFrom> exact_{};
    f32 z_ = 0;
};

ConditionalTest conditionalTest;

// The binomial probability of m out of n from that of one m to that of its neighbour. The first
// one comes from logarithms: the coefficients of a size that a search tries are no 64-bit numbers.
class Weights {
  public:
    Weights(i32 n, f32 s) : n_(n), odds_(s / (1 - f64{s})), mode_(ToI32(Int((n + 1.0) * s))) {
        mode_ = mode_ > n ? n : mode_;
        const f64 rest = n - mode_;
        atMode_ =
            std::exp(std::lgamma(n + 1.0) - std::lgamma(mode_ + 1.0) - std::lgamma(rest + 1.0) +
                     mode_ * std::log(f64{s}) + rest * std::log1p(-f64{s}));
    }

    i32 Mode() const { return mode_; }
    f64 AtMode() const { return atMode_; }
    // The probability of m + 1, m - 1, from that of m.
    f64 Up(i32 m, f64 weight) const {
        return weight * (static_cast<f64>(n_ - m) / (m + 1) * odds_);
    }
    f64 Down(i32 m, f64 weight) const {
        return weight * (m / (static_cast<f64>(n_ - m + 1) * odds_));
    }

  private:
    i32 n_;
    f64 odds_;
    i32 mode_;
    f64 atMode_ = 0;
};

// Sum over the number m of discordant pairs, from 1 to n, of its probability times the power given
// it. Terms whose probability is 0 in 32 bits add nothing and are left out.
f64 MultinomialPower(i32 n, const DiscordantPairs& pairs) {
    conditionalTest.SetUp(Single((f64{pairs.S} + pairs.D) / (2 * f64{pairs.S})));
    const Weights weights(n, pairs.S);
    // The sum goes upward, so first down to the least number that counts.
    i32 m = weights.Mode();
    f64 weight = weights.AtMode();
    while (m > 1) {
        const f64 next = weights.Down(m, weight);
        if (Single(next) == 0)
            break;
        weight = next;
        --m;
    }
    f32 sum = 0;
    if (m == 0) {
        weight = weights.Up(m, weight);
        m = 1;
    }
    for (; m <= n && Single(weight) != 0; ++m) {
        sum = Single(f64{sum} + Single(f64{Single(weight)} * conditionalTest.Power(m)));
        weight = weights.Up(m, weight);
    }
    return sum;
}

// --- Its simulation ------------------------------------------------------------------------------

// Fewer discordant pairs are tested exactly in a simulation.
constexpr i32 SimNormalFrom = 1000;

Array1<f32> drawnH0(1, 2); // p10 and p01
Array1<f32> drawnH1(1, 2);
PValueTable exactPValues; // by discordant pairs and those of the first kind

DiscordantPairs ReadPairs() {
    return {Single(ParValue(SumParNo)), Single(ParValue(DifferenceParNo))};
}

// The pairs (m, x), x = 0..m, row after row.
constexpr std::size_t NumberOf(i32 m, i32 x) {
    return static_cast<std::size_t>(m * (m + 1) / 2 + x);
}

} // namespace

void TESTMCN::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::FirstOrder, Check::SecondOrder, Check::Multinomial});
}

void TESTMCN::SetParList() {
    approach = Ticked(Check::FirstOrder)    ? Approach::FirstOrder
               : Ticked(Check::SecondOrder) ? Approach::SecondOrder
                                            : Approach::Multinomial;
    StartParList();
    AddPar(Kind::SignificanceLevel);
    AddPar(Kind::Power);
    AddPar(Kind::H1Proportion10Plus01);
    AddPar(Kind::DiagonalDifference);
    AddPar(Kind::Size);
}

bool TESTMCN::CheckPar() {
    if (UnknownParNo == SumParNo || UnknownParNo == DifferenceParNo)
        return true;
    return CheckRange(DifferenceParNo, -ParValue(SumParNo), ParValue(SumParNo));
}

void TESTMCN::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == SumParNo) {
        lower = MaxOf(lower, std::fabs(ParValue(DifferenceParNo)));
    } else if (UnknownParNo == DifferenceParNo) {
        lower = MaxOf(lower, -ParValue(SumParNo));
        upper = MinOf(upper, ParValue(SumParNo));
        LeftTailLimit(lower, upper, 0);
    } else if (UnknownParNo == SizeParNo && approach == Approach::Multinomial) {
        StartFromTooSmall(lower, upper, RootFunction);
    }
}

f64 TESTMCN::RootFunction() {
    const DiscordantPairs pairs = ReadPairs();
    const f32 n = Single(ParValue(SizeParNo));
    if (approach != Approach::Multinomial)
        return NormalEq(pairs, n);
    return AtWholeSize(
        n, [&pairs](f64 whole) { return MultinomialPower(ToI32(whole), pairs) - ParValue(1); });
}

// Under H0 a pair is as often discordant as under H1, but the two kinds are equally likely.
void TESTMCN::GetSimPar() {
    const DiscordantPairs pairs = ReadPairs();
    const f64 s{pairs.S};
    drawnH0(1) = drawnH0(2) = Single(s / 2);
    drawnH1(1) = Single((s + f64{pairs.D}) / 2);
    drawnH1(2) = Single((s - f64{pairs.D}) / 2);
    exactPValues.Prepare(approach == Approach::Multinomial ? NumberOf(SimNormalFrom, 0) : 0);
}

void TESTMCN::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    AddToCells(n1, isH1 ? drawnH1 : drawnH0);
}

// Given their number, the discordant pairs are those of the sign test (Q. McNemar, Psychometrika
// 12, 1947, 153-157).
f32 TESTMCN::SimTest(i16 n1, i16 /*n2*/) {
    constexpr f32 even = 0.5F;
    if (n1 < 1)
        return 1;
    const i32 x = ToI32(f64{SimStudy.Value(1)});
    const i32 m = x + ToI32(f64{SimStudy.Value(2)});
    if (m == 0)
        return 1;
    if (approach != Approach::Multinomial || m >= SimNormalFrom)
        return NorPValue(Single(static_cast<f64>(x) / m), even, Single(std::sqrt(0.25 / m)), 0, 0,
                         0);
    return exactPValues.At(NumberOf(m, x), [m, x] {
        return BinPValue(static_cast<i16>(m), static_cast<i16>(x), even, even, even);
    });
}

} // namespace quorvanta
