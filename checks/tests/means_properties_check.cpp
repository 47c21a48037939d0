// The tests of means, with every choice of their options.
#include "support/analysis_fixture.h"
#include "support/properties.h"

namespace quorvanta::checks {
namespace {

class MeansProperties : public AnalysisFixture, public ::testing::WithParamInterface<i16> {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    static std::vector<AnalysisChoice> Choices() {
        AnalysisChoice analysis;
        analysis.MenuNo = GetParam();
        return AllChoices(analysis);
    }

    // About as much to show to the right as to the left, in every form.
    static Values Plan(const AnalysisChoice& choice) {
        const bool equivalence = choice.NoOfTails == TwoOneSided;
        const bool left = choice.Left;
        Values values{{0, "0.05"},  {1, "0.8"},   {321, "0.9"}, {318, "0.8"},   {61, "0"},
                      {57, "1"},    {157, "1"},   {86, "1"},    {6, "-0.6"},    {7, "0.6"},
                      {97, "0.6"},  {98, "1.6"},  {29, "0.75"}, {30, "1.3333"}, {330, "0"},
                      {319, "1"},   {93, "1"},    {94, "1"},    {2, "1"},       {3, "1"},
                      {216, "1"},   {217, "1.2"}, {218, "0.2"}, {219, "1.2"},   {27, "0.6"},
                      {155, "0.3"}, {156, "0.3"}, {4, "50"},    {37, "50"},     {38, "0"},
                      {5, "1"},     {85, "30"},   {322, "30"},  {323, "30"},    {324, "0"},
                      {325, "1"},   {36, "20"},   {17, "4"}};
        const Values effects = equivalence ? (left ? Values{{62, "-0.05"},
                                                            {87, "0.95"},
                                                            {88, "0.95"},
                                                            {158, "-0.05"},
                                                            {96, "0.97"},
                                                            {95, "0.97"}}
                                                   : Values{{62, "0.05"},
                                                            {87, "1.05"},
                                                            {88, "1.05"},
                                                            {158, "0.05"},
                                                            {96, "1.03"},
                                                            {95, "1.03"}})
                                           : (left ? Values{{62, "-0.5"},
                                                            {87, "0.5"},
                                                            {88, "0.5"},
                                                            {158, "0.5"},
                                                            {159, "-0.5"},
                                                            {160, "0.5"},
                                                            {96, "0.7"},
                                                            {95, "0.7"}}
                                                   : Values{{62, "0.5"},
                                                            {87, "1.5"},
                                                            {88, "1.5"},
                                                            {158, "1.5"},
                                                            {159, "0.5"},
                                                            {160, "1.5"},
                                                            {96, "1.4"},
                                                            {95, "1.4"}});
        for (const auto& [kind, text] : effects)
            values[kind] = text;
        return values;
    }
};

TEST_P(MeansProperties, FromTheStartValuesEveryParameterSolvesOrSaysWhy) {
    for (const AnalysisChoice& choice : Choices())
        ExpectSolvesOrSaysWhy(choice, {{1, "0.8"}, {318, "0.8"}}, platform);
}

TEST_P(MeansProperties, WhatIsSolvedGivesTheOldPowerBack) {
    int solved = 0;
    for (const AnalysisChoice& choice : Choices())
        solved += ExpectRoundTrip(choice, Plan(choice));
    EXPECT_GT(solved, static_cast<int>(4 * Choices().size())) << "most parameters have a solution";
}

TEST_P(MeansProperties, TheEquationIsSafeInsideItsLimits) {
    for (const AnalysisChoice& choice : Choices())
        ExpectSafeInsideLimits(choice, Plan(choice));
}

TEST_P(MeansProperties, MoreSubjectsNeverMeanLessPower) {
    for (const AnalysisChoice& choice : Choices())
        for (const int size : {4, 37, 85, 322, 323})
            ExpectMonotoneIn(static_cast<i16>(size), choice, Plan(choice), 1e-4, 6);
}

INSTANTIATE_TEST_SUITE_P(Menus, MeansProperties,
                         ::testing::Values(i16{0}, i16{1}, i16{800}, i16{801}, i16{810}, i16{811},
                                           i16{830}, i16{831}));

} // namespace
} // namespace quorvanta::checks
