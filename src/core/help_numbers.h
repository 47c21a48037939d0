// The numbers that the help is opened on, and what each of them stands for.
#pragma once

#include "core/catalogue.h"
#include "core/types.h"

#include <string>
#include <vector>

namespace quorvanta {

// The number of the contents.
inline constexpr i32 HelpContents = 0;

enum class HelpTopic {
    None,        // nothing has this number
    Menu,        // a menu
    Description, // what an analysis is for and how it is calculated
    Parameters,  // the parameters of an analysis with a choice of samples and tails
    Example      // a worked example of an analysis
};

// A help number taken apart. The fields that the topic does not use are empty.
struct HelpSubject {
    HelpTopic Topic = HelpTopic::None;
    const MenuItem* Menu = nullptr;
    i16 IsTest = False;
    i16 TestNo = 0;
    i16 DistrNo = 0;
    i16 NoOfSamples = 0;
    i16 NoOfTails = 0;
    i16 ParListNo = 0;   // of a distribution
    i16 ProcedureNo = 0; // of a distribution

    friend bool operator==(const HelpSubject&, const HelpSubject&) = default;
};

// What a number stands for: the inverse of HelpDescription, HelpParameters and HelpExample, over
// the analyses that the menus offer. Topic None for any other number, negative ones included.
HelpSubject HelpSubjectOf(i32 number);

// The help number of the description of a subject's analysis; 0 for a subject without one.
i32 HelpDescriptionOf(const HelpSubject& subject);

// The entries on the way from the menu bar to an analysis, its own entry last. Empty if the menus
// don't offer it.
using MenuPath = std::vector<const MenuItem*>;
MenuPath PathToTest(i16 testNo);
MenuPath PathToDistribution(i16 distrNo);

// The analysis of a subject in words: "Student's t-test, Unpaired", "mean (std.dev. known), Normal
// Distribution"; the caption of a menu; empty for topic None.
std::string HelpSubjectName(const HelpSubject& subject);

// What was chosen for the parameters of a subject, in words: "two samples, two-sided"; with the
// procedure of a distribution before it. Empty for any other topic.
std::string HelpChoicesInWords(const HelpSubject& subject);

} // namespace quorvanta
