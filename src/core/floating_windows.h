// The free-standing windows that go when what they show is no longer so.
#pragma once

namespace quorvanta {

// Hides the windows that show the result in words or as a document: they speak of an analysis, or
// of values, that the window in front has no more.
void HideOutputs();

} // namespace quorvanta
