// The tests of goodness of fit: what their grid asks and refuses, what derives from it, edges and
// sentences.
//
// Values of other origin are those that checks/reference/gof.py prints.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/search.h"
#include "output/statement.h"
#include "support/grid_fixture.h"
#include "support/properties.h"

namespace quorvanta::checks {
namespace {

constexpr i16 menuTable = 110;
constexpr i16 menuDiscrete = 260;
constexpr i16 menuContinuous = 261;

// Values are shown with seven significant digits or decimals.
constexpr f64 shown = 1e-6;

class GoodnessOfFit : public GridFixture {
  protected:
    static void Start(i16 menuNo, const std::string& categories) {
        AnalysisChoice choice;
        choice.MenuNo = menuNo;
        choice.NoOfSamples = OneSample;
        choice.NoOfTails = TwoSided;
        checks::Start(choice, {{Kind::NoOfCategories, categories}});
    }
};

TEST_F(GoodnessOfFit, IsATwoSidedTestOfOneSample) {
    for (const i16 menuNo : {menuTable, menuDiscrete, menuContinuous}) {
        NewTest(menuNo);
        EXPECT_EQ(NoOfSamples, OneSample);
        EXPECT_EQ(NoOfTails, TwoSided);
        EXPECT_EQ(NoOfCheck, 0);
        EXPECT_EQ(NoOfIntPar, 0);
        AcceptOptions();
        const std::vector<i16> kinds{Kind::SignificanceLevel, Kind::Power, Kind::NonCentrality,
                                     Kind::NoOfCategories, Kind::Size};
        ASSERT_EQ(NoOfPar, 4);
        for (i16 i = 0; i <= NoOfPar; ++i)
            EXPECT_EQ(ParKind(i), kinds[static_cast<std::size_t>(i)]);
        EXPECT_TRUE(IsBluePar(2));
        EXPECT_FALSE(IsBluePar(3));
        EXPECT_FALSE(IsBluePar(4));
    }
}

// --- The grid -----------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, AsksForTheProportionsUnderBothHypotheses) {
    Start(menuTable, "5");
    Derive(Kind::NonCentrality,
           {{"0.1", "0.2", "0.4", "0.2", "0.1"}, {"0.2", "0.2", "0.2", "0.2", "0.2"}});
    ASSERT_EQ(asked.size(), 1U);
    const Grid& grid = asked.back();
    EXPECT_EQ(grid.Title, "Proportion");
    EXPECT_EQ(grid.Rows, 2);
    EXPECT_EQ(grid.Columns, 5);
    EXPECT_EQ(GridHeadOf(grid.RowHeads, 2, 1), "H0: ");
    EXPECT_EQ(GridHeadOf(grid.RowHeads, 2, 2), "H1: ");
    EXPECT_EQ(GridHeadOf(grid.ColumnHeads, 5, 1), "Category No 1");
    EXPECT_EQ(GridHeadOf(grid.ColumnHeads, 5, 5), "Category No 5");
    EXPECT_EQ(grid.RowSum, 1);
    EXPECT_NEAR(Value(Kind::NonCentrality), 0.3, shown);
}

TEST_F(GoodnessOfFit, DerivesTheSameFromAnyOfItsMenus) {
    for (const i16 menuNo : {menuTable, menuDiscrete, menuContinuous}) {
        Start(menuNo, "4");
        Derive(Kind::NonCentrality,
               {{"0.5625", "0.1875", "0.1875", "0.0625"}, {"0.5", "0.2", "0.2", "0.1"}});
        EXPECT_NEAR(Value(Kind::NonCentrality), 0.03111111111111112, shown);
    }
}

// What one subject contributes: the size that the window shows is not asked for.
TEST_F(GoodnessOfFit, HasAnEffectWithoutASize) {
    Start(menuTable, "2");
    Type(Kind::Size, "-");
    Derive(Kind::NonCentrality, {{"0.5", "0.5"}, {"0.6", "0.4"}});
    EXPECT_NEAR(Value(Kind::NonCentrality), 0.04, shown); // 2 (0.1)^2/0.5
}

TEST_F(GoodnessOfFit, RefusesProportionsOutside0To1) {
    Start(menuTable, "2");
    const auto refusal = [this](const Rows& rows) { return Refusal(Kind::NonCentrality, rows); };
    EXPECT_EQ(refusal({{"0", "1"}, {"0.5", "0.5"}}),
              "H0: Probability in Cell  (1,1)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"-0.1", "1.1"}, {"0.5", "0.5"}}),
              "H0: Probability in Cell  (1,1)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"0.5", "0.5"}, {"0.5", "1"}}),
              "H1: Probability in Cell  (2,2)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"0.5", "0.5"}, {"0", "0.5"}}),
              "H1: Probability in Cell  (2,1)  Must Be > 0 and < 1");
    EXPECT_EQ(Value(Kind::NonCentrality), 0.3) << "the value stays";
}

TEST_F(GoodnessOfFit, RefusesRowsThatDoNotAddUp) {
    Start(menuTable, "3");
    const auto refusal = [this](const Rows& rows) { return Refusal(Kind::NonCentrality, rows); };
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.4"}, {"0.2", "0.3", "0.5"}}),
              "H0: Sum of Proportions in Row 1 Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.6"}, {"0.2", "0.3", "0.5"}}),
              "H0: Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.5"}, {"0.2", "0.3", "0.1"}}),
              "H1: Sum of Proportions in Row 2 Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.5"}, {"0.9", "0.3", "0.1"}}),
              "H1: Sum of Proportions in Row 2> 1. Must Equal 1.");
    EXPECT_EQ(Value(Kind::NonCentrality), 0.3) << "the value stays";
}

