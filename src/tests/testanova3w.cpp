#include "tests/testanova3w.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

constexpr i16 noOfFactors = 3;

i16 levels; // position of the levels of A, those of B and C are next
i16 size;

} // namespace

void TESTANOVA3W::SetupTest() {
    AnovaEffect::Offer({Check::Contrast}, {Group::TestedOfThreeFactors});
}

void TESTANOVA3W::SetParList() {
    StartAnovaList();
    levels = AddPar(Kind::LevelsA);
    AddPar(Kind::LevelsB);
    AddPar(Kind::LevelsC);
    size = AddPar(Kind::AdditiveSizePerCell);
}

// H. Scheffe, The Analysis of Variance, 1959, section 4.5.
f64 TESTANOVA3W::RootFunction() {
    const i16 tested = ChosenOption(Group::TestedOfThreeFactors);
    f64 total{Single(ParValue(size))};
    f64 mainEffects = 0;
    for (i16 factor = 0; factor < noOfFactors; ++factor) {
        const f64 count{Single(ParValue(levels + factor))};
        total *= count;
        mainEffects += count - 1;
    }
    const f32 testedLevels = Single(ParValue(levels + tested));
    return Effect().PowerEq(
        MainEffect(testedLevels, Single(total / f64{testedLevels}), total - 1 - mainEffects));
}

TestedMeans TESTANOVA3W::Tested() {
    constexpr const char* names[noOfFactors] = {"A", "B", "C"};
    const i16 tested = ChosenOption(Group::TestedOfThreeFactors);
    return {.Levels = static_cast<i16>(levels + tested), .Head = names[tested]};
}

} // namespace quorvanta
