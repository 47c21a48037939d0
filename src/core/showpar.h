// What frmShowPar shows and does: which parameters a table or graph has on its axes, and the
// values of all others.
#pragma once

#include "core/run.h"
#include "core/types.h"

#include <string>

namespace quorvanta {

// The three roles, which are the first positions of ParBoxOrder; the fixed parameters follow.
inline constexpr i16 YRole = 0;
inline constexpr i16 XRole = 1;
inline constexpr i16 ZRole = 2;
inline constexpr i16 NoOfRoles = 3;

// Takes the roles and the order of the fixed parameters from the state, and shows frmShowPar.
// Nothing for a window that shows no table or graph, or that has no analysis yet.
void SetupShowPar();

// Parameter parNo takes role k and exchanges its place with the one that had it. Nothing during
// a run.
void SwapAxis(i16 k, i16 parNo);

// The fixed parameter of box txtParValue(box); -1 if there is none.
i16 FixedPar(i16 box);

// The text about an axis; the z-values are empty without a z parameter.
std::string AxisTextOf(AxisText which);

// Such a text has changed; returns what its box has to show. A run that is going is not disturbed.
std::string TypedAxisText(AxisText which, const std::string& text);

// What the hint under the fixed parameters says: how a blue value is calculated, or that one of
// the axes can't be calculated from a grid. Empty when there is nothing to say.
std::string ShowParHint();

// The button of frmShowPar: calculates the table or graph; during a run, asks it to stop.
void RunOrCancel();

// Calculates a table or graph whose result is not valid, and draws it. False if there is none
// afterwards: the former one is then still drawn.
bool EnsureRun();

} // namespace quorvanta
