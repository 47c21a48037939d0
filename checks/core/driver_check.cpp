#include "core/checksearch.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/fault.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/records.h"
#include "core/root.h"
#include "core/run.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "support/analysis_fixture.h"
#include "support/number.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 power = Kind::Power;
constexpr i16 sd = Kind::Sd;
constexpr i16 size1 = Kind::Size1;
constexpr i16 sizeRatio = Kind::Size2Over1;
constexpr i16 h0Difference = Kind::H0Mean2Minus1;
constexpr i16 h1Difference = Kind::H1Mean2Minus1;
constexpr i16 groupMean2 = Group::Mean2;
constexpr i16 groupSize2 = Group::Size2;

class Driver : public AnalysisFixture {
  protected:
    // The unpaired t-test with the difference and the size ratio entered, two-sided.
    void OpenTTest(i16 tails = TwoSided) {
        OpenTest(unpaired);
        Pick(groupMean2, 1);
        Pick(groupSize2, 2);
        ChooseTails(tails);
        AcceptOptions();
        platform.Messages.clear();
    }
};

TEST_F(Driver, ANewAnalysisIsSolvedAtOnce) {
    OpenTTest();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_TRUE(HasValue(ParText(power)));
}

TEST_F(Driver, SolvesForTheSampleSize) {
    OpenTTest();
    Type(power, "0.80");
    Type(h1Difference, "0.5");
    Type(sd, "1");
    // The exact solution is 63.766: 64 subjects.
    EXPECT_EQ(Solve(size1), "64");
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Driver, DecimalCommaAndPointAreTheSameNumberAndTheTextStays) {
    OpenTTest();
    Type(h1Difference, "0,5");
    const std::string withComma = Solve(size1);
    EXPECT_EQ(ParText(h1Difference), "0,5");
    Type(h1Difference, "0.5");
    EXPECT_EQ(Solve(size1), withComma);
    EXPECT_EQ(ParText(h1Difference), "0.5");
}

TEST_F(Driver, ReadNumberStopsWhereTheNumberEnds) {
    EXPECT_EQ(ReadNumber("1,5"), 1.5);
    EXPECT_EQ(ReadNumber(" 2.25 kg"), 2.25);
    EXPECT_EQ(ReadNumber(""), 0);
    EXPECT_EQ(ReadNumber("-"), 0);
    EXPECT_EQ(ReadNumber("1.2.3"), 1.2);
    EXPECT_EQ(ReadNumber("-0,5"), -0.5);
}

TEST_F(Driver, TheSameLabelTwiceCalculatesOnce) {
    OpenTTest();
    Solve(size1);
    const int refreshes = platform.Refreshes;
    ParText(size1) = "kept";
    Solve(size1);
    EXPECT_EQ(ParText(size1), "kept");
    EXPECT_EQ(platform.Refreshes, refreshes);
    Type(sd, "0.5");
    EXPECT_EQ(Calculated, False);
    Solve(size1);
    EXPECT_NE(ParText(size1), "kept");
}

TEST_F(Driver, TheAxesTakeTheTwoLowestOtherParameters) {
    OpenTTest();
    SolveFor(0);
    EXPECT_EQ(ZParNo, 1);
    EXPECT_EQ(XParNo, 2);
    SolveFor(1);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_EQ(XParNo, 2);
    SolveFor(4);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_EQ(XParNo, 1);
}

TEST_F(Driver, ABadValueIsToldOnceAndLeavesNoResult) {
    OpenTTest();
    Type(sd, "0");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Standard Deviation Has To Be Greater Than or Equal to "
                                       "0.00001."});
    EXPECT_EQ(Calculated, True);
    EXPECT_FALSE(GetInfoEnabled(3)) << "there is no result to make a statement of";
    Solve(size1);
    EXPECT_EQ(platform.Messages.size(), 1U) << "the same bad values are not checked twice";
}

TEST_F(Driver, AMissingValueIsTold) {
    OpenTTest();
    Type(sd, " ");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Standard Deviation Has No Value."});
}

