// TESTCHI2INDEP: the chi-square test of independence of two categorical variables.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTCHI2INDEP {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

} // namespace quorvanta
