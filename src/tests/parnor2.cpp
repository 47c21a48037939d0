#include "tests/parnor2.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
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
    const f64 z = FisherZ(r);
    if (IsInterval()) {
        const f64 half = HalfWidth();
        return WidthEq(r - std::tanh(z - half), std::tanh(z + half) - r);
    }
    // No estimate lies outside -1..1.
    const auto below = [=](f64 edge) {
        if (std::fabs(edge) >= 1)
            return edge > 0 ? 1.0 : 0.0;
        return f64{NorCdf(Single((FisherZ(edge) - z) / f64{se}))};
    };
    return ErrorProbabilityEq(below(r - ParValue(1)), below(r + ParValue(1)));
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

} // namespace quorvanta
