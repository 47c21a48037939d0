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
#include "output/statement_simulation.h"
#include "support/number.h"
#include "support/scripted_platform.h"
#include "support/validation.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace quorvanta;

std::string Rounded(f64 value) {
    return checks::NumberText(value, 6);
}

// The comment lines at the head of a validation file: where its values come from.
std::string SourceOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::string source;
    std::string line;
    while (std::getline(file, line) && line.rfind('#', 0) == 0)
        source += line.substr(1) + "\n";
    return source;
}

// "proportions_exact" in words.
std::string TitleOf(const std::filesystem::path& path) {
    std::string title = path.stem().string();
    title.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(title.front())));
    if (const std::size_t at = title.find('_'); at != std::string::npos)
        title.replace(at, 1, ", ");
    return title;
}

// "Power 0.8; Standard Deviation 1", of the analysis in the state.
std::string ValuesOf(const checks::CaseWithValues& row) {
    std::string values;
    for (const auto& [kind, value] : row.Values)
        values += (values.empty() ? "" : "; ") + StripAmpersand(ParLabel(kind)) + " " + value;
    return values;
}

void WriteFile(const std::filesystem::path& path, std::ostream& out) {
    out << "\n## " << TitleOf(path) << "\n\n" << SourceOf(path) << "\n";
    out << "| Analysis | Values | Solved for | Exact | Quorvanta | Deviation |\n";
    out << "|---|---|---|---|---|---|\n";
    for (const checks::ValidationCase& row : checks::ReadValidation(path.string())) {
        const f64 solution = checks::SolveCase(row);
        out << "| " << ParListName << " | " << ValuesOf(row) << " | "
            << StripAmpersand(ParLabel(row.UnknownKind)) << " | " << Rounded(row.Exact) << " | "
            << Rounded(solution) << " | " << Rounded(solution - row.Exact) << " |\n";
    }
}

// --- Simulations ---------------------------------------------------------------------------------

constexpr i32 studies = 100000;

// What a simulated analysis should come to, column by column of its window: the rates that are
// known.
struct KnownRates {
    checks::CaseWithValues Analysis;
    std::map<i16, f64> Rates;
};

bool IsSameAnalysis(const checks::CaseWithValues& a, const checks::CaseWithValues& b) {
    const auto key = [](const checks::CaseWithValues& row) {
        return std::tie(row.Analysis, row.NoOfSamples, row.NoOfTails, row.Left, row.Checks,
                        row.Groups, row.Values);
    };
    return key(a) == key(b);
}

std::vector<KnownRates> ReadRates(const std::filesystem::path& path) {
    std::vector<KnownRates> known;
    if (path.filename() == "parametric.tsv") {
        for (const checks::SimulationCase& row : checks::ReadSimulationCases(path.string()))
            known.push_back({row, {{i16{0}, row.Size}, {i16{1}, row.Power}}});
        return known;
    }
    for (const checks::ValidationCase& row : checks::ReadValidation(path.string())) {
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
    out << "\n## " << title << "\n\n" << SourceOf(path) << "\n";
    out << "| Analysis | Values | Estimated | Known | Simulated | Deviation | Standard error |\n";
    out << "|---|---|---|---|---|---|---|\n";
    for (const KnownRates& known : ReadRates(path)) {
        // An analysis of a distribution starts as the last one was left.
        ParListNo = known.Analysis.ParListNo;
        ProcedureNo = known.Analysis.ProcedureNo;
        checks::SetUpWithValues(known.Analysis);
        MaxNoOfSimText = std::to_string(studies);
        SeedText = "20261122";
        SimStart();
        if (SimNo != studies)
            throw std::runtime_error("no simulation of " + checks::Describe(known.Analysis));
        for (const auto& [column, rate] : known.Rates) {
            const f64 share = static_cast<f64>(CountOf(column)) / studies;
            out << "| " << ParListName << " | " << ValuesOf(known.Analysis) << " | "
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

void WriteTables(std::ostream& out) {
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    std::vector<std::filesystem::path> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(SOURCE_DIR "/checks/data/validation"))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    out << "# Validation\n\n"
           "Solutions of the program beside exact values of other origin. Sizes are compared "
           "before they are\nrounded up. The program's approximations of the normal and t "
           "distributions account for the deviations\n(see accuracy.md). Simulated "
           "levels and powers are shares of 100,000 studies from the seed 20261122,\nbeside those "
           "that are exact or that another program has simulated. Written by "
           "`validation_table`.\n";
    for (const auto& file : files)
        WriteFile(file, out);
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
