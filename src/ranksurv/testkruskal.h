// Rank tests of the locations of several groups, which exist as simulations only: TESTKRUSKAL of
// any differences, TESTJONCKTERP of an order.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>
#include <vector>

namespace quorvanta {

struct RankGroupsTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The standard deviation of the locations derives from a grid of them; the family is chosen
    // beside the scale, which keeps its value.
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    static std::vector<NamedDistr> GroupDistr();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
};

struct TESTKRUSKAL : RankGroupsTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTJONCKTERP : RankGroupsTest {
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
