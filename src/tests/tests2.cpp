#include "tests/tests2.h"

#include "core/analysis_state.h"
#include "tests/lists/hypotheses.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds kinds{EffectScale::Log,
                                {3, 110, {111, 112, 113}, 116, 117},
                                {13, 114, 115, 139, {140, 0, 0}, 116, 117},
                                SizeKinds};

SampleTest list;

} // namespace

void TESTS2::SetupTest() {
    SampleTest::Offer(kinds);
}

void TESTS2::SetParList() {
    list.Build(kinds);
}

bool TESTS2::CheckPar() {
    return list.Check();
}

void TESTS2::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

f64 TESTS2::RootFunction() {
    constexpr i16 meanKnown = 2;
    return ScalePowerEq(StatisticOf(list.Sizes, 1, ParListNo == meanKnown), list, 2);
}

} // namespace quorvanta
