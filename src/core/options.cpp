#include "core/options.h"

#include "core/analysis_state.h"
#include "core/kinds.h"

#include <algorithm>

namespace quorvanta {

namespace {

// Pairs of check boxes of which at most one makes sense.
constexpr i16 ExclusiveChecks[][2] = {
    {Check::DegreesOfFreedom, Check::GroupsInAnova},
    // The arc-sine form has no continuity correction, an exact form neither.
    {Check::Correction, Check::ArcSine},
    {Check::Correction, Check::Exact},
    {Check::ArcSine, Check::Exact},
    {Check::Incidences, Check::Medians},
    // Approaches to McNemar's test.
    {Check::FirstOrder, Check::SecondOrder},
    {Check::FirstOrder, Check::Multinomial},
    {Check::SecondOrder, Check::Multinomial},
    // The variance of paired proportions under H0.
    {Check::Score, Check::UnrestrictedMl},
    {Check::Score, Check::VarianceOfH1},
    {Check::UnrestrictedMl, Check::VarianceOfH1},
    // What the next family of hypotheses waits for.
    {Check::SerialGatekeeping, Check::ParallelGatekeeping},
};

int CheckPosition(i16 kind) {
    for (int i = 0; i < NoOfCheck; ++i)
        if (CheckList(i) == kind)
            return i;
    return -1;
}

int GroupPosition(i16 group) {
    for (int i = 0; i < NoOfIntPar; ++i)
        if (IntParList(i) == group)
            return i;
    return -1;
}

void Offer(std::initializer_list<i16> choices, FixedArray<bool, 1, 3>& offered, i16& chosen,
           i16& own) {
    offered.Fill(false);
    for (const i16 choice : choices)
        offered(choice) = true;
    if (std::find(choices.begin(), choices.end(), chosen) != choices.end())
        return;
    if (own == 0)
        own = chosen;
    chosen = *(choices.end() - 1);
}

// What another offer has forced goes, and the user's own choice is back.
void TakeBackOwn(i16& chosen, i16& own) {
    if (own != 0)
        chosen = own;
    own = 0;
}

void Disown(const FixedArray<bool, 1, 3>& offered, i16 chosen, i16 start, i16& own) {
    const bool isForced = offered(1) + offered(2) + offered(3) == 1;
    if (isForced && chosen != start)
        own = start;
}

} // namespace

void ClearOptions() {
    TakeBackOwn(NoOfSamples, OwnSamples);
    TakeBackOwn(NoOfTails, OwnTails);
    NoOfCheck = 0;
    NoOfIntPar = 0;
    SamplesOffered.Fill(true);
    TailsOffered.Fill(true);
    CheckEnabled.Fill(true);
    IntParOptionEnabled.Fill(true);
    SamplesShown = true;
    InterimShown = false;
    TailsShown = true;
}

void FixSamples(i16 noOfSamples) {
    OfferSamples({noOfSamples});
}

void OfferSamples(std::initializer_list<i16> choices) {
    Offer(choices, SamplesOffered, NoOfSamples, OwnSamples);
}

void OfferTails(std::initializer_list<i16> choices) {
    Offer(choices, TailsOffered, NoOfTails, OwnTails);
}

void DisownForcedChoices() {
    Disown(SamplesOffered, NoOfSamples, TwoSamples, OwnSamples);
    Disown(TailsOffered, NoOfTails, TwoSided, OwnTails);
}

void OfferChecks(std::initializer_list<i16> kinds) {
    for (const i16 kind : kinds) {
        CheckList(NoOfCheck) = kind;
        ++NoOfCheck;
    }
}

void OfferGroups(std::initializer_list<i16> kinds) {
    for (const i16 kind : kinds) {
        IntParList(NoOfIntPar) = kind;
        ++NoOfIntPar;
    }
}

void DisableCheck(i16 kind) {
    CheckEnabled(CheckPosition(kind)) = false;
    CheckValue(kind) = 0;
}

void DisableOption(i16 group, i16 option) {
    IntParOptionEnabled(option, GroupPosition(group)) = false;
    if (IntParValue(group) == option)
        IntParValue(group) = 0;
}

bool Ticked(i16 kind) {
    return CheckPosition(kind) >= 0 && CheckValue(kind) == 1;
}

i16 ChosenOption(i16 group) {
    return GroupPosition(group) >= 0 ? IntParValue(group) : i16{0};
}

Form ChosenForm(i16 group) {
    return static_cast<Form>(ChosenOption(group));
}

void ClearExcludedChecks(i16 tickedKind) {
    for (const auto& pair : ExclusiveChecks) {
        if (pair[0] == tickedKind)
            CheckValue(pair[1]) = 0;
        if (pair[1] == tickedKind)
            CheckValue(pair[0]) = 0;
    }
}

void StartParList() {
    NoOfPar = -1;
}

i16 AddPar(i16 kind) {
    ++NoOfPar;
    ParKind(NoOfPar) = kind;
    return NoOfPar;
}

} // namespace quorvanta
