// Tests of survival that exist as simulations only: the log-rank test of a survival model, and the
// tests of Gehan and Wilcoxon, Cox and Mantel, Cox's F and Peto and Peto. Their lists are those of
// the life-table tests of the same models, without the length of intervals.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"
#include "ranksurv/testlifetablepwexp.h"
#include "ranksurv/testlifetableweib.h"

#include <vector>

namespace quorvanta {

// All of a life-table test but its equation.
template <class LifeTable>
struct TESTSURVSIM {
    static void SetupTest() { LifeTable::SetupTest(); }
    static void SetParList() { LifeTable::SetParList(); }
    static bool CheckPar() { return LifeTable::CheckPar(); }

    static bool IsTablePar(i16 parNo) requires requires { LifeTable::IsTablePar(parNo); }
    { return LifeTable::IsTablePar(parNo); }
    static std::vector<Grid> TableGrids(i16 parNo) requires requires {
        LifeTable::TableGrids(parNo);
    }
    { return LifeTable::TableGrids(parNo); }
    static f32 CalcTablePar(i16 parNo) requires requires { LifeTable::CalcTablePar(parNo); }
    { return LifeTable::CalcTablePar(parNo); }

    static void GetSimPar() { LifeTable::GetSimPar(); }
    static void SimSample(i16 n1, i16 n2, bool isH1) { LifeTable::SimSample(n1, n2, isH1); }
    static f32 SimTest(i16 n1, i16 n2) { return LifeTable::SimTest(n1, n2); }
};

// By the model of survival: Weibull, gamma and lognormal; piecewise exponential. Their shares that
// survive are those of the life-table tests (SurvivalAtModel, IntervalProbs).
using TESTLOGRANKWEIB = TESTSURVSIM<TESTLIFETABLEWEIB>;
using TESTLOGRANKPWEXP = TESTSURVSIM<TESTLIFETABLEPWEXP>;

} // namespace quorvanta
