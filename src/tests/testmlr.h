// TESTMLR: F-test that the first p of the p + q coefficients of a multiple linear regression are 0,
// by the multiple correlations of the outcome with all covariates and with the q others.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTMLR {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
