// TESTANOVAREPMEAS1W: the analysis of variance of repeated measurements of one group, with the
// degrees of freedom corrected by Greenhouse and Geisser's epsilon; and the t-test of a linear
// combination of the measurements.
#pragma once

#include "core/types.h"
#include "tests/lists/repeated.h"

namespace quorvanta {

struct TESTANOVAREPMEAS1W : RepeatedTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
