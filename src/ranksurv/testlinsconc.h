// TESTLINSCONC: the test of Lin's concordance coefficient: of the agreement of two measurements of
// the same subjects.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTLINSCONC {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// Accuracy, the largest concordance that a location shift u and a scale shift v > 0 leave.
f64 LinAccuracy(f64 u, f64 v);

// Variance of Fisher's z of the estimated concordance rho c, from n > 2 subjects: rho the
// correlation, c > 0 the accuracy, u the location shift. Nowhere below 0.
f64 LinVar(f64 n, f64 rho, f64 c, f64 u);

} // namespace quorvanta
