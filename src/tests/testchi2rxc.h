// TESTCHI2RXC: the chi-square test of homogeneity of an R x C table: do R groups have the same
// proportions of C categories?
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTCHI2RXC {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

// How the effect is entered, as the current parameter list was built: 0 the standard deviation of
// the proportions, 1 the difference of any two groups, 2 the least difference of one group from all
// others.
extern i16 RxcEffectType;

} // namespace quorvanta
