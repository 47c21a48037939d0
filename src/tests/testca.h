// TESTCA: the test of W. G. Cochran (Biometrics 10, 1954, 417-451) and P. Armitage (Biometrics 11,
// 1955, 375-386) of a trend of proportions over ordered groups.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTCA {
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

// The step that one event more or less makes in the trend: the least distance of two group levels
// with the continuity correction; 0 without it.
f64 CaCorrection();

} // namespace quorvanta
