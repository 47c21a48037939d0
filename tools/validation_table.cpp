// Writes docs/validation.md: every reference case of checks/data/validation, the exact value, the
// program's solution, and how far they are apart; and every case of a simulation, with the level
// and the power that another program has for it. That takes some minutes: each is simulated whole.
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "montecarlo/simulation.h"
#include "output/format.h"
#include "output/formatpar.h"
#include "output/statement_simulation.h"
#include "validation/cases.h"
#include "validation/number.h"
#include "validation/run.h"
#include "validation/silentplatform.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace quorvanta;

std::string Rounded(f64 value) {
    return validation::NumberText(value, 6);
}

std::string SourceOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return validation::SourceOf({std::istreambuf_iterator<char>(file), {}});
}

// Solved sizes beside the exact ones, both as the whole numbers that are shown.
class WholeSizes {
  public:
    void Meet(i16 kind, f64 exact, f64 solution) {
        if (!IsCountKind(kind) || solution == NoValue)
            return;
        const f64 difference = WholeCount(kind, solution) - WholeCount(kind, exact);
        ++sizes_;
        larger_ += difference > 0 ? 1 : 0;
        smaller_ += difference < 0 ? 1 : 0;
        largest_ = std::max(largest_, std::fabs(difference));
        largestShare_ = std::max(largestShare_, std::fabs(difference) / WholeCount(kind, exact));
    }

    void Add(const WholeSizes& other) {
        sizes_ += other.sizes_;
        larger_ += other.larger_;
        smaller_ += other.smaller_;
        largest_ = std::max(largest_, other.largest_);
        largestShare_ = std::max(largestShare_, other.largestShare_);
    }

    void Write(const std::string& title, std::ostream& out) const {
        if (sizes_ == 0)
            return;
        const int differ = larger_ + smaller_;
        out << "| " << title << " | " << sizes_ << " | " << differ << " | "
            << Format(100.0 * differ / sizes_, "0.0") << " % | " << larger_ << " | " << smaller_
            << " | " << Format(largest_, "0") << " | " << Format(100 * largestShare_, "0.0")
            << " % |\n";
    }

  private:
    int sizes_ = 0;
    int larger_ = 0;
    int smaller_ = 0;
    f64 largest_ = 0;
    f64 largestShare_ = 0;
};

// Values that were simulated, or printed in round numbers, are not the exact ones.
bool IsExact(const std::filesystem::path& path) {
    const std::string stem = path.stem().string();
    return !stem.ends_with("_simulated") && !stem.ends_with("_simulation") &&
           !stem.ends_with("_published");
}

void WriteFile(const std::filesystem::path& path, WholeSizes& sizes, std::ostream& out) {
    out << "\n## " << validation::TitleOf(path.stem().string()) << "\n\n"
        << SourceOf(path) << "\n\n";
    out << "| Analysis | Values | Solved for | Exact | Quorvanta | Deviation |\n";
    out << "|---|---|---|---|---|---|\n";
    for (const validation::ValidationCase& row : validation::ReadValidation(path.string())) {
        const f64 solution = validation::SolveCase(row);
        sizes.Meet(row.UnknownKind, row.Exact, solution);
        out << "| " << ParListName << " | " << validation::ValuesOf(row) << " | "
            << StripAmpersand(ParLabel(row.UnknownKind)) << " | " << Rounded(row.Exact) << " | "
            << Rounded(solution) << " | " << Rounded(solution - row.Exact) << " |\n";
    }
}

// --- Simulations ---------------------------------------------------------------------------------

constexpr i32 studies = 100000;

// What a simulated analysis should come to, column by column of its window: the rates that are
// known.
struct KnownRates {
    validation::CaseWithValues Analysis;
    std::map<i16, f64> Rates;
};

bool IsSameAnalysis(const validation::CaseWithValues& a, const validation::CaseWithValues& b) {
    const auto key = [](const validation::CaseWithValues& row) {
        return std::tie(row.Analysis, row.NoOfSamples, row.NoOfTails, row.Left, row.Checks,
                        row.Groups, row.Values);
    };
    return key(a) == key(b);
}

std::vector<KnownRates> ReadRates(const std::filesystem::path& path) {
    std::vector<KnownRates> known;
    if (path.filename() == "parametric.tsv") {
        for (const validation::SimulationCase& row : validation::ReadSimulationCases(path.string()))
            known.push_back({row, {{i16{0}, row.Size}, {i16{1}, row.Power}}});
        return known;
    }
    for (const validation::ValidationCase& row : validation::ReadValidation(path.string())) {
        if (known.empty() || !IsSameAnalysis(known.back().Analysis, row))
            known.push_back({row, {}});
        known.back().Rates[row.UnknownKind] = row.Exact;
    }
    return known;
}

