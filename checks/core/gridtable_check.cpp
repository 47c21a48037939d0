// Input grids: the sequence, the cells, their checks word for word, what a cancel brings back.
#include "core/gridchecks.h"
#include "core/gridpaste.h"
#include "core/gridtable.h"
#include "support/analysis_fixture.h"
#include "support/grid_filling.h"

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

using Rows = GridRowTexts;

class GridTable : public AnalysisFixture {
  protected:
    static bool Fill(const Rows& rows) { return FillCurrentGrid(rows); }

    // The user fills the grid so.
    void Plan(const Rows& rows) {
        platform.GridFillings.emplace_back([rows] { return Fill(rows); });
    }

    // A grid with that check stands open while the action runs; it is cancelled at the end.
    void WhileOpen(const Grid& grid, const std::function<void()>& action) {
        platform.GridFillings.emplace_back([action] {
            action();
            return false;
        });
        ShowGrids({grid}, "");
    }

    static Grid Checked(GridCheck check, i16 rows = 2, i16 columns = 3) {
        return {.Store = 1, .Rows = rows, .Columns = columns, .Check = std::move(check)};
    }

    // The message of the last look at a grid that was filled so; empty if it was accepted.
    std::string MessageOf(const GridCheck& check, const Rows& rows) {
        platform.Messages.clear();
        Grid grid =
            Checked(check, static_cast<i16>(rows.size()), static_cast<i16>(rows.front().size()));
        WhileOpen(grid, [&rows] { Fill(rows); });
        return platform.Messages.empty() ? "" : platform.Messages.front().Text;
    }
};

TEST_F(GridTable, FiguresGoIntoTheStore) {
    Plan({{"1", "2,5"}, {"-3", ".5"}});
    ASSERT_TRUE(ShowGrids({{.Store = 1, .Rows = 2, .Columns = 2}}, "H1: &Mean"));
    EXPECT_EQ(GridData(1)(1, 1), 1.0F);
    EXPECT_EQ(GridData(1)(1, 2), 2.5F) << "a decimal comma is a decimal point";
    EXPECT_EQ(GridData(1)(2, 1), -3.0F);
    EXPECT_EQ(GridData(1)(2, 2), 0.5F);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(GridTestNo, TestNo);
    EXPECT_EQ(NoOfGrids, 1);
    EXPECT_EQ(GridRows(1), 2);
    EXPECT_EQ(GridCols(1), 2);
    EXPECT_EQ(GridKind(1), 1);
}

TEST_F(GridTable, TextsGoIntoTheirStore) {
    Plan({{"0,5", ""}});
    ASSERT_TRUE(ShowGrids({{.Store = TextStore, .Rows = 1, .Columns = 2}}, ""));
    EXPECT_EQ(GridTexts(1, 1), "0.5");
    EXPECT_EQ(GridTexts(1, 2), "");
}

TEST_F(GridTable, TheLargestGridFitsItsStore) {
    Rows rows(10, std::vector<std::string>(10));
    for (int i = 0; i < 10; ++i)
        for (int j = 0; j < 10; ++j)
            rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] =
                std::to_string(10 * i + j);
    Plan(rows);
    ASSERT_TRUE(ShowGrids({{.Store = 9, .Rows = 10, .Columns = 10}}, ""));
    EXPECT_EQ(GridData(9)(10, 10), 99.0F);
    EXPECT_EQ(GridData(9)(1, 10), 9.0F);
}

TEST_F(GridTable, ASequenceSaysWhichGridIsLast) {
    std::vector<std::string> buttons;
    std::vector<std::string> captions;
    for (int i = 0; i < 2; ++i)
        platform.GridFillings.emplace_back([&] {
            buttons.push_back(GridOkCaption());
            captions.push_back(GridCaption());
            return Fill({{"1"}, {"2"}});
        });
    ASSERT_TRUE(
        ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1}, {.Store = 2, .Rows = 2, .Columns = 1}},
                  "H1: Standard Deviation of &Means"));
    EXPECT_EQ(buttons, (std::vector<std::string>{"&Next", "C&alculate"}));
    EXPECT_EQ(captions.front(), "Calculation of H1: Standard Deviation of Means");
    EXPECT_EQ(NoOfGrids, 2);
    EXPECT_EQ(GridKind(2), 2);
}

