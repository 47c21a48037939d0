// The tests of contingency tables, trends and strata: what their grids ask, what derives from them,
// messages, edges and sentences.
//
// Values of other origin are those that checks/reference/tables.py prints, by the definitions.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/search.h"
#include "numeric/rounding.h"
#include "output/statement.h"
#include "support/grid_fixture.h"
#include "support/properties.h"
#include "tests/testca.h"
#include "tests/testmh.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuStuart = 90;
constexpr i16 menuHomogeneity = 112;
constexpr i16 menuIndependence = 113;
constexpr i16 menuMantel = 120;
constexpr i16 menuTrend = 130;

// Values are shown with seven significant digits or decimals.
constexpr f64 shown = 1e-6;

AnalysisChoice Menu(i16 menuNo, i16 samples, i16 tails, std::vector<i16> checks = {},
                    std::map<i16, i16> groups = {}) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = samples;
    choice.NoOfTails = tails;
    choice.Checks = std::move(checks);
    choice.Groups = std::move(groups);
    return choice;
}

class TableTests : public GridFixture {
  protected:
    f64 PowerOfTexts() {
        SolveFor(PowerParNo);
        return ParValue(PowerParNo);
    }
};

// --- Homogeneity --------------------------------------------------------------------------------

constexpr i16 groupSizeAsValue = 0;
constexpr i16 groupSizeAsRatio = 2;

AnalysisChoice Homogeneity(i16 effectType, i16 sizeForm = groupSizeAsValue) {
    return Menu(menuHomogeneity, MoreSamples, TwoSided, {},
                {{Group::EffectOfProportions, effectType}, {Group::SizeK, sizeForm}});
}

const Rows threeByThree{{"0.2", "0.3", "0.5"}, {"0.3", "0.4", "0.3"}, {"0.35", "0.3", "0.35"}};

TEST_F(TableTests, HomogeneityAsksForProportionsOfEachGroup) {
    Start(Homogeneity(0), {{Kind::NoOfGroups, "3"}, {Kind::NoOfCategories, "3"}});
    Derive(Kind::H1SdOfProportions, threeByThree);
    EXPECT_EQ(asked.back().Title, "Proportion in Category");
    EXPECT_EQ(GridHeadOf(asked.back().RowHeads, 3, 1), "Group 1");
    EXPECT_EQ(asked.back().Rows, 3);
    EXPECT_EQ(asked.back().Columns, 3);
    EXPECT_EQ(asked.back().RowSum, 1);
    EXPECT_NEAR(Value(Kind::H1SdOfProportions), 0.19807255381018854, shown);
}

// What one subject of the whole sample contributes: the sizes are the weights of the groups.
TEST_F(TableTests, HomogeneityWeighsTheGroupsByTheirSizes) {
    Start(Homogeneity(0), {{Kind::NoOfGroups, "3"},
                           {Kind::NoOfCategories, "3"},
                           {Kind::Size1, "40"},
                           {Kind::SizeK, "20"}});
    Derive(Kind::H1SdOfProportions, threeByThree);
    EXPECT_NEAR(Value(Kind::H1SdOfProportions), 0.2028764184395051, shown);
    Start(Homogeneity(0, groupSizeAsRatio),
          {{Kind::NoOfGroups, "3"}, {Kind::NoOfCategories, "3"}, {Kind::SizeKOver1, "0.5"}});
    ParText(Kind::Size1) = "-"; // sought, and the ratio says it all the same
    Derive(Kind::H1SdOfProportions, threeByThree);
    EXPECT_NEAR(Value(Kind::H1SdOfProportions), 0.2028764184395051, shown);
    Start(Homogeneity(0), {{Kind::NoOfGroups, "3"}, {Kind::NoOfCategories, "3"}});
    ParText(Kind::SizeK) = "-";
    Derive(Kind::H1SdOfProportions, threeByThree);
    EXPECT_NEAR(Value(Kind::H1SdOfProportions), 0.19807255381018854, shown) << "equal sizes";
}