// Other messages, and those of another grid, have no caption.
TEST_F(GoodnessOfFit, CaptionsStandBeforeItsOwnMessagesOnly) {
    Start(menuTable, "2");
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.5", "0.6"}, {"0.5", "0.5"}}),
              "H0: Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.5", "0.5"}, {"0.5", ""}}), "A Value Is Missing.");
    Type(Kind::NoOfCategories, "11");
    GetFromTable(PositionOf(Kind::NonCentrality));
    EXPECT_EQ(platform.Messages.back().Text,
              "Number of Categories Has To Be Less Than or Equal to 10.");
}

// --- Edges --------------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, WithoutEffectThePowerIsTheLevel) {
    constexpr f64 distribution = 1e-3; // of chi-square up to 21 degrees of freedom
    for (const char* categories : {"2", "5", "10"})
        for (const char* level : {"0.01", "0.05", "0.2"}) {
            Start(menuTable, categories);
            Type(Kind::SignificanceLevel, level);
            Type(Kind::NonCentrality, "0");
            Solve(Kind::Power);
            EXPECT_NEAR(ParValue(1), ReadNumber(level), distribution)
                << categories << " at " << level;
        }
}

TEST_F(GoodnessOfFit, EqualProportionsAreNoEffect) {
    Start(menuTable, "3");
    Derive(Kind::NonCentrality, {{"0.2", "0.3", "0.5"}, {"0.2", "0.3", "0.5"}});
    EXPECT_EQ(Value(Kind::NonCentrality), 0);
}

// --- Sentences ----------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, SentencesNameTheHypotheses) {
    Start(menuTable, "4");
    Solve(Kind::Size);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 37, the power is 0.80 when testing the null hypothesis H0: "
              "non-centrality parameter = 0 (proportions as stated) against H1: non-centrality "
              "parameter = 0.3. The test used is Chi-square test, 1 x C table, Goodness Of Fit at "
              "the significance level 0.05. The calculation is based on the assumption that the "
              "number of categories is 4.");
    Start(menuDiscrete, "4");
    Solve(Kind::Power);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the power is 0.71 when testing the null hypothesis H0: "
              "non-centrality parameter = 0 (proportions as stated) against H1: non-centrality "
              "parameter = 0.3. The test used is Goodness of Fit test, Chi-square test, Discrete "
              "Distribution at the significance level 0.05. The calculation is based on the "
              "assumption that the number of categories is 4.");
    Start(menuContinuous, "4");
    Solve(Kind::NonCentrality);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the non-centrality parameter under H1 is 0.36328 for a "
              "power of 0.80 when testing the null hypothesis H0: non-centrality parameter = 0 "
              "(proportions as stated) against H1: non-centrality parameter = 0.36328. The test "
              "used is Goodness of Fit test, Chi-square test, Continuous Distribution at the "
              "significance level 0.05. The calculation is based on the assumption that the number "
              "of categories is 4.");
}

} // namespace
} // namespace quorvanta::checks
