#include "tests/parexp.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/exponentialsample.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/precision.h"
#include "tests/lists/samples.h"
#include "tests/precisioneq.h"
#include "tests/scalestatistic.h"
#include "tests/simprecision.h"

namespace quorvanta {

namespace {

// By ParListNo.
constexpr i16 LocationParList = 0;
constexpr i16 ScaleLocationKnown = 1;

SampleValues sizes;
i16 scale;

f64 Distance(f64 n, f64 p) {
    return f64{Single(ParValue(scale))} / (2 * n) * f64{Chi2Inv(Single(p), 2)};
}

// The location is estimated by the smallest observation, which is too large by an error of which
// 2 n error / scale is chi-square with 2 df: never too small, so that the error allowed in both
// directions is the one allowed upward. The interval lies below the estimate; a single limit is the
// lower one.
f64 LocationRoot() {
    const auto distance = [](f64 p) { return Distance(f64{sizes.First()}, p); };
    if (!IsInterval())
        return distance(1 - ParValue(0)) - ParValue(1);
    const f64 level{PrecisionLevel()};
    return WidthEq(-distance(1 - level), distance(level));
}

// --- Its simulation ------------------------------------------------------------------------------

ScaleJudge judge; // of a scale
f64 nearer = 0;   // distances of the limits below the estimate of a location
f64 farther = 0;

bool LocationIsKnown() {
    return ParListNo == ScaleLocationKnown;
}

ScaleOfTimes DrawScale(i16 n) {
    f32 sum = 0;
    f32 smallest = static_cast<f32>(NoValue);
    DrawExponentialTimes(n, sum, smallest);
    return EstimateScale(n, sum, smallest, LocationIsKnown());
}

void JudgeLocation() {
    f32 sum = 0;
    f32 smallest = static_cast<f32>(NoValue);
    DrawExponentialTimes(SimSize1(1), sum, smallest);
    const f64 error = f64{smallest} * f64{Single(ParValue(scale))};
    // The limits of an interval lie below the estimate.
    if (IsInterval())
        JudgeInterval(-error, -nearer, farther);
    else
        JudgeEstimate(error, farther);
}

} // namespace

void PAREXP::SetupTest() {
    if (ParListNo == LocationParList)
        FixSamples(OneSample);
    else
        OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(SizeKinds);
}

void PAREXP::SetParList() {
    if (ParListNo == LocationParList) {
        StartPrecisionList(Precision::Absolute);
        scale = AddPar(Kind::Scale);
        sizes = AddSizes();
        return;
    }
    StartPrecisionList(Precision::Relative);
    sizes = AddSizes();
    AddWidthProbability();
}

bool PAREXP::CheckPar() {
    return sizes.Check();
}

void PAREXP::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper);
}

// 2 n estimate / scale is chi-square with 2 n df, with 2 (n - 1) where the location is estimated
// (B. Epstein and M. Sobel, Annals of Mathematical Statistics 25, 1954, 373-381).
f64 PAREXP::RootFunction() {
    if (ParListNo == LocationParList)
        return LocationRoot();
    return ScalePrecisionEq(StatisticOf(sizes, 2, LocationIsKnown()), 1, 1);
}

void PAREXP::GetSimPar() {
    if (ParListNo != LocationParList) {
        judge = ScaleJudge(StatisticOf(SimSize1(1), SimSize2(1), 2, LocationIsKnown()), 1, 1);
        return;
    }
    const f64 level = IsInterval() ? f64{PrecisionLevel()} : 1 - ParValue(0);
    const f64 n = SimSize1(1);
    nearer = Distance(n, 1 - level);
    farther = Distance(n, level);
}

void PAREXP::SimInterval() {
    if (SimSize1(1) < 1 || (sizes.HasSecond() && SimSize2(1) < 1))
        return JudgeNoData();
    if (ParListNo == LocationParList)
        return JudgeLocation();
    const ScaleOfTimes scale1 = DrawScale(SimSize1(1));
    if (!sizes.HasSecond())
        return scale1.Df < 1 ? JudgeNoData() : judge.Judge(scale1.Scale);
    const ScaleOfTimes scale2 = DrawScale(SimSize2(1));
    if (scale1.Df < 1 || scale2.Df < 1 || scale1.Scale <= 0)
        return JudgeNoData();
    judge.Judge(scale2.Scale / scale1.Scale);
}

} // namespace quorvanta
