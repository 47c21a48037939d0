#include "ranksurv/testlogranknoninf.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "ranksurv/accrual.h"
#include "ranksurv/groupsizes.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr SampleKinds SurvivalKinds{
    NoKind,
    Group::Proportion2,
    Kind::H1Survival1,
    {Kind::H1Survival2, Kind::H1Survival2Minus1, Kind::H1Survival2Over1}};

constexpr i16 margin = 2; // the position

bool givenEvents;
SampleValues survival; // with events: two proportions
i16 hazardRatio;       // with patients: the hazard ratio, the hazard of group 1, times
i16 hazard;
i16 accrualTime;
i16 totalTime;
GroupSizes sizes;

f64 HazardRatio() {
    return givenEvents ? std::log(f64{survival.Second()}) / std::log(f64{survival.First()})
                       : f64{Single(ParValue(hazardRatio))};
}

f64 Events() {
    if (givenEvents)
        return sizes.Total();
    const f64 first{Single(ParValue(hazard))};
    const auto probability = [](f64 rate) {
        return EventProbability(rate, f64{Single(ParValue(accrualTime))},
                                f64{Single(ParValue(totalTime))});
    };
    return f64{sizes.First()} * probability(first) +
           f64{sizes.Second()} * probability(first * HazardRatio());
}

// The survival proportion of group 2 at the margin, as it is entered.
f64 SecondAtMargin() {
    const f64 first{survival.First()};
    return InForm(survival.SecondForm(), first, std::pow(first, ParValue(margin)));
}

void NarrowSurvival(f64& lower, f64& upper, f64 (*residual)()) {
    survival.Narrow(lower, upper);
    if (UnknownParNo == margin)
        LeftTailLimit(lower, upper, HazardRatio());
    else if (survival.FirstIsUnknown())
        KeepNearestRoot(lower, upper, SideOfTail(), residual);
    else if (survival.HasUnknown())
        LeftTailLimit(lower, upper, SecondAtMargin());
}

void NarrowPatients(f64& lower, f64& upper) {
    if (UnknownParNo == hazardRatio)
        LeftTailLimit(lower, upper, ParValue(margin));
    else if (UnknownParNo == margin)
        RightTailLimit(lower, upper, HazardRatio());
    else if (UnknownParNo == accrualTime)
        upper = MinOf(upper, ParValue(totalTime));
    else if (UnknownParNo == totalTime)
        lower = MaxOf(lower, ParValue(accrualTime));
}

} // namespace

void TESTLOGRANKNONINF::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided});
    OfferChecks({Check::Events, Check::TotalSize});
    if (Ticked(Check::Events)) {
        DisableCheck(Check::TotalSize);
        OfferForms(SurvivalKinds);
    } else if (!Ticked(Check::TotalSize)) {
        OfferForms(SizeKinds);
    }
}

void TESTLOGRANKNONINF::SetParList() {
    givenEvents = Ticked(Check::Events);
    StartTestList();
    AddPar(Kind::HazardRatioNonInferiorityLimit);
    if (givenEvents) {
        survival = AddPair(SurvivalKinds);
        return sizes.AddTotal(Kind::Events, Kind::Size2Over1);
    }
    hazardRatio = AddPar(Kind::H1HazardRatio);
    hazard = AddPar(Kind::H1Rate1);
    accrualTime = AddPar(Kind::AccrualTime);
    totalTime = AddPar(Kind::TotalStudyTime);
    if (Ticked(Check::TotalSize))
        sizes.AddTotal(Kind::TotalSize, Kind::Size2Over1);
    else
        sizes.AddEach();
}

bool TESTLOGRANKNONINF::CheckPar() {
    if (givenEvents && !survival.Check())
        return false;
    if (!givenEvents && UnknownParNo != accrualTime && UnknownParNo != totalTime &&
        !CheckRange(totalTime, ParValue(accrualTime), ParMax(Kind::TotalStudyTime)))
        return false;
    return sizes.Check();
}

void TESTLOGRANKNONINF::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper, &RootFunction);
    if (givenEvents)
        NarrowSurvival(lower, upper, &RootFunction);
    else
        NarrowPatients(lower, upper);
}

// With a margin of 1 this is D. A. Schoenfeld, Biometrics 39, 1983, 499-503; events of patients: J.
// M. Lachin, Controlled Clinical Trials 2, 1981, 93-113. Survival proportions say which way the
// effect points: more survival is less hazard.
f64 TESTLOGRANKNONINF::RootFunction() {
    const f64 second = sizes.Ratio() / (sizes.Ratio() + 1);
    const f64 distance = std::log(HazardRatio() / f64{Single(ParValue(margin))});
    const f64 delta = distance * std::sqrt(Events() * second * (1 - second));
    return NormalPowerEq({.Effect = Single(givenEvents ? -delta : delta), .Se0 = 1, .Se1 = 1});
}

f64 EventProbability(f64 hazard, f64 accrualTime, f64 totalTime) {
    constexpr f32 instant = 1e-5F;
    return ShareLeaving(hazard, 0, accrualTime + f64{instant}, totalTime);
}

} // namespace quorvanta
