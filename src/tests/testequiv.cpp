#include "tests/testequiv.h"

#include "core/analysis_state.h"
#include "core/options.h"

namespace quorvanta {

namespace {

constexpr i16 checkTwoSidedInterval = 36;
constexpr i16 kindConfidenceLevel = 321;
constexpr i16 kindIntervalPower = 318;
constexpr i16 limitParNo = 2;

bool IsNonInferiority() {
    return (TestNo >= 81 && TestNo <= 84) || TestNo == 122;
}

// The limit of a non-inferiority test stands where the test has its H0 value.
i16 NonInferiorityKind() {
    constexpr i16 difference = 330;
    constexpr i16 ratio = 319;
    constexpr i16 proportions = 317;
    if (TestNo == 83 || TestNo == 122)
        return proportions;
    return TestNo == 81 ? difference : ratio;
}

} // namespace

void IntervalMember::OfferInterval() {
    OfferTails({IsNonInferiority() ? OneSided : TwoOneSided});
    FixSamples(TwoSamples);
    if (IsNonInferiority())
        OfferChecks({checkTwoSidedInterval});
}

void IntervalMember::NameAsInterval() {
    ParKind(0) = kindConfidenceLevel;
    ParKind(1) = kindIntervalPower;
    if (IsNonInferiority())
        ParKind(limitParNo) = NonInferiorityKind();
}

} // namespace quorvanta
