// TESTKAPPA: the test of the intraclass kappa of two ratings with two categories, whose proportions
// are the same in both ratings.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTKAPPA {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// The least kappa that a proportion 0 < pi < 1 allows: below it a kind of agreement would have a
// negative probability.
f64 LeastKappa(f64 pi);

// Variance of the estimated kappa, times the number of subjects, in large samples.
f64 KappaVar(f64 kappa, f64 pi);

} // namespace quorvanta
