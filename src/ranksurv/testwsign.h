// TESTWSIGN: Wilcoxon's signed-rank test of a median.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>

namespace quorvanta {

struct TESTWSIGN {
    static void SetupTest();
    static void SetParList();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);

    static bool IsTablePar(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

} // namespace quorvanta
