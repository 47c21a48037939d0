// TESTKENDALL: the test of Kendall's rank correlation tau.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTKENDALL {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// Standard deviation of the statistic without association, as the last call of the equation had it.
extern f32 KendallSD;

} // namespace quorvanta
