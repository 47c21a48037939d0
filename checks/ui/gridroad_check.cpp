// The road of a value that derives from an input grid, in the real windows: opened, filled, looked
// at later, given up, taken back.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "support/temporary_folder.h"
#include "ui/grid_window.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QTabWidget>
#include <QToolButton>

#include <set>
#include <span>

namespace quorvanta {
namespace {

class GridRoad : public GridWindow {
  protected:
    static constexpr int effect = 2;
    static constexpr int groups = 4;

    // The one-way analysis of variance with three groups.
    void OpenAnova(i16 windowKind = CalculationWindow) {
        Trigger(ControlName("mnuFile", windowKind));
        Trigger("mnuANOVA(0)");
        AcceptOptions();
        ASSERT_EQ(ParKind(effect), Kind::SdOfMeans);
        ASSERT_EQ(ParKind(groups), Kind::NoOfGroups);
        if (windowKind == CalculationWindow)
            Type(groups, "3");
    }

    // What the box opens is seen, filled with this block if any, and accepted or given up.
    void Fill(const QString& block, bool accept = true) {
        When([this, block, accept](QWidget& grid) {
            ++opened_;
            seen_ = Texts();
            if (!block.isEmpty()) {
                QApplication::clipboard()->setText(block);
                Key(Qt::Key_V, Qt::ControlModifier);
            }
            if (accept)
                hands::Click(grid, "cmdOK");
        });
    }

    QStringList Texts() {
        QStringList texts;
        for (int row = 1; row <= Table().rowCount(); ++row)
            for (int column = 1; column <= Table().columnCount(); ++column)
                texts << TextAt(row, column);
        return texts;
    }

    void PressF2(ValueBox& box) {
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_F2);
        hands::Settle();
    }

    void FillMeans(const QString& block) {
        Fill(block);
        PressF2(Box(effect));
    }

    int opened_ = 0;
    QStringList seen_; // of the grid that was opened last
};

TEST_F(GridRoad, ABlueBoxIsOpenedByDoubleClickKeyAndButton) {
    OpenAnova();
    Fill("", false);
    QTest::mouseDClick(&Box(effect), Qt::LeftButton);
    hands::Settle();
    EXPECT_EQ(opened_, 1);
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(opened_, 2);
    Fill("", false);
    for (QToolButton* button : Box(effect).findChildren<QToolButton*>())
        if (button->defaultAction() == Box(effect).findChild<QAction*>("actTables"))
            QTest::mouseClick(button, Qt::LeftButton);
    hands::Settle();
    EXPECT_EQ(opened_, 3);
    Fill("", false);
    QTest::keyClick(&Box(effect), Qt::Key_G, Qt::ControlModifier);
    hands::Settle();
    EXPECT_EQ(opened_, 4);
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(GridRoad, FiguresStandThereAsFilledInEarlier) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    const QString value = Value(effect);
    EXPECT_EQ(value, "2.94392");
    FillMeans("");
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
    EXPECT_EQ(Value(effect), value);
    Type(groups, "4");
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8", ""}));
    Type(groups, "2");
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3"}));
    Type(groups, "3");
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"})) << "given up each time";
}

TEST_F(GridRoad, CancelLeavesValueAndFigures) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    const QString value = Value(effect);
    Fill("5\n6\n9\n", false);
    PressF2(Box(effect));
    EXPECT_EQ(Value(effect), value);
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
    EXPECT_EQ(HasGridData, True);
}

TEST_F(GridRoad, CtrlZBringsValueAndFiguresBack) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    const QString value = Value(effect);
    FillMeans("1\n3\n11\n");
    EXPECT_NE(Value(effect), value);
    Trigger("mnuStepBack");
    EXPECT_EQ(Value(effect), value);
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
}

TEST_F(GridRoad, AFileBringsTheFiguresWithIt) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    const QString value = Value(effect);
    const checks::TemporaryFolder folder;
    const QString path = ToQt(folder.Path("means.dim"));
    Messages.FileNames = {path};
    Trigger("mnuFile(7)");
    CloseChild();
    Messages.FileNames = {path};
    Trigger("mnuFile(5)");
    EXPECT_EQ(Value(effect), value);
    QWidget* shown = Window().Floating(FloatingWindow::Grid);
    ASSERT_TRUE(shown->isVisible());
    const auto& tabs = *hands::Control<QTabWidget>(*shown, "tabGrids");
    ASSERT_EQ(tabs.count(), 1);
    EXPECT_EQ(tabs.widget(0)->findChild<QTableWidget*>()->item(2, 0)->text(), "8");
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
}

TEST_F(GridRoad, AValueOfOnesOwnDiscardsTheGrid) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    Trigger("mnuShowGrids");
    EXPECT_TRUE(Window().Floating(FloatingWindow::Grid)->isVisible());
    Type(effect, "0.5");
    EXPECT_EQ(HasGridData, False);
    EXPECT_FALSE(Window().Floating(FloatingWindow::Grid)->isVisible());
    EXPECT_FALSE(Window().findChild<QAction*>("mnuShowGrids")->isEnabled());
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"})) << "the figures stay for the next time";
}

