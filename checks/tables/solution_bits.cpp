// Writes checks/data/solution_bits_all.tsv: the solutions of every analysis with every choice of
// its options, to the last bit. Run it only after a change that was meant to change results, and
// look at each row that it changes:
//   cmake --build build/release --target solution_bits && build/release/checks/solution_bits
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/catalogue.h"
#include "support/scripted_platform.h"
#include "support/solutions.h"

#include <fstream>
#include <iostream>

int main() {
    using namespace quorvanta;
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    std::ofstream out(CHECK_DATA_DIR "/solution_bits_all.tsv");
    out << "Choice";
    for (const std::string& column : checks::SolutionColumns())
        out << '\t' << column;
    out << '\n';
    for (const checks::AnalysisChoice& analysis : checks::ServedAnalyses())
        for (const checks::SolutionRow& row : checks::Solutions(analysis)) {
            out << row.Choice;
            for (const std::string& cell : row.Cells)
                out << '\t' << cell;
            out << '\n';
        }
    out.close();
    if (!out) {
        std::cerr << "can't write solution_bits_all.tsv\n";
        return 1;
    }
    return 0;
}
