// General crossover designs: the grid of the design and its messages, what derives from it, edges
// and sentences.
//
// Variances and distances of other origin: least squares of the written out model, by
// checks/reference/crossover.py, which names the designs.
#include "core/kinds.h"
#include "output/statement.h"
#include "support/grid_fixture.h"
#include "support/properties.h"
#include "tests/crossoverdesign.h"
#include "tests/xover.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuAdditive = 240;
constexpr i16 menuMultiplicative = 241;

// Values are shown with seven significant digits or decimals.
constexpr f64 shown = 1e-6;

const Rows twoWay{{"1", "2"}, {"2", "1"}};
const Rows balaam{{"1", "1"}, {"2", "2"}, {"1", "2"}, {"2", "1"}};
const Rows abb{{"1", "2", "2"}, {"2", "1", "1"}};
const Rows aba{{"1", "2", "1"}, {"2", "1", "2"}};
const Rows williams3{{"1", "2", "3"}, {"2", "3", "1"}, {"3", "1", "2"},
                     {"1", "3", "2"}, {"2", "1", "3"}, {"3", "2", "1"}};
const Rows williams4{
    {"1", "4", "2", "3"}, {"2", "1", "3", "4"}, {"3", "2", "4", "1"}, {"4", "3", "1", "2"}};
const Rows washout{{"1", "0", "2"}, {"2", "0", "1"}};

// A line of the table of effects.
using Line = std::vector<std::string>;

AnalysisChoice Crossover(i16 menuNo, std::vector<i16> checks, i16 tails = TwoSided) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = MoreSamples;
    choice.NoOfTails = tails;
    choice.Checks = std::move(checks);
    return choice;
}

class CrossoverTests : public GridFixture {
  protected:
    static Values LinesOf(const Rows& design, std::size_t treatments) {
        return {{Kind::NoOfSequences, std::to_string(design.size())},
                {Kind::NoOfPeriods, std::to_string(design.front().size())},
                {Kind::NoOfTreatments, std::to_string(treatments)}};
    }

    f64 VarianceOf(const Rows& design, const Line& weights, bool carryover) {
        std::vector<i16> checks{Check::LinearCombination};
        if (carryover)
            checks.push_back(Check::Carryover);
        Start(Crossover(menuAdditive, checks), LinesOf(design, weights.size()));
        DeriveFrom(Kind::DesignVariance, {design, {Line(weights.size(), "1"), weights}});
        return Value(Kind::DesignVariance);
    }

    f64 DistanceOf(const Rows& design, const Line& means, bool carryover, i16 menu = menuAdditive) {
        Start(Crossover(menu, carryover ? std::vector<i16>{Check::Carryover} : std::vector<i16>{}),
              LinesOf(design, means.size()));
        DeriveFrom(Kind::MahalanobisDistance, {design, {means}});
        return Value(Kind::MahalanobisDistance);
    }
};

TEST_F(CrossoverTests, VariancesOfPublishedDesigns) {
    EXPECT_NEAR(VarianceOf(twoWay, {"-1", "1"}, false), 1, shown);
    EXPECT_NEAR(VarianceOf(balaam, {"-1", "1"}, false), 1, shown);
    EXPECT_NEAR(VarianceOf(balaam, {"-1", "1"}, true), 2, shown);
    EXPECT_NEAR(VarianceOf(abb, {"-1", "1"}, false), 0.75, shown);
    EXPECT_NEAR(VarianceOf(abb, {"-1", "1"}, true), 0.75, shown);
    EXPECT_NEAR(VarianceOf(aba, {"-1", "1"}, true), 3, shown);
    EXPECT_NEAR(VarianceOf(williams3, {"-1", "0.5", "0.5"}, false), 0.25, shown);
    EXPECT_NEAR(VarianceOf(williams3, {"-1", "0.5", "0.5"}, true), 0.3125, shown);
    EXPECT_NEAR(VarianceOf(williams4, {"-1", "0", "0", "1"}, false), 0.5, shown);
    EXPECT_NEAR(VarianceOf(williams4, {"-1", "0", "0", "1"}, true), 0.55, shown);
    EXPECT_NEAR(VarianceOf(washout, {"-1", "1"}, false), 1, shown);
    EXPECT_NEAR(VarianceOf(washout, {"-1", "1"}, true), 1, shown);
}

