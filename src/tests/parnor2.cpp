#include "tests/parnor2.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/fastlog.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/association.h"
#include "tests/lists/means.h"
#include "tests/lists/regression.h"
#include "tests/lists/samples.h"
#include "tests/lists/testorprecision.h"
#include "tests/lists/turningpoint.h"
#include "tests/normaltest.h"
#include "tests/precisioneq.h"
#include "tests/simprecision.h"
#include "tests/studenttest.h"

#include <cmath>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
SampleValues deviations;
i16 correlation;
i16 trueRatio;
i16 residualSd;
i16 covariateSd;
i16 pairs;

f64 Pairs() {
    return f64{Single(ParValue(pairs))};
}

f64 Correlation() {
    return f64{Single(ParValue(correlation))};
}

// Distance from an estimate to a limit of its interval, on the scale of Fisher's z.
f64 HalfWidth() {
    return f64{NorInv(PrecisionLevel())} * f64{FisherZError(Pairs())};
}

// Test or precision of an estimate with an estimated standard error.
f64 StudentRoot(f32 se, f64 df) {
    if (IsEstimation())
        return StudentPrecisionEq(se, Single(df));
    return StudentTestEq(hypotheses, se, df);
}

// --- Its simulation ------------------------------------------------------------------------------

PairMoments sample; // two standard normal variables
f64 simulated = 0;  // the true value of the study

// The correlation of the variables themselves; a covariate and the residuals have none.
void DrawPairs(i16 n, f64 rho, bool isH1) {
    if (SimStage == 1)
        sample = {};
    sample.Add(DrawPairMoments(n, Single(rho)));
    simulated = f64{isH1 ? SimLoc2 : SimLoc1};
}

void PrepareTruth(f64 estimated) {
    SimLoc1 = Single(IsEstimation() ? estimated : hypotheses.NullTruth());
    SimLoc2 = Single(IsEstimation() ? estimated : hypotheses.Truth());
}

// asinh, with the same bits on every machine.
f64 ArcSinh(f64 x) {
    return Sgn(x) * FastLog(std::fabs(x) + std::sqrt(x * x + 1));
}

bool IsTooSmall(i16 n) {
    constexpr i16 leastOfZ = 4; // with a variance of Fisher's z
    return n < leastOfZ;
}

// --- The search
// -----------------------------------------------------------------------------------

void NarrowPairs(f64& lower, f64 upper, f64 (*residual)()) {
    if (!IsEstimation() && UnknownParNo == pairs)
        StartWherePowerRises(lower, upper, residual);
}

} // namespace

// --- Means ------------------------------------------------------------------------------------

namespace {

// Variance of the difference of a pair.
f64 DifferenceVariance(f64 sd1, f64 sd2) {
    return sd1 * sd1 + sd2 * sd2 - 2 * Correlation() * sd1 * sd2;
}

} // namespace

void PARNOR2MEAN::SetupTest() {
    OfferTestOrPrecision(TwoMeansKinds);
    OfferGroups({SdKinds.Group});
}

void PARNOR2MEAN::SetParList() {
    hypotheses = StartTestOrPrecision(TwoMeansKinds, EffectScale::Plain, Precision::Absolute);
    deviations = AddPair(SdKinds);
    correlation = AddPar(Kind::Correlation);
    pairs = AddPar(Kind::Size);
    AddWidthProbability();
}

bool PARNOR2MEAN::CheckPar() {
    return CheckTest(hypotheses) && deviations.Check();
}

// With correlated variables the variance is smallest at a deviation above 0: of two such deviations
// the search finds the larger one.
void PARNOR2MEAN::SearchLimits(f64& lower, f64& upper) {
    NarrowTest(hypotheses, lower, upper);
    deviations.Narrow(lower, upper);
    if (deviations.HasUnknown())
        KeepOneSide(lower, upper, TurningPoint([](f64 x) {
                        return DifferenceVariance(deviations.FirstAt(x), deviations.SecondAt(x));
                    }),
                    Side::Above, &RootFunction);
    NarrowPairs(lower, upper, &RootFunction);
}

// The differences of the pairs are one normal sample (Student, Biometrika 6, 1908, 1-25).
f64 PARNOR2MEAN::RootFunction() {
    const f64 sd = std::sqrt(DifferenceVariance(f64{deviations.First()}, f64{deviations.Second()}));
    return StudentRoot(Single(sd / std::sqrt(Pairs())), Pairs() - 1);
}

