#include "ranksurv/testspear.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/regression.h"
#include "tests/lists/turningpoint.h"
#include "tests/teststud.h"

#include <cmath>
#include <vector>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
i16 pairs;

} // namespace

void TESTSPEAR::SetupTest() {
    FixSamples(OneSample);
    OfferForms(OneCorrelationKinds);
}

void TESTSPEAR::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(OneCorrelationKinds, EffectScale::FisherZ);
    pairs = AddPar(Kind::SizeFrom4);
}

bool TESTSPEAR::CheckPar() {
    return hypotheses.Check();
}

// The standard error is that under H1, so the power is not highest in the middle of two limits, and
// for a difference that is kept not least in the middle of the scale.
void TESTSPEAR::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper, &RootFunction);
    if (hypotheses.BaseIsUnknown() && hypotheses.TruthForm() != AsValue)
        KeepOneBranch(lower, upper, SideOfTail(), &RootFunction);
    if (UnknownParNo == pairs)
        StartWherePowerRises(lower, upper, &RootFunction);
}

// The statistic has Student's t distribution with n - 2 degrees of freedom, approximately (M. G.
// Kendall and A. Stuart, The Advanced Theory of Statistics, vol. 2, 3rd edition, 1973, chapter 31).
f64 TESTSPEAR::RootFunction() {
    const f32 n = Single(ParValue(pairs));
    const f32 truth = RhoFromR(Single(hypotheses.Truth()));
    const auto distance = [=](f32 null) { return RankCorrZ(n, truth, RhoFromR(null)); };
    const f32 above = distance(hypotheses.H0());
    const f32 right = NoOfTails == TwoOneSided ? hypotheses.Right() : hypotheses.H0();
    return TPowerEq(above, 1, above, -distance(right), Single(f64{n} - 2));
}

// K. Pearson, On further methods of determining correlation, Drapers' Company Research Memoirs,
// 1907: rho of a bivariate normal distribution.
f32 RhoFromR(f32 r) {
    return r == 0 ? 0.0F : Single(6 / Pi * std::asin(f64{r} / 2));
}

f32 RankCorrZ(f32 n, f32 r, f32 r0) {
    const f64 rho{r};
    return Single((rho - f64{r0}) * std::sqrt((f64{n} - 2) / (1 - rho * rho)));
}

// Correlations of the normal distribution that is drawn from. Between two limits H0 is true at the
// one nearer to the truth.
void TESTSPEAR::GetSimPar() {
    SimLoc2 = Single(hypotheses.Truth());
    SimLoc1 = hypotheses.H0();
    if (NoOfTails != TwoOneSided)
        return;
    SimLoLimit = hypotheses.Left();
    SimHiLimit = hypotheses.Right();
    const f64 middle = (f64{SimLoLimit} + f64{SimHiLimit}) / 2;
    SimLoc1 = f64{SimLoc2} > middle ? SimHiLimit : SimLoLimit;
}

void TESTSPEAR::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    SimPairs(n1, isH1 ? SimLoc2 : SimLoc1);
}

f32 TESTSPEAR::SimTest(i16 n1, i16 /*n2*/) {
    constexpr i16 fewest = 3;
    if (n1 < fewest)
        return 1;
    static std::vector<f32> first; // both keep their memory
    static std::vector<f32> second;
    RanksOf(SimStudy.Value, first);
    RanksOf(SimStudy.Group, second);
    f64 squares = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        const f64 distance = f64{first[i]} - f64{second[i]};
        squares += distance * distance;
    }
    const f64 n{static_cast<f32>(n1)};
    f32 r = Single(1 - 6 * squares / (n * (n * n - 1)));
    constexpr f32 fromOne = 1e-5F;
    if (std::fabs(r) == 1)
        r = Single(f64{r} - std::copysign(f64{fromOne}, f64{r}));
    const f32 se = Single(std::sqrt((1 - f64{r} * f64{r}) / (n - 2)));
    return TPValue(r, RhoFromR(hypotheses.H0()), se, RhoFromR(SimLoLimit), RhoFromR(SimHiLimit),
                   Single(n - 2));
}

} // namespace quorvanta
