#include "support/properties.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/root.h"
#include "core/search.h"
#include "core/setup.h"
#include "core/values.h"
#include "multcomp/family.h"
#include "numeric/randdist.h"
#include "support/search_messages.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta::checks {

namespace {

std::vector<i16> TickedChecks() {
    std::vector<i16> kinds;
    for (i16 i = 0; i < NoOfCheck; ++i)
        if (CheckValue(CheckList(i)) == 1)
            kinds.push_back(CheckList(i));
    return kinds;
}

void Tick(const std::vector<i16>& kinds) {
    for (i16 i = 0; i < NoOfCheck; ++i)
        ChooseCheck(i, false);
    for (const i16 kind : kinds)
        for (i16 i = 0; i < NoOfCheck; ++i)
            if (CheckList(i) == kind && CheckEnabled(i))
                ChooseCheck(i, true);
}

// Every set of check boxes that can be ticked together.
std::vector<std::vector<i16>> CheckChoices() {
    Tick({});
    std::vector<i16> offered;
    for (i16 i = 0; i < NoOfCheck; ++i)
        offered.push_back(CheckList(i));
    std::vector<std::vector<i16>> choices;
    for (unsigned mask = 0; mask < 1U << offered.size(); ++mask) {
        std::vector<i16> kinds;
        for (std::size_t i = 0; i < offered.size(); ++i)
            if ((mask >> i & 1U) != 0)
                kinds.push_back(offered[i]);
        Tick(kinds);
        if (TickedChecks() == kinds)
            choices.push_back(kinds);
    }
    return choices;
}

std::vector<i16> OptionsOf(i16 position) {
    std::vector<i16> options;
    for (i16 option = 0; option <= 2; ++option)
        if (!IntParOption(option, IntParList(position)).empty() &&
            IntParOptionEnabled(option, position))
            options.push_back(option);
    return options;
}

i16 PositionOfGroup(i16 group) {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        if (IntParList(i) == group)
            return i;
    return -1;
}

bool HasFormsSideBySide(const AnalysisChoice& analysis) {
    const std::set<i16> menus{150, 151, 152, 402, 403, 404, 630, 804, 834};
    return menus.contains(analysis.MenuNo);
}

bool AreFormsSideBySide() {
    for (i16 form = AsValue; form <= AsRatio; ++form) {
        bool fits = true;
        for (i16 i = 0; i < NoOfIntPar; ++i) {
            const i16 group = IntParList(i);
            const i16 last = IntParOption(AsRatio, group).empty() ? i16{1} : i16{2};
            fits = fits && (group == Group::Given || IntParValue(group) == std::min(form, last));
        }
        if (fits)
            return true;
    }
    return false;
}

// Every combination of the options of the groups from this position on, with the check boxes as
// they are ticked. An option may take groups behind it, and check boxes, out of reach.
void CollectGroupChoices(i16 position, bool sideBySide, std::vector<std::map<i16, i16>>& choices) {
    const std::vector<i16> ticked = TickedChecks();
    if (position >= NoOfIntPar) {
        if (sideBySide && !AreFormsSideBySide())
            return;
        std::map<i16, i16> choice;
        for (i16 i = 0; i < NoOfIntPar; ++i)
            choice[IntParList(i)] = IntParValue(IntParList(i));
        if (std::ranges::find(choices, choice) == choices.end())
            choices.push_back(choice);
        return;
    }
    const i16 group = IntParList(position);
    for (const i16 option : OptionsOf(position)) {
        ChooseIntPar(PositionOfGroup(group), option);
        if (TickedChecks() == ticked)
            CollectGroupChoices(static_cast<i16>(position + 1), sideBySide, choices);
    }
    ChooseIntPar(PositionOfGroup(group), 0);
    Tick(ticked);
}

std::vector<std::map<i16, i16>> GroupChoices(bool sideBySide) {
    std::vector<std::map<i16, i16>> choices;
    CollectGroupChoices(0, sideBySide, choices);
    return choices;
}

// The texts of all kinds as the catalogue has them.
void ResetTexts() {
    static const auto texts = [] {
        SetAllParKinds();
        return ParText;
    }();
    ParText = texts;
}

std::string Unknown(const AnalysisChoice& choice, i16 parNo) {
    return Describe(choice) + ", solved for " + StripAmpersand(ParLabel(ParKind(parNo)));
}

bool IsFixedText(const std::string& text, const std::vector<std::string>& ownMessages) {
    return IsSearchMessage(text) ||
           std::find(ownMessages.begin(), ownMessages.end(), text) != ownMessages.end();
}

// Solves for the parameter as a user does; false after a message.
bool Solves(i16 parNo, ScriptedPlatform& platform) {
    platform.Messages.clear();
    Calculated = False;
    SolveFor(parNo);
    return HasValue(ParText(ParKind(parNo)));
}

// The position of a kind in the parameter list; -1 if it has none.
i16 PositionOf(i16 kind) {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (ParKind(i) == kind)
            return i;
    return -1;
}

// The limits of the search for the unknown; nothing is left where the check of values objects.
bool LimitsOf(i16 parNo, f64& lower, f64& upper) {
    UnknownParNo = parNo;
    const std::string text = ParText(ParKind(parNo));
    ParText(ParKind(parNo)) = "-";
    const bool good = SelCheckPar();
    ParText(ParKind(parNo)) = text;
    lower = ParMin(ParKind(parNo));
    upper = ParMax(ParKind(parNo));
    if (good) {
        const f64 before = ParValue(parNo);
        ClearFloatFaults();
        EXPECT_NO_THROW(SelSearchLimits(lower, upper)) << StripAmpersand(ParLabel(ParKind(parNo)));
        EXPECT_FALSE(HasFloatFault()) << StripAmpersand(ParLabel(ParKind(parNo)));
        EXPECT_EQ(ParValue(parNo), before) << StripAmpersand(ParLabel(ParKind(parNo)));
    }
    return good && upper > lower;
}

} // namespace

