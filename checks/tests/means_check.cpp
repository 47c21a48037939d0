// The tests of means: powers, edge cases, and the p-values of their simulated statistics.
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "numeric/probdist.h"
#include "support/analysis_fixture.h"
#include "tests/powereq.h"
#include "tests/testbioeq.h"
#include "tests/testnor.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

// What the approximations of the normal quantile and of the non-central t may cost a power.
constexpr f64 powerError = 0.0005;

class Means : public AnalysisFixture {
  protected:
    void Put(i16 kind, f64 value) {
        ParText(kind) = std::to_string(value);
        ParValue(PositionOf(kind)) = value;
    }

    // The power at ParValue, which a target of 0 leaves alone.
    static f64 PowerNow() {
        ParValue(1) = 0;
        return SelRootFunction();
    }

    // Two samples of n each, the difference entered, standard deviation 1.
    void OpenUnpaired(i16 tails, f64 difference, f64 n) {
        OpenTest(0);
        Pick(Group::Mean2, 1);
        Pick(Group::Size2, 2);
        ChooseTails(tails);
        AcceptOptions();
        Put(Kind::SignificanceLevel, 0.05);
        if (tails == TwoOneSided) {
            Put(Kind::MeanLeftLimit, -0.4);
            Put(Kind::MeanRightLimit, 0.4);
        } else {
            Put(Kind::H0Mean2Minus1, 0);
        }
        Put(Kind::H1Mean2Minus1, difference);
        Put(Kind::Sd, 1);
        Put(Kind::Size1, n);
        Put(Kind::Size2Over1, 1);
    }
};

TEST_F(Means, WithATargetOfZeroTheResidualIsThePower) {
    OpenUnpaired(TwoSided, 0.5, 64);
    // R: power.t.test(n = 64, delta = 0.5, strict = TRUE) gives 0.8014596.
    EXPECT_NEAR(PowerNow(), 0.8014596, powerError);
    ParValue(1) = 0.5;
    EXPECT_NEAR(SelRootFunction(), 0.3014596, powerError);
}

TEST_F(Means, WithoutAnEffectTheTwoSidedPowerIsTheLevel) {
    OpenUnpaired(TwoSided, 0, 64);
    EXPECT_NEAR(PowerNow(), 0.05, powerError);
    NoOfTails = OneSided;
    EXPECT_NEAR(PowerNow(), 0.05, powerError);
}

TEST_F(Means, TheTailsMirrorEachOther) {
    OpenUnpaired(OneSided, 0.5, 40);
    const f64 right = PowerNow();
    LeftTail = True;
    Put(Kind::H1Mean2Minus1, -0.5);
    EXPECT_NEAR(PowerNow(), right, 1e-6);
}

TEST_F(Means, TwoOneSidedTestsOfExchangedLimitsHaveNoPower) {
    OpenUnpaired(TwoOneSided, 0, 50);
    Put(Kind::MeanLeftLimit, 0.4);
    Put(Kind::MeanRightLimit, -0.4);
    const f64 power = PowerNow();
    EXPECT_LE(power, 0);
    EXPECT_LT(power, -0.5) << "the value is not clamped";
    Put(Kind::MeanLeftLimit, 0.1);
    Put(Kind::MeanRightLimit, 0.1);
    EXPECT_LE(PowerNow(), 0);
}

