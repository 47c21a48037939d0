#include "tests/testanovarandblock.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

i16 levels; // position of the levels of the treatment, or of A; those of B are next
i16 blocks;

// What blocks and treatments leave; without interaction its degrees of freedom go to the error.
f64 ErrorDf(f64 a, f64 b, f64 noOfBlocks) {
    const f64 withInteraction = (a * b - 1) * (noOfBlocks - 1);
    return Ticked(Check::Additive) ? withInteraction + (a - 1) * (b - 1) : withInteraction;
}

} // namespace

void TESTANOVARANDBLOCK::SetupTest() {
    AnovaEffect::Offer({Check::Contrast}, {});
}

void TESTANOVARANDBLOCK::SetParList() {
    StartAnovaList();
    levels = AddPar(Kind::LevelsA);
    blocks = AddPar(Kind::NoOfBlocks);
}

// H. Scheffe, The Analysis of Variance, 1959, section 4.2: one observation in each cell of
// treatments and blocks.
f64 TESTANOVARANDBLOCK::RootFunction() {
    const f32 t = Single(ParValue(levels));
    const f32 b = Single(ParValue(blocks));
    return Effect().PowerEq(MainEffect(t, b, (f64{t} - 1) * (f64{b} - 1)));
}

TestedMeans TESTANOVARANDBLOCK::Tested() {
    return {.Levels = levels, .Head = "Treatment"};
}

void TESTANOVARANDBLOCK2W::SetupTest() {
    AnovaEffect::Offer({Check::Contrast, Check::Additive}, {Group::TestedOfTwoFactors});
    WithoutInteractionIfAdditive();
}

void TESTANOVARANDBLOCK2W::SetParList() {
    StartAnovaList();
    levels = AddPar(Kind::LevelsA);
    AddPar(Kind::LevelsB);
    blocks = AddPar(Kind::NoOfBlocks);
}

f64 TESTANOVARANDBLOCK2W::RootFunction() {
    const f32 a = Single(ParValue(levels));
    const f32 b = Single(ParValue(levels + 1));
    const f32 n = Single(ParValue(blocks));
    return Effect().PowerEq(EffectOfTwo(a, b, n, ErrorDf(f64{a}, f64{b}, f64{n})));
}

TestedMeans TESTANOVARANDBLOCK2W::Tested() {
    return MeansOfTwo(levels);
}

} // namespace quorvanta
