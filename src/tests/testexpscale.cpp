#include "tests/testexpscale.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "tests/lists/hypotheses.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

constexpr SampleTestKinds ScaleTest{EffectScale::Log,
                                    {Group::H1Scale,
                                     Kind::H0Scale,
                                     {Kind::H1Scale, Kind::H1ScaleMinusH0, Kind::H1ScaleOverH0},
                                     Kind::ScaleLeftLimit,
                                     Kind::ScaleRightLimit},
                                    {Group::H1Scale2,
                                     Kind::H0Scale2Over1,
                                     Kind::H1Scale2Over1,
                                     Kind::H1Scale1,
                                     {Kind::H1Scale2, NoKind, NoKind},
                                     Kind::ScaleLeftLimit,
                                     Kind::ScaleRightLimit},
                                    SizeKinds};

SampleTest list;

} // namespace

void TESTEXPSCALE::SetupTest() {
    SampleTest::Offer(ScaleTest);
}

void TESTEXPSCALE::SetParList() {
    list.Build(ScaleTest);
}

bool TESTEXPSCALE::CheckPar() {
    return list.Check();
}

void TESTEXPSCALE::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

// 2 n estimate / scale is chi-square with 2 n df, with 2 (n - 1) where the location is estimated
// (B. Epstein and M. Sobel, Annals of Mathematical Statistics 25, 1954, 373-381).
f64 TESTEXPSCALE::RootFunction() {
    constexpr i16 locationKnown = 1;
    return ScalePowerEq(StatisticOf(list.Sizes, 2, ParListNo == locationKnown), list, 1);
}

} // namespace quorvanta
