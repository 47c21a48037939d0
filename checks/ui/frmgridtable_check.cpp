// Input grids in the real window: the moving box, the keys, refusals, blocks, sequences.
#include "core/analysis_state.h"
#include "core/gridchecks.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "ui/grid_window.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <functional>

namespace quorvanta {
namespace {

TEST_F(GridWindow, NamesWhatItIsFor) {
    When([this](QWidget& grid) {
        EXPECT_TRUE(grid.isModal());
        EXPECT_EQ(grid.windowTitle(), "Calculation of H1: Mean");
        EXPECT_EQ(hands::TextOf(grid, "lblGridTitle"), "Means of groups");
        EXPECT_EQ(hands::TextOf(grid, "cmdOK"), "C&alculate");
        EXPECT_EQ(hands::TextOf(grid, "cmdCancel"), "&Cancel");
        EXPECT_EQ(hands::TextOf(grid, "cmdClearRow"), "Clear&Row");
        EXPECT_EQ(Table().verticalHeaderItem(1)->text(), "Group 2");
        EXPECT_EQ(Table().horizontalHeaderItem(0)->text(), "Mean");
        EXPECT_EQ(Table().horizontalHeaderItem(1)->text(), "Standard Deviation");
        EXPECT_TRUE(Cell().hasFocus());
        EXPECT_EQ(Place(), QPoint(1, 1));
        EXPECT_EQ(Cell().accessibleName(), "Group 1, Mean");
    });
    Ask(Means());
}

TEST_F(GridWindow, ShowsAllOfAFewRowsWithoutATitle) {
    Grid untitled = Means();
    untitled.Title.clear();
    When([this](QWidget& grid) {
        grid.resize(grid.minimumSizeHint());
        EXPECT_GE(Table().viewport()->height(), 3 * Table().rowHeight(0));
    });
    Ask(untitled);
}

TEST_F(GridWindow, IsFilledWithTheKeys) {
    When([this](QWidget& grid) {
        TypeText("1");
        Key(Qt::Key_Return);
        EXPECT_EQ(Place(), QPoint(1, 2));
        EXPECT_EQ(Cell().accessibleName(), "Group 1, Standard Deviation");
        TypeText("2,5");
        Key(Qt::Key_Tab);
        EXPECT_EQ(Place(), QPoint(2, 1));
        TypeText("3");
        Key(Qt::Key_Backtab);
        EXPECT_EQ(Place(), QPoint(1, 2));
        EXPECT_EQ(Cell().text(), "2.5") << "the comma is a point";
        EXPECT_EQ(Cell().selectedText(), "2.5");
        Key(Qt::Key_Down);
        EXPECT_EQ(Place(), QPoint(2, 2));
        TypeText("4");
        Key(Qt::Key_Down);
        TypeText("6");
        Key(Qt::Key_Left);
        EXPECT_EQ(Place(), QPoint(3, 2)) << "left of the 6 first";
        Key(Qt::Key_Left);
        EXPECT_EQ(Place(), QPoint(3, 1));
        TypeText("5");
        Key(Qt::Key_Up);
        EXPECT_EQ(Place(), QPoint(2, 1));
        Key(Qt::Key_Right);
        EXPECT_EQ(Place(), QPoint(2, 2)) << "the whole text is selected";
        EXPECT_EQ(TextAt(3, 1), "5");
        ClickCell(3, 2);
        EXPECT_EQ(Place(), QPoint(3, 2));
        Key(Qt::Key_Return);
        EXPECT_TRUE(hands::Control(grid, "cmdOK")->hasFocus()) << "behind the last cell";
        QTest::keyClick(hands::Control(grid, "cmdOK"), Qt::Key_Space);
        EXPECT_FALSE(grid.isVisible());
    });
    EXPECT_TRUE(Ask(Means()));
    EXPECT_EQ(GridData(1)(1, 2), 2.5F);
    EXPECT_EQ(GridData(1)(3, 1), 5.0F);
    EXPECT_EQ(GridData(1)(3, 2), 6.0F);
    EXPECT_EQ(Messages.Texts, QStringList());
}

// Keyboards differ in what their arrow keys say of themselves.
TEST_F(GridWindow, TakesTheArrowsOfTheNumberPad) {
    When([this](QWidget&) {
        Key(Qt::Key_Right, Qt::KeypadModifier);
        EXPECT_EQ(Place(), QPoint(1, 2));
        Key(Qt::Key_Down, Qt::KeypadModifier);
        EXPECT_EQ(Place(), QPoint(2, 2));
        Key(Qt::Key_Left, Qt::KeypadModifier);
        EXPECT_EQ(Place(), QPoint(2, 1));
    });
    Ask(Means());
}

TEST_F(GridWindow, EnterPressesTheButtonBehindTheLastCell) {
    When([this](QWidget& grid) {
        for (const char* text : {"1", "2", "3", "4", "5", "6"}) {
            TypeText(text);
            Key(Qt::Key_Return);
        }
        QTest::keyClick(grid.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(grid.isVisible());
    });
    EXPECT_TRUE(Ask(Means()));
    EXPECT_EQ(GridData(1)(3, 2), 6.0F);
    When([this](QWidget& grid) {
        Key(Qt::Key_Backtab);
        EXPECT_TRUE(hands::Control(grid, "cmdCancel")->hasFocus()) << "before the first cell";
        QTest::keyClick(grid.focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_FALSE(grid.isVisible());
    });
    EXPECT_FALSE(Ask(Means()));
}

TEST_F(GridWindow, UndoesTypingInTheBox) {
    When([this](QWidget&) {
        TypeText("12");
        Key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "");
    });
    Ask(Means());
}

TEST_F(GridWindow, RefusesALetterLikeEveryBox) {
    When([this](QWidget&) {
        TypeText("1x");
        EXPECT_EQ(Cell().text(), "1");
    });
    Ask(Means());
    EXPECT_EQ(Messages.Texts, QStringList{"x   Is Not Allowed. Must Be a Digit."});
}

TEST_F(GridWindow, KeepsTheBoxOnACellThatIsRefused) {
    When([this](QWidget&) {
        TypeText("1.5");
        Key(Qt::Key_Return);
        EXPECT_EQ(Place(), QPoint(1, 1));
        EXPECT_EQ(Cell().text(), "1.5") << "nothing that was typed is lost";
        EXPECT_EQ(Cell().selectedText(), "1.5");
        EXPECT_EQ(Cell().palette().color(QPalette::Base), RefusedColor);
        EXPECT_TRUE(Cell().accessibleDescription().contains("refused"));
        ClickCell(3, 1);
        EXPECT_EQ(Place(), QPoint(1, 1));
        TypeText("0.5");
        EXPECT_NE(Cell().palette().color(QPalette::Base), RefusedColor);
        Key(Qt::Key_Return);
        EXPECT_EQ(Place(), QPoint(1, 2));
    });
    Grid grid = Means();
    grid.Check = ProportionCells();
    Ask(grid);
    const QString message = "Proportion in Cell  (1,1)  Must Be >= 0 and <= 1.";
    EXPECT_EQ(Messages.Texts, (QStringList{message, message}));
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
}

TEST_F(GridWindow, LooksAtEveryCellOnceMore) {
    When([this](QWidget& grid) {
        TypeText("1");
        hands::Click(grid, "cmdOK");
        EXPECT_TRUE(grid.isVisible());
        EXPECT_EQ(Place(), QPoint(1, 2));
        EXPECT_TRUE(Cell().hasFocus());
        EXPECT_EQ(Cell().palette().color(QPalette::Base), RefusedColor);
        EXPECT_EQ(TextAt(1, 1), "1");
    });
    EXPECT_FALSE(Ask(Means()));
    EXPECT_EQ(Messages.Texts, QStringList{"A Value Is Missing."});
    EXPECT_EQ(Messages.Titles, QStringList{"Can't Calculate."});
    EXPECT_EQ(HasGridData, False);
}

TEST_F(GridWindow, ClearsTheRowOfTheBox) {
    When([this](QWidget& grid) {
        for (const char* text : {"1", "2", "3", "4"}) {
            TypeText(text);
            Key(Qt::Key_Return);
        }
        ClickCell(1, 2);
        hands::Click(grid, "cmdClearRow");
        EXPECT_EQ(Cell().text(), "");
        EXPECT_EQ(TextAt(1, 1), "");
        EXPECT_EQ(TextAt(2, 1), "3");
        EXPECT_TRUE(Cell().hasFocus());
    });
    Ask(Means());
}

TEST_F(GridWindow, TakesAndGivesBlocks) {
    When([this](QWidget& grid) {
        QApplication::clipboard()->setText("1\t2\r\n3,5\t4\r\n");
        ClickCell(2, 1);
        Key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "1");
        EXPECT_EQ(TextAt(3, 1), "3.5");
        Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), "\t\n1\t2\n3.5\t4\n");
        QApplication::clipboard()->setText("7");
        ClickCell(1, 1);
        Key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "7") << "a single figure goes into the text";
        hands::Click(grid, "cmdCopyGrid");
        EXPECT_EQ(QApplication::clipboard()->text(), "7\t\n1\t2\n3.5\t4\n");
    });
    Ask(Means());
}

