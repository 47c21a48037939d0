// PARFINNOR and PARFINITE: test, point estimate and confidence interval of the mean of a finite
// population of known standard deviation, and of the proportion of a finite population that falls
// into a category; samples without replacement.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct PARFINNOR {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

struct PARFINITE {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