TEST_F(Driver, NoSolutionIsToldWithAHintEveryOtherTime) {
    OpenTTest(OneSided);
    Type(h1Difference, "-0.5");
    const std::string plain = "Can't Be Calculated.";
    const std::string hint = "Can't Be Calculated. Please Check if TickBox 'Reject in Left Tail' "
                             "Should Be Ticked.";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Solve(size1), "-");
        Type(sd, "1");
    }
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{hint, plain, hint}));
}

// Only after a success does a second press of the same label do nothing.
TEST_F(Driver, ASecondPressAfterNoSolutionCalculatesAgain) {
    OpenTTest(OneSided);
    Type(h1Difference, "-0.5");
    const std::string plain = "Can't Be Calculated.";
    const std::string hint = "Can't Be Calculated. Please Check if TickBox 'Reject in Left Tail' "
                             "Should Be Ticked.";
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{hint, plain, hint, plain}));
    EXPECT_EQ(Calculated, True);
    // Another label that is solved, and then pressed again.
    Type(h1Difference, "0.5");
    Type(size1, "30");
    EXPECT_NE(Solve(power), "-");
    ParText(power) = "kept";
    EXPECT_EQ(Solve(power), "kept");
    EXPECT_EQ(platform.Messages.size(), 4U);
}

TEST_F(Driver, BadValuesAfterNoSolutionAreToldOnce) {
    OpenTTest();
    Type(h1Difference, "0");
    Solve(size1);
    Type(sd, "0");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Can't Be Calculated.",
                                        "Standard Deviation Has To Be Greater Than or Equal to "
                                        "0.00001."}));
}

TEST_F(Driver, TheHintNamesTheOtherDirection) {
    OpenTest(unpaired);
    Pick(groupMean2, 1);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    platform.Messages.clear();
    AcceptOptions();
    platform.Messages.clear();
    Type(power, "0.8");
    Type(h1Difference, "0.5");
    Solve(size1);
    Type(h1Difference, "0.5");
    Solve(size1);
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Can't Be Calculated. Please Check if TickBox 'Reject in "
                                        "Left Tail' Should Be UnTicked.",
                                        "Can't Be Calculated."}));
}

TEST_F(Driver, ATwoSidedTestGetsNoHint) {
    OpenTTest();
    Type(h1Difference, "0");
    for (int i = 0; i < 2; ++i) {
        Solve(size1);
        Type(sd, "1");
    }
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Can't Be Calculated.", "Can't Be Calculated."}));
}

TEST_F(Driver, APowerOfOneIsShownAsOne) {
    OpenTTest();
    Type(h1Difference, "50");
    Type(sd, "1");
    EXPECT_EQ(Solve(power), "1");
    EXPECT_TRUE(platform.Messages.empty());
}

// More than 99999 subjects would be needed: the search ends at its limit.
TEST_F(Driver, ARootAtTheUpperLimitIsAFailure) {
    OpenTTest();
    Type(h1Difference, "0.0001");
    Type(sd, "1");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Can't Be Calculated."});
}

// While a run shows its progress each evaluation lets events through: they can be counted.
TEST_F(Driver, NoEvaluationWhenTheLimitsAreEmpty) {
    OpenTTest();
    Type(sd, "1");
    UnknownParNo = PositionOf(sd);
    Calculating = True;
    platform.Yields = 0;
    SolveUnknown();
    EXPECT_GT(platform.Yields, 0);
    ParMin(sd) = ParMax(sd) = 1;
    ParValue(UnknownParNo) = 7;
    platform.Yields = 0;
    EXPECT_EQ(SolveUnknown(), NoValue);
    EXPECT_EQ(platform.Yields, 0);
    EXPECT_EQ(ParValue(UnknownParNo), 7) << "no trial value was written";
    Calculating = False;
    EXPECT_EQ(Solve(sd), "-");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Can't Be Calculated."});
}