// 0.5 - 0.3 in the third category is the largest difference of two groups; the first group is 0.15
// and more away from both others there, and no group in any category farther.
TEST_F(TableTests, HomogeneityFindsDifferencesOfGroups) {
    const Values lines{{Kind::NoOfGroups, "3"}, {Kind::NoOfCategories, "3"}};
    Start(Homogeneity(1), lines);
    Derive(Kind::H1AnyProportionDifference, threeByThree);
    EXPECT_NEAR(Value(Kind::H1AnyProportionDifference), 0.2, shown);
    Start(Homogeneity(2), lines);
    Derive(Kind::H1LeastProportionDifference, threeByThree);
    EXPECT_NEAR(Value(Kind::H1LeastProportionDifference), 0.15, shown);
}

// The least non-centrality that leaves such a difference is never above that of the table, whatever
// the table: so the power is never promised too high.
TEST_F(TableTests, HomogeneityDifferencesPromiseNoMorePowerThanTheTable) {
    const std::vector<Rows> tables{
        threeByThree,
        {{"0.1", "0.2", "0.7"}, {"0.3", "0.3", "0.4"}, {"0.5", "0", "0.5"}},
        {{"1", "0", "0"}, {"0.5", "0.5", "0"}, {"0", "1", "0"}},
        {{"0.5", "0.5", "0"}, {"0.5", "0.5", "0"}, {"0.4", "0.6", "0"}}};
    const Values plan{{Kind::NoOfGroups, "3"},
                      {Kind::NoOfCategories, "3"},
                      {Kind::Size1, "25"},
                      {Kind::SizeK, "25"}};
    constexpr f64 rounding = 1e-6;
    for (const Rows& table : tables) {
        Start(Homogeneity(0), plan);
        Derive(Kind::H1SdOfProportions, table);
        const f64 w = Value(Kind::H1SdOfProportions);
        const f64 lambda = 75 * w * w;
        Start(Homogeneity(1), plan);
        Derive(Kind::H1AnyProportionDifference, table);
        const f64 any = Value(Kind::H1AnyProportionDifference);
        EXPECT_LE(4 * 12.5 * any * any, lambda + rounding);
        Start(Homogeneity(2), plan);
        Derive(Kind::H1LeastProportionDifference, table);
        const f64 least = Value(Kind::H1LeastProportionDifference);
        EXPECT_LE(4 * 50.0 * 25 / 75 * least * least, lambda + rounding);
    }
}

TEST_F(TableTests, HomogeneityRefusesRowsThatDoNotAddUp) {
    Start(Homogeneity(0), {{Kind::NoOfGroups, "2"}, {Kind::NoOfCategories, "2"}});
    EXPECT_EQ(Refusal(Kind::H1SdOfProportions, {{"0.5", "0.5"}, {"0.3", "0.6"}}),
              "Sum of Proportions in Row 2 Must Equal 1.");
    EXPECT_EQ(Refusal(Kind::H1SdOfProportions, {{"0.5", "0.6"}, {"0.3", "0.7"}}),
              "Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(Refusal(Kind::H1SdOfProportions, {{"1.5", "-0.5"}, {"0.3", "0.7"}}),
              "Proportion in Cell  (1,1)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(Refusal(Kind::H1SdOfProportions, {{"0.5", "0.5"}, {"0.3", ""}}),
              "A Value Is Missing.");
    EXPECT_EQ(Value(Kind::H1SdOfProportions), 0.3) << "the value stays";
}

// A category that no group has is none.
TEST_F(TableTests, HomogeneityPassesOverACategoryThatNobodyHas) {
    Start(Homogeneity(0), {{Kind::NoOfGroups, "2"}, {Kind::NoOfCategories, "3"}});
    EXPECT_EQ(Refusal(Kind::H1SdOfProportions, {{"0.4", "0.6", "0"}, {"0.6", "0.4", "0"}}), "");
    EXPECT_NEAR(Value(Kind::H1SdOfProportions), 0.2, shown); // 0.1/sqrt(0.25)
}

TEST_F(TableTests, AGridHasNoMoreThanTenLines) {
    Start(Menu(menuMantel, TwoSamples, TwoSided), {{Kind::NoOfStrata, "11"}});
    GetFromTable(PositionOf(Kind::H1SumOfDifferences));
    ASSERT_FALSE(platform.Messages.empty());
    EXPECT_EQ(platform.Messages.back().Text,
              "Number of Strata Has To Be Less Than or Equal to 10.");
}

