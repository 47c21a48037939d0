#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/kinds.h"
#include "core/menus.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/records.h"
#include "core/setup.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 fisher = 100;
constexpr i16 paired = 1;
constexpr i16 equivalence = 800;
constexpr i16 nonInferiority = 830;
constexpr i16 bioequivalence = 810;

class SetUp : public AnalysisFixture {};

TEST_F(SetUp, ATestOpensAWindowWhenNoneIsOpen) {
    platform.WindowKinds.push_back(CalculationWindow);
    NewTest(unpaired);
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(TestNo, 0);
    EXPECT_EQ(TestName, "Student's t-test, Unpaired");
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Options));
    EXPECT_EQ(HelpContext, 301.0F);
}

TEST_F(SetUp, ACancelInTheChoiceOfAWindowChangesNothing) {
    platform.WindowKinds.push_back(std::nullopt);
    NewTest(paired);
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_EQ(TestNo, 0);
    EXPECT_TRUE(TestName.empty());
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(platform.Shown.empty());
}

TEST_F(SetUp, AnOpenWindowTakesTheNextTest) {
    OpenTest(unpaired);
    AcceptOptions();
    NewTest(paired);
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(TestNo, 1);
    EXPECT_EQ(NoOfPar, 0);
}

// Every test of these entries, and of those below them, is calculated or simulated.
int ExpectServed(std::span<const MenuItem> items) {
    int tests = 0;
    for (const MenuItem& item : items) {
        tests += ExpectServed(item.Children);
        if (item.Action != MenuAction::Test)
            continue;
        ++tests;
        EXPECT_TRUE(IsServed({.IsTest = True, .TestNo = item.TestNo})) << item.Caption;
    }
    return tests;
}

TEST_F(SetUp, EveryTestOfTheMenusIsThere) {
    EXPECT_EQ(ExpectServed(MainMenu()), 142);
}

// A level of 0.01 to reject would be a confidence level of 0.01 there.
TEST_F(SetUp, LevelsOfTheAnalysesStayWithTheirTest) {
    OpenTest(unpaired);
    AcceptOptions();
    RejectH0Text(0) = "0.01";
    AcceptH0Text(0) = "0.9";
    InterimSize1Text(0) = "20";
    NewTest(unpaired);
    EXPECT_EQ(RejectH0Text(0), "0.01") << "the same test, chosen anew";
    NewTest(equivalence);
    for (const auto* texts : {&InterimSize1Text, &InterimSize2Text, &RejectH0Text, &AcceptH0Text})
        EXPECT_EQ((*texts)(0), "");
    CancelOptions();
    EXPECT_EQ(RejectH0Text(0), "0.01") << "nothing that was typed is lost";
}

TEST_F(SetUp, GivingUpTheOptionsBringsTheFormerAnalysisBack) {
    OpenTest(unpaired);
    AcceptOptions();
    Type(Kind::Sd, "0.75");
    StoreAnalysis();
    const AnalysisRecord before = Analysis(1);
    NewTest(paired);
    ChooseTails(OneSided);
    CancelOptions();
    EXPECT_EQ(TestNo, 0);
    EXPECT_EQ(ParText(Kind::Sd), "0.75");
    EXPECT_EQ(NoOfTails, TwoSided);
    EXPECT_FALSE(platform.Shown.count(FloatingWindow::Options));
    StoreAnalysis();
    EXPECT_EQ(Analysis(1), before);
}

TEST_F(SetUp, GivingUpTheFirstOptionsLeavesAnEmptyWindow) {
    OpenTest(unpaired);
    CancelOptions();
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(NoOfPar, 0);
    EXPECT_TRUE(TestName.empty());
}

TEST_F(SetUp, AnotherWindowInTheMiddleOfTheOptionsLeavesNoHalfAnalysis) {
    OpenTest(unpaired);
    AcceptOptions();
    const std::string name = TestName;
    NewTest(paired);
    FileCommand(CalculationWindow);
    EXPECT_FALSE(platform.Shown.count(FloatingWindow::Options));
    ChildActivated(1);
    EXPECT_EQ(TestName, name);
    EXPECT_EQ(NoOfPar, 7);
}

TEST_F(SetUp, GridsBelongToTheTestThatTheyWereFilledFor) {
    OpenTest(unpaired);
    HasGridData = True;
    GridData(1)(1, 1) = 5;
    GridTestNo = TestNo;
    OpenTest(unpaired);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(GridData(1)(1, 1), 5.0F);
    OpenTest(paired);
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(GridData(1)(1, 1), static_cast<f32>(NoValue));
}

TEST_F(SetUp, AParameterThatTheDistributionLacksIsItsFirst) {
    OpenDistribution(DistrNormal, 3, ProcedureTest);
    EXPECT_EQ(ParListNo, 3);
    OpenDistribution(DistrNormal, 3, ProcedureTest);
    NewDistribution(DistrLognormal);
    EXPECT_EQ(ParListNo, 0);
}