// Of a test that is about distributions, with something to find in the left tail.
const std::vector<DistrRow> smallerObservations{{SimNormal, 0, 1}, {SimNormal, -0.3F, 1}};

std::vector<AnalysisChoice> AllChoices(const AnalysisChoice& analysis, FormsWalked forms) {
    const bool sideBySide = forms == FormsWalked::Usual && HasFormsSideBySide(analysis);
    std::vector<AnalysisChoice> choices;
    Open(analysis);
    for (const i16 samples : {OneSample, TwoSamples, MoreSamples}) {
        if (!SamplesOffered(samples))
            continue;
        ChooseSamples(samples);
        for (const i16 tails : {OneSided, TwoSided, TwoOneSided}) {
            OwnTails = 0;
            ChooseTails(tails);
            for (const bool left : {false, true}) {
                ChooseLeftTail(left);
                for (const std::vector<i16>& checks : CheckChoices()) {
                    Tick(checks);
                    // A check box may be what offers the tails.
                    if (NoOfTails != tails || (left && !LeftTailOffered))
                        continue;
                    for (const std::map<i16, i16>& groups : GroupChoices(sideBySide)) {
                        AnalysisChoice choice = analysis;
                        choice.NoOfSamples = samples;
                        choice.NoOfTails = tails;
                        choice.Left = left;
                        choice.Checks = checks;
                        choice.Groups = groups;
                        if (left && SelIsTablePar(PowerParNo) && SelTableDistr(PowerParNo))
                            choice.Distributions = smallerObservations;
                        const auto methods = static_cast<i16>(AdjustMethodNames().size());
                        for (choice.Method = 0; choice.Method == 0 || choice.Method < methods;
                             ++choice.Method)
                            choices.push_back(choice);
                    }
                }
            }
        }
    }
    CancelOptions();
    return choices;
}

std::string Describe(const AnalysisChoice& choice) {
    std::string text = choice.MenuNo >= 0
                           ? TestMenuName(choice.MenuNo)
                           : DistrMenuName(choice.DistrNo) + " " + std::to_string(choice.ParListNo);
    text += ", samples " + std::to_string(choice.NoOfSamples) + ", tails " +
            std::to_string(choice.NoOfTails) + (choice.Left ? " left" : "");
    for (const i16 kind : choice.Checks)
        text += ", " + StripAmpersand(CheckLabel(kind));
    for (const auto& [group, option] : choice.Groups)
        text += ", " + IntParOption(option, group);
    if (choice.Method != 0)
        text += ", method " + std::to_string(choice.Method);
    return text;
}

