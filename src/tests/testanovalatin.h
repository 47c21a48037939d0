// TESTANOVALATIN, TESTANOVALATINREPL, TESTANOVALATINREPLRAND: the analysis of variance of one Latin
// square and of several: the treatments, or a contrast of their means.
#pragma once

#include "core/types.h"
#include "tests/lists/anovaeffect.h"

namespace quorvanta {

// A single square.
struct TESTANOVALATIN : AnovaTest<TESTANOVALATIN> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

// Squares of which each has rows and columns of its own, or which all have the same: "Squares As
// Factor Levels".
struct TESTANOVALATINREPL : AnovaTest<TESTANOVALATINREPL> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

// Squares that are the blocks: the levels of a factor, or a random sample of squares.
struct TESTANOVALATINREPLRAND : AnovaTest<TESTANOVALATINREPLRAND> {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();
    static TestedMeans Tested();
};

} // namespace quorvanta
