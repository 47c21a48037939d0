// TESTANOVA3W: the additive three-way analysis of variance with fixed effects: the main effect of
// one of the factors, or a contrast of its means.
#pragma once

#include "core/types.h"
#include "tests/lists/anovaeffect.h"

namespace quorvanta {

struct TESTANOVA3W : AnovaTest<TESTANOVA3W> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

} // namespace quorvanta