// Known deviations, so that nothing but the quantile and the distribution function is approximated.
TEST_F(Means, TheNormalTestHasTheSameEdges) {
    OpenDistribution(DistrNormal, 0, ProcedureTest);
    ChooseSamples(OneSample);
    ChooseTails(TwoSided);
    Pick(Group::H1Mean, 0);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Mean, 3);
    Put(Kind::H1Mean, 3);
    Put(Kind::Sd, 2);
    Put(Kind::Size, 25);
    // NorInv(0.975) is 4.3e-4 too large: times the density there, 0.0584, and twice.
    const f64 level = PowerNow();
    EXPECT_NEAR(level, 0.05, 5.2e-5);
    EXPECT_NEAR(level, 2 * (1 - f64{NorCdf(NorInv(0.975F))}), 2e-7);
    Put(Kind::H1Mean, 4);
    // Phi(2.5 - 1.959964) + Phi(-2.5 - 1.959964), and with a target of 0.4 what is left of it.
    EXPECT_NEAR(PowerNow(), 0.7054180, powerError);
    ParValue(PowerParNo) = 0.4;
    EXPECT_NEAR(SelRootFunction(), 0.3054180, powerError);
    OpenDistribution(DistrNormal, 0, ProcedureTest);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H1Mean, 3);
    Put(Kind::Sd, 2);
    Put(Kind::Size, 25);
    Put(Kind::MeanLeftLimit, 3);
    Put(Kind::MeanRightLimit, 3);
    EXPECT_NEAR(PowerNow(), 2 * 0.05 - 1, 1e-4) << "limits that meet";
    Put(Kind::MeanLeftLimit, 5);
    Put(Kind::MeanRightLimit, 1);
    EXPECT_NEAR(PowerNow(), -1, 1e-4) << "limits exchanged: the value is not clamped";
}

TEST_F(Means, ASecondSampleOfNobodyIsRefused) {
    OpenUnpaired(TwoSided, 0.5, 30);
    platform.Messages.clear();
    Type(Kind::Size1, "30");
    Type(Kind::Size2Over1, "0");
    Solve(Kind::Power);
    Type(Kind::Size2Over1, "0.05");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{
                  "Sample Size 2 / Sample Size 1 Has To Be Greater Than or Equal to 0.00001.",
                  "Sample Size 2 / Sample Size 1 Has To Be Greater Than or Equal to 0.1."}));
}

TEST_F(Means, AMedianUnderH1BelowNothingIsRefused) {
    OpenDistribution(DistrLognormal, 0, ProcedureTest);
    ChooseSamples(OneSample);
    Pick(Group::H1Median, 1);
    AcceptOptions();
    platform.Messages.clear();
    Type(Kind::H0Median, "1");
    Type(Kind::H1MedianMinusH0, "-2");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H1:Median  -  H0:Median Has To Be Greater Than or Equal to "
                                       "-0.99999."});
}

TEST_F(Means, ASecondMeanBeyondItsRangeIsRefused) {
    OpenTest(0);
    Pick(Group::Mean2, 2);
    AcceptOptions();
    platform.Messages.clear();
    Type(Kind::H1Mean1, "50000");
    Type(Kind::H1Mean2Over1, "2");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(
        platform.Texts(),
        std::vector<std::string>{"H1: Mean 2 / Mean 1 Has To Be Less Than or Equal to 1.99998."});
}

TEST_F(Means, ASecondDeviationOfNothingIsRefused) {
    OpenTest(0);
    Tick(Check::Satterthwaite);
    Pick(Group::Sd2, 1);
    AcceptOptions();
    platform.Messages.clear();
    Type(Kind::Sd1, "1");
    Type(Kind::Sd2Minus1, "-1");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Std.Dev. 2 - Std.Dev. 1 Has To Be Greater "
                                       "Than or Equal to -0.99999."});
}

TEST_F(Means, LimitsInTheWrongOrderAreRefused) {
    OpenUnpaired(TwoOneSided, 0, 50);
    platform.Messages.clear();
    Type(Kind::MeanLeftLimit, "0.5");
    Type(Kind::MeanRightLimit, "0.4");
    EXPECT_EQ(Solve(Kind::Size1), "-");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "H0: Left Equivalence Limit Has To Be Less Than or Equal to 0.4."});
}

TEST_F(Means, AnEquivalentDifferenceIsSoughtFromTheMiddleUpwardOrDownward) {
    OpenTest(0);
    Pick(Group::Mean2, 1);
    Pick(Group::Size2, 2);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    Type(Kind::Power, "0.8");
    Type(Kind::MeanLeftLimit, "-0.5");
    Type(Kind::MeanRightLimit, "0.4");
    Type(Kind::Sd, "1");
    Type(Kind::Size1, "150");
    const f64 upper = ReadNumber(Solve(Kind::H1Mean2Minus1));
    EXPECT_GT(upper, -0.05);
    LeftTail = True;
    Calculated = False;
    const f64 lower = ReadNumber(Solve(Kind::H1Mean2Minus1));
    EXPECT_NEAR(lower + upper, -0.1, 2e-4) << "symmetric about the middle of the limits";
}

