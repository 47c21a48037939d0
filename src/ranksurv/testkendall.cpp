#include "ranksurv/testkendall.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

f32 KendallSD;

namespace {

bool byConcordance; // the probability that a pair of pairs is concordant stands for tau
i16 association;
i16 pairs;

} // namespace

void TESTKENDALL::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferGroups({Group::TauOrConcordance});
}

void TESTKENDALL::SetParList() {
    byConcordance = ChosenOption(Group::TauOrConcordance) == 1;
    StartTestList();
    association = AddPar(byConcordance ? Kind::H1ProbabilityOfConcordance : Kind::H1Tau);
    pairs = AddPar(Kind::SizeFrom4);
}

void TESTKENDALL::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == association)
        LeftTailLimit(lower, upper, byConcordance ? 0.5 : 0);
}

// The variance is that without association, under H1 too (M. G. Kendall, Rank Correlation Methods,
// 4th edition, 1970, chapter 5; G. E. Noether, Journal of the American Statistical Association 82,
// 1987, 645-647). Tau is twice the probability of concordance, less 1, and the statistic of the
// latter the number of concordant pairs.
f64 TESTKENDALL::RootFunction() {
    const f64 n{Single(ParValue(pairs))};
    const f64 value{Single(ParValue(association))};
    f64 effect = value;
    f64 variance = 2 * (2 * n + 5) / (9 * n * (n - 1));
    if (byConcordance) {
        effect = (n - 1) * (n / 2) * (value - 0.5);
        variance = (n - 1) * n * (2 * n + 5) / 72;
    }
    KendallSD = Single(std::sqrt(variance));
    return NorPowerEq(Single(effect), KendallSD, KendallSD, 0, 0, 0, 0, 0);
}

// Of a normal distribution tau is 2/pi asin(rho) (M. G. Kendall, Rank Correlation Methods, 4th
// edition, 1970, chapter 9).
void TESTKENDALL::GetSimPar() {
    const f64 value{Single(ParValue(association))};
    const f64 tau = byConcordance ? 2 * value - 1 : value;
    SimLoc1 = 0;
    SimLoc2 = Single(std::sin(Pi * tau / 2));
}

void TESTKENDALL::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    SimPairs(n1, isH1 ? SimLoc2 : SimLoc1);
}

f32 TESTKENDALL::SimTest(i16 n1, i16 /*n2*/) {
    constexpr i16 fewest = 2;
    if (n1 < fewest)
        return 1;
    const auto x = SimStudy.Value.Raw();
    const auto y = SimStudy.Group.Raw();
    i32 concordant = 0;
    for (std::size_t i = 1; i < x.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            concordant += (x[i] > x[j]) == (y[i] > y[j]) ? 1 : 0;
    const f64 n{static_cast<f32>(n1)};
    const f64 all = n * (n - 1) / 2;
    const f64 count = static_cast<f64>(concordant);
    if (byConcordance)
        return NorPValue(Single(count), Single(all / 2),
                         Single(std::sqrt((n - 1) * n * (2 * n + 5) / 72)), 0, 0, 0);
    return NorPValue(Single(2 * count / all - 1), 0,
                     Single(std::sqrt(2 * (2 * n + 5) / (9 * n * (n - 1)))), 0, 0, 0);
}

} // namespace quorvanta
