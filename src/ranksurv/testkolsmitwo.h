// Tests whether two samples follow one distribution, whatever the difference, which exist as
// simulations only: TESTKOLSMITWO by the distance of their distribution functions, TESTWALDWOLF by
// the runs of one sample in their common order.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>

namespace quorvanta {

struct TwoDistributionsTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The distribution of sample 2 is chosen beside the power, which is estimated; that of sample 1
    // is the same, not shifted.
    static bool IsTablePar(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
};

struct TESTKOLSMITWO : TwoDistributionsTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTWALDWOLF : TwoDistributionsTest {
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