TEST_F(SetUp, AParameterBeyondTheListOfTheDistributionIsAFault) {
    OpenDistribution(DistrBinomial, 1, ProcedureTest);
    for (const int bad : {-1, 2, 32767}) {
        try {
            ChooseParList(static_cast<i16>(bad));
            ADD_FAILURE() << bad;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Kind(), Fault::BadIndex) << bad;
        }
        EXPECT_EQ(ParListNo, 1) << bad;
    }
}

TEST_F(SetUp, AProcedureThatThereIsNotIsAFault) {
    OpenDistribution(DistrBinomial, 1, ProcedureInterval);
    for (const int bad : {-1, 3, 32767}) {
        try {
            ChooseProcedure(static_cast<i16>(bad));
            ADD_FAILURE() << bad;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Kind(), Fault::BadIndex) << bad;
        }
        EXPECT_EQ(ProcedureNo, ProcedureInterval) << bad;
    }
}

TEST_F(SetUp, TheUnknownAndTheAxesAreParametersOfTheNewList) {
    OpenTest(unpaired);
    AcceptOptions();
    UnknownParNo = XParNo = ZParNo = NoOfPar;
    OpenDistribution(DistrNormal, 0, ProcedureEstimate);
    ChooseSamples(OneSample);
    AcceptOptions();
    EXPECT_EQ(NoOfPar, 3);
    EXPECT_LE(UnknownParNo, NoOfPar);
    EXPECT_LE(XParNo, NoOfPar);
    EXPECT_LE(ZParNo, NoOfPar);
    EXPECT_NE(UnknownParNo, XParNo);
    EXPECT_NE(UnknownParNo, ZParNo);
    EXPECT_NE(XParNo, ZParNo);
    // A list of three: the places of a longer one go beyond it.
    OpenDistribution(DistrExponential, 1, ProcedureEstimate);
    ChooseSamples(OneSample);
    AcceptOptions();
    EXPECT_EQ(NoOfPar, 2);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 0);
}

TEST_F(SetUp, TheUnpairedTestOffersItsOptions) {
    OpenTest(unpaired);
    EXPECT_TRUE(SamplesOffered(TwoSamples));
    EXPECT_FALSE(SamplesOffered(OneSample));
    ASSERT_EQ(NoOfCheck, 3);
    EXPECT_EQ(CheckList(0), 0);
    EXPECT_EQ(CheckList(1), 5);
    EXPECT_EQ(CheckList(2), 16);
    ASSERT_EQ(NoOfIntPar, 2);
    EXPECT_EQ(IntParList(0), 1);
    EXPECT_EQ(IntParList(1), 2);
    Tick(Check::Satterthwaite);
    ASSERT_EQ(NoOfIntPar, 3);
    EXPECT_EQ(IntParList(1), 29);
    EXPECT_FALSE(CheckEnabled(0));
    EXPECT_FALSE(CheckEnabled(1));
}

TEST_F(SetUp, DegreesOfFreedomAndGroupsExcludeEachOther) {
    OpenTest(unpaired);
    Tick(Check::DegreesOfFreedom);
    Tick(Check::GroupsInAnova);
    EXPECT_FALSE(Ticked(0));
    EXPECT_TRUE(Ticked(5));
    Tick(Check::DegreesOfFreedom);
    EXPECT_FALSE(Ticked(5));
    Tick(Check::Satterthwaite);
    EXPECT_FALSE(Ticked(0)) << "neither applies to unequal standard deviations";
}

TEST_F(SetUp, InASimulationWindowTheDegreesOfFreedomAreOutOfReach) {
    OpenTest(unpaired);
    Analysis(1).WindowKind = SimulationWindow;
    CheckValue(Check::DegreesOfFreedom) = 1;
    ChooseTails(TwoSided);
    EXPECT_FALSE(CheckEnabled(0));
    EXPECT_FALSE(CheckEnabled(1));
    EXPECT_TRUE(CheckEnabled(2));
    EXPECT_EQ(CheckValue(Check::DegreesOfFreedom), 0);
    Analysis(1).WindowKind = CalculationWindow;
    NewTest(paired);
    Analysis(1).WindowKind = SimulationWindow;
    ChooseTails(TwoSided);
    EXPECT_EQ(NoOfCheck, 0);
}

TEST_F(SetUp, ThePairedTestOffersItsOptions) {
    OpenTest(paired);
    EXPECT_EQ(NoOfSamples, OneSample);
    EXPECT_FALSE(SamplesOffered(TwoSamples));
    ASSERT_EQ(NoOfCheck, 1);
    EXPECT_EQ(CheckList(0), 0);
    ASSERT_EQ(NoOfIntPar, 1);
    EXPECT_EQ(IntParList(0), 21);
    ChooseTails(TwoOneSided);
    EXPECT_EQ(NoOfIntPar, 0) << "between two limits there is no single H0 value";
}

