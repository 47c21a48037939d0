#include "ranksurv/testkappa.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "ranksurv/kappas.h"
#include "tests/lists/turningpoint.h"

namespace quorvanta {

namespace {

Hypotheses hypotheses;
i16 proportion;
i16 subjects;

// The proportion of positive ratings.
f64 Positive() {
    return f64{Single(ParValue(proportion))};
}

Range Possible() {
    return {LeastKappa(Positive()), 1};
}

} // namespace

void TESTKAPPA::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferForms(KappaKinds);
}

void TESTKAPPA::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(KappaKinds, EffectScale::Plain);
    proportion = AddPar(Kind::Proportion);
    subjects = AddPar(Kind::NoOfSubjects);
}

// Of all proportions 0.5 allows the smallest kappa.
bool TESTKAPPA::CheckPar() {
    constexpr f64 freest = 0.5;
    return CheckKappas(hypotheses,
                       {LeastKappa(UnknownParNo == proportion ? freest : Positive()), 1});
}

// The variance is the same for a proportion and its complement: the search finds the smaller one.
// Next to 0 the estimate says nothing any more, and two tails reject all the more often.
void TESTKAPPA::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo != proportion) {
        NarrowKappas(hypotheses, lower, upper, Possible(), &RootFunction);
        return;
    }
    const f64 least = MinOf(0, KappasAtHand(hypotheses).Min);
    lower = MaxOf(lower, -least / (1 - least));
    upper = MinOf(upper, 0.5);
    KeepOneSideOfTurn(lower, upper, Side::Above, &RootFunction);
}

f64 TESTKAPPA::RootFunction() {
    return KappaPowerEq(hypotheses, f64{Single(ParValue(subjects))},
                        [](f64 kappa) { return KappaVar(kappa, Positive()); });
}

f64 LeastKappa(f64 pi) {
    return -MinOf(pi / (1 - pi), (1 - pi) / pi);
}

// The estimate is 1 - d/(2 p (1 - p)) with d the share of subjects whose ratings differ and p that
// of positive ratings; its variance by the delta method from the three kinds of subjects is that of
// D. A. Bloch and H. C. Kraemer, Biometrics 45, 1989, 269-287, and A. Donner and M. Eliasziw,
// Statistics in Medicine 11, 1992, 1511-1519.
f64 KappaVar(f64 kappa, f64 pi) {
    const f64 spread = pi * (1 - pi);
    const f64 bothPositive = pi * pi + kappa * spread;
    const f64 differing = 2 * spread * (1 - kappa);
    // What one subject of each kind adds to the estimate; two negative ratings add nothing.
    const f64 slope = (1 - kappa) * (1 - 2 * pi) / spread;
    const f64 ofDiffering = slope / 2 - 1 / (2 * spread);
    const f64 mean = bothPositive * slope + differing * ofDiffering;
    const f64 square = bothPositive * slope * slope + differing * ofDiffering * ofDiffering;
    return MaxOf(0, square - mean * mean);
}

} // namespace quorvanta
