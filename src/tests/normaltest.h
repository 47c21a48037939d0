// The power of a test whose statistic is normal, straight from its hypotheses.
#pragma once

#include "core/analysis_state.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

namespace quorvanta {

// Power minus the power entered: distance tells how far a true value is above a null value on the
// scale of the statistic, se0 its standard error under a null value, se1 that under the truth.
template <class Distance, class NullError>
f64 NormalTestEq(const Hypotheses& list, Distance&& distance, NullError&& se0, f32 se1) {
    const f64 truth = list.Truth();
    const f64 left{list.H0()};
    const f64 right = NoOfTails == TwoOneSided ? f64{list.Right()} : left;
    const f32 above = Single(distance(truth, left));
    return NormalPowerEq({.Effect = above,
                          .Se0 = se0(left),
                          .Se1 = se1,
                          .AboveLeft = above,
                          .BelowRight = Single(-distance(truth, right)),
                          .Se0Left = se0(left),
                          .Se0Right = se0(right)});
}

// p-value of an estimate: distance tells how far it is above a null value on the scale of the
// statistic, se0 its standard error under a null value, above 0.
template <class Distance, class NullError>
f32 NormalPValue(const Hypotheses& list, Distance&& distance, NullError&& se0) {
    const auto z = [&](f32 null) { return Single(distance(f64{null}) / f64{se0(f64{null})}); };
    if (NoOfTails == TwoOneSided)
        return NorPValue(0, 0, 1, -z(list.H0()), -z(list.Right()), 0);
    return NorPValue(z(list.H0()), 0, 1, 0, 0, 0);
}

// The distance on the scale of the values themselves.
constexpr f64 PlainDistance(f64 truth, f64 null) {
    return truth - null;
}

} // namespace quorvanta
