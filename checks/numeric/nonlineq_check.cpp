#include "core/analysis_state.h"
#include "core/fault.h"
#include "numeric/nonlineq.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

namespace quorvanta {
namespace {

Array1<f64> Cells(std::initializer_list<f64> values) {
    Array1<f64> cells(1, static_cast<int>(values.size()));
    std::ranges::copy(values, cells.Raw().begin());
    return cells;
}

constexpr f64 far = 1.0e6;

class SolveSystemCheck : public ::testing::Test {
  protected:
    void SetUp() override {
        Cancelled = False;
        ClearFloatFaults();
    }
    void TearDown() override {
        Cancelled = False;
        EXPECT_FALSE(HasFloatFault());
    }

    // Solves and counts the evaluations; cancels after cancelAfter of them.
    Array1<f64> Solve(const EquationSystem& g, const Array1<f64>& start, const Array1<f64>& rhs,
                      f64 low = -far, f64 high = far, i16 maxIter = 500) {
        const i16 n = static_cast<i16>(start.HighBound());
        Array1<f64> lower(1, n);
        Array1<f64> upper(1, n);
        std::ranges::fill(lower.Raw(), low);
        std::ranges::fill(upper.Raw(), high);
        const auto counted = [&](const Array1<f64>& x, Array1<f64>& values) {
            g(x, values);
            if (++Evaluations == CancelAfter)
                Cancelled = True;
        };
        Array1<f64> solution;
        SolveSystem(n, counted, start, lower, upper, 1.0e-5, maxIter, rhs, solution);
        return solution;
    }

    int Evaluations = 0;
    int CancelAfter = -1;
};

void ExpectNear(const Array1<f64>& x, const Array1<f64>& expected, f64 tolerance) {
    ASSERT_EQ(x.HighBound(), expected.HighBound());
    for (int i = 1; i <= x.HighBound(); ++i)
        EXPECT_NEAR(x(i), expected(i), tolerance) << i;
}

void Rosenbrock(const Array1<f64>& x, Array1<f64>& g) {
    g(1) = 10.0 * (x(2) - x(1) * x(1));
    g(2) = 1.0 - x(1);
}

TEST_F(SolveSystemCheck, LinearSystemWithRightHandSides) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        values(1) = 2.0 * x(1) + x(2);
        values(2) = x(1) - 3.0 * x(2);
    };
    ExpectNear(Solve(g, Cells({0, 0}), Cells({5, -8})), Cells({1, 3}), 1.0e-6);
}

// Problems 1, 7 and 30 of J. J. More, B. S. Garbow and K. E. Hillstrom, Testing unconstrained
// optimization software, ACM Transactions on Mathematical Software 7 (1981), from their starts.
TEST_F(SolveSystemCheck, RosenbrockFunction) {
    ExpectNear(Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0})), Cells({1, 1}), 1.0e-5);
}

TEST_F(SolveSystemCheck, HelicalValley) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        const f64 angle = std::atan(x(2) / x(1)) / (2.0 * 3.141592653589793) + (x(1) < 0 ? 0.5 : 0);
        values(1) = 10.0 * (x(3) - 10.0 * angle);
        values(2) = 10.0 * (std::hypot(x(1), x(2)) - 1.0);
        values(3) = x(3);
    };
    ExpectNear(Solve(g, Cells({-1, 0, 0}), Cells({0, 0, 0})), Cells({1, 0, 0}), 1.0e-5);
}

TEST_F(SolveSystemCheck, BroydenTridiagonal) {
    constexpr int n = 6;
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        for (int i = 1; i <= n; ++i)
            values(i) = (3.0 - 2.0 * x(i)) * x(i) - (i > 1 ? x(i - 1) : 0) -
                        (i < n ? 2.0 * x(i + 1) : 0) + 1.0;
    };
    const Array1<f64> x = Solve(g, Cells({-1, -1, -1, -1, -1, -1}), Cells({0, 0, 0, 0, 0, 0}));
    Array1<f64> residuals(1, n);
    g(x, residuals);
    ExpectNear(residuals, Array1<f64>(1, n), 1.0e-5);
}

// Mean and standard deviation from two quantiles of a normal distribution, with the probabilities
// in 32 bits as the boundaries have them: P(X <= 1) = Phi(-0.5), P(X <= 5) = Phi(1.5) for 2 and 2.
TEST_F(SolveSystemCheck, EquationsIn32Bits) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        const auto cdf = [&x](f64 q) {
            return static_cast<f32>(0.5 * std::erfc((x(1) - q) / x(2) / std::sqrt(2.0)));
        };
        values(1) = cdf(1.0);
        values(2) = cdf(5.0);
    };
    ExpectNear(
        Solve(g, Cells({2.5, 1}), Cells({0.308537538725987, 0.933192798731142}), 1.0e-5, 5.0),
        Cells({2, 2}), 1.0e-4);
    EXPECT_LT(Evaluations, 60);
}

TEST_F(SolveSystemCheck, ATrialBeyondALimitIsSetToIt) {
    f64 highest = 0;
    const auto g = [&highest](const Array1<f64>& x, Array1<f64>& values) {
        highest = std::fmax(highest, x(1));
        values(1) = x(1) - 7.0;
    };
    EXPECT_EQ(Solve(g, Cells({1}), Cells({0}), 0.0, 4.0)(1), 4.0);
    EXPECT_LE(highest, 4.04); // the derivative looks a hundredth beyond
}