TEST_F(GridWindow, TakesBackABlockAndAClearedRow) {
    When([this](QWidget& grid) {
        TypeText("5");
        Key(Qt::Key_Return);
        QApplication::clipboard()->setText("1\t2\n3\t4\n");
        Key(Qt::Key_Left);
        Key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(TextAt(2, 2), "4");
        Key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "5");
        EXPECT_EQ(TextAt(1, 2), "");
        EXPECT_EQ(TextAt(2, 2), "");
        Key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "1");
        EXPECT_EQ(TextAt(2, 2), "4");
        hands::Click(grid, "cmdClearRow");
        EXPECT_EQ(TextAt(1, 2), "");
        Key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Cell().text(), "1");
        EXPECT_EQ(TextAt(1, 2), "2");
        hands::Click(grid, "cmdClearRow");
        TypeText("7");
        Key(Qt::Key_Tab);
        Key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(TextAt(1, 1), "7") << "nothing that was typed since is lost";
    });
    Ask(Means());
}

TEST_F(GridWindow, ShowsSumsAsTheyGrow) {
    When([this](QWidget&) {
        TypeText("0.25");
        EXPECT_EQ(Table().item(0, 2)->text(), "Sum: 0.25");
        Key(Qt::Key_Return);
        TypeText("0.7");
        EXPECT_EQ(Table().item(0, 2)->text(), "Sum: 0.95");
        Key(Qt::Key_Return);
        EXPECT_EQ(Place(), QPoint(1, 2));
    });
    Grid grid = Means();
    grid.Check = RowsOfProportions();
    grid.RowSum = 1;
    Ask(grid);
    EXPECT_EQ(Messages.Texts, QStringList{"Sum of Proportions in Row 1 Must Equal 1."});
}

