#include "ranksurv/testsavage.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

// Their ratio is 1 under H0. By itself it is entered for a scale 1 of 1.
constexpr TwoSampleKinds ScaleKinds{
    Group::H1Scale2, NoKind, Kind::H1Scale2Over1, Kind::H1Scale1, {Kind::H1Scale2, NoKind, NoKind},
    NoKind,          NoKind};

Hypotheses hypotheses;
SampleValues sizes;

} // namespace

void TESTSAVAGE::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(ScaleKinds);
    OfferForms(SizeKinds);
}

void TESTSAVAGE::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(ScaleKinds, EffectScale::Log);
    sizes = AddSizes();
}

bool TESTSAVAGE::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

void TESTSAVAGE::SearchLimits(f64& lower, f64& upper) {
    constexpr f64 equalScales = 1;
    if (hypotheses.TruthIsUnknown())
        hypotheses.KeepEffect(lower, upper, SideOfTail(), equalScales);
    sizes.Narrow(lower, upper);
}

// The scores are those of exponential observations (I. R. Savage, Annals of Mathematical Statistics
// 27, 1956, 590-615); the power is that of the difference of the two estimated rates.
f64 TESTSAVAGE::RootFunction() {
    const bool two = hypotheses.HasTwo();
    const f64 r1{Single(two ? 1 / f64{hypotheses.First()} : 1)};
    const f64 r2{Single(1 / (two ? f64{hypotheses.Second()} : hypotheses.Truth()))};
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const f64 mean = (n1 * r1 + n2 * r2) / (n1 + n2);
    const f32 s0 = Single(mean * std::sqrt(1 / n2 + 1 / n1));
    const f32 s1 = Single(std::sqrt(r1 * r1 / n1 + r2 * r2 / n2));
    return NorPowerEq(Single(r1 - r2), s0, s1, 0, 0, 0, 0, 0);
}

} // namespace quorvanta
