#include "ranksurv/kappas.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "tests/lists/turningpoint.h"
#include "tests/normaltest.h"
#include "tests/powereq.h"

#include <algorithm>

namespace quorvanta {

namespace {

constexpr i16 FirstKappa = 2;

i16 LastKappa() {
    return NoOfTails == TwoOneSided ? i16{4} : i16{3};
}

// Is position i a kappa, and not what it has more than another one?
bool IsKappa(const Hypotheses& list, i16 i) {
    return i != list.TruthParNo() || NoOfTails == TwoOneSided || list.TruthForm() == AsValue;
}

Range WithinKind(i16 i, Range possible) {
    return {MaxOf(ParMin(ParKind(i)), possible.Min), MinOf(ParMax(ParKind(i)), possible.Max)};
}

} // namespace

bool CheckKappas(const Hypotheses& list, Range possible) {
    for (i16 i = FirstKappa; i <= LastKappa(); ++i) {
        const Range range = WithinKind(i, possible);
        if (i != UnknownParNo && IsKappa(list, i) && !CheckRange(i, range.Min, range.Max))
            return false;
    }
    return list.Check(WithinKind(FirstKappa, possible));
}

// Where a difference or a ratio is kept, both standard errors change with the H0 value. A kappa
// that is sought changes its own: of few subjects the power falls again towards an agreement, or a
// disagreement, that is no surprise. The smaller effect is found.
void NarrowKappas(const Hypotheses& list, f64& lower, f64& upper, Range possible,
                  f64 (*residual)()) {
    if (UnknownParNo < FirstKappa || UnknownParNo > LastKappa())
        return;
    if (IsKappa(list, UnknownParNo)) {
        lower = MaxOf(lower, possible.Min);
        upper = MinOf(upper, possible.Max);
    }
    list.Narrow(lower, upper, residual, WithinKind(FirstKappa, possible));
    if (list.BaseIsUnknown() && list.TruthForm() != AsValue)
        KeepOneBranch(lower, upper, SideOfTail(), residual);
    else if (NoOfTails != TwoOneSided)
        KeepOneSideOfTurn(lower, upper,
                          list.TruthIsUnknown() ? Opposite(SideOfTail()) : SideOfTail(), residual);
}

Range KappasAtHand(const Hypotheses& list) {
    const f64 null{list.H0()};
    const f64 truth = list.Truth();
    const f64 right = NoOfTails == TwoOneSided ? f64{list.Right()} : null;
    return {std::min({null, truth, right}), std::max({null, truth, right})};
}

f64 KappaPowerEq(const Hypotheses& list, f64 n, f64 (*variance)(f64 kappa)) {
    const auto se = [=](f64 kappa) { return ErrorOfVariance(variance(kappa) / n); };
    return NormalTestEq(list, PlainDistance, se, se(list.Truth()));
}

} // namespace quorvanta
