// The run of a simulation: its loop, its limits, counts, estimates and states, and the road to it.
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/number_text.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "core/step_back.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "numeric/rnd.h"
#include "output/statement.h"
#include "support/number.h"
#include "support/simulation_fixture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>

namespace quorvanta::checks {
namespace {

constexpr i16 menuWilcoxon = 300;
constexpr i16 menuOrdered = 301;
constexpr i16 menuNormalScores = 310;
constexpr i16 menuTTest = 0;
constexpr i16 menuOneWay = 10;

class Simulation : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        OpenSimulation(menuWilcoxon);
    }
};

// --- The road ------------------------------------------------------------------------------------

TEST_F(Simulation, ShowsItsDialogAndAsksForNoUnknown) {
    EXPECT_EQ(CurrentWindowKind(), SimulationWindow);
    EXPECT_TRUE(platform.IsShown(FloatingWindow::InterimParameters));
    EXPECT_FALSE(platform.IsShown(FloatingWindow::Parameters));
    EXPECT_EQ(SimNo, 0);
    EXPECT_EQ(OutputReady, False);
}

TEST_F(Simulation, RefusesAParameterWithoutValue) {
    Type(Kind::Size1, "");
    SimStart();
    EXPECT_EQ(LastMessage(), "Sample Size 1 Has No Value.");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(SimRunning, False);
}

TEST_F(Simulation, RefusesAValueOutsideItsRange) {
    Type(Kind::Size1, "2");
    SimStart();
    EXPECT_EQ(LastMessage(), "Sample Size 1 Has To Be Greater Than or Equal to 3.");
    EXPECT_EQ(OutputReady, False);
}

TEST_F(Simulation, NeedsNoPower) {
    Type(Kind::Power, "");
    Run("5", "1");
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(OutputReady, True);
}

TEST_F(Simulation, HoldsAsManySubjectsAsItCanCount) {
    Type(Kind::Size1, "40000");
    SimStart();
    EXPECT_EQ(LastMessage(), "A Sample of a Simulation Has 32767 Subjects at Most.");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
}

TEST_F(Simulation, RefusesATestThatHasNone) {
    NewTest(menuOrdered);
    EXPECT_NE(LastMessage().find(" Is Not Available as Monte Carlo Simulation."),
              std::string::npos);
    EXPECT_EQ(TestNo, 41);
}

// --- Limits --------------------------------------------------------------------------------------

TEST_F(Simulation, NothingEnteredIsTheLevelAndNoEarlyAcceptance) {
    Type(Kind::SignificanceLevel, "0.07");
    Run("3", "1");
    EXPECT_EQ(RejectP(1), 0.07F);
    EXPECT_EQ(AcceptP(1), 1.0F);
    RejectH0Text(0) = "0";
    AcceptH0Text(0) = "0";
    Run("3", "1");
    EXPECT_EQ(RejectP(1), 0.07F);
    EXPECT_EQ(AcceptP(1), 1.0F);
}

// Neither 0 nor 1 nor nothing ever accepts H0 early.
TEST_F(Simulation, AnAcceptLimitOf0Or1NeverAccepts) {
    Type(Kind::H1ProbabilityOfOrder, "0.5");
    for (const char* text : {"", "0", "1"}) {
        AcceptH0Text(0) = text;
        Run("300", "4");
        EXPECT_EQ(AcceptP(1), 1.0F) << text;
        EXPECT_EQ(CountAcceptH1(1), 0) << text;
    }
    AcceptH0Text(0) = "0.5";
    Run("300", "4");
    EXPECT_NEAR(CountAcceptH1(1), 150, 40);
}

TEST_F(Simulation, LimitsMayHaveADecimalComma) {
    RejectH0Text(0) = "0,025";
    AcceptH0Text(0) = "0,5";
    Run("3", "1");
    EXPECT_EQ(RejectP(1), 0.025F);
    EXPECT_EQ(AcceptP(1), 0.5F);
}

