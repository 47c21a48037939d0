#include "ranksurv/testwsign.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/powereq.h"

#include <cmath>
#include <vector>

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

namespace {

f32 SumAbove0() {
    return PrSignedRankFromShift().P2;
}

// The distribution that was chosen, if the two probabilities follow from it; else one of its
// family, or a normal one, shifted so that a sum of two observations is as probably above 0 as was
// typed.
DistrRow ShiftedDistribution() {
    DistrRow distr{SimNormal, 0, 1};
    if (NoOfDistr() > 0 && IsOffered(DistrList::Symmetric, Distr(NoOfDistr()).Code))
        distr = Distr(NoOfDistr());
    SimDistrNo = distr.Code;
    ShiftPar1 = distr.Par1;
    ShiftPar2 = distr.Par2;
    constexpr f64 asShown = 1e-6;
    const SignedRankPair pair = PrSignedRankFromShift();
    if (std::fabs(f64{pair.P1} - ParValue(above0)) > asShown ||
        std::fabs(f64{pair.P2} - ParValue(sumAbove0)) > asShown)
        distr.Par1 = Single(f64{ShiftOf(SumAbove0, Single(ParValue(sumAbove0)))} * f64{distr.Par2});
    return distr;
}

} // namespace

void TESTWSIGN::GetSimPar() {
    const DistrRow distr = ShiftedDistribution();
    SimulateDistr(distr);
    SimLoc1 = 0;
    SimLoc2 = distr.Par1;
    SimScale1 = distr.Par2;
}

void TESTWSIGN::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    SimOneSample(n1, 1, isH1 ? SimLoc2 : SimLoc1, SimScale1);
}

f32 TESTWSIGN::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 == 0)
        return 1;
    static Array1<f32> distances; // both keep their memory
    static std::vector<f32> ranks;
    distances.ReDim(1, n1);
    for (i16 i = 1; i <= n1; ++i)
        distances(i) = std::fabs(SimStudy.Value(i));
    RanksOf(distances, ranks);
    f64 sum = 0;
    for (i16 i = 1; i <= n1; ++i)
        sum += SimStudy.Value(i) > 0 ? f64{ranks[static_cast<std::size_t>(i - 1)]} : 0;
    const f64 n{static_cast<f32>(n1)};
    return NorPValue(Single(sum), Single(n * (n + 1) / 4),
                     Single(std::sqrt(n * (n + 1) * (2 * n + 1) / 24)), 0, 0, 0);
}

} // namespace quorvanta
