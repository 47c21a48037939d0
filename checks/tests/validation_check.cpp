// Every reference case of checks/data/validation, solved by the program and compared with its exact
// value.
#include "support/analysis_fixture.h"
#include "support/validation.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

namespace quorvanta::checks {
namespace {

class Validation : public AnalysisFixture, public ::testing::WithParamInterface<std::string> {};

std::vector<std::string> ValidationFiles() {
    std::vector<std::string> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(CHECK_DATA_DIR) + "/validation"))
        files.push_back(entry.path().stem().string());
    std::sort(files.begin(), files.end());
    return files;
}

TEST_P(Validation, SolutionsAgreeWithExactValues) {
    FileCommand(CalculationWindow);
    const auto cases =
        ReadValidation(std::string(CHECK_DATA_DIR) + "/validation/" + GetParam() + ".tsv");
    ASSERT_FALSE(cases.empty());
    for (const ValidationCase& validation : cases) {
        const f64 solution = SolveCase(validation);
        EXPECT_NEAR(solution, validation.Exact, validation.Tolerance)
            << Describe(validation) << " solved for "
            << StripAmpersand(ParLabel(validation.UnknownKind));
    }
}

// The head of a file says where its values come from: a program that lies beside the data.
TEST_P(Validation, NamesTheProgramOfItsValues) {
    std::ifstream file(std::string(CHECK_DATA_DIR) + "/validation/" + GetParam() + ".tsv");
    std::string head;
    std::getline(file, head);
    std::smatch program;
    ASSERT_TRUE(std::regex_search(head, program, std::regex("checks/(reference/\\w+\\.(py|R))")))
        << head;
    EXPECT_TRUE(std::filesystem::exists(std::string(CHECK_DATA_DIR) + "/../" + program[1].str()))
        << head;
}

INSTANTIATE_TEST_SUITE_P(Files, Validation, ::testing::ValuesIn(ValidationFiles()),
                         [](const auto& info) { return info.param; });

} // namespace
} // namespace quorvanta::checks
