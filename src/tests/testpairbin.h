// TESTPAIRBIN: tests of the difference of two proportions in pairs of observations.
//
// d = p2 - p1 is the difference of the probabilities of the two kinds of discordant pairs, p10 -
// p01, and s their sum.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTPAIRBIN {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
