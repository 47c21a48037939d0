#include "tests/testporegr.h"

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

constexpr i16 ContinuousTestNo = 58;

constexpr CovariateKinds ContinuousKinds{Group::RateEffect, Kind::H1RateAtMean,
                                         Kind::H1RateAtMeanPlusSd, Kind::H1RateRatio, NoKind};
constexpr CovariateKinds BinaryKinds{Group::RateEffect, Kind::H1RateAtX0, Kind::H1RateAtX1,
                                     Kind::H1RateRatio, Kind::ProportionAtX1};

// Options of the group of rate distributions.
constexpr i16 GammaDistributed = 1;

CovariateEffect covariate;
i16 studyTime;
i16 size;
i16 dispersion; // position of the last entry; 0: there is none
bool isGamma = false;

const CovariateKinds& Kinds() {
    return TestNo == ContinuousTestNo ? ContinuousKinds : BinaryKinds;
}

f64 Itself(f64 rate) {
    return rate;
}

// The factor of the variance, and the variance of the subjects' own rates in proportion to the
// square of their mean.
void DispersionPar(i16 position, f64& phi, f64& k) {
    phi = 1;
    k = 0;
    if (position != 0)
        (isGamma ? k : phi) = f64{Single(ParValue(position))};
}

struct Errors {
    f32 Se0;
    f32 Se1;
};

// A covariate that is standard normal (D. F. Signorini, Biometrika 78, 1991, 446-450,
// equation 3.2).
Errors ContinuousErrors(f64 beta, f64 phi, f64 events) {
    return {Single(std::sqrt(phi / events)),
            Single(std::sqrt(phi * ExpClamped(Single(-beta * beta / 2)) / events))};
}

// The same for a covariate of two values; with gamma distributed rates the numbers of events have
// negative binomial distributions.
Errors BinaryErrors(f64 ratio, f64 phi, f64 k, f64 exposure) {
    const f64 rate0 = covariate.Baseline();
    const f64 rate1{Single(rate0 * ratio)};
    const f64 x = covariate.Proportion();
    const f64 c0{Single((1 - x) * exposure)};
    const f64 c1{Single(x * exposure)};
    const f64 of0 = 1 / rate0 + k;
    const f64 of1 = 1 / rate1 + k;
    return {Single(std::sqrt(phi * (of0 / c1 + of0 / c0))),
            Single(std::sqrt(phi * (of0 / c0 + of1 / c1)))};
}

} // namespace

void TESTPOREGR::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Overdispersion, Check::VarianceOfH1});
    CovariateEffect::Offer(Kinds());
    OfferGroups({Group::RateDistribution});
    // Rates that differ between subjects of the same covariates are one way to overdispersion; the
    // variance for a continuous covariate has no place for them.
    if (!Ticked(Check::Overdispersion) || TestNo == ContinuousTestNo)
        DisableOption(Group::RateDistribution, GammaDistributed);
}

void TESTPOREGR::SetParList() {
    StartTestList();
    covariate.Add(Kinds());
    studyTime = AddPar(Kind::StudyTime);
    size = AddPar(Kind::Size);
    isGamma = ChosenOption(Group::RateDistribution) == GammaDistributed;
    dispersion = Ticked(Check::Overdispersion)
                     ? AddPar(isGamma ? Kind::GammaShape : Kind::Overdispersion)
                     : i16{0};
}

void TESTPOREGR::SearchLimits(f64& lower, f64& upper) {
    covariate.Narrow(lower, upper, &RootFunction);
}

f64 TESTPOREGR::RootFunction() {
    f64 phi = 1;
    f64 k = 0;
    DispersionPar(dispersion, phi, k);
    const f64 ratio{covariate.Ratio(&Itself)};
    const f64 beta{Single(std::log(ratio))};
    const f64 exposure =
        covariate.Unexplained() * f64{Single(ParValue(size))} * f64{Single(ParValue(studyTime))};
    const Errors errors =
        covariate.IsBinary()
            ? BinaryErrors(ratio, phi, k, exposure)
            : ContinuousErrors(beta, phi, f64{Single(exposure * covariate.Baseline())});
    const f32 se1 = ErrorAboveZero(f64{errors.Se1});
    return NormalPowerEq({.Effect = Single(beta),
                          .Se0 = Ticked(Check::VarianceOfH1) ? se1 : errors.Se0,
                          .Se1 = se1});
}

} // namespace quorvanta
