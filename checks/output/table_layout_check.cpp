#include "output/table_layout.h"
#include "support/analysis_fixture.h"
#include "support/recording_surface.h"

#include <cctype>

namespace quorvanta::checks {
namespace {

constexpr i16 powerKind = 1;
constexpr i16 sizeKind = 4;
constexpr f32 Missing = 99999.0F;
constexpr f64 C = RecordingSurface::CharacterWidth;
constexpr f64 H = RecordingSurface::LineHeight;

class Tables : public AnalysisFixture {
  protected:
    void SetUp() override {
        Main();
        OutTitle.ReDim(0, 0);
        OutTitle(0) = "Title";
        OutXAxis(0) = "Difference";
        OutYAxis(0) = "Power";
        OutZLabel = "Level";
        TableYKind = powerKind;
        TableX.ReDim(1, 3);
        TableY.ReDim(1, 3, 1, 5);
        ZValues.ReDim(1, 5);
        for (int k = 1; k <= 3; ++k) {
            TableX(k) = static_cast<f32>(k) / 2;
            for (int j = 1; j <= 5; ++j)
                TableY(k, j) = static_cast<f32>(k) / 10 + static_cast<f32>(j) / 100;
        }
        for (int j = 1; j <= 5; ++j)
            ZValues(j) = static_cast<f32>(j) / 100;
    }
};

TEST_F(Tables, AFurtherBlockTakesWhatIsWiderThanTheColumnCount) {
    OutCurveWidth = 2;
    const TableLayout table = LayOutTable(PresentationOf(AnalysisNo));
    ASSERT_EQ(table.Blocks.size(), 3U);
    EXPECT_EQ(table.Blocks[0].Heads, (std::vector<std::string>{"0.01", "0.02"}));
    EXPECT_EQ(table.Blocks[1].Heads, (std::vector<std::string>{"0.03", "0.04"}));
    EXPECT_EQ(table.Blocks[2].Heads, std::vector<std::string>{"0.05"});
    for (const TableBlock& block : table.Blocks) {
        ASSERT_EQ(block.Rows.size(), 3U);
        EXPECT_EQ(block.Rows[0][0], "       0.5 "); // x in every block
        EXPECT_EQ(block.Rows[0].size(), block.Heads.size() + 1);
    }
}

TEST_F(Tables, ABlockHasFourColumnsToBeginWith) {
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks.size(), 2U);
    OutCurveWidth = 0;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks.size(), 5U);
    OutCurveWidth = -5;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks.size(), 5U);
    OutCurveWidth = 32767;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks.size(), 1U);
}

// (0.35 - 0.11) / 3 = 0.08: three decimals; x needs one.
TEST_F(Tables, AutomaticDecimalsFollowTheRange) {
    const TableLayout table = LayOutTable(PresentationOf(AnalysisNo));
    EXPECT_EQ(table.Blocks[0].Rows[1],
              (std::vector<std::string>{"       1.0 ", "     0.210 ", "     0.220 ", "     0.230 ",
                                        "     0.240 "}));
}

TEST_F(Tables, TypedDecimals) {
    OutDecimals = 1;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[2][1], "       0.3 ");
    OutDecimals = 8;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[2][1].size(), 11U);
    OutDecimals = 0;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[2][1], "         0 ");
    OutDecimals = 32767;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[2][1].size(), 11U);
}

TEST_F(Tables, EveryColumnIsElevenCharactersWide) {
    for (const i16 decimals : {i16{-1}, i16{0}, i16{3}, i16{7}}) {
        OutDecimals = decimals;
        const TableLayout table = LayOutTable(PresentationOf(AnalysisNo));
        for (const auto& row : table.Blocks[0].Rows)
            for (const std::string& cell : row)
                EXPECT_EQ(cell.size(), 11U) << cell;
    }
}

TEST_F(Tables, AMissingCellIsADash) {
    TableY(2, 2) = Missing;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[1][2], "         - ");
}

