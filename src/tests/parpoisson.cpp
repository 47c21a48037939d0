#include "tests/parpoisson.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/poissonevents.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/precision.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/normaltest.h"
#include "tests/powereq.h"
#include "tests/precisioneq.h"
#include "tests/simprecision.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr SampleKinds SizeKinds{Kind::PoissonSize,
                                Group::Size2,
                                Kind::PoissonSize1,
                                {Kind::PoissonSize2, Kind::Size2Minus1, Kind::Size2Over1}};
constexpr SampleKinds TimeKinds{Kind::StudyTime,
                                Group::StudyTime2,
                                Kind::StudyTime1,
                                {Kind::StudyTime2, Kind::StudyTime2Minus1, Kind::StudyTime2Over1}};

constexpr SampleTestKinds MeanTest{EffectScale::Plain,
                                   {Group::H1Mean,
                                    Kind::H0PoissonMean,
                                    {Kind::H1PoissonMean, Kind::H1MeanMinusH0, Kind::H1MeanOverH0},
                                    Kind::PoissonMeanLeftLimit,
                                    Kind::PoissonMeanRightLimit},
                                   {Group::Mean2,
                                    Kind::H0Mean2Minus1,
                                    NoKind,
                                    Kind::H1PoissonMean1,
                                    {Kind::H1PoissonMean2, Kind::H1Mean2Minus1, Kind::H1Mean2Over1},
                                    Kind::MeanLeftLimit,
                                    Kind::MeanRightLimit},
                                   SizeKinds};
constexpr SampleTestKinds RateTest{EffectScale::Plain,
                                   {Group::H1Rate,
                                    Kind::H0Rate,
                                    {Kind::H1Rate, Kind::H1RateMinusH0, Kind::H1RateOverH0},
                                    Kind::RateLeftLimit,
                                    Kind::RateRightLimit},
                                   {Group::Rate2,
                                    Kind::H0Rate2Minus1,
                                    NoKind,
                                    Kind::H1Rate1,
                                    {Kind::H1Rate2, Kind::H1Rate2Minus1, Kind::H1Rate2Over1},
                                    Kind::RateDifferenceLeftLimit,
                                    Kind::RateDifferenceRightLimit},
                                   TimeKinds};
constexpr SampleKinds CountKinds{
    Kind::PoissonMean,
    Group::Mean2,
    Kind::PoissonMean1,
    {Kind::PoissonMean2, Kind::PoissonMean2Minus1, Kind::PoissonMean2Over1}};
constexpr SampleKinds RateKinds{
    Kind::Rate, Group::Rate2, Kind::Rate1, {Kind::Rate2, Kind::Rate2Minus1, Kind::Rate2Over1}};

SampleTest test;
SampleValues means; // of an estimate
SampleValues sizes;

bool IsRate() {
    return ParListNo == 1;
}

const SampleTestKinds& TestKinds() {
    return IsRate() ? RateTest : MeanTest;
}

const SampleKinds& MeanKinds() {
    return IsRate() ? RateKinds : CountKinds;
}

// A Poisson variable has its mean as its variance (F. A. Haight, Handbook of the Poisson
// Distribution, 1967).
f64 OneSampleRoot() {
    const auto se = [](f64 mean) { return Single(std::sqrt(mean / f64{test.Sizes.First()})); };
    return NormalTestEq(test.Hypothesis, PlainDistance, se, se(test.Hypothesis.Truth()));
}

// The null hypothesis pools where it says that the two are equal (K. Krishnamoorthy and J. Thomson,
// Journal of Statistical Planning and Inference 119, 2004, 23-35).
f64 TwoSampleRoot() {
    const f64 n1{test.Sizes.First()};
    const f64 n2{test.Sizes.Second()};
    const f64 mean1{test.Hypothesis.First()};
    const f64 mean2{test.Hypothesis.Second()};
    const f64 pooled = (n1 * mean1 + n2 * mean2) / (n1 + n2);
    const f32 se1 = Single(std::sqrt(mean1 / n1 + mean2 / n2));
    const f32 sePooled = Single(std::sqrt(pooled * (1 / n1 + 1 / n2)));
    const auto se0 = [=](f64 null) { return null == 0 ? sePooled : se1; };
    return NormalTestEq(test.Hypothesis, PlainDistance, se0, se1);
}

