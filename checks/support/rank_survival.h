// Which entries of the menus are rank, survival and goodness-of-fit tests.
#pragma once

#include "core/types.h"

namespace quorvanta::checks {

// By their places in the menus: exponential survival, goodness of fit, the non-parametric tests,
// the intervals of survival.
inline bool IsRankSurvivalOrFit(i16 menuNo) {
    return (menuNo >= 150 && menuNo <= 152) || (menuNo >= 260 && menuNo <= 263) || menuNo == 110 ||
           (menuNo >= 300 && menuNo < 600) || menuNo == 804 || menuNo == 834;
}

} // namespace quorvanta::checks