TEST_F(GridWindow, ShowsTheSumOfAllCellsThatMustAddUp) {
    Grid grid = Means();
    When([](QWidget& window) { EXPECT_FALSE(hands::Control(window, "lblSum")->isVisible()); });
    Ask(grid);
    When([this](QWidget& window) {
        TypeText("0.25");
        Key(Qt::Key_Return);
        TypeText("0.5");
        EXPECT_TRUE(hands::Control(window, "lblSum")->isVisible());
        EXPECT_EQ(hands::TextOf(window, "lblSum"), "Sum: 0.75");
        hands::Click(window, "cmdClearRow");
        EXPECT_EQ(hands::TextOf(window, "lblSum"), "Sum: 0");
    });
    grid.Check = CellsAddToOne();
    grid.AddsUp = true;
    Ask(grid);
}

TEST_F(GridWindow, FillsTheMirrorImage) {
    When([this](QWidget&) {
        EXPECT_EQ(Place(), QPoint(1, 2)) << "past the diagonal";
        TypeText("0.5");
        EXPECT_EQ(TextAt(2, 1), "0.5");
        EXPECT_EQ(TextAt(1, 1), "1");
        ClickCell(2, 2);
        EXPECT_EQ(Place(), QPoint(1, 2)) << "the diagonal can't be entered";
    });
    Ask({.Store = 5,
         .Rows = 2,
         .Columns = 2,
         .Check = CorrelationMatrix(),
         .Symmetric = true,
         .Diagonal = "1"});
}

