#include "tests/testmanovarepmeas1w.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/testhotelling1.h"

namespace quorvanta {

namespace {

i16 size;

} // namespace

void TESTMANOVAREPMEAS1W::SetupTest() {
    Offer(OneSample);
}

void TESTMANOVAREPMEAS1W::SetParList() {
    if (IsLinearCombination()) {
        TESTHOTELLING1::SetParList();
        return;
    }
    StartWithDistance(true);
    AddLevels();
    size = AddPar(Kind::SizeFrom2);
}

// As many subjects as levels leave the error its last degree of freedom.
bool TESTMANOVAREPMEAS1W::CheckPar() {
    if (IsLinearCombination())
        return TESTHOTELLING1::CheckPar();
    return CheckList() && (UnknownParNo == size || UnknownParNo == List().Levels ||
                           CheckRange(size, ParValue(List().Levels), NoValue));
}

void TESTMANOVAREPMEAS1W::SearchLimits(f64& lower, f64& upper) {
    if (IsLinearCombination()) {
        TESTHOTELLING1::SearchLimits(lower, upper);
        return;
    }
    if (UnknownParNo == size)
        lower = MaxOf(lower, ParValue(List().Levels));
    if (UnknownParNo == List().Levels)
        upper = MinOf(upper, ParValue(size));
    NarrowList(lower, upper, &RootFunction);
}

f64 TESTMANOVAREPMEAS1W::RootFunction() {
    if (IsLinearCombination())
        return TESTHOTELLING1::RootFunction();
    const f64 k{Levels()};
    const f64 n{Single(ParValue(size))};
    return HotellingEq(Single(k - 1), (n - 1) - (k - 1) + 1, f64{Effect()} * n);
}

} // namespace quorvanta