// With a difference under H0 the standardised effect of a mean turns where the standard error
// begins to grow more slowly than the effect.
f64 EffectTurn() {
    const f64 h0 = ParValue(2);
    const auto effect = [h0](f64 x) {
        return test.Hypothesis.SecondAt(x) - test.Hypothesis.FirstAt(x) - h0;
    };
    const auto variance = [](f64 x) {
        return test.Hypothesis.FirstAt(x) / f64{test.Sizes.First()} +
               test.Hypothesis.SecondAt(x) / f64{test.Sizes.Second()};
    };
    // Both are linear.
    const f64 effect1 = effect(1) - effect(0);
    const f64 variance1 = variance(1) - variance(0);
    if (h0 == 0 || effect1 == 0 || variance1 == 0)
        return NoValue;
    return effect(0) / effect1 - 2 * variance(0) / variance1;
}

// --- Its simulation ------------------------------------------------------------------------------

// The means of the samples.
struct SimMeans {
    f64 First = 0;
    f64 Second = 0;
};
SimMeans drawnH0;
SimMeans drawnH1;

// The means under H0 that have its difference and the average of the true ones, as far as there are
// such: a mean is not below 0.
SimMeans NullMeans(f64 mean1, f64 mean2, f64 difference) {
    const f64 sum = MaxOf(mean1 + mean2, std::fabs(difference));
    return {(sum - difference) / 2, (sum + difference) / 2};
}

// Part of the whole at the current analysis: the time of a rate, where it is not subjects that are
// counted.
f64 TimeAt(f64 whole, i16 analysis) {
    return whole * analysis / SimSize1.HighBound();
}

// How much of a sample has been observed at an analysis: its subjects, or its time.
f64 ExposureOf1(i16 analysis) {
    return IsRate() ? TimeAt(test.Sizes.First(), analysis) : static_cast<f64>(SimSize1(analysis));
}

f64 ExposureOf2(i16 analysis) {
    return IsRate() ? TimeAt(test.Sizes.Second(), analysis) : static_cast<f64>(SimSize2(analysis));
}

void CheckEvents(f64 expected) {
    if (expected <= MostEvents)
        return;
    ShowMessage("A Simulated Study Has 1000000 Events at Most.");
    Cancelled = True;
}

void PrepareTest() {
    const Hypotheses& hypothesis = test.Hypothesis;
    const f32 right = NoOfTails == TwoOneSided ? hypothesis.Right() : 0.0F;
    SetSimLocations(hypothesis.H0(), right, Single(hypothesis.Truth()));
    if (!hypothesis.HasTwo()) {
        drawnH0 = {f64{SimLocation(false)}, 0};
        drawnH1 = {f64{SimLocation(true)}, 0};
    } else {
        drawnH1 = {f64{hypothesis.First()}, f64{hypothesis.Second()}};
        drawnH0 = NullMeans(drawnH1.First, drawnH1.Second, f64{SimLocation(false)});
    }
    const auto last = static_cast<i16>(SimSize1.HighBound());
    for (const SimMeans& drawn : {drawnH0, drawnH1})
        CheckEvents(drawn.First * ExposureOf1(last) +
                    (test.Sizes.HasSecond() ? drawn.Second * ExposureOf2(last) : 0));
}

// What a simulated study for an estimate observes of each sample: of a rate the study time counts,
// of a mean the subjects.
f64 exposure1 = 0;
f64 exposure2 = 0;

void PrepareEstimation() {
    exposure1 = IsRate() ? f64{sizes.First()} : static_cast<f64>(SimSize1(1));
    exposure2 = IsRate() && sizes.HasSecond() ? f64{sizes.Second()} : static_cast<f64>(SimSize2(1));
    CheckEvents(f64{means.First()} * exposure1 +
                (sizes.HasSecond() ? f64{means.Second()} * exposure2 : 0));
}

// The events of some exposure at a rate.
void AddEvents(f64 rate, f64 exposure, f32& sum) {
    sum = Single(f64{sum} + DrawEvents(rate * exposure));
}

} // namespace