// With another group the least non-centrality grows, and so do the degrees of freedom: of two
// numbers of groups with the same power the larger one is found.
TEST_F(TableTests, HomogeneityFindsTheNumberOfGroups) {
    const Values plan{{Kind::NoOfGroups, "6"},
                      {Kind::NoOfCategories, "3"},
                      {Kind::H1LeastProportionDifference, "0.3"},
                      {Kind::Size1, "40"},
                      {Kind::SizeK, "40"}};
    Start(Homogeneity(2), plan);
    const f64 power = PowerOfTexts();
    ParText(Kind::Power) = std::to_string(power);
    Calculated = False;
    SolveFor(PositionOf(Kind::NoOfGroups));
    EXPECT_NEAR(ParValue(PositionOf(Kind::NoOfGroups)), 6, 1e-3);
}

// --- Independence -------------------------------------------------------------------------------

TEST_F(TableTests, IndependenceDerivesTheNonCentrality) {
    Start(Menu(menuIndependence, OneSample, TwoSided),
          {{Kind::NoOfXCategories, "2"}, {Kind::NoOfYCategories, "3"}});
    Derive(Kind::NonCentrality, {{"0.2", "0.1", "0.1"}, {"0.1", "0.2", "0.3"}});
    EXPECT_EQ(asked.back().Title, "Probability in Category (X, Y)");
    EXPECT_EQ(GridHeadOf(asked.back().RowHeads, 2, 2), "X 2");
    EXPECT_EQ(GridHeadOf(asked.back().ColumnHeads, 3, 3), "Y 3");
    EXPECT_NEAR(Value(Kind::NonCentrality), 0.13194444444444442, shown);
}

// Independent variables: no effect, and the power is the level.
TEST_F(TableTests, IndependentVariablesHaveNoEffect) {
    Start(Menu(menuIndependence, OneSample, TwoSided),
          {{Kind::NoOfXCategories, "2"}, {Kind::NoOfYCategories, "2"}});
    Derive(Kind::NonCentrality, {{"0.12", "0.28"}, {"0.18", "0.42"}});
    EXPECT_NEAR(Value(Kind::NonCentrality), 0, shown);
    EXPECT_NEAR(PowerOfTexts(), 0.05, 1e-3);
}

TEST_F(TableTests, IndependenceRefusesWhatIsNoDistribution) {
    Start(Menu(menuIndependence, OneSample, TwoSided),
          {{Kind::NoOfXCategories, "2"}, {Kind::NoOfYCategories, "2"}});
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.2", "0.3"}, {"0.3", "0.3"}}),
              "Sum of Probabilities Must Equal 1.");
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.2", "0"}, {"0.3", "0.5"}}),
              "Probability in Cell  (1,2)  Must Be > 0 and < 1");
}

// A non-centrality that is too large for 32 bits is one that always rejects: no fault, but for the
// overflow that it is.
TEST_F(TableTests, AnAbsurdNonCentralityIsNoInvalidArgument) {
    Start(Menu(menuIndependence, OneSample, TwoSided), {});
    UnknownParNo = PowerParNo;
    ParValue(PowerParNo) = 0;
    ParValue(PositionOf(Kind::NonCentrality)) = 1e300;
    EXPECT_EQ(SelRootFunction(), 1);
}

// --- Stuart and Maxwell -------------------------------------------------------------------------

std::string Text(f64 value) {
    return std::to_string(value);
}

Rows Probabilities(const std::vector<std::vector<f64>>& counts) {
    f64 total = 0;
    for (const auto& row : counts)
        for (const f64 count : row)
            total += count;
    Rows rows;
    for (const auto& row : counts) {
        rows.emplace_back();
        for (const f64 count : row)
            rows.back().push_back(Text(count / total));
    }
    return rows;
}

