// TESTNORMSCORE: the normal scores test of two samples. It exists as a simulation only.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>
#include <vector>

namespace quorvanta {

struct TESTNORMSCORE {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The family of both samples is chosen beside the shift, which keeps its value.
    static bool IsTablePar(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    static std::vector<NamedDistr> GroupDistr();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
