// Rank tests of the scales of two samples, which exist as simulations only: TESTSIEGEL, TESTANSARI,
// TESTKLOTZ, TESTMOOD and TESTCONOVER. The median is the same in both.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>
#include <vector>

namespace quorvanta {

struct RankScaleTest {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The family of both samples is chosen beside the second scale, which keeps its value.
    static bool IsTablePar(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    static std::vector<NamedDistr> GroupDistr();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
};

struct TESTSIEGEL : RankScaleTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTANSARI : RankScaleTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTKLOTZ : RankScaleTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTMOOD : RankScaleTest {
    static f32 SimTest(i16 n1, i16 n2);
};
struct TESTCONOVER : RankScaleTest {
    static f32 SimTest(i16 n1, i16 n2);
};

// Mean and standard error of the sum of the Ansari-Bradley scores of group 2 where both scales are
// equal; n1 + n2 at least 3.
struct RankStatistic;
RankStatistic AnsariMoments(i16 n1, i16 n2);

} // namespace quorvanta
