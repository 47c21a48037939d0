// XOVER, XOVERLOG: crossover designs of any sequences of treatments, on the scale of the response
// (additive model) or on that of its logarithm (multiplicative model). All treatments are compared
// by an F test, or a linear combination of them is tested by a t test (B. Jones and M. G. Kenward,
// Design and Analysis of Cross-Over Trials, 2nd edition, 2003, chapter 5).
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct XOVER {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

struct XOVERLOG : XOVER {
    static void SetParList();
};

// The chosen forms, as the current parameter list was built from them; 1: the box is ticked.
extern i16 XoverCarry;
extern i16 XoverContrast;

} // namespace quorvanta