void Start(const AnalysisChoice& choice, const Values& values) {
    ResetTexts();
    SetUp(choice);
    ResetTexts(); // the set-up has solved for the power
    for (i16 i = 0; i <= NoOfPar; ++i) {
        if (const auto value = values.find(ParKind(i)); value != values.end())
            ParText(ParKind(i)) = value->second;
        ParValue(i) = ReadNumber(ParText(ParKind(i)));
    }
    Calculated = False;
}

int ExpectSolvesOrSaysWhy(const AnalysisChoice& choice, const Values& values,
                          ScriptedPlatform& platform, const std::vector<std::string>& ownMessages) {
    Start(choice, values);
    const i16 last = NoOfPar;
    int solved = 0;
    for (i16 i = 0; i <= last; ++i) {
        Start(choice, values);
        bool solves = false;
        EXPECT_NO_THROW(solves = Solves(i, platform)) << Unknown(choice, i);
        EXPECT_EQ(solves, platform.Messages.empty()) << Unknown(choice, i);
        for (const Message& message : platform.Messages)
            EXPECT_TRUE(IsFixedText(message.Text, ownMessages))
                << Unknown(choice, i) << ": " << message.Text;
        solved += solves ? 1 : 0;
    }
    return solved;
}

void ExpectAllSolve(const AnalysisChoice& choice, const Values& values, ScriptedPlatform& platform,
                    const std::set<i16>& exceptKinds) {
    Start(choice, values);
    const i16 last = NoOfPar;
    for (i16 i = 0; i <= last; ++i) {
        Start(choice, values);
        if (exceptKinds.count(ParKind(i)) != 0)
            continue;
        EXPECT_TRUE(Solves(i, platform))
            << Unknown(choice, i) << ": "
            << (platform.Messages.empty() ? "" : platform.Messages.back().Text);
    }
}

int ExpectRoundTrip(const AnalysisChoice& choice, const Values& values) {
    Start(choice, values);
    const i16 last = NoOfPar;
    int solved = 0;
    for (i16 i = 0; i <= last; ++i) {
        Start(choice, values);
        f64 lower = 0;
        f64 upper = 0;
        if (i == PowerParNo || !LimitsOf(i, lower, upper))
            continue;
        const f64 target = ParValue(PowerParNo);
        const f64 root = SolveUnknown();
        if (root == NoValue)
            continue;
        ParValue(i) = root;
        UnknownParNo = PowerParNo;
        EXPECT_NEAR(SolveUnknown(), target, RootResidual + RootTolerance) << Unknown(choice, i);
        ++solved;
    }
    return solved;
}

void ExpectSafeInsideLimits(const AnalysisChoice& choice, const Values& values) {
    Start(choice, values);
    const i16 last = NoOfPar;
    for (i16 i = 0; i <= last; ++i) {
        Start(choice, values);
        f64 lower = 0;
        f64 upper = 0;
        if (!LimitsOf(i, lower, upper))
            continue;
        std::vector<f64> trials;
        constexpr int steps = 12;
        for (int k = 0; k <= steps; ++k) {
            trials.push_back(lower + (upper - lower) * k / steps);
            // Denser towards the lower limit: a size of a handful lies among 99999.
            trials.push_back(lower + (upper - lower) * std::pow(10.0, -6.0 * k / steps));
        }
        ClearFloatFaults();
        for (const f64 trial : trials) {
            f64 residual = NAN;
            EXPECT_NO_THROW(residual = TryValue(trial)) << Unknown(choice, i) << " at " << trial;
            EXPECT_TRUE(std::isfinite(residual)) << Unknown(choice, i) << " at " << trial;
            if (i != PowerParNo && IsPowerKind(ParKind(PowerParNo))) {
                constexpr f64 rounding = 1e-6; // of a sum of probabilities in 32 bits
                EXPECT_LE(residual + ParValue(PowerParNo), 1 + rounding)
                    << Unknown(choice, i) << " at " << trial;
            }
        }
    }
}