TEST_F(SolveSystemCheck, WithoutASolutionItEndsNearTheLeastSquares) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) { values(1) = x(1) * x(1) + 1.0; };
    EXPECT_NEAR(Solve(g, Cells({2}), Cells({0}))(1), 0.0, 0.01);
}

// A start that solves the system: the start, two evaluations per unknown, and one trial, which is
// no better and within the tolerance.
TEST_F(SolveSystemCheck, ASolvedSystemEndsAtOnce) {
    EXPECT_EQ(Solve(Rosenbrock, Cells({1, 1}), Cells({0, 0})), Cells({1, 1}));
    EXPECT_EQ(Evaluations, 1 + 4 + 1);
}

TEST_F(SolveSystemCheck, AnUnknownWithoutInfluenceEndsIt) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        values(1) = x(1) - 2.0;
        values(2) = x(1) + 1.0;
    };
    EXPECT_EQ(Solve(g, Cells({5, 6}), Cells({0, 0})), Cells({5, 6}));
    EXPECT_EQ(Evaluations, 1 + 4);
}

// Two equations that say the same: the scaled matrix is singular, and the damping alone decides.
TEST_F(SolveSystemCheck, ASingularSystemIsSolved) {
    const auto g = [](const Array1<f64>& x, Array1<f64>& values) {
        values(1) = x(1) + x(2);
        values(2) = 2.0 * x(1) + 2.0 * x(2);
    };
    const Array1<f64> x = Solve(g, Cells({1, 5}), Cells({3, 6}));
    EXPECT_NEAR(x(1) + x(2), 3.0, 1.0e-5);
}

// A single equation g(x) = x: with the damping lambda a step leaves lambda/(1 + lambda) of the
// distance, and lambda goes from 0.001 to a hundredth of itself with each step that helps (D. W.
// Marquardt, Journal of the Society for Industrial and Applied Mathematics 11, 1963, 431-441).
TEST_F(SolveSystemCheck, TheDampingFallsToAHundredthWithEachStepThatHelps) {
    std::vector<f64> looks;
    const auto g = [&looks](const Array1<f64>& x, Array1<f64>& values) {
        looks.push_back(x(1));
        values(1) = x(1);
    };
    Solve(g, Cells({1000}), Cells({0}), -far, far, 3);
    // The start; above, below and the trial of each iteration.
    ASSERT_EQ(looks.size(), 1U + 3 * 3);
    f64 damping = 0.001;
    f64 distance = 1000;
    for (const std::size_t trial : {3U, 6U, 9U}) {
        distance *= damping / (1 + damping);
        EXPECT_NEAR(looks[trial] / distance, 1, 1e-4) << trial;
        damping /= 100;
    }
}

// The same where no trial helps: each is made with ten times the damping of the one before, until
// it is within the tolerance of the start.
TEST_F(SolveSystemCheck, TheDampingGrowsTenfoldWithEachStepThatDoesNotHelp) {
    std::vector<f64> looks;
    const auto g = [&looks](const Array1<f64>& x, Array1<f64>& values) {
        constexpr std::size_t startAndDerivative = 3;
        values(1) = looks.size() < startAndDerivative ? x(1) : 5;
        looks.push_back(x(1));
    };
    EXPECT_EQ(Solve(g, Cells({1}), Cells({0})), Cells({1}));
    const std::vector<f64> dampings{1e-3, 1e-2, 0.1, 1, 10, 100, 1000, 1e4, 1e5};
    ASSERT_EQ(looks.size(), 3 + dampings.size());
    for (std::size_t k = 0; k < dampings.size(); ++k)
        EXPECT_NEAR(looks[3 + k], dampings[k] / (1 + dampings[k]), 1e-7) << dampings[k];
}

TEST_F(SolveSystemCheck, TheIterationLimitHolds) {
    EXPECT_EQ(Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0}), -far, far, 0), Cells({-1.2, 1}));
    EXPECT_EQ(Evaluations, 1);
    const Array1<f64> one = Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0}), -far, far, 1);
    const Array1<f64> ten = Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0}), -far, far, 10);
    EXPECT_NE(one, Cells({-1.2, 1}));
    EXPECT_NE(one, ten);
}

// Cancelled at the first evaluation, in the derivatives and at a trial: not one more, and the best
// vector so far.
TEST_F(SolveSystemCheck, CancelledEndsItAtOnce) {
    for (const int after : {1, 2, 5, 6}) {
        Cancelled = False;
        Evaluations = 0;
        CancelAfter = after;
        EXPECT_EQ(Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0})), Cells({-1.2, 1})) << after;
        EXPECT_EQ(Evaluations, after);
    }
    CancelAfter = 12;
    Cancelled = False;
    Evaluations = 0;
    EXPECT_NE(Solve(Rosenbrock, Cells({-1.2, 1}), Cells({0, 0})), Cells({-1.2, 1}));
    EXPECT_EQ(Evaluations, 12);
}

} // namespace
} // namespace quorvanta
