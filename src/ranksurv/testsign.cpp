#include "ranksurv/testsign.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/testbin.h"

namespace quorvanta {

namespace {

constexpr f32 Even = 0.5F; // the probability under H0

i16 above0; // P(X > 0)
SampleValues sizes;
bool corrected;

} // namespace

void TESTSIGN::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Correction});
}

void TESTSIGN::SetParList() {
    corrected = Ticked(Check::Correction);
    StartTestList();
    above0 = AddPar(Kind::H1ProbabilityAbove0);
    sizes = AddSizes();
}

void TESTSIGN::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == above0)
        LeftTailLimit(lower, upper, f64{Even});
    else if (sizes.HasUnknown())
        StartFromTooSmall(lower, upper, RootFunction);
}

// The number of positive observations is binomial (W. J. Dixon and A. M. Mood, Journal of the
// American Statistical Association 41, 1946, 557-566).
f64 TESTSIGN::RootFunction() {
    return ExactProportionEq({.Null = Even, .P1 = Single(ParValue(above0))}, sizes.First(),
                             corrected);
}

bool TESTSIGN::IsTablePar(i16 parNo) {
    return parNo == above0;
}

std::optional<DistrList> TESTSIGN::TableDistr(i16) {
    return DistrList::Symmetric;
}

// Under H0 the distribution is the same, with median 0.
f32 TESTSIGN::CalcTablePar(i16) {
    SetNullFromShift();
    return PrSignFromShift();
}

void TESTSIGN::GetSimPar() {
    SimLoc1 = Even;
    SimLoc2 = Single(ParValue(above0));
}

// The sign of an observation is all that counts of it.
void TESTSIGN::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    if (n1 < 1)
        return;
    RandSample.ReDim(0, 1);
    RandBinomial(n1, isH1 ? SimLoc2 : SimLoc1);
    SimStudy.Sum1 += RandSample(1);
}

f32 TESTSIGN::SimTest(i16 n1, i16 /*n2*/) {
    return n1 == 0 ? 1.0F : BinPValue(n1, ToI16(f64{SimStudy.Sum1}), Even, Even, Even);
}

} // namespace quorvanta
