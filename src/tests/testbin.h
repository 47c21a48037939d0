// TESTBIN: tests of one or two binomial proportions, or of odds: normal approximation, arc-sine
// transformation, and for one proportion the exact test.
#pragma once

#include "core/types.h"
#include "tests/proportions.h"

namespace quorvanta {

struct TESTBIN {
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
extern i16 BinArcSine;
extern i16 BinCorrection;
extern i16 BinExact;
extern i16 BinH1Mode; // H1 entered as value (0), difference (1), ratio (2)

// One proportion by the exact test, of more than MaxExactSize subjects by its normal form: power
// for NoOfTails and LeftTail minus the power entered. Between two whole sizes on the straight line.
f64 ExactProportionEq(const ProportionValues& values, f32 n, bool corrected);

// Critical values of the exact binomial test: the largest count whose lower tail, and the smallest
// whose upper tail, has at most the probability level under p; -1 and n + 1 if there is none.
i16 BinCritLow(i16 n, f32 level, f32 p);
i16 BinCritHigh(i16 n, f32 level, f32 p);

} // namespace quorvanta
