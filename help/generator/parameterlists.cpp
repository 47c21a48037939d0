#include "generator/parameterlists.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/option_choice.h"
#include "core/records.h"
#include "core/setup.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <set>
#include <stdexcept>

namespace quorvanta::help {

void ShowWindowOf(i16 kind) {
    if (CurrentWindowKind() == kind)
        return;
    for (i16 i = 1; i <= Analysis.HighBound(); ++i)
        if (Analysis(i).WindowKind == kind && AnalysisState(i).Closed == False)
            return ChildActivated(i);
    FileCommand(kind);
}

namespace {

AnalysisKey KeyOf(const HelpSubject& subject) {
    return {.IsTest = subject.IsTest,
            .TestNo = subject.TestNo,
            .DistrNo = subject.DistrNo,
            .ProcedureNo = ProcedureTest,
            .ParListNo = 0};
}

// One that can show the analysis.
void ShowWindowFor(const HelpSubject& subject) {
    ShowWindowOf(IsSolved(subject) ? CalculationWindow : SimulationWindow);
}

void ChooseAnalysis(const HelpSubject& subject) {
    ShowWindowFor(subject);
    if (subject.IsTest == True)
        NewTest(PathToTest(subject.TestNo).back()->MenuNo);
    else
        NewDistribution(subject.DistrNo);
}

void ChooseSubject(const HelpSubject& subject) {
    ChooseAnalysis(subject);
    if (subject.IsTest == False) {
        ChooseParList(subject.ParListNo);
        ChooseProcedure(subject.ProcedureNo);
    }
    ChooseSamples(subject.NoOfSamples);
    OwnTails = 0; // no tails of another subject come back
    ChooseTails(subject.NoOfTails);
}

// The subject as the option window has it now.
HelpSubject CurrentSubject() {
    return HelpSubjectOf(HelpParameters());
}

Choices CurrentChoices() {
    Choices choices;
    for (i16 i = 0; i < NoOfCheck; ++i)
        choices[{false, CheckList(i)}] = CheckValue(CheckList(i));
    for (i16 i = 0; i < NoOfIntPar; ++i)
        choices[{true, IntParList(i)}] = IntParValue(IntParList(i));
    return choices;
}

void RestoreChoices(const Choices& choices) {
    for (const auto& [option, chosen] : choices)
        (option.IsGroup ? IntParValue(option.Kind) : CheckValue(option.Kind)) = chosen;
    NewSetup();
}

// The subject with these tails, which may take the tick of a check box.
std::optional<HelpSubject> SubjectWith(i16 tails) {
    const auto chosen = [tails]() -> std::optional<HelpSubject> {
        if (!TailsOffered(tails))
            return std::nullopt;
        ChooseTails(tails);
        return CurrentSubject();
    };
    std::optional<HelpSubject> subject = chosen();
    for (i16 i = 0; i < NoOfCheck && !subject; ++i) {
        if (!CheckEnabled(i) || CheckValue(CheckList(i)) == 1)
            continue;
        ChooseCheck(i, true);
        subject = chosen();
        ChooseCheck(i, false);
    }
    return subject;
}

// The choices that are one click away.
std::vector<Choices> Neighbours(const Choices& from) {
    std::vector<Choices> found;
    const auto look = [&found, &from](auto&& click) {
        RestoreChoices(from);
        click();
        found.push_back(CurrentChoices());
    };
    RestoreChoices(from);
    const i16 checks = NoOfCheck;
    const i16 groups = NoOfIntPar;
    for (i16 i = 0; i < checks; ++i) {
        RestoreChoices(from);
        if (CheckEnabled(i))
            look([i] { ChooseCheck(i, CheckValue(CheckList(i)) == 0); });
    }
    for (i16 i = 0; i < groups; ++i)
        for (i16 option = 0; option <= 2; ++option) {
            RestoreChoices(from);
            if (IntParOptionEnabled(option, i) && !IntParOption(option, IntParList(i)).empty())
                look([i, option] { ChooseIntPar(i, option); });
        }
    return found;
}

bool Has(const ParameterList& list, i16 kind) {
    return std::ranges::find(list.Kinds, kind) != list.Kinds.end();
}

constexpr i16 notOffered = -1;

i16 ChosenIn(const ParameterList& list, const Option& option) {
    const auto found = list.Chosen.find(option);
    return found == list.Chosen.end() ? notOffered : found->second;
}

// One way to a kind: every option has one of these choices.
using Way = std::map<Option, std::set<i16>>;

bool Goes(const ParameterList& list, const Way& way) {
    return std::ranges::all_of(way, [&list](const auto& condition) {
        return condition.second.contains(ChosenIn(list, condition.first));
    });
}

bool GoesWrong(const Way& way, i16 kind, const std::vector<ParameterList>& lists) {
    return std::ranges::any_of(lists, [&way, kind](const ParameterList& list) {
        return !Has(list, kind) && Goes(list, way);
    });
}

Way ChoicesIn(const std::vector<const ParameterList*>& lists) {
    Way way;
    for (const ParameterList* list : lists)
        for (const auto& [option, chosen] : list->Chosen)
            way[option];
    for (auto& [option, chosen] : way)
        for (const ParameterList* list : lists)
            chosen.insert(ChosenIn(*list, option));
    return way;
}

// The ways to a kind that these lists, which have it, are reached by. Options that don't matter
// are left out, groups first: the tick that brings a group with it is what a reader looks for.
void AddWays(const std::vector<const ParameterList*>& having, i16 kind,
             const std::vector<ParameterList>& lists, std::set<Way>& ways) {
    Way way = ChoicesIn(having);
    if (GoesWrong(way, kind, lists)) {
        const auto split = std::ranges::find_if(
            way, [](const auto& condition) { return condition.second.size() > 1; });
        if (split == way.end())
            throw std::runtime_error("the options don't decide on kind " + std::to_string(kind));
        for (const i16 choice : split->second) {
            std::vector<const ParameterList*> part;
            for (const ParameterList* list : having)
                if (ChosenIn(*list, split->first) == choice)
                    part.push_back(list);
            AddWays(part, kind, lists, ways);
        }
        return;
    }
    for (const bool group : {true, false}) {
        const Way whole = way;
        for (const auto& [option, chosen] : whole) {
            if (option.IsGroup != group)
                continue;
            way.erase(option);
            if (GoesWrong(way, kind, lists))
                way[option] = chosen;
        }
    }
    ways.insert(way);
}

std::string InWords(const Option& option, const std::set<i16>& chosen) {
    if (!option.IsGroup) {
        const bool ticked = chosen.contains(1);
        return "'" + StripAmpersand(CheckLabel(option.Kind)) + "' is " +
               (ticked ? "ticked" : "not ticked");
    }
    std::string words;
    for (const i16 choice : chosen)
        if (choice != notOffered)
            words += (words.empty() ? "'" : " or '") +
                     StripAmpersand(IntParOption(choice, option.Kind)) + "'";
    return words + " is chosen";
}

std::string InWords(const Way& way) {
    std::string words;
    for (const auto& [option, chosen] : way)
        words += (words.empty() ? "" : " and ") + InWords(option, chosen);
    return words;
}

} // namespace

bool IsServed(const HelpSubject& analysis) {
    return quorvanta::IsServed(KeyOf(analysis));
}

bool IsSolved(const HelpSubject& analysis) {
    return HasEquation(KeyOf(analysis));
}

std::vector<HelpSubject> ParameterSubjects(const HelpSubject& analysis) {
    std::vector<HelpSubject> subjects;
    const auto addSamplesAndTails = [&subjects] {
        for (i16 samples = OneSample; samples <= MoreSamples; ++samples) {
            if (!SamplesOffered(samples))
                continue;
            ChooseSamples(samples);
            for (i16 tails = OneSided; tails <= TwoOneSided; ++tails)
                if (const auto subject = SubjectWith(tails))
                    subjects.push_back(*subject);
        }
    };
    ChooseAnalysis(analysis);
    if (analysis.IsTest == True) {
        addSamplesAndTails();
        return subjects;
    }
    const auto lists = static_cast<i16>(DistrParList(analysis.DistrNo).size());
    for (i16 list = 0; list < lists; ++list)
        for (i16 procedure = ProcedureTest; procedure <= ProcedureInterval; ++procedure) {
            ChooseParList(list);
            ChooseProcedure(procedure);
            addSamplesAndTails();
        }
    return subjects;
}

std::vector<ParameterList> ParameterLists(const HelpSubject& subject) {
    ShowWindowFor(subject); // which brings its choices
    CheckValue.Fill(0);
    IntParValue.Fill(0);
    ChooseSubject(subject);
    std::vector<ParameterList> lists;
    std::set<Choices> seen;
    std::deque<Choices> waiting{CurrentChoices()};
    while (!waiting.empty()) {
        const Choices choices = waiting.front();
        waiting.pop_front();
        if (!seen.insert(choices).second)
            continue;
        for (const Choices& next : Neighbours(choices))
            waiting.push_back(next);
        RestoreChoices(choices);
        if (NoOfTails != subject.NoOfTails)
            continue; // other tails are forced with these choices
        SelSetParList();
        ParameterList list{choices, {}};
        for (i16 i = 0; i <= NoOfPar; ++i)
            list.Kinds.push_back(ParKind(i));
        lists.push_back(std::move(list));
    }
    return lists;
}

std::vector<i16> KindsOf(const std::vector<ParameterList>& lists) {
    std::vector<i16> found; // as they are met
    std::map<i16, std::set<i16>> predecessors;
    std::map<i16, std::set<i16>> neighbours; // those right before a kind
    for (const ParameterList& list : lists)
        for (auto kind = list.Kinds.begin(); kind != list.Kinds.end(); ++kind) {
            if (!predecessors.contains(*kind))
                found.push_back(*kind);
            predecessors[*kind].insert(list.Kinds.begin(), kind);
            if (kind != list.Kinds.begin())
                neighbours[*kind].insert(*(kind - 1));
        }
    std::vector<i16> placed;
    const auto placeOf = [&placed](i16 kind) {
        return std::ranges::find(placed, kind) - placed.begin();
    };
    const auto isReady = [&](i16 kind) {
        return std::ranges::all_of(
            predecessors[kind], [&](i16 before) { return placeOf(before) < std::ssize(placed); });
    };
    // What follows most closely on what has been placed: the forms of one quantity stay together.
    const auto closeness = [&](i16 kind) {
        std::ptrdiff_t close = -1;
        for (const i16 neighbour : neighbours[kind])
            close = std::max(close, placeOf(neighbour));
        return close;
    };
    while (!found.empty()) {
        auto next = found.end();
        for (auto kind = found.begin(); kind != found.end(); ++kind)
            if (isReady(*kind) && (next == found.end() || closeness(*kind) > closeness(*next)))
                next = kind;
        if (next == found.end())
            throw std::runtime_error("the lists have no common order");
        placed.push_back(*next);
        found.erase(next);
    }
    return placed;
}

std::string ConditionOf(i16 kind, const std::vector<ParameterList>& lists) {
    std::vector<const ParameterList*> having;
    for (const ParameterList& list : lists)
        if (Has(list, kind))
            having.push_back(&list);
    std::set<Way> ways;
    AddWays(having, kind, lists, ways);
    std::string words;
    for (const Way& way : ways)
        words += (words.empty() ? "" : ", or ") + InWords(way);
    return words;
}

} // namespace quorvanta::help
