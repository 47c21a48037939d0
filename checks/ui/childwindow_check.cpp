// Child windows: opening, changing between them, closing, and the end of the program.
#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/records.h"
#include "core/setup.h"
#include "ui/childwindow.h"
#include "ui/frmcalc.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

namespace quorvanta {
namespace {

class ChildWindows : public WindowCheck {
  protected:
    QList<QMdiSubWindow*> Frames() { return Area().subWindowList(); }

    QWidget& Parameters() { return *Window().Floating(FloatingWindow::Parameters); }

    // A Table window with the unpaired t-test, not yet calculated.
    void OpenTable() {
        Trigger("mnuFile(1)");
        Trigger("mnuStudent(0)");
        AcceptOptions();
        ASSERT_TRUE(Parameters().isVisible());
    }

    // Every analysis as if just saved.
    static void MarkAllSaved() {
        for (i16 n = 1; n <= Analysis.HighBound(); ++n)
            AnalysisState(n).Changed = False;
    }

    static QStringList Asked(std::initializer_list<int> windows) {
        QStringList texts;
        for (const int window : windows)
            texts << QString("Calculation %1 Has Been Changed.\n\nSave Analysis?").arg(window);
        return texts;
    }
};

// --- Opening ----------------------------------------------------------------------------------

TEST_F(ChildWindows, CarryCaptionAndRecordNumber) {
    Trigger("mnuFile(0)");
    Trigger("mnuFile(0)");
    ASSERT_EQ(Frames().size(), 2);
    EXPECT_EQ(Frames()[0]->windowTitle(), "Calculation 1");
    EXPECT_EQ(Frames()[1]->windowTitle(), "Calculation 2");
    EXPECT_EQ(Frames()[0]->widget()->property("tag").toString(), "1");
    EXPECT_EQ(Frames()[1]->widget()->property("tag").toString(), "2");
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Area().activeSubWindow(), Frames()[1]);
}

TEST_F(ChildWindows, OpenInACascade) {
    for (int i = 0; i < 3; ++i)
        Trigger("mnuFile(0)");
    const int dpi = Window().logicalDpiX();
    EXPECT_EQ(Frames()[0]->pos(), QPoint(0, 0));
    EXPECT_EQ(Frames()[1]->pos(), QPoint(150 * dpi / 1440, 350 * dpi / 1440));
    EXPECT_EQ(Frames()[2]->pos(), QPoint(300 * dpi / 1440, 700 * dpi / 1440));
}

TEST_F(ChildWindows, StayInsideTheirAreaHoweverManyOpen) {
    const QRect area = Area().viewport()->rect();
    for (int i = 0; i < 60; ++i)
        Trigger("mnuFile(0)");
    for (const QMdiSubWindow* frame : Frames())
        EXPECT_TRUE(area.contains(frame->geometry())) << qPrintable(frame->windowTitle());
    // The last one grows with its test and is moved in as far as it must.
    Trigger("mnuStudent(0)");
    AcceptOptions();
    EXPECT_TRUE(area.contains(Child().parentWidget()->geometry()));
}

TEST_F(ChildWindows, ShareTheTextsOfAKind) {
    OpenTTest();
    Type(PlaceOf("&Standard Deviation"), "0.77");
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(0)");
    AcceptOptions();
    EXPECT_EQ(Value(PlaceOf("&Standard Deviation")), "0.77");
}

TEST_F(ChildWindows, OpenAsTheirOwnWhileAnotherProgramIsInFront) {
    OpenTable();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Trigger("mnuFile(2)");
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Frames()[1]->widget()->property("tag").toString(), "2");
    EXPECT_EQ(Area().currentSubWindow(), Frames()[1]);
    EXPECT_EQ(Analysis(1).TestName, "Student's t-test, Unpaired");
}

// --- Changing between windows -----------------------------------------------------------------

TEST_F(ChildWindows, StayCurrentWhenTheParameterWindowGoes) {
    OpenTTest();
    OpenTable();
    Trigger("mnuFile(0)");
    Area().setActiveSubWindow(Frames()[1]);
    ASSERT_EQ(AnalysisNo, 2);
    hands::Click(Parameters(), "txtParValue(0)");
    Trigger("mnuStudent(1)");
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_FALSE(Parameters().isVisible());
    AcceptOptions();
    EXPECT_EQ(Analysis(2).TestName, "Student's t-test, Paired");
    EXPECT_EQ(Analysis(1).TestName, "Student's t-test, Unpaired");
    EXPECT_EQ(Analysis(3).TestName, "");
}