TEST_F(GridWindow, ArrowsPassTheDiagonal) {
    When([this](QWidget&) {
        Key(Qt::Key_Down);
        EXPECT_EQ(Place(), QPoint(3, 2));
        Key(Qt::Key_Right);
        EXPECT_EQ(Place(), QPoint(3, 2)) << "nothing beyond";
        Key(Qt::Key_Up);
        EXPECT_EQ(Place(), QPoint(1, 2));
        Key(Qt::Key_Left);
        EXPECT_EQ(Place(), QPoint(1, 2));
    });
    Ask(Correlations());
}

// Each pair of the three is possible, all of them together are not.
TEST_F(GridWindow, GoesToTheCorrelationThatIsRefused) {
    When([this](QWidget& grid) {
        for (const char* text : {"0.75", "0.75"}) {
            TypeText(text);
            Key(Qt::Key_Return);
        }
        ClickCell(2, 3);
        TypeText("-0.75");
        ClickCell(1, 2);
        hands::Click(grid, "cmdOK");
        EXPECT_EQ(Place(), QPoint(2, 3));
        EXPECT_EQ(Cell().text(), "-0.75");
        TypeText("0.5");
        EXPECT_EQ(TextAt(3, 2), "0.5");
        hands::Click(grid, "cmdOK");
        EXPECT_FALSE(grid.isVisible());
    });
    EXPECT_TRUE(Ask(Correlations()));
    EXPECT_EQ(Messages.Texts,
              QStringList{"Invalid Covariance Matrix. Correlation Coefficient (2, 3 ) Will Be "
                          "-3.0"});
}

// A check that speaks of the whole grid may stop at a cell that can't be entered.
TEST_F(GridWindow, TheBoxIsNeverOnALockedCell) {
    Grid grid = Correlations();
    grid.Check = CellsAddToOne();
    When([this](QWidget& window) {
        for (const QPoint cell : {QPoint(1, 2), QPoint(1, 3), QPoint(2, 3)}) {
            ClickCell(cell.x(), cell.y());
            TypeText("0.5");
        }
        hands::Click(window, "cmdOK");
        EXPECT_EQ(Place(), QPoint(3, 2));
        TypeText("0.25");
        EXPECT_EQ(TextAt(2, 3), "0.25");
    });
    Ask(grid);
    EXPECT_EQ(Messages.Texts, QStringList{"Sum of Probabilities Must Equal 1."});
}

TEST_F(GridWindow, LeadsFromGridToGrid) {
    QStringList buttons;
    When([&](QWidget& grid) {
        buttons << hands::TextOf(grid, "cmdOK");
        TypeText("1");
        Key(Qt::Key_Return);
        TypeText("2");
        When([&](QWidget& second) {
            buttons << hands::TextOf(second, "cmdOK");
            QTest::keyClick(&second, Qt::Key_Escape);
            EXPECT_FALSE(second.isVisible());
        });
        hands::Click(grid, "cmdOK");
    });
    EXPECT_FALSE(
        ShowGrids({{.Store = 1, .Rows = 2, .Columns = 1}, {.Store = 2, .Rows = 2, .Columns = 1}},
                  "H1: &Mean"));
    EXPECT_EQ(buttons, (QStringList{"&Next", "C&alculate"}));
    EXPECT_EQ(GridData(1)(1, 1), 99999.0F) << "the cancel takes the first back, too";
}

