// TESTCHI2: the chi-square test of a 2 x 2 table, as a test of the difference of two proportions
// or of two odds.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTCHI2 {
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
extern i16 Chi2Correction;
extern i16 Chi2Odds;
extern i16 Chi2H1Mode; // proportion or odds 2 entered as value (0), difference (1), ratio (2)

} // namespace quorvanta
