// The validation that the program is delivered with: every row of the data becomes a case, a wrong
// value is found, and the report says all of it.
#include "support/scripted_platform.h"
#include "validation/report.h"
#include "validation/run.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>

namespace quorvanta::validation {
namespace {

constexpr const char* meansHead =
    "# Exact values computed by checks/reference/means.py (scipy).\n"
    "Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n";

// Power of the unpaired t-test, means 0 and 0.5, two groups of 64, two-sided: 0.8014596 by the
// noncentral t distribution (J. Cohen, Statistical Power Analysis, 1988, has 0.80 in table 2.3.5).
std::string TTest(const std::string& exact, const std::string& tolerance = "0.002") {
    return "menu 0\t2\t2\t0\t\t1=1,2=0\t0=0.05;62=0.5;61=0;2=1;4=64;37=64\t1\t" + exact + "\t" +
           tolerance + "\n";
}

DataFile Means(const std::string& rows) {
    return {"validation/means.tsv", meansHead + rows};
}

class ValidationRun : public testing::Test {
  protected:
    static std::vector<ResultSection> Run(const std::vector<DataFile>& files) {
        const auto results = Compute(ReadSections(files), [](std::size_t) { return true; });
        EXPECT_TRUE(results.has_value());
        return results.value_or(std::vector<ResultSection>{});
    }
    static Report ReportOf(const std::vector<DataFile>& files) {
        return {{{"Program", "A"}, {"Date", "B"}}, Run(files)};
    }

    ScriptedPlatform platform_;
};

std::vector<DataFile> AllData() {
    const std::filesystem::path root(CHECK_DATA_DIR);
    std::vector<DataFile> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string name = entry.path().lexically_relative(root).generic_string();
        if (!IsDataFile(name))
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        files.push_back({name, {std::istreambuf_iterator<char>(file), {}}});
    }
    return files;
}

// Lines that are neither comments nor headings; the first of a file with tabs names its columns.
std::size_t RowsOf(const DataFile& file) {
    std::istringstream text(file.Bytes);
    std::size_t rows = 0;
    for (std::string line; std::getline(text, line);)
        rows += line.empty() || line[0] == '#' || line[0] == '[' ? 0U : 1U;
    return file.Name.ends_with(".tsv") ? rows - 1 : rows;
}

TEST_F(ValidationRun, TakesEveryRowOfTheData) {
    const std::vector<DataFile> files = AllData();
    EXPECT_GE(files.size(), 41U);
    std::size_t rows = 0;
    for (const DataFile& file : files) {
        EXPECT_EQ(CountCases(ReadSections({file})), RowsOf(file)) << file.Name;
        rows += RowsOf(file);
    }
    EXPECT_EQ(CountCases(ReadSections(files)), rows);
    EXPECT_GT(rows, 14000U);
}

TEST_F(ValidationRun, GivesEachCaseANameOfItsOwn) {
    std::set<std::string> names;
    for (const CaseSection& section : ReadSections(AllData()))
        for (const Case& each : section.Cases)
            EXPECT_TRUE(names.insert(each.Name).second) << each.Name;
}

TEST_F(ValidationRun, KnowsItsFilesByTheirNames) {
    EXPECT_TRUE(IsDataFile("validation/means.tsv"));
    EXPECT_TRUE(IsDataFile("exact.csv"));
    EXPECT_FALSE(IsDataFile("validation/notes.txt"));
    EXPECT_FALSE(IsDataFile("solution_bits.tsv"));
    EXPECT_THROW(ReadSections({{"solution_bits.tsv", ""}}), std::runtime_error);
}

TEST_F(ValidationRun, FindsAWrongValue) {
    const auto sections = Run({Means(TTest("0.8014596") + TTest("0.8114596"))});
    ASSERT_EQ(sections.size(), 1U);
    ASSERT_EQ(sections[0].Results.size(), 2U);
    const Result& right = sections[0].Results[0];
    EXPECT_EQ(right.Judgement(), Verdict::Pass);
    EXPECT_EQ(right.Case, "means 1");
    EXPECT_NEAR(right.Found, 0.8014596, 0.002);
    EXPECT_EQ(right.Deviation(), right.Found - 0.8014596);
    EXPECT_EQ(sections[0].Results[1].Judgement(), Verdict::Fail);
    EXPECT_EQ(sections[0].Title, "Means");
    EXPECT_EQ(sections[0].Source, "Exact values computed by checks/reference/means.py (scipy).");
}

TEST_F(ValidationRun, AValueThatTheEngineDoesNotHaveFails) {
    // No size gives the power where there is no difference.
    const auto none = Run({Means("menu 0\t2\t2\t0\t\t1=1,2=0\t0=0.05;1=0.8;62=0;61=0;2=1\t4\t64\t"
                                 "1\n")});
    EXPECT_TRUE(std::isnan(none[0].Results[0].Found));
    EXPECT_EQ(none[0].Results[0].Judgement(), Verdict::Fail);
    // The analysis has no such parameter.
    const auto fault = Run({Means("menu 0\t2\t2\t0\t\t1=1,2=0\t0=0.05;99=3\t4\t64\t1\n")});
    EXPECT_FALSE(fault[0].Results[0].Fault.empty());
    EXPECT_EQ(fault[0].Results[0].Judgement(), Verdict::Fail);
}

TEST_F(ValidationRun, FunctionsHaveSectionsAndSomePointsNoBound) {
    const auto sections =
        Run({{"exact.csv", "# Of another origin.\n[NorCdf; x from 0; a formula]\n"
                           "NorCdf,0,0.5,1e-6\nNorCdf,1,0.9,1e-6\n"
                           "[TCdf; t = 0; not bounded: a floor]\nTCdf,0,10,0.5,inf\n"}});
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].Title, "NorCdf, x from 0");
    EXPECT_EQ(sections[0].Source, "Of another origin.\nAllowed: a formula.");
    EXPECT_EQ(sections[0].Results[0].Judgement(), Verdict::Pass);
    EXPECT_EQ(sections[0].Results[0].Question, "NorCdf(0)");
    EXPECT_EQ(sections[0].Results[1].Judgement(), Verdict::Fail);
    EXPECT_EQ(sections[1].Results[0].Judgement(), Verdict::NotBounded);
    Finding noNumber{"", 0.5, std::numeric_limits<f64>::quiet_NaN(),
                     std::numeric_limits<f64>::infinity()};
    EXPECT_EQ(noNumber.Judgement(), Verdict::Fail);
}

