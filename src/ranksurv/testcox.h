// TESTCOX: Wald test of one coefficient of a Cox regression beside others, of a covariate that is
// continuous or that has two values.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTCOX {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// The share of subjects with an event in a study that a share of survival, between 0 and 1, lives
// through where the covariate is 0; where it is 1, as it is for the proportion q, the hazard is the
// ratio times as large. 0 to 1.
f64 CoxEventShare(f64 survival, f64 q, f64 ratio);

} // namespace quorvanta
