#include "tests/tests2.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "tests/lists/means.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds DeviationTest{EffectScale::Log,
                                        {Group::H1Sd,
                                         Kind::H0Sd,
                                         {Kind::H1Sd, Kind::H1SdMinusH0, Kind::H1SdOverH0},
                                         Kind::SdLeftLimit,
                                         Kind::SdRightLimit},
                                        TwoSdsKinds,
                                        SizeKinds};

SampleTest list;

} // namespace

void TESTS2::SetupTest() {
    SampleTest::Offer(DeviationTest);
}

void TESTS2::SetParList() {
    list.Build(DeviationTest);
}

bool TESTS2::CheckPar() {
    return list.Check();
}

void TESTS2::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

// df estimated variance / true variance is chi-square, the ratio of two such over their df F
// distributed (A. M. Mood, F. A. Graybill and D. C. Boes, Introduction to the Theory of Statistics,
// 3rd edition, 1974, chapter VI).
f64 TESTS2::RootFunction() {
    constexpr i16 meanKnown = 2;
    return ScalePowerEq(StatisticOf(list.Sizes, 1, ParListNo == meanKnown), list, 2);
}

} // namespace quorvanta
