// TESTHOTELLING1: Hotelling's T^2 test of the means of one group or of the difference of two, and
// the t-test of a linear combination of the variables.
#pragma once

#include "core/types.h"
#include "tests/lists/repeated.h"

namespace quorvanta {

struct TESTHOTELLING1 : RepeatedTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