TEST_F(Simulation, RefusesLimitsOutsideZeroToOne) {
    for (const char* text : {"-0.01", "1.01"}) {
        RejectH0Text(0) = text;
        SimStart();
        EXPECT_EQ(LastMessage(), "Probability To Reject H0 Is Outside (0, 1).");
        EXPECT_EQ(platform.Messages.back().ShownIcon, Icon::Exclamation);
        RejectH0Text(0) = "";
        AcceptH0Text(0) = text;
        SimStart();
        EXPECT_EQ(LastMessage(), "Probability To Accept H0 Is Outside (0, 1).");
        AcceptH0Text(0) = "";
        EXPECT_EQ(Cancelled, False);
        EXPECT_EQ(OutputReady, False);
    }
    // The bounds themselves pass.
    platform.Messages.clear();
    RejectH0Text(0) = "1";
    AcceptH0Text(0) = "1";
    Run("3", "1");
    EXPECT_TRUE(platform.Messages.empty());
}

// The stream of a seed: one state for 5 and -5, and then the seed itself.
Xoshiro256::State UniformSourceAfter(f64 seed) {
    Rnd(-5.0);
    Randomize(seed);
    return UniformSource.Words();
}

// --- Seeds and repetition ------------------------------------------------------------------------

TEST_F(Simulation, ASeedRepeatsARun) {
    Run("150", "123");
    const std::string first = Estimates();
    Run("150", "123");
    EXPECT_EQ(Estimates(), first);
    Run("150", "124");
    EXPECT_NE(Estimates(), first);
}

TEST_F(Simulation, ASeedAndItsNegativeHaveOneStartAndTwoStreams) {
    const auto streamAtStart = [this](const std::string& seed) {
        Xoshiro256 stream = UniformSource;
        platform.OnDoEvents = [&stream] { stream = UniformSource; };
        Run("1", seed);
        return stream.Words();
    };
    EXPECT_EQ(streamAtStart("5"), UniformSourceAfter(5));
    EXPECT_EQ(streamAtStart("-5"), UniformSourceAfter(-5));
    EXPECT_NE(UniformSourceAfter(5), UniformSourceAfter(-5));
}

TEST_F(Simulation, WithoutASeedTheClockStartsTheStream) {
    platform.ClockStep = 0.001;
    Run("150", "");
    const std::string first = Estimates();
    Run("150", "");
    EXPECT_NE(Estimates(), first);
}

// --- The loop ------------------------------------------------------------------------------------

TEST_F(Simulation, UpdatesAtEachOfTheFirstReplicates) {
    std::vector<std::string> numbers;
    platform.OnDoEvents = [&] { numbers.push_back(SampleSizeEstimateText(2)); };
    Run("50", "1");
    ASSERT_EQ(numbers.size(), 50U);
    EXPECT_EQ(numbers.front(), "1");
    EXPECT_EQ(numbers.back(), "50");
}

TEST_F(Simulation, UpdatesSeldomAfterTheFirstHundred) {
    Run("150", "1"); // no time passes: an update each 1000
    EXPECT_EQ(SampleSizeEstimateText(2), "100");
    EXPECT_EQ(SimNo, 150);
}

TEST_F(Simulation, LabelsShowTheLastUpdateAndCountsTheWholeRun) {
    Run("1500", "1");
    EXPECT_EQ(SampleSizeEstimateText(2), "1000");
    EXPECT_EQ(SimNo, 1500);
    EXPECT_EQ(CountRejectH1(1) + CountAcceptH1(1) <= 1500, true);
    EXPECT_GT(CountRejectH1(1), 0);
}

TEST_F(Simulation, TheIntervalFollowsTheTimeOfTheFirstHundred) {
    constexpr std::pair<i32, i32> rows[] = {{-1, 2000}, {0, 1000}, {1, 500}, {2, 200},
                                            {3, 100},   {5, 100},  {6, 10},  {10, 10},
                                            {11, 5},    {25, 5},   {26, 1},  {1000, 1}};
    for (const auto& [seconds, interval] : rows)
        EXPECT_EQ(SimUpdateInterval(seconds), interval) << seconds;
    // Once for the whole run: one second for the first 100 replicates.
    platform.OnDoEvents = [&] { platform.Clock += 0.012; };
    std::vector<std::string> numbers;
    platform.OnDoEvents = [&] {
        platform.Clock += SimNo <= 100 ? 0.012 : 10;
        numbers.push_back(SampleSizeEstimateText(2));
    };
    Run("1200", "1");
    EXPECT_EQ(numbers.back(), "1000");
    EXPECT_EQ(numbers[600], "500");
}

