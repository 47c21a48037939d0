// TESTMW: the Wilcoxon-Mann-Whitney test of two samples, of a continuous outcome or of ordered
// categories.
#pragma once

#include "core/checked_array.h"
#include "core/gridtable.h"
#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>
#include <vector>

namespace quorvanta {

struct TESTMW {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);

    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    static void RenewTablePars();
};

// The sum of the cubes of the proportions of ordered categories, averaged over samples of n1 and n2
// subjects: those of the control group, and those that the odds ratio makes of them in the other
// one. The odds are those of a category up to each, and proportional. oddsRatio, n1, n2 > 0; the
// proportions add up to 1.
f32 OrdCubeSum(f32 oddsRatio, f32 n1, f32 n2, const std::vector<f32>& control);

// The standardised difference of two groups with these counts in ordered categories (1..c),
// positive where group 2 has the lower ones: the odds of a category up to each are then the larger
// in it. No group is empty.
f32 OrderedZ(const Array1<f32>& counts1, const Array1<f32>& counts2);

} // namespace quorvanta