TEST_F(GridWindow, LargeGridsFitTheScreen) {
    When([this](QWidget& grid) {
        const QSize screen = grid.screen()->availableSize();
        EXPECT_LE(grid.frameGeometry().width(), screen.width());
        EXPECT_LE(grid.frameGeometry().height(), screen.height());
        for (int i = 1; i < 100; ++i) {
            TypeText(QString::number(i));
            Key(Qt::Key_Return);
            EXPECT_TRUE(Table().viewport()->rect().contains(Cell().geometry())) << i;
        }
        grid.resize(grid.width() / 2, grid.height());
        hands::Settle();
        for (const int value : {0, Table().horizontalScrollBar()->maximum()}) {
            Table().horizontalScrollBar()->setValue(value);
            EXPECT_EQ(Place(), QPoint(10, 10)) << "the box stays on its cell";
        }
        TypeText("100");
        hands::Click(grid, "cmdOK");
        EXPECT_FALSE(grid.isVisible());
    });
    EXPECT_TRUE(Ask({.Store = 4, .Rows = 10, .Columns = 10}));
    EXPECT_EQ(GridData(4)(10, 10), 100.0F);
    EXPECT_EQ(GridData(4)(10, 1), 91.0F);
}

// The etch rates of the example of the one-way analysis of variance, from F2 in the blue box on.
TEST_F(GridWindow, GivesTheEffectOfAnAnalysisOfVariance) {
    Trigger("mnuANOVA(0)");
    AcceptOptions();
    constexpr int effect = 2;
    constexpr int groups = 4;
    ASSERT_EQ(ParKind(effect), Kind::SdOfMeans);
    ASSERT_EQ(ParKind(groups), Kind::NoOfGroups);
    Type(groups, "4");
    When([this](QWidget& grid) {
        EXPECT_EQ(grid.windowTitle(), "Calculation of H1: Standard Deviation of Means");
        EXPECT_EQ(Table().rowCount(), 4);
        EXPECT_EQ(Table().verticalHeaderItem(3)->text(), "Group 4");
        for (const char* mean : {"575", "600", "650", "675"}) {
            TypeText(mean);
            Key(Qt::Key_Return);
        }
        hands::Click(grid, "cmdOK");
    });
    QTest::keyClick(&Box(effect), Qt::Key_F2);
    EXPECT_EQ(Value(effect), "39.52847");
    EXPECT_EQ(HasGridData, True);
}

