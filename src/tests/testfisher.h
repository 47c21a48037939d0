// TESTFISHER: Fisher's exact test of two proportions or odds, with the power of the test under two
// binomial samples: by enumeration of all tables up to 50 subjects in each group, above by the
// arc-sine form.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTFISHER {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);

    // The largest group whose tables are all enumerated.
    static i16 ExactUpTo() { return 50; }
    static const char* Approximation() { return "normal approximation on the arc-sine scale"; }
};

// The chosen forms, as the current parameter list was built from them; 1: the box is ticked.
extern i16 FisherOdds;
extern i16 FisherH1Mode; // proportion or odds 2 entered as value (0), difference (1), ratio (2)

// P(X1 = x1 | X1 + X2 = t) with equal proportions: hypergeometric; 0 outside the range of x1.
// 0 <= t <= n1 + n2 <= 1029.
f32 FisherCond(i16 n1, i16 n2, i16 x1, i16 t);

} // namespace quorvanta
