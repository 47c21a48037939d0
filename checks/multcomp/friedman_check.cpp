// The simulated test of Friedman: how often it rejects, beside a simulation of other origin, and
// its edges.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "montecarlo/simstudy.h"
#include "multcomp/family.h"
#include "multcomp/normalmodel.h"
#include "numeric/rounding.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/tsv.h"

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 menuFriedman = 320;

std::vector<std::string> SplitCells(const std::string& text) {
    std::vector<std::string> cells;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');)
        cells.push_back(part);
    return cells;
}

// One row of the grid of means, one of the covariances, from a list of numbers.
GridRowTexts RowsOf(const std::string& numbers, std::size_t columns) {
    GridRowTexts rows;
    for (const std::string& cell : SplitCells(numbers)) {
        if (rows.empty() || rows.back().size() == columns)
            rows.emplace_back();
        rows.back().push_back(cell);
    }
    return rows;
}

class Friedman : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        OpenSimulation(menuFriedman);
    }
    void TearDown() override { SimNo = 0; }

    void Choose(i16 structure) {
        ReopenOptions();
        Pick(Group::CorrelationMatrix, structure);
        AcceptOptions();
    }

    void OfferGrid(const GridRowTexts& rows) {
        platform.GridFillings.emplace_back([rows] { return FillCurrentGrid(rows); });
    }

    void RunTimes(int most) { Run(std::to_string(most), "20240615"); }
};

TEST_F(Friedman, RejectsAsOftenAsASimulationOfOtherOrigin) {
    const int replicates = WholeStatistics() ? 100000 : 2000;
    constexpr f64 theirs = 200000;
    const auto rows = ReadTsv("simulated/friedman.tsv");
    EXPECT_GE(rows.size(), 9U);
    for (const auto& row : rows) {
        const auto structure = ToI16(ParseNumber(row[0]));
        Choose(structure);
        Type(Kind::NormalDimension, row[1]);
        Type(Kind::VectorSize, row[5]);
        Type(Kind::SignificanceLevel, row[6]);
        if (structure != EnteredCovariance) {
            Type(Kind::Sd, row[3]);
            Type(Kind::Correlation, row[4]);
        }
        OfferGrid(RowsOf(row[2], 1));
        if (structure == EnteredCovariance)
            OfferGrid(RowsOf(row[9], static_cast<std::size_t>(ParseNumber(row[1]))));
        GetFromTable(PositionOf(Kind::SdOfMeans));
        ASSERT_TRUE(platform.GridFillings.empty());
        RunTimes(replicates);
        ASSERT_EQ(SimNo, replicates) << row[2] << " " << LastMessage();
        for (const auto& [count, text] :
             {std::pair{CountRejectH0(1), row[7]}, {CountRejectH1(1), row[8]}}) {
            const f64 p = ParseNumber(text);
            EXPECT_NEAR(static_cast<f64>(count) / replicates, p,
                        3.5 * std::sqrt(p * (1 - p) * (1.0 / replicates + 1 / theirs)) + 0.001)
                << row[0] << " " << row[2];
        }
    }
}

// The statistic of two treatments is that of the sign test: 4 (n+ - n/2)^2 / n.
TEST_F(Friedman, OfTwoTreatmentsIsTheSignTest) {
    Type(Kind::NormalDimension, "2");
    Type(Kind::VectorSize, "1");
    Type(Kind::SdOfMeans, "500");
    RunTimes(1);
    ASSERT_EQ(OutputReady, True);
    SimStage = 1;
    SelGetSimPar();
    // 9 blocks, each of which has the second treatment above: chi-square 9.
    SimSize1.ReDim(0, 1);
    SimSize2.ReDim(0, 1);
    SimSize1(1) = 9;
    SimStage = 0;
    f32 p = 1;
    SelSimStatistic(p, 1);
    EXPECT_NEAR(p, 0.0027, 1e-4) << "2 (1 - Phi(3))";
    SimSize1(1) = 0;
    SimStage = 0;
    SelSimStatistic(p, 1);
    EXPECT_EQ(p, 1) << "no block";
}

TEST_F(Friedman, MeansThatAreTypedAreEquallySpaced) {
    Type(Kind::NormalDimension, "3");
    Type(Kind::VectorSize, "20");
    Type(Kind::SdOfMeans, "0.2449490"); // of 0, 0.3 and 0.6
    RunTimes(500);
    const auto typed = Estimates();
    OfferGrid({{"0"}, {"0.3"}, {"0.6"}});
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(ParText(Kind::SdOfMeans), "0.244949");
    RunTimes(500);
    EXPECT_EQ(Estimates(), typed);
}

TEST_F(Friedman, ASeedRepeatsTheRun) {
    RunTimes(300);
    const auto first = Estimates();
    Run("300", "77");
    EXPECT_NE(Estimates(), first);
    RunTimes(300);
    EXPECT_EQ(Estimates(), first);
}

TEST_F(Friedman, AMatrixThatIsNotEnteredStartsNothing) {
    Choose(EnteredCovariance);
    RunTimes(10);
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
    Type(Kind::NormalDimension, "2");
    OfferGrid({{"1", "0.5"}, {"0.5", "2"}});
    RunTimes(10);
    EXPECT_EQ(OutputReady, True);
    RunTimes(20); // it is not asked for again
    EXPECT_EQ(SimNo, 20);
}

TEST_F(Friedman, ComponentsCanOnlyCorrelateSoMuch) {
    Type(Kind::NormalDimension, "3");
    Type(Kind::Correlation, "-0.6");
    RunTimes(10);
    EXPECT_EQ(OutputReady, False);
    EXPECT_FALSE(LastMessage().empty());
    Type(Kind::Correlation, "-0.49");
    RunTimes(10);
    EXPECT_EQ(OutputReady, True);
}

TEST_F(Friedman, IsThereAsASimulationOnly) {
    FileCommand(CalculationWindow);
    platform.Messages.clear();
    platform.Answers = {Answer::Cancel};
    NewTest(menuFriedman);
    EXPECT_EQ(
        platform.Texts(),
        (std::vector<std::string>{"Friedman's test Is Only Available as Monte Carlo Simulation."}));
    EXPECT_EQ(CurrentWindowKind(), CalculationWindow);
    EXPECT_TRUE(TestName.empty());
    NewTest(menuFriedman); // OK opens its window
    EXPECT_EQ(CurrentWindowKind(), SimulationWindow);
    EXPECT_EQ(TestNo, 377);
    EXPECT_TRUE(HasSimulation({.IsTest = True, .TestNo = 377}));
}

TEST_F(Friedman, HasNoMethodOfAdjustment) {
    EXPECT_TRUE(AdjustMethodNames().empty());
    EXPECT_EQ(MultCompKind(), Comparison::BlocksTest);
    EXPECT_EQ(NoOfComparisons(4, 9), 9);
}

} // namespace
} // namespace quorvanta::checks
