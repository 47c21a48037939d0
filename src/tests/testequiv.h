// TESTEQUIV: equivalence and non-inferiority stated through a confidence interval. Its members run
// on the engines of the corresponding tests; the level is that of an interval, and the power is
// the probability that the interval lies within the limits.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTEQUIV {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    // True if the engine of the current member exists.
    static bool IsServed();
};

} // namespace quorvanta
