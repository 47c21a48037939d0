// TESTCHI2GOF: the chi-square test of goodness of fit, of a 1 x C table and of a discrete or a
// continuous distribution whose values are put into categories.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTCHI2GOF {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

} // namespace quorvanta
