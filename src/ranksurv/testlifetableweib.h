// TESTLIFETABLEWEIB: the life-table test of Mantel and Haenszel for two groups whose survival times
// have Weibull, gamma or lognormal distributions of the same shape.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTLIFETABLEWEIB {
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