// A fast run has more displays than an eye can follow: the window is drawn after 0.03 seconds, and
// at the end.
TEST_F(Simulation, IsDrawnAsOftenAsAnEyeCanFollow) {
    constexpr f64 replicateSeconds = 0.001;
    int drawn = 0;
    platform.OnDoEvents = [&] {
        platform.Clock += replicateSeconds;
        if (SimNo == 1)
            drawn = platform.SimRefreshes;
        if (SimNo == 100)
            drawn = platform.SimRefreshes - drawn;
    };
    Run("100", "1");
    EXPECT_GE(drawn, 3);
    EXPECT_LE(drawn, 4);
    const int before = platform.SimRefreshes;
    platform.OnDoEvents = [] {};
    Run("1", "1");
    EXPECT_GE(platform.SimRefreshes, before + 3) << "the start, the first replicate and the end";
}

// Hundreds of digits in any field of the dialog: as many as can be, or refused in its words.
TEST_F(Simulation, TakesNumbersThatNothingHolds) {
    const std::string absurd(400, '9');
    platform.OnDoEvents = [] {
        if (SimNo == 20)
            SimStop();
    };
    Run(absurd, "1");
    EXPECT_EQ(MaxNoOfSim, std::numeric_limits<i32>::max());
    EXPECT_EQ(SampleSizeEstimateText(2), "20");
    EXPECT_FALSE(SumStatement().empty());
    Run("20", absurd);
    EXPECT_EQ(SampleSizeEstimateText(2), "20");
    const std::string estimates = Estimates();
    Run("20", absurd);
    EXPECT_EQ(Estimates(), estimates) << "a seed as well";
    for (auto* text : {&RejectH0Text(0), &AcceptH0Text(0)}) {
        *text = absurd;
        Run("20", "1");
        EXPECT_EQ(LastMessage(), text == &RejectH0Text(0)
                                     ? "Probability To Reject H0 Is Outside (0, 1)."
                                     : "Probability To Accept H0 Is Outside (0, 1).");
        *text = "";
    }
}

TEST_F(Simulation, WithoutAMaximumOnlyTheUserEndsIt) {
    platform.OnDoEvents = [] {
        EXPECT_EQ(MaxNoOfSim, 99999999);
        if (SimNo == 20)
            SimStop();
    };
    for (const char* text : {"", "0", "-3", "0.2"}) {
        Run(text, "1");
        EXPECT_EQ(SampleSizeEstimateText(2), "20");
        EXPECT_EQ(SimNo, 0);
        EXPECT_EQ(Cancelled, False);
        EXPECT_EQ(OutputReady, True);
    }
}

TEST_F(Simulation, TheMaximumMayHaveADecimalComma) {
    Run("2,0", "1");
    EXPECT_EQ(SimNo, 2);
}

TEST_F(Simulation, EachReplicateYieldsToTheUser) {
    platform.Yields = 0;
    Run("37", "1");
    EXPECT_EQ(platform.Yields, 37);
}

// --- States --------------------------------------------------------------------------------------

TEST_F(Simulation, PausesAndGoesOn) {
    Run("150", "9");
    const std::string whole = Estimates();
    int paused = 0;
    platform.OnDoEvents = [&] {
        EXPECT_EQ(SimRunning, True);
        if (SimNo == 60 && paused == 0)
            SimPause();
        if (Paused == True) {
            EXPECT_EQ(SimNo, 60);
            if (++paused == 10)
                SimPause();
        }
    };
    Run("150", "9");
    EXPECT_EQ(paused, 10);
    EXPECT_EQ(Estimates(), whole) << "a pause changes nothing";
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(Paused, True);
}

TEST_F(Simulation, ExitWhilePausedEndsIt) {
    platform.OnDoEvents = [] {
        if (SimNo == 5 && Paused == False)
            SimPause();
        else if (Paused == True)
            SimStop();
    };
    Run("1000", "1");
    EXPECT_EQ(SimNo, 0);
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(SampleSizeEstimateText(2), "5");
}

