#include "core/root.h"
#include "support/number.h"

#include <cmath>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

// A search from start to end with the driver's tolerance, and what it left behind.
struct Search {
    i16 Iterations = -7;
    f64 Root = -7;
    f64 FRoot = -7;
    std::vector<f64> Points;

    void Run(const std::function<f64(f64)>& f, f64 x1, f64 x2, i16 maxIter = RootIterations) {
        const auto recorded = [this, &f](f64 x) {
            Points.push_back(x);
            return f(x);
        };
        FindRootOf(recorded, x1, x2, RootTolerance, maxIter, Iterations, Root, FRoot);
    }
};

class RootSearch : public testing::Test {
  protected:
    void SetUp() override { Cancelled = False; }
    void TearDown() override { Cancelled = False; }
};

TEST_F(RootSearch, TheSameSignAtBothEndsEndsWithALargeResidual) {
    Search search;
    search.Run([](f64) { return 0.25; }, 2, 9);
    EXPECT_GT(std::fabs(search.FRoot), RootResidual);
    Search parabola;
    parabola.Run([](f64 x) { return x * x + 1; }, -1, 2);
    EXPECT_GT(std::fabs(parabola.FRoot), RootResidual);
}

TEST_F(RootSearch, AZeroAtTheUpperEndEndsItInTheFirstPass) {
    Search search;
    search.Run([](f64 x) { return x - 9; }, 2, 9);
    EXPECT_EQ(search.Root, 9.0);
    EXPECT_EQ(search.FRoot, 0.0);
    EXPECT_EQ(search.Iterations, 1);
    EXPECT_EQ(search.Points, (std::vector<f64>{2, 9}));
}

TEST_F(RootSearch, AZeroAtTheLowerEndIsFound) {
    Search search;
    search.Run([](f64 x) { return x - 2; }, 2, 9);
    EXPECT_EQ(search.Root, 2.0);
    EXPECT_EQ(search.FRoot, 0.0);
}

TEST_F(RootSearch, AJumpIsFoundWithItsResidual) {
    Search search;
    search.Run([](f64 x) { return x < 0.7 ? -0.5 : 0.5; }, 0, 2);
    EXPECT_NEAR(search.Root, 0.7, 2 * RootTolerance);
    EXPECT_GT(std::fabs(search.FRoot), RootResidual);
}

TEST_F(RootSearch, ACancelDuringTheFirstEvaluationLeavesTheOutputs) {
    Search search;
    search.Run(
        [](f64 x) {
            Cancelled = True;
            return x - 3;
        },
        2, 9);
    EXPECT_EQ(search.Points.size(), 1U);
    EXPECT_EQ(search.Iterations, -7);
    EXPECT_EQ(search.Root, -7.0);
    EXPECT_EQ(search.FRoot, -7.0);
}

TEST_F(RootSearch, ACancelLaterLeavesTheRootAndMarksTheResidual) {
    Search search;
    const auto cancelledAtTheFourth = [&search](f64 x) {
        if (search.Points.size() == 4)
            Cancelled = True;
        return x * x * x - 20;
    };
    search.Run(cancelledAtTheFourth, 2, 9);
    EXPECT_EQ(search.Points.size(), 4U);
    EXPECT_EQ(search.Iterations, 2);
    EXPECT_EQ(search.Root, -7.0);
    EXPECT_EQ(search.FRoot, 99999.0);
}

TEST_F(RootSearch, AtTheIterationLimitTheLastPointStands) {
    Search search;
    search.Run([](f64 x) { return x * x + 1; }, -1, 2, 3);
    EXPECT_EQ(search.Iterations, 3);
    EXPECT_EQ(search.Points.size(), 5U);
    EXPECT_EQ(search.Root, search.Points.back());
    EXPECT_EQ(search.FRoot, search.Root * search.Root + 1);
}

TEST_F(RootSearch, AFunctionThatIsNoNumberEndsAtTheLimitAtTheLatest) {
    Search search;
    search.Run([](f64) { return std::nan(""); }, 0, 1);
    EXPECT_TRUE(std::isnan(search.FRoot));
    EXPECT_LE(search.Points.size(), 502U);
}

// The case names, functions and limits of checks/reference/root_search.py.
struct SearchCase {
    std::function<f64(f64)> Function;
    f64 X1, X2;
};

const std::map<std::string, SearchCase>& SearchCases() {
    static const std::map<std::string, SearchCase> cases = {
        {"wallis", {[](f64 x) { return (x * x - 2) * x - 5; }, 0, 10}},
        {"saturating", {[](f64 x) { return x / (x + 25.0) - 0.8; }, 3, 99999}},
        {"triple", {[](f64 x) { return (x - 0.3) * (x - 0.3) * (x - 0.3); }, 0, 5}},
        {"parabola", {[](f64 x) { return x * x + 1.0; }, -1, 2}},
        {"outside", {[](f64 x) { return x; }, 0.5, 2}},
    };
    return cases;
}

TEST_F(RootSearch, TriesThePointsOfAnIndependentSearch) {
    std::ifstream file(CHECK_DATA_DIR "/root_search.csv");
    std::string line;
    int cases = 0;
    int otherwise = 0;
    while (std::getline(file, line)) {
        if (line.front() == '#')
            continue;
        std::istringstream cells(line);
        std::string name, passes, published, cell;
        std::getline(cells, name, ',');
        std::getline(cells, passes, ',');
        std::getline(cells, published, ',');
        std::vector<f64> points;
        while (std::getline(cells, cell, ','))
            points.push_back(checks::ParseNumber(cell));

        const SearchCase& searchCase = SearchCases().at(name);
        Search search;
        search.Run(searchCase.Function, searchCase.X1, searchCase.X2);
        EXPECT_EQ(search.Points, points) << name;
        EXPECT_EQ(search.Iterations, std::stoi(passes)) << name;
        ++cases;
        otherwise += points.size() != std::stoul(published);
    }
    EXPECT_EQ(cases, 5);
    // Brent's own rule for the acceptance of a step would have taken another number of points.
    EXPECT_GE(otherwise, 2);
}

TEST_F(RootSearch, FindsTheRootOfWallis) {
    Search search;
    search.Run([](f64 x) { return (x * x - 2) * x - 5; }, 0, 10);
    EXPECT_NEAR(search.Root, 2.0945514815423265, RootTolerance);
}

} // namespace
} // namespace quorvanta
