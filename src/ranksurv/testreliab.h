// TESTRELIAB: the test of an intraclass correlation coefficient, by the F-test of a one-way
// analysis of variance of subjects, each of whom several raters rate.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTRELIAB {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
