// PAREXP: point estimates of, and confidence intervals for, the location and the scale of an
// exponential distribution, the scale of one sample or the ratio of two (B. Epstein and M. Sobel,
// Annals of Mathematical Statistics 25, 1954).
#pragma once

#include "core/types.h"

namespace quorvanta {

struct PAREXP {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimInterval();
};

} // namespace quorvanta
