#include "ranksurv/testlifetable.h"

#include "core/general.h"
#include "core/options.h"
#include "montecarlo/survivalsim.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "ranksurv/hazards.h"
#include "ranksurv/lifetable.h"
#include "tests/lists/hypotheses.h"

#include <cmath>

namespace quorvanta {

namespace {

SurvivalInput input;
SampleValues effect;
SampleValues losses;
LifeTableStudy study;

// The two survival parameters; H0 is that they are equal, and not entered.
SampleKinds EffectKindsOf(SurvivalInput form) {
    const TwoSampleKinds& kinds = TwoSurvivalKinds(form, true);
    return {NoKind, kinds.Group, kinds.First, {kinds.Second[0], kinds.Second[1], kinds.Second[2]}};
}

f32 Of(const SampleValues& values, i16 group) {
    return group == 1 ? values.First() : values.Second();
}

} // namespace

void TESTLIFETABLE::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferSurvivalInput();
    OfferForms(EffectKindsOf(ChosenSurvivalInput()));
    OfferForms(LossKinds(ChosenSurvivalInput()));
    OfferForms(SizeKinds);
}

void TESTLIFETABLE::SetParList() {
    input = ChosenSurvivalInput();
    StartTestList();
    effect = AddPair(EffectKindsOf(input));
    losses = AddPair(LossKinds(input));
    study.Add(IsLifeTableTest());
}

bool TESTLIFETABLE::CheckPar() {
    return effect.Check() && losses.Check() && study.Check();
}

void TESTLIFETABLE::SearchLimits(f64& lower, f64& upper) {
    NarrowEffect(effect, lower, upper);
    losses.Narrow(lower, upper);
    study.Narrow(lower, upper);
    KeepNearNoEffect(effect, study, lower, upper, &RootFunction);
}

f64 TESTLIFETABLE::RootFunction() {
    const std::vector<f64> bounds = study.Bounds();
    study.Prepare(bounds, [&bounds](i16 group) {
        const f64 hazard{HazardOf(input, Of(effect, group))};
        const auto survival = [hazard](f64 t) { return ExpClamped(Single(-hazard * t)); };
        return IntervalProbs(bounds, survival, f64{LossHazardOf(input, Of(losses, group))});
    });
    return study.PowerEq(input == SurvivalInput::Median);
}

// H0 is that group 2 has the hazard of group 1.
void TESTLIFETABLE::GetSimPar() {
    SurvivalPlan plan = PlanOfTest();
    plan.DistrNo = SimExponential;
    plan.Direction = input == SurvivalInput::Median ? -1 : 1;
    const auto scale = [](f32 value) { return Single(1 / f64{HazardOf(input, value)}); };
    SurvivalStratum& groups = plan.Strata.front();
    groups.NullScale1 = groups.NullScale2 = groups.Scale1 = scale(effect.First());
    groups.Scale2 = scale(effect.Second());
    groups.Loss1 = LossHazardOf(input, losses.First());
    groups.Loss2 = LossHazardOf(input, losses.Second());
    study.PrepareSimulation(plan);
    SimSurvival = plan;
}

void TESTLIFETABLE::SimSample(i16 n1, i16 n2, bool isH1) {
    SimSurvivalSample(n1, n2, isH1);
}

f32 TESTLIFETABLE::SimTest(i16 n1, i16 n2) {
    return SimSurvivalTest(n1, n2);
}

} // namespace quorvanta
