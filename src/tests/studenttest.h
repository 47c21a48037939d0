// The power of a test whose statistic is Student's t, straight from its hypotheses.
#pragma once

#include "core/analysis_state.h"
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

} // namespace quorvanta
