// One step back and forth, and the options of an analysis chosen again.
#include "core/kinds.h"
#include "core/last_step.h"
#include "core/showpar.h"
#include "core/step_back.h"
#include "support/analysis_fixture.h"

#include <algorithm>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 paired = 1;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 power = Kind::Power;
constexpr i16 sd = Kind::Sd;
constexpr i16 size1 = Kind::Size1;
constexpr i16 ratio = Kind::Size2Over1;
constexpr i16 size2 = Kind::Size2;
constexpr i16 mean2 = 3; // positions in the list of the unpaired t-test
constexpr i16 formOfMeans = Group::Mean2;
constexpr i16 formOfSizes = Group::Size2;

class StepBackCheck : public AnalysisFixture {
  protected:
    // A solved analysis: the power of 64 and 64 subjects, 0.8015 (Cohen 1988, table 2.4.1: 64 for
    // a power of 0.80 at d = 0.5, two-sided 0.05).
    void OpenSolved() {
        OpenTest(unpaired);
        Pick(formOfMeans, 1);
        Pick(formOfSizes, 2);
        AcceptOptions();
        Type(Kind::H1Mean2Minus1, "0.5");
        Type(ratio, "1");
        Type(sd, "1");
        Type(size1, "64");
        Solve(power);
        StoreAnalysis();
        solved_ = Analysis(1);
    }

    void ExpectSolved() {
        StoreAnalysis();
        EXPECT_EQ(TestName, solved_.TestName);
        EXPECT_EQ(ParListName, solved_.ParListName);
        EXPECT_EQ(NoOfTails, solved_.NoOfTails);
        for (i16 i = 0; i <= std::max(NoOfPar, solved_.NoOfPar); ++i)
            EXPECT_EQ(ParKind(i), solved_.ParKind(i));
        EXPECT_EQ(Analysis(1).ParText, solved_.ParText);
        EXPECT_EQ(UnknownParNo, solved_.UnknownParNo);
        EXPECT_EQ(Calculated, True);
        EXPECT_TRUE(GetInfoEnabled(3));
    }

    AnalysisRecord solved_;
};

TEST_F(StepBackCheck, ThereIsNothingToUndoAtFirst) {
    EXPECT_FALSE(CanStepBack());
    EXPECT_EQ(StepBackName(), "Undo");
    StepBack();
    EXPECT_EQ(AnalysisNo, 0);
    OpenTest(unpaired);
    EXPECT_FALSE(CanStepBack());
    AcceptOptions();
    EXPECT_FALSE(CanStepBack()) << "before the first test the window was empty";
}

TEST_F(StepBackCheck, ASlipOfALabelIsUndoneWithTheValueThatItTook) {
    OpenSolved();
    AnalysisState(1).Changed = False;
    Solve(sd);
    ASSERT_NE(Analysis(1).ParText, solved_.ParText);
    EXPECT_EQ(StepBackName(), "Undo Calculation");
    StepBack();
    ExpectSolved();
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(platform.Statuses.back(), "Undone; once more does it again.");
}

TEST_F(StepBackCheck, OnceMoreDoesTheStepAgain) {
    OpenSolved();
    Type(power, "0.9");
    EXPECT_EQ(Solve(size1), "86"); // 85.03 (R, power.t.test)
    StepBack();
    EXPECT_EQ(StepBackName(), "Redo Calculation");
    EXPECT_EQ(ParText(size1), "64");
    StepBack();
    EXPECT_EQ(StepBackName(), "Undo Calculation");
    EXPECT_EQ(UnknownParNo, PositionOf(size1));
    EXPECT_EQ(ParText(size1), "86");
    EXPECT_EQ(Calculated, True);
    StepBack();
    EXPECT_EQ(UnknownParNo, PositionOf(power));
    EXPECT_EQ(ParText(size1), "64");
}

TEST_F(StepBackCheck, WhatWasTypedAfterTheStepIsNotLost) {
    OpenSolved();
    Solve(size1);
    Type(sd, "1.25");
    StepBack();
    ExpectSolved();
    StepBack();
    EXPECT_EQ(ParText(sd), "1.25");
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(GetInfoEnabled(3));
}

