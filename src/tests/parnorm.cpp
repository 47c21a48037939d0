#include "tests/parnorm.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/precision.h"
#include "tests/precisioneq.h"
#include "tests/scalestatistic.h"
#include "tests/simprecision.h"
#include "tests/testnor.h"
#include "tests/teststud.h"

#include <cmath>

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

// --- Its simulation ------------------------------------------------------------------------------

ScaleJudge judge; // of a standard deviation

// The means of one study: the error of the estimate, and its standard error on so many degrees of
// freedom.
struct MeansStudy {
    f64 Error = 0;
    f64 Se = 0;
    f64 Df = 0;
};

// The variance of the error of single observations, in units of the true one, where others than the
// observed ones count.
f64 ErrorVariance(f64 df) {
    RandSample.ReDim(0, 1);
    RandChi2(Single(df));
    return f64{RandSample(1)} / df;
}

MeansStudy DrawMeans() {
    const SampleMoments first = DrawNormalMoments(SimSize1(1));
    const SampleMoments second = DrawNormalMoments(SimSize2(1));
    const bool hasTwo = sizes.HasSecond();
    const f64 sd1{deviations.First()};
    const f64 sd2 = deviations.HasSecond() ? f64{deviations.Second()} : sd1;
    MeansStudy study;
    study.Error = hasTwo ? sd2 * second.Mean - sd1 * first.Mean : sd1 * first.Mean;
    const f64 ofMeans = sd1 * sd1 / first.Size + (hasTwo ? sd2 * sd2 / second.Size : 0);
    if (ParListNo == DeviationKnown) {
        study.Se = std::sqrt(ofMeans);
        return study;
    }
    study.Df = dfEntry == 0 ? first.Size + second.Size - (hasTwo ? 2 : 1) : f64{DegreesOfFreedom()};
    if (study.Df < 1)
        return study;
    const f64 variance =
        dfEntry == 0 ? (first.Squares + second.Squares) / study.Df : ErrorVariance(study.Df);
    study.Se = std::sqrt(variance * ofMeans);
    return study;
}

bool HasEmptyGroup() {
    return SimSize1(1) < 1 || (sizes.HasSecond() && SimSize2(1) < 1);
}

void JudgeSd() {
    const bool meanKnown = ParListNo == SdMeanKnown;
    const VarianceEstimate variance1 = EstimateVariance(DrawNormalMoments(SimSize1(1)), meanKnown);
    if (!sizes.HasSecond())
        return variance1.Df < 1 ? JudgeNoData() : judge.Judge(variance1.Variance);
    const VarianceEstimate variance2 = EstimateVariance(DrawNormalMoments(SimSize2(1)), meanKnown);
    if (variance1.Df < 1 || variance2.Df < 1 || variance1.Variance <= 0)
        return JudgeNoData();
    judge.Judge(variance2.Variance / variance1.Variance);
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

void PARNORM::GetSimPar() {
    if (IsSd())
        judge = ScaleJudge(StatisticOf(SimSize1(1), SimSize2(1), 1, ParListNo == SdMeanKnown), 2,
                           trueRatio == 0 ? 1 : ParValue(trueRatio));
}

void PARNORM::SimInterval() {
    if (HasEmptyGroup())
        return JudgeNoData();
    if (IsSd())
        return JudgeSd();
    const MeansStudy study = DrawMeans();
    if (ParListNo == DeviationKnown)
        JudgeNormal(study.Error, study.Se);
    else
        JudgeStudent(study.Error, study.Se, study.Df);
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

// Nothing to prepare.
void PARLNORM::GetSimPar() {}

void PARLNORM::SimInterval() {
    if (HasEmptyGroup())
        return JudgeNoData();
    const MeansStudy study = DrawMeans();
    if (ParListNo == DeviationKnown)
        JudgeLogNormal(study.Error, study.Se);
    else
        JudgeLogStudent(study.Error, study.Se, study.Df);
}

} // namespace quorvanta
