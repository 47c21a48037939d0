// The tests of proportions, with every choice of their options.
#include "support/analysis_fixture.h"
#include "support/properties.h"

#include <algorithm>

namespace quorvanta::checks {
namespace {

AnalysisChoice OfMenu(i16 menuNo) {
    AnalysisChoice analysis;
    analysis.MenuNo = menuNo;
    return analysis;
}

AnalysisChoice OfDistribution(i16 distrNo, i16 parListNo) {
    AnalysisChoice analysis;
    analysis.DistrNo = distrNo;
    analysis.ParListNo = parListNo;
    return analysis;
}

std::vector<AnalysisChoice> TestsOfProportions() {
    return {OfMenu(100),
            OfMenu(70),
            OfMenu(111),
            OfMenu(80),
            OfMenu(802),
            OfMenu(832),
            OfMenu(803),
            OfMenu(833),
            OfDistribution(DistrBinomial, 0),
            OfDistribution(DistrBinomial, 1),
            OfDistribution(DistrHypergeometric, 0)};
}

class ProportionProperties : public AnalysisFixture,
                             public ::testing::WithParamInterface<AnalysisChoice> {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }
};

// --- Plans in which every parameter has a solution ---------------------------------------------

bool Has(const AnalysisChoice& choice, i16 checkKind) {
    return std::find(choice.Checks.begin(), choice.Checks.end(), checkKind) != choice.Checks.end();
}

i16 Option(const AnalysisChoice& choice, i16 group) {
    const auto found = choice.Groups.find(group);
    return found == choice.Groups.end() ? i16{0} : found->second;
}

bool IsOdds(const AnalysisChoice& choice) {
    return Has(choice, 9) || (choice.MenuNo < 0 && choice.ParListNo == 1);
}

void Add(Values& values, const Values& more) {
    for (const auto& [kind, text] : more)
        values[kind] = text;
}

// The same number of subjects, and of the population, in each form.
void AddSizes(Values& values, const std::string& size) {
    Add(values, {{85, size}, {4, size}, {37, size}, {38, "0"}, {5, "1"}});
}

// Two effects on the proportion scale, one of them for each direction.
Values Effect(bool left) {
    if (left)
        return {{35, "0.5"}, {83, "0.3"},     {40, "-0.2"},     {41, "0.6"},
                {225, "1"},  {226, "0.4286"}, {227, "-0.5714"}, {228, "0.4286"},
                {8, "0.5"},  {69, "0.3"},     {52, "-0.2"},     {70, "0.6"},
                {229, "1"},  {230, "0.4286"}, {231, "-0.5714"}, {232, "0.4286"}};
    return {{35, "0.3"},     {83, "0.5"}, {40, "0.2"},     {41, "1.6667"},
            {225, "0.4286"}, {226, "1"},  {227, "0.5714"}, {228, "2.3333"},
            {8, "0.3"},      {69, "0.5"}, {52, "0.2"},     {70, "1.6667"},
            {229, "0.4286"}, {230, "1"},  {231, "0.5714"}, {232, "2.3333"}};
}

// One or two proportions. Where a relation is kept and its base sought, the target lies between the
// power here and that at the mirror point.
Values PlanOfProportions(const AnalysisChoice& choice) {
    Values values = Effect(choice.Left);
    Add(values, {{31, "500"}, {196, "500"}, {197, "500"}, {198, "0"}, {199, "1"}});
    const bool two = choice.NoOfSamples == TwoSamples;
    const bool isFinite = choice.MenuNo < 0 && choice.DistrNo == DistrHypergeometric;
    if (choice.NoOfTails != TwoOneSided) {
        const bool oneSided = choice.NoOfTails == OneSided;
        if (!two)
            AddSizes(values, IsOdds(choice) ? (oneSided ? "46" : "60") : (oneSided ? "31" : "40"));
        else if (IsOdds(choice))
            AddSizes(values, oneSided ? "88" : "112");
        else
            AddSizes(values, isFinite ? (oneSided ? "57" : "72") : (oneSided ? "63" : "80"));
        return values;
    }
    Add(values, {{47, "0.35"},
                 {48, "0.65"},
                 {83, "0.5"},
                 {226, "1"},
                 {71, "-0.2"},
                 {72, "0.2"},
                 {8, "0.3"},
                 {229, "0.4286"}});
    if (choice.Left)
        Add(values, {{69, "0.29"},
                     {52, "-0.01"},
                     {70, "0.95"},
                     {230, "0.41"},
                     {231, "-0.02"},
                     {232, "0.95"}});
    else
        Add(values, {{69, "0.31"},
                     {52, "0.01"},
                     {70, "1.05"},
                     {230, "0.45"},
                     {231, "0.02"},
                     {232, "1.05"}});
    AddSizes(values, two ? (isFinite ? "78" : "93") : (isFinite ? "88" : "140"));
    return values;
}

Values PlanOfFisher(const AnalysisChoice& choice) {
    Values values = {{8, "0.2"},    {69, "0.6"},  {52, "0.4"},   {70, "3"},
                     {229, "0.25"}, {230, "1.5"}, {231, "1.25"}, {232, "6"}};
    if (choice.Left)
        values = {{8, "0.6"},   {69, "0.2"},   {52, "-0.4"},   {70, "0.3333"},
                  {229, "1.5"}, {230, "0.25"}, {231, "-1.25"}, {232, "0.1667"}};
    AddSizes(values, IsOdds(choice) ? "28" : "22");
    return values;
}

Values PlanOfMcNemar(const AnalysisChoice& choice) {
    return {{15, "0.4"}, {16, choice.Left ? "-0.2" : "0.2"}, {85, "80"}};
}

Values PlanOfPairs(const AnalysisChoice& choice) {
    if (choice.NoOfTails == TwoOneSided && choice.Left)
        return {{71, "-0.1"}, {72, "0.1"},   {8, "0.5"},  {69, "0.48"},    {52, "-0.02"},
                {70, "0.96"}, {123, "0.39"}, {15, "0.2"}, {336, "1.2222"}, {85, "230"}};
    if (choice.NoOfTails == TwoOneSided)
        return {{71, "-0.1"}, {72, "0.1"},   {8, "0.5"},  {69, "0.52"},    {52, "0.02"},
                {70, "1.04"}, {123, "0.41"}, {15, "0.2"}, {336, "1.2222"}, {85, "230"}};
    constexpr i16 nonInferiority = 833;
    const bool ratios = Option(choice, 12) == 2 && Option(choice, 20) == 2;
    const std::string pairs = Has(choice, 36) ? (ratios ? "84" : "94") : (ratios ? "63" : "74");
    if (choice.MenuNo == nonInferiority && choice.Left)
        return {{317, "0.1"},  {8, "0.8"},  {69, "0.78"}, {52, "-0.02"},  {70, "0.975"},
                {123, "0.69"}, {15, "0.2"}, {85, pairs},  {336, "1.2222"}};
    if (choice.MenuNo == nonInferiority)
        return {{317, "-0.1"}, {8, "0.8"},  {69, "0.82"}, {52, "0.02"},   {70, "1.025"},
                {123, "0.71"}, {15, "0.2"}, {85, pairs},  {336, "1.2222"}};
    const std::string size = choice.NoOfTails == OneSided ? "87" : "110";
    if (choice.Left)
        return {{8, "0.55"},  {69, "0.4"},  {52, "-0.15"}, {70, "0.72727"},
                {123, "0.3"}, {15, "0.35"}, {336, "2.5"},  {85, size}};
    return {{8, "0.4"},   {69, "0.55"}, {52, "0.15"}, {70, "1.375"},
            {123, "0.3"}, {15, "0.35"}, {336, "2.5"}, {85, size}};
}

Values PlanOfNonInferiority(const AnalysisChoice& choice) {
    Values values = {
        {317, choice.Left ? "0.1" : "-0.1"}, {8, "0.8"}, {69, "0.8"}, {52, "0"}, {70, "1"}};
    AddSizes(values, "150");
    return values;
}

Values PlanOf(const AnalysisChoice& choice) {
    switch (choice.MenuNo) {
    case 70:
        return PlanOfMcNemar(choice);
    case 100:
        return PlanOfFisher(choice);
    case 80:
    case 803:
    case 833:
        return PlanOfPairs(choice);
    case 832:
        return PlanOfNonInferiority(choice);
    default:
        return PlanOfProportions(choice);
    }
}

bool IsExact(const AnalysisChoice& choice) {
    return choice.MenuNo == 100 || (Has(choice, 7) && !Has(choice, 2)) ||
           (choice.MenuNo == 70 && !Has(choice, 24) && !Has(choice, 25));
}

// An exact power jumps where a critical value does: with the level and with what holds under H0,
// and with any proportion of a population, which is a whole number of items. Paired proportions
// matter by their difference alone unless the concordant pairs are given.
std::set<i16> Unsolvable(const AnalysisChoice& choice) {
    std::set<i16> kinds;
    if (IsExact(choice))
        kinds.insert({0, 35, 225, 47, 48});
    if (IsExact(choice) && choice.MenuNo < 0 && choice.DistrNo == DistrHypergeometric)
        kinds.insert({83, 40, 41});
    const bool isPaired = choice.MenuNo == 80 || choice.MenuNo == 803 || choice.MenuNo == 833;
    if (isPaired && Option(choice, 12) == 1 && Option(choice, 20) != 0)
        kinds.insert(8);
    return kinds;
}

TEST_P(ProportionProperties, EachUnknownIsSolvedFromTheStartValuesOrNotAndToldSo) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectSolvesOrSaysWhy(choice, {}, platform);
}

