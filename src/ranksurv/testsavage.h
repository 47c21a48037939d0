// TESTSAVAGE: Savage's test of the scales of two exponential distributions.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTSAVAGE {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
