// TESTANOVARANDBLOCK, TESTANOVARANDBLOCK2W: the analysis of variance of randomized complete blocks
// with one and with two treatment factors: an effect of the treatments, or a contrast of its means.
#pragma once

#include "core/types.h"
#include "tests/lists/anovaeffect.h"

namespace quorvanta {

struct TESTANOVARANDBLOCK : AnovaTest<TESTANOVARANDBLOCK> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

struct TESTANOVARANDBLOCK2W : AnovaTest<TESTANOVARANDBLOCK2W> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

} // namespace quorvanta