TEST_P(ProportionProperties, EachUnknownOfASoundPlanIsSolved) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectAllSolve(choice, PlanOf(choice), platform, Unsolvable(choice));
}

TEST_P(ProportionProperties, WhatIsSolvedGivesBackTheOldPower) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        EXPECT_GT(ExpectRoundTrip(choice, PlanOf(choice)), 0) << Describe(choice);
}

TEST_P(ProportionProperties, NoFaultInsideTheLimits) {
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        ExpectSafeInsideLimits(choice, {});
        ExpectSafeInsideLimits(choice, PlanOf(choice));
    }
}

TEST_P(ProportionProperties, MoreSubjectsNeverMeanLessPowerInTheSmoothForms) {
    constexpr f64 rounding = 1e-6;
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        // Half a subject of a handful outweighs all else: added on the right, it is lost again
        // with the next subject.
        const f64 from = Has(choice, 1) && choice.NoOfTails == TwoOneSided ? 10 : 0;
        if (!IsExact(choice))
            for (const i16 kind : {i16{85}, i16{4}, i16{37}, i16{5}})
                ExpectMonotoneIn(kind, choice, PlanOf(choice), rounding, from);
    }
}

INSTANTIATE_TEST_SUITE_P(Tests, ProportionProperties, ::testing::ValuesIn(TestsOfProportions()),
                         [](const auto& info) { return std::to_string(info.index); });

} // namespace
} // namespace quorvanta::checks