TEST_F(StepBackCheck, AStaleResultComesBackStale) {
    OpenSolved();
    const std::string stale = ParText(power);
    Type(size1, "50");
    Solve(sd);
    StepBack();
    EXPECT_EQ(UnknownParNo, PositionOf(power));
    EXPECT_EQ(ParText(power), stale);
    EXPECT_EQ(ParText(size1), "50");
    EXPECT_EQ(ParText(sd), "1");
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(GetInfoEnabled(3));
}

TEST_F(StepBackCheck, AValueThatCantBeCalculatedComesBackHoweverOftenItWasAsked) {
    OpenSolved();
    Type(Kind::H1Mean2Minus1, "0"); // as under H0: no standard deviation gives that power
    const std::string before = ParText(sd);
    EXPECT_EQ(Solve(sd), "-");
    EXPECT_EQ(Solve(sd), "-");
    EXPECT_EQ(platform.Messages.size(), 2U);
    StepBack();
    EXPECT_EQ(ParText(sd), before);
    EXPECT_EQ(ParText(Kind::H1Mean2Minus1), "0");
}

TEST_F(StepBackCheck, AValueOutOfRangeTakesNothingAway) {
    OpenSolved();
    Type(alpha, "2");
    EXPECT_EQ(Solve(sd), "-");
    StepBack();
    EXPECT_EQ(ParText(sd), "1");
    EXPECT_EQ(ParText(alpha), "2");
}

TEST_F(StepBackCheck, ANewTestOverASolvedAnalysisIsUndone) {
    OpenSolved();
    NewTest(paired);
    EXPECT_FALSE(CanStepBack()) << "the options are open";
    StepBack();
    EXPECT_TRUE(ChoosingOptions);
    ChooseTails(OneSided);
    AcceptOptions();
    EXPECT_EQ(StepBackName(), "Undo New Test");
    Type(alpha, "0.01"); // a kind that both have
    StepBack();
    ExpectSolved();
    StepBack();
    EXPECT_EQ(TestNo, 1);
    EXPECT_EQ(NoOfTails, OneSided);
    EXPECT_EQ(ParText(alpha), "0.01");
}

TEST_F(StepBackCheck, ADistributionIsUndoneByItsOwnName) {
    OpenSolved();
    NewDistribution(DistrNormal);
    AcceptOptions();
    EXPECT_EQ(StepBackName(), "Undo New Distribution");
    StepBack();
    ExpectSolved();
}

TEST_F(StepBackCheck, OptionsGivenUpAreNoStep) {
    OpenSolved();
    const std::string found = Solve(size1);
    NewTest(paired);
    CancelOptions();
    EXPECT_EQ(StepBackName(), "Undo Calculation");
    ReopenOptions();
    CancelOptions();
    EXPECT_EQ(ParText(size1), found);
    StepBack();
    ExpectSolved();
}

TEST_F(StepBackCheck, EachWindowHasAStepOfItsOwn) {
    OpenSolved();
    Solve(size1);
    FileCommand(CalculationWindow);
    EXPECT_FALSE(CanStepBack());
    NewTest(paired);
    AcceptOptions();
    EXPECT_FALSE(CanStepBack());
    Solve(alpha);
    ChildActivated(1);
    StepBack();
    ExpectSolved();
    ChildActivated(2);
    EXPECT_EQ(StepBackName(), "Undo Calculation");
    EXPECT_EQ(UnknownParNo, PositionOf(alpha));
}

TEST_F(StepBackCheck, NothingIsUndoneDuringARun) {
    OpenSolved();
    const std::string found = Solve(size1);
    Calculating = True;
    EXPECT_FALSE(CanStepBack());
    EXPECT_FALSE(CanReopenOptions());
    StepBack();
    ReopenOptions();
    EXPECT_EQ(ParText(size1), found);
    EXPECT_FALSE(ChoosingOptions);
    Calculating = False;
}