TEST_F(ChildWindows, ShowTheirAnalysisAgainWhenTheyGoBehindWithOptionsOpen) {
    OpenTTest();
    OpenTTest();
    const auto isShown = [this](const char* control) {
        return !hands::Control(*Frames()[1]->widget(), control)->isHidden();
    };
    Trigger("mnuStudent(1)");
    ASSERT_FALSE(isShown("txtParValue(1)"));
    Area().setActiveSubWindow(Frames()[0]);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_TRUE(isShown("txtParValue(1)"));
    EXPECT_FALSE(isShown("lblHint"));

    Area().setActiveSubWindow(Frames()[1]);
    Trigger("mnuStudent(1)");
    Trigger("mnuFile(0)");
    EXPECT_TRUE(isShown("txtParValue(1)"));
}

TEST_F(ChildWindows, AreCurrentWhenTheyAreUsedWhereTheyAre) {
    OpenTTest();
    auto* behind = qobject_cast<frmCalc*>(Frames()[0]->widget());
    OpenTable();
    behind->cmdParLabel_Click(5);
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(UnknownParNo, 5);
    EXPECT_EQ(Area().currentSubWindow(), Frames()[0]);
    EXPECT_EQ(AnalysisState(2).Calculated, False);

    Area().setActiveSubWindow(Frames()[1]);
    ASSERT_EQ(AnalysisNo, 2);
    // As a text dragged there does it.
    hands::Control<ValueBox>(*behind, "txtParValue(4)")->setText("0.77");
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Value(4), "0.77");
    EXPECT_EQ(ParText(ParKind(4)), "0.77");
}

TEST_F(ChildWindows, TakeTheSummaryAwayWithTheResultThatItIsOf) {
    for (const char* entry : {"mnuStudent(1)", "mnuFile(0)"}) {
        OpenTTest();
        Trigger("mnuGetInfo(3)");
        QWidget& summary = *Window().Floating(FloatingWindow::Summary);
        ASSERT_TRUE(summary.isVisible());
        Trigger(entry);
        EXPECT_FALSE(summary.isVisible()) << entry;
    }
}

TEST_F(ChildWindows, KeepTheirOwnAnalysis) {
    OpenTTest();
    const int sd = PlaceOf("&Standard Deviation");
    Type(sd, "2");
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(1)");
    AcceptOptions();
    const QString secondHead = hands::TextOf(Child(), "lblHead1");
    EXPECT_TRUE(secondHead.startsWith("Student's t-test, Paired"));

    // A click on the free space of the first window brings it to the front.
    auto* first = Frames()[0]->widget();
    QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(first->width() / 2, first->height() - 4));
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(CalcNo, 1);
    EXPECT_EQ(Area().activeSubWindow(), Frames()[0]);
    EXPECT_EQ(Value(sd), "2");
    EXPECT_EQ(TestNo, 0);

    Area().setActiveSubWindow(Frames()[1]);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(TestNo, 1);
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), secondHead);
}

TEST_F(ChildWindows, KeepAStaleResultStaleWhileAnotherWasInFront) {
    OpenTTest();
    Type(PlaceOf("&Standard Deviation"), "2");
    ASSERT_EQ(Calculated, False);
    Trigger("mnuFile(0)");
    Area().setActiveSubWindow(Frames()[0]);
    EXPECT_EQ(Calculated, False);
    EXPECT_TRUE(Box(PlaceOf("&Power")).IsGrey());
}

TEST_F(ChildWindows, KeepAStaleResultStaleAfterAnotherProgramWasInFront) {
    OpenTTest();
    Type(PlaceOf("&Standard Deviation"), "2");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(Calculated, False);
    EXPECT_TRUE(Box(PlaceOf("&Power")).IsGrey());
}

// The focus is in the parameter window, at the side of a table, when that window goes away.
class BesideParameters : public ChildWindows {
  protected:
    BesideParameters() {
        OpenTTest();
        Trigger("mnuFile(1)");
        Trigger("mnuStudent(0)");
        AcceptOptions();
        QWidget& parameters = *Window().Floating(FloatingWindow::Parameters);
        hands::Click(parameters, "cmdOK");
        hands::TypeInto(parameters, "txtXminValue", "0.1");
    }
};