TEST_F(GridTable, WithoutALabelTheCaptionIsTheTest) {
    TestName = "One-way ANOVA";
    std::string caption;
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 1}, [&caption] { caption = GridCaption(); });
    EXPECT_EQ(caption, "One-way ANOVA");
}

TEST_F(GridTable, ACancelLeavesTheGridsAsTheyWere) {
    Plan({{"1"}, {"2"}});
    ASSERT_TRUE(ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1}}, ""));
    Plan({{"7"}, {"8"}, {"9"}}); // the first of two; the second is cancelled
    ASSERT_FALSE(ShowGrids(
        {{.Store = 1, .Rows = 3, .Columns = 1}, {.Store = 2, .Rows = 3, .Columns = 1}}, ""));
    EXPECT_EQ(GridData(1).HighBound1(), 2);
    EXPECT_EQ(GridData(1)(2, 1), 2.0F);
    EXPECT_EQ(GridRows(1), 2);
    EXPECT_EQ(NoOfGrids, 1);
    EXPECT_EQ(HasGridData, True);
}

TEST_F(GridTable, ACancelOfTheFirstGridLeavesNoGridData) {
    ASSERT_FALSE(ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1}}, ""));
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(GridData(1)(1, 1), 99999.0F);
}

TEST_F(GridTable, CellsShowWhatWasFilledInEarlier) {
    Plan({{"0.1", "1234567"}, {"0.000001", "-2"}});
    ASSERT_TRUE(ShowGrids({{.Store = 4, .Rows = 2, .Columns = 2}}, ""));
    // With a further row the cells that both have are kept.
    WhileOpen({.Store = 4, .Rows = 3, .Columns = 2, .Start = "0"}, [] {
        EXPECT_EQ(GridText(1, 1), "0.1");
        EXPECT_EQ(GridText(1, 2), "1234567");
        EXPECT_EQ(GridText(2, 1), "0.000001");
        EXPECT_EQ(GridText(2, 2), "-2");
        EXPECT_EQ(GridText(3, 1), "0");
    });
}

TEST_F(GridTable, ANewGridShowsItsStartTexts) {
    for (const i16 store : std::vector<i16>{1, 3, 7, TextStore})
        WhileOpen({.Store = store, .Rows = 2, .Columns = 2, .Start = "5"}, [] {
            EXPECT_EQ(GridText(1, 1), "5");
            EXPECT_EQ(GridText(2, 2), "5");
        });
}

TEST_F(GridTable, OtherGridsOfTheAnalysisStay) {
    Plan({{"1"}, {"2"}});
    ASSERT_TRUE(ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1, .Title = "Means"}}, ""));
    Plan({{"3"}, {"4"}});
    ASSERT_TRUE(ShowGrids({{.Store = 2, .Rows = 2, .Columns = 1, .Title = "Weights"}}, ""));
    Plan({{"5"}, {"6"}});
    ASSERT_TRUE(ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1, .Title = "Means"}}, ""));
    EXPECT_EQ(NoOfGrids, 2);
    const auto grids = FilledGrids();
    ASSERT_EQ(grids.size(), 2U);
    EXPECT_EQ(grids[0].Title, "Means");
    EXPECT_EQ(grids[0].Cells(2, 1), "6");
    EXPECT_EQ(grids[1].Title, "Weights");
    EXPECT_EQ(grids[1].Cells(1, 1), "3");
}

TEST_F(GridTable, FilledGridsKnowTheirHeads) {
    EXPECT_TRUE(FilledGrids().empty());
    Plan({{"1", "2"}, {"3", "4"}});
    ASSERT_TRUE(ShowGrids({{.Store = 1,
                            .Rows = 2,
                            .Columns = 2,
                            .RowHeads = "Group",
                            .ColumnHeads = "Proportion,Group Level"}},
                          ""));
    const auto grids = FilledGrids();
    ASSERT_EQ(grids.size(), 1U);
    EXPECT_EQ(grids[0].RowHeads, "Group");
    EXPECT_EQ(grids[0].ColumnHeads, "Proportion,Group Level");
}

