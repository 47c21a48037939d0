#include "ranksurv/testlogranknonparam.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "ranksurv/groupsizes.h"
#include "ranksurv/testlogrank.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

i16 NPGivenSurvival;
i16 NPGivenEvents;
i16 NPMethod;

namespace {

constexpr TwoSampleKinds SurvivalKinds{
    Group::Proportion2,
    NoKind,
    NoKind,
    Kind::H1Survival1,
    {Kind::H1Survival2, Kind::H1Survival2Minus1, Kind::H1Survival2Over1},
    NoKind,
    NoKind};

Hypotheses survival; // both proportions
i16 firstSurvival;   // the first one alone, beside a hazard ratio
i16 hazardRatio;
i16 dropOuts;
GroupSizes sizes;

struct Effect {
    f64 S1;
    f64 S2;
    f64 HazardRatio;
};

Effect ReadEffect() {
    if (NPGivenSurvival == 1) {
        const f64 s1{survival.First()};
        const f64 s2{survival.Second()};
        return {s1, s2, std::log(s2) / std::log(s1)};
    }
    const f64 ratio{Single(ParValue(hazardRatio))};
    if (NPGivenEvents == 1)
        return {0, 0, ratio};
    const f64 s1{Single(ParValue(firstSurvival))};
    return {s1, std::pow(s1, ratio), ratio};
}

// What is entered says which way the effect points: more survival is less hazard.
f64 Signed(f64 delta) {
    return NPGivenSurvival == 1 ? -delta : delta;
}

f64 PowerEq(f64 delta, f64 se) {
    const f32 error = Single(se);
    return NormalPowerEq({.Effect = Single(Signed(delta)), .Se0 = error, .Se1 = error});
}

// The patients who are not lost.
f64 Remaining() {
    return (1 - f64{Single(ParValue(dropOuts))}) * sizes.Total();
}

// D. A. Schoenfeld, Biometrika 68, 1981, 316-319, and Biometrics 39, 1983, 499-503: of all patients
// those have an event who don't survive.
f64 SchoenfeldEq(const Effect& effect) {
    const f64 second = sizes.Ratio() / (sizes.Ratio() + 1);
    const f64 first = 1 - second;
    const f64 events = NPGivenEvents == 1
                           ? sizes.Total()
                           : Remaining() * (1 - (first * effect.S1 + second * effect.S2));
    return PowerEq(std::log(effect.HazardRatio) * std::sqrt(events * first * second), 1);
}

// L. S. Freedman, Statistics in Medicine 1, 1982, 121-129.
f64 FreedmanEq(const Effect& effect) {
    const f64 k = sizes.Ratio();
    const f64 excess = std::sqrt(k) * (effect.HazardRatio - 1);
    const f64 scale = effect.HazardRatio * k + 1;
    if (NPGivenEvents == 1)
        return PowerEq(excess, scale / std::sqrt(sizes.Total()));
    const f64 events = ((1 - effect.S2) * k + (1 - effect.S1)) / (k + 1);
    return PowerEq(excess * std::sqrt(events), scale / std::sqrt(Remaining()));
}

} // namespace

void TESTLOGRANKNONPARAM::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Events, Check::HazardRatio, Check::TotalSize});
    if (Ticked(Check::Events))
        DisableCheck(Check::TotalSize);
    if (!Ticked(Check::HazardRatio))
        OfferForms(SurvivalKinds);
    if (!Ticked(Check::Events) && !Ticked(Check::TotalSize))
        OfferForms(SizeKinds);
}

void TESTLOGRANKNONPARAM::SetParList() {
    NPMethod = HazardApproach(TestNo);
    NPGivenEvents = Ticked(Check::Events) ? 1 : 0;
    NPGivenSurvival = Ticked(Check::HazardRatio) ? 0 : 1;
    StartTestList();
    if (NPGivenSurvival == 1) {
        survival = AddHypotheses(SurvivalKinds, EffectScale::Plain);
    } else {
        firstSurvival = NPGivenEvents == 1 ? i16{0} : AddPar(Kind::H1Survival1);
        hazardRatio = AddPar(Kind::H1HazardRatio);
    }
    if (NPGivenEvents == 1)
        return sizes.AddTotal(Kind::Events, Kind::Size2Over1);
    dropOuts = AddPar(Kind::DropOuts);
    if (Ticked(Check::TotalSize))
        sizes.AddTotal(Kind::TotalSize, Kind::Size2Over1);
    else
        sizes.AddEach();
}

bool TESTLOGRANKNONPARAM::CheckPar() {
    return (NPGivenSurvival == 0 || survival.Check()) && sizes.Check();
}

// Where a difference or a ratio of proportions is kept, the power may turn with the first of them.
void TESTLOGRANKNONPARAM::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper, &RootFunction);
    if (NPGivenSurvival == 0) {
        if (UnknownParNo == hazardRatio)
            LeftTailLimit(lower, upper, 1);
        return;
    }
    survival.Narrow(lower, upper);
    if (survival.BaseIsUnknown() && survival.TruthForm() != AsValue)
        KeepNearestRoot(lower, upper, SideOfTail(), &RootFunction);
}

f64 TESTLOGRANKNONPARAM::RootFunction() {
    return NPMethod == SchoenfeldKind ? SchoenfeldEq(ReadEffect()) : FreedmanEq(ReadEffect());
}

} // namespace quorvanta
