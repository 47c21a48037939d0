#include "tests/testlogistic.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/covariate.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 ContinuousTestNo = 56;

constexpr CovariateKinds ContinuousKinds{Group::EventEffect, Kind::H1EventAtMean,
                                         Kind::H1EventAtMeanPlusSd, Kind::H1OddsRatio, NoKind};
constexpr CovariateKinds BinaryKinds{Group::EventEffect, Kind::H1EventAtX0, Kind::H1EventAtX1,
                                     Kind::H1OddsRatio, Kind::ProportionAtX1};

CovariateEffect covariate;
i16 size;

const CovariateKinds& Kinds() {
    return TestNo == ContinuousTestNo ? ContinuousKinds : BinaryKinds;
}

f64 Odds(f64 probability) {
    return probability / (1 - probability);
}

// Standard errors of the coefficient under H0 and H1 as multiples of a common one, and what the
// approximation for rare events lacks to that where they are not rare.
struct Errors {
    f32 Se0;
    f32 Se1;
    f32 Excess;
};

// A. S. Whittemore, Journal of the American Statistical Association 76, 1981, 27-32; F. Y. Hsieh,
// Statistics in Medicine 8, 1989, 795-802, equations 1 and 2.
Errors ContinuousErrors(f64 beta) {
    const f64 square = beta * beta;
    const f64 e1{Single(ExpClamped(Single(-square / 4)))};
    const f64 e2 = ExpClamped(Single(5 * square / 4));
    return {1, ErrorAboveZero(e1), Single(((1 + square) * e2 + 1) / (e1 + 1))};
}

// Hsieh 1989 with the variances that Whittemore has for a covariate of two values.
Errors BinaryErrors(f64 beta, f64 x) {
    const f64 e = ExpClamped(Single(beta));
    const f64 a{Single(1 / (1 - x) + 1 / x)};
    const f64 b{Single(1 / (1 - x) + 1 / x / e)};
    const f64 atMean = (1 - x) + x * e;
    const f64 g{Single(b * x * (1 - x) * ExpClamped(Single(2 * beta)) / (atMean * atMean))};
    const f64 root0 = std::sqrt(a);
    const f64 root1 = std::sqrt(b);
    return {Single(root0), Single(root1), Single((root0 + g * root1) / (root1 + root0))};
}

} // namespace

void TESTLOGISTIC::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    CovariateEffect::Offer(Kinds());
}

void TESTLOGISTIC::SetParList() {
    StartTestList();
    covariate.Add(Kinds());
    size = AddPar(Kind::Size);
}

void TESTLOGISTIC::SearchLimits(f64& lower, f64& upper) {
    covariate.Narrow(lower, upper, &RootFunction);
}

f64 TESTLOGISTIC::RootFunction() {
    const f64 p = covariate.Baseline();
    const f64 n{Single(ParValue(size))};
    const f64 beta{Single(std::log(f64{covariate.Ratio(&Odds)}))};
    const Errors errors =
        covariate.IsBinary() ? BinaryErrors(beta, covariate.Proportion()) : ContinuousErrors(beta);
    const f64 precision{
        Single(std::sqrt(covariate.Unexplained() * p * n / (1 + 2 * p * f64{errors.Excess})))};
    return NormalPowerEq(
        {.Effect = Single(beta * precision), .Se0 = errors.Se0, .Se1 = errors.Se1});
}

} // namespace quorvanta