namespace {

// The mean difference as it was estimated, and its standard error.
struct DifferenceEstimate {
    f64 Mean = 0;
    f64 Se = 0;
    f64 Df = 0;
};

DifferenceEstimate EstimateDifference() {
    const f64 sd1{deviations.First()};
    const f64 sd2{deviations.Second()};
    const f64 n = sample.First.Size;
    DifferenceEstimate estimate;
    estimate.Mean = simulated + sd2 * sample.Second.Mean - sd1 * sample.First.Mean;
    estimate.Df = n - 1;
    if (estimate.Df < 1)
        return estimate;
    const f64 squares = sd1 * sd1 * sample.First.Squares + sd2 * sd2 * sample.Second.Squares -
                        2 * sd1 * sd2 * sample.Products;
    estimate.Se = std::sqrt(MaxOf(0, squares) / estimate.Df / n);
    return estimate;
}

} // namespace

void PARNOR2MEAN::GetSimPar() {
    PrepareTruth(0);
}

void PARNOR2MEAN::SimSample(i16 n1, i16, bool isH1) {
    DrawPairs(n1, Correlation(), isH1);
}

f32 PARNOR2MEAN::SimTest(i16 n1, i16) {
    if (n1 == 0)
        return 1;
    const DifferenceEstimate estimate = EstimateDifference();
    return StudentPValue(hypotheses, estimate.Mean, estimate.Se, estimate.Df);
}

void PARNOR2MEAN::SimInterval() {
    DrawPairs(SimSize1(1), Correlation(), true);
    const DifferenceEstimate estimate = EstimateDifference();
    JudgeStudent(estimate.Mean - simulated, estimate.Se, estimate.Df);
}

// --- Standard deviations ----------------------------------------------------------------------

namespace {

// sqrt(1 - r^2) with r the correlation of the pairs.
f64 Alienation() {
    return std::sqrt(1 - Correlation() * Correlation());
}

// Fisher's z of the correlation between sum and difference of two variables whose standard
// deviations have this ratio.
f64 RatioZ(f64 ratio) {
    return std::asinh((ratio - 1 / ratio) / 2 / Alienation());
}

// The ratio whose z this is.
f64 RatioOfZ(f64 z) {
    return std::exp(std::asinh(std::sinh(z) * Alienation()));
}

} // namespace

void PARNOR2SD::SetupTest() {
    OfferTestOrPrecision(TwoSdsKinds);
}

void PARNOR2SD::SetParList() {
    hypotheses = StartTestOrPrecision(TwoSdsKinds, EffectScale::Log,
                                      IsInterval() ? Precision::Absolute : Precision::Relative);
    trueRatio = IsInterval() ? AddPar(Kind::TrueSd2Over1) : i16{0};
    correlation = AddPar(Kind::Correlation);
    pairs = AddPar(Kind::SizeFrom4);
}

bool PARNOR2SD::CheckPar() {
    return CheckTest(hypotheses);
}

// A correlation counts by its square: the search finds the positive one.
void PARNOR2SD::SearchLimits(f64& lower, f64& upper) {
    NarrowTest(hypotheses, lower, upper);
    if (UnknownParNo == correlation)
        KeepOneSide(lower, upper, 0, Side::Above, &RootFunction);
}

// E. J. G. Pitman 1939, Biometrika 31, 9-12, and W. A. Morgan 1939, Biometrika 31, 13-19.
f64 PARNOR2SD::RootFunction() {
    const f32 se = FisherZError(Pairs());
    if (!IsEstimation())
        return NormalTestEq(
            hypotheses, [](f64 truth, f64 null) { return RatioZ(truth / null); },
            [se](f64) { return se; }, se);
    if (IsInterval()) {
        const f64 z = HalfWidth();
        const f64 ratio = ParValue(trueRatio);
        return WidthEq(ratio * (1 - RatioOfZ(-z)), ratio * (RatioOfZ(z) - 1));
    }
    const auto below = [se](f64 ratio) { return f64{NorCdf(Single(RatioZ(ratio) / f64{se}))}; };
    return ErrorProbabilityEq(below(1 - ParValue(1)), below(1 + ParValue(1)));
}