// Washouts at different times: then nothing carries over, and the level without a treatment is one
// of its own. Least squares of the written out model, by numpy.
TEST_F(CrossoverTests, WashoutsOfADesignAtDifferentTimes) {
    const Rows design{{"1", "0", "2"}, {"2", "1", "0"}, {"0", "2", "1"}, {"1", "2", "0"}};
    EXPECT_NEAR(VarianceOf(design, {"-1", "1"}, false), 0.5333333333, shown);
    EXPECT_NEAR(VarianceOf(design, {"-1", "1"}, true), 1.2463768116, 2 * shown);
    EXPECT_NEAR(DistanceOf(design, {"1", "1.5"}, false), 0.46875, shown);
    EXPECT_NEAR(DistanceOf(design, {"1", "1.5"}, true), 0.2005813953, shown);
}

// The efficiency of a difference of treatments, in relation to a design without periods, subjects
// and carryover: 80.00 % and 90.91 % (B. Jones and M. G. Kenward, Design and Analysis of Cross-Over
// Trials, 2nd edition, 2003, chapter 4).
TEST_F(CrossoverTests, EfficienciesOfWilliamsDesigns) {
    constexpr f64 printed = 0.00005;
    EXPECT_NEAR(2 / (6 * VarianceOf(williams3, {"-1", "1", "0"}, true)), 0.8, printed);
    EXPECT_NEAR(2 / (4 * VarianceOf(williams4, {"-1", "1", "0", "0"}, true)), 0.9091, printed);
}

TEST_F(CrossoverTests, DistancesOfPublishedDesigns) {
    EXPECT_NEAR(DistanceOf(twoWay, {"1", "1.5"}, false), 0.25, shown);
    EXPECT_NEAR(DistanceOf(balaam, {"1", "1.5"}, true), 0.125, shown);
    EXPECT_NEAR(DistanceOf(aba, {"1", "1.5"}, true), 0.08333333333333329, shown);
    EXPECT_NEAR(DistanceOf(williams3, {"1", "1.3", "1.8"}, false), 1.96, shown);
    EXPECT_NEAR(DistanceOf(williams3, {"1", "1.3", "1.8"}, true), 1.568, shown);
    EXPECT_NEAR(DistanceOf(williams4, {"1", "1.2", "1.1", "1.6"}, true), 0.7545454545454546, shown);
    EXPECT_NEAR(DistanceOf(washout, {"1", "1.5"}, false), 0.25, shown);
}

// Medians count by their logarithms: half a unit of them is a factor of 1.648721.
TEST_F(CrossoverTests, MediansCountByTheirLogarithms) {
    EXPECT_NEAR(DistanceOf(twoWay, {"2", "3.2974425"}, false, menuMultiplicative), 0.25, shown);
    Start(Crossover(menuMultiplicative, {Check::LinearCombination}), LinesOf(williams3, 3));
    DeriveFrom(Kind::H1MedianOfCombination, {williams3, {{"2", "3", "4.5"}, {"-1", "0.5", "0.5"}}});
    // sqrt(3) sqrt(4.5)/2
    EXPECT_NEAR(Value(Kind::H1MedianOfCombination), 1.8371173070873836, shown);
    EXPECT_NEAR(Value(Kind::DesignVariance), 0.25, shown);
}