// Every check of a grid, as its user meets it: the block is pasted, "Calculate" is pressed, the
// message comes and the box goes to the cell.
TEST_F(GridWindow, TellsWhatIsWrongWordForWord) {
    struct Refusal {
        GridCheck Check;
        const char* Block;
        const char* Message;
        QPoint At; // row, column
    };
    const Refusal refusals[] = {
        {ProportionCells(),
         "0.5\t1.5\n0\t1",
         "Proportion in Cell  (1,2)  Must Be >= 0 and <= 1.",
         {1, 2}},
        {ProbabilityCells(1),
         "0.5\t0.5\n0\t0.5",
         "Probability in Cell  (2,1)  Must Be > 0 and < 1",
         {2, 1}},
        {RatioCells(), "1\t0\n1\t1", "Ratio in Cell  (1,2)  Must Be > 0.", {1, 2}},
        {RowsAddTo(0), "1\t-1\n1\t-0.5", "Sum of Numbers in Row 2 Must Be = 0", {2, 2}},
        {RowsOfProportions(),
         "0.5\t0.6\n0.5\t0.5",
         "Sum of Proportions in Row 1> 1. Must Equal 1.",
         {1, 2}},
        {RowsOfProportions(),
         "0.5\t0.5\n0.5\t0.4",
         "Sum of Proportions in Row 2 Must Equal 1.",
         {2, 2}},
        {IncreasingRows(), "1\t2\n2\t1", "Numbers in Row 2 Must Be Strictly Increasing.", {2, 2}},
        {IntegerCells(9),
         "1\t9\n10\t1",
         "Numbers in Row 2 Must Be Integers between 1 and 9",
         {2, 1}},
        {CellsAddToOne(), "0.25\t0.25\n0.25\t0.5", "Sum of Probabilities Must Equal 1.", {2, 2}},
        {CovarianceMatrix(),
         "4\t3\n3\t1",
         "Invalid Covariance Matrix. Correlation Coefficient (1, 2 ) Will Be 1.5",
         {1, 2}},
        {CovarianceMatrix(), "0\t0\n0\t1", "Variance in Cell  (1,1)  Must Be > 0.", {1, 1}},
        {CovarianceMatrix(),
         "4\t2\n2\t1",
         "Invalid Covariance Matrix. Correlation Coefficient (1, 2 ) Will Be 1.0",
         {1, 2}},
        {ColumnsAddTo(0), "1\t1\n-1\t1", "Sum of Numbers in Column 2 Must Be = 0", {2, 2}},
        {DeviationCells(),
         "1\t1\n-1\t1",
         "Standard Deviation in Cell  (2,1)  Must Be > 0.",
         {2, 1}},
        {NonNegativeCells("Rate"), "1\t1\n0\t-1", "Rate in Cell  (2,2)  Must Be >= 0.", {2, 2}},
        {ShareCells("Share"), "0\t1\n0\t0", "Share in Cell  (1,2)  Must Be >= 0 and < 1.", {1, 2}},
        {TreatmentCells(2), "1\t3\n2\t1", "Improper Treatment Numbers. Must Be 1,..., 2", {1, 2}},
        {TreatmentCells(3),
         "1\t2\n2\t0",
         "Treatment Numbers Must Be Consecutive up to 3 and  Washout = 0.",
         {2, 2}},
        {nullptr,
         "1\t2\n1000000000000000000000000000000000000000\t0",
         "Number in Cell  (2,1)  Is Too Large.",
         {2, 1}},
        {nullptr, "1\t2\n\t0", "A Value Is Missing.", {2, 1}},
        {WithRowCaptions({"H0:", "H1:"}, RowsOfProportions()),
         "0.5\t0.5\n0.5\t0.4",
         "H1: Sum of Proportions in Row 2 Must Equal 1.",
         {2, 2}},
    };
    for (const Refusal& refusal : refusals) {
        Messages.Texts.clear();
        When([&](QWidget& grid) {
            QApplication::clipboard()->setText(refusal.Block);
            Key(Qt::Key_V, Qt::ControlModifier);
            hands::Click(grid, "cmdOK");
            EXPECT_TRUE(grid.isVisible()) << refusal.Message;
            EXPECT_EQ(Place(), refusal.At) << refusal.Message;
        });
        EXPECT_FALSE(Ask({.Store = 1, .Rows = 2, .Columns = 2, .Check = refusal.Check}));
        EXPECT_EQ(Messages.Texts, QStringList{refusal.Message});
    }
}

TEST_F(GridWindow, FilledGridsCanBeLookedAt) {
    When([this](QWidget& grid) {
        QApplication::clipboard()->setText("1\t2\n3\t4\n5\t6\n");
        Key(Qt::Key_V, Qt::ControlModifier);
        hands::Click(grid, "cmdOK");
    });
    ASSERT_TRUE(Ask(Means()));
    ThePlatform().RefreshMenus();
    Trigger("mnuShowGrids");
    QWidget* shown = hands::TopWindow("frmGridTable0");
    ASSERT_NE(shown, nullptr);
    const auto& tabs = *hands::Control<QTabWidget>(*shown, "tabGrids");
    ASSERT_EQ(tabs.count(), 1);
    EXPECT_EQ(tabs.tabText(0), "Means of groups");
    const auto* table = tabs.widget(0)->findChild<QTableWidget*>();
    EXPECT_EQ(table->item(1, 1)->text(), "4");
    EXPECT_EQ(table->verticalHeaderItem(1)->text(), "Group 2");
    EXPECT_EQ(table->horizontalHeaderItem(1)->text(), "Standard Deviation");
    EXPECT_EQ(table->editTriggers(), QAbstractItemView::NoEditTriggers);
}

} // namespace
} // namespace quorvanta