TEST_F(Means, TheH1ValueIsSoughtOnTheSideOfTheTail) {
    OpenTest(1);
    Pick(Group::H1MeanOfDifference, 0);
    AcceptOptions();
    Type(Kind::Power, "0.8");
    Type(Kind::H0MeanOfDifference, "2");
    Type(Kind::SdOfDifference, "1");
    Type(Kind::Size, "20");
    EXPECT_GT(ReadNumber(Solve(Kind::H1MeanOfDifference)), 2);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    AcceptOptions();
    Type(Kind::Power, "0.8");
    EXPECT_LT(ReadNumber(Solve(Kind::H1MeanOfDifference)), 2);
    Type(Kind::H1MeanOfDifference, "1.5");
    EXPECT_GT(ReadNumber(Solve(Kind::H0MeanOfDifference)), 1.5)
        << "the H0 value lies on the other side";
}

// A ratio to a mean below 0 falls while the H1 mean rises.
TEST_F(Means, ARatioToANegativeMeanIsSoughtBelowOne) {
    OpenDistribution(DistrNormal, 0, ProcedureTest);
    ChooseSamples(OneSample);
    ChooseTails(OneSided);
    ChooseLeftTail(false);
    Pick(Group::H1Mean, AsRatio);
    AcceptOptions();
    UnknownParNo = PositionOf(Kind::H1MeanOverH0);
    const auto limits = [this](f64 h0) {
        Put(Kind::H0Mean, h0);
        std::pair<f64, f64> range{-99999, 99999};
        SelSearchLimits(range.first, range.second);
        return range;
    };
    EXPECT_EQ(limits(2).first, 1);
    EXPECT_GT(limits(2).second, 1);
    EXPECT_LT(limits(-2).first, 1);
    EXPECT_EQ(limits(-2).second, 1);
}

TEST_F(Means, EachFormOfTheSecondMeanSaysTheSame) {
    const auto solve = [this](i16 form, const std::string& second) {
        NewTest(0);
        Pick(Group::Mean2, form);
        Pick(Group::Size2, 0);
        ChooseTails(TwoSided);
        AcceptOptions();
        Type(Kind::Power, "0.9");
        Type(Kind::H0Mean2Minus1, "0");
        Type(Kind::Sd, "0.4");
        Type(Kind::Size2, "40");
        if (form == 1) {
            Type(Kind::H1Mean2Minus1, second);
        } else {
            Type(Kind::H1Mean1, "2");
            Type(form == 0 ? 87 : 88, second);
        }
        return ReadNumber(Solve(Kind::Size1));
    };
    FileCommand(CalculationWindow);
    const f64 byDifference = solve(1, "0.3");
    EXPECT_EQ(solve(0, "2.3"), byDifference);
    EXPECT_EQ(solve(2, "1.15"), byDifference);
}

TEST_F(Means, SizesInAllThreeFormsSayTheSame) {
    const auto solve = [this](i16 form, i16 kind, const std::string& second) {
        NewTest(0);
        Pick(Group::Mean2, 1);
        Pick(Group::Size2, form);
        AcceptOptions();
        Type(Kind::H1Mean2Minus1, "0.5");
        Type(Kind::Sd, "1");
        Type(Kind::Size1, "40");
        Type(kind, second);
        return Solve(Kind::Power);
    };
    FileCommand(CalculationWindow);
    const std::string byValue = solve(0, 37, "60");
    EXPECT_EQ(solve(1, 38, "20"), byValue);
    EXPECT_EQ(solve(2, 5, "1.5"), byValue);
}

// --- t-tests ----------------------------------------------------------------------------------

