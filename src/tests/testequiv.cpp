#include "tests/testequiv.h"

#include "core/analysis_state.h"
#include "core/options.h"
#include "tests/testbin.h"
#include "tests/testbioeq.h"
#include "tests/testlnorm.h"
#include "tests/testpairbin.h"
#include "tests/teststud.h"

namespace quorvanta {

namespace {

constexpr i16 checkTwoSidedInterval = 36;
constexpr i16 kindConfidenceLevel = 321;
constexpr i16 kindIntervalPower = 318;
constexpr i16 limitParNo = 2;

// A member: its engine works on these kinds of limits.
struct NotServed {};

template <class Operation>
auto WithMember(Operation operation) {
    switch (TestNo) {
    case 74:
    case 81:
        return operation.template operator()<TESTSTUD>();
    case 75:
    case 82:
        return operation.template operator()<TESTLNORM>();
    case 76:
    case 83:
        return operation.template operator()<TESTBIN>();
    case 79:
        return operation.template operator()<TESTBIOEQ>();
    case 121:
    case 122:
        return operation.template operator()<TESTPAIRBIN>();
    default:
        return operation.template operator()<NotServed>();
    }
}

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

void TESTEQUIV::SetupTest() {
    OfferTails({IsNonInferiority() ? OneSided : TwoOneSided});
    FixSamples(TwoSamples);
    if (IsNonInferiority())
        OfferChecks({checkTwoSidedInterval});
    WithMember([]<class Member>() {
        if constexpr (requires { Member::SetupTest(); })
            Member::SetupTest();
    });
}

void TESTEQUIV::SetParList() {
    WithMember([]<class Member>() {
        if constexpr (requires { Member::SetParList(); })
            Member::SetParList();
    });
    ParKind(0) = kindConfidenceLevel;
    ParKind(1) = kindIntervalPower;
    if (IsNonInferiority())
        ParKind(limitParNo) = NonInferiorityKind();
}

bool TESTEQUIV::CheckPar() {
    return WithMember([]<class Member>() {
        if constexpr (requires { Member::CheckPar(); })
            return Member::CheckPar();
        else
            return true;
    });
}

void TESTEQUIV::SearchLimits(f64& lower, f64& upper) {
    WithMember([&lower, &upper]<class Member>() {
        if constexpr (requires { Member::SearchLimits(lower, upper); })
            Member::SearchLimits(lower, upper);
    });
}

f64 TESTEQUIV::RootFunction() {
    return WithMember([]<class Member>() -> f64 {
        if constexpr (requires { Member::RootFunction(); })
            return Member::RootFunction();
        else
            return 0;
    });
}

bool TESTEQUIV::IsServed() {
    return WithMember([]<class Member>() {
        return requires {
            Member::RootFunction();
        };
    });
}

} // namespace quorvanta
