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
    // Groups are drawn with the means of the filled grids, those of a contrast also with its
    // coefficients and standard deviations, as long as these have the effect that is entered.
    // Otherwise with means that have exactly this effect: a standard deviation of the means as that
    // of the first group apart from all others, which share their mean; a difference of any two
    // means between the first and the last group, all others at the weighted mean of these; a
    // smallest difference as that of one group of the smaller size apart from all others; a
    // contrast as the difference of the first two groups. n2 is the size of each group but the
    // first; groups of a contrast all have n1.
    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
    static std::vector<Grid> TableGrids(i16 parNo);
    static TestedMeans Tested();

  private:
    static bool IsWeighted();
};

} // namespace quorvanta
