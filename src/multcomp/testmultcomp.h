// TESTMULTCOMP: multiple comparisons of means.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Simultaneous confidence intervals of the comparisons of a one-way analysis of variance: with a
// control, of all pairs, with the best. Asked for is the probability that all of them cover and
// are narrower than a width.
struct TESTMULTCOMPCI {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
