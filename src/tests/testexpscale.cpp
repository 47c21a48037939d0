#include "tests/testexpscale.h"

#include "core/analysis_state.h"
#include "tests/lists/hypotheses.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds kinds{EffectScale::Log,
                                {15, 142, {124, 125, 126}, 129, 130},
                                {16, 127, 128, 26, {141, 0, 0}, 129, 130},
                                SizeKinds};

SampleTest list;

} // namespace

void TESTEXPSCALE::SetupTest() {
    SampleTest::Offer(kinds);
}

void TESTEXPSCALE::SetParList() {
    list.Build(kinds);
}

bool TESTEXPSCALE::CheckPar() {
    return list.Check();
}

void TESTEXPSCALE::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

f64 TESTEXPSCALE::RootFunction() {
    constexpr i16 locationKnown = 1;
    return ScalePowerEq(StatisticOf(list.Sizes, 2, ParListNo == locationKnown), list, 1);
}

} // namespace quorvanta