// 23.4 subjects are too few: a table tells the same whole number as a calculation.
TEST_F(Tables, CountsAreRoundedUp) {
    TableYKind = sizeKind;
    TableY(1, 1) = 23.4F;
    TableY(1, 2) = 24.0F;
    TableY(1, 3) = 24.00001F; // the 32-bit neighbour of 24 that a search may end on
    TableY(1, 4) = Missing;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[0],
              (std::vector<std::string>{"       0.5 ", "        24 ", "        24 ", "        24 ",
                                        "         - "}));
    OutDecimals = 0;
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[0][1], "        24 ");
    OutDecimals = 2; // whoever asks for decimals gets the solution itself
    EXPECT_EQ(LayOutTable(PresentationOf(AnalysisNo)).Blocks[0].Rows[0][1], "     23.40 ");
}

TEST_F(Tables, TheLinesAlign) {
    OutCurveWidth = 2;
    TableY(1, 2) = Missing;
    const auto lines = TableLines(LayOutTable(PresentationOf(AnalysisNo)));
    const std::vector<std::string> block = {
        "Title",
        "",
        "             Power",
        "             Level",
        "Difference       0.01       0.02 ",
        "---------------------------------",
        "       0.5      0.110          - ",
        "       1.0      0.210      0.220 ",
        "       1.5      0.310      0.320 ",
        "",
    };
    ASSERT_GE(lines.size(), block.size());
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 10), block);
    EXPECT_EQ(lines.size(), 1U + 3 * 8);
}

TEST_F(Tables, ALongLabelWidensTheFirstColumn) {
    OutXAxis(0) = "H1: Größe 2 - Größe 1"; // 21 characters, more bytes
    OutCurveWidth = 1;
    const auto lines = TableLines(LayOutTable(PresentationOf(AnalysisNo)));
    EXPECT_EQ(lines[3], std::string(22 + 2, ' ') + "Level");
    EXPECT_EQ(lines[4], "H1: Größe 2 - Größe 1       0.01 ");
    EXPECT_EQ(lines[5], std::string(33, '-'));
    EXPECT_EQ(lines[6], std::string(11, ' ') + "       0.5      0.110 ");
}

TEST_F(Tables, TabsSetTheCellsApart) {
    OutCurveWidth = 2;
    const auto lines = TabbedLines(LayOutTable(PresentationOf(AnalysisNo)));
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[2], "\tPower");
    EXPECT_EQ(lines[4], "Difference\t0.01\t0.02");
    EXPECT_EQ(lines[5], "0.5\t0.110\t0.120");
}

TEST_F(Tables, WithoutZValuesThereIsOneColumnWithoutAHead) {
    OutZLabel.clear();
    TableY.ReDim(1, 3, 1, 1);
    ZValues.ReDim(1, 1);
    const TableLayout table = LayOutTable(PresentationOf(AnalysisNo));
    ASSERT_EQ(table.Blocks.size(), 1U);
    EXPECT_EQ(table.Blocks[0].Heads, std::vector<std::string>{""});
    EXPECT_EQ(TabbedLines(table)[3], "Difference\t");
}

TEST_F(Tables, WithoutAResultThereIsNothing) {
    TableX = {};
    TableY = {};
    EXPECT_TRUE(LayOutTable(PresentationOf(AnalysisNo)).Blocks.empty());
}

// --- Drawing ----------------------------------------------------------------------------------

TEST_F(Tables, NumbersAreDrawnFlushRight) {
    OutCurveWidth = 2;
    TableY(2, 1) = -0.5F;
    RecordingSurface surface(6, 4);
    DrawTable(surface, LayOutTable(PresentationOf(AnalysisNo)));
    const auto edge = [&surface](const char* text) {
        const auto* found = surface.Find(text);
        return found == nullptr ? -1 : found->At.X + found->Width;
    };
    EXPECT_NEAR(edge("0.01"), edge("0.11"), 1e-9);
    EXPECT_NEAR(edge("0.01"), edge("-0.50"), 1e-9);
    EXPECT_NEAR(edge("0.02"), edge("0.12"), 1e-9);
    EXPECT_GT(edge("0.02") - 5 * C, edge("0.01"));
    EXPECT_NEAR(edge("0.5"), edge("1.5"), 1e-9);
}

TEST_F(Tables, ThePictureIsAsLargeAsItsContent) {
    RecordingSurface surface(0, 0);
    const Point size = DrawTable(surface, LayOutTable(PresentationOf(AnalysisNo)));
    for (const auto& text : surface.Texts) {
        EXPECT_LE(text.At.X + text.Width, size.X);
        EXPECT_LE(text.At.Y + text.Height, size.Y);
    }
    EXPECT_EQ(surface.Page, 1);
}

