// TESTHYPER: tests of one or two proportions in samples from finite populations: normal
// approximation with the finite population correction, and for one proportion the exact test.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTHYPER {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// The chosen forms, as the current parameter list was built from them; 1: the box is ticked.
extern i16 HyperCorrection;
extern i16 HyperExact;
extern i16 HyperH1Mode; // H1 entered as value (0), difference (1), ratio (2)

} // namespace quorvanta
