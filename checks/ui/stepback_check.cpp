// Ctrl+Z in the windows, and the options of an analysis chosen again.
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/records.h"
#include "ui/qttext.h"
#include "ui/run_fixture.h"
#include "ui/valuebox.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTest>

namespace quorvanta {
namespace {

class StepBackKey : public RunCheck {
  protected:
    // The power of 64 and 64 subjects for a difference of 0.5, which stands in the box of position
    // Power.
    void OpenSolved() {
        OpenTTest();
        Type(Mean1, "0.5");
        Type(Sd, "1");
        Type(Size1, "64");
        Press(Power);
        hands::Settle();
        shown_ = Shown();
        ASSERT_TRUE(shown_.contains("64"));
    }

    QStringList Shown() {
        QStringList texts{hands::TextOf(Child(), "lblHead1")};
        for (int i = 0; i <= NoOfPar; ++i)
            texts << Value(i);
        return texts;
    }

    QAction& Entry(const char* name) { return *Window().findChild<QAction*>(name); }

    // The key goes where the focus is.
    void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QWidget* focused = Window().focusWidget();
        QTest::keyClick(focused != nullptr ? focused : &Window(), key, modifiers);
        hands::Settle();
    }
    void Undo() { PressKey(Qt::Key_Z, Qt::ControlModifier); }
    void ReopenByKey() { PressKey(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier); }

