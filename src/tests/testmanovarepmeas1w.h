// TESTMANOVAREPMEAS1W: the multivariate test of repeated measurements of one group: Hotelling's T^2
// of the contrasts between the levels, whatever their covariances.
#pragma once

#include "core/types.h"
#include "tests/lists/repeated.h"

namespace quorvanta {

struct TESTMANOVAREPMEAS1W : RepeatedTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
