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

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
