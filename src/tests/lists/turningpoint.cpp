#include "tests/lists/turningpoint.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "tests/trialvalue.h"

namespace quorvanta {

Side SideOfTail() {
    return SearchesLeft() ? Side::Below : Side::Above;
}

namespace {

f64 At(f64 x, f64 (*residual)()) {
    const TrialValue trial(x);
    return residual();
}

} // namespace

void StartWherePowerRises(f64& lower, f64 upper, f64 (*residual)()) {
    constexpr f64 few = 10;
    const f64 last = MinOf(upper, lower + few);
    if (!(upper > lower))
        return;
    f64 start = lower;
    f64 atStart = At(start, residual);
    if (atStart < 0 || At(upper, residual) < 0)
        return;
    while (atStart >= 0 && start + 1 <= last) {
        const f64 atNext = At(start + 1, residual);
        if (atNext >= atStart)
            return;
        ++start;
        atStart = atNext;
    }
    if (atStart < 0)
        lower = start;
}

void EndWherePowerFalls(f64 lower, f64& upper, f64 (*residual)()) {
    constexpr f64 few = 10;
    if (!(upper > lower) || At(upper, residual) < 0 || At(lower, residual) < 0)
        return;
    for (f64 end = upper - 1; end > MaxOf(lower, upper - few); --end)
        if (At(end, residual) < 0) {
            upper = end;
            return;
        }
}

void StartAtHighestPower(f64& lower, f64 upper, f64 (*residual)()) {
    f64 highest = MaxOf(At(lower, residual), At(upper, residual));
    if (highest >= 0)
        return;
    f64 start = lower;
    for (f64 count = lower + 1; count < upper; ++count) {
        const f64 atCount = At(count, residual);
        if (atCount <= highest)
            continue;
        highest = atCount;
        start = count;
    }
    if (highest >= 0)
        lower = start;
}

void KeepOneSide(f64& lower, f64& upper, f64 turn, Side preferred, f64 (*residual)()) {
    if (!(turn > lower && turn < upper))
        return;
    const f64 atTurn = At(turn, residual);
    const bool changesSign = At(preferred == Side::Below ? lower : upper, residual) * atTurn <= 0;
    if (changesSign == (preferred == Side::Below))
        upper = turn;
    else
        lower = turn;
}

} // namespace quorvanta
