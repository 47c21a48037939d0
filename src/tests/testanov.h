// TESTANOV: the one-way analysis of variance with fixed effects, without and with a covariate
// (ANCOVA): its F-test, and the t-test of a contrast of the groups.
#pragma once

#include "core/types.h"
#include "tests/lists/anovaeffect.h"

#include <vector>

namespace quorvanta {

struct TESTANOV : AnovaTest<TESTANOV> {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static std::vector<Grid> TableGrids(i16 parNo);
    static TestedMeans Tested();

  private:
    static bool IsWeighted();
};

} // namespace quorvanta