void ParPoisson::SetupTest() {
    if (!IsEstimation())
        return SampleTest::Offer(TestKinds());
    OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(MeanKinds());
    OfferForms(TestKinds().Sizes);
}

void ParPoisson::SetParList() {
    if (!IsEstimation())
        return test.Build(TestKinds());
    StartPrecisionList(Precision::Absolute);
    means = AddSampleValues(MeanKinds());
    sizes = AddSizes(TestKinds().Sizes);
}

bool ParPoisson::CheckPar() {
    return IsEstimation() ? means.Check() && sizes.Check() : test.Check();
}

void ParPoisson::SearchLimits(f64& lower, f64& upper) {
    if (!IsEstimation()) {
        test.Narrow(lower, upper);
        if (NoOfSamples == TwoSamples && NoOfTails != TwoOneSided)
            KeepOneSide(lower, upper, EffectTurn(), Side::Above, &RootFunction);
        return;
    }
    means.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
}

f64 ParPoisson::RootFunction() {
    if (!IsEstimation())
        return NoOfSamples == OneSample ? OneSampleRoot() : TwoSampleRoot();
    const f64 first = f64{means.First()} / f64{sizes.First()};
    return NormalPrecisionEq(Single(
        std::sqrt(sizes.HasSecond() ? first + f64{means.Second()} / f64{sizes.Second()} : first)));
}

void ParPoisson::GetSimPar() {
    if (ProcedureNo == ProcedureTest)
        PrepareTest();
    else
        PrepareEstimation();
}

void ParPoisson::SimSample(i16 /*n1*/, i16 /*n2*/, bool isH1) {
    const SimMeans& means = isH1 ? drawnH1 : drawnH0;
    const i16 before = static_cast<i16>(SimStage - 1);
    AddEvents(means.First, ExposureOf1(SimStage) - ExposureOf1(before), SimStudy.Sum1);
    if (test.Sizes.HasSecond())
        AddEvents(means.Second, ExposureOf2(SimStage) - ExposureOf2(before), SimStudy.Sum2);
}

// The variances are those of the equation: of one sample at the null value, of two samples at their
// means, pooled where H0 says that they are equal.
f32 ParPoisson::SimTest(i16 /*n1*/, i16 /*n2*/) {
    const f64 t1 = ExposureOf1(SimStage);
    if (!(t1 > 0))
        return 1;
    const f64 mean1 = f64{SimStudy.Sum1} / t1;
    if (!test.Sizes.HasSecond()) {
        const auto se = [t1](f32 null) { return Single(std::sqrt(f64{null} / t1)); };
        return NullErrorPValue(Single(mean1), SimLoLimit, SimHiLimit, se(SimLoLimit),
                               se(SimHiLimit), 0);
    }
    const f64 t2 = ExposureOf2(SimStage);
    if (!(t2 > 0))
        return 1;
    const f64 mean2 = f64{SimStudy.Sum2} / t2;
    const f64 pooled = (f64{SimStudy.Sum1} + f64{SimStudy.Sum2}) / (t1 + t2);
    const auto se = [=](f32 null) {
        return Single(std::sqrt(null == 0 ? pooled * (1 / t1 + 1 / t2) : mean1 / t1 + mean2 / t2));
    };
    return NullErrorPValue(Single(mean2 - mean1), SimLoLimit, SimHiLimit, se(SimLoLimit),
                           se(SimHiLimit), 0);
}

void ParPoisson::SimInterval() {
    const bool hasTwo = sizes.HasSecond();
    if (exposure1 <= 0 || (hasTwo && exposure2 <= 0))
        return JudgeNoData();
    const f64 mean1 = DrawEvents(f64{means.First()} * exposure1) / exposure1;
    const f64 error1 = mean1 - f64{means.First()};
    if (!hasTwo)
        return JudgeNormal(error1, std::sqrt(mean1 / exposure1));
    const f64 mean2 = DrawEvents(f64{means.Second()} * exposure2) / exposure2;
    JudgeNormal(mean2 - f64{means.Second()} - error1,
                std::sqrt(mean1 / exposure1 + mean2 / exposure2));
}

} // namespace quorvanta