TEST_F(CrossoverTests, ACombinationIsDerivedWithItsVariance) {
    Start(Crossover(menuAdditive, {Check::LinearCombination}), LinesOf(williams3, 3));
    DeriveFrom(Kind::DesignVariance, {williams3, {{"1", "1.3", "1.8"}, {"-1", "0.5", "0.5"}}});
    EXPECT_NEAR(Value(Kind::ContrastMean), 0.55, shown);
    EXPECT_EQ(platform.Statuses.back(), "Taken from the same tables: H1: Mean of c1X1+...+ckXk.");
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].Title, "Treatment in Period");
    EXPECT_EQ(GridHeadOf(asked[0].RowHeads, 6, 2), "Sequence 2");
    EXPECT_EQ(GridHeadOf(asked[0].ColumnHeads, 3, 3), "Period 3");
    EXPECT_EQ(GridHeadOf(asked[1].ColumnHeads, 3, 3), "Treatment 3");
    EXPECT_EQ(GridHeadOf(asked[1].RowHeads, 2, 2), "Linear Comb.");
}

// --- Messages -----------------------------------------------------------------------------------

TEST_F(CrossoverTests, RefusesNumbersOfNoTreatment) {
    for (const char* number : {"5", "-1", "1.5"}) {
        Start(Crossover(menuAdditive, {}), LinesOf(williams4, 4));
        Rows design = williams4;
        design[1][2] = number;
        EXPECT_EQ(RefusalOf(Kind::MahalanobisDistance, {design}),
                  "Improper Treatment Numbers. Must Be 1,..., 4");
    }
    EXPECT_EQ(Value(Kind::MahalanobisDistance), 0.3) << "the value stays";
}

TEST_F(CrossoverTests, RefusesADesignWithoutATreatment) {
    Start(Crossover(menuAdditive, {}), LinesOf(williams3, 4));
    EXPECT_EQ(RefusalOf(Kind::MahalanobisDistance, {williams3}),
              "Treatment Numbers Must Be Consecutive up to 4 and  Washout = 0.");
    EXPECT_EQ(Value(Kind::MahalanobisDistance), 0.3) << "the value stays";
}

TEST_F(CrossoverTests, RefusesWeightsThatCompareNothing) {
    Start(Crossover(menuAdditive, {Check::LinearCombination}), LinesOf(williams3, 3));
    EXPECT_EQ(RefusalOf(Kind::DesignVariance, {williams3, {{"1", "1", "2"}, {"-1", "1", "1"}}}),
              "Sum of Numbers in Row 2 Must Be = 0");
    Start(Crossover(menuMultiplicative, {}), LinesOf(williams3, 3));
    EXPECT_EQ(RefusalOf(Kind::MahalanobisDistance, {williams3, {{"1", "0", "2"}}}),
              "Ratio in Cell  (1,2)  Must Be > 0.");
}

// Carryover and treatments of the two-way design can't be told apart; nor can treatments that no
// sequence, and no other treatment, connects.
TEST_F(CrossoverTests, ADesignThatComparesNothingGivesNoValue) {
    Start(Crossover(menuAdditive, {Check::Carryover}), LinesOf(twoWay, 2));
    EXPECT_EQ(RefusalOf(Kind::MahalanobisDistance, {twoWay, {{"1", "1.5"}}}),
              "H1: Mahalanobis Distance Can't Be Calculated from These Tables.");
    Start(Crossover(menuAdditive, {Check::LinearCombination, Check::Carryover}),
          LinesOf(twoWay, 2));
    EXPECT_EQ(RefusalOf(Kind::DesignVariance, {twoWay, {{"1", "1.5"}, {"-1", "1"}}}),
              "Variance due to Design Can't Be Calculated from These Tables.");
    const Rows apart{{"1", "2"}, {"2", "1"}, {"3", "4"}, {"4", "3"}};
    Start(Crossover(menuAdditive, {}), LinesOf(apart, 4));
    EXPECT_EQ(RefusalOf(Kind::MahalanobisDistance, {apart, {{"1", "2", "3", "4"}}}),
              "H1: Mahalanobis Distance Can't Be Calculated from These Tables.");
}