TEST_F(GridTable, HeadsAreWordsOrNumbered) {
    EXPECT_EQ(GridHeadOf("Group", 3, 2), "Group 2");
    EXPECT_EQ(GridHeadOf("Mean", 1, 1), "Mean");
    EXPECT_EQ(GridHeadOf("H0: ,H1: ", 2, 2), "H1: ");
    EXPECT_EQ(GridHeadOf("A,B", 3, 3), "");
    EXPECT_EQ(GridHeadOf("", 3, 3), "3");
}

TEST_F(GridTable, AMissingValueIsTold) {
    std::optional<GridCell> refused;
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2}, [&refused] {
        for (const char* text : {"", "-", " ", "."}) {
            Fill({{"1", "2"}, {text, "4"}});
            refused = AcceptGrid();
            ASSERT_TRUE(refused) << '"' << text << '"';
            EXPECT_EQ(refused->Row, 2);
            EXPECT_EQ(refused->Column, 1);
        }
    });
    ASSERT_FALSE(platform.Messages.empty());
    EXPECT_EQ(platform.Messages.front().Text, "A Value Is Missing.");
    EXPECT_EQ(platform.Messages.front().Title, "Can't Calculate.");
    EXPECT_EQ(platform.Messages.front().ShownIcon, Icon::Exclamation);
}

// Nor is it a run-time error while it stands beside others that are looked at.
TEST_F(GridTable, ANumberThatNoStoreHoldsHasNoSum) {
    WhileOpen({.Store = 1, .Rows = 1, .Columns = 3, .Check = RowsOfProportions(), .RowSum = 1}, [] {
        for (const int zeros : {39, 400}) {
            GridOK(1, 1, "0.5", Leaving::Nothing);
            GridOK(1, 2, "0.5", Leaving::Nothing);
            GridOK(1, 3, "1" + std::string(static_cast<std::size_t>(zeros), '0'), Leaving::Nothing);
            EXPECT_EQ(RowSumText(1), "");
            EXPECT_TRUE(GridOK(1, 1, "0.5", Leaving::Cell));
            EXPECT_TRUE(AcceptGrid().has_value());
        }
    });
}

TEST_F(GridTable, ANumberThatNoStoreHoldsIsRefused) {
    const std::string large = "1" + std::string(39, '0');
    const std::string huge = "1" + std::string(400, '0');
    for (const std::string& text : {large, huge, "-" + large})
        EXPECT_EQ(MessageOf(nullptr, {{"1", text}}), "Number in Cell  (1,2)  Is Too Large.");
    EXPECT_EQ(MessageOf(nullptr, {{"1", "1" + std::string(38, '0')}}), "");
}

TEST_F(GridTable, ClearsARow) {
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2}, [] {
        Fill({{"1", "2"}, {"3", "4"}});
        ClearGridRow(2);
        EXPECT_EQ(GridText(1, 2), "2");
        EXPECT_EQ(GridText(2, 1), "");
        EXPECT_EQ(GridText(2, 2), "");
    });
}

TEST_F(GridTable, ASymmetricGridFillsBothCells) {
    WhileOpen({.Store = 1, .Rows = 3, .Columns = 3, .Symmetric = true, .Diagonal = "1"}, [] {
        GridOK(1, 3, "0,5", Leaving::Cell);
        EXPECT_EQ(GridText(3, 1), "0.5");
        EXPECT_EQ(GridText(2, 2), "1");
        EXPECT_TRUE(IsLockedCell(2, 2));
        EXPECT_FALSE(IsLockedCell(2, 3));
        GridOK(2, 2, "7", Leaving::Cell);
        EXPECT_EQ(GridText(2, 2), "1") << "a locked cell stays";
        ClearGridRow(3);
        EXPECT_EQ(GridText(1, 3), "");
        EXPECT_EQ(GridText(3, 3), "1");
    });
}