TEST_F(Means, OneGroupOfOneSampleHasItsOwnDegreesOfFreedom) {
    Main();
    IsTest = False;
    DistrNo = DistrNormal;
    ParListNo = 1;
    NoOfSamples = OneSample;
    ClearOptions();
    TESTSTUD::SetupTest();
    CheckValue(Check::GroupsInAnova) = 1;
    TESTSTUD::SetParList();
    ASSERT_GE(PositionOf(Kind::NoOfGroups), 0);
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Mean, 0);
    Put(Kind::H1Mean, 0.5);
    Put(Kind::Sd, 1);
    Put(Kind::Size, 20);
    Put(Kind::NoOfGroups, 1);
    ParValue(1) = 0;
    const f64 oneGroup = TESTSTUD::RootFunction();
    Put(Kind::NoOfGroups, 3);
    const f64 threeGroups = TESTSTUD::RootFunction();
    CheckValue(Check::GroupsInAnova) = 0;
    TESTSTUD::SetParList();
    EXPECT_EQ(TESTSTUD::RootFunction(), oneGroup);
    EXPECT_GT(threeGroups, oneGroup);
}

TEST_F(Means, WithUnequalDeviationsNoDegreesOfFreedomAreEntered) {
    OpenTest(0);
    Tick(Check::DegreesOfFreedom);
    Tick(Check::Satterthwaite);
    AcceptOptions();
    EXPECT_EQ(PositionOf(Kind::DegreesOfFreedom), -1);
    EXPECT_EQ(PositionOf(Kind::NoOfGroups), -1);
}

// s^2/n of each sample is rounded to 32 bits: without one of the roundings the last bit differs.
// Computed by checks/reference/rounding.py.
TEST_F(Means, SatterthwaiteRoundsTheVarianceOfEachMean) {
    EXPECT_EQ(SatterthwaiteDf(1.1F, 1.9F, 13, 9), 11.7227182F);
    EXPECT_EQ(SatterthwaiteDf(1.3F, 1.9F, 11, 23), 27.7190666F);
}

// So is the logarithm of each median, before the difference is taken.
TEST_F(Means, OnTheLogScaleEachLocationIsRounded) {
    OpenDistribution(DistrLognormal, 0, ProcedureTest);
    ChooseSamples(OneSample);
    ChooseTails(OneSided);
    Pick(Group::H1Median, 0);
    AcceptOptions();
    Put(Kind::H0Median, 2);
    Put(Kind::H1Median, 2.6);
    EXPECT_EQ(ReadMeans().Delta, 0.262364209F);
    Put(Kind::H0Median, 3);
    Put(Kind::H1Median, 3.1);
    EXPECT_EQ(ReadMeans().Delta, 0.0327898264F);
    // And of two samples, whose medians are equal under H0.
    OpenDistribution(DistrLognormal, 0, ProcedureTest);
    ChooseSamples(TwoSamples);
    Pick(Group::Median2, AsValue);
    AcceptOptions();
    Put(Kind::H0Median2Over1, 1);
    Put(Kind::H1Median1, 2);
    Put(Kind::H1Median2, 2.6);
    EXPECT_EQ(ReadMeans().Delta, 0.262364209F);
    Put(Kind::H1Median1, 3);
    Put(Kind::H1Median2, 3.1);
    EXPECT_EQ(ReadMeans().Delta, 0.0327898264F);
}

TEST_F(Means, EqualDeviationsAndSizesMakeSatterthwaiteTheUsualTest) {
    EXPECT_NEAR(static_cast<f64>(SatterthwaiteDf(2, 2, 15, 15)), 28, 1e-5);
    // The variances 4/10 and 9/20: 0.85^2 / (0.16/9 + 0.2025/19) = 25.41...
    const f64 expected = 0.85 * 0.85 / (0.16 / 9 + 0.2025 / 19);
    EXPECT_NEAR(static_cast<f64>(SatterthwaiteDf(2, 3, 10, 20)), expected, 1e-4);
}

// --- Bioequivalence ---------------------------------------------------------------------------

class Bioequivalence : public Means {
  protected:
    void Open() {
        OpenTest(810);
        Pick(Group::Median2, 1);
        Pick(Group::LogSd, 1);
        Pick(Group::SequenceSize2, 2);
        AcceptOptions();
        platform.Messages.clear();
    }
};

TEST_F(Bioequivalence, TheLimitsStartAtFourFifthsAndFiveFourths) {
    Open();
    EXPECT_EQ(ParText(Kind::RatioLeftLimit), "0.8");
    EXPECT_EQ(ParText(Kind::RatioRightLimit), "1.25");
}

