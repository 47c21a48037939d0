#include "tests/lists/turningpoint.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "tests/trialvalue.h"

namespace quorvanta {

Side SideOfTail() {
    return SearchesLeft() ? Side::Below : Side::Above;
}

void KeepOneSide(f64& lower, f64& upper, f64 turn, Side preferred, f64 (*residual)()) {
    if (!(turn > lower && turn < upper))
        return;
    const auto at = [residual](f64 x) {
        const TrialValue trial(x);
        return residual();
    };
    const f64 atTurn = at(turn);
    const bool changesSign = at(preferred == Side::Below ? lower : upper) * atTurn <= 0;
    if (changesSign == (preferred == Side::Below))
        upper = turn;
    else
        lower = turn;
}

} // namespace quorvanta
