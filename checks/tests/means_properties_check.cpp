// The tests of means, with every choice of their options.
#include "core/kinds.h"
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
        Values values{{Kind::SignificanceLevel, "0.05"},
                      {Kind::Power, "0.8"},
                      {Kind::TestConfidenceLevel, "0.9"},
                      {Kind::ProbabilityWithinLimits, "0.8"},
                      {Kind::H0Mean2Minus1, "0"},
                      {Kind::H0Mean, "1"},
                      {Kind::H0MeanOfDifference, "1"},
                      {Kind::H1Mean1, "1"},
                      {Kind::MeanLeftLimit, "-0.6"},
                      {Kind::MeanRightLimit, "0.6"},
                      {Kind::MedianLeftLimit, "0.6"},
                      {Kind::MedianRightLimit, "1.6"},
                      {Kind::RatioLeftLimit, "0.75"},
                      {Kind::RatioRightLimit, "1.3333"},
                      {Kind::MeanNonInferiorityLimit, "0"},
                      {Kind::RatioNonInferiorityLimit, "1"},
                      {Kind::H0Median2Over1, "1"},
                      {Kind::H1Median1, "1"},
                      {Kind::Sd, "1"},
                      {Kind::SdOfDifference, "1"},
                      {Kind::Sd1, "1"},
                      {Kind::Sd2, "1.2"},
                      {Kind::Sd2Minus1, "0.2"},
                      {Kind::Sd2Over1, "1.2"},
                      {Kind::Shape, "0.6"},
                      {Kind::LogSd, "0.3"},
                      {Kind::CoefficientOfVariation, "0.3"},
                      {Kind::Size1, "50"},
                      {Kind::Size2, "50"},
                      {Kind::Size2Minus1, "0"},
                      {Kind::Size2Over1, "1"},
                      {Kind::Size, "30"},
                      {Kind::SequenceSize1, "30"},
                      {Kind::SequenceSize2, "30"},
                      {Kind::SequenceSize2Minus1, "0"},
                      {Kind::SequenceSize2Over1, "1"},
                      {Kind::DegreesOfFreedom, "20"},
                      {Kind::NoOfGroups, "4"}};
        const Values effects = equivalence
                                   ? (left ? Values{{Kind::H1Mean2Minus1, "-0.05"},
                                                    {Kind::H1Mean2, "0.95"},
                                                    {Kind::H1Mean2Over1, "0.95"},
                                                    {Kind::H1MeanOfDifference, "-0.05"},
                                                    {Kind::H1Median2Over1, "0.97"},
                                                    {Kind::H1Median2, "0.97"}}
                                           : Values{{Kind::H1Mean2Minus1, "0.05"},
                                                    {Kind::H1Mean2, "1.05"},
                                                    {Kind::H1Mean2Over1, "1.05"},
                                                    {Kind::H1MeanOfDifference, "0.05"},
                                                    {Kind::H1Median2Over1, "1.03"},
                                                    {Kind::H1Median2, "1.03"}})
                                   : (left ? Values{{Kind::H1Mean2Minus1, "-0.5"},
                                                    {Kind::H1Mean2, "0.5"},
                                                    {Kind::H1Mean2Over1, "0.5"},
                                                    {Kind::H1MeanOfDifference, "0.5"},
                                                    {Kind::H1MeanOfDifferenceMinusH0, "-0.5"},
                                                    {Kind::H1MeanOfDifferenceOverH0, "0.5"},
                                                    {Kind::H1Median2Over1, "0.7"},
                                                    {Kind::H1Median2, "0.7"}}
                                           : Values{{Kind::H1Mean2Minus1, "0.5"},
                                                    {Kind::H1Mean2, "1.5"},
                                                    {Kind::H1Mean2Over1, "1.5"},
                                                    {Kind::H1MeanOfDifference, "1.5"},
                                                    {Kind::H1MeanOfDifferenceMinusH0, "0.5"},
                                                    {Kind::H1MeanOfDifferenceOverH0, "1.5"},
                                                    {Kind::H1Median2Over1, "1.4"},
                                                    {Kind::H1Median2, "1.4"}});
        for (const auto& [kind, text] : effects)
            values[kind] = text;
        return values;
    }
};

TEST_P(MeansProperties, FromTheStartValuesEveryParameterSolvesOrSaysWhy) {
    for (const AnalysisChoice& choice : Choices())
        ExpectSolvesOrSaysWhy(
            choice, {{Kind::Power, "0.8"}, {Kind::ProbabilityWithinLimits, "0.8"}}, platform);
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
