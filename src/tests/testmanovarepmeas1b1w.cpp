#include "tests/testmanovarepmeas1b1w.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

#include <string>

namespace quorvanta {

namespace {

constexpr i16 TwoGroups = 2;

i16 sd; // position, of the test of the groups
i16 size;

bool TestsGroups() {
    return !IsLinearCombination() && Tested() == TestedFactor::Between;
}

// The number of groups that other tests have left there would only be refused.
void StartWithTwoGroups() {
    std::string& text = ParText(Kind::LevelsA);
    if (ReadNumber(text) != TwoGroups)
        text = std::to_string(TwoGroups);
}

} // namespace

void TESTMANOVAREPMEAS1B1W::SetupTest() {
    Offer(TwoSamples);
    if (!IsLinearCombination())
        OfferGroups({Group::TestedBetweenOrWithin});
    if (TestsGroups())
        OfferGroups({Group::EffectSize});
}

void TESTMANOVAREPMEAS1B1W::SetParList() {
    if (IsLinearCombination())
        StartWithCombination();
    else if (TestsGroups())
        StartWithEffect();
    else
        StartWithDistance(true);
    if (TestsGroups())
        sd = AddPar(Kind::Sd);
    const bool hasDistance = !IsLinearCombination() && !TestsGroups();
    AddGroups(hasDistance ? MeanRows::TwoGroups : MeanRows::LevelsOfFactor);
    List().MaxGroups = TwoGroups;
    StartWithTwoGroups();
    if (!TestsGroups())
        AddLevels();
    size = AddPar(Kind::TotalSize);
}

bool TESTMANOVAREPMEAS1B1W::CheckPar() {
    return CheckList() && (UnknownParNo == List().Groups || CheckEqual(List().Groups, TwoGroups));
}

void TESTMANOVAREPMEAS1B1W::SearchLimits(f64& lower, f64& upper) {
    // There is nothing to be found.
    if (UnknownParNo == List().Groups) {
        upper = lower;
        return;
    }
    NarrowList(lower, upper, &RootFunction);
}

// Half of the subjects are in each group. The degrees of freedom of the error are those of one
// group, one more than two groups leave, deliberately.
f64 TESTMANOVAREPMEAS1B1W::RootFunction() {
    const f64 n{Single(ParValue(size))};
    const f32 half = Single(n / TwoGroups);
    if (IsLinearCombination())
        return CombinationEq(f64{half}, Single(n - TwoGroups));
    if (TestsGroups())
        return AnovEq(OneWayDesign(TwoGroups, half, half), List().Type, Effect(),
                      Single(ParValue(sd)));
    const f64 b{Levels()};
    return HotellingEq(Single(b - 1), n - 1 - (b - 1) + 1, f64{Effect()} * n / 4);
}

} // namespace quorvanta
