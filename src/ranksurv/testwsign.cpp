#include "ranksurv/testwsign.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

i16 above0;    // P(X > 0)
i16 sumAbove0; // P(X + X' > 0), next to it
SampleValues sizes;
bool corrected;

// How far the two probabilities are above a half.
f64 Excess() {
    return f64{Single(ParValue(above0))} - 0.5;
}
f64 ExcessOfSum() {
    return f64{Single(ParValue(sumAbove0))} - 0.5;
}

} // namespace

void TESTWSIGN::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Correction});
}

void TESTWSIGN::SetParList() {
    corrected = Ticked(Check::Correction);
    StartTestList();
    above0 = AddPar(Kind::H1ProbabilityAbove0);
    sumAbove0 = AddPar(Kind::H1ProbabilityOfSumAbove0);
    sizes = AddSizes();
}

// On the side of the probability that leaves the expected statistic what it is under H0: one of the
// two can make up for the other.
void TESTWSIGN::SearchLimits(f64& lower, f64& upper) {
    const f64 ranks = (f64{sizes.First()} - 1) / 2;
    if (UnknownParNo == above0)
        LeftTailLimit(lower, upper, 0.5 - ranks * ExcessOfSum());
    else if (UnknownParNo == sumAbove0)
        LeftTailLimit(lower, upper, 0.5 - Excess() / ranks);
}

// The sum of the ranks of the positive observations counts them and the pairs with a positive sum;
// its variance is that under H0 (G. E. Noether, Journal of the American Statistical Association 82,
// 1987, 645-647; E. L. Lehmann, Nonparametrics, 1975, section 4.2).
f64 TESTWSIGN::RootFunction() {
    const f64 n{sizes.First()};
    const f32 s = Single(std::sqrt(n * (n + 1) * (2 * n + 1) / 24));
    const f32 effect = Single(n * (n - 1) * ExcessOfSum() / 2 + n * Excess());
    return NorPowerEq(effect, s, s, 0, 0, 0, 0, corrected ? 0.5F : 0.0F);
}

bool TESTWSIGN::IsTablePar(i16 parNo) {
    return parNo == above0 || parNo == sumAbove0;
}

std::optional<DistrList> TESTWSIGN::TableDistr(i16) {
    return DistrList::Symmetric;
}

// Under H0 the distribution is the same, with median 0.
f32 TESTWSIGN::CalcTablePar(i16 parNo) {
    SetNullFromShift();
    const SignedRankPair pair = PrSignedRankFromShift();
    return parNo == above0 ? pair.P1 : pair.P2;
}

} // namespace quorvanta
