// TESTSIGN: the sign test of a median, exact up to 1000 subjects.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"
#include "tests/exactsums.h"

#include <optional>

namespace quorvanta {

struct TESTSIGN {
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

    static i16 ExactUpTo() { return MaxExactSize; }
    static const char* Approximation() { return "normal approximation"; }
};

} // namespace quorvanta
