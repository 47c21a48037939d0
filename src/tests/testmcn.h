// TESTMCN: McNemar's test of two paired proportions, planned with the probabilities of the two
// kinds of discordant pairs.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTMCN {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

} // namespace quorvanta