TEST_F(Driver, EveryParameterCanBeTheUnknown) {
    OpenTTest();
    Type(power, "0.8");
    Type(h1Difference, "0.5");
    Type(sd, "1");
    Solve(size1);
    for (const i16 kind : {alpha, sd, h1Difference, h0Difference, sizeRatio, power, size1}) {
        const std::string before = ParText(kind);
        EXPECT_NEAR(ReadNumber(Solve(kind)), ReadNumber(before),
                    kind == size1 ? 1 : 0.02 * std::fabs(ReadNumber(before)) + 0.003)
            << StripAmpersand(ParLabel(kind));
    }
    EXPECT_TRUE(platform.Messages.empty());
}

// Faults of an evaluation are run-time errors, and no result is left behind.
TEST_F(Driver, AnOverflowInTheLimitsIsARunTimeError) {
    OpenTTest();
    Type(h1Difference, std::string(60, '9'));
    EXPECT_THROW(Solve(size1), RunTimeError);
    EXPECT_EQ(ParText(size1), "-");
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(ParText(h1Difference), std::string(60, '9')) << "what was typed stays";
    Type(h1Difference, "0.5");
    EXPECT_NE(Solve(size1), "-") << "the next calculation is not disturbed";
}

// --- Typed texts ------------------------------------------------------------------------------

TEST_F(Driver, AForbiddenCharacterIsToldAndTakenOut) {
    OpenTTest();
    EXPECT_EQ(TypedParText(PositionOf(sd), "1e5"), "15");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"e   Is Not Allowed. Must Be a Digit."});
    EXPECT_EQ(platform.Beeps, 1);
    EXPECT_EQ(ParText(sd), "15");
}

TEST_F(Driver, EachForbiddenCharacterIsToldInTurn) {
    OpenTTest();
    EXPECT_EQ(TypedParText(PositionOf(sd), "a1\xC3\xA4z2a"), "12");
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"a   Is Not Allowed. Must Be a Digit.",
                                        "\xC3\xA4   Is Not Allowed. Must Be a Digit.",
                                        "z   Is Not Allowed. Must Be a Digit."}));
}

TEST_F(Driver, BlankCommaAndMinusAreLegalAnywhere) {
    OpenTTest();
    EXPECT_EQ(TypedParText(PositionOf(sd), "1 ,-2"), "1 ,-2");
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Driver, AChangeTakesTheResultAway) {
    OpenTTest();
    EXPECT_TRUE(GetInfoEnabled(3));
    Type(sd, "2");
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(GetInfoEnabled(3));
    EXPECT_FALSE(GetInfoEnabled(4));
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
}

TEST_F(Driver, AHandChangeOfAGridValueDiscardsTheGrid) {
    OpenTTest();
    ParKind(3) = Kind::SdOfMeans;
    HasGridData = True;
    HasDistrGraph = True;
    EXPECT_TRUE(IsBluePar(3));
    TypedParText(3, "0.2");
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(HasDistrGraph, False);
    EXPECT_FALSE(IsBluePar(3));
}

// The grid is not consulted, and stays.
TEST_F(Driver, ABlueLabelSolvesLikeAnyOther) {
    OpenTTest();
    Type(sd, "1");
    Type(power, "0.8");
    Type(size1, "30");
    const i16 position = PositionOf(h1Difference);
    const std::string plain = Solve(h1Difference);
    ASSERT_NE(plain, "-");
    Calculated = False;
    ParKind(position) = Kind::SdOfMeans;
    ParText(Kind::SdOfMeans) = "1";
    HasGridData = True;
    ASSERT_TRUE(IsBluePar(position));
    platform.Shown.clear();
    SolveFor(position);
    EXPECT_EQ(ParText(Kind::SdOfMeans), plain);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(HasGridData, True);
    EXPECT_TRUE(platform.Shown.empty());
    EXPECT_TRUE(platform.Messages.empty());
}

// --- What a calculation leaves behind ---------------------------------------------------------

