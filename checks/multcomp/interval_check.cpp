// Simultaneous confidence intervals as analyses: lists, methods, what is kept of them, statements.
#include "core/kinds.h"
#include "core/records.h"
#include "multcomp/family.h"
#include "numeric/integra2.h"
#include "output/statement.h"
#include "support/solving_fixture.h"

#include <initializer_list>

namespace quorvanta::checks {
namespace {

constexpr i16 control = 730;
constexpr i16 pairwise = 731;
constexpr i16 best = 732;

class Intervals : public SolvingFixture {
  protected:
    static AnalysisChoice Choice(i16 menuNo, i16 method = Adjust::Joint) {
        AnalysisChoice choice = MenuChoice(menuNo, MoreSamples, TwoSided);
        if (menuNo == control)
            choice.Groups = {{Group::SizeK, AsRatio}};
        choice.Method = method;
        return choice;
    }

    static Values Plan(const std::string& size) {
        return {{Kind::ConfidenceLevel, "0.95"},
                {Kind::CoverageAndWidthProbability, "0.8"},
                {Kind::IntervalWidth, "1.4"},
                {Kind::Sd, "1"},
                {Kind::LevelsA, "4"},
                {Kind::Size1, size},
                {Kind::SizeKOver1, "1"},
                {Kind::SizePerGroup, size}};
    }

    f64 ProbabilityOf(const AnalysisChoice& choice, const Values& values) {
        return SolutionOf(choice, values, Kind::CoverageAndWidthProbability);
    }
};

TEST_F(Intervals, HaveTheSizeOfTheControlOrOneForAllGroups) {
    EXPECT_EQ(ListOf(Choice(control)), (Kinds{22, 345, 100, 2, 238, 4, 151}));
    EXPECT_EQ(ListOf(Choice(pairwise)), (Kinds{22, 345, 100, 2, 238, 326}));
    EXPECT_EQ(ListOf(Choice(best)), (Kinds{22, 345, 100, 2, 238, 326}));
    EXPECT_FALSE(TailsShown);
}

// More comparisons need a larger critical value; the joint one is the smallest.
TEST_F(Intervals, AreNarrowestByTheJointMethod) {
    for (const i16 menuNo : {control, pairwise, best}) {
        const f64 joint = ProbabilityOf(Choice(menuNo), Plan("30"));
        const f64 sidak = ProbabilityOf(Choice(menuNo, Adjust::Sidak), Plan("30"));
        const f64 bonferroni = ProbabilityOf(Choice(menuNo, Adjust::Bonferroni), Plan("30"));
        const f64 scheffe = ProbabilityOf(Choice(menuNo, Adjust::JointOrScheffe), Plan("30"));
        EXPECT_GT(joint, sidak) << menuNo;
        EXPECT_GT(sidak, bonferroni) << menuNo;
        EXPECT_GT(bonferroni, scheffe) << menuNo;
    }
}

// One interval covers with the level, and no width can change that.
TEST_F(Intervals, CoverWithAtMostTheirLevel) {
    Values values = Plan("30");
    values[Kind::IntervalWidth] = "1000";
    for (const i16 menuNo : {control, pairwise, best})
        EXPECT_NEAR(ProbabilityOf(Choice(menuNo), values), 0.95, 1e-4) << menuNo;
}

// The points of s would be farther apart than its density is wide.
TEST_F(Intervals, OfLargeGroupsCoverWithTheirLevel) {
    for (const char* size : {"200", "1000", "20000"})
        for (const i16 menuNo : {control, pairwise, best})
            EXPECT_NEAR(ProbabilityOf(Choice(menuNo), Plan(size)), 0.95, 0.004)
                << menuNo << " n " << size;
}

// A level so low that the intervals often miss has the same probability as a high one.
TEST_F(Intervals, AreSolvedForTheHigherOfTwoLevels) {
    for (const i16 menuNo : {control, pairwise, best}) {
        Values values = Plan("30");
        values[Kind::CoverageAndWidthProbability] = "0.6";
        const f64 level = SolutionOf(Choice(menuNo), values, Kind::ConfidenceLevel);
        EXPECT_GT(level, 0.9) << menuNo;
        EXPECT_LT(level, 1) << menuNo;
    }
}

TEST_F(Intervals, CantBeCalculatedForAProbabilityAboveTheLevel) {
    Values values = Plan("30");
    values[Kind::CoverageAndWidthProbability] = "0.97";
    EXPECT_EQ(MessageOf(Choice(pairwise), values, Kind::SizePerGroup), "Can't Be Calculated.");
}

TEST_F(Intervals, CantBeCalculatedForACriticalValueAboveFive) {
    Values values = Plan("2");
    values[Kind::ConfidenceLevel] = "0.999";
    values[Kind::LevelsA] = "3";
    EXPECT_EQ(MessageOf(Choice(pairwise), values, Kind::IntervalWidth), "Can't Be Calculated.");
}

// --- The method is part of the analysis
// -----------------------------------------------------------

TEST_F(Intervals, KeepTheirMethodWhenAnotherAnalysisWasCurrent) {
    Start(Choice(pairwise, Adjust::Sidak), Plan("30"));
    SolveFor(PositionOf(Kind::SizePerGroup));
    const i16 first = AnalysisNo;
    FileCommand(CalculationWindow);
    Start(Choice(pairwise, Adjust::JointOrScheffe), Plan("30"));
    SwitchAnalysis(first);
    EXPECT_EQ(AdjustMethod, Adjust::Sidak);
}

TEST_F(Intervals, TakeTheirFirstMethodForOneThatTheyDoNotHave) {
    AdjustMethod = Adjust::Hochberg;
    NewTest(pairwise);
    EXPECT_EQ(AdjustMethod, Adjust::Joint);
    CancelOptions();
}

TEST_F(Intervals, StaleAfterAChangeOfTheMethod) {
    Start(Choice(pairwise), Plan("30"));
    SolveFor(PositionOf(Kind::SizePerGroup));
    ASSERT_EQ(Calculated, True);
    ReopenOptions();
    ChooseAdjustMethod(Adjust::Bonferroni);
    EXPECT_EQ(Calculated, False);
    AcceptOptions();
    EXPECT_EQ(AdjustMethod, Adjust::Bonferroni);
}

// --- Statements
// -----------------------------------------------------------------------------------

TEST_F(Intervals, AreToldWithTheirProcedure) {
    Start(Choice(pairwise), Plan("30"));
    SolveFor(PositionOf(Kind::CoverageAndWidthProbability));
    EXPECT_EQ(SumStatement(),
              "With a sample size per group of 30, the probability is 0.70 that all simultaneous "
              "two-sided 95% confidence intervals cover and have a "
              "width less than 1.4. The confidence intervals are calculated for the "
              "differences of all pairs of means in a one-way analysis of variance. The "
              "procedure used is Tukey. The calculation is based on the assumptions that the "
              "standard deviation is 1 and the number of A-factor levels is 4.");
    Start(Choice(control, Adjust::Bonferroni), Plan("30"));
    SolveFor(PositionOf(Kind::Size1));
    EXPECT_NE(SumStatement().find("the differences of the means from that of a control"),
              std::string::npos);
    EXPECT_NE(SumStatement().find("The procedure used is Bonferroni."), std::string::npos);
    Start(Choice(best), Plan("30"));
    SolveFor(PositionOf(Kind::SizePerGroup));
    EXPECT_NE(SumStatement().find("The procedure used is Constrained MCB."), std::string::npos);
}

} // namespace
} // namespace quorvanta::checks