// What such a design does compare has its variance.
TEST_F(CrossoverTests, TreatmentsOfSeparateSequencesAreComparedAmongThemselves) {
    const Rows apart{{"1", "2"}, {"2", "1"}, {"3", "4"}, {"4", "3"}};
    EXPECT_NEAR(VarianceOf(apart, {"-1", "1", "0", "0"}, false), 1, shown);
    Start(Crossover(menuAdditive, {Check::LinearCombination}), LinesOf(apart, 4));
    EXPECT_EQ(
        RefusalOf(Kind::DesignVariance, {apart, {{"1", "1", "1", "1"}, {"-1", "0", "1", "0"}}}),
        "Variance due to Design Can't Be Calculated from These Tables.");
}

// Thirds with five decimals add up to a little less than nothing.
TEST_F(CrossoverTests, RoundedWeightsAreWeights) {
    const f64 exact = VarianceOf(williams4, {"-1", "0.25", "0.25", "0.5"}, false);
    EXPECT_NEAR(exact, (1 + 0.0625 + 0.0625 + 0.25) / 4, shown);
    constexpr f64 typed = 1e-4;
    EXPECT_NEAR(VarianceOf(williams4, {"-1", "0.33333", "0.33333", "0.33333"}, true),
                0.55 / 2 * (1 + 1.0 / 3), typed);
}

// --- The equation -------------------------------------------------------------------------------

// Equal treatments: the power is the level, up to the floor of the distribution.
TEST_F(CrossoverTests, EqualTreatmentsHaveThePowerOfTheLevel) {
    Start(Crossover(menuAdditive, {}), {{Kind::MahalanobisDistance, "0"}});
    SolveFor(PowerParNo);
    EXPECT_NEAR(ParValue(PowerParNo), 0.05, 5e-4);
}

// With the variance of the two-way design its own equation follows: se = s sqrt(1/n), 2 n - 2 df.
TEST_F(CrossoverTests, TheTwoWayDesignIsOneOfThem) {
    Start(Crossover(menuAdditive, {Check::LinearCombination}), {{Kind::ContrastMean, "0.5"},
                                                                {Kind::ResidualSd, "0.8"},
                                                                {Kind::DesignVariance, "1"},
                                                                {Kind::NoOfSequences, "2"},
                                                                {Kind::NoOfPeriods, "2"},
                                                                {Kind::NoOfTreatments, "2"},
                                                                {Kind::SizePerSequence, "20"}});
    SolveFor(PowerParNo);
    const f64 general = ParValue(PowerParNo);
    // A paired t-test of 39 differences has as many degrees of freedom, and with 0.8 sqrt(39/20) as
    // their standard deviation the same standard error.
    AnalysisChoice paired;
    paired.MenuNo = 1;
    paired.NoOfSamples = OneSample;
    paired.NoOfTails = TwoSided;
    paired.Groups = {{Group::H1MeanOfDifference, 0}};
    Start(paired, {{Kind::H0MeanOfDifference, "0"},
                   {Kind::H1MeanOfDifference, "0.5"},
                   {Kind::SdOfDifference, std::to_string(0.8 * std::sqrt(39.0 / 20))},
                   {Kind::Size, "39"}});
    SolveFor(PowerParNo);
    EXPECT_NEAR(general, ParValue(PowerParNo), 1e-5);
}

TEST_F(CrossoverTests, AnAbsurdDistanceIsNoInvalidArgument) {
    Start(Crossover(menuAdditive, {}), {});
    UnknownParNo = PowerParNo;
    ParValue(PowerParNo) = 0;
    ParValue(PositionOf(Kind::MahalanobisDistance)) = 1e300;
    EXPECT_EQ(SelRootFunction(), 1);
}