TEST_F(StepBackCheck, TheNameThatItWasSavedByStays) {
    OpenSolved();
    Solve(size1);
    AnalysisFileName = "study.dim";
    StepBack();
    EXPECT_EQ(AnalysisFileName, "study.dim");
    EXPECT_EQ(Analysis(1).AnalysisFileName, "study.dim");
}

// --- Tables and graphs ------------------------------------------------------------------------

class RunBack : public StepBackCheck {
  protected:
    void SetUp() override {
        Main();
        FileCommand(TableWindow);
        NewTest(unpaired);
        Pick(formOfMeans, 1);
        AcceptOptions();
        Type(size1, "20");
        TypedAxisText(AxisText::Xmin, "0");
        SwapAxis(XRole, mean2);
        Range("0.5", "1.5");
        SwapAxis(ZRole, PositionOf(sd));
        TypedAxisText(AxisText::ZValues, "1 2");
    }

    static void Range(const std::string& min, const std::string& max) {
        TypedAxisText(AxisText::Xmin, min);
        TypedAxisText(AxisText::Xmax, max);
        TypedAxisText(AxisText::Xstep, "0.5");
    }

    static std::vector<f32> Cells() { return {TableY.Raw().begin(), TableY.Raw().end()}; }
};

TEST_F(RunBack, ARunIsUndoneWithItsAxesAndItsResult) {
    RunOrCancel();
    const std::vector<f32> first = Cells();
    ASSERT_EQ(first.size(), 6U);
    Range("1", "3");
    RunOrCancel();
    const std::vector<f32> second = Cells();
    ASSERT_EQ(second.size(), 10U);
    EXPECT_EQ(StepBackName(), "Undo Calculation");
    StepBack();
    EXPECT_EQ(Cells(), first);
    EXPECT_EQ(AxisTextOf(AxisText::Xmin), "1") << "typed before the step";
    EXPECT_EQ(Calculated, False) << "the first table is not of that axis";
    StepBack();
    EXPECT_EQ(Cells(), second);
    EXPECT_EQ(Calculated, True);
}

TEST_F(RunBack, ARunThatComesToNothingIsNoStep) {
    RunOrCancel();
    const std::vector<f32> first = Cells();
    StepBack(); // no table
    EXPECT_TRUE(Cells().empty());
    StepBack();
    Range("3", "1");
    RunOrCancel();
    EXPECT_EQ(platform.Texts().back(), "Xmin Must Be < Xmax If Xstep > 0.");
    EXPECT_EQ(Cells(), first);
    StepBack();
    EXPECT_TRUE(Cells().empty()) << "still that of the first run";
}

TEST_F(RunBack, ANewTestOverATableIsUndoneWithTheTable) {
    RunOrCancel();
    const std::vector<f32> first = Cells();
    NewTest(paired);
    AcceptOptions();
    EXPECT_TRUE(Cells().empty());
    StepBack();
    EXPECT_EQ(Cells(), first);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(XParNo, mean2);
    EXPECT_EQ(AxisTextOf(AxisText::ZValues), "1 2");
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Parameters));
}

// --- Options chosen again ---------------------------------------------------------------------

using Reopened = StepBackCheck;

TEST_F(Reopened, OnlyAnAnalysisHasOptions) {
    EXPECT_FALSE(CanReopenOptions());
    ReopenOptions();
    EXPECT_TRUE(platform.Shown.empty());
    FileCommand(CalculationWindow);
    EXPECT_FALSE(CanReopenOptions());
    ReopenOptions();
    EXPECT_FALSE(platform.Shown.count(FloatingWindow::Options));
    NewTest(unpaired);
    EXPECT_FALSE(CanReopenOptions()) << "they are open";
    AcceptOptions();
    EXPECT_TRUE(CanReopenOptions());
}