namespace {

f64 AlienationOf(f64 r) {
    return std::sqrt(MaxOf(0, 1 - r * r));
}

// The estimated ratio over the true one; 0 where a variable does not vary.
f64 RelativeRatio() {
    const bool varies = sample.First.Squares > 0 && sample.Second.Squares > 0;
    return varies ? std::sqrt(sample.Second.Squares / sample.First.Squares) : 0;
}

// RatioZ with the correlation that was drawn.
f64 RatioZOfSample(f64 ratio) {
    constexpr f64 least = 1e-9;
    return ArcSinh((ratio - 1 / ratio) / 2 / MaxOf(least, AlienationOf(sample.Correlation())));
}

} // namespace

void PARNOR2SD::GetSimPar() {
    PrepareTruth(trueRatio == 0 ? 1 : ParValue(trueRatio));
}

void PARNOR2SD::SimSample(i16 n1, i16, bool isH1) {
    DrawPairs(n1, Correlation(), isH1);
}

f32 PARNOR2SD::SimTest(i16 n1, i16) {
    const f64 ratio = simulated * RelativeRatio();
    if (IsTooSmall(n1) || ratio <= 0)
        return 1;
    const f32 se = FisherZError(n1);
    return NormalPValue(
        hypotheses, [ratio](f64 null) { return RatioZOfSample(ratio / null); },
        [se](f64) { return se; });
}

void PARNOR2SD::SimInterval() {
    const i16 n = SimSize1(1);
    DrawPairs(n, Correlation(), true);
    const f64 relative = RelativeRatio();
    if (IsTooSmall(n) || relative <= 0)
        return JudgeNoData();
    const f64 se{FisherZError(n)};
    if (IsInterval()) {
        const f64 half = f64{NorInv(PrecisionLevel())} * se;
        const f64 y = std::sinh(half) * AlienationOf(sample.Correlation());
        const f64 factor = y + std::sqrt(1 + y * y);
        const f64 ratio = simulated * relative;
        return JudgeInterval(ratio - simulated, ratio * (1 - 1 / factor), ratio * (factor - 1));
    }
    const auto below = [se](f64 ratio) { return f64{NorCdf(Single(RatioZOfSample(ratio) / se))}; };
    const f64 e = ParValue(1);
    JudgeByProbability(relative - 1, ErrorProbabilityEq(e < 1 ? below(1 - e) : 0, below(1 + e)));
}

// --- Correlation ------------------------------------------------------------------------------

void PARNOR2CORREL::SetupTest() {
    OfferTestOrPrecision(OneCorrelationKinds);
}

void PARNOR2CORREL::SetParList() {
    hypotheses =
        StartTestOrPrecision(OneCorrelationKinds, EffectScale::FisherZ, Precision::Absolute);
    if (IsEstimation())
        correlation = AddPar(Kind::Correlation);
    pairs = AddPar(Kind::SizeFrom4);
}

bool PARNOR2CORREL::CheckPar() {
    return CheckTest(hypotheses);
}

// An estimate is least precise at this correlation, about 0: of the two correlations of a precision
// the search finds the larger one.
namespace {

// Residual of the probability that the error of a point estimate of r is kept.
f64 CorrelationErrorEq(f64 r, f32 se) {
    const f64 z = FisherZ(r);
    // No estimate lies outside -1..1.
    const auto below = [=](f64 edge) {
        if (std::fabs(edge) >= 1)
            return edge > 0 ? 1.0 : 0.0;
        return f64{NorCdf(Single((FisherZ(edge) - z) / f64{se}))};
    };
    return ErrorProbabilityEq(below(r - ParValue(1)), below(r + ParValue(1)));
}

f64 LeastPreciseCorrelation() {
    if (IsTwoSidedPrecision())
        return 0;
    return IsInterval() ? -std::tanh(HalfWidth() / 2) : -ParValue(1) / 2;
}

} // namespace

void PARNOR2CORREL::SearchLimits(f64& lower, f64& upper) {
    NarrowTest(hypotheses, lower, upper);
    if (!IsEstimation())
        KeepOneSide(lower, upper, hypotheses.BaseOfLeastPower(0), SideOfTail(), &RootFunction);
    else if (UnknownParNo == correlation)
        KeepOneSide(lower, upper, LeastPreciseCorrelation(), Side::Above, &RootFunction);
}

