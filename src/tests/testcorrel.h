// TESTCORREL: test of a correlation coefficient, or of the difference of two, on the scale of
// Fisher's z (R. A. Fisher, Metron 1, 1921).
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTCORREL {
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
