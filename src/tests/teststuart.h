// TESTSTUART: the test of Stuart and Maxwell of equal marginal distributions of two measurements of
// the same subjects, in the same categories (A. Stuart, Biometrika 42, 1955, 412-416; A. E.
// Maxwell, British Journal of Psychiatry 116, 1970, 651-655).
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTSTUART {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
