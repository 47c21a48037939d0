#include "tests/lists/covariate.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/turningpoint.h"

namespace quorvanta {

void CovariateEffect::Offer(const CovariateKinds& kinds) {
    OfferGroups({kinds.Group});
}

void CovariateEffect::Add(const CovariateKinds& kinds) {
    isRatio_ = ChosenOption(kinds.Group) == 1;
    baseline_ = AddPar(kinds.Baseline);
    effect_ = AddPar(isRatio_ ? kinds.Ratio : kinds.Value);
    proportion_ = kinds.Proportion == NoKind ? i16{0} : AddPar(kinds.Proportion);
    correlation_ = AddPar(Kind::CorrelationOfCovariates);
}

f64 CovariateEffect::Baseline() const {
    return f64{Single(ParValue(baseline_))};
}

f32 CovariateEffect::Ratio(f64 (*scale)(f64)) const {
    const f64 entered{Single(ParValue(effect_))};
    return Single(isRatio_ ? entered : scale(entered) / scale(Baseline()));
}

f64 CovariateEffect::Proportion() const {
    return f64{Single(ParValue(proportion_))};
}

f64 CovariateEffect::Unexplained() const {
    const f64 r{Single(ParValue(correlation_))};
    return 1 - r * r;
}

void CovariateEffect::Narrow(f64& lower, f64& upper, f64 (*residual)()) const {
    if (UnknownParNo == effect_) {
        LeftTailLimit(lower, upper, isRatio_ ? 1 : ParValue(baseline_));
        KeepOneSideOfTurn(lower, upper, Opposite(SideOfTail()), residual);
    } else if (UnknownParNo == baseline_ && !isRatio_) {
        RightTailLimit(lower, upper, ParValue(effect_));
        KeepOneSideOfTurn(lower, upper, SideOfTail(), residual);
    } else if (IsBinary() && UnknownParNo == proportion_) {
        KeepOneSideOfTurn(lower, upper, Side::Above, residual);
    }
}

} // namespace quorvanta