// Of the three columns of the window.
i32 CountOf(i16 column) {
    return column == 0 ? CountRejectH0(1) : column == 1 ? CountRejectH1(1) : CountAcceptH1(1);
}

std::string CaptionOf(i16 column) {
    const EstimateCaptions captions = CaptionsOfEstimates();
    return column == 0 ? captions.Sign : column == 1 ? captions.Power : captions.PrAccept;
}

std::string Decimals(f64 value) {
    return Format(value, "0.00000");
}

void WriteRates(const std::filesystem::path& path, const std::string& title, std::ostream& out) {
    out << "\n## " << title << "\n\n" << SourceOf(path) << "\n\n";
    out << "| Analysis | Values | Estimated | Known | Simulated | Deviation | Standard error |\n";
    out << "|---|---|---|---|---|---|---|\n";
    for (const KnownRates& known : ReadRates(path)) {
        // An analysis of a distribution starts as the last one was left.
        ParListNo = known.Analysis.ParListNo;
        ProcedureNo = known.Analysis.ProcedureNo;
        validation::SetUpWithValues(known.Analysis);
        MaxNoOfSimText = std::to_string(studies);
        SeedText = "20261122";
        SimStart();
        if (SimNo != studies)
            throw std::runtime_error("no simulation of " + validation::Describe(known.Analysis));
        for (const auto& [column, rate] : known.Rates) {
            const f64 share = static_cast<f64>(CountOf(column)) / studies;
            out << "| " << ParListName << " | " << validation::ValuesOf(known.Analysis) << " | "
                << CaptionOf(column) << " | " << Decimals(rate) << " | " << Decimals(share) << " | "
                << Decimals(share - rate) << " | "
                << Decimals(std::sqrt(share * (1 - share) / studies)) << " |\n";
        }
    }
}

void WriteSimulations(std::ostream& out) {
    FileCommand(SimulationWindow);
    const std::filesystem::path data(SOURCE_DIR "/checks/data");
    WriteRates(data / "simulation/parametric.tsv", "Simulated means, proportions and counts", out);
    WriteRates(data / "simulated.tsv", "Simulated estimates, variances and correlations", out);
    WriteRates(data / "simulated/rank.tsv", "Simulated rank tests", out);
    WriteRates(data / "simulated/survival.tsv", "Simulated survival", out);
}

std::vector<std::filesystem::path> ValidationFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(SOURCE_DIR "/checks/data/validation"))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void WriteTables(std::ostream& out) {
    validation::SilentPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    std::ostringstream tables;
    std::ostringstream sizes;
    WholeSizes allSizes;
    const auto write = [&](const std::filesystem::path& file) {
        WholeSizes own;
        WriteFile(file, own, tables);
        if (IsExact(file)) {
            own.Write(validation::TitleOf(file.stem().string()), sizes);
            allSizes.Add(own);
        }
    };
    for (const auto& file : ValidationFiles())
        write(file);
    out << "# Validation\n\n"
           "Solutions of the program beside exact values of other origin. Sizes are compared "
           "before they are\nrounded up. The program's approximations of the normal and t "
           "distributions account for the deviations\n(see accuracy.md). Simulated "
           "levels and powers are shares of 100,000 studies from the seed 20261122,\nbeside those "
           "that are exact or that another program has simulated. Written by "
           "`validation_table`.\n\n"
           "## Whole sizes\n\n"
           "A size goes into a protocol as a whole number. How many of the sizes and other counts "
           "solved below\n"
           "differ as whole numbers from the exact ones, and by how much at most. The exact "
           "solutions of most\n"
           "cases of conditional power and of multiple comparisons are whole numbers by "
           "construction, so that\n"
           "the smallest deviation upward counts there. Sizes of a handful to thirty, of which\n"
           "checks/data/whole_sizes.tsv has 1353, are all the exact ones.\n\n"
           "| Cases | Sizes | Differ | Share | Larger | Smaller | Largest difference | Of the "
           "size |\n|---|---|---|---|---|---|---|---|\n"
        << sizes.str();
    allSizes.Write("All", out);
    out << tables.str();
    WriteSimulations(out);
}

} // namespace

int main() {
    try {
        std::ofstream out(SOURCE_DIR "/docs/validation.md");
        WriteTables(out);
        return out ? 0 : 1;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}
