// TESTCOHEN: the test of Cohen's kappa of two raters, with two categories.
#pragma once

#include "core/form.h"
#include "core/types.h"

namespace quorvanta {

struct TESTCOHEN {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// What marginal proportions a and b of two raters, 0 < a, b < 1, allow kappa to be.
Range CohenRange(f64 a, f64 b);

// Variance of the estimated kappa, times the number of subjects, in large samples.
f64 CohenVar(f64 kappa, f64 a, f64 b);

} // namespace quorvanta