TEST_F(BesideParameters, AWindowOpensWithAnAnalysisOfItsOwn) {
    OpenTTest();
    EXPECT_EQ(AnalysisNo, 3);
    ASSERT_EQ(Frames().size(), 3);
    EXPECT_EQ(Frames()[2]->windowTitle(), "Calculation 2");
    EXPECT_EQ(Frames()[2]->widget()->property("tag").toString(), "3");
    EXPECT_EQ(Area().activeSubWindow(), Frames()[2]);
}

TEST_F(BesideParameters, ATestIsChosenForTheTable) {
    Trigger("mnuStudent(1)");
    EXPECT_EQ(AnalysisNo, 2);
    AcceptOptions();
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Analysis(2).TestNo, 1);
    EXPECT_EQ(Analysis(1).TestNo, 0);
    EXPECT_EQ(Area().activeSubWindow()->windowTitle(), "Table 1");
}

TEST_F(BesideParameters, AnotherWindowComesToTheFront) {
    Trigger("mnuFile(0)");
    Area().setActiveSubWindow(Frames()[1]);
    hands::TypeInto(*Window().Floating(FloatingWindow::Parameters), "txtXminValue", "0.2");
    Area().setActiveSubWindow(Frames()[2]);
    EXPECT_EQ(AnalysisNo, 3);
    EXPECT_EQ(Area().activeSubWindow(), Frames()[2]);
}

TEST_F(BesideParameters, TheTableCloses) {
    OpenTTest();
    Area().setActiveSubWindow(Frames()[1]);
    hands::TypeInto(*Window().Floating(FloatingWindow::Parameters), "txtXminValue", "0.2");
    MarkAllSaved();
    CloseChild();
    EXPECT_EQ(AnalysisNo, 1) << "the lowest that is open";
    EXPECT_EQ(Area().activeSubWindow()->windowTitle(), "Calculation 1");
}

TEST_F(ChildWindows, DoNotChangeTheAnalysisDuringARun) {
    OpenTTest();
    Trigger("mnuFile(0)");
    Calculating = True;
    Area().setActiveSubWindow(Frames()[0]);
    EXPECT_EQ(AnalysisNo, 2);
    Calculating = False;
}

TEST_F(ChildWindows, AreListedInTheWindowMenu) {
    OpenTTest();
    Trigger("mnuFile(0)");
    auto* menu = Window().findChild<QMenu*>("mnuWindowHead");
    emit menu->aboutToShow();
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts << action->text();
    EXPECT_TRUE(texts.contains("Calculation 1"));
    EXPECT_TRUE(texts.contains("Calculation 2"));
    menu->actions().at(texts.indexOf("Calculation 1"))->trigger();
    EXPECT_EQ(AnalysisNo, 1);
}

// --- Closing ----------------------------------------------------------------------------------

