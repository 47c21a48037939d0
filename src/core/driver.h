// The road from a request for a value to its text.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Parameter i is the unknown; the two lowest others have the roles of the axes.
void MakeUnknown(i16 parNo);

// Makes parameter i the unknown and solves for it; nothing if its value is already calculated.
void SolveFor(i16 parNo);

// The design of an analysis that comes to the front is worked out anew and shown; nothing where
// there is none, or none that is calculated.
void RenewDesign();

// Solves for UnknownParNo from ParText; the result, or "-", goes into ParText of its kind.
void CalcUnknown();

} // namespace quorvanta
