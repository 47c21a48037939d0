// PARFINNOR and PARFINITE: test, point estimate and confidence interval of the mean of a finite
// population of known standard deviation, and of the proportion of a finite population that falls
// into a category; samples without replacement.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct PARFINNOR {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
    static void SimInterval();
};

struct PARFINITE {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
    static void SimInterval();
};

} // namespace quorvanta