TEST_F(Simulation, RunsInOneWindowAtATime) {
    bool asked = false;
    platform.OnDoEvents = [&] {
        if (SimNo != 3 || asked)
            return;
        asked = true;
        SimStart();
        EXPECT_EQ(SimNo, 3);
        FileCommand(CalculationWindow);
        NewTest(menuTTest);
    };
    Run("10", "1");
    ASSERT_EQ(platform.Messages.size(), 2U);
    for (const Message& message : platform.Messages) {
        EXPECT_EQ(message.Text, "Calculation Ongoing \r\n\r\nExit Ongoing Calculation?");
        EXPECT_EQ(message.ShownButtons, Buttons::YesNo);
    }
    EXPECT_EQ(SimNo, 10) << "the answer was No";
    EXPECT_EQ(TestNo, 41);
}

TEST_F(Simulation, AnotherAnalysisMayEndIt) {
    platform.Answers.push_back(Answer::Yes);
    platform.OnDoEvents = [] {
        if (SimNo == 3)
            FileCommand(CalculationWindow);
    };
    Run("10", "1");
    EXPECT_EQ(SimNo, 0);
    EXPECT_EQ(SampleSizeEstimateText(2), "3");
}

TEST_F(Simulation, ClosingIsRefusedAndEndsTheRun) {
    bool mayClose = true;
    platform.OnDoEvents = [&] {
        if (SimNo == 4)
            mayClose = QueryCloseChild(AnalysisNo, CloseByUser);
    };
    Run("1000", "1");
    EXPECT_FALSE(mayClose);
    EXPECT_EQ(SampleSizeEstimateText(2), "4");
    platform.Messages.clear();
    platform.Answers.push_back(Answer::Cancel);
    EXPECT_FALSE(QueryCloseChild(AnalysisNo, CloseByUser));
    EXPECT_EQ(LastMessage(), "Monte Carlo Simulation 1 Has Been Changed.\r\n\r\nSave Analysis?");
    EXPECT_EQ(platform.Messages.back().ShownButtons, Buttons::YesNoCancel);
}

// A fault in a replicate ends the run, and nothing is left of it.
TEST_F(Simulation, AFaultReleasesTheWindows) {
    platform.OnDoEvents = [] {
        if (SimNo == 4)
            throw RunTimeError(Fault::Overflow);
    };
    EXPECT_THROW(Run("10", "1"), RunTimeError);
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(Calculating, False);
    platform.OnDoEvents = {};
    Run("10", "1");
    EXPECT_EQ(SimNo, 10);
}

TEST_F(Simulation, ATypedValueMakesTheEstimatesGo) {
    Run("10", "1");
    EXPECT_TRUE(HasValue(PowerEstimateText(0)));
    Type(Kind::Size1, "31");
    EXPECT_FALSE(HasValue(PowerEstimateText(0)));
    EXPECT_EQ(OutputReady, False);
    EXPECT_FALSE(GetInfoEnabled(3));
}

// Numbers begin anew when all windows are closed: the picture and the rejections of a run belong to
// no later analysis.
TEST_F(Simulation, ARunIsNotThatOfALaterAnalysis) {
    Run("10", "1");
    EXPECT_EQ(SimAnalysis(), AnalysisNo);
    const i16 number = AnalysisNo;
    CloseMode = CloseByUser;
    for (i16 n = number; n >= 1; --n)
        ChildClosed(n);
    ASSERT_EQ(AnalysisNo, 0);
    EXPECT_EQ(SimAnalysis(), 0);
    while (AnalysisNo < number)
        OpenSimulation(menuTTest);
    EXPECT_NE(SimAnalysis(), AnalysisNo);
    Run("10", "1");
    EXPECT_EQ(SimAnalysis(), AnalysisNo);
}

TEST_F(Simulation, ForeseesItsEnd) {
    std::vector<f64> left;
    platform.OnDoEvents = [&] {
        platform.Clock += 0.5;
        left.push_back(SimSecondsLeft());
    };
    Run("200", "1");
    EXPECT_EQ(left[10], -1) << "too early to tell";
    EXPECT_NEAR(left[149], 25, 1);
    Run("", "1", 150);
    EXPECT_EQ(left.back(), -1) << "no maximum";
    EXPECT_EQ(SimSecondsLeft(), -1) << "no run";
}

// --- Estimates -----------------------------------------------------------------------------------

