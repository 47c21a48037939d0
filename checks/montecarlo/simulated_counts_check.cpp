// Not a question of right or wrong but of sameness: a seed gives the same counts with every
// compiler, in every build and on every processor, and a change that should change no count must
// not. Written by checks/tables/simulated_counts.
#include "montecarlo/simulation.h"
#include "support/analysis_fixture.h"
#include "support/simulatedcounts.h"
#include "support/tsv.h"

#include <algorithm>
#include <map>
#include <string>

namespace quorvanta::checks {
namespace {

TEST(SimulatedCounts, AreTheSameInEveryBuild) {
    std::map<std::string, std::string> expected;
    for (const auto& row : ReadTsv("simulated_counts.tsv"))
        expected[row[0]] = row[1];
    ScriptedPlatform platform;
    Main();
    const auto rows = SimulatedCounts();
    SimNo = 0; // as the next check finds it in a program just started
    std::ptrdiff_t run = 0;
    for (const CountedRow& row : rows) {
        const auto known = expected.find(row.Choice);
        ASSERT_NE(known, expected.end()) << row.Choice << ": run simulated_counts for a new one";
        EXPECT_EQ(row.Counts, known->second) << row.Choice;
        run += row.Counts == "-" ? 0 : 1;
    }
    EXPECT_EQ(rows.size(), expected.size());
    EXPECT_GT(run, 250);
}

} // namespace
} // namespace quorvanta::checks
