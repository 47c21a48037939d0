// The power of a test whose statistic is Student's t, straight from its hypotheses.
#pragma once

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/teststud.h"

namespace quorvanta {

// Power minus the power entered: the true value or effect, on the scale on which it is entered, has
// an estimate with standard error se, itself estimated on df degrees of freedom.
inline f64 StudentTestEq(const Hypotheses& list, f32 se, f64 df) {
    const f64 truth = list.Truth();
    const f64 left{list.H0()};
    const f64 right = NoOfTails == TwoOneSided ? f64{list.Right()} : left;
    return TPowerEq(Single(truth - left), se, Single(truth - left), Single(right - truth),
                    Single(df));
}

// p-value of an estimate with a standard error that is itself estimated on df degrees of freedom. 1
// where nothing is left to estimate it from; where the data don't vary at all, the direction is
// certain, and no distance is no evidence.
inline f32 StudentPValue(const Hypotheses& list, f64 estimate, f64 se, f64 df) {
    if (df < 1)
        return 1;
    const auto t = [=](f32 null) {
        constexpr f64 certain = 1e6;
        const f64 d = estimate - f64{null};
        return Single(se > 0 ? MinOf(certain, MaxOf(-certain, d / se)) : certain * Sgn(d));
    };
    if (NoOfTails == TwoOneSided)
        return TPValue(0, 0, 1, -t(list.H0()), -t(list.Right()), Single(df));
    return TPValue(t(list.H0()), 0, 1, 0, 0, Single(df));
}

} // namespace quorvanta