    QStringList shown_;
};

TEST_F(StepBackKey, BringsBackTheValueThatASlipTook) {
    OpenSolved();
    Press(Sd);
    EXPECT_NE(Shown(), shown_);
    EXPECT_EQ(Entry("mnuStepBack").text(), "&Undo Calculation");
    Undo();
    EXPECT_EQ(Shown(), shown_);
    EXPECT_FALSE(Box(Power).IsGrey());
    EXPECT_TRUE(Box(Power).font().bold());
    EXPECT_EQ(Entry("mnuStepBack").text(), "&Redo Calculation");
}

TEST_F(StepBackKey, DoesTheStepAgainTheSecondTime) {
    OpenSolved();
    Press(Sd);
    const QStringList after = Shown();
    Undo();
    Undo();
    EXPECT_EQ(Shown(), after);
    Undo();
    EXPECT_EQ(Shown(), shown_);
}

TEST_F(StepBackKey, BelongsToTheBoxThatHasTheFocus) {
    OpenSolved();
    Press(Sd);
    const QStringList after = Shown();
    hands::Click(Box(Size1));
    QTest::keyClicks(&Box(Size1), "70");
    EXPECT_EQ(Value(Size1), "70");
    Undo();
    EXPECT_EQ(Value(Size1), "64");
    EXPECT_EQ(UnknownParNo, Sd);
    Undo(); // what was typed before the calculation, still of the box
    EXPECT_EQ(Value(Size1), "30");
    EXPECT_EQ(UnknownParNo, Sd);
    EXPECT_EQ(Value(Sd), after[1 + Sd]);
}

TEST_F(StepBackKey, WorksAfterTheOptions) {
    OpenSolved();
    Trigger("mnuStudent(1)");
    EXPECT_FALSE(Entry("mnuStepBack").isEnabled());
    EXPECT_FALSE(Entry("mnuReopenOptions").isEnabled());
    AcceptOptions();
    EXPECT_NE(Shown(), shown_);
    EXPECT_EQ(Entry("mnuStepBack").text(), "&Undo New Test");
    Undo();
    EXPECT_EQ(Shown(), shown_);
    EXPECT_TRUE(Box(Power).font().bold());
}

TEST_F(StepBackKey, ShowsAStaleResultAsStale) {
    OpenSolved();
    Type(Size1, "60");
    Press(Sd);
    Undo();
    EXPECT_EQ(Value(Power), shown_[1 + Power]);
    EXPECT_EQ(Value(Size1), "60");
    EXPECT_TRUE(Box(Power).IsGrey());
    EXPECT_FALSE(Box(Power).font().bold());
}

TEST_F(StepBackKey, IsInTheMenuOfWindows) {
    OpenSolved();
    Press(Sd);
    hands::ChooseMenu(*Window().menuBar(), {"&Window", "&Undo Calculation"});
    EXPECT_EQ(Shown(), shown_);
    EXPECT_EQ(Entry("mnuStepBack").shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
}

TEST_F(StepBackKey, IsDimmedWhenThereIsNothingToUndo) {
    EXPECT_EQ(Entry("mnuStepBack").text(), "&Undo");
    EXPECT_FALSE(Entry("mnuStepBack").isEnabled());
    Trigger("mnuFile(0)");
    EXPECT_FALSE(Entry("mnuStepBack").isEnabled());
    Trigger("mnuStudent(0)");
    AcceptOptions();
    EXPECT_FALSE(Entry("mnuStepBack").isEnabled());
}

TEST_F(StepBackKey, EveryEntryOfTheMenuOfWindowsHasALetterOfItsOwn) {
    OpenSolved();
    auto& menu = *Window().findChild<QMenu*>("mnuWindowHead");
    for (const char* step : {"&Undo Calculation", "&Redo Calculation"}) {
        emit menu.aboutToShow();
        EXPECT_EQ(Entry("mnuStepBack").text(), step);
        QSet<QKeySequence> letters;
        for (const QAction* action : menu.actions()) {
            if (action->isSeparator() || action->isCheckable())
                continue;
            const QKeySequence letter = QKeySequence::mnemonic(action->text());
            EXPECT_FALSE(letter.isEmpty() || letters.contains(letter))
                << qPrintable(action->text());
            letters.insert(letter);
        }
        Undo();
    }
}

TEST_F(StepBackKey, BringsATableBackWithItsAxes) {
    OpenRunWindow(NewTable);
    AskForSizes("0.8", "0.5", "1.5", "0.5", "1 2");
    PressOk();
    const QString table = Picture().accessibleDescription();
    ASSERT_FALSE(table.isEmpty());
    Trigger("mnuStudent(1)");
    AcceptOptions();
    EXPECT_TRUE(Picture().parentWidget()->parentWidget()->isHidden());
    Undo();
    EXPECT_EQ(Picture().accessibleDescription(), table);
    EXPECT_TRUE(Picture().isVisible());
    EXPECT_TRUE(hands::Control(Child(), "lblStale")->isHidden());
    EXPECT_EQ(ParBox("txtXminValue").text(), "0.5");
    EXPECT_EQ(ParBox("txtZValue").text(), "1 2");
    Undo();
    EXPECT_EQ(TestNo, 1);
    EXPECT_TRUE(Picture().parentWidget()->parentWidget()->isHidden());
}

// --- Options chosen again ---------------------------------------------------------------------

TEST_F(StepBackKey, OptionsAreOpenedByKeyWithThePresentChoices) {
    OpenSolved();
    EXPECT_EQ(Entry("mnuReopenOptions").shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    Press(Size1);
    ReopenByKey();
    ASSERT_TRUE(Options().isVisible());
    EXPECT_TRUE(hands::Control<QAbstractButton>(Options(), "optIntPar0(1)")->isChecked());
    EXPECT_TRUE(hands::Control<QAbstractButton>(Options(), "optTails(1)")->isChecked());
    hands::Click(Options(), "optTails(0)");
    AcceptOptions();
    EXPECT_EQ(UnknownParNo, Size1);
    EXPECT_EQ(Value(Mean1), "0.5");
    EXPECT_EQ(Value(Power), shown_[1 + Power]);
    EXPECT_TRUE(Box(Size1).font().bold());
    EXPECT_EQ(Entry("mnuStepBack").text(), "&Undo Options");
    Undo();
    EXPECT_EQ(NoOfTails, TwoSided);
}

TEST_F(StepBackKey, OptionsGivenUpLeaveEverythingAsItWas) {
    OpenSolved();
    hands::ChooseMenu(*Window().menuBar(), {"&Window", "&Options..."});
    ASSERT_TRUE(Options().isVisible());
    // The head is that of the former options until these are accepted.
    EXPECT_FALSE(hands::Control(Child(), "lblHead1")->isVisible());
    hands::Click(Options(), "optTails(0)");
    QTest::keyClick(&Options(), Qt::Key_Escape);
    EXPECT_EQ(Shown(), shown_);
    EXPECT_TRUE(Box(Power).font().bold());
    EXPECT_TRUE(hands::Control(Child(), "lblHead1")->isVisible());
    EXPECT_FALSE(Options().isVisible());
}

TEST_F(StepBackKey, AWindowWithoutAnAnalysisHasNoOptions) {
    EXPECT_FALSE(Entry("mnuReopenOptions").isEnabled());
    Trigger("mnuFile(0)");
    EXPECT_FALSE(Entry("mnuReopenOptions").isEnabled());
    ReopenByKey();
    EXPECT_FALSE(Options().isVisible());
    Trigger("mnuStudent(0)");
    AcceptOptions();
    EXPECT_TRUE(Entry("mnuReopenOptions").isEnabled());
}

} // namespace
} // namespace quorvanta