// --- Blocks -------------------------------------------------------------------------------------

TEST_F(GridTable, TakesABlockFromASpreadsheet) {
    WhileOpen({.Store = 1, .Rows = 3, .Columns = 3}, [] {
        PasteIntoGrid(2, 2,
                      "1,5\t\xE2\x88\x92"
                      "2\r\n3\t4\r\n");
        EXPECT_EQ(GridText(2, 2), "1.5");
        EXPECT_EQ(GridText(2, 3), "-2");
        EXPECT_EQ(GridText(3, 2), "3");
        EXPECT_EQ(GridText(3, 3), "4");
        EXPECT_EQ(GridText(1, 1), "");
    });
    EXPECT_EQ(platform.Statuses.back(), "");
}

TEST_F(GridTable, SaysWhatOfABlockIsLeftOut) {
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2}, [] { PasteIntoGrid(1, 1, "1x\t2\t3"); });
    EXPECT_EQ(platform.Statuses.back(),
              "Left out of the pasted text: \"x\". The grid has no cells for the figures beyond "
              "its last row or column.");
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(GridTable, ABlankOfABlockEmptiesItsCell) {
    WhileOpen({.Store = 1, .Rows = 3, .Columns = 2}, [] {
        Fill({{"1", "2"}, {"3", "4"}, {"5", "6"}});
        PasteIntoGrid(1, 1, "7\t\n\t8\r\n");
        EXPECT_EQ(GridAsText(), "7\t\n\t8\n5\t6\n") << "the last line break is no line";
        PasteIntoGrid(1, 2, "1\n\n3");
        EXPECT_EQ(GridAsText(), "7\t1\n\t\n5\t3\n");
    });
}

// As it is printed, with blanks in the other half.
TEST_F(GridTable, TakesHalfOfASymmetricMatrix) {
    const Grid matrix{.Store = 5, .Rows = 3, .Columns = 3, .Symmetric = true};
    for (const char* half :
         {"4\t1\t2\n\t9\t3\n\t\t16\n", "4\t\t\n1\t9\t\n2\t3\t16\n", "4\n1\t9\n2\t3\t16"})
        WhileOpen(matrix, [half] {
            PasteIntoGrid(1, 1, half);
            EXPECT_EQ(GridAsText(), "4\t1\t2\n1\t9\t3\n2\t3\t16\n");
        });
}

TEST_F(GridTable, TakesTheBeginningOfAWholeColumn) {
    std::string column = "1\n2\n3\n";
    for (int line = 4; line <= 70000; ++line)
        column += "\r\n";
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 1}, [&column] {
        PasteIntoGrid(1, 1, column);
        EXPECT_EQ(GridAsText(), "1\n2\n");
    });
    EXPECT_EQ(platform.Statuses.back(),
              "The grid has no cells for the figures beyond its last row or column.");
}

TEST_F(GridTable, SaysWhichFigureOfABlockIsReadOtherwise) {
    WhileOpen({.Store = 1, .Rows = 1, .Columns = 3}, [] {
        PasteIntoGrid(1, 1, "0,125\t15,420\t1,234.5");
        EXPECT_EQ(GridText(1, 2), "15.420");
    });
    EXPECT_EQ(platform.Statuses.back(), "15,420 is read as 15.42.");
}

TEST_F(GridTable, CopiesAsABlockThatCanBePasted) {
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2}, [] {
        Fill({{"1", "2.5"}, {"3", ""}});
        const std::string block = GridAsText();
        EXPECT_EQ(block, "1\t2.5\n3\t\n");
        Fill({{"7", "7"}, {"7", "7"}});
        PasteIntoGrid(1, 1, block);
        EXPECT_EQ(GridAsText(), block);
    });
}

// --- Checks, word for word ----------------------------------------------------------------------

