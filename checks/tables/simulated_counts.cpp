// Writes checks/data/simulated_counts.tsv: what every simulated statistic counts from one seed. Run
// it only after a change that was meant to change draws or statistics, and look at each row that it
// changes:
//   cmake --build build/release --target simulated_counts && build/release/checks/simulated_counts
#include "core/analysis.h"
#include "support/scripted_platform.h"
#include "support/simulatedcounts.h"

#include <fstream>
#include <iostream>

int main() {
    using namespace quorvanta;
    ScriptedPlatform platform;
    Main();
    std::ofstream out(CHECK_DATA_DIR "/simulated_counts.tsv");
    out << "Choice\tCounts\n";
    for (const checks::CountedRow& row : checks::SimulatedCounts())
        out << row.Choice << '\t' << row.Counts << '\n';
    out.close();
    if (!out) {
        std::cerr << "can't write simulated_counts.tsv\n";
        return 1;
    }
    return 0;
}
