// TESTANOVAREPMEAS1B1W: the analysis of variance of repeated measurements of several groups: the
// factor A between subjects, the factor B within them, and their interaction; and the t-test of a
// linear combination of all means.
#pragma once

#include "core/types.h"
#include "tests/lists/repeated.h"

namespace quorvanta {

struct TESTANOVAREPMEAS1B1W : RepeatedTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
