#include "tests/testchi2.h"

#include "core/analysis_state.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"
#include "tests/proportions.h"

namespace quorvanta {

i16 Chi2Correction;
i16 Chi2Odds;
i16 Chi2H1Mode;

namespace {

constexpr i16 groupSize2 = 2;
constexpr i16 checkCorrection = 1;
constexpr i16 checkOdds = 9;

constexpr i16 kindAlpha = 0;
constexpr i16 kindPower = 1;

ProportionList list;
i16 size1;

} // namespace

void TESTCHI2::SetupTest() {
    FixSamples(TwoSamples);
    OfferChecks({checkCorrection, checkOdds});
    OfferTwoProportions(Ticked(checkOdds));
    OfferGroups({groupSize2});
}

void TESTCHI2::SetParList() {
    Chi2Correction = Ticked(checkCorrection) ? 1 : 0;
    Chi2Odds = Ticked(checkOdds) ? 1 : 0;
    StartParList();
    AddPar(kindAlpha);
    AddPar(kindPower);
    list = AddTwoProportions(Chi2Odds == 1,
                             Chi2Odds == 1 ? NullDifference::Zero : NullDifference::Entered);
    Chi2H1Mode = list.Mode;
    size1 = AddTwoSizes();
}

bool TESTCHI2::CheckPar() {
    return CheckTwoSamples(list, size1);
}

void TESTCHI2::SearchLimits(f64& lower, f64& upper) {
    LimitTwoSamples(list, size1, lower, upper, RootFunction);
}

f64 TESTCHI2::RootFunction() {
    const f32 n1 = Single(ParValue(size1));
    const f32 n2 = ParDep(static_cast<i16>(size1 + 1), n1, WorkNo);
    return TwoProportionsEq(ReadProportions(list), n1, n2, 1, 1, Chi2Correction == 1);
}

} // namespace quorvanta