TEST_F(Reopened, ShowsThePresentChoices) {
    OpenDistribution(DistrNormal, 1, ProcedureInterval);
    Tick(Check::TwoSidedInterval, false);
    AcceptOptions();
    const auto checks = CheckValue;
    ReopenOptions();
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Options));
    EXPECT_TRUE(ChoosingOptions);
    EXPECT_EQ(ProcedureNo, ProcedureInterval);
    EXPECT_EQ(ParListNo, 1);
    EXPECT_EQ(CheckValue, checks) << "the interval stays one-sided";
}

TEST_F(Reopened, KeepsUnknownAndValuesWhereTheListHasThem) {
    OpenSolved();
    Solve(size1);
    ReopenOptions();
    ChooseTails(OneSided);
    AcceptOptions();
    EXPECT_EQ(UnknownParNo, PositionOf(size1));
    EXPECT_EQ(ParText(power), solved_.ParText(PowerParNo)) << "typed or found, a value stays";
    EXPECT_EQ(ParText(sd), "1");
    EXPECT_EQ(ParText(Kind::H1Mean2Minus1), "0.5");
    EXPECT_EQ(Calculated, True);
    // One-sided 0.05, d = 0.5: 50.15 per group for a power of 0.80, 50.4 for 0.8015 (R,
    // power.t.test).
    EXPECT_EQ(ParText(size1), "51");
    EXPECT_EQ(StepBackName(), "Undo Options");
    StepBack();
    EXPECT_EQ(NoOfTails, TwoSided);
    EXPECT_EQ(ParText(size1), "64");
}

TEST_F(Reopened, AnotherFormOfTheUnknownIsTheUnknown) {
    OpenSolved();
    Type(power, "0.8");
    Type(size1, "60");
    EXPECT_NE(Solve(ratio), "-");
    ReopenOptions();
    Pick(formOfSizes, 0);
    AcceptOptions();
    EXPECT_EQ(UnknownParNo, PositionOf(size2));
}

TEST_F(Reopened, AnUnknownThatTheListLosesIsThePower) {
    OpenDistribution(DistrNormal, 1, ProcedureTest);
    ChooseSamples(TwoSamples);
    Pick(formOfSizes, 0);
    AcceptOptions();
    Solve(size2);
    ReopenOptions();
    ChooseSamples(OneSample);
    AcceptOptions();
    EXPECT_EQ(PositionOf(size2), -1);
    EXPECT_EQ(UnknownParNo, 1);
}

TEST_F(Reopened, GivenUpLeavesEverythingAsItWas) {
    OpenSolved();
    ReopenOptions();
    ChooseTails(OneSided);
    Pick(formOfMeans, 0);
    EXPECT_EQ(NoOfPar, 0);
    CancelOptions();
    ExpectSolved();
}

TEST_F(Reopened, KeepsTheAxesOfATable) {
    FileCommand(TableWindow);
    NewTest(unpaired);
    Pick(formOfMeans, 1);
    AcceptOptions();
    SwapAxis(YRole, PositionOf(size1));
    SwapAxis(XRole, PositionOf(Kind::H1Mean2Minus1));
    SwapAxis(ZRole, PositionOf(sd));
    ReopenOptions();
    Pick(formOfSizes, 0);
    AcceptOptions();
    EXPECT_EQ(UnknownParNo, PositionOf(size1));
    EXPECT_EQ(XParNo, PositionOf(Kind::H1Mean2Minus1));
    EXPECT_EQ(ZParNo, PositionOf(sd));
}

// The paired t-test has one sample only; the user's own choice is two, and stays so after a test
// that has two has been chosen over it and undone.
TEST_F(StepBackCheck, WhatATestForcesIsStillNotTheUsersOwnAfterAnUndo) {
    OpenSolved();
    OpenTest(paired);
    AcceptOptions();
    ASSERT_EQ(NoOfSamples, OneSample);
    OpenTest(unpaired);
    AcceptOptions();
    StepBack();
    EXPECT_EQ(NoOfSamples, OneSample);
    platform.WindowKinds.push_back(CalculationWindow);
    OpenDistribution(DistrNormal, 0, ProcedureTest);
    EXPECT_EQ(NoOfSamples, TwoSamples);
}

} // namespace
} // namespace quorvanta::checks
