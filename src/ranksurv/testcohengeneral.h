// TESTCOHEN of general ratings: the test of Cohen's kappa of two raters with any number of
// categories.
#pragma once

#include "core/form.h"
#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTCOHENGENERAL {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

// The marginal proportions of both raters, category by category; each rater's add up to 1.
struct RaterMargins {
    std::vector<f64> First;
    std::vector<f64> Second;
};

// What they allow kappa to be.
Range CohenRange(const RaterMargins& margins);

// The largest variance of the estimated kappa, times the number of subjects, that any table with
// these margins and this kappa has in large samples; with two categories there is one such table.
// NoValue if there is none.
f64 LargestCohenVar(f64 kappa, const RaterMargins& margins);

} // namespace quorvanta
