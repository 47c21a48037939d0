#include "tests/xover2way.h"

#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/crossover.h"
#include "tests/lists/means.h"
#include "tests/locationeffect.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta {

namespace {

// What the model holds beside treatment and period, by option of its group.
enum Model : i16 { WithCarryover, WithInteraction, WithSequence };

i16 model = WithCarryover;
bool logScale = false;
Hypotheses hypotheses;
i16 deviation;
SampleValues sizes;

void Offer(const TwoSampleKinds& locations) {
    FixSamples(TwoSamples);
    OfferForms(locations);
    OfferGroups({Group::Parameterization});
    OfferForms(SequenceKinds);
}

void Build(const TwoSampleKinds& locations, EffectScale scale, i16 deviationKind) {
    model = ChosenOption(Group::Parameterization);
    logScale = scale == EffectScale::Log;
    StartTestList();
    hypotheses = AddHypotheses(locations, scale);
    deviation = AddPar(deviationKind);
    sizes = AddSizes(SequenceKinds);
}

} // namespace

void XOVER2WAY::SetupTest() {
    Offer(TwoMeansKinds);
}

void XOVER2WAY::SetParList() {
    Build(TwoMeansKinds, EffectScale::Plain, Kind::Sd);
}

bool XOVER2WAY::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

void XOVER2WAY::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
}

// With a carryover effect in the model only the first period tells about the treatments; without
// one, both do, and the variance of the effect is half as large (B. Jones and M. G. Kenward, Design
// and Analysis of Cross-over Trials, 2nd edition, 2003, chapter 2). Where the sequences have no
// effect of their own in the model, the degrees of freedom are those of all 2(n1 + n2) measurements
// less three coefficients, deliberately.
f64 XOVER2WAY::RootFunction() {
    const auto [delta, deltaLow, deltaHigh] = ReadLocationEffect(hypotheses, logScale);
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const f64 factor = model == WithCarryover ? 1 : 0.5;
    const f64 df = model == WithSequence ? n1 + n2 - 2 : 2 * (n1 + n2) - 3;
    const f64 sd{Single(ParValue(deviation))};
    const f32 se = Single(sd * std::sqrt((1 / n1 + 1 / n2) * factor));
    return TPowerEq(delta, se, deltaLow, deltaHigh, Single(df));
}

void XOVER2WAYLOG::SetupTest() {
    Offer(TreatmentMediansKinds);
}

void XOVER2WAYLOG::SetParList() {
    Build(TreatmentMediansKinds, EffectScale::Log, Kind::LogSd);
}

} // namespace quorvanta
