// What a test offers in the option window, in the words of a test module's SetupTest, and what
// the user has chosen there.
#pragma once

#include "core/form.h"
#include "core/types.h"

#include <initializer_list>

namespace quorvanta {

// Nothing offered but the full choice of samples and tails: how every SetupTest starts. What the
// test before had forced there is the user's own choice again.
void ClearOptions();

// The test has this number of samples only.
void FixSamples(i16 noOfSamples);

// The numbers of samples, and the tails, to choose from; a former choice that is not among them
// becomes the last one of the list, and comes back for the next test.
void OfferSamples(std::initializer_list<i16> choices);
void OfferTails(std::initializer_list<i16> choices);

// The analysis comes from a file, which doesn't tell what was forced: where there was nothing to
// choose, the start values are the user's own choice.
void DisownForcedChoices();

// Check boxes and groups of interchangeable parameters, by kind, in the order of the window.
void OfferChecks(std::initializer_list<i16> kinds);
void OfferGroups(std::initializer_list<i16> kinds);

// The check box is shown, but cleared and out of reach.
void DisableCheck(i16 kind);

// The option of the group is out of reach; where it was chosen, the first one is.
void DisableOption(i16 group, i16 option);

// Is the check box offered and ticked?
bool Ticked(i16 kind);

// The chosen option of a group: 0, 1 or 2; 0 for a group that is not offered.
i16 ChosenOption(i16 group);

// The same of a group whose options are the forms of a quantity.
Form ChosenForm(i16 group);

// A tick in one box of a pair that can't go together clears the other.
void ClearExcludedChecks(i16 tickedKind);

// A parameter list grows from position 0; each call answers the position of its parameter.
void StartParList();
i16 AddPar(i16 kind);

} // namespace quorvanta
