// TESTEXPSCALE: tests of the scale (mean) of an exponential distribution, or of the ratio of two,
// with known or estimated location (B. Epstein and M. Sobel, Life testing, Journal of the American
// Statistical Association 48, 1953; with estimated location Annals of Mathematical Statistics 25,
// 1954).
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTEXPSCALE {
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
