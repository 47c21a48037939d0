#include "ranksurv/testreliab.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

namespace quorvanta {

namespace {

constexpr OneSampleKinds IntraclassKinds{
    Group::H1Intraclass,
    Kind::H0Intraclass,
    {Kind::H1Intraclass, Kind::H1IntraclassMinusH0, Kind::H1IntraclassOverH0},
    Kind::ProportionLeftLimit,
    Kind::ProportionRightLimit};

Hypotheses hypotheses;
i16 raters;
i16 subjects;

// Expected mean square between subjects over that within them.
f64 MeanSquareRatio(f64 rho, f64 k) {
    return 1 + k * rho / (1 - rho);
}

} // namespace

void TESTRELIAB::SetupTest() {
    FixSamples(OneSample);
    OfferForms(IntraclassKinds);
}

void TESTRELIAB::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(IntraclassKinds, EffectScale::Plain);
    raters = AddPar(Kind::NoOfRaters);
    subjects = AddPar(Kind::NoOfSubjects);
}

bool TESTRELIAB::CheckPar() {
    return hypotheses.Check();
}

// The logarithm of the ratio of mean squares is steepest near 0 and near 1, and symmetrical about
// the coefficient at which it is flattest.
void TESTRELIAB::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper, &RootFunction);
    const f64 k = ParValue(raters);
    KeepOneSide(lower, upper, hypotheses.BaseOfLeastPower((k - 2) / (2 * (k - 1))), SideOfTail(),
                &RootFunction);
}

// S. D. Walter, M. Eliasziw and A. Donner, Statistics in Medicine 17, 1998, 101-110: the ratio of
// the mean squares over its expectation is F distributed. There, n (k - 1) degrees of freedom are
// those within subjects (J. L. Fleiss, The Design and Analysis of Clinical Experiments, 1986,
// chapter 1).
f64 TESTRELIAB::RootFunction() {
    const f64 k{Single(ParValue(raters))};
    const f64 n{Single(ParValue(subjects))};
    const f64 truth = MeanSquareRatio(hypotheses.Truth(), k);
    const auto ratio = [=](f32 null) { return Single(MeanSquareRatio(f64{null}, k) / truth); };
    const f32 right = NoOfTails == TwoOneSided ? hypotheses.Right() : hypotheses.H0();
    return FPowerEq(ratio(hypotheses.H0()), ratio(right), Single(n - 1), Single(n * (k - 1)));
}

} // namespace quorvanta