namespace {

// Trial values of the unknown at, next to and between its limits.
void ExpectSafeAtLimits(const AnalysisChoice& choice, i16 parNo, const std::string& where) {
    f64 lower = 0;
    f64 upper = 0;
    if (!LimitsOf(parNo, lower, upper))
        return;
    ClearFloatFaults();
    for (const f64 trial : {lower, upper, std::nextafter(lower, upper),
                            lower + 1e-7 * (upper - lower), (lower + upper) / 2}) {
        f64 residual = NAN;
        EXPECT_NO_THROW(residual = TryValue(trial))
            << Unknown(choice, parNo) << " at " << trial << where;
        EXPECT_TRUE(std::isfinite(residual)) << Unknown(choice, parNo) << " at " << trial << where;
    }
}

} // namespace

void ExpectSafeWithAnyBase(const AnalysisChoice& choice, const Values& values) {
    constexpr f64 sizes[] = {0.0012345, 0.03, 0.7, 3.3, 256.7, 1282.1, 2195.7, 31234.5, 98765.4};
    Start(choice, values);
    for (i16 base = 2; base <= NoOfPar; ++base)
        for (const f64 size : sizes)
            for (const f64 value : {size, -size}) {
                const i16 kind = ParKind(base);
                if (value < ParMin(kind) || value > ParMax(kind))
                    continue;
                const f64 planned = ParValue(base);
                ParValue(base) = value;
                const std::string where =
                    " with " + StripAmpersand(ParLabel(kind)) + " " + std::to_string(value);
                // A quantity in two forms stands in neighbours.
                for (const int step : {-2, -1, 1, 2}) {
                    const i16 parNo = static_cast<i16>(base + step);
                    if (parNo < 2 || parNo > NoOfPar)
                        continue;
                    const f64 before = ParValue(parNo);
                    ExpectSafeAtLimits(choice, parNo, where);
                    ParValue(parNo) = before;
                }
                ParValue(base) = planned;
            }
}

void ExpectSmallSizesFound(i16 sizeKind, const AnalysisChoice& choice, const Values& values) {
    Start(choice, values);
    const i16 size = PositionOf(sizeKind);
    f64 lower = 0;
    f64 upper = 0;
    if (size < 0 || !LimitsOf(size, lower, upper))
        return;
    constexpr f64 least = 3.9;
    constexpr f64 most = 24;
    constexpr f64 step = 0.37;
    for (f64 n = MaxOf(least, lower); n < most; n += step) {
        ParValue(size) = n;
        UnknownParNo = PowerParNo;
        const f64 result = SolveUnknown();
        if (result == NoValue)
            continue;
        ParValue(PowerParNo) = result;
        UnknownParNo = size;
        // Where the least size has as much, there is none to find.
        if (TryValue(lower) * TryValue(upper) > 0)
            continue;
        EXPECT_NE(SolveUnknown(), NoValue) << Unknown(choice, size) << " of " << n;
    }
}

void ExpectMonotoneIn(i16 sizeKind, const AnalysisChoice& choice, const Values& values, f64 slack,
                      f64 from) {
    Start(choice, values);
    const i16 size = PositionOf(sizeKind);
    f64 lower = 0;
    f64 upper = 0;
    if (size < 0 || !LimitsOf(size, lower, upper))
        return;
    lower = MaxOf(lower, from);
    std::vector<f64> sizes;
    std::vector<f64> powers;
    constexpr int steps = 60;
    for (int k = 0; k <= steps; ++k) {
        sizes.push_back(lower * std::pow(upper / lower, static_cast<f64>(k) / steps));
        powers.push_back(TryValue(sizes.back()) + ParValue(PowerParNo));
    }
    if (powers.back() < powers.front())
        return;
    for (std::size_t k = 1; k < powers.size(); ++k)
        EXPECT_GE(powers[k], powers[k - 1] - slack)
            << Unknown(choice, size) << " from " << sizes[k - 1] << " to " << sizes[k];
}

} // namespace quorvanta::checks

std::ostream& quorvanta::validation::operator<<(std::ostream& out, const AnalysisChoice& choice) {
    return out << checks::Describe(choice);
}
