#include "tests/testequiv.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"

// The interval within the limits and the two one-sided tests are the same decision (W. J. Westlake,
// Biometrics 37, 1981, 589-594; D. J. Schuirmann, Journal of Pharmacokinetics and Biopharmaceutics
// 15, 1987, 657-680), so that the engines of the tests serve.

namespace quorvanta {

namespace {

constexpr i16 LimitParNo = 2;

bool IsNonInferiority() {
    return (TestNo >= 81 && TestNo <= 84) || TestNo == 122;
}

// The limit of a non-inferiority test stands where the test has its H0 value.
i16 NonInferiorityKind() {
    if (TestNo == 83 || TestNo == 122)
        return Kind::ProportionNonInferiorityLimit;
    return TestNo == 81 ? Kind::MeanNonInferiorityLimit : Kind::RatioNonInferiorityLimit;
}

} // namespace

void IntervalMember::OfferInterval() {
    OfferTails({IsNonInferiority() ? OneSided : TwoOneSided});
    FixSamples(TwoSamples);
    if (IsNonInferiority())
        OfferChecks({Check::TwoSidedInterval});
}

void IntervalMember::NameAsInterval() {
    ParKind(0) = Kind::TestConfidenceLevel;
    ParKind(1) = Kind::ProbabilityWithinLimits;
    if (IsNonInferiority())
        ParKind(LimitParNo) = NonInferiorityKind();
}

} // namespace quorvanta