// What a test forces is no choice of the user, whose own comes back with the next test.
TEST_F(SetUp, AForcedChoiceIsNotCarriedIntoTheNextTest) {
    OpenTest(equivalence);
    AcceptOptions();
    EXPECT_EQ(NoOfTails, TwoOneSided);
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, TwoSided);
    ChooseTails(OneSided);
    NewTest(bioequivalence);
    AcceptOptions();
    NewTest(equivalence);
    ChooseTails(TwoOneSided); // a click on what is chosen anyway
    AcceptOptions();
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, OneSided);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    NewTest(paired);
    EXPECT_EQ(NoOfTails, TwoOneSided) << "the user's own choice is carried";
    EXPECT_EQ(NoOfSamples, OneSample);
    AcceptOptions();
    NewDistribution(DistrNormal);
    EXPECT_EQ(NoOfSamples, TwoSamples);
}

TEST_F(SetUp, AForcedChoiceBelongsToItsAnalysis) {
    OpenTest(unpaired);
    ChooseTails(OneSided);
    NewTest(equivalence);
    AcceptOptions();
    NewWindow(CalculationWindow);
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, OneSided);
    ChooseTails(TwoSided);
    AcceptOptions();
    SwitchAnalysis(1);
    EXPECT_EQ(NoOfTails, TwoOneSided);
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, OneSided);
    CancelOptions();
    EXPECT_EQ(NoOfTails, TwoOneSided);
    SwitchAnalysis(2);
    EXPECT_EQ(NoOfTails, TwoSided);
}

TEST_F(SetUp, EquivalenceIsTwoOneSidedAndNonInferiorityOneSided) {
    OpenTest(equivalence);
    EXPECT_EQ(NoOfTails, TwoOneSided);
    EXPECT_FALSE(TailsOffered(OneSided));
    NewTest(nonInferiority);
    EXPECT_EQ(NoOfTails, OneSided);
    EXPECT_FALSE(TailsOffered(TwoOneSided));
    EXPECT_EQ(CheckList(0), 36);
    NewTest(bioequivalence);
    EXPECT_EQ(NoOfTails, TwoOneSided);
    EXPECT_EQ(IntParList(0), 10);
    EXPECT_EQ(IntParList(1), 19);
    EXPECT_EQ(IntParList(2), 53);
}

TEST_F(SetUp, ATwoSidedTestHasNoLeftTail) {
    OpenTest(unpaired);
    ChooseTails(TwoSided);
    EXPECT_FALSE(LeftTailOffered);
    ChooseTails(OneSided);
    EXPECT_TRUE(LeftTailOffered);
}

std::vector<i16> KindsInList() {
    std::vector<i16> kinds;
    for (i16 i = 0; i <= NoOfPar; ++i)
        kinds.push_back(ParKind(i));
    return kinds;
}

using Kinds = std::vector<i16>;

TEST_F(SetUp, TheListsOfTheUnpairedTest) {
    OpenTest(unpaired);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 61, 86, 87, 2, 4, 37}));
    NewTest(unpaired);
    Pick(Group::Mean2, 1);
    Pick(Group::Size2, 1);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 61, 62, 2, 4, 38}));
    NewTest(unpaired);
    Pick(Group::Mean2, 2);
    Pick(Group::Size2, 2);
    Tick(Check::GroupsInAnova);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 61, 86, 88, 2, 4, 5, 17}));
    NewTest(unpaired);
    Tick(Check::Satterthwaite);
    Pick(Group::Sd2, 1);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 61, 86, 88, 216, 218, 4, 5}));
    NewTest(unpaired);
    Tick(Check::Satterthwaite, false);
    Tick(Check::DegreesOfFreedom);
    Pick(Group::Mean2, 1);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 6, 7, 62, 2, 4, 5, 36}));
}

TEST_F(SetUp, TheListsOfThePairedTest) {
    OpenTest(paired);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 157, 158, 3, 85}));
    NewTest(paired);
    Pick(Group::H1MeanOfDifference, 2);
    Tick(Check::DegreesOfFreedom);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 157, 160, 3, 85, 36}));
    NewTest(paired);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 6, 7, 158, 3, 85, 36}));
}

TEST_F(SetUp, TheListsOfEquivalenceAndNonInferiority) {
    OpenTest(equivalence);
    Pick(Group::Mean2, 1);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{321, 318, 6, 7, 62, 2, 4, 37}));
    NewTest(801);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{321, 318, 97, 98, 94, 95, 27, 4, 37}));
    NewTest(nonInferiority);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{321, 318, 330, 62, 2, 4, 37}));
    NewTest(831);
    Pick(Group::Median2, 1);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{321, 318, 319, 96, 27, 4, 37}));
    NewTest(bioequivalence);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{0, 1, 29, 30, 96, 155, 322, 323}));
    NewTest(811);
    Pick(Group::Median2, 0);
    Pick(Group::LogSd, 1);
    Pick(Group::SequenceSize2, 2);
    AcceptOptions();
    EXPECT_EQ(KindsInList(), (Kinds{321, 318, 29, 30, 94, 95, 156, 322, 325}));
}