TEST_F(GridTable, ProportionsOfACell) {
    EXPECT_EQ(MessageOf(ProportionCells(), {{"0", "1"}, {"0.5", "1.01"}}),
              "Proportion in Cell  (2,2)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(MessageOf(ProportionCells(), {{"-0.1", "1"}}),
              "Proportion in Cell  (1,1)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(MessageOf(ProportionCells(), {{"0", "1"}}), "");
}

TEST_F(GridTable, ProbabilitiesOfACell) {
    EXPECT_EQ(MessageOf(ProbabilityCells(1), {{"0"}, {"0.5"}}),
              "Probability in Cell  (1,1)  Must Be > 0 and < 1");
    EXPECT_EQ(MessageOf(ProbabilityCells(0.5), {{"0.1"}, {"0.5"}}),
              "Probability in Cell  (2,1)  Must Be > 0 and < 0.5");
    EXPECT_EQ(MessageOf(ProbabilityCells(1), {{"0.99"}, {"0.01"}}), "");
}

TEST_F(GridTable, RatiosOfACell) {
    EXPECT_EQ(MessageOf(RatioCells(), {{"1", "0"}}), "Ratio in Cell  (1,2)  Must Be > 0.");
    EXPECT_EQ(MessageOf(RatioCells(), {{"1", "0.01"}}), "");
}

TEST_F(GridTable, SumsOfRows) {
    EXPECT_EQ(MessageOf(RowsAddTo(0), {{"1", "-1", "0"}, {"1", "-1", "0.5"}}),
              "Sum of Numbers in Row 2 Must Be = 0");
    EXPECT_EQ(MessageOf(RowsAddTo(0), {{"0.33333", "0.33333", "-0.66667"}}), "");
    EXPECT_EQ(MessageOf(RowsAddTo(1), {{"0.333", "0.333", "0.333"}}),
              "Sum of Numbers in Row 1 Must Be = 1");
}

TEST_F(GridTable, RowsOfProportions) {
    EXPECT_EQ(MessageOf(RowsOfProportions(), {{"0.5", "0.6"}}),
              "Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(MessageOf(RowsOfProportions(), {{"0.5", "0.5"}, {"0.5", "0.4"}}),
              "Sum of Proportions in Row 2 Must Equal 1.");
    EXPECT_EQ(MessageOf(RowsOfProportions(), {{"0.5", "-0.5"}}),
              "Proportion in Cell  (1,2)  Must Be >= 0 and <= 1.");
    EXPECT_EQ(MessageOf(RowsOfProportions(), {{"0.33333", "0.33333", "0.33333"}}), "");
}

// A row whose cells are all filled can be changed cell by cell: it is looked at as it is left.
TEST_F(GridTable, ARowIsCheckedWhereItIsLeft) {
    WhileOpen(Checked(RowsOfProportions(), 2, 3), [this] {
        EXPECT_TRUE(GridOK(1, 1, "0.6", Leaving::Cell));
        EXPECT_FALSE(GridOK(1, 2, "0.6", Leaving::Cell)) << "more than 1 already";
        EXPECT_TRUE(GridOK(1, 2, "0.2", Leaving::Cell));
        EXPECT_TRUE(GridOK(1, 3, "0.2", Leaving::Row));
        EXPECT_EQ(platform.Messages.size(), 1U);
        EXPECT_TRUE(GridOK(1, 1, "0.5", Leaving::Cell)) << "within the row";
        EXPECT_FALSE(GridOK(1, 1, "0.5", Leaving::Row));
        EXPECT_TRUE(GridOK(1, 2, "0.3", Leaving::Row));
        EXPECT_EQ(platform.Messages.size(), 2U);
        EXPECT_EQ(platform.Messages.back().Text, "Sum of Proportions in Row 1 Must Equal 1.");
    });
}

TEST_F(GridTable, IncreasingRows) {
    EXPECT_EQ(MessageOf(IncreasingRows(), {{"1", "2"}, {"2", "2"}}),
              "Numbers in Row 2 Must Be Strictly Increasing.");
    EXPECT_EQ(MessageOf(IncreasingRows(), {{"-1", "0", "0.5"}}), "");
}

TEST_F(GridTable, IntegersOfAList) {
    for (const char* text : {"0", "10", "1.5", "-1"})
        EXPECT_EQ(MessageOf(IntegerCells(9), {{"9", "1"}, {"2", text}}),
                  "Numbers in Row 2 Must Be Integers between 1 and 9");
    EXPECT_EQ(MessageOf(IntegerCells(3), {{"4", "1"}}),
              "Numbers in Row 1 Must Be Integers between 1 and 3");
    EXPECT_EQ(MessageOf(IntegerCells(3), {{"3", "1"}}), "");
}

TEST_F(GridTable, ProbabilitiesOfAllCells) {
    EXPECT_EQ(MessageOf(CellsAddToOne(), {{"0.25", "0.25"}, {"0.25", "0.2"}}),
              "Sum of Probabilities Must Equal 1.");
    EXPECT_EQ(MessageOf(CellsAddToOne(), {{"0.25", "0.25"}, {"0.25", "0.25"}}), "");
}

TEST_F(GridTable, CovarianceMatrices) {
    EXPECT_EQ(MessageOf(CovarianceMatrix(), {{"4", "1"}, {"1", "0"}}),
              "Variance in Cell  (2,2)  Must Be > 0.");
    EXPECT_EQ(MessageOf(CovarianceMatrix(), {{"4", "3"}, {"3", "1"}}),
              "Invalid Covariance Matrix. Correlation Coefficient (1, 2 ) Will Be 1.5");
    EXPECT_EQ(MessageOf(CovarianceMatrix(), {{"4", "1.9"}, {"1.9", "1"}}), "");
    // Each pair is possible, the three together are not: with the first held fixed, the other two
    // would correlate by (-0.75 - 0.5625)/(1 - 0.5625) = -3.
    EXPECT_EQ(MessageOf(CorrelationMatrix(),
                        {{"1", "0.75", "0.75"}, {"0.75", "1", "-0.75"}, {"0.75", "-0.75", "1"}}),
              "Invalid Covariance Matrix. Correlation Coefficient (2, 3 ) Will Be -3.0");
    EXPECT_EQ(MessageOf(CorrelationMatrix(),
                        {{"1", "-0.5", "-0.5"}, {"-0.5", "1", "-0.5"}, {"-0.5", "-0.5", "1"}}),
              "Invalid Covariance Matrix. Correlation Coefficient (2, 3 ) Will Be -1.0")
        << "the three add up to nothing";
}

// A covariance is looked at as soon as both variances stand.
TEST_F(GridTable, ACovarianceIsCheckedAtItsCell) {
    Grid grid = Checked(CovarianceMatrix(), 2, 2);
    grid.Symmetric = true;
    WhileOpen(grid, [this] {
        EXPECT_TRUE(GridOK(1, 2, "3", Leaving::Cell));
        EXPECT_TRUE(GridOK(1, 1, "4", Leaving::Cell));
        EXPECT_FALSE(GridOK(2, 2, "1", Leaving::Cell));
        EXPECT_TRUE(GridOK(2, 2, "9", Leaving::Cell));
        EXPECT_FALSE(GridOK(2, 1, "-7", Leaving::Cell));
        EXPECT_EQ(platform.Messages.back().Text,
                  "Invalid Covariance Matrix. Correlation Coefficient (2, 1 ) Will Be -1.166667");
    });
}

TEST_F(GridTable, SumsAreShownBesideRowsThatMustAddUp) {
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2, .RowSum = 1}, [] {
        Fill({{"0.25", "0.5"}, {"", "0.1"}});
        EXPECT_EQ(RowSumText(1), "Sum: 0.75");
        EXPECT_EQ(RowSumText(2), "Sum: 0.1");
    });
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2}, [] {
        EXPECT_EQ(RowSumText(1), "");
        EXPECT_EQ(GridSumText(), "");
    });
    WhileOpen({.Store = 1, .Rows = 2, .Columns = 2, .AddsUp = true}, [] {
        Fill({{"0.25", "0.5"}, {"", "0.1"}});
        EXPECT_EQ(GridSumText(), "Sum: 0.85");
        GridOK(1, 1, "1" + std::string(400, '0'), Leaving::Nothing);
        EXPECT_EQ(GridSumText(), "");
    });
}

} // namespace
} // namespace quorvanta::checks
