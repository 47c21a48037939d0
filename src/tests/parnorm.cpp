#include "tests/parnorm.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "tests/lists/means.h"
#include "tests/lists/precision.h"
#include "tests/precisioneq.h"
#include "tests/scalestatistic.h"
#include "tests/testnor.h"
#include "tests/teststud.h"

namespace quorvanta {

namespace {

// Parameters of the normal distribution, by ParListNo; the lognormal one has the first two.
constexpr i16 DeviationKnown = 0;
constexpr i16 SdMeanKnown = 2;

SampleValues deviations;
SampleValues sizes;
i16 dfEntry;
i16 trueRatio; // of two standard deviations

bool IsSd() {
    return ParListNo >= SdMeanKnown;
}

// Degrees of freedom that are entered only matter where a quantile of t does.
void OfferMeans(const SampleKinds& kinds, bool quantileOfT) {
    OfferSamples({OneSample, TwoSamples});
    if (quantileOfT)
        OfferChecks({Check::DegreesOfFreedom, Check::GroupsInAnova});
    OfferPrecision();
    if (ParListNo == DeviationKnown)
        OfferForms(kinds);
    OfferForms(SizeKinds);
}

void AddMeans(const SampleKinds& kinds) {
    const bool known = ParListNo == DeviationKnown;
    deviations = known ? AddSampleValues(kinds) : AddCommonValue(kinds);
    sizes = AddSizes();
    dfEntry = AddDfEntry();
    if (!known)
        AddWidthProbability();
}

f32 StandardError() {
    return MeanStandardError(deviations, sizes);
}

f32 DegreesOfFreedom() {
    return CommonSdDf(sizes, dfEntry);
}

} // namespace

void PARNORM::SetupTest() {
    if (!IsSd())
        return OfferMeans(SdKinds, ParListNo != DeviationKnown);
    OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(SizeKinds);
}

void PARNORM::SetParList() {
    if (!IsSd()) {
        StartPrecisionList(Precision::Absolute);
        return AddMeans(SdKinds);
    }
    // The interval of a ratio is told in its own units, so that it needs the true ratio.
    const bool ratioInterval = NoOfSamples == TwoSamples && IsInterval();
    StartPrecisionList(ratioInterval ? Precision::Absolute : Precision::Relative);
    trueRatio = ratioInterval ? AddPar(Kind::TrueSd2Over1) : i16{0};
    deviations = SampleValues();
    sizes = AddSizes();
    AddWidthProbability();
}

bool PARNORM::CheckPar() {
    return deviations.Check() && sizes.Check();
}

void PARNORM::SearchLimits(f64& lower, f64& upper) {
    deviations.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
}

// z or t times the standard error; of a standard deviation and of random widths the chi-square
// distribution of the estimated variance (L. L. Kupper and K. B. Hafner, The American Statistician
// 43, 1989, 101-105).
f64 PARNORM::RootFunction() {
    if (IsSd())
        return ScalePrecisionEq(StatisticOf(sizes, 1, ParListNo == SdMeanKnown), 2,
                                trueRatio == 0 ? 1 : ParValue(trueRatio));
    return ParListNo == DeviationKnown ? NormalPrecisionEq(StandardError())
                                       : StudentPrecisionEq(StandardError(), DegreesOfFreedom());
}

void PARLNORM::SetupTest() {
    OfferMeans(ShapeKinds, ParListNo != DeviationKnown && IsInterval());
}

void PARLNORM::SetParList() {
    StartPrecisionList(Precision::Relative);
    AddMeans(ShapeKinds);
}

bool PARLNORM::CheckPar() {
    return PARNORM::CheckPar();
}

void PARLNORM::SearchLimits(f64& lower, f64& upper) {
    PARNORM::SearchLimits(lower, upper);
}

// The same on the logarithms, whose mean is that of the median (J. Aitchison and J. A. C. Brown,
// The Lognormal Distribution, 1957, chapter 2).
f64 PARLNORM::RootFunction() {
    return ParListNo == DeviationKnown ? LogPrecisionEq(StandardError())
                                       : LogStudentPrecisionEq(StandardError(), DegreesOfFreedom());
}

} // namespace quorvanta
