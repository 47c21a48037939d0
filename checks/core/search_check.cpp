// The root search on the driver's own equation: how often it evaluates, and that the same inputs
// give the same bits whatever the compiler and its options.
#include "core/dispatch.h"
#include "core/root.h"
#include "core/search.h"
#include "support/analysis_fixture.h"
#include "support/tsv.h"

#include <bit>
#include <cinttypes>
#include <cstdio>

namespace quorvanta::checks {
namespace {

class Search : public AnalysisFixture {
  protected:
    void OpenPlan(const std::string& level, const std::string& power, const std::string& effect,
                  const std::string& deviation) {
        OpenTest(0);
        Pick(1, 1);
        Pick(2, 2);
        AcceptOptions();
        Type(0, level);
        Type(1, power);
        Type(61, "0");
        Type(62, effect);
        Type(2, deviation);
        Type(4, "30");
        Type(5, "1");
    }

    // Searches for a kind within its limits; the number of evaluations.
    int Evaluations(i16 kind, f64& root) {
        UnknownParNo = PositionOf(kind);
        for (i16 i = 0; i <= NoOfPar; ++i)
            ParValue(i) = ReadNumber(ParText(ParKind(i)));
        f64 lower = ParMin(kind);
        f64 upper = ParMax(kind);
        SelSearchLimits(lower, upper);
        int evaluations = 0;
        const auto counted = [&evaluations](f64 x) {
            ++evaluations;
            return TryValue(x);
        };
        i16 iterations = 0;
        f64 residual = NoValue;
        FindRootOf(counted, lower, upper, RootTolerance, RootIterations, iterations, root,
                   residual);
        return evaluations;
    }
};

// The expected numbers come from checks/reference/search.py, which follows the formulas alone.
TEST_F(Search, TakesAsManyEvaluationsAsItsStepsSay) {
    f64 root = 0;
    OpenPlan("0.05", "0.80", "0.5", "1");
    EXPECT_EQ(Evaluations(4, root), 20);
    EXPECT_NEAR(root, 63.7860281, 1e-4);
    OpenPlan("0.01", "0.90", "1.2", "2");
    EXPECT_EQ(Evaluations(4, root), 21);
    EXPECT_NEAR(root, 84.3566736, 1e-4);
    OpenPlan("0.05", "0.80", "0.5", "1");
    EXPECT_EQ(Evaluations(62, root), 26);
    EXPECT_NEAR(root, 0.735759404, 1e-5);
}

std::string Bits(f64 value) {
    char text[20];
    std::snprintf(text, sizeof text, "%016" PRIx64, std::bit_cast<std::uint64_t>(value));
    return text;
}

// Not a question of right or wrong but of sameness: every build, debug or release, with GCC or
// Clang, must give these bits.
TEST_F(Search, EveryBuildGivesTheSameBits) {
    for (const auto& row : ReadTsv("solution_bits.tsv")) {
        OpenPlan(row[0], row[1], row[2], row[3]);
        const i16 kind = static_cast<i16>(std::stoi(row[4]));
        Solve(kind);
        EXPECT_EQ(Bits(ParValue(UnknownParNo)), row[5])
            << row[0] << " " << row[1] << " " << row[2] << " " << row[3] << " " << row[4];
    }
}

} // namespace
} // namespace quorvanta::checks
