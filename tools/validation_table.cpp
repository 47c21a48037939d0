// Writes docs/validation.md: every reference case of checks/data/validation, the exact value, the
// program's solution, and how far they are apart.
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "support/number.h"
#include "support/scripted_platform.h"
#include "support/validation.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
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

void WriteFile(const std::filesystem::path& path, std::ostream& out) {
    out << "\n## " << TitleOf(path) << "\n\n" << SourceOf(path) << "\n";
    out << "| Analysis | Values | Solved for | Exact | Quorvanta | Deviation |\n";
    out << "|---|---|---|---|---|---|\n";
    for (const checks::ValidationCase& row : checks::ReadValidation(path.string())) {
        const f64 solution = checks::SolveCase(row);
        std::string values;
        for (const auto& [kind, value] : row.Values)
            values += (values.empty() ? "" : "; ") + StripAmpersand(ParLabel(kind)) + " " + value;
        out << "| " << ParListName << " | " << values << " | "
            << StripAmpersand(ParLabel(row.UnknownKind)) << " | " << Rounded(row.Exact) << " | "
            << Rounded(solution) << " | " << Rounded(solution - row.Exact) << " |\n";
    }
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
           "distributions account for the deviations\n(see accuracy.md). Written by "
           "`validation_table`.\n";
    for (const auto& file : files)
        WriteFile(file, out);
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