TEST_F(Bioequivalence, ARatioAtALimitHasAtMostTheLevelAsPower) {
    Open();
    for (const char* ratio : {"0.8", "1.25"}) {
        Type(Kind::H1Median2Over1, ratio);
        Type(Kind::CoefficientOfVariation, "0.3");
        Type(Kind::SequenceSize1, "60");
        const f64 power = ReadNumber(Solve(Kind::Power));
        EXPECT_LE(power, 0.05 + powerError) << ratio;
        EXPECT_GT(power, 0.04) << ratio;
    }
}

TEST_F(Bioequivalence, AVariationOfNothingIsRefused) {
    Open();
    Type(Kind::CoefficientOfVariation, "0");
    EXPECT_EQ(Solve(Kind::SequenceSize1), "-");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Coefficient of Variation Has To Be Greater Than or Equal to 0.00001."});
}

TEST_F(Bioequivalence, TwoMediansSayTheSameAsTheirRatio) {
    Open();
    Type(Kind::Power, "0.8");
    Type(Kind::H1Median2Over1, "1.1");
    Type(Kind::CoefficientOfVariation, "0.25");
    const std::string byRatio = Solve(Kind::SequenceSize1);
    NewTest(810);
    Pick(Group::Median2, 0);
    AcceptOptions();
    Type(Kind::H1Median1, "20");
    Type(Kind::H1Median2, "22");
    Type(Kind::Power, "0.8");
    EXPECT_EQ(Solve(Kind::SequenceSize1), byRatio);
}

TEST_F(Bioequivalence, AWideSearchForTheRatioStaysBetweenMiddleAndLimit) {
    Open();
    Type(Kind::Power, "0.8");
    Type(Kind::CoefficientOfVariation, "0.3");
    Type(Kind::SequenceSize1, "24");
    const f64 upper = ReadNumber(Solve(Kind::H1Median2Over1));
    EXPECT_GT(upper, 1);
    EXPECT_LT(upper, 1.25);
    LeftTail = True;
    Calculated = False;
    EXPECT_NEAR(ReadNumber(Solve(Kind::H1Median2Over1)) * upper, 1, 1e-3);
}

// --- Equations and p-values -------------------------------------------------------------------

TEST(PowerEquations, WithoutAStandardErrorThePowerIsOne) {
    EXPECT_EQ(PowerZ(1, 1, 0, 1.96F), 99999);
    EXPECT_EQ(PowerZ(1, 1, -1, 1.96F), 99999);
    EXPECT_EQ(PowerOneTail(-5, 1, 0, 1.96F), 1);
}

TEST(PowerEquations, StandardisedDistances) {
    EXPECT_DOUBLE_EQ(PowerZ(3, 2, 0.5F, 1), 2);
    // P(Z <= 1) = 0.8413447
    EXPECT_NEAR(PowerOneTail(3, 1, 1, 2), 0.8413447, 2e-7);
    // 1 - Phi(3 + 2) + Phi(3 - 2)
    EXPECT_NEAR(PowerTwoTails(3, 1, 1, 2), 0.8413450, 4e-7);
    EXPECT_NEAR(PowerBetween(3, 3, 1, 1, 1, 2), 2 * 0.8413447 - 1, 4e-7);
}

TEST(PowerEquations, DependentParameters) {
    ParValue(3) = 1.5;
    EXPECT_EQ(ParDep(3, 2, 0), 1.5F);
    EXPECT_EQ(ParDep(3, 2, 1), 3.5F);
    EXPECT_EQ(ParDep(3, 2, 2), 3.0F);
    EXPECT_EQ(ParDep(3, 2, 3), 0.0F);
    EXPECT_EQ(ParSelect(0, 7, 8, 9), 7);
    EXPECT_EQ(ParSelect(1, 7, 8, 9), 8);
    EXPECT_EQ(ParSelect(2, 7, 8, 9), 9);
}

