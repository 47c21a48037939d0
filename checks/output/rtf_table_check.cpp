// Tables in RTF as a reader of the format sees them.
#include "output/rtf.h"
#include "output/rtf_table.h"
#include "output/statement.h"
#include "support/rtf_reader.h"

#include <gtest/gtest.h>

namespace quorvanta::checks {
namespace {

class RtfTables : public ::testing::Test {
  protected:
    RtfTables() {
        SummaryFontSize = 10;
        table.Title = {"Title", "in two lines"};
        table.CornerLabel = "H1: Mean 2 - Mean 1";
        table.CellLabel = "Power, a label that is much wider than the columns under it";
        table.HeadLabel = "Level";
        table.Blocks.resize(2);
        table.Blocks[0].Heads = {"0.01", "0.05"};
        table.Blocks[0].Rows = {{"       0.5 ", "     0.110 ", "         - "},
                                {"       1.0 ", "     0.210 ", "     0.310 "}};
        table.Blocks[1].Heads = {"0.1"};
        table.Blocks[1].Rows = {{"       0.5 ", "     0.150 "}};
    }

    ShownRtf Shown() const { return Read(RtfDocumentOf(RtfTable(table))); }

    TableLayout table;
};

TEST_F(RtfTables, ReadAsTheyStand) {
    EXPECT_EQ(Shown().Text, u"Title\nin two lines\n"
                            u"\n\tPower, a label that is much wider than the columns under it\n"
                            u"\tLevel\nH1: Mean 2 - Mean 1\t0.01\t0.05\n"
                            u"0.5\t0.110\t-\n1.0\t0.210\t0.310\n"
                            u"\n\tPower, a label that is much wider than the columns under it\n"
                            u"\tLevel\nH1: Mean 2 - Mean 1\t0.1\n0.5\t0.150\n\n");
}

// Whatever the widths of the texts, a head has the very place of its column.
TEST_F(RtfTables, EveryHeadStandsOverItsColumn) {
    const ShownRtf shown = Shown();
    ASSERT_EQ(shown.Rows.size(), 9U);
    const RtfRow& heads = shown.Rows[2];
    EXPECT_EQ(heads.Cells, (std::vector<std::u16string>{u"H1: Mean 2 - Mean 1", u"0.01", u"0.05"}));
    EXPECT_EQ(heads.FlushRight, (std::vector<bool>{false, true, true}));
    for (const std::size_t row : {3U, 4U}) {
        EXPECT_EQ(shown.Rows[row].Edges, heads.Edges);
        EXPECT_EQ(shown.Rows[row].FlushRight, std::vector<bool>(3, true));
    }
    // What the cells are stands over all columns but the first.
    EXPECT_EQ(shown.Rows[0].Edges, (std::vector<int>{heads.Edges[0], heads.Edges[2]}));
    EXPECT_EQ(shown.Rows[8].Edges, shown.Rows[7].Edges);
}

TEST_F(RtfTables, HeadsComeAgainOnEachPage) {
    const ShownRtf shown = Shown();
    for (const std::size_t row : {0U, 1U, 2U, 5U, 6U, 7U})
        EXPECT_TRUE(shown.Rows[row].IsHead) << row;
    for (const std::size_t row : {3U, 4U, 8U})
        EXPECT_FALSE(shown.Rows[row].IsHead) << row;
}

// Ten characters of 10 points take about an inch and less than an inch and a half, 1440 twips each.
TEST_F(RtfTables, ColumnsAreAsWideAsTheirTexts) {
    table.Blocks[0].Rows[0][1] = "1234567890";
    const std::vector<int> edges = Shown().Rows[3].Edges;
    EXPECT_GT(edges[1] - edges[0], 1100);
    EXPECT_LT(edges[1] - edges[0], 2160);
    EXPECT_LT(edges[2] - edges[1], edges[1] - edges[0]);
    SummaryFontSize = 20;
    const std::vector<int> large = Shown().Rows[3].Edges;
    EXPECT_GT(large[1] - large[0], 3 * (edges[1] - edges[0]) / 2);
}

TEST_F(RtfTables, NoTableIsWiderThanAPage) {
    table.Blocks[0].Heads.assign(30, "12345.678");
    table.Blocks[0].Rows = {std::vector<std::string>(31, "99999.999")};
    const std::vector<int> edges = Shown().Rows[3].Edges;
    ASSERT_EQ(edges.size(), 31U);
    EXPECT_LE(edges.back(), 9000);
    for (std::size_t i = 1; i < edges.size(); ++i)
        EXPECT_GT(edges[i], edges[i - 1]);
}

// Labels of parameters start at the left, their values stand flush right; there are no heads.
TEST_F(RtfTables, WordsStartAtTheLeft) {
    TableLayout values;
    values.StartsWithWords = true;
    values.Blocks.resize(1);
    values.Blocks[0].Rows = {{"Power {1-\xCE\xB2}", "0.8"}, {"Sample Size", "17"}};
    const ShownRtf shown = Read(RtfDocumentOf(RtfTable(values)));
    ASSERT_EQ(shown.Rows.size(), 2U);
    EXPECT_EQ(shown.Rows[0].Cells, (std::vector<std::u16string>{u"Power {1-\u03B2}", u"0.8"}));
    EXPECT_EQ(shown.Rows[0].FlushRight, (std::vector<bool>{false, true}));
    EXPECT_FALSE(shown.Rows[0].IsHead);
}

} // namespace
} // namespace quorvanta::checks
