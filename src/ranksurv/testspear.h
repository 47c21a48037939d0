// TESTSPEAR: the test of Spearman's rank correlation rho.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTSPEAR {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// Spearman's rho of a normal distribution with correlation r, -2 <= r <= 2; beyond -1 and 1, where
// only equivalence limits lie, the curve goes on.
f32 RhoFromR(f32 r);

// Distance of a rank correlation r, -1 < r < 1, from r0 in standard errors with n > 2 subjects.
f32 RankCorrZ(f32 n, f32 r, f32 r0);

} // namespace quorvanta
