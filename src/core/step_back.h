// One step back, and forth again.
#pragma once

namespace quorvanta {

// Brings back the current analysis as it was before its last step: test, options, unknown, values
// and result. What it was after the step is remembered in its place, so that once more does the
// step again. Nothing where CanStepBack says no.
void StepBack();

} // namespace quorvanta