TEST_F(Driver, ACalculationIsStoredInItsRecord) {
    OpenTTest();
    Type(sd, "0.7");
    EXPECT_NE(Solve(size1), "-");
    EXPECT_EQ(Analysis(AnalysisNo).UnknownParNo, PositionOf(size1));
    EXPECT_EQ(Analysis(AnalysisNo).ParText(PositionOf(sd)), "0.7");
    EXPECT_EQ(Analysis(AnalysisNo).ParText(PositionOf(size1)), ParText(size1));
    Type(h1Difference, "0");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(Analysis(AnalysisNo).ParText(PositionOf(size1)), "-");
}

TEST_F(Driver, ANewResultIsAChange) {
    OpenTTest();
    AnalysisState(AnalysisNo).Changed = False;
    EXPECT_NE(Solve(size1), "-");
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
}

TEST_F(Driver, AMultipleComparisonGivesItsGridUp) {
    OpenTTest();
    for (const i16 isMultComp : {False, True}) {
        HasGridData = True;
        IsMultComp = isMultComp;
        Calculated = False;
        CalcUnknown();
        EXPECT_EQ(HasGridData, isMultComp == True ? False : True);
    }
}

// Two one-sided tests in a handful of subjects: the tails overlap, and the "power" is below 0.
TEST_F(Driver, APowerBelow0IsNone) {
    OpenTTest(TwoOneSided);
    Type(Kind::MeanLeftLimit, "-0.1");
    Type(Kind::MeanRightLimit, "0.1");
    Type(h1Difference, "0");
    Type(sd, "1");
    Type(size1, "5");
    Type(sizeRatio, "1");
    EXPECT_EQ(Solve(power), "-");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Can't Be Calculated."});
}

// --- Tables and graphs ------------------------------------------------------------------------

class Run : public Driver {
  protected:
    // The power against the H1 difference for one significance level.
    void Prepare(const std::string& min, const std::string& max, const std::string& step,
                 const std::string& z = "0.05") {
        OpenTTest();
        Analysis(AnalysisNo).WindowKind = TableWindow;
        XParNo = PositionOf(h1Difference);
        ZParNo = PositionOf(alpha);
        ParXminText(h1Difference) = min;
        ParXmaxText(h1Difference) = max;
        ParXstepText(h1Difference) = step;
        ParZValuesText(alpha) = z;
        Calculated = False;
    }
};

TEST_F(Run, FiveStepsFromOneTenthToOneHalf) {
    Prepare("0.1", "0.5", "0.1");
    CalcRun();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(TableX.HighBound(), 5);
    EXPECT_NEAR(static_cast<f64>(TableX(5)), 0.5, 1e-6);
}

TEST_F(Run, EachCellIsTheSolutionOfItsPoint) {
    Prepare("0.2", "0.6", "0.2", "0.01 0,05");
    Type(sd, "0.5");
    CalcRun();
    ASSERT_EQ(TableY.HighBound2(), 2);
    EXPECT_EQ(ZValues(2), 0.05F);
    f32 low = TableYMin;
    f32 high = TableYMax;
    EXPECT_EQ(low, TableY(1, 1));
    EXPECT_EQ(high, TableY(3, 2));
    const f64 cell = static_cast<f64>(TableY(2, 2));
    Analysis(AnalysisNo).WindowKind = CalculationWindow;
    Type(h1Difference, "0.4");
    Type(alpha, "0.05");
    Solve(power);
    EXPECT_NEAR(ParValue(1), cell, 1e-6);
}

TEST_F(Run, AHundredStepsAreTheMost) {
    Prepare("0.01", "1.00", "0.01");
    CalcRun();
    EXPECT_EQ(TableX.HighBound(), 100);
    EXPECT_TRUE(platform.Messages.empty());
    Prepare("0.01", "1.01", "0.01");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Maximum Number of Steps Is 100."});
    EXPECT_EQ(Cancelled, True);
    EXPECT_EQ(Calculated, False);
}