TEST_F(Simulation, EstimatesHaveThreeNumbers) {
    EXPECT_EQ(SimInterval(0.5F, 0.1F, "#0.0000"), "0.4000   0.5000   0.6000");
    EXPECT_EQ(SimInterval(1, 0, "#0.0000"), "1.0000   1.0000   1.0000");
    EXPECT_EQ(SimInterval(0.01F, 0.05F, "#0.0000"), "0.0000   0.0100   0.0600");
    // p = 0.999 at n = 100: the upper limit is not cut.
    const f32 half = static_cast<f32>(1.96 * std::sqrt(0.999 * 0.001 / 100));
    EXPECT_EQ(SimInterval(0.999F, half, "#0.0000"), "0.9928   0.9990   1.0052");
}

TEST_F(Simulation, HundredthsAreDisplayedWithTheWidestInterval) {
    Run("10", "1");
    CountRejectH1(1) = -500;
    SimUpdateDisplay();
    const f64 half = 1.96 * std::sqrt(0.025);
    EXPECT_EQ(PowerEstimateText(0), SimInterval(0.5F, static_cast<f32>(half), "#0.0000"));
    EXPECT_EQ(PowerEstimateText(0), "0.1901   0.5000   0.8099");
}

TEST_F(Simulation, SharesAreThoseOfTheCounts) {
    Run("100", "1");
    CountRejectH0(1) = 5;
    CountRejectH1(1) = 80;
    CountAcceptH1(1) = 10;
    SimUpdateDisplay();
    EXPECT_EQ(SignEstimateText(0), "0.0073   0.0500   0.0927");
    EXPECT_EQ(PowerEstimateText(0), "0.7216   0.8000   0.8784");
    EXPECT_EQ(PrAcceptEstimateText(0), "0.0412   0.1000   0.1588");
    EXPECT_EQ(SampleSizeEstimateText(0), "") << "one analysis has no average size";
}

TEST_F(Simulation, PointsOfThePictureStayFew) {
    Run("1000", "1");
    EXPECT_GE(SimHistory().size(), 50U);
    EXPECT_LE(SimHistory().size(), 200U);
    for (std::size_t i = 1; i < SimHistory().size(); ++i)
        EXPECT_LT(SimHistory()[i - 1].SimNo, SimHistory()[i].SimNo);
    Run("20", "1");
    EXPECT_EQ(SimHistory().size(), 20U);
}

// --- Interim analyses ----------------------------------------------------------------------------

class InterimSimulation : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        NewWindow(SimulationWindow);
        NewTest(menuWilcoxon);
        EXPECT_TRUE(InterimShown);
        ChooseInterim(2);
        AcceptOptions();
        Type(Kind::H1ProbabilityOfOrder, "0.65");
        Type(Kind::Size1, "30");
        Type(Kind::Size2, "60");
    }
};

TEST_F(InterimSimulation, StepsAreEqualWhereNoneAreEntered) {
    Run("5", "1");
    EXPECT_EQ(SimSize1, CellsOf<i16>({0, 10, 20, 30}));
    EXPECT_EQ(SimSize2, CellsOf<i16>({0, 20, 40, 60}));
    InterimSize1Text(0) = "12";
    InterimSize2Text(1) = "50";
    Run("5", "1");
    EXPECT_EQ(SimSize1, CellsOf<i16>({0, 12, 20, 30}));
    EXPECT_EQ(SimSize2, CellsOf<i16>({0, 20, 50, 60}));
}

TEST_F(InterimSimulation, RefusesFallingSizes) {
    InterimSize1Text(0) = "25";
    SimStart();
    EXPECT_EQ(LastMessage(),
              "Sample Size 1 at Interim Analysis 1 Is Larger Than at Interim Analysis 2.");
    InterimSize1Text(0) = "";
    InterimSize2Text(1) = "70";
    SimStart();
    EXPECT_EQ(LastMessage(),
              "Sample Size 2 at Interim Analysis 2 Is Larger Than at Interim Analysis 3.");
    EXPECT_EQ(OutputReady, False);
}

