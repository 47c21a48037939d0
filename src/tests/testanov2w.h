// TESTANOV2W: the two-way analysis of variance with fixed effects, with or without interaction: a
// main effect, the interaction, or a contrast of the means of one of them.
#pragma once

#include "core/types.h"
#include "tests/lists/anovaeffect.h"

namespace quorvanta {

struct TESTANOV2W : AnovaTest<TESTANOV2W> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

} // namespace quorvanta
