#include "tests/testanovarepmeas1w.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

i16 size;

} // namespace

void TESTANOVAREPMEAS1W::SetupTest() {
    Offer(OneSample);
    if (!IsLinearCombination())
        OfferGroups({Group::EffectSize});
    OfferCorrelationMatrix();
}

void TESTANOVAREPMEAS1W::SetParList() {
    if (IsLinearCombination()) {
        StartWithCombination();
        List().Errors.AddOfCombination();
    } else {
        StartWithEffect();
        List().Errors.Add(false);
    }
    AddLevels();
    size = AddPar(Kind::SizeFrom2);
}

bool TESTANOVAREPMEAS1W::CheckPar() {
    return CheckList();
}

void TESTANOVAREPMEAS1W::SearchLimits(f64& lower, f64& upper) {
    NarrowList(lower, upper, &RootFunction);
}

f64 TESTANOVAREPMEAS1W::RootFunction() {
    const f32 n = Single(ParValue(size));
    if (IsLinearCombination())
        return CombinationEq(f64{n}, Single(f64{n} - 1));
    const f32 k = Levels();
    return RepPower(WithinDesign(k, n), List().Type, Effect(), List().Errors.At(k), n);
}

} // namespace quorvanta
