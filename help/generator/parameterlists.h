// Every parameter that an analysis can have, and with which of its options: asked of the engine
// itself, by going through all that the option window offers.
#pragma once

#include "core/help_numbers.h"
#include "core/types.h"

#include <map>
#include <string>
#include <vector>

namespace quorvanta::help {

// To the front comes a window of that kind; it is opened if there is none.
void ShowWindowOf(i16 kind);

// A choice in the option window: a check box, or a group of interchangeable parameters.
struct Option {
    bool IsGroup = false;
    i16 Kind = 0;

    friend auto operator<=>(const Option&, const Option&) = default;
};

// What is chosen there: 1 or 0 for a check box, the option of a group.
using Choices = std::map<Option, i16>;

// The parameter list that some choices yield.
struct ParameterList {
    Choices Chosen; // of the options that these choices offer
    std::vector<i16> Kinds;
};

// True if the program has a module for the subject's analysis, which solves or simulates it.
bool IsServed(const HelpSubject& analysis);

// True if it has an equation: any value can be the unknown. What is served without one is simulated
// only.
bool IsSolved(const HelpSubject& analysis);

// The choices of samples and tails (and, for a distribution, of parameter and procedure) that the
// analysis offers, as subjects with topic Parameters. The analysis has to be served.
std::vector<HelpSubject> ParameterSubjects(const HelpSubject& analysis);

// The parameter lists of a subject with topic Parameters, over all choices of its options.
std::vector<ParameterList> ParameterLists(const HelpSubject& subject);

// The kinds of some lists, each once, in the order of the window; kinds that take each other's
// place stand one after the other. Throws std::runtime_error if two lists contradict each other.
std::vector<i16> KindsOf(const std::vector<ParameterList>& lists);

// With which choices the lists have this kind, in words: "'Mean 2' or 'Mean 2 / Mean 1' is
// chosen"; empty if all have it.
std::string ConditionOf(i16 kind, const std::vector<ParameterList>& lists);

} // namespace quorvanta::help
