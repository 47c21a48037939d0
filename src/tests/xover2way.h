// XOVER2WAY and XOVER2WAYLOG: t-tests of the treatment effect in a crossover design with two
// treatments, two periods and two sequences: of a difference of means, and of a ratio of medians on
// the log scale.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct XOVER2WAY {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

struct XOVER2WAYLOG : XOVER2WAY {
    static void SetupTest();
    static void SetParList();
};

} // namespace quorvanta
