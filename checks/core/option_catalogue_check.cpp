// Check boxes and groups of interchangeable parameters against a listing compiled apart from them.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "support/tsv.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace quorvanta {

namespace {

class OptionCatalogue : public testing::Test {
  protected:
    void SetUp() override {
        ResetAnalysisState();
        SetAllIntPar();
        SetAllChecks();
    }
};

TEST_F(OptionCatalogue, EveryCaptionIsAsListed) {
    int listedChecks = 0;
    int listedGroups = 0;
    for (const auto& row : checks::ReadTsv("catalogue_options.tsv")) {
        const int kind = std::stoi(row[1]);
        SCOPED_TRACE(row[0] + " " + row[1]);
        if (row[0] == "check") {
            EXPECT_EQ(kind, listedChecks++);
            EXPECT_EQ(CheckLabel(kind), row[2]);
            continue;
        }
        EXPECT_EQ(kind, listedGroups++);
        EXPECT_EQ(IntParCaption(kind), row[2]);
        EXPECT_EQ(IntParOption(0, kind), row[3]);
        EXPECT_EQ(IntParOption(1, kind), row[4]);
        EXPECT_EQ(IntParOption(2, kind), row[5]);
        EXPECT_EQ(IntParOption(3, kind), "");
    }
    EXPECT_EQ(listedChecks, MaxCheckKind + 1);
    EXPECT_EQ(listedGroups, MaxGroupKind + 1);
}

TEST_F(OptionCatalogue, NothingIsTickedAndTheFirstFormsAreChosen) {
    CheckValue(0) = 1;
    IntParValue(1) = 2;
    SetAllIntPar();
    SetAllChecks();
    EXPECT_TRUE(std::ranges::all_of(CheckValue.Raw(), [](i16 value) { return value == 0; }));
    EXPECT_TRUE(std::ranges::all_of(IntParValue.Raw(), [](i16 value) { return value == 0; }));
}

// A ratio is option 1 where a difference makes no sense, and option 2 elsewhere.
TEST_F(OptionCatalogue, GroupsOfTwoFormsHaveNoThird) {
    for (const int kind : {10, 13, 16})
        EXPECT_NE(IntParOption(1, kind).find('/'), std::string::npos) << kind;
    for (const int kind : {10, 13, 16, 19, 26, 32, 40, 42, 52, 57, 58})
        EXPECT_EQ(IntParOption(2, kind), "") << kind;
}

} // namespace

} // namespace quorvanta
