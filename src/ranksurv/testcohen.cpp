#include "ranksurv/testcohen.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "ranksurv/kappas.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr SampleKinds MarginKinds{
    NoKind,
    Group::Proportion2,
    Kind::Proportion1,
    {Kind::Proportion2, Kind::Proportion2Minus1, Kind::Proportion2Over1}};

Hypotheses hypotheses;
SampleValues margins; // the proportion of positive ratings of each rater
i16 subjects;

Range Possible() {
    return CohenRange(f64{margins.First()}, f64{margins.Second()});
}

// Do the proportions, one of them with x in its place, allow all kappas at hand?
bool AreAllowed(f64 x) {
    // Rounding in 32 bits at the very edge of what is possible.
    constexpr f64 rounding = 1e-6;
    const Range kappas = KappasAtHand(hypotheses);
    const Range range =
        CohenRange(f64{Single(margins.FirstAt(x))}, f64{Single(margins.SecondAt(x))});
    return kappas.Min >= range.Min - rounding && kappas.Max <= range.Max + rounding;
}

// The end, between an x that is allowed and one that is not, of those that are.
f64 EndOfAllowed(f64 allowed, f64 refused) {
    constexpr int halvings = 50;
    for (int i = 0; i < halvings; ++i) {
        const f64 middle = (allowed + refused) / 2;
        (AreAllowed(middle) ? allowed : refused) = middle;
    }
    return allowed;
}

// Narrows the search for a proportion to those that allow all kappas; nothing is left if none does.
void KeepAllowed(f64& lower, f64& upper) {
    constexpr int steps = 400;
    const f64 width = (upper - lower) / steps;
    const auto point = [start = lower, width](int k) { return start + k * width; };
    int first = 0;
    while (first <= steps && !AreAllowed(point(first)))
        ++first;
    if (first > steps) {
        upper = lower;
        return;
    }
    int last = first;
    while (last < steps && AreAllowed(point(last + 1)))
        ++last;
    const f64 low = first == 0 ? lower : EndOfAllowed(point(first), point(first - 1));
    const f64 high = last == steps ? upper : EndOfAllowed(point(last), point(last + 1));
    lower = low;
    upper = high;
}

} // namespace

void TESTCOHEN::SetupTest() {
    FixSamples(OneSample);
    OfferForms(KappaKinds);
    OfferGroups({MarginKinds.Group});
}

void TESTCOHEN::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(KappaKinds, EffectScale::Plain);
    margins = AddPair(MarginKinds);
    subjects = AddPar(Kind::NoOfSubjects);
}

// Proportions that are sought are narrowed by the search instead.
bool TESTCOHEN::CheckPar() {
    if (!margins.Check())
        return false;
    constexpr Range all{-1, 1};
    return CheckKappas(hypotheses, margins.HasUnknown() ? all : Possible());
}

void TESTCOHEN::SearchLimits(f64& lower, f64& upper) {
    if (!margins.HasUnknown()) {
        NarrowKappas(hypotheses, lower, upper, Possible(), &RootFunction);
        return;
    }
    margins.Narrow(lower, upper);
    KeepAllowed(lower, upper);
    KeepOneBranch(lower, upper, Side::Below, &RootFunction);
}

f64 TESTCOHEN::RootFunction() {
    return KappaPowerEq(hypotheses, f64{Single(ParValue(subjects))}, [](f64 kappa) {
        return CohenVar(kappa, f64{margins.First()}, f64{margins.Second()});
    });
}

Range CohenRange(f64 a, f64 b) {
    const f64 chance = a * b + (1 - a) * (1 - b);
    const auto kappa = [chance](f64 agreement) { return (agreement - chance) / (1 - chance); };
    return {kappa(std::fabs(a + b - 1)), kappa(1 - std::fabs(a - b))};
}

// J. L. Fleiss, J. Cohen and B. S. Everitt, Psychological Bulletin 72, 1969, 323-327; with two
// categories A. B. Cantor, Psychological Methods 1, 1996, 150-153.
f64 CohenVar(f64 kappa, f64 a, f64 b) {
    const f64 chance = a * b + (1 - a) * (1 - b);
    const f64 agreement = (1 - chance) * kappa + chance;
    const f64 left = 1 - kappa;
    const auto square = [](f64 x) { return x * x; };
    const f64 bothPositive = (agreement + a + b - 1) / 2;
    const f64 bothNegative = agreement - bothPositive;
    const f64 firstOnly = a - bothPositive;
    const f64 secondOnly = b - bothPositive;
    const f64 sum =
        bothPositive * square(1 - (a + b) * left) + bothNegative * square(1 - (2 - a - b) * left) +
        square(left) * (firstOnly * square(b + (1 - a)) + secondOnly * square((1 - b) + a)) -
        square(kappa - chance * left);
    return MaxOf(0, sum / square(1 - chance));
}

} // namespace quorvanta
