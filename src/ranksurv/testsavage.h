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

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
