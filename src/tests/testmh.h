// TESTMH: the test of N. Mantel and W. Haenszel (Journal of the National Cancer Institute 22, 1959,
// 719-748) of two proportions over several strata.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTMH {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// 1: the box of the continuity correction was ticked for the current parameter list.
extern i16 MhCorrection;

} // namespace quorvanta
