#include "tests/testregr.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
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

} // namespace quorvanta