// The range that the catalogue gives the shape of a lognormal distribution, as it comes.
TEST_F(Run, TheRangeOfTheShapeIsRefusedUntilTheUserChangesIt) {
    OpenDistribution(DistrLognormal, 0, ProcedureTest);
    ChooseSamples(OneSample);
    Pick(Group::H1Median, AsValue);
    AcceptOptions();
    Analysis(AnalysisNo).WindowKind = TableWindow;
    const i16 shape = 27;
    ASSERT_GE(PositionOf(shape), 0);
    XParNo = PositionOf(shape);
    ZParNo = PositionOf(alpha);
    ParZValuesText(alpha) = "0.05";
    platform.Messages.clear();
    Calculated = False;
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Maximum Number of Steps Is 100."});
    EXPECT_EQ(Calculated, False);
    platform.Messages.clear();
    Cancelled = False;
    ParXmaxText(shape) = "2.18";
    CalcRun();
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(TableX.HighBound(), 100);
}

TEST_F(Run, AnAbsurdNumberOfStepsIsRefused) {
    Prepare("0", "99999999999999999999999999999999999999999999999999", "0.00000000000000000001");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Maximum Number of Steps Is 100."});
}

TEST_F(Run, TheAxisMustLeadFromMinimumToMaximum) {
    Prepare("0.5", "0.1", "0.1");
    CalcRun();
    Prepare("0.5", "0.5", "0.1");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xmin Must Be < Xmax If Xstep > 0."});
    Prepare("0.1", "0.5", "-0.1");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xmin Must Be > Xmax If Xstep < 0."});
    Prepare("0.1", "0.5", "0");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xstep Must Be # 0."});
    EXPECT_EQ(Cancelled, True);
}

TEST_F(Run, AFallingAxis) {
    Prepare("0.5", "0.1", "-0.1");
    CalcRun();
    EXPECT_EQ(TableX.HighBound(), 5);
    EXPECT_NEAR(static_cast<f64>(TableX(5)), 0.1, 1e-6);
}

TEST_F(Run, ABadCornerStopsTheRunBeforeItBegins) {
    Prepare("0.1", "0.5", "0.1", "0.05 1.5");
    TableX.ReDim(1, 1);
    CalcRun();
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Significance Level Has To Be Less Than or Equal to "
                                       "0.99999."});
    EXPECT_EQ(Cancelled, True);
    EXPECT_EQ(TableX.HighBound(), 1) << "the former result stays";
}

TEST_F(Run, WithoutZValuesThereIsNoRun) {
    Prepare("0.1", "0.5", "0.1", "  ");
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Significance Level Has No Value."});
    EXPECT_EQ(Cancelled, True);
}

TEST_F(Run, ACellWithoutSolutionHoldsNoValue) {
    OpenTTest();
    Analysis(AnalysisNo).WindowKind = TableWindow;
    UnknownParNo = PositionOf(size1);
    XParNo = PositionOf(h1Difference);
    ZParNo = PositionOf(alpha);
    ParXminText(h1Difference) = "0";
    ParXmaxText(h1Difference) = "0.5";
    ParXstepText(h1Difference) = "0.25";
    ParZValuesText(alpha) = "0.05";
    Calculated = False;
    CalcRun();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(TableY(1, 1), 99999.0F);
    EXPECT_LT(TableYMax, 99999.0F);
    EXPECT_EQ(TableYMin, TableY(3, 1));
}

TEST_F(Run, ATableOfOneValueIsATable) {
    Prepare("0.5", "0.6", "0.5");
    CalcRun();
    EXPECT_EQ(TableX.HighBound(), 1);
    EXPECT_EQ(Calculated, True);
}

TEST_F(Run, NoSolutionAnywhereIsTold) {
    Prepare("0.1", "0.5", "0.1", "0");
    UnknownParNo = PositionOf(size1);
    XParNo = PositionOf(alpha);
    ZParNo = PositionOf(h1Difference);
    ParXminText(alpha) = "0.01";
    ParXmaxText(alpha) = "0.05";
    ParXstepText(alpha) = "0.01";
    ParZValuesText(h1Difference) = "0";
    CalcRun();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Can't Be Calculated For Any x-value."});
    // Why, of the first point: without a difference the power is the level, 0.01, but for what the
    // approximation makes of it with 4 degrees of freedom.
    ASSERT_FALSE(platform.Statuses.empty());
    EXPECT_EQ(platform.Statuses.back(),
              "With Significance Level 0.01: Sample Size 1 from 3 to 99999: Power goes from 0.024 "
              "to 0.01, and 0.96768 is asked. H1 equals H0.");
    EXPECT_EQ(Cancelled, True);
    EXPECT_EQ(Calculated, False);
    ParZValuesText(h1Difference) = "0.5";
    Cancelled = False;
    CalcRun();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(platform.Statuses.back(), "") << "nothing stands in the way any more";
}

