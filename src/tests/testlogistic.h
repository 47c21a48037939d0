// TESTLOGISTIC: Wald test of one coefficient of a logistic regression beside others, of a covariate
// that is normal or that has two values.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTLOGISTIC {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
