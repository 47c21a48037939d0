#include "tests/testanov2w.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

i16 levels; // position of the levels of A, those of B are next
i16 size;

// Without interaction its degrees of freedom go to the error.
f64 ErrorDf(f64 a, f64 b, f64 n) {
    return Ticked(Check::Additive) ? a * b * n - a - b + 1 : a * b * (n - 1);
}

} // namespace

void TESTANOV2W::SetupTest() {
    AnovaEffect::Offer({Check::Contrast, Check::Additive}, {Group::TestedOfTwoFactors});
    WithoutInteractionIfAdditive();
}

void TESTANOV2W::SetParList() {
    StartAnovaList();
    levels = AddPar(Kind::LevelsA);
    AddPar(Kind::LevelsB);
    size = AddPar(Ticked(Check::Additive) ? Kind::AdditiveSizePerCell : Kind::SizePerCell);
}

// H. Scheffe, The Analysis of Variance, 1959, chapter 4.
f64 TESTANOV2W::RootFunction() {
    const f32 a = Single(ParValue(levels));
    const f32 b = Single(ParValue(levels + 1));
    const f32 n = Single(ParValue(size));
    return Effect().PowerEq(EffectOfTwo(a, b, n, ErrorDf(f64{a}, f64{b}, f64{n})));
}

TestedMeans TESTANOV2W::Tested() {
    return MeansOfTwo(levels);
}

} // namespace quorvanta
