#include "validation/run.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "core/general.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "numeric/rounding.h"
#include "validation/cases.h"
#include "validation/cells.h"
#include "validation/functions.h"
#include "validation/number.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quorvanta::validation {

namespace {

constexpr f64 noNumber = std::numeric_limits<f64>::quiet_NaN();

constexpr std::string_view caseFolder = "validation/";

// "validation/means.tsv" -> "means".
std::string StemOf(const std::string& name) {
    const std::size_t folder = name.find('/');
    const std::string file = folder == std::string::npos ? name : name.substr(folder + 1);
    return file.substr(0, file.rfind('.'));
}

std::string CaseName(const std::string& stem, std::size_t row) {
    return stem + " " + std::to_string(row);
}

f64 OrNoNumber(f64 value) {
    return value == f64{NoValue} ? noNumber : value;
}

// --- Analyses ------------------------------------------------------------------------------------

std::string QuestionOf(const ValidationCase& row) {
    return StripAmpersand(ParLabel(row.UnknownKind)) + ": " + Describe(row);
}

Finding SolutionOf(const ValidationCase& row) {
    const f64 solution = SolveCase(row);
    return {QuestionOf(row), row.Exact, OrNoNumber(solution), row.Tolerance};
}

// The text that is shown, which is a whole number.
Finding WholeSizeOf(const ValidationCase& row) {
    SolveCase(row);
    const std::string& shown = ParText(row.UnknownKind);
    return {QuestionOf(row), row.Exact, shown == "-" ? noNumber : ParseNumber(shown),
            row.Tolerance};
}

std::vector<CaseSection> ReadAnalyses(const DataFile& file,
                                      Finding (*answer)(const ValidationCase&)) {
    const std::string stem = StemOf(file.Name);
    CaseSection section{TitleOf(stem), SourceOf(file.Bytes), {}};
    std::istringstream text(file.Bytes);
    for (const ValidationCase& row : ReadValidation(text))
        section.Cases.push_back(
            {CaseName(stem, section.Cases.size() + 1), [row, answer] { return answer(row); }});
    return {section};
}

std::vector<CaseSection> ReadSolutions(const DataFile& file) {
    return ReadAnalyses(file, SolutionOf);
}

std::vector<CaseSection> ReadWholeSizes(const DataFile& file) {
    return ReadAnalyses(file, WholeSizeOf);
}

// --- Functions -----------------------------------------------------------------------------------

Finding ValueOf(const ReferenceRow& row) {
    std::string question = row.Function + "(";
    for (const f64 argument : row.Arguments)
        question += (question.back() == '(' ? "" : ", ") + NumberText(argument, 9);
    question += ")";
    return {question, row.Value, ReferenceFunctions().at(row.Function)(row.Arguments),
            row.Tolerance};
}

std::vector<CaseSection> ReadFunctions(const DataFile& file) {
    std::istringstream text(file.Bytes);
    std::vector<CaseSection> sections;
    std::size_t rows = 0;
    for (const ReferenceSection& section : ReadReferenceTable(text)) {
        if (!ReferenceFunctions().contains(section.Function))
            throw std::runtime_error("no function " + section.Function);
        CaseSection& cases = sections.emplace_back();
        cases.Title = section.Function + ", " + section.Range;
        cases.Source = SourceOf(file.Bytes) + "\nAllowed: " + section.Bound + ".";
        for (const ReferenceRow& row : section.Rows)
            cases.Cases.push_back(
                {CaseName(StemOf(file.Name), ++rows), [row] { return ValueOf(row); }});
    }
    return sections;
}

// --- Critical values of multiple comparisons -----------------------------------------------------

// The cells of a table by the names in its first line.
using Cells = std::map<std::string, std::string>;

f32 Single(const Cells& row, const std::string& name) {
    return quorvanta::Single(ParseNumber(row.at(name)));
}
i16 Whole(const Cells& row, const std::string& name) {
    return ToI16(ParseNumber(row.at(name)));
}

std::vector<Cells> ReadTable(const DataFile& file) {
    std::istringstream text(file.Bytes);
    std::vector<std::string> names;
    std::vector<Cells> rows;
    for (std::string line; std::getline(text, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        const std::vector<std::string> cells = CellsOf(line);
        if (names.empty()) {
            names = cells;
            continue;
        }
        if (cells.size() != names.size())
            throw std::runtime_error(file.Name + ": " + line);
        Cells& row = rows.emplace_back();
        for (std::size_t i = 0; i < cells.size(); ++i)
            row[names[i]] = cells[i];
    }
    return rows;
}

std::string InWords(const Cells& row) {
    std::string words;
    for (const auto& [name, cell] : row)
        if (name != "Exact" && name != "Tolerance")
            words += (words.empty() ? "" : "; ") + name + " " + cell;
    return words;
}

Finding QuantileOf(const Cells& row) {
    IsTest = True;
    KnownVariance = false;
    SizeRatio = Single(row, "Ratio");
    FamilyGroups = Single(row, "Groups");
    const f32 found =
        QuantileIntegral(Single(row, "Df"), Single(row, "Alpha"), Whole(row, "Function"));
    return {"Critical value of intervals: " + InWords(row), ParseNumber(row.at("Exact")),
            f64{found}, ParseNumber(row.at("Tolerance"))};
}

Finding AdjustedValueOf(const Cells& row) {
    IsTest = True;
    SizeRatio = 1;
    TestNo = Whole(row, "Test");
    NoOfTails = Whole(row, "Tails");
    FamilyGroups = Single(row, "Groups");
    KnownVariance = Whole(row, "Known") == 1;
    WeightedLevel = Single(row, "Weighted");
    const f32 level = quorvanta::Single(1 - ParseNumber(row.at("Error")));
    const f32 found = McCritValue(Whole(row, "Rank"), Whole(row, "Family"), Single(row, "Df"),
                                  level, Whole(row, "Method"));
    return {"Critical value of a test: " + InWords(row), ParseNumber(row.at("Exact")), f64{found},
            ParseNumber(row.at("Tolerance"))};
}

std::vector<CaseSection> ReadCriticalValues(const DataFile& file, const std::string& stem,
                                            Finding (*answer)(const Cells&)) {
    CaseSection section{TitleOf(stem), SourceOf(file.Bytes), {}};
    for (const Cells& row : ReadTable(file))
        section.Cases.push_back(
            {CaseName(stem, section.Cases.size() + 1), [row, answer] { return answer(row); }});
    return {section};
}

std::vector<CaseSection> ReadQuantiles(const DataFile& file) {
    return ReadCriticalValues(file, "quantiles_of_comparisons", QuantileOf);
}

std::vector<CaseSection> ReadAdjustedValues(const DataFile& file) {
    return ReadCriticalValues(file, StemOf(file.Name), AdjustedValueOf);
}

// --- Files ---------------------------------------------------------------------------------------

using Reader = std::vector<CaseSection> (*)(const DataFile&);

// Null for a name that is not known.
Reader ReaderOf(const std::string& name) {
    static const std::map<std::string, Reader> readers{{"adjusted_values.tsv", ReadAdjustedValues},
                                                       {"exact.csv", ReadFunctions},
                                                       {"multiple_comparisons.tsv", ReadQuantiles},
                                                       {"whole_sizes.tsv", ReadWholeSizes}};
    if (name.starts_with(caseFolder) && name.ends_with(".tsv"))
        return ReadSolutions;
    const auto reader = readers.find(name);
    return reader == readers.end() ? nullptr : reader->second;
}

Finding Answer(const Case& each) {
    ClearFloatFaults();
    try {
        return each.Compute();
    } catch (const std::exception& fault) {
        return {"", noNumber, noNumber, 0, fault.what()};
    }
}

} // namespace

bool IsDataFile(const std::string& name) {
    return ReaderOf(name) != nullptr;
}

Verdict Finding::Judgement() const {
    if (std::isinf(Allowed) && std::isfinite(Found))
        return Verdict::NotBounded;
    // Also false for what is no number.
    return std::fabs(Deviation()) <= Allowed ? Verdict::Pass : Verdict::Fail;
}

std::vector<CaseSection> ReadSections(std::vector<DataFile> files) {
    std::stable_partition(files.begin(), files.end(),
                          [](const DataFile& file) { return file.Name.starts_with(caseFolder); });
    std::vector<CaseSection> sections;
    for (const DataFile& file : files) {
        const Reader reader = ReaderOf(file.Name);
        if (reader == nullptr)
            throw std::runtime_error("no such data: " + file.Name);
        try {
            std::ranges::move(reader(file), std::back_inserter(sections));
        } catch (const std::exception& problem) {
            throw std::runtime_error(file.Name + ": " + problem.what());
        }
    }
    return sections;
}

std::size_t CountCases(const std::vector<CaseSection>& sections) {
    return std::accumulate(
        sections.begin(), sections.end(), std::size_t{0},
        [](std::size_t sum, const CaseSection& section) { return sum + section.Cases.size(); });
}

std::size_t ResultSection::Count(Verdict verdict) const {
    return static_cast<std::size_t>(std::ranges::count(
        Results, verdict, [](const Result& result) { return result.Judgement(); }));
}

std::optional<std::vector<ResultSection>> Compute(const std::vector<CaseSection>& sections,
                                                  const Progress& progress) {
    std::vector<ResultSection> results;
    std::size_t done = 0;
    for (const CaseSection& section : sections) {
        Main();
        FileCommand(CalculationWindow);
        ResultSection& found =
            results.emplace_back(ResultSection{section.Title, section.Source, {}});
        for (const Case& each : section.Cases) {
            found.Results.push_back({Answer(each), each.Name});
            if (!progress(++done))
                return std::nullopt;
        }
    }
    return results;
}

std::string TitleOf(const std::string& stem) {
    static const std::map<std::string, std::string> inWords{
        {"anova", "Analysis of variance"},     {"cox", "Cox regression"},
        {"few_df", "Few degrees of freedom"},  {"gof", "Goodness of fit"},
        {"kolsmi", "Kolmogorov-Smirnov test"}, {"lifetable", "Life tables"},
        {"logrank", "Log-rank tests"},         {"rank", "Rank tests"},
        {"repeated", "Repeated measures"},     {"tables", "Contingency tables"}};
    // "proportions_exact": a subject, and what is said of it.
    std::string subject = stem;
    std::string remark;
    for (const std::string_view word :
         {"_exact", "_paired", "_published", "_simulated", "_simulation"})
        if (stem.ends_with(word)) {
            subject.resize(stem.size() - word.size());
            remark = ", " + std::string(word.substr(1));
        }
    const auto words = inWords.find(subject);
    std::string title = words == inWords.end() ? subject : words->second;
    if (!title.empty())
        title.front() = UpperCase(title.front());
    std::ranges::replace(title, '_', ' ');
    return title + remark;
}

std::string SourceOf(const std::string& bytes) {
    std::istringstream text(bytes);
    std::string source;
    for (std::string line; std::getline(text, line) && line.starts_with('#');)
        source += (source.empty() ? "" : "\n") +
                  line.substr(std::min(line.find_first_not_of("# "), line.size()));
    return source;
}

} // namespace quorvanta::validation
