#include "tests/testchi2.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "tests/proportions.h"
#include "tests/simproportions.h"

namespace quorvanta {

i16 Chi2Correction;
i16 Chi2Odds;
i16 Chi2H1Mode;

namespace {

ProportionList list;
SampleValues sizes;

// Prepared for a simulation.
ProportionValues simulated;
SimProportions drawn;

} // namespace

void TESTCHI2::SetupTest() {
    FixSamples(TwoSamples);
    OfferChecks({Check::Correction, Check::Odds});
    OfferProportions(Ticked(Check::Odds));
    OfferForms(SizeKinds);
}

void TESTCHI2::SetParList() {
    Chi2Correction = Ticked(Check::Correction) ? 1 : 0;
    Chi2Odds = Ticked(Check::Odds) ? 1 : 0;
    StartTestList();
    list = AddProportions(Chi2Odds == 1, NullDifference::Entered);
    Chi2H1Mode = list.Hypothesis.TruthForm();
    sizes = AddSizes();
}

bool TESTCHI2::CheckPar() {
    return list.Check() && sizes.Check();
}

void TESTCHI2::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper, RootFunction);
    sizes.Narrow(lower, upper);
}

// Chi-square of a 2 x 2 table is the square of the normal statistic of two proportions (J. L.
// Fleiss, Statistical Methods for Rates and Proportions, 2nd edition, 1981, chapter 2); corrected
// for continuity after F. Yates, Supplement to the Journal of the Royal Statistical Society 1,
// 1934, 217-235.
f64 TESTCHI2::RootFunction() {
    return TwoProportionsEq(ReadProportions(list), sizes.First(), sizes.Second(), 1, 1,
                            Chi2Correction == 1);
}

void TESTCHI2::GetSimPar() {
    simulated = ReadProportions(list);
    drawn = TwoProportionsToSimulate(simulated);
}

void TESTCHI2::SimSample(i16 n1, i16 n2, bool isH1) {
    AddSuccesses(n1, n2, drawn.At(isH1));
}

f32 TESTCHI2::SimTest(i16 n1, i16 n2) {
    if (n1 < 1 || n2 < 1)
        return 1;
    return TwoProportionsPValue(simulated, CountsOfStudy(n1, n2), 1, 1, Chi2Correction == 1);
}

} // namespace quorvanta