TEST_F(ValidationRun, WholeSizesAreThoseThatAreShown) {
    const std::string head = "Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\t"
                             "Exact\tTolerance\n";
    // 63.77 a group, shown as 64.
    const std::string row = "menu 0\t2\t2\t0\t\t1=1,2=2\t0=0.05;1=0.8;62=0.5;61=0;2=1;5=1\t4\t";
    const auto sections = Run({{"whole_sizes.tsv", head + row + "64\t0\n" + row + "63\t0\n"}});
    EXPECT_EQ(sections[0].Results[0].Found, 64);
    EXPECT_EQ(sections[0].Results[0].Judgement(), Verdict::Pass);
    EXPECT_EQ(sections[0].Results[1].Judgement(), Verdict::Fail);
}

TEST_F(ValidationRun, EndsWhenItIsAskedTo) {
    const auto sections = ReadSections({Means(TTest("0.8") + TTest("0.8") + TTest("0.8"))});
    std::vector<std::size_t> steps;
    const auto results = Compute(sections, [&steps](std::size_t done) {
        steps.push_back(done);
        return done < 2;
    });
    EXPECT_FALSE(results.has_value());
    EXPECT_EQ(steps, (std::vector<std::size_t>{1, 2}));
}

TEST_F(ValidationRun, RefusesDataThatItCantRead) {
    EXPECT_THROW(ReadSections({Means("menu 0\t2\n")}), std::runtime_error);
    EXPECT_THROW(ReadSections({{"exact.csv", "[NoSuch; x; y]\nNoSuch,1,2,3\n"}}),
                 std::runtime_error);
    EXPECT_THROW(ReadSections({{"multiple_comparisons.tsv", "Function\tDf\n3\n"}}),
                 std::runtime_error);
}

// --- The report ----------------------------------------------------------------------------------

std::size_t CountLines(const std::vector<Line>& document, Line::Kind kind) {
    return static_cast<std::size_t>(std::ranges::count(document, kind, &Line::What));
}

TEST_F(ValidationRun, TheReportHasALineForEachCase) {
    const Report report =
        ReportOf({Means(TTest("0.8014596") + TTest("0.9") + TTest("0.5", "inf"))});
    EXPECT_EQ(report.Count(), 3U);
    EXPECT_FALSE(report.Passes());
    EXPECT_EQ(Summary(report), "FAIL: 1 of 2 cases are within the deviation allowed. 1 are not. "
                               "1 more have no bound.");
    const std::vector<Line> document = Document(report);
    EXPECT_EQ(CountLines(document, Line::Kind::Case), 3U);
    EXPECT_EQ(CountLines(document, Line::Kind::Fact), 2U);

    const std::string text = PlainText(document);
    EXPECT_NE(text.find("FAIL: 1 of 2 cases"), std::string::npos);
    EXPECT_NE(text.find("\nProgram  A\nDate     B\n"), std::string::npos);
    EXPECT_NE(text.find("\nSection  Cases  Pass  Fail  No bound\nMeans    3      1     1     1\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\nmeans 2  FAIL      0.9"), std::string::npos) << text;
    EXPECT_NE(text.find("Power: Student's t-test, Unpaired"), std::string::npos) << text;
}

TEST_F(ValidationRun, ReportsOnlySuccessWhereAllAgree) {
    const Report report = ReportOf({Means(TTest("0.8014596"))});
    EXPECT_TRUE(report.Passes());
    EXPECT_EQ(Summary(report), "PASS: 1 of 1 cases are within the deviation allowed.");
}

TEST(ValidationTitles, AreWords) {
    EXPECT_EQ(TitleOf("conditional_power"), "Conditional power");
    EXPECT_EQ(TitleOf("proportions_exact"), "Proportions, exact");
    EXPECT_EQ(TitleOf("gof_published"), "Goodness of fit, published");
    EXPECT_EQ(TitleOf("multiple_comparisons_simulated"), "Multiple comparisons, simulated");
    EXPECT_EQ(TitleOf("few_df"), "Few degrees of freedom");
}

} // namespace
} // namespace quorvanta::validation