TEST_F(InterimSimulation, CountsEachAnalysisAndAllOfThem) {
    for (i16 k = 0; k < 3; ++k) {
        RejectH0Text(k) = "0.02";
        AcceptH0Text(k) = k < 2 ? "0.8" : "";
    }
    Run("2000", "17");
    for (const auto* counts : {&CountRejectH0, &CountRejectH1}) {
        EXPECT_EQ((*counts)(1) + (*counts)(2) + (*counts)(3), (*counts)(4));
        EXPECT_GT((*counts)(1), 0);
        EXPECT_GT((*counts)(2), 0);
    }
    EXPECT_GT(CountAcceptH0(1), 100);
    EXPECT_EQ(CountAcceptH0(3), 0) << "at the last analysis nothing is accepted early";
    EXPECT_TRUE(HasValue(PowerEstimateText(3))) << "over all";
    EXPECT_FALSE(HasValue(PowerEstimateText(4)));
}

TEST_F(InterimSimulation, AverageSizesAreThoseOfTheCounts) {
    Run("10", "1");
    SimNo = 100;
    CountRejectH0.Raw()[1] = 3; // of no meaning for the average under H0
    CountAcceptH0(1) = 20;
    CountAcceptH0(2) = 30;
    CountRejectH1(1) = 40;
    CountRejectH1(2) = 10;
    CountAcceptH1(1) = 5;
    CountAcceptH1(2) = 5;
    SimUpdateDisplay();
    // H0: 0.2 x 30 + 0.3 x 60 + 0.5 x 90; H1: 0.45 x 30 + 0.15 x 60 + 0.4 x 90.
    const auto text = [](f64 mean, f64 square) {
        return SimInterval(static_cast<f32>(mean),
                           static_cast<f32>(1.96 * (square - mean * mean) / 100), "0000.0");
    };
    EXPECT_EQ(SampleSizeEstimateText(0), text(69, 0.2 * 900 + 0.3 * 3600 + 0.5 * 8100));
    EXPECT_EQ(SampleSizeEstimateText(1), text(58.5, 0.45 * 900 + 0.15 * 3600 + 0.4 * 8100));
    EXPECT_NE(SampleSizeEstimateText(0).find("0069.0"), std::string::npos);
}

// Four groups: the first one and three of the other size, or one size for all.
TEST_F(InterimSimulation, AverageSizesCountAllGroups) {
    NewTest(menuOneWay);
    ChooseInterim(1);
    AcceptOptions();
    Type(Kind::NoOfGroups, "4");
    Type(Kind::Size1, "10");
    Type(Kind::SizeK, "20");
    Run("1", "1");
    EXPECT_EQ(SampleSizeEstimateText(0).find("0070.0"), 0U) << SampleSizeEstimateText(0);
    NewTest(menuOneWay);
    ChooseInterim(1);
    Tick(Check::Contrast);
    AcceptOptions();
    Type(Kind::NoOfGroups, "4");
    Type(Kind::SizePerGroup, "15");
    Run("1", "1");
    EXPECT_EQ(SampleSizeEstimateText(0).find("0060.0"), 0U) << SampleSizeEstimateText(0);
}

TEST_F(InterimSimulation, LargeAveragesHaveNoDecimals) {
    Type(Kind::Size1, "1000");
    Run("1", "1");
    EXPECT_EQ(SampleSizeEstimateText(0).find('.'), std::string::npos);
    EXPECT_NE(SampleSizeEstimateText(0).find("01060"), std::string::npos);
}

// --- What only simulates -------------------------------------------------------------------------

TEST_F(SimulationFixture, TestsThatOnlySimulateAskForTheirWindow) {
    if (!HasSimulation({.IsTest = True, .TestNo = 43}))
        GTEST_SKIP();
    FileCommand(CalculationWindow);
    platform.Answers.push_back(Answer::Cancel);
    NewTest(menuNormalScores);
    EXPECT_EQ(LastMessage(),
              TestMenuName(menuNormalScores) + " Is Only Available as Monte Carlo Simulation.");
    EXPECT_EQ(platform.Messages.back().ShownButtons, Buttons::OkCancel);
    EXPECT_EQ(Analysis.HighBound(), 1) << "Cancel ends it";
    NewTest(menuNormalScores);
    EXPECT_EQ(CurrentWindowKind(), SimulationWindow);
    EXPECT_EQ(TestNo, 43);
    EXPECT_TRUE(ChoosingOptions);
    platform.Messages.clear();
    NewTest(menuNormalScores);
    EXPECT_TRUE(platform.Messages.empty()) << "nothing to ask in a simulation window";
}

} // namespace
} // namespace quorvanta::checks
