// TESTLOGRANKNONINF: the log-rank test of non-inferiority, of a hazard ratio against a margin.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTLOGRANKNONINF {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// The probability of an event until the end of the study: exponential survival with the hazard,
// uniform accrual over a first part of the total time. Above 0.
f64 EventProbability(f64 hazard, f64 accrualTime, f64 totalTime);

} // namespace quorvanta
