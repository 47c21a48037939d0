// The search for the unknown of the current analysis. It owns no statistics: it writes trial values
// into the place of the unknown and finds the zero of the test's equation.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Forgets what the search remembers from one calculation to the next.
void StartSearch();

// Stores x in ParValue(UnknownParNo) and returns the equation's residual: the only link between
// the root finder and the tests. A floating-point fault is a RunTimeError.
f64 TryValue(f64 x);

// The root of the current test's equation for the present ParValue, or NoValue when there is none
// with |f| <= 0.001 within the limits of the unknown. It may be the mark of a search that ran to
// the end of a scaled range.
f64 FindUnknown();

// The same without such a mark: NoValue in its place.
f64 SolveUnknown();

// After a solution: HasDistrGraph, whether the analysis has distributions to show, those of its
// statistic or one that was chosen.
void FindDistrGraph();

// Tells that there is no solution. Every other time, for a one-sided test, with a hint at the
// direction: the second press of the same button is not nagged. Returns -1.
i16 ShowCantCalculate();

} // namespace quorvanta
