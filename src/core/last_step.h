// The last step in the current analysis, remembered so that it can be taken back.
#pragma once

#include "core/records.h"

#include <string>

namespace quorvanta {

// The current analysis as it stands, before a step of that kind; while options are being chosen, as
// it stood before they were.
AnalysisStep BeforeStep(StepKind kind);

// The step is done; it takes the place of the former one. One that began in a window without an
// analysis leaves nothing to go back to.
void RememberStep(AnalysisStep step);

// True if the current analysis has a step that can be undone, or done again, now: not while options
// are being chosen nor during a run.
bool CanStepBack();

// What StepBack would do: "Undo Calculation", "Redo New Test"; "Undo" when there is nothing.
std::string StepBackName();

} // namespace quorvanta
