// From the menu to an analysis: choosing a test, its options, and accepting them.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// A test was chosen from the menus: asks for a window if none is open, sets up the test and shows
// its options. Says so and changes nothing when the test is not available.
void NewTest(i16 menuNo);

// A distribution was chosen from the menus; likewise.
void NewDistribution(i16 distrNo);

// Fills the option lists of the current test or distribution.
void NewSetup();

// The option window: a choice was made. Each takes the choice into the state, then lays out the
// options anew.
void ChooseSamples(i16 noOfSamples);
void ChooseTails(i16 noOfTails);
void ChooseLeftTail(bool left);
void ChooseProcedure(i16 procedureNo);
void ChooseParList(i16 parListNo);
void ChooseCheck(i16 position, bool ticked); // position in CheckList
void ChooseIntPar(i16 position, i16 option); // position in IntParList
void ChooseInterim(i16 noOfInterim);

// The options are accepted: builds the parameter list and shows it; a Calculation window whose
// values are all present is solved at once.
void AcceptOptions();

// The options are given up: the analysis that the window held before comes back.
void CancelOptions();

// Enables the entries of "Current Analysis" that apply.
void UpdateMenus();

// The analysis in words, for the head of the window.
std::string Headline();

// True if this version has a window of that kind.
bool HasWindowKind(i16 windowKind);

// Tells that something is not available in this version.
void ShowNotAvailable(const std::string& what);

} // namespace quorvanta
