// Unsaved changes: every way to close a window, and the end of the program.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/records.h"
#include "support/refusals.h"
#include "ui/childwindow.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>

#include <functional>

namespace quorvanta {
namespace {

class Closing : public OutputCheck {
  protected:
    static QString Question(const QString& caption) {
        return caption + " Has Been Changed.\n\nSave Analysis?";
    }
    int Frames() { return static_cast<int>(Area().subWindowList().size()); }

    // Two calculations, a table and two graphs, the fourth saved under a name of its own and then
    // changed again.
    void OpenFive() {
        OpenTTest();
        OpenRun(TableWindow);
        OpenTTest();
        OpenRun(GraphWindow);
        NameNextFile("Study 4.dim");
        Trigger("mnuFile(7)");
        MarkChanged();
        OpenRun(GraphWindow);
        Messages.FileQuestions.clear();
        StoreAnalysis();
    }
    const QStringList captions_{"Calculation 1", "Table 1", "Calculation 2", "Study 4.dim",
                                "Graph 2"};

    struct State {
        std::vector<AnalysisRecord> Records;
        std::vector<i16> Changed;
        std::vector<Array2<f32>> Results;

        bool operator==(const State&) const = default;
    };
    static State Now() {
        StoreAnalysis();
        State state;
        for (i16 n = 1; n <= Analysis.HighBound(); ++n) {
            state.Records.push_back(Analysis(n));
            state.Changed.push_back(AnalysisState(n).Changed);
            state.Results.push_back(AnalysisState(n).TableY);
        }
        return state;
    }
};

// --- One window -------------------------------------------------------------------------------

TEST_F(Closing, AsksInEveryWay) {
    const struct {
        const char* Name;
        std::function<void()> Close;
    } ways[] = {
        {"close box", [this] { CloseChild(); }},
        {"Ctrl+F4", [this] { PressCtrlKey(Window(), Qt::Key_F4); }},
        {"Ctrl+F4 in a box",
         [this] {
             auto& box = *hands::Control(Child(), "txtParValue(0)");
             hands::Click(box);
             QTest::keyClick(&box, Qt::Key_F4, Qt::ControlModifier);
         }},
        {"the key of the desktop",
         [this] {
             const QKeyCombination key = QKeySequence(QKeySequence::Close)[0];
             QTest::keyClick(&Child(), key.key(), key.keyboardModifiers());
         }},
        {"menu of windows",
         [this] {
             auto& menu = *Window().findChild<QMenu*>("mnuWindowHead");
             emit menu.aboutToShow();
             for (QAction* action : menu.actions())
                 if (action->text() == "C&lose")
                     return action->trigger();
         }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.Name);
        if (Frames() == 0)
            OpenTTest();
        const State before = Now();
        for (const auto answer :
             {QMessageBox::Cancel, MessageReader::Escape, QMessageBox::Yes, QMessageBox::No}) {
            EXPECT_EQ(Frames(), 1);
            EXPECT_TRUE(Now() == before);
            Messages.Texts.clear();
            Messages.FileQuestions.clear();
            Messages.Answers = {answer};
            Window().activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
            way.Close();
            hands::Settle();
            EXPECT_EQ(Messages.Texts, QStringList{Question("Calculation 1")});
            EXPECT_EQ(Messages.LastButtons,
                      QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            // Yes asks for a name, which is given up: the window stays.
            EXPECT_EQ(Messages.FileQuestions.size(), answer == QMessageBox::Yes ? 1 : 0);
        }
        EXPECT_EQ(Frames(), 0);
    }
}

TEST_F(Closing, AsksByTheNameOfTheFile) {
    OpenTTest();
    NameNextFile("My study.dim");
    Trigger("mnuFile(7)");
    CloseChild();
    EXPECT_TRUE(Messages.Texts.isEmpty()) << "saved";
    NameNextFile("My study.dim");
    Trigger("mnuFile(5)");
    Messages.Answers = {QMessageBox::No};
    CloseChild();
    EXPECT_EQ(Messages.Texts, QStringList{Question("My study.dim")}) << "opened counts as changed";
    EXPECT_EQ(Frames(), 0);
}

TEST_F(Closing, AsksForTablesAndGraphs) {
    for (const i16 kind : {TableWindow, GraphWindow}) {
        OpenRun(kind);
        const QString caption = kind == TableWindow ? "Table 1" : "Graph 1";
        const State before = Now();
        for (const auto answer : {QMessageBox::Cancel, QMessageBox::No}) {
            Messages.Texts.clear();
            Messages.Answers = {answer};
            EXPECT_TRUE(Now() == before);
            CloseChild();
            EXPECT_EQ(Messages.Texts, QStringList{Question(caption)});
        }
        EXPECT_EQ(Frames(), 0);
        EXPECT_FALSE(Window().Floating(FloatingWindow::Parameters)->isVisible());
    }
}

TEST_F(Closing, DoesNotAskForAWindowWithoutAnAnalysis) {
    Trigger("mnuFile(0)");
    CloseChild();
    EXPECT_TRUE(Messages.Texts.isEmpty());
    EXPECT_EQ(Frames(), 0);
}

TEST_F(Closing, StopsWhenTheSaveFails) {
    OpenTTest();
    NameNextFile("a.dim");
    Trigger("mnuFile(7)");
    const std::string saved = ContentOf("a.dim");
    MarkChanged();
    const State before = Now();
    // The question, and whether to replace the file; the failure itself is silent.
    Messages.Answers = {QMessageBox::Yes, QMessageBox::Yes};
    NameNextFile("a.dim");
    {
        const checks::FileSizeLimit fullDisk(100);
        CloseChild();
    }
    EXPECT_EQ(Messages.Texts,
              (QStringList{Question("a.dim"), "a.dim Already Exists.\n\nReplace It?"}));
    EXPECT_EQ(Frames(), 1);
    EXPECT_TRUE(Now() == before);
    EXPECT_EQ(ContentOf("a.dim"), saved);
}

TEST_F(Closing, StopsWhenItsTextsDontFitIntoAFile) {
    OpenRun(GraphWindow);
    OutTitle(0) = std::string(1500, 't');
    const State before = Now();
    Messages.Answers = {QMessageBox::Yes};
    NameNextFile("a.dim");
    CloseChild();
    ASSERT_EQ(Messages.Texts.size(), 2);
    EXPECT_EQ(Messages.Texts[0], Question("Graph 1"));
    EXPECT_TRUE(Messages.Texts[1].startsWith("The Analysis Can't Be Saved. Its Texts Take "));
    EXPECT_EQ(Frames(), 1);
    EXPECT_TRUE(Now() == before);
    EXPECT_TRUE(folder_.Names().empty());
}

// --- Exit -------------------------------------------------------------------------------------

TEST_F(Closing, ExitStopsAtTheThirdOfFive) {
    OpenFive();
    State before = Now();
    for (const bool byMenu : {true, false}) {
        Messages.Texts.clear();
        Messages.Answers = {QMessageBox::No, QMessageBox::No, QMessageBox::Cancel};
        if (byMenu)
            Trigger("mnuFile(13)");
        else
            Window().close();
        hands::Settle();
        EXPECT_EQ(Messages.Texts, (QStringList{Question(captions_[0]), Question(captions_[1]),
                                               Question(captions_[2])}));
        EXPECT_TRUE(Window().isVisible());
        EXPECT_EQ(Frames(), 5);
        EXPECT_EQ(AnalysisNo, 3) << "the one in question";
        EXPECT_TRUE(Now() == before);
        EXPECT_EQ(Cancelled, False);
    }
    // The windows live: each still comes to the front with its analysis.
    Window().RaiseChild(TableWindow, 1);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Calculated, True);
    hands::Click(*Window().Floating(FloatingWindow::Parameters), "cmdOK");
    EXPECT_TRUE(Now() == before);
}

TEST_F(Closing, ExitKeepsWhatWasSavedBeforeTheCancel) {
    OpenFive();
    Messages.Answers = {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    NameNextFile("one.dim");
    Trigger("mnuFile(13)");
    EXPECT_EQ(Frames(), 5);
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(Analysis(1).AnalysisFileName, "one.dim");
    EXPECT_EQ(Area().subWindowList()[0]->windowTitle(), "one.dim");
    EXPECT_EQ(AnalysisState(2).Changed, True);
    EXPECT_EQ(ContentOf("one.dim").size(), 6350U);
}

TEST_F(Closing, ExitStopsWhenASaveIsGivenUpOrFails) {
    OpenFive();
    const State before = Now();
    Messages.Answers = {QMessageBox::No, QMessageBox::Yes};
    Window().close();
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Table"});
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(Now() == before);
    Messages.Answers = {QMessageBox::No, QMessageBox::Yes};
    NameNextFile("missing/a.dim");
    Window().close();
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(Frames(), 5);
    EXPECT_TRUE(Now() == before);
}

TEST_F(Closing, ExitClosesAllWhenNoneIsKept) {
    OpenFive();
    Messages.Answers = {QMessageBox::No,  QMessageBox::Yes, QMessageBox::No,
                        QMessageBox::Yes, QMessageBox::Yes, QMessageBox::No};
    NameNextFile("table.dim");
    NameNextFile("Study 4.dim");
    Window().close();
    hands::Settle();
    EXPECT_EQ(Messages.Texts,
              (QStringList{Question(captions_[0]), Question(captions_[1]), Question(captions_[2]),
                           Question(captions_[3]), "Study 4.dim Already Exists.\n\nReplace It?",
                           Question(captions_[4])}));
    EXPECT_FALSE(Window().isVisible());
    EXPECT_EQ(Frames(), 0);
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"Study 4.dim", "table.dim"}));
}

} // namespace
} // namespace quorvanta
