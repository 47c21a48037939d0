// Every distribution function against exact values (checks/reference/exact.py), within the error
// bound of its formula. The deviations themselves are in docs/accuracy.md.
#include "support/reference.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

class Accuracy : public testing::TestWithParam<ReferenceSection> {};

TEST_P(Accuracy, StaysWithinTheBoundOfTheFormula) {
    const ReferenceFunction& function = ReferenceFunctions().at(GetParam().Function);
    for (const ReferenceRow& row : GetParam().Rows) {
        const f64 value = function(row.Arguments);
        std::string arguments;
        for (const f64 argument : row.Arguments)
            arguments += " " + std::to_string(argument);
        // Also false for what is no number.
        EXPECT_TRUE(std::fabs(value - row.Value) <= row.Tolerance)
            << row.Function << arguments << ": " << value << " instead of " << row.Value
            << ", off by " << std::fabs(value - row.Value) << ", bound " << row.Tolerance;
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, Accuracy,
                         testing::ValuesIn(ReadReferenceTable(CHECK_DATA_DIR "/exact.csv")),
                         [](const auto& info) {
                             return info.param.Function + "_" + std::to_string(info.index);
                         });

} // namespace
} // namespace quorvanta
