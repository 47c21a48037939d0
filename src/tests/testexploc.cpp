#include "tests/testexploc.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/exponentialsample.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/teststatistic.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr OneSampleKinds LocationKinds{
    Group::H1Location,
    Kind::H0Location,
    {Kind::H1Location, Kind::H1LocationMinusH0, Kind::H1LocationOverH0},
    Kind::LocationLeftLimit,
    Kind::LocationRightLimit};

Hypotheses hypotheses;
i16 truth;
i16 scale;
SampleValues sizes;

f64 Clip(f64 probability) {
    return MaxOf(0, MinOf(1, probability));
}

// exp(-n d/s) for a location under H0 that is d above the true one.
f64 Factor(f32 null) {
    const f64 d{Single(f64{null} - hypotheses.Truth())};
    const f64 s{Single(ParValue(scale))};
    return ExpClamped(Single(-f64{sizes.First()} * d / s));
}

// Probability of a smallest observation below the lower, or above the upper, critical value.
f64 BelowCritical(f64 alpha, f32 null) {
    return Clip(1 - (1 - alpha) * Factor(null));
}
f64 AboveCritical(f64 alpha, f32 null) {
    return Clip(alpha * Factor(null));
}

// --- Its simulation ------------------------------------------------------------------------------

f64 simulated = 0; // the true location of the study

// Probability of a smallest one of n observations below this one, where null is true.
f64 Below(i16 n, f64 smallest, f32 null) {
    const f64 d = smallest - f64{null};
    const f64 s{Single(ParValue(scale))};
    return d <= 0 ? 0 : 1 - ExpClamped(Single(-n * d / s));
}

} // namespace

void TESTEXPLOC::SetupTest() {
    FixSamples(OneSample);
    OfferForms(LocationKinds);
}

void TESTEXPLOC::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(LocationKinds, EffectScale::Plain);
    truth = NoOfPar;
    scale = AddPar(Kind::Scale);
    sizes = AddSizes();
}

bool TESTEXPLOC::CheckPar() {
    return hypotheses.Check();
}

// With two one-sided tests the power is highest not in the middle but where the left limit is just
// always rejected.
void TESTEXPLOC::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper);
    if (NoOfTails == TwoOneSided && UnknownParNo == truth) {
        const f64 alwaysRejected =
            f64{hypotheses.Left()} - std::log(ParValue(0)) * ParValue(scale) / f64{sizes.First()};
        KeepOneSide(lower, upper, alwaysRejected, SideOfTail(), &RootFunction);
    }
}

// The smallest of n observations is itself exponential, with scale s/n (B. Epstein and M. Sobel,
// Annals of Mathematical Statistics 25, 1954, 373-381).
f64 TESTEXPLOC::RootFunction() {
    const f64 alpha{SignificanceLevel()};
    const f32 null = hypotheses.H0();
    const f64 rate = f64{sizes.First()} / f64{Single(ParValue(scale))};
    NotedStatistic = {.Law = StatisticLaw::Exponential,
                      .Truth = (hypotheses.Truth() - f64{null}) * rate,
                      .TruthRight = NoOfTails == TwoOneSided
                                        ? (hypotheses.Truth() - f64{hypotheses.Right()}) * rate
                                        : 0};
    f64 power = 0;
    if (NoOfTails == TwoOneSided)
        power =
            BelowCritical(alpha, hypotheses.Right()) + AboveCritical(alpha, hypotheses.Left()) - 1;
    else if (NoOfTails == TwoSided)
        power = BelowCritical(alpha / 2, null) + AboveCritical(alpha / 2, null);
    else if (LeftTail == True)
        power = BelowCritical(alpha, null);
    else
        power = AboveCritical(alpha, null);
    return power - ParValue(1);
}

void TESTEXPLOC::GetSimPar() {
    SimLoc1 = Single(hypotheses.NullTruth());
    SimLoc2 = Single(hypotheses.Truth());
}

void TESTEXPLOC::SimSample(i16 n1, i16, bool isH1) {
    DrawExponentialTimes(n1, SimStudy.Sum1, SimStudy.Min1);
    simulated = f64{isH1 ? SimLoc2 : SimLoc1};
}

f32 TESTEXPLOC::SimTest(i16 n1, i16) {
    if (n1 == 0)
        return 1;
    const f64 smallest = simulated + f64{SimStudy.Min1} * f64{Single(ParValue(scale))};
    return QuantilePValue(hypotheses.H0(), hypotheses.Right(),
                          [=](f32 null) { return Below(n1, smallest, null); });
}

} // namespace quorvanta
