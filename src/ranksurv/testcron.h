// TESTCRON: the tests of Cronbach's alpha, and of two alphas in independent or in the same
// subjects.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTCRON {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// (1 - a1)/(1 - a0); 99999 if a0 is exactly 1.
f32 AlphaRatio(f32 a0, f32 a1);

} // namespace quorvanta
