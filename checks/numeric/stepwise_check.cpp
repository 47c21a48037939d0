// The rounding points: every distribution function against a second evaluation of its steps,
// written independently in another language (checks/reference/stepwise.py), bit by bit.
#include "core/fault.h"
#include "numeric/rounding.h"
#include "support/reference.h"

#include <gtest/gtest.h>

namespace quorvanta {
namespace {

TEST(Stepwise, EveryFunctionRoundsWhereItsStepsSay) {
    ClearFloatFaults();
    std::map<std::string, int> seen;
    const std::vector<ReferenceSection> table = ReadReferenceTable(CHECK_DATA_DIR "/stepwise.csv");
    for (const ReferenceRow& row : table.at(0).Rows) {
        const f64 value = ReferenceFunctions().at(row.Function)(row.Arguments);
        ++seen[row.Function];
        std::string arguments;
        for (const f64 argument : row.Arguments)
            arguments += " " + std::to_string(argument);
        EXPECT_EQ(Single(value), Single(row.Value)) << row.Function << arguments;
        if (HasFloatFault()) {
            ADD_FAILURE() << "float fault in " << row.Function << arguments;
            ClearFloatFaults();
        }
    }
    EXPECT_GE(seen.size(), 50U);
}

} // namespace
} // namespace quorvanta