TEST_F(Tables, AFullPageTurnsAndHasItsHeadsAgain) {
    OutCurveWidth = 5;
    constexpr int rows = 40;
    TableX.ReDim(1, rows);
    TableY.ReDim(1, rows, 1, 5);
    for (int k = 1; k <= rows; ++k)
        TableX(k) = static_cast<f32>(k);
    RecordingSurface surface(6, 20 * H);
    surface.Pages = true;
    DrawTable(surface, LayOutTable(PresentationOf(AnalysisNo)), {"The end."});
    EXPECT_GT(surface.Page, 2);
    int heads = 0;
    std::vector<std::string> firstColumn;
    for (const auto& text : surface.Texts) {
        EXPECT_LE(text.At.Y + text.Height, 20 * H) << text.Text;
        heads += text.Text == "Difference" ? 1 : 0;
        if (text.Text.find('.') == std::string::npos && std::isdigit(text.Text[0]) != 0)
            firstColumn.push_back(text.Text);
    }
    EXPECT_EQ(heads, surface.Page);
    ASSERT_EQ(firstColumn.size(), static_cast<std::size_t>(rows)); // no row lost or doubled
    EXPECT_EQ(firstColumn.front(), "1");
    EXPECT_EQ(firstColumn.back(), "40");
    EXPECT_EQ(surface.Texts.back().Text, "The end.");
}

// Two labels, the heads, a row and one to spare.
TEST_F(Tables, ABlockBeginsWhereFiveLinesOfThePageAreLeft) {
    TableX.ReDim(1, 1);
    TableY.ReDim(1, 1, 1, 1);
    ZValues.ReDim(1, 1);
    constexpr f64 margins = 2 * 0.1;
    constexpr f64 above = 2; // the title and a blank line
    const auto pages = [](f64 lines) {
        RecordingSurface surface(6, margins + lines * H);
        surface.Pages = true;
        DrawTable(surface, LayOutTable(PresentationOf(AnalysisNo)));
        return surface.Page;
    };
    EXPECT_EQ(pages(above + 5.01), 1);
    EXPECT_EQ(pages(above + 4.99), 2);
}

// The corner's label keeps a blank from the heads, and one that fills the column widens it.
TEST_F(Tables, ALabelAsWideAsTheColumnKeepsItsBlank) {
    OutCurveWidth = 1;
    for (const auto& [label, blanks] : {std::pair{std::string(9, 'x'), 0U},
                                        {std::string(10, 'x'), 0U},
                                        {std::string(11, 'x'), 1U},
                                        {std::string(12, 'x'), 2U}}) {
        OutXAxis(0) = label;
        const auto lines = TableLines(LayOutTable(PresentationOf(AnalysisNo)));
        EXPECT_EQ(lines[2], std::string(11 + blanks + 2, ' ') + "Power") << label;
    }
}

TEST_F(Tables, ParagraphsAreAsWideAsAPage) {
    RecordingSurface surface(2, 11);
    surface.Pages = true;
    TableLayout none;
    DrawTable(surface, none, {"This paragraph takes more than one line of a page this narrow."});
    EXPECT_GT(surface.Texts.size(), 2U);
    for (const auto& text : surface.Texts)
        EXPECT_LE(text.At.X + text.Width, 2);
}

// The cell stands two characters off the longest of the words, and a column of numbers right beside
// the widest of them.
TEST(TableLayouts, WordsStandOffTheirCells) {
    TableLayout table;
    table.StartsWithWords = true;
    table.Blocks = {{{}, {{"Standard Deviation of Difference", "1.25"}, {"Power", "0.80"}}}};
    EXPECT_EQ(TableLines(table),
              (std::vector<std::string>{"", "Standard Deviation of Difference  1.25",
                                        "Power                             0.80"}));
    table.StartsWithWords = false;
    table.CornerLabel = "x";
    table.Blocks = {{{"y"}, {{"123456789012", "1"}}}};
    EXPECT_EQ(TableLines(table).back(), "1234567890121");
}

} // namespace
} // namespace quorvanta::checks
