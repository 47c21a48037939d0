// The open analyses: their records, the windows that show them, and the moves between them.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <string>

namespace quorvanta {

// The start sequence: state, catalogues and constants as the program begins with them.
void Main();

// Opens a window of that kind with an analysis not yet chosen; the former one is stored.
void NewWindow(i16 windowKind);

// Empties the current analysis: no test, no parameters, no result.
void ClearAnalysis();

// Brings the record of the current analysis back into the state, with all that derives from it.
void LoadAnalysis();

// Makes record n the current analysis and brings its window to the front.
void SwitchAnalysis(i16 n);

// A child window came to the front: the analysis of that record becomes current, unless a run is
// going.
void ChildActivated(i16 analysisNo);

// Why a window closes.
inline constexpr i16 CloseByUser = 0;
inline constexpr i16 CloseWithMain = 4;

// The window of that record is gone.
void ChildClosed(i16 analysisNo);

// Switches to the lowest record that is not closed.
void NextOpenAnalysis();
bool AnyOpenAnalysis();

// The caption of the current analysis' window.
std::string ChildCaption(i16 windowKind, i16 windowNo);

} // namespace quorvanta