// The chi-square of published tables: unaided vision of the right and left eyes of 7477 women
// (A. Stuart, Biometrika 42, 1955, 412-416: 11.96), diagnoses of two raters (J. L. Fleiss,
// Statistical Methods for Rates and Proportions, 2nd edition, 1981, chapter 8: 14.00).
TEST_F(TableTests, StuartMaxwellOfPublishedTables) {
    Start(Menu(menuStuart, OneSample, TwoSided), {{Kind::NoOfCategories, "4"}});
    Derive(Kind::NonCentrality, Probabilities({{1520, 266, 124, 66},
                                               {234, 1512, 432, 78},
                                               {117, 362, 1772, 205},
                                               {36, 82, 179, 492}}));
    EXPECT_NEAR(7477 * Value(Kind::NonCentrality), 11.96, 0.01);
    Start(Menu(menuStuart, OneSample, TwoSided), {{Kind::NoOfCategories, "3"}});
    Derive(Kind::NonCentrality, Probabilities({{35, 5, 0}, {15, 20, 5}, {10, 5, 5}}));
    EXPECT_NEAR(100 * Value(Kind::NonCentrality), 14.00, 0.005);
}

TEST_F(TableTests, StuartMaxwellNeedsSubjectsThatChangeEachCategory) {
    Start(Menu(menuStuart, OneSample, TwoSided), {{Kind::NoOfCategories, "3"}});
    EXPECT_EQ(Refusal(Kind::NonCentrality,
                      {{"0.3", "0.1", "0"}, {"0.05", "0.3", "0"}, {"0", "0", "0.25"}}),
              "H1: Non-centrality Parameter Can't Be Calculated from These Tables.");
    EXPECT_EQ(Refusal(Kind::NonCentrality,
                      {{"0.3", "0", "0"}, {"0", "0.2", "0.15"}, {"0", "0.1", "0.25"}}),
              "H1: Non-centrality Parameter Can't Be Calculated from These Tables.");
    EXPECT_EQ(Value(Kind::NonCentrality), 0.3) << "the value stays";
}

// --- Mantel and Haenszel ------------------------------------------------------------------------

const Rows threeStrata{
    {"0.1", "0.3", "1", "1"}, {"0.2", "0.4", "2", "1"}, {"0.4", "0.6", "1", "2"}};

TEST_F(TableTests, StrataGiveTheThreeSumsTogether) {
    Start(Menu(menuMantel, TwoSamples, TwoSided), {{Kind::NoOfStrata, "3"}});
    Derive(Kind::H0SumOfVariances, threeStrata);
    EXPECT_EQ(GridHeadOf(asked.back().RowHeads, 3, 2), "Stratum No 2");
    EXPECT_EQ(asked.back().ColumnHeads, "Proportion 1,Proportion 2,Size 1,Size 2");
    EXPECT_NEAR(Value(Kind::H1SumOfDifferences), 0.04583333333333333, shown);
    EXPECT_NEAR(Value(Kind::H0SumOfVariances), 0.04703703703703704, shown);
    EXPECT_NEAR(Value(Kind::H1SumOfVariances), 0.04715277777777777, shown);
    EXPECT_EQ(platform.Statuses.back(), "Taken from the same tables: H1:Sum Of Diff. in "
                                        "Proportions, H1:Sum Of Std.Dev.of Proportions.");
}

// Only the relation of the sizes counts.
TEST_F(TableTests, StrataMayBeEnteredInSubjects) {
    Start(Menu(menuMantel, TwoSamples, TwoSided), {{Kind::NoOfStrata, "3"}});
    Rows rows = threeStrata;
    for (auto& row : rows) {
        row[2] += "0";
        row[3] += "0";
    }
    Derive(Kind::H1SumOfDifferences, rows);
    EXPECT_NEAR(Value(Kind::H1SumOfVariances), 0.04715277777777777, shown);
}

TEST_F(TableTests, StrataTakeAnOddsRatio) {
    const AnalysisChoice choice = Menu(menuMantel, TwoSamples, TwoSided, {Check::OddsRatio});
    Start(choice, {{Kind::NoOfStrata, "4"}});
    Derive(Kind::H1SumOfDifferences, {{"0.2", "2", "1", "2"},
                                      {"0.4", "2", "1", "1"},
                                      {"0.5", "2", "3", "2"},
                                      {"0.7", "2", "1", "1"}});
    EXPECT_EQ(asked.back().ColumnHeads, "Proportion 1,OddsRatio,Size 1,Size 2");
    EXPECT_NEAR(Value(Kind::H1SumOfDifferences), 0.03636399004046063, shown);
    EXPECT_NEAR(Value(Kind::H0SumOfVariances), 0.0539382481448159, shown);
    EXPECT_NEAR(Value(Kind::H1SumOfVariances), 0.050879208073934, shown);
    // A proportion of 0 or 1 has no odds ratio that would change it.
    EXPECT_EQ(Refusal(Kind::H1SumOfDifferences, {{"0", "2", "1", "1"},
                                                 {"1", "2", "1", "1"},
                                                 {"0.5", "1", "1", "1"},
                                                 {"0.5", "1", "1", "1"}}),
              "");
    EXPECT_NEAR(Value(Kind::H1SumOfDifferences), 0, shown);
}

