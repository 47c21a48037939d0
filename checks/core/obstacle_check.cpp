// What the status line tells when nothing can be calculated.
#include "core/kinds.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

class ObstacleCheck : public AnalysisFixture {
  protected:
    static constexpr i16 level = Kind::SignificanceLevel;
    static constexpr i16 power = Kind::Power;
    static constexpr i16 effect = Kind::H1Mean2Minus1;
    static constexpr i16 size1 = Kind::Size1;

    void OpenUnpaired(i16 tails) {
        OpenTest(0);
        ChooseTails(tails);
        ChooseLeftTail(false);
        Pick(Group::Mean2, 1); // the difference of the means
        Pick(Group::Size2, 2); // the ratio of the sizes
        AcceptOptions();
        Type(level, "0.05");
        Type(power, "0.8");
        Type(Kind::H0Mean2Minus1, "0");
        Type(Kind::Sd, "1");
        Type(Kind::Size2Over1, "1");
        platform.Messages.clear();
        platform.Statuses.clear();
    }

    std::string Told() const { return platform.Statuses.empty() ? "" : platform.Statuses.back(); }
};

// With no difference the power is the level for every size.
TEST_F(ObstacleCheck, NoDifferenceHasThePowerOfItsLevel) {
    OpenUnpaired(TwoSided);
    Type(effect, "0");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Can't Be Calculated."});
    // 0.063 is what the approximation makes of 0.05 with 4 degrees of freedom.
    EXPECT_EQ(Told(), "Sample Size 1 from 3 to 99999: Power goes from 0.063 to 0.05, and 0.8 is "
                      "asked. H1 equals H0.");
    EXPECT_EQ(UnknownParNo, PositionOf(size1));
    EXPECT_EQ(ParText(power), "0.8");
    EXPECT_EQ(ParValue(1), 0.8);
}

// What was asked about a parameter before does not make the test an estimate.
TEST_F(ObstacleCheck, ATestAfterAnEstimateIsATest) {
    OpenDistribution(DistrNormal, 0, ProcedureEstimate);
    AcceptOptions();
    OpenUnpaired(TwoSided);
    ASSERT_EQ(ProcedureNo, ProcedureEstimate);
    Type(effect, "0");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_TRUE(Told().ends_with(" H1 equals H0.")) << Told();
}

// On the wrong side more subjects have less power.
TEST_F(ObstacleCheck, ADifferenceOnTheWrongSideIsNamed) {
    OpenUnpaired(OneSided);
    Type(effect, "-1");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_TRUE(Told().ends_with(" to 0.0, and 0.8 is asked. H1 lies on the other side of H0."))
        << Told();
}

// What the least size has is more than is asked: its exact power is 0.99 and more.
TEST_F(ObstacleCheck, TooMuchPowerAtTheLeastSizeIsTold) {
    OpenUnpaired(TwoSided);
    Type(effect, "10");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_TRUE(Told().starts_with("Sample Size 1 from ")) << Told();
    EXPECT_TRUE(Told().ends_with(" to 1.0, and 0.8 is asked.")) << Told();
}

TEST_F(ObstacleCheck, NothingIsToldOfASolution) {
    OpenUnpaired(TwoSided);
    Type(effect, "1");
    EXPECT_NE(Solve(size1), "-");
    EXPECT_EQ(Told(), "");
}

TEST_F(ObstacleCheck, ASolutionTakesTheFormerObstacleAway) {
    OpenUnpaired(TwoSided);
    Type(effect, "0");
    EXPECT_EQ(Solve(size1), "-");
    EXPECT_NE(Told(), "");
    Type(effect, "1");
    EXPECT_NE(Solve(size1), "-");
    EXPECT_EQ(Told(), "");
}

// Three subjects show 99 % against 1 % with more certainty than is asked: all of three occur with
// probability 0.99^3 = 0.970299, and two of three are significant as well.
TEST_F(ObstacleCheck, WhatTheLeastSizeHasAlreadyIsTold) {
    OpenDistribution(DistrBinomial, 0, ProcedureTest);
    ChooseSamples(OneSample);
    ChooseTails(OneSided);
    ChooseLeftTail(false);
    Tick(Check::Exact); // exact
    Pick(Group::H1Proportion, 0);
    AcceptOptions();
    Type(level, "0.05");
    Type(power, "0.5");
    Type(Kind::H0Proportion, "0.01");
    Type(Kind::H1Proportion, "0.99");
    platform.Statuses.clear();
    EXPECT_EQ(Solve(Kind::Size), "-");
    EXPECT_EQ(Told(), "Power is 1.0 already with Sample Size 3, and 0.5 is asked.");
}

} // namespace
} // namespace quorvanta::checks
