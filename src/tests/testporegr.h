// TESTPOREGR: Wald test of one coefficient of a Poisson regression beside others, of a covariate
// that is normal or that has two values, with or without overdispersion.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTPOREGR {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