TEST_F(TableTests, StrataRefuseWhatIsNone) {
    Start(Menu(menuMantel, TwoSamples, TwoSided, {Check::OddsRatio}), {{Kind::NoOfStrata, "2"}});
    const auto refusal = [this](const Rows& rows) {
        return Refusal(Kind::H1SumOfDifferences, rows);
    };
    EXPECT_EQ(refusal({{"0.2", "0", "1", "1"}, {"0.2", "2", "1", "1"}}),
              "Ratio in Cell  (1,2)  Must Be > 0.");
    EXPECT_EQ(refusal({{"0.2", "2", "1", "1"}, {"0.2", "2", "1", "0"}}),
              "Ratio in Cell  (2,4)  Must Be > 0.");
    EXPECT_EQ(refusal({{"1.2", "2", "1", "1"}, {"0.2", "2", "1", "1"}}),
              "Proportion in Cell  (1,1)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(refusal({{"0.2", "2", "1", "1"}, {"0.2", "2", "", "1"}}), "A Value Is Missing.");
}

// A table of proportions isn't taken for one of odds ratios.
TEST_F(TableTests, StrataOfTheOtherKindAreNotShown) {
    Start(Menu(menuMantel, TwoSamples, TwoSided), {{Kind::NoOfStrata, "3"}});
    Derive(Kind::H1SumOfDifferences, threeStrata);
    Start(Menu(menuMantel, TwoSamples, TwoSided, {Check::OddsRatio}), {{Kind::NoOfStrata, "3"}});
    std::string former = "not asked";
    platform.GridFillings.emplace_back([&former] {
        former = GridText(1, 2);
        return false;
    });
    GetFromTable(PositionOf(Kind::H1SumOfDifferences));
    EXPECT_EQ(former, "");
}

TEST_F(TableTests, StrataAndTrendsHaveNoTwoOneSidedTests) {
    OpenTest(menuMantel);
    EXPECT_TRUE(TailsOffered(OneSided));
    EXPECT_TRUE(TailsOffered(TwoSided));
    EXPECT_FALSE(TailsOffered(TwoOneSided));
    CancelOptions();
    OpenTest(menuTrend);
    EXPECT_FALSE(TailsOffered(TwoOneSided));
    CancelOptions();
    Start(Menu(menuMantel, TwoSamples, TwoSided), {});
    NoOfTails = TwoOneSided;
    EXPECT_EQ(TESTMH::RootFunction(), 0);
    Start(Menu(menuTrend, MoreSamples, TwoSided), {});
    NoOfTails = TwoOneSided;
    EXPECT_EQ(TESTCA::RootFunction(), 0);
}

// --- Trend --------------------------------------------------------------------------------------

// A proportion and its complement have the same variance.
TEST_F(TableTests, TheSmallerOfTwoAverageProportionsIsSought) {
    Start(Menu(menuTrend, MoreSamples, TwoSided), {{Kind::H1Trend, "0.0666666667"},
                                                   {Kind::AverageProportion, "0.7"},
                                                   {Kind::TrendVariance, "0.1"},
                                                   {Kind::LevelVariance, "0.666666667"},
                                                   {Kind::NoOfGroups, "3"},
                                                   {Kind::TotalSize, "150"}});
    Solve(Kind::Power);
    EXPECT_NEAR(ReadNumber(Solve(Kind::AverageProportion)), 0.3, 1e-4);
    UnknownParNo = PositionOf(Kind::AverageProportion);
    f64 lower = ParMin(Kind::AverageProportion);
    f64 upper = ParMax(Kind::AverageProportion);
    TESTCA::SearchLimits(lower, upper);
    EXPECT_EQ(lower, ParMin(Kind::AverageProportion));
    EXPECT_EQ(upper, 0.5);
}

const Rows fourDoses{
    {"0.05", "0.1", "0.15", "0.4"}, {"0", "1", "2", "5"}, {"0.4", "0.3", "0.2", "0.1"}};

TEST_F(TableTests, GroupsGiveTheFourTermsTogether) {
    Start(Menu(menuTrend, MoreSamples, TwoSided), {{Kind::NoOfGroups, "4"}});
    Derive(Kind::AverageProportion, fourDoses);
    EXPECT_EQ(asked.back().Title, "Groups");
    EXPECT_EQ(asked.back().RowHeads, "Proportion,Group Level,Fract.of Sample,");
    EXPECT_EQ(GridHeadOf(asked.back().RowHeads, 3, 3), "Fract.of Sample");
    EXPECT_NEAR(Value(Kind::H1Trend), 0.146, shown);
    EXPECT_NEAR(Value(Kind::AverageProportion), 0.12, shown);
    EXPECT_NEAR(Value(Kind::TrendVariance), 0.39132, shown);
    EXPECT_NEAR(Value(Kind::LevelVariance), 2.16, shown);
    EXPECT_EQ(platform.Statuses.back(), "Taken from the same tables: H1: Trend, Variance Term, "
                                        "Variance of Group Levels.");
}

TEST_F(TableTests, OnlyTheFractionsHaveASum) {
    Start(Menu(menuTrend, MoreSamples, TwoSided), {{Kind::NoOfGroups, "4"}});
    std::vector<std::string> sums;
    platform.GridFillings.emplace_back([&sums] {
        FillCurrentGrid(fourDoses);
        for (i16 row = 1; row <= 3; ++row)
            sums.push_back(RowSumText(row));
        return false;
    });
    GetFromTable(PositionOf(Kind::H1Trend));
    EXPECT_EQ(sums, (std::vector<std::string>{"", "", "Sum: 1"}));
}

TEST_F(TableTests, GroupsRefuseWhatIsNoDesign) {
    Start(Menu(menuTrend, MoreSamples, TwoSided), {{Kind::NoOfGroups, "2"}});
    const auto refusal = [this](const Rows& rows) { return Refusal(Kind::H1Trend, rows); };
    EXPECT_EQ(refusal({{"0.1", "0.2"}, {"1", "1"}, {"0.5", "0.5"}}),
              "Numbers in Row 2 Must Be Strictly Increasing.");
    EXPECT_EQ(refusal({{"0.1", "0.2"}, {"0", "1"}, {"0.5", "0.4"}}),
              "Sum of Proportions in Row 3 Must Equal 1.");
    EXPECT_EQ(refusal({{"0.1", "0.2"}, {"0", "1"}, {"1", "0"}}),
              "Probability in Cell  (3,1)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"0.1", "1.2"}, {"0", "1"}, {"0.5", "0.5"}}),
              "Proportion in Cell  (1,2)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(refusal({{"0.1", "0.2"}, {"0", ""}, {"0.5", "0.5"}}), "A Value Is Missing.");
}

// The step of one event is the least distance of two levels in the grid.
TEST_F(TableTests, TheCorrectionTakesTheSpacingOfTheGrid) {
    Start(Menu(menuTrend, MoreSamples, TwoSided, {Check::Correction}), {{Kind::NoOfGroups, "4"}});
    Derive(Kind::H1Trend,
           {{"0.1", "0.2", "0.3", "0.4"}, {"0", "4", "6", "9"}, {"0.4", "0.3", "0.2", "0.1"}});
    EXPECT_EQ(CaCorrection(), 2);
    Start(Menu(menuTrend, MoreSamples, TwoSided), {{Kind::NoOfGroups, "4"}});
    EXPECT_EQ(CaCorrection(), 0) << "not ticked";
}

// Without a grid the groups are taken for equally large, at equal distances; as soon as a term is
// typed over, the grid no longer counts.
TEST_F(TableTests, WithoutAGridTheCorrectionTakesEqualDistances) {
    Start(Menu(menuTrend, MoreSamples, TwoSided, {Check::Correction}),
          {{Kind::NoOfGroups, "3"}, {Kind::LevelVariance, "6"}}); // levels 0, 3, 6
    EXPECT_NEAR(CaCorrection(), 3, shown);
    Derive(Kind::H1Trend, {{"0.1", "0.2", "0.3"}, {"0", "4", "6"}, {"0.3", "0.3", "0.4"}});
    EXPECT_EQ(CaCorrection(), 2);
    Type(Kind::LevelVariance, "6");
    ReadParValues();
    EXPECT_NEAR(CaCorrection(), 3, shown);
}

// --- Sentences ----------------------------------------------------------------------------------

TEST_F(TableTests, SentencesNameTheHypotheses) {
    const auto sentence = [](const AnalysisChoice& choice, i16 unknown) {
        Start(choice, {});
        SolveFor(PositionOf(unknown));
        return SumStatement();
    };
    EXPECT_EQ(
        sentence(Homogeneity(0), Kind::Power),
        "With a total sample size of 150 (30 in group 1 and 30 in each other group), the power "
        "is 0.60 when testing the null hypothesis H0: standard deviation of proportions = 0 "
        "(equal distributions) against H1: standard deviation of proportions = 0.3. For the "
        "design, the number of groups is 5. The test used is Chi-square test, R x C table, "
        "Homogeneity at the significance level 0.05. The calculation is based on the "
        "assumption that the number of categories is 5.");
    EXPECT_EQ(
        sentence(Homogeneity(2, groupSizeAsRatio), Kind::Size1),
        "With a total sample size of 335 (67 in group 1 and 67 in each other group), the power "
        "is 0.80 when testing the null hypothesis H0: all proportion (i,j) - proportion (k,j) "
        "for all j = 0 (equal proportions) against H1: min proportion (i,j) - proportion (k,j) "
        "for any j = 0.3. For the design, the number of groups is 5. The test used is "
        "Chi-square test, R x C table, Homogeneity at the significance level 0.05. The "
        "calculation is based on the assumption that the number of categories is 5.");
    EXPECT_EQ(
        sentence(Menu(menuIndependence, OneSample, TwoSided), Kind::Size),
        "With a sample size of 65, the power is 0.80 when testing the null hypothesis H0: "
        "non-centrality parameter = 0 (independent variables) against H1: non-centrality "
        "parameter = 0.3. The test used is Chi-square test, R x C table, Independence at the "
        "significance level 0.05. The calculation is based on the assumptions that the number "
        "of x-categories is 5 and the number of y-categories is 5.");
    EXPECT_EQ(sentence(Menu(menuStuart, OneSample, TwoSided), Kind::Power),
              "With a sample size of 30, the power is 0.66 when testing the null hypothesis H0: "
              "non-centrality parameter = 0 (equal marginal distributions) against H1: "
              "non-centrality parameter = 0.3. The test used is Stuart-Maxwell test at the "
              "significance level 0.05. The calculation is based on the assumption that the number "
              "of categories is 5.");
    EXPECT_EQ(
        sentence(Menu(menuMantel, TwoSamples, OneSided, {Check::OddsRatio}), Kind::TotalSize),
        "With a total sample size of 21, the power is 0.80 when testing the null hypothesis "
        "H0: sum of differences in proportions = 0 (equal distributions) and sum of variances "
        "of proportions = 0.3 against H1: sum of differences in proportions = 0.3 and sum of "
        "variances of proportions = 0.3. The test used is Mantel-Haenszel test, one-sided, at "
        "the significance level 0.05. The calculation is based on the assumption that the "
        "number of strata is 4.");
    EXPECT_EQ(
        sentence(Menu(menuTrend, MoreSamples, TwoSided, {Check::Correction}), Kind::TotalSize),
        "With a total sample size of 10, the power is 0.80 when testing the null hypothesis "
        "H0: trend = 0 (equal proportions) against H1: trend = 0.3. For the design, the number "
        "of groups is 5. The test used is Cochran-Armitage Trend test, two-sided, at the "
        "significance level 0.05. The calculation is based on the assumptions that the average "
        "proportion is 0.3, the variance term is 0.2 and the variance of group levels is 0.3.");
}

} // namespace
} // namespace quorvanta::checks