// As few subjects as leave the error one degree of freedom.
TEST_F(CrossoverTests, TheSearchLeavesTheErrorADegreeOfFreedom) {
    Start(Crossover(menuAdditive, {Check::Carryover}),
          {{Kind::NoOfSequences, "2"}, {Kind::NoOfPeriods, "2"}, {Kind::NoOfTreatments, "5"}});
    UnknownParNo = PositionOf(Kind::SizePerSequence);
    f64 lower = 2;
    f64 upper = 99999;
    SelSearchLimits(lower, upper);
    EXPECT_DOUBLE_EQ(lower, 5); // 2 n - 1 - 8 >= 1
}

// The error has g n (p - 1) - (p - 1) - 2 (t - 1) degrees of freedom with carryover.
TEST_F(CrossoverTests, TheSearchForALineOfTheDesignLeavesOneAsWell) {
    const auto limits = [this](i16 unknown, const Values& values) {
        Start(Crossover(menuAdditive, {Check::Carryover}), values);
        UnknownParNo = PositionOf(unknown);
        f64 lower = 2;
        f64 upper = 999;
        SelSearchLimits(lower, upper);
        return std::pair(lower, upper);
    };
    const Values few{{Kind::NoOfPeriods, "2"},
                     {Kind::NoOfTreatments, "5"},
                     {Kind::SizePerSequence, "2"},
                     {Kind::NoOfSequences, "2"}};
    EXPECT_DOUBLE_EQ(limits(Kind::NoOfSequences, few).first, 5); // 2 g - 1 - 8 >= 1
    EXPECT_DOUBLE_EQ(limits(Kind::NoOfPeriods, few).first, 4);   // 3 (p - 1) - 8 >= 1
    Values many = few;
    many[Kind::SizePerSequence] = "6";
    EXPECT_DOUBLE_EQ(limits(Kind::NoOfTreatments, many).second, 6); // 11 - 2 (t - 1) >= 1
}

// With one or two degrees of freedom the power seems to rise again: the treatments are sought
// before. Powers by the noncentral t distribution (scipy 1.10), one-sided at 0.01, for two
// sequences: 0.176 with 4 treatments and 0.139 with 5 in two periods of four subjects each; 0.169
// with 5 and 0.153 with 6 in three periods of three.
TEST_F(CrossoverTests, TreatmentsAreFoundThoughTheMostOfThemSeemToBeSeen) {
    const auto treatments = [this](const std::string& periods, const std::string& size) {
        Start(Crossover(menuAdditive, {Check::LinearCombination}, OneSided),
              {{Kind::SignificanceLevel, "0.01"},
               {Kind::Power, "0.16"},
               {Kind::ContrastMean, "1"},
               {Kind::ResidualSd, "1"},
               {Kind::DesignVariance, "1"},
               {Kind::NoOfSequences, "2"},
               {Kind::NoOfPeriods, periods},
               {Kind::SizePerSequence, size}});
        SolveFor(PositionOf(Kind::NoOfTreatments));
        return ParText(Kind::NoOfTreatments);
    };
    EXPECT_EQ(treatments("2", "4"), "5");
    EXPECT_EQ(treatments("3", "3"), "6");
}

// A combination of the largest design, ten sequences of ten periods.
TEST_F(CrossoverTests, TheLargestDesign) {
    Rows design(10, Line(10));
    for (int i = 0; i < 10; ++i)
        for (int j = 0; j < 10; ++j) {
            const int step = (j + 1) / 2 * (j % 2 == 1 ? 1 : -1);
            design[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] =
                std::to_string((i + step + 10) % 10 + 1);
        }
    Line weights(10, "0");
    weights.front() = "-1";
    weights.back() = "1";
    EXPECT_NEAR(VarianceOf(design, weights, false), 0.2, shown);
    EXPECT_NEAR(VarianceOf(design, weights, true), 0.20227272727272727, shown);
    Line means;
    for (int i = 0; i < 10; ++i)
        means.push_back(std::to_string(1 + 0.05 * i));
    EXPECT_NEAR(DistanceOf(design, means, false), 2.0625, shown);
    EXPECT_NEAR(DistanceOf(design, means, true), 2.0393258426966305, shown);
}