TEST_F(ChildWindows, CloseUnaskedWhenNothingHasChanged) {
    OpenTTest();
    MarkAllSaved();
    CloseChild();
    EXPECT_TRUE(Frames().isEmpty());
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(ChildWindows, AskAboutUnsavedChangesAndCloseOnNo) {
    OpenTTest();
    Messages.Answers = {QMessageBox::No};
    CloseChild();
    EXPECT_EQ(Messages.Texts, Asked({1}));
    EXPECT_EQ(Messages.LastButtons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
    EXPECT_EQ(CloseMode, CloseByUser);
    EXPECT_TRUE(Frames().isEmpty());
}

TEST_F(ChildWindows, StayOpenOnCancelWithEveryValue) {
    OpenTTest();
    const int sd = PlaceOf("&Standard Deviation");
    Type(sd, "4");
    Messages.Answers = {QMessageBox::Cancel};
    CloseChild();
    ASSERT_EQ(Frames().size(), 1);
    EXPECT_EQ(Value(sd), "4");
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(ChildWindows, CloseOnYesWhenTheSaveSucceeds) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("plan.dim");
    OpenTTest();
    Messages.Answers = {QMessageBox::Yes};
    Messages.FileNames = {path};
    CloseChild();
    EXPECT_EQ(Messages.Texts, Asked({1}));
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Calculation"});
    EXPECT_EQ(QFileInfo(path).size(), 6350);
    EXPECT_TRUE(Frames().isEmpty());
}

TEST_F(ChildWindows, StayOpenOnYesWhenTheSaveIsGivenUp) {
    OpenTTest();
    Messages.Answers = {QMessageBox::Yes};
    CloseChild();
    EXPECT_EQ(Messages.Texts, Asked({1}));
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Calculation"});
    EXPECT_EQ(Frames().size(), 1);
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(ChildWindows, StayOpenOnYesWhenTheSaveFails) {
    const QTemporaryDir folder;
    OpenTTest();
    Messages.Answers = {QMessageBox::Yes};
    Messages.FileNames = {folder.filePath("missing/plan.dim")};
    CloseChild();
    EXPECT_EQ(Messages.Texts, Asked({1})) << "the failure itself is silent";
    EXPECT_EQ(Frames().size(), 1);
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(ChildWindows, RefuseToCloseDuringARunWithoutAMessage) {
    OpenTTest();
    Calculating = True;
    CloseChild();
    EXPECT_EQ(Frames().size(), 1);
    EXPECT_TRUE(Messages.Texts.isEmpty());
    Window().close();
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(Messages.Texts.isEmpty());
    Calculating = False;
}

TEST_F(ChildWindows, LeaveTheLowestOpenAnalysisCurrent) {
    for (int i = 0; i < 3; ++i)
        OpenTTest();
    MarkAllSaved();
    CloseChild();
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Area().activeSubWindow()->windowTitle(), "Calculation 1");
    EXPECT_EQ(AnalysisState(3).Closed, True);
    EXPECT_EQ(Frames().size(), 2);
}

TEST_F(ChildWindows, LeaveTheFrontWindowCurrentWhenOneBehindCloses) {
    OpenTTest();
    OpenTTest();
    MarkAllSaved();
    Frames()[0]->close();
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Area().activeSubWindow()->windowTitle(), "Calculation 2");
}

TEST_F(ChildWindows, KeepTheParameterWindowOfTheFrontWhenOneBehindCloses) {
    OpenTTest();
    OpenTable();
    MarkAllSaved();
    Frames()[0]->close();
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_TRUE(Parameters().isVisible());
}

TEST_F(ChildWindows, StartAgainWithOneAfterTheLastHasClosed) {
    OpenTTest();
    MarkAllSaved();
    CloseChild();
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_EQ(Analysis.HighBound(), 0);
    EXPECT_EQ(AnalysisState.HighBound(), 0);
    for (int i = 0; i <= 4; ++i)
        EXPECT_FALSE(Window().findChild<QAction*>(ControlName("mnuGetInfo", i))->isEnabled());
    Trigger("mnuFile(0)");
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Frames()[0]->windowTitle(), "Calculation 1");
    EXPECT_EQ(Frames()[0]->pos(), QPoint(0, 0));
}

// --- Exit -------------------------------------------------------------------------------------

TEST_F(ChildWindows, AreAllAskedOnExit) {
    for (int i = 0; i < 3; ++i)
        OpenTTest();
    Trigger("mnuFile(13)");
    EXPECT_EQ(Messages.Texts, Asked({1, 2, 3}));
    EXPECT_EQ(CloseMode, CloseWithMain);
    EXPECT_FALSE(Window().isVisible());
    hands::Settle();
    EXPECT_TRUE(Frames().isEmpty());
}

TEST_F(ChildWindows, AllStayOpenWhenOneOfThemCancelsTheExit) {
    for (int i = 0; i < 3; ++i)
        OpenTTest();
    Messages.Answers = {QMessageBox::No, QMessageBox::Cancel};
    Window().close();
    EXPECT_EQ(Messages.Texts, Asked({1, 2}));
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(Frames().size(), 3);
    EXPECT_EQ(Area().activeSubWindow()->windowTitle(), "Calculation 2") << "the one in question";
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(AnalysisState(1).Closed, False);
}

TEST_F(ChildWindows, EndTheProgramWithOptionsStillOpen) {
    OpenTTest();
    MarkAllSaved();
    Trigger("mnuStudent(1)");
    ASSERT_TRUE(Options().isVisible());
    Window().close();
    EXPECT_FALSE(Window().isVisible());
    EXPECT_FALSE(Options().isVisible());
}

TEST_F(ChildWindows, EndTheProgramUnaskedWhenNoneIsOpen) {
    Window().close();
    EXPECT_FALSE(Window().isVisible());
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

} // namespace
} // namespace quorvanta
