// Not a question of right or wrong but of sameness: every build, debug or release, with GCC or
// Clang, must solve every analysis with every choice of its options to these very bits, and a
// change that should change no result must not. Written by
// checks/tables/solution_bits.
#include "support/analysis_fixture.h"
#include "support/solutions.h"
#include "support/statistics.h"
#include "support/tsv.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

std::ptrdiff_t NumberSolved(const std::string& cell) {
    return std::count(cell.begin(), cell.end(), ' ') + 1 -
           std::count(cell.begin(), cell.end(), '-');
}

TEST(Solutions, AreTheSameBitsInEveryBuild) {
    std::map<std::string, std::vector<std::string>> expected;
    for (auto& row : ReadTsv("solution_bits_all.tsv"))
        expected[row[0]] = {row.begin() + 1, row.end()};
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    const std::vector<std::string> columns = SolutionColumns();
    std::size_t rows = 0;
    std::ptrdiff_t solved = 0;
    int differing = 0;
    constexpr std::size_t step = StepOfCases(10);
    for (const AnalysisChoice& analysis : ServedAnalyses())
        for (const SolutionRow& row : Solutions(analysis, step)) {
            ++rows;
            const auto known = expected.find(row.Choice);
            ASSERT_NE(known, expected.end()) << row.Choice;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                solved += NumberSolved(row.Cells[i]);
                constexpr int enough = 20;
                if (row.Cells[i] != known->second[i] && ++differing <= enough)
                    ADD_FAILURE() << row.Choice << ", values " << columns[i] << "\nare    "
                                  << row.Cells[i] << "\nshould " << known->second[i];
            }
        }
    EXPECT_EQ(differing, 0);
    EXPECT_EQ(rows == expected.size(), step == 1) << rows;
    EXPECT_GT(solved, static_cast<std::ptrdiff_t>(50000 / step));
}

// Every analysis, at the limits of its searches: with every choice where the whole is wanted, else
// with one of four, and not the same ones in each.
TEST(Solutions, NoFaultAtTheLimitsWhateverTheSizeOfABase) {
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    const std::size_t step = WholeStatistics() ? 1 : 4 * StepOfCases(5);
    std::size_t next = 0;
    for (const AnalysisChoice& analysis : ServedAnalyses())
        for (const AnalysisChoice& choice : AllChoices(analysis))
            if (next++ % step == 0)
                ExpectSafeWithAnyBase(choice, {});
}

// A solution depends on the other values alone: not on what stood in the box of the unknown before,
// be it the dash of a search that found nothing.
TEST(Solutions, DontDependOnWhatTheUnknownWas) {
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    const auto solution = [](const AnalysisChoice& choice, i16 parNo, const char* text) {
        Start(choice, {});
        if (text != nullptr)
            ParText(ParKind(parNo)) = text;
        Calculated = False;
        SolveFor(parNo);
        return HasValue(ParText(ParKind(parNo))) ? ParValue(parNo) : NoValue;
    };
    constexpr std::size_t step = 4 * StepOfCases(5);
    std::size_t next = 0;
    for (const AnalysisChoice& analysis : ServedAnalyses())
        for (const AnalysisChoice& choice : AllChoices(analysis)) {
            if (next++ % step != 0)
                continue;
            Start(choice, {});
            const i16 last = NoOfPar;
            for (i16 i = 0; i <= last; ++i) {
                SCOPED_TRACE(Describe(choice) + ", parameter " + std::to_string(i));
                f64 found = NoValue;
                ASSERT_NO_THROW(found = solution(choice, i, nullptr));
                f64 fromDash = NoValue;
                ASSERT_NO_THROW(fromDash = solution(choice, i, "-"));
                EXPECT_EQ(fromDash, found);
            }
        }
}

// The figures are defined by where they round, and a compiler that fuses a multiplication with an
// addition leaves a rounding out: here the rounded product is 1 and the exact one 1 - 2^-60.
TEST(Solutions, AreNotContracted) {
    const volatile f64 a = 1 + 0x1p-30;
    const volatile f64 b = 1 - 0x1p-30;
    const f64 x = a;
    const f64 y = b;
    EXPECT_EQ(x * y - 1, 0);
}

} // namespace
} // namespace quorvanta::checks
