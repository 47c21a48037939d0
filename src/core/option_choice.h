// The option window: what it offers, and the choices made in it.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Fills the option lists of the current test or distribution.
void NewSetup();

// A confidence interval starts two-sided, a test that is stated through one starts one-sided; what
// the user makes of it afterwards stays.
void StartTwoSidedInterval();

// The option window: a choice was made. Each takes the choice into the state, then lays out the
// options anew.
void ChooseSamples(i16 noOfSamples);
void ChooseTails(i16 noOfTails);
void ChooseLeftTail(bool left);
void ChooseProcedure(i16 procedureNo);
void ChooseParList(i16 parListNo);           // RunTimeError (BadIndex) beyond DistrParList
void ChooseCheck(i16 position, bool ticked); // position in CheckList
void ChooseIntPar(i16 position, i16 option); // position in IntParList
void ChooseInterim(i16 noOfInterim);
// Of multiple comparisons: how the error of the family is kept.
void ChooseAdjustMethod(i16 method);

} // namespace quorvanta
