#include "tests/lists/turningpoint.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"

namespace quorvanta {

Side SideOfTail() {
    return SearchesLeft() ? Side::Below : Side::Above;
}

void KeepOneSide(f64& lower, f64& upper, f64 turn, Side preferred, f64 (*residual)()) {
    if (!(turn > lower && turn < upper))
        return;
    f64& unknown = ParValue(UnknownParNo);
    const f64 before = unknown;
    unknown = turn;
    const f64 atTurn = residual();
    unknown = preferred == Side::Below ? lower : upper;
    const bool changesSign = residual() * atTurn <= 0;
    unknown = before;
    if (changesSign == (preferred == Side::Below))
        upper = turn;
    else
        lower = turn;
}

} // namespace quorvanta
