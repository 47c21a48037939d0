#include "core/help_numbers.h"

#include "core/analysis_state.h"
#include "core/general.h"

#include <charconv>

namespace quorvanta {

namespace {

constexpr i32 FirstTestNumber = 301;
constexpr i32 FirstDistributionNumber = 801;
constexpr i32 PerAnalysis = 10000;
constexpr char ExampleDigit = '9';

template <class Wanted>
bool FindPath(std::span<const MenuItem> items, MenuPath& path, const Wanted& wanted) {
    for (const MenuItem& item : items) {
        path.push_back(&item);
        if (wanted(item) || FindPath(item.Children, path, wanted))
            return true;
        path.pop_back();
    }
    return false;
}

template <class Wanted>
MenuPath PathTo(const Wanted& wanted) {
    MenuPath path;
    FindPath(MainMenu(), path, wanted);
    return path;
}

bool IsOffered(const HelpSubject& subject) {
    return subject.IsTest == True ? !PathToTest(subject.TestNo).empty()
                                  : !PathToDistribution(subject.DistrNo).empty();
}

HelpSubject Analysis(HelpTopic topic, i16 isTest, i32 number) {
    HelpSubject subject;
    subject.Topic = topic;
    subject.IsTest = isTest;
    (isTest == True ? subject.TestNo : subject.DistrNo) = ToI16(number);
    return subject;
}

// The analysis whose description has this number.
HelpSubject Described(HelpTopic topic, i32 number) {
    constexpr i32 afterDistributions = 900;
    if (number >= FirstDistributionNumber && number < afterDistributions)
        return Analysis(topic, False, number - FirstDistributionNumber);
    if (number >= FirstTestNumber && number < FirstDistributionNumber)
        return Analysis(topic, True, number - FirstTestNumber);
    return {};
}

// The number that a description's has become with a 9 before it; 0 for a number without one.
i32 WithoutExampleDigit(i32 number) {
    const std::string text = std::to_string(number);
    if (text.front() != ExampleDigit)
        return 0;
    i32 rest = 0;
    std::from_chars(text.data() + 1, text.data() + text.size(), rest);
    return rest;
}

// analysis * 10000 + samples * 1000 + tails * 100, for a distribution + (list + 1) * 10 + procedure
HelpSubject Parameters(i32 number) {
    constexpr i32 highestNumber = 999;
    if (number / PerAnalysis > highestNumber)
        return {};
    const i32 list = number / 10 % 10;
    HelpSubject subject = Analysis(HelpTopic::Parameters, ToFlag(list == 0), number / PerAnalysis);
    subject.NoOfSamples = ToI16(number / 1000 % 10);
    subject.NoOfTails = ToI16(number / 100 % 10);
    subject.ParListNo = list == 0 ? i16{0} : ToI16(list - 1);
    subject.ProcedureNo = ToI16(number % 10);
    const auto isChoice = [](i16 choice) { return choice >= 1 && choice <= 3; };
    const bool isList =
        subject.IsTest == True
            ? subject.ProcedureNo == 0
            : subject.ParListNo < static_cast<i16>(DistrParList(subject.DistrNo).size()) &&
                  subject.ProcedureNo <= ProcedureInterval;
    return isList && isChoice(subject.NoOfSamples) && isChoice(subject.NoOfTails) ? subject
                                                                                  : HelpSubject{};
}

const MenuItem* MenuOf(i32 number) {
    for (const MenuItem& menu : MainMenu())
        if (menu.HelpNo != 0 && menu.HelpNo == number)
            return &menu;
    return nullptr;
}

std::string AnalysisName(const HelpSubject& subject) {
    if (subject.IsTest == True)
        return TestMenuName(PathToTest(subject.TestNo).back()->MenuNo);
    const std::string distribution = DistrMenuName(subject.DistrNo);
    if (subject.Topic != HelpTopic::Parameters)
        return distribution;
    const auto list = DistrParList(subject.DistrNo);
    return std::string(list[static_cast<std::size_t>(subject.ParListNo)]) + ", " + distribution;
}

} // namespace

HelpSubject HelpSubjectOf(i32 number) {
    if (number <= 0)
        return {};
    if (const MenuItem* menu = MenuOf(number)) {
        HelpSubject subject;
        subject.Topic = HelpTopic::Menu;
        subject.Menu = menu;
        return subject;
    }
    for (const HelpSubject& subject :
         {Described(HelpTopic::Description, number),
          Described(HelpTopic::Example, WithoutExampleDigit(number)), Parameters(number)})
        if (subject.Topic != HelpTopic::None && IsOffered(subject))
            return subject;
    return {};
}

i32 HelpDescriptionOf(const HelpSubject& subject) {
    if (subject.Topic == HelpTopic::None || subject.Topic == HelpTopic::Menu)
        return 0;
    return subject.IsTest == True ? FirstTestNumber + subject.TestNo
                                  : FirstDistributionNumber + subject.DistrNo;
}

MenuPath PathToTest(i16 testNo) {
    return PathTo([testNo](const MenuItem& item) {
        return item.Action == MenuAction::Test && item.TestNo == testNo;
    });
}

MenuPath PathToDistribution(i16 distrNo) {
    return PathTo([distrNo](const MenuItem& item) {
        return item.Action == MenuAction::Distribution && item.MenuNo == distrNo;
    });
}

std::string HelpSubjectName(const HelpSubject& subject) {
    switch (subject.Topic) {
    case HelpTopic::None:
        return {};
    case HelpTopic::Menu:
        return StripAmpersand(subject.Menu->Caption);
    default:
        return AnalysisName(subject);
    }
}

std::string HelpChoicesInWords(const HelpSubject& subject) {
    if (subject.Topic != HelpTopic::Parameters)
        return {};
    constexpr const char* procedures[] = {"test", "point estimate", "confidence interval"};
    constexpr const char* samples[] = {"one sample", "two samples", "more than two samples"};
    constexpr const char* tails[] = {"one-sided", "two-sided", "two one-sided"};
    std::string words;
    if (subject.IsTest == False)
        words = std::string(procedures[subject.ProcedureNo]) + ", ";
    return words + samples[subject.NoOfSamples - 1] + ", " + tails[subject.NoOfTails - 1];
}

} // namespace quorvanta
