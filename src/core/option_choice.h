// The option window: what it offers, and the choices made in it.
#pragma once

#include "core/types.h"

#include <span>
#include <string_view>

namespace quorvanta {

// Fills the option lists of the current test or distribution.
void NewSetup();

// A confidence interval starts two-sided, a test that is stated through one starts one-sided; what
// the user makes of it afterwards stays.
void StartTwoSidedInterval();

// What there is to choose from in the list of parameters: those of a distribution, or the two
// designs of means; empty where there is no list. And the place of the chosen one.
std::span<const std::string_view> OfferedParLists();
i16 ChosenParList();

// The option window: a choice was made. Each takes the choice into the state, then lays out the
// options anew.
void ChooseSamples(i16 noOfSamples);
void ChooseTails(i16 noOfTails);
void ChooseLeftTail(bool left);
void ChooseProcedure(i16 procedureNo);
void ChooseParList(i16 parListNo);           // RunTimeError (BadIndex) beyond OfferedParLists
void ChooseCheck(i16 position, bool ticked); // position in CheckList
void ChooseIntPar(i16 position, i16 option); // position in IntParList
void ChooseInterim(i16 noOfInterim);
// Of multiple comparisons: how the error of the family is kept.
void ChooseAdjustMethod(i16 method);

} // namespace quorvanta