// A new analysis starts with the figures of the run; each then keeps its own.
TEST_F(GridRoad, EachWindowHasFiguresOfItsOwn) {
    OpenAnova();
    FillMeans("1\n3\n8\n");
    OpenAnova();
    FillMeans("2\n3\n8\n");
    ThePlatform().RaiseChild(CalculationWindow, 2);
    hands::Settle();
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
    Trigger("mnuStudent(0)");
    EXPECT_EQ(HasGridData, False);
    ThePlatform().RaiseChild(CalculationWindow, 3);
    hands::Settle();
    Fill("", false);
    PressF2(Box(effect));
    EXPECT_EQ(seen_, (QStringList{"2", "3", "8"}));
}

// There the blue box is one of the fixed values, as long as it is no axis.
TEST_F(GridRoad, ATableAndAGraphTakeAValueFromItsGrid) {
    for (const i16 kind : {TableWindow, GraphWindow}) {
        SCOPED_TRACE(kind);
        OpenAnova(kind);
        Choose(YRole, Power);
        Choose(XRole, Level);
        Choose(ZRole, static_cast<i16>(PlaceOf(ParLabel(Kind::Sd))));
        TypeIntoBox(FixedBox(groups).objectName(), "3");
        opened_ = 0;
        Fill("1\n3\n8\n");
        PressF2(static_cast<ValueBox&>(FixedBox(effect)));
        EXPECT_EQ(opened_, 1);
        EXPECT_EQ(FixedBox(effect).text(), "2.94392");
        EXPECT_EQ(HasGridData, True);
        PressOk();
        hands::Settle();
        EXPECT_EQ(Calculated, True);
        EXPECT_EQ(Messages.Texts, QStringList());
        Fill("", false);
        QTest::mouseDClick(&FixedBox(effect), Qt::LeftButton);
        hands::Settle();
        EXPECT_EQ(seen_, (QStringList{"1", "3", "8"}));
        EXPECT_EQ(Calculated, True) << "nothing was changed";

        for (const int role : {XRole, YRole, ZRole}) {
            const i16 former = role == XRole ? XParNo : role == YRole ? UnknownParNo : ZParNo;
            Choose(role, groups);
            PressF2(static_cast<ValueBox&>(FixedBox(effect)));
            EXPECT_EQ(opened_, 2);
            EXPECT_EQ(
                Messages.Texts,
                QStringList{"Can't Be Calculated When No of Groups Is the X-, Y-, or Z-axis."});
            Messages.Texts.clear();
            Choose(role, former);
        }
        EXPECT_EQ(FixedBox(effect).text(), "2.94392");
    }
}

// --- Every grid of every test --------------------------------------------------------------------

class EveryGridWindow : public GridWindow {
  protected:
    void WalkTests(std::span<const MenuItem> items) {
        for (const MenuItem& item : items) {
            WalkTests(item.Children);
            if (item.Action != MenuAction::Test ||
                !HasEquation({.IsTest = True, .TestNo = item.TestNo}))
                continue;
            SCOPED_TRACE(std::string(item.Caption));
            NewTest(item.MenuNo);
            const i16 checks = NoOfCheck;
            for (i16 ticked = -1; ticked < checks; ++ticked) {
                NewTest(item.MenuNo);
                for (i16 i = 0; i < NoOfCheck; ++i)
                    ChooseCheck(i, i == ticked);
                quorvanta::AcceptOptions();
                Messages.Texts.clear();
                WalkGrids();
            }
        }
    }

    std::set<std::string> Seen;

  private:
    void WalkGrids() {
        for (i16 blue = 0; blue <= NoOfPar; ++blue) {
            if (!SelIsTablePar(blue) || SelTableDistr(blue))
                continue;
            const std::vector<Grid> grids = SelTableGrids(blue);
            EXPECT_FALSE(grids.empty()) << FromQt(Messages.Texts.join("; "));
            for (const Grid& grid : grids) {
                SCOPED_TRACE(ParLabel(ParKind(blue)) + ": " + grid.Title);
                const std::string looks = grid.Title + "|" + grid.RowHeads + "|" +
                                          grid.ColumnHeads + "|" + std::to_string(grid.Columns);
                if (!Seen.insert(looks).second)
                    continue;
                When([this](QWidget& window) { WalkCells(window); });
                Ask(grid, ParLabel(ParKind(blue)));
            }
        }
    }

    // By the Tab key from the first cell to the button behind the last, past those that can't be
    // entered.
    void WalkCells(QWidget& window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_TRUE(window.windowTitle().startsWith("Calculation of "));
        EXPECT_EQ(hands::Control(window, "lblSum")->isVisible(),
                  CurrentGrid().Title == "Probability in Category (X, Y)");
        for (i16 row = 1; row <= CurrentGrid().Rows; ++row)
            for (i16 column = 1; column <= CurrentGrid().Columns; ++column) {
                if (IsLockedCell(row, column))
                    continue;
                EXPECT_TRUE(Cell().hasFocus());
                EXPECT_EQ(Place(), QPoint(row, column));
                const QStringList heads{Table().verticalHeaderItem(row - 1)->text(),
                                        Table().horizontalHeaderItem(column - 1)->text()};
                EXPECT_EQ(Cell().accessibleName(), heads.join(", "));
                for (const QString& head : heads)
                    EXPECT_FALSE(head.trimmed().isEmpty());
                Key(Qt::Key_Tab);
            }
        EXPECT_TRUE(hands::Control(window, "cmdOK")->hasFocus());
        EXPECT_EQ(Messages.Texts, QStringList());
        Messages.Texts.clear();
    }
};

TEST_F(EveryGridWindow, IsWalkedByTheTabKey) {
    WalkTests(MainMenu());
    EXPECT_GT(Seen.size(), 30U);
}

} // namespace
} // namespace quorvanta
