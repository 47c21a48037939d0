// Properties that hold for every analysis of the catalogue, over every choice of its options.
//
// An analysis open in a window, and a check of a few lines:
//
//   for (const AnalysisChoice& choice : AllChoices(analysis))
//       ExpectSolvesOrSaysWhy(choice, values, platform);
//
// Values are texts by kind; kinds that an analysis has and they don't name keep the start values of
// the catalogue, kinds that it does not have are ignored, so one set serves all its choices.
#pragma once

#include "support/scripted_platform.h"
#include "support/validation.h"

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace quorvanta::checks {

using Values = std::map<i16, std::string>;

// Every combination of samples, tails, direction, check boxes and options that the analysis offers;
// combinations that exclude each other are left out. The tests of exponential survival have so many
// that the forms of their quantities are usually walked side by side: all of them as values, as
// differences, as ratios.
enum class FormsWalked { Usual, EachByItself };
std::vector<AnalysisChoice> AllChoices(const AnalysisChoice& analysis,
                                       FormsWalked forms = FormsWalked::Usual);

// The choice in words, for the message of a failed check.
std::string Describe(const AnalysisChoice& choice);

// Sets the analysis up with these values, as texts and as ParValue.
void Start(const AnalysisChoice& choice, const Values& values);

// Each parameter as the unknown is solved without a message, or not and told so: "Can't Be
// Calculated.", the range of a parameter, or one of the analysis' own messages.
// Returns how many parameters were solved.
int ExpectSolvesOrSaysWhy(const AnalysisChoice& choice, const Values& values,
                          ScriptedPlatform& platform,
                          const std::vector<std::string>& ownMessages = {});

// Each parameter is solved, but for kinds that can't be.
void ExpectAllSolve(const AnalysisChoice& choice, const Values& values, ScriptedPlatform& platform,
                    const std::set<i16>& exceptKinds = {});

// Each parameter but the power: what is solved for it, put back, gives the old power, within what
// the search tolerates. Returns how many parameters could be solved.
int ExpectRoundTrip(const AnalysisChoice& choice, const Values& values);

// The equation has a finite value, no power that is more than 1 and no fault, at values of the
// unknown all over its limits, for each parameter as the unknown.
void ExpectSafeInsideLimits(const AnalysisChoice& choice, const Values& values);

// The same, at and next to the limits, while one of the other parameters is of any size, from 0.001
// to 100000, above and below 0: what two parameters form together stays in its range.
void ExpectSafeWithAnyBase(const AnalysisChoice& choice, const Values& values);

// From every size of a handful to two dozen, whole or broken: the power, error or width that it has
// is asked for, and a size is found.
void ExpectSmallSizesFound(i16 sizeKind, const AnalysisChoice& choice, const Values& values);

// While this size grows, from its least value or the one given, the power never falls by more than
// the slack. Nothing is asked where H1 lies on the wrong side of H0: there the power goes to 0.
void ExpectMonotoneIn(i16 sizeKind, const AnalysisChoice& choice, const Values& values, f64 slack,
                      f64 from = 0);

} // namespace quorvanta::checks

// Where the name of its type is looked for.
namespace quorvanta::validation {

std::ostream& operator<<(std::ostream& out, const AnalysisChoice& choice);

} // namespace quorvanta::validation
