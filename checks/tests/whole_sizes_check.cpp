// Sizes of a handful to thirty, found and shown as the least whole size that has the probability
// asked for: where the degrees of freedom are few, each of them counts.
#include "support/analysis_fixture.h"
#include "support/validation.h"

namespace quorvanta::checks {
namespace {

class WholeSizes : public AnalysisFixture {};

TEST_F(WholeSizes, AreTheExactOnes) {
    FileCommand(CalculationWindow);
    const auto cases = ReadValidation(std::string(CHECK_DATA_DIR) + "/whole_sizes.tsv");
    ASSERT_GT(cases.size(), 1000U);
    for (const ValidationCase& size : cases) {
        SolveCase(size);
        EXPECT_EQ(ParText(size.UnknownKind), std::to_string(static_cast<int>(size.Exact)))
            << Describe(size);
    }
}

} // namespace
} // namespace quorvanta::checks
