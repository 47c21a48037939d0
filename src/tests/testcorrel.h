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
};

} // namespace quorvanta
