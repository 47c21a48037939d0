#include "ranksurv/testcox.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 ContinuousTestNo = 38;

// Options of the group of the effect.
constexpr i16 AsHazardRatio = 1;

bool isRatio = false;
i16 effect;
i16 spread;     // of a continuous covariate: its standard deviation; 0: it has two values
i16 proportion; // of the subjects whose covariate is 1; 0: it is continuous
i16 survival;   // at the mean of the covariate, or where it is 0; 0: the events are given
i16 correlation;
i16 size; // subjects, or events

f64 Entered(i16 position) {
    return f64{Single(ParValue(position))};
}

f64 Coefficient() {
    return isRatio ? std::log(Entered(effect)) : Entered(effect);
}

f64 HazardRatio() {
    return isRatio ? Entered(effect) : ExpClamped(Single(Entered(effect)));
}

// At its mean a continuous covariate speaks for all subjects.
f64 Events() {
    if (survival == 0)
        return Entered(size);
    return Entered(size) *
           (proportion == 0 ? 1 - Entered(survival)
                            : CoxEventShare(Entered(survival), Entered(proportion), HazardRatio()));
}

f64 CovariateVariance() {
    const f64 q = proportion == 0 ? 0 : Entered(proportion);
    return proportion == 0 ? Entered(spread) * Entered(spread) : q * (1 - q);
}

} // namespace

void TESTCOX::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Events});
    OfferGroups({Group::HazardEffect});
}

void TESTCOX::SetParList() {
    const bool isContinuous = TestNo == ContinuousTestNo;
    const bool eventsAreGiven = Ticked(Check::Events);
    isRatio = ChosenOption(Group::HazardEffect) == AsHazardRatio;
    StartTestList();
    effect = AddPar(isRatio ? Kind::H1HazardRatio : Kind::H1Slope);
    spread = isContinuous ? AddPar(Kind::CovariateSd) : i16{0};
    survival = eventsAreGiven ? i16{0} : AddPar(Kind::H1Survival1);
    proportion = isContinuous ? i16{0} : AddPar(Kind::ProportionAtX1);
    correlation = AddPar(Kind::CorrelationOfCovariates);
    size = AddPar(eventsAreGiven ? Kind::Events : Kind::SizeFrom4);
}

// The power is highest for a covariate that is 1 in about half of the subjects, and where events
// get rare with a falling hazard it may turn.
void TESTCOX::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == effect) {
        LeftTailLimit(lower, upper, isRatio ? 1 : 0);
        KeepOneSideOfTurn(lower, upper, Opposite(SideOfTail()), &RootFunction);
    } else if (proportion != 0 && UnknownParNo == proportion) {
        KeepOneSideOfTurn(lower, upper, Side::Above, &RootFunction);
    }
}

// F. Y. Hsieh and P. W. Lavori, Controlled Clinical Trials 21, 2000, 552-560, equations 2 and 4; a
// binary covariate: D. A. Schoenfeld, Biometrics 39, 1983, 499-503.
f64 TESTCOX::RootFunction() {
    const f64 r = Entered(correlation);
    const f64 information = Events() * CovariateVariance() * (1 - r * r);
    const f32 se = Single(1 / std::sqrt(information));
    return NormalPowerEq({.Effect = Single(Coefficient()), .Se0 = se, .Se1 = se});
}

// Formed so that nothing is lost where few have an event.
f64 CoxEventShare(f64 survival, f64 q, f64 ratio) {
    return (1 - q) * (1 - survival) - q * std::expm1(ratio * std::log(survival));
}

} // namespace quorvanta