TEST_F(Run, TheFirstZBecomesTheValueOfItsParameter) {
    Prepare("0.1", "0.5", "0.1", "0.01 0,05");
    CalcRun();
    EXPECT_EQ(ParText(alpha), "0.01");
}

// A hundred additions in 32 bits would lose the sixth digit.
TEST_F(Run, XIsAccumulatedIn64Bits) {
    Prepare("0.01", "1.00", "0.01");
    CalcRun();
    const f64 step = static_cast<f64>(0.01F);
    for (int k = 1; k <= 100; ++k)
        EXPECT_EQ(TableX(k), static_cast<f32>(step * k)) << k;
}

// Of the marks of a range searched to its end only one counts in a table.
TEST_F(Run, OneMarkOfARangeIsNoValueInATable) {
    OpenDistribution(DistrExponential, 0, ProcedureTest);
    ChooseTails(OneSided);
    Pick(Group::H1Location, AsValue);
    AcceptOptions();
    Analysis(AnalysisNo).WindowKind = TableWindow;
    constexpr i16 h0 = Kind::H0Location;
    constexpr i16 h1 = Kind::H1Location;
    const f64 distance = 100 * std::log(16.0); // power 0.8 at the level 0.05
    for (const auto& [kind, text] : std::map<i16, std::string>{{Kind::SignificanceLevel, "0.05"},
                                                               {power, "0.8"},
                                                               {Kind::Scale, "1000"},
                                                               {Kind::Size, "10"},
                                                               {h0, "0"}})
        ParText(kind) = text;
    UnknownParNo = PositionOf(h1);
    XParNo = PositionOf(h0);
    ZParNo = PositionOf(power);
    ParZValuesText(power) = "0.8";
    const auto firstY = [&](f64 location) {
        ParXminText(h0) = NumberText(location - distance, 6, std::chars_format::fixed);
        ParXmaxText(h0) = NumberText(location - distance + 10, 6, std::chars_format::fixed);
        ParXstepText(h0) = "20";
        Calculated = False;
        Cancelled = False;
        CalcRun();
        return Calculated == True ? static_cast<f64>(TableY(1, 1)) : NoValue;
    };
    EXPECT_EQ(firstY(66666.5), NoValue);
    EXPECT_NEAR(firstY(66667.5), 66667.5, 0.5);
    EXPECT_NEAR(firstY(6666.5), 6666.5, 0.5);
    EXPECT_NEAR(firstY(9999.5), 9999.5, 0.5);
}

TEST_F(Run, AShortRunShowsNoProgress) {
    Prepare("0.1", "0.5", "0.1");
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 0);
    EXPECT_EQ(platform.Yields, 0);
}

TEST_F(Run, ALongRunShowsProgressFromTheFirstPointOn) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 1.5;
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 5);
    EXPECT_EQ(platform.ProgressSteps, 5);
    EXPECT_FALSE(platform.ProgressShown);
    EXPECT_EQ(Calculating, False);
    EXPECT_EQ(Calculated, True);
}

// Five points are foretold from the first: at 1.05 s each more than 5 s, at 0.95 s less, and then
// the second point shows that the run has taken more than 1 s.
TEST_F(Run, ARunIsForetoldToBeLongFrom5SecondsOn) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 1.05;
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 5);
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 0.95;
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 3);
}

TEST_F(Run, ARunThatBecomesLongShowsThePointsStillOpen) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 0.4; // 0.4 s after the first point foretells 2 s; past 1 s after the third
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 2);
    EXPECT_EQ(platform.ProgressSteps, 2) << "only the points that were open count";
}