TEST(PowerEquations, TheLevelOfAnInterval) {
    ParKind(0) = Kind::TestConfidenceLevel;
    ParValue(0) = 0.9;
    NoOfTails = TwoOneSided;
    EXPECT_FLOAT_EQ(SignificanceLevel(), 0.05F);
    NoOfTails = OneSided;
    CheckValue(Check::TwoSidedInterval) = 0;
    EXPECT_FLOAT_EQ(SignificanceLevel(), 0.1F);
    CheckValue(Check::TwoSidedInterval) = 1;
    EXPECT_FLOAT_EQ(SignificanceLevel(), 0.05F);
    CheckValue(Check::TwoSidedInterval) = 0;
    ParKind(0) = Kind::SignificanceLevel;
    EXPECT_FLOAT_EQ(SignificanceLevel(), 0.9F);
}

// The correction is subtracted at the left limit and added at the right one.
TEST(PowerEquations, ContinuityCorrection) {
    ParKind(0) = Kind::SignificanceLevel;
    ParValue(0) = 0.05;
    ParValue(1) = 0;
    NoOfTails = OneSided;
    LeftTail = False;
    // Phi(3 - 0.5 - 1.6448536) = Phi(0.8551464)
    EXPECT_NEAR(NorPowerEq(3, 1, 1, 0, 0, 0, 0, 0.5F), 0.8037649, powerError);
    LeftTail = True;
    EXPECT_NEAR(NorPowerEq(-3, 1, 1, 0, 0, 0, 0, 0.5F), 0.8037649, powerError);
    NoOfTails = TwoSided;
    // 1 - Phi(2.5 + 1.959964) + Phi(2.5 - 1.959964)
    EXPECT_NEAR(NorPowerEq(-3, 1, 1, 0, 0, 0, 0, 0.5F), 0.7054180, powerError);
    NoOfTails = TwoOneSided;
    // Phi(3 - 0.5 - 1.6448536) + Phi(3 + 0.5 - 1.6448536) - 1
    EXPECT_NEAR(NorPowerEq(0, 0, 1, 3, 3, 1, 1, 0.5F), 0.8037649 + 0.9682123 - 1, powerError);
    LeftTail = False;
}

TEST(PValues, OfANormalStatistic) {
    NoOfTails = OneSided;
    LeftTail = False;
    // 1 - Phi(1.5), Phi(1.5), 2 (1 - Phi(1.5))
    EXPECT_NEAR(NorPValue(4, 1, 2, 0, 0, 0), 0.0668072, 1e-6);
    LeftTail = True;
    EXPECT_NEAR(NorPValue(4, 1, 2, 0, 0, 0), 0.9331928, 1e-6);
    NoOfTails = TwoSided;
    EXPECT_NEAR(NorPValue(-2, 1, 2, 0, 0, 0), 0.1336144, 1e-6);
    // A correction of 1 makes the distance 1: 2 (1 - Phi(1)).
    EXPECT_NEAR(NorPValue(4, 1, 2, 0, 0, 1), 0.3173105, 1e-6);
    NoOfTails = TwoOneSided;
    // max(1 - Phi((0 + 2)/1), Phi((0 - 1)/1)) = Phi(-1)
    EXPECT_NEAR(NorPValue(0, 0, 1, -2, 1, 0), 0.1586553, 1e-6);
    EXPECT_EQ(NorPValue(0, 0, 0, -2, 1, 0), 0.0F) << "no standard error";
    NoOfTails = TwoSided;
    LeftTail = False;
}

TEST(PValues, OfAStudentStatistic) {
    // R: pt(1.5, 12) = 0.9202712, 2 * pt(-1.5, 12) = 0.1594575.
    NoOfTails = OneSided;
    LeftTail = False;
    EXPECT_NEAR(TPValue(4, 1, 2, 0, 0, 12), 1 - 0.9202712, 1e-5);
    LeftTail = True;
    EXPECT_NEAR(TPValue(4, 1, 2, 0, 0, 12), 0.9202712, 1e-5);
    NoOfTails = TwoSided;
    EXPECT_NEAR(TPValue(-2, 1, 2, 0, 0, 12), 0.1594575, 2e-5);
    NoOfTails = TwoOneSided;
    // R: pt(-1, 12) = 0.1685245
    EXPECT_NEAR(TPValue(0, 0, 1, -2, 1, 12), 0.1685245, 1e-5);
    NoOfTails = TwoSided;
    LeftTail = False;
}

} // namespace
} // namespace quorvanta::checks
