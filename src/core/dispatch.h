// The module SELLIST: the only place that knows which module serves which analysis.
#pragma once

#include "core/types.h"

namespace quorvanta {

// True if a module serves the current analysis.
bool SelHasModule();

// One dispatcher for each operation of a test module. An operation that the module leaves out
// does nothing and answers 0 (true for the check, which then has nothing to object to).
void SelSetupTest();
void SelSetParList();
bool SelCheckPar();
void SelSearchLimits(f64& lower, f64& upper);
f64 SelRootFunction();
bool SelIsTablePar(i16 parNo);
f32 SelCalcTablePar();
void SelSetLabels();

} // namespace quorvanta
