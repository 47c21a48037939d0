// TESTMANOVAREPMEAS1B1W: the multivariate test of repeated measurements of two groups: the factor B
// within subjects and its interaction with the groups by Hotelling's T^2, the groups by their
// means.
#pragma once

#include "core/types.h"
#include "tests/lists/repeated.h"

namespace quorvanta {

struct TESTMANOVAREPMEAS1B1W : RepeatedTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
