#include "ranksurv/testlifetable.h"

#include "core/general.h"
#include "core/options.h"
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
    study.Add(true);
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

} // namespace quorvanta
