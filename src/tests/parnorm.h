// PARNORM and PARLNORM: point estimates of, and confidence intervals for, the mean and the standard
// deviation of a normal distribution and the median of a lognormal one, of one sample or of two
// compared.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct PARNORM {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimInterval();
};

struct PARLNORM {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static void GetSimPar();
    static void SimInterval();
};

} // namespace quorvanta
