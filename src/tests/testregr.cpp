#include "tests/testregr.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/association.h"
#include "tests/lists/regression.h"
#include "tests/lists/turningpoint.h"
#include "tests/studenttest.h"

#include <cmath>

namespace quorvanta {

namespace {

Hypotheses hypotheses;
i16 residualSd;
SampleValues covariateSds;
SampleValues sizes;

// At least as many as leave a residual degree of freedom.
f64 Size(f32 entered) {
    return f64{MaxSingle(3, entered)};
}

// Information on the slope in a sample, without the variance of the residuals.
f64 Information(f64 n, f32 covariateSd) {
    return n * f64{covariateSd} * f64{covariateSd};
}

// --- Its simulation ------------------------------------------------------------------------------

// Covariate and residual of each sample, both standard normal.
PairMoments first;
PairMoments second;
f64 slope = 0; // the true one of the study, or the difference of two

} // namespace

void TESTREGR::SetupTest() {
    OfferSamples({OneSample, TwoSamples});
    if (NoOfSamples == OneSample)
        OfferForms(OneSlopeKinds);
    else
        OfferForms(TwoSlopesKinds);
    OfferForms(CovariateSdKinds);
    OfferForms(SizeKinds);
}

void TESTREGR::SetParList() {
    StartTestList();
    hypotheses = NoOfSamples == OneSample ? AddHypotheses(OneSlopeKinds, EffectScale::Plain)
                                          : AddHypotheses(TwoSlopesKinds, EffectScale::Plain);
    residualSd = AddPar(Kind::ResidualSd);
    covariateSds = AddSampleValues(CovariateSdKinds);
    sizes = AddSizes();
}

bool TESTREGR::CheckPar() {
    return hypotheses.Check() && covariateSds.Check() && sizes.Check();
}

void TESTREGR::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper);
    covariateSds.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
    if (sizes.FirstIsUnknown())
        StartWherePowerRises(lower, upper, &RootFunction);
}

// The slopes of two samples have a pooled residual variance (N. R. Draper and H. Smith, Applied
// Regression Analysis, 2nd edition, 1981, chapter 1; W. D. Dupont and W. D. Plummer, Controlled
// Clinical Trials 19, 1998, 589-601).
f64 TESTREGR::RootFunction() {
    const f64 residual{Single(ParValue(residualSd))};
    const f64 n1{sizes.First()};
    if (!sizes.HasSecond())
        return StudentTestEq(hypotheses, SlopeError(residual, f64{covariateSds.First()}, n1),
                             n1 - 2);
    const f64 size1 = Size(sizes.First());
    const f64 size2 = Size(sizes.Second());
    const f64 se = residual * std::sqrt(1 / Information(size1, covariateSds.First()) +
                                        1 / Information(size2, covariateSds.Second()));
    return StudentTestEq(hypotheses, Single(se), size1 + size2 - 4);
}

// The covariate is observed, and normal: with few subjects its standard deviation, and with it the
// power, varies around the one that is entered.
void TESTREGR::GetSimPar() {
    SimLoc1 = Single(hypotheses.NullTruth());
    SimLoc2 = Single(hypotheses.Truth());
}

// Only group 2 has a slope, the difference of the two.
void TESTREGR::SimSample(i16 n1, i16 n2, bool isH1) {
    if (SimStage == 1)
        first = second = {};
    first.Add(DrawPairMoments(n1, 0));
    second.Add(DrawPairMoments(n2, 0));
    slope = f64{isH1 ? SimLoc2 : SimLoc1};
}

f32 TESTREGR::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || (sizes.HasSecond() && n2 == 0))
        return 1;
    const f64 residual{Single(ParValue(residualSd))};
    if (!sizes.HasSecond()) {
        const SlopeEstimate estimate =
            EstimateSlope(first, slope, residual, f64{covariateSds.First()});
        return StudentPValue(hypotheses, estimate.Slope, estimate.Se, estimate.Df);
    }
    const f64 df = first.First.Size + second.First.Size - 4;
    if (df < 1 || first.First.Squares == 0 || second.First.Squares == 0)
        return 1;
    const f64 unit1 = residual / f64{covariateSds.First()};
    const f64 unit2 = residual / f64{covariateSds.Second()};
    const f64 difference = slope + unit2 * second.Slope() - unit1 * first.Slope();
    const f64 error = (first.Residual() + second.Residual()) / df;
    const f64 se = std::sqrt(
        error * (unit1 * unit1 / first.First.Squares + unit2 * unit2 / second.First.Squares));
    return StudentPValue(hypotheses, difference, se, df);
}

} // namespace quorvanta
