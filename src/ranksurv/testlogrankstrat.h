// TESTLOGRANKSTRAT: the stratified log-rank test, without a model of survival and with exponential
// survival in each stratum.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTLOGRANKSTRAT {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    static void RenewTablePars();
};

// The effect in one stratum, and its variance under H0 and H1 when the study has one patient, of
// whom the stratum has its share.
struct StratumEffect {
    f64 Effect;
    f64 Variance0;
    f64 Variance1;
};

// The weighted effect, and its standard deviations: divided by the root of the total size they are
// its standard errors.
struct WeightedEffect {
    f64 Effect;
    f64 Sd0;
    f64 Sd1;
};

// Each stratum counts by the inverse of its variance under H0. One stratum is its own mean.
WeightedEffect WeightedBy(const std::vector<StratumEffect>& strata);

} // namespace quorvanta
