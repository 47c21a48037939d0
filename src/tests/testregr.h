// TESTREGR: Student's t-test of the slope of a simple linear regression, or of the difference of
// the slopes in two samples whose residuals have the same standard deviation.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTREGR {
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