TEST_F(SetUp, TheHeadlineSaysTestAndTails) {
    OpenTest(unpaired);
    AcceptOptions();
    EXPECT_EQ(ParListName, "Student's t-test, Unpaired, two-sided.");
    NewTest(paired);
    ChooseTails(OneSided);
    AcceptOptions();
    EXPECT_EQ(ParListName, "Student's t-test, Paired, one-sided.");
    NewTest(bioequivalence);
    AcceptOptions();
    EXPECT_EQ(ParListName, "Bioequivalence, Two-way Crossover Design, Test approach, two "
                           "one-sided (equivalence).");
}

TEST_F(SetUp, TheHeadlineOfAParameterAnalysis) {
    IsTest = False;
    DistrNo = DistrNormal;
    DistrName = DistrMenuName(DistrNormal);
    ParListNo = 0;
    NoOfTails = TwoSided;
    ProcedureNo = ProcedureTest;
    EXPECT_EQ(Headline(), "Test of mean (std.dev. known) Normal Distribution, two-sided.");
    ProcedureNo = ProcedureEstimate;
    EXPECT_EQ(Headline(),
              "Point Estimate of mean (std.dev. known) Normal Distribution, two-sided.");
    ProcedureNo = ProcedureInterval;
    CheckValue(Check::TwoSidedInterval) = 1;
    EXPECT_EQ(Headline(),
              "Conf. Interval for mean (std.dev. known) Normal Distribution, two-sided.");
    CheckValue(Check::TwoSidedInterval) = 0;
    EXPECT_EQ(Headline(),
              "Conf. Interval for mean (std.dev. known) Normal Distribution, one-sided.");
}

TEST_F(SetUp, AConfidenceIntervalStartsTwoSidedAndStaysAsTheUserMakesIt) {
    OpenDistribution(DistrNormal, 0, ProcedureInterval);
    ASSERT_EQ(NoOfCheck, 1);
    ASSERT_EQ(CheckList(0), 36);
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 1);
    EXPECT_FALSE(TailsShown);
    Tick(Check::TwoSidedInterval, false);
    ChooseSamples(TwoSamples);
    ChooseParList(1);
    ChooseProcedure(ProcedureInterval);
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 0) << "other choices leave it alone";
    AcceptOptions();
    NewTest(unpaired);
    CancelOptions();
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 0) << "so does coming back to the analysis";
    NewDistribution(DistrLognormal);
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 1) << "a new analysis starts anew";
    ChooseProcedure(ProcedureTest);
    ChooseProcedure(ProcedureInterval);
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 1);
}

TEST_F(SetUp, ATestOfNonInferiorityStartsWithAOneSidedInterval) {
    OpenDistribution(DistrNormal, 0, ProcedureInterval);
    AcceptOptions();
    NewTest(nonInferiority);
    ASSERT_EQ(CheckList(0), 36);
    EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 0);
}

TEST_F(SetUp, OnlyATestRejectsInATail) {
    OpenDistribution(DistrNormal, 0, ProcedureTest);
    ChooseTails(OneSided);
    EXPECT_TRUE(LeftTailOffered);
    ChooseProcedure(ProcedureEstimate);
    EXPECT_FALSE(LeftTailOffered);
    ChooseProcedure(ProcedureInterval);
    EXPECT_FALSE(LeftTailOffered);
}

TEST_F(SetUp, ExitClosesTheMainWindow) {
    FileCommand(13);
    EXPECT_TRUE(platform.MainClosed);
}

TEST_F(SetUp, TheEntriesOfCurrentAnalysisFollowTheResult) {
    FileCommand(CalculationWindow);
    for (int i = 0; i <= 2; ++i)
        EXPECT_TRUE(GetInfoEnabled(i));
    EXPECT_FALSE(GetInfoEnabled(3));
    NewTest(unpaired);
    EXPECT_FALSE(GetInfoEnabled(3));
    AcceptOptions();
    EXPECT_TRUE(GetInfoEnabled(3));
    EXPECT_TRUE(GetInfoEnabled(4)) << "the distributions of t";
    OpenTest(fisher);
    AcceptOptions();
    Solve(Kind::Power);
    EXPECT_TRUE(GetInfoEnabled(3));
    EXPECT_FALSE(GetInfoEnabled(4)) << "no statistic with a distribution of its own";
}

} // namespace
} // namespace quorvanta::checks