// --- Sentences ----------------------------------------------------------------------------------

TEST_F(CrossoverTests, SentencesNameTheHypotheses) {
    const auto sentence = [](const AnalysisChoice& choice, i16 unknown, const Values& values) {
        Start(choice, values);
        SolveFor(PositionOf(unknown));
        return SumStatement();
    };
    EXPECT_EQ(sentence(Crossover(menuAdditive, {}), Kind::Power, {}),
              "With a sample size per sequence of 6, the power is 0.97 when testing the null "
              "hypothesis H0: Mahalanobis distance = 0 (equal means) against H1: Mahalanobis "
              "distance = 0.3. For the design, the number of sequences is 4, the number of "
              "periods is 4 and the number of treatments is 4. The test used is General "
              "Crossover Design, Additive Model test at the significance level 0.05. The "
              "calculation is based on the assumption that the residual standard deviation is "
              "0.3.");
    EXPECT_EQ(
        sentence(Crossover(menuAdditive, {Check::LinearCombination}, OneSided), Kind::Power, {}),
        "With a sample size per sequence of 6, the power is 0.78 when testing the null "
        "hypothesis H0: mean of c1x1+...+ckxk = 0 against H1: mean of c1x1+...+ckxk = 0.3. "
        "For the design, the number of sequences is 4, the number of periods is 4 and the "
        "number of treatments is 4. The test used is General Crossover Design, Additive "
        "Model test of a linear combination, one-sided, at the significance level 0.05. The "
        "calculation is based "
        "on the assumptions that the residual standard deviation is 0.3 and the variance "
        "due to design is 1.");
    EXPECT_EQ(sentence(Crossover(menuAdditive, {Check::LinearCombination}, TwoOneSided),
                       Kind::SizePerSequence, {{Kind::ContrastMean, "0"}}),
              "With a sample size per sequence of 5, the power is 0.80 when testing the null "
              "hypothesis H0: non-equivalence, with left equivalence limit = -0.4 and right "
              "equivalence limit = 0.4, against H1: mean of c1x1+...+ckxk = 0 (equivalence). For "
              "the design, the number of sequences is 4, the number of periods is 4 and the "
              "number of treatments is 4. The test used is General Crossover Design, Additive "
              "Model test of a linear combination, as two one-sided tests, at the significance "
              "level 0.05. The "
              "calculation is based on the assumptions that the residual standard deviation is "
              "0.3 and the variance due to design is 1.");
    EXPECT_EQ(
        sentence(Crossover(menuMultiplicative, {Check::Carryover}), Kind::SizePerSequence, {}),
        "With a sample size per sequence of 4, the power is 0.80 when testing the null "
        "hypothesis H0: Mahalanobis distance = 0 (equal medians) against H1: Mahalanobis "
        "distance = 0.3. For the design, the number of sequences is 4, the number of "
        "periods is 4 and the number of treatments is 4. The test used is General "
        "Crossover Design, Multiplicative Model test at the significance level 0.05. The "
        "calculation is based on the assumption that the residual standard deviation "
        "(natural log scale) is 0.3.");
    EXPECT_EQ(sentence(Crossover(menuMultiplicative, {Check::LinearCombination}), Kind::Power, {}),
              "With a sample size per sequence of 6, the power is 0.31 when testing the null "
              "hypothesis H0: median^c1*...*median^ck = 1 against H1: median^c1*...*median^ck = "
              "1.2. For the design, the number of sequences is 4, the number of periods is 4 and "
              "the number of treatments is 4. The test used is General Crossover Design, "
              "Multiplicative Model test of a linear combination, two-sided, at the significance "
              "level 0.05. The "
              "calculation is based on the assumptions that the residual standard deviation "
              "(natural log scale) is 0.3 and the variance due to design is 1.");
}

} // namespace
} // namespace quorvanta::checks
