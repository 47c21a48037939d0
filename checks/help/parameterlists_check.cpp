// With which options an analysis has a parameter, in words.
#include "generator/parameterlists.h"
#include "support/analysis_fixture.h"

namespace quorvanta::help {
namespace {

class HelpParameterLists : public checks::AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }
};

TEST_F(HelpParameterLists, GoThroughAllOptions) {
    const auto subjects = ParameterSubjects(HelpSubjectOf(301));
    ASSERT_EQ(subjects.size(), 3U);
    EXPECT_EQ(HelpDescriptionOf(subjects[1]), 301);
    EXPECT_EQ(subjects[1].NoOfTails, TwoSided);
    // Three forms of the mean and three of the size, with no box ticked, one, or the other; with
    // unequal standard deviations there are three forms of the second one as well.
    EXPECT_EQ(ParameterLists(subjects[1]).size(), 3U * 9U + 27U);
    EXPECT_EQ(ParameterSubjects(HelpSubjectOf(302)).size(), 3U);
    EXPECT_EQ(ParameterSubjects(HelpSubjectOf(379)).size(), 1U);
    EXPECT_TRUE(platform.Texts().empty());
}

TEST_F(HelpParameterLists, TellWhenAParameterIsThere) {
    const auto lists = ParameterLists(HelpSubjectOf(2200));
    EXPECT_EQ(ConditionOf(0, lists), "");
    EXPECT_EQ(ConditionOf(86, lists), "'Mean 2' or 'Mean 2 / Mean 1' is chosen");
    EXPECT_EQ(ConditionOf(62, lists), "'Mean 2 - Mean 1' is chosen");
    EXPECT_EQ(ConditionOf(2, lists), "'Uneq.Std.Dev.Satterthwaite' is not ticked");
    EXPECT_EQ(ConditionOf(216, lists), "'Uneq.Std.Dev.Satterthwaite' is ticked");
    EXPECT_EQ(ConditionOf(218, lists), "'StdDev2-StdDev1' is chosen");
    EXPECT_EQ(ConditionOf(36, lists), "'Degrees Of Freedom' is ticked");
}

// One-sided and two one-sided tests of a one-way analysis of variance exist for a contrast alone.
TEST_F(HelpParameterLists, KnowTailsThatTakeATick) {
    const auto subjects = ParameterSubjects(HelpSubjectOf(303));
    ASSERT_EQ(subjects.size(), 3U);
    EXPECT_EQ(subjects[2].NoOfTails, TwoOneSided);
    EXPECT_EQ(KindsOf(ParameterLists(subjects[2])),
              (std::vector<i16>{0, 1, 6, 7, 247, 137, 17, 326}));
    EXPECT_EQ(ConditionOf(247, ParameterLists(subjects[1])), "'Analyse Contrast' is ticked");
    EXPECT_EQ(ConditionOf(247, ParameterLists(subjects[2])), "");
}

TEST_F(HelpParameterLists, StandInTheOrderOfTheWindow) {
    EXPECT_EQ(
        KindsOf(ParameterLists(HelpSubjectOf(2200))),
        (std::vector<i16>{0, 1, 61, 86, 87, 88, 62, 2, 216, 217, 218, 219, 4, 37, 38, 5, 36, 17}));
}

TEST_F(HelpParameterLists, TellSeveralWaysToAParameter) {
    const Option continuity{false, 1};
    const Option incidence{false, 3};
    const auto list = [&](i16 a, i16 b, std::vector<i16> kinds) {
        return ParameterList{{{continuity, a}, {incidence, b}}, std::move(kinds)};
    };
    const std::vector<ParameterList> either{list(0, 0, {0}), list(0, 1, {0, 5}), list(1, 0, {0, 5}),
                                            list(1, 1, {0, 5})};
    EXPECT_EQ(ConditionOf(5, either),
              "'Continuity Correction' is ticked, or 'Incidence' is ticked");
    const std::vector<ParameterList> both{list(0, 0, {0}), list(0, 1, {0}), list(1, 0, {0}),
                                          list(1, 1, {0, 5})};
    EXPECT_EQ(ConditionOf(5, both), "'Continuity Correction' is ticked and 'Incidence' is ticked");
    const std::vector<ParameterList> contradiction{list(0, 0, {0}), list(0, 0, {0, 5})};
    EXPECT_THROW(ConditionOf(5, contradiction), std::runtime_error);
    const std::vector<ParameterList> circle{list(0, 0, {1, 2}), list(0, 1, {2, 1})};
    EXPECT_THROW(KindsOf(circle), std::runtime_error);
}

} // namespace
} // namespace quorvanta::help