TEST_F(Run, ARunThatBecomesLongAtItsLastPointShowsNoProgress) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 0.21; // 1.05 s after the fifth and last point
    CalcRun();
    EXPECT_EQ(platform.ProgressTotal, 0);
    EXPECT_EQ(Calculated, True);
}

TEST_F(Run, ACancelEndsTheRunWithoutAResult) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 2;
    platform.OnDoEvents = [this] {
        EXPECT_EQ(Calculating, True);
        if (platform.ProgressSteps == 2)
            Cancelled = True;
    };
    CalcRun();
    EXPECT_EQ(platform.ProgressSteps, 2);
    EXPECT_FALSE(platform.ProgressShown);
    EXPECT_EQ(Calculating, False);
    EXPECT_EQ(Calculated, False);
    EXPECT_TRUE(platform.Messages.empty());
}

// Layout and painting raise the flags now and then.
TEST_F(Run, AFaultOfTheEventsLetThroughIsNoneOfItsOwn) {
    Prepare("0.1", "0.5", "0.1");
    platform.ClockStep = 10;
    platform.OnDoEvents = [] {
        volatile f64 zero = 0;
        volatile f64 none = zero / zero;
        (void)none;
        EXPECT_TRUE(HasFloatFault());
    };
    CalcRun();
    EXPECT_EQ(Calculated, True);
}

TEST(FloatFaults, ArePutBackAsTheyWere) {
    volatile f64 zero = 0;
    volatile f64 value = 1;
    ClearFloatFaults();
    {
        const FloatFaultsApart apart;
        value = value / zero;
    }
    EXPECT_FALSE(HasFloatFault());
    value = 1 / zero;
    {
        const FloatFaultsApart apart;
        ClearFloatFaults();
    }
    EXPECT_TRUE(HasFloatFault());
    ClearFloatFaults();
}

TEST(FloatFaults, HaveTheNameOfWhatTheProcessorFound) {
    const auto faultOf = [](f64 a, char operation, f64 b) {
        ClearFloatFaults();
        const volatile f64 x = a;
        const volatile f64 y = b;
        [[maybe_unused]] const volatile f64 result = operation == '*' ? x * y : x / y;
        try {
            ThrowIfFloatFault();
        } catch (const RunTimeError& error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    EXPECT_EQ(faultOf(1e200, '*', 1e200), FaultName(Fault::Overflow));
    EXPECT_EQ(faultOf(1, '/', 0), FaultName(Fault::DivisionByZero));
    EXPECT_EQ(faultOf(0, '/', 0), FaultName(Fault::InvalidArgument));
    EXPECT_EQ(faultOf(1e-200, '*', 1e-200), "none") << "too small a number is 0";
    EXPECT_STREQ(FaultName(Fault::Overflow), "Overflow");
    EXPECT_STREQ(FaultName(Fault::DivisionByZero), "Division by zero");
    EXPECT_STREQ(FaultName(Fault::InvalidArgument), "Invalid argument");
}

TEST_F(Run, AFaultTakesTheProgressAway) {
    Prepare("0.1", "0.5", "0.1");
    Type(h0Difference, std::string(60, '9'));
    platform.ClockStep = 10;
    EXPECT_THROW(CalcRun(), RunTimeError);
    EXPECT_FALSE(platform.ProgressShown);
    EXPECT_EQ(Calculating, False);
}

TEST_F(Run, ARunThatIsCalculatedIsNotRepeated) {
    Prepare("0.1", "0.5", "0.1");
    CalcRun();
    TableY(1, 1) = 7;
    CalcRun();
    EXPECT_EQ(TableY(1, 1), 7.0F);
}

// The x parameter takes its values from the axis: an old "-" in its box is no obstacle.
TEST_F(Run, TheTextOfTheXParameterIsNotAsked) {
    Prepare("0.1", "0.5", "0.1");
    ParText(h1Difference) = "-";
    CalcRun();
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(platform.Messages.empty());
}

} // namespace
} // namespace quorvanta::checks
