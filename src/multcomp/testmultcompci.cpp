#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "multcomp/testmultcomp.h" // IWYU pragma: associated
#include "numeric/rounding.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"

#include <cmath>

namespace quorvanta {

namespace {

i16 width;
i16 deviation;
i16 groups;
i16 perGroup; // position of the size of all groups; 0: the control has its own
SampleValues sizes;

bool HasControl() {
    return perGroup == 0;
}

f32 Size() {
    return HasControl() ? sizes.First() : Single(ParValue(perGroup));
}

f32 OtherSize() {
    return HasControl() ? sizes.Second() : Size();
}

bool IsSizeUnknown() {
    return UnknownParNo == (HasControl() ? sizes.FirstParNo() : perGroup);
}

} // namespace

void TESTMULTCOMPCI::SetupTest() {
    FixMethod();
    FixSamples(MoreSamples);
    SamplesShown = false;
    OfferTails({TwoSided});
    TailsShown = false;
    if (MultCompKind() == Comparison::ControlInterval)
        OfferGroups({Group::SizeK});
}

void TESTMULTCOMPCI::SetParList() {
    StartParList();
    AddPar(Kind::ConfidenceLevel);
    AddPar(Kind::CoverageAndWidthProbability);
    width = AddPar(Kind::IntervalWidth);
    deviation = AddPar(Kind::Sd);
    groups = AddPar(Kind::LevelsA);
    WorkNo = ChosenOption(Group::SizeK);
    perGroup = 0;
    sizes = SampleValues();
    if (MultCompKind() == Comparison::ControlInterval)
        sizes = AddPair(GroupSizeKinds);
    else
        perGroup = AddPar(Kind::SizePerGroup);
}

bool TESTMULTCOMPCI::CheckPar() {
    return !HasControl() || sizes.Check();
}

// Half a width of five standard errors is beyond every critical value that is searched. A higher
// level makes the intervals wider, and a lower one lets them miss: of the two levels with the same
// probability the higher one is meant.
void TESTMULTCOMPCI::SearchLimits(f64& lower, f64& upper) {
    constexpr f64 mostErrors = 5;
    if (HasControl())
        sizes.Narrow(lower, upper);
    if (UnknownParNo == LevelParNo) {
        lower = HighestPoint(lower, upper, &RootFunction);
        return;
    }
    const f64 w = ParValue(width);
    const f64 sd = ParValue(deviation);
    // The standard error of a difference, in standard deviations.
    const auto error = [] { return std::sqrt(2 / f64{Size()}); };
    if (UnknownParNo == width)
        upper = MinOf(upper, 2 * mostErrors * sd * error());
    if (UnknownParNo == deviation)
        lower = MaxOf(lower, w / 2 / mostErrors / error());
    if (IsSizeUnknown())
        upper = MinOf(upper, 8 * mostErrors * mostErrors * sd * sd / (w * w));
}

f64 TESTMULTCOMPCI::RootFunction() {
    return McIntervalRoot(Size(), OtherSize());
}

} // namespace quorvanta