// R. A. Fisher, Metron 1, 1921, 3-32.
f64 PARNOR2CORREL::RootFunction() {
    const f32 se = FisherZError(Pairs());
    if (!IsEstimation())
        return CorrelationTestEq(hypotheses, se);
    const f64 r = Correlation();
    if (IsInterval()) {
        const f64 z = FisherZ(r);
        const f64 half = HalfWidth();
        return WidthEq(r - std::tanh(z - half), std::tanh(z + half) - r);
    }
    return CorrelationErrorEq(r, se);
}

void PARNOR2CORREL::GetSimPar() {
    PrepareTruth(IsEstimation() ? Correlation() : 0);
}

void PARNOR2CORREL::SimSample(i16 n1, i16, bool isH1) {
    constexpr f64 most{0.99999F};
    const f64 rho{isH1 ? SimLoc2 : SimLoc1};
    DrawPairs(n1, MaxOf(-most, MinOf(most, rho)), isH1);
}

f32 PARNOR2CORREL::SimTest(i16 n1, i16) {
    return IsTooSmall(n1) ? 1.0F
                          : CorrelationPValue(hypotheses, sample.Correlation(), FisherZError(n1));
}

void PARNOR2CORREL::SimInterval() {
    const i16 n = SimSize1(1);
    DrawPairs(n, Correlation(), true);
    if (IsTooSmall(n))
        return JudgeNoData();
    constexpr f64 most{0.99999F};
    const f64 r = MaxOf(-most, MinOf(most, sample.Correlation()));
    if (!IsInterval())
        return JudgeByProbability(r - simulated, CorrelationErrorEq(r, FisherZError(n)));
    // tanh of z less and more half the width.
    const f64 factor = std::exp(2 * f64{NorInv(PrecisionLevel())} * f64{FisherZError(n)});
    const auto limit = [odds = (1 + r) / (1 - r)](f64 f) {
        return (odds * f - 1) / (odds * f + 1);
    };
    JudgeInterval(r - simulated, r - limit(1 / factor), limit(factor) - r);
}

// --- Regression -------------------------------------------------------------------------------

void PARNOR2REGRESS::SetupTest() {
    OfferTestOrPrecision(OneSlopeKinds);
}

void PARNOR2REGRESS::SetParList() {
    hypotheses = StartTestOrPrecision(OneSlopeKinds, EffectScale::Plain, Precision::Absolute);
    residualSd = AddPar(Kind::ResidualSd);
    covariateSd = AddPar(Kind::CovariateSd);
    pairs = AddPar(Kind::Size);
    AddWidthProbability();
}

bool PARNOR2REGRESS::CheckPar() {
    return CheckTest(hypotheses);
}

void PARNOR2REGRESS::SearchLimits(f64& lower, f64& upper) {
    NarrowTest(hypotheses, lower, upper);
    NarrowPairs(lower, upper, &RootFunction);
}

f64 PARNOR2REGRESS::RootFunction() {
    const f64 residual{Single(ParValue(residualSd))};
    const f64 covariate{Single(ParValue(covariateSd))};
    return StudentRoot(SlopeError(residual, covariate, Pairs()), Pairs() - 2);
}

void PARNOR2REGRESS::GetSimPar() {
    PrepareTruth(0);
}

void PARNOR2REGRESS::SimSample(i16 n1, i16, bool isH1) {
    DrawPairs(n1, 0, isH1);
}

namespace {

SlopeEstimate SampleSlope() {
    return EstimateSlope(sample, simulated, f64{Single(ParValue(residualSd))},
                         f64{Single(ParValue(covariateSd))});
}

} // namespace

f32 PARNOR2REGRESS::SimTest(i16 n1, i16) {
    if (n1 == 0)
        return 1;
    const SlopeEstimate estimate = SampleSlope();
    return StudentPValue(hypotheses, estimate.Slope, estimate.Se, estimate.Df);
}

void PARNOR2REGRESS::SimInterval() {
    DrawPairs(SimSize1(1), 0, true);
    const SlopeEstimate estimate = SampleSlope();
    JudgeStudent(estimate.Slope - simulated, estimate.Se, estimate.Df);
}

} // namespace quorvanta
