// Analysis files through the windows: saving, opening by menu, by key, by drop and by name, and
// what the user sees when a file can't be used.
#include "core/analysis_codec.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/values.h"
#include "support/refusals.h"
#include "ui/childwindow.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFontComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTest>
#include <QUrl>

#include <filesystem>
#include <functional>

namespace quorvanta {
namespace {

constexpr std::size_t fileBytes = 6350;

class FileWindows : public OutputCheck {
  protected:
    void SaveAs(const std::string& name) {
        NameNextFile(name);
        Trigger("mnuFile(7)");
    }
    void Open(const std::string& name) {
        NameNextFile(name);
        Trigger("mnuFile(5)");
    }
    QStringList Titles() {
        QStringList titles;
        for (const QMdiSubWindow* frame : Area().subWindowList())
            titles << frame->windowTitle();
        return titles;
    }
    QWidget& Parameters() { return *Window().Floating(FloatingWindow::Parameters); }

    // The drawing of the child window in front, in a given size and without the mark of the focus.
    QImage Picture(const char* name) {
        QWidget& picture = *hands::Control(Child(), name);
        Child().parentWidget()->resize(700, 520);
        Window().setFocus();
        hands::Settle();
        return picture.grab().toImage();
    }

    // Edits the texts, the limits and the type through the window's own dialog.
    void EditGraph() {
        hands::WhenModal("frmEditGraph", [](QWidget& edit) {
            hands::Control<QPlainTextEdit>(edit, "txtTitle")
                ->setPlainText("Größe – “Überlegenheit”\n5 ‰, ¾ × µ €\n{\\rtf} &c.");
            hands::TypeInto(edit, "txtXmin", "-0.4");
            hands::TypeInto(edit, "txtXmax", "0,5");
            hands::TypeInto(edit, "txtXtick", "0.1");
            hands::Control<QLineEdit>(edit, "txtXLabel")->setText("Differenz µ");
            hands::TypeInto(edit, "txtYmin", "0");
            hands::TypeInto(edit, "txtYmax", "1.2");
            hands::Control<QLineEdit>(edit, "txtYLabel")->setText("Güte & Schärfe");
            hands::Control<QLineEdit>(edit, "txtZLabel")->setText("H¹");
            hands::TypeInto(edit, "txtFontSize", "11");
            hands::Click(edit, "chkFontBold");
            hands::Control<QFontComboBox>(edit, "cbFontName")->setEditText("Ärger of no machine");
            hands::TypeInto(edit, "txtCurveWidth", "2");
            hands::Click(edit, "cmdOK");
        });
        hands::Click(Child(), "cmdEditGraph");
    }
    void EditTable() {
        hands::WhenModal("frmEditTable", [](QWidget& edit) {
            hands::Control<QPlainTextEdit>(edit, "txtTitle")
                ->setPlainText(QString("Größe, “5 ‰” ").repeated(20) + "\n\n¾ × µ €");
            hands::TypeInto(edit, "txtColumns", "2");
            hands::TypeInto(edit, "txtDecimals", "6");
            hands::TypeInto(edit, "txtFontSize", "12.5");
            hands::Click(edit, "chkFontBold");
            hands::Control<QFontComboBox>(edit, "cbFontName")->setEditText("Ärger of no machine");
            hands::Click(edit, "cmdOK");
        });
        hands::Click(Child(), "cmdEditTable");
    }

    // Closes the window in front unasked, saves it before under that name and opens it again; what
    // it had and has as its record.
    std::pair<AnalysisRecord, AnalysisRecord> SaveCloseOpen(const std::string& name) {
        SaveAs(name);
        EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
        const AnalysisRecord saved = CurrentRecord();
        CloseChild();
        EXPECT_TRUE(Titles().isEmpty());
        Open(name);
        EXPECT_EQ(Titles(), QStringList{ToQt(name)});
        EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
        EXPECT_TRUE(Messages.Texts.isEmpty());
        return {saved, CurrentRecord()};
    }
};

// --- There and back ---------------------------------------------------------------------------

TEST_F(FileWindows, ACalculationComesBackAsItWas) {
    OpenTTest();
    Type(PlaceOf("&Standard Deviation"), "0,77");
    Type(PlaceOf("&Power"), "0.8");
    Type(PlaceOf("H1: M&ean 2 - Mean 1"), "0.5");
    Press(PlaceOf("Sample Size &1"));
    const QString size = Value(PlaceOf("Sample Size &1"));
    ASSERT_TRUE(HasValue(FromQt(size)));
    const auto [saved, opened] = SaveCloseOpen("Plan β.dim");
    EXPECT_EQ(opened, saved);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(UnknownParNo, PlaceOf("Sample Size &1"));
    EXPECT_EQ(Value(PlaceOf("Sample Size &1")), size);
    EXPECT_EQ(Value(PlaceOf("&Standard Deviation")), "0,77");
    EXPECT_FALSE(Box(PlaceOf("Sample Size &1")).IsGrey());
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), "Student's t-test, Unpaired, two-sided.");
    EXPECT_TRUE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
}

TEST_F(FileWindows, AGraphComesBackAndIsDrawnAlike) {
    OpenRun(GraphWindow);
    EditGraph();
    ASSERT_EQ(OutXAxis(2), "0,5");
    const QImage before = Picture("PicGraph");
    const auto [saved, opened] = SaveCloseOpen("graph.dim");
    EXPECT_EQ(opened, saved);
    EXPECT_EQ(OutTitle(1), "5 ‰, ¾ × µ €");
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(Parameters().isVisible());
    EXPECT_EQ(Picture("PicGraph"), before);
}

TEST_F(FileWindows, ATableComesBackAndIsDrawnAlike) {
    OpenRun(TableWindow);
    EditTable();
    ASSERT_EQ(OutDecimals, 6);
    const QImage before = Picture("PicTable");
    const auto [saved, opened] = SaveCloseOpen("table.dim");
    EXPECT_EQ(opened, saved);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(Picture("PicTable"), before);
}

TEST_F(FileWindows, ASimulationComesBackAndRunsAlike) {
    Trigger("mnuFile(3)");
    Trigger("mnuMW(0)");
    AcceptOptions();
    const auto dialog = [this]() -> QWidget& {
        return *Window().Floating(FloatingWindow::InterimParameters);
    };
    hands::TypeInto(dialog(), "txtParValue(2)", "25");
    hands::TypeInto(dialog(), "txtRejectH0(0)", "0,04");
    hands::TypeInto(dialog(), "txtMaxNoOfSim", "2000");
    hands::TypeInto(dialog(), "txtSeed", "11");
    hands::Click(dialog(), "cmdOK");
    const auto shown = [this] {
        QStringList texts;
        for (const char* label : {"lblSimValue", "lblSignEstimate(0)", "lblPowerEstimate(0)",
                                  "lblPrAcceptEstimate(0)", "lblHead1"})
            texts << hands::TextOf(Child(), label);
        return texts;
    };
    const QStringList before = shown();
    ASSERT_NE(before[2], "");
    const auto [saved, opened] = SaveCloseOpen("simulation.dim");
    EXPECT_EQ(opened, saved);
    EXPECT_EQ(shown(), before);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(hands::TextOf(dialog(), "txtParValue(2)"), "25");
    EXPECT_EQ(hands::TextOf(dialog(), "txtRejectH0(0)"), "0,04");
    EXPECT_TRUE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
    hands::TypeInto(dialog(), "txtMaxNoOfSim", "2000");
    hands::TypeInto(dialog(), "txtSeed", "11");
    hands::Click(dialog(), "cmdOK");
    EXPECT_EQ(shown(), before);
}

TEST_F(FileWindows, TwoOpensGiveTwoWindows) {
    OpenTTest();
    SaveAs("a.dim");
    Open("a.dim");
    Open("a.dim");
    EXPECT_EQ(Titles(), (QStringList{"a.dim", "a.dim", "a.dim"}));
    EXPECT_EQ(Analysis(2).WindowNo, 2);
    EXPECT_EQ(Analysis(3).WindowNo, 3);
    const int sd = PlaceOf("&Standard Deviation");
    Type(sd, "3");
    Window().RaiseChild(CalculationWindow, 2);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_NE(Value(sd), "3");
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(AnalysisState(2).Changed, True) << "opened counts as changed";
}

// --- Files that can't be used -----------------------------------------------------------------

TEST_F(FileWindows, WhatIsNoAnalysisOpensNothing) {
    OpenTTest();
    SaveAs("good.dim");
    const std::string good = ContentOf("good.dim");
    folder_.Write("zeros.dim", std::string(fileBytes, '\0'));
    folder_.Write("empty.dim", "");
    folder_.Write("short.dim", good.substr(0, 4000));
    folder_.Write("garbage.dim", std::string(20000, '\xA7'));
    folder_.Write("text.dim", "This is a text, not an analysis.");
    const AnalysisRecord before = CurrentRecord();
    for (const char* name : {"zeros.dim", "empty.dim", "short.dim", "garbage.dim", "text.dim"}) {
        Open(name);
        EXPECT_EQ(Titles(), QStringList{"good.dim"}) << name;
        EXPECT_EQ(CurrentRecord(), before) << name;
    }
    Trigger("mnuFile(5)"); // given up
    Window().OpenFiles({ToQt(folder_.Path("")), ToQt(folder_.Path("missing.dim"))});
    EXPECT_EQ(Titles(), QStringList{"good.dim"});
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(Messages.Texts.isEmpty());
    // A record is read from the front: what follows it has no meaning.
    folder_.Write("longer.dim", good + std::string(1000, 'x'));
    Open("longer.dim");
    EXPECT_EQ(Titles(), (QStringList{"good.dim", "longer.dim"}));
}

TEST_F(FileWindows, ATextTooLongForAFileIsTold) {
    OpenRun(GraphWindow);
    SaveAs("a.dim");
    const std::string saved = ContentOf("a.dim");
    OutTitle(0) = std::string(1500, 't');
    MarkChanged();
    Messages.Answers = {QMessageBox::Yes}; // replace
    SaveAs("a.dim");
    ASSERT_EQ(Messages.Texts.size(), 2);
    EXPECT_TRUE(Messages.Texts[1].startsWith("The Analysis Can't Be Saved. Its Texts Take "));
    EXPECT_TRUE(Messages.Texts[1].endsWith(
        " Characters, and a File Holds 1500.\n\nPlease Shorten the Title or the Labels."));
    EXPECT_EQ(ContentOf("a.dim"), saved);
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(FileWindows, AFullDiskIsToldInTheStatusLineAlone) {
    OpenTTest();
    SaveAs("a.dim");
    const std::string saved = ContentOf("a.dim");
    Type(PlaceOf("&Standard Deviation"), "2");
    Messages.Answers = {QMessageBox::Yes};
    {
        const checks::FileSizeLimit fullDisk(1000);
        SaveAs("a.dim");
    }
    EXPECT_EQ(Messages.Texts, QStringList{"a.dim Already Exists.\n\nReplace It?"});
    EXPECT_EQ(FromQt(Window().statusBar()->currentMessage()),
              "The Analysis Can't Be Saved. The File " + folder_.Path("a.dim") +
                  " Can't Be Written.");
    EXPECT_EQ(ContentOf("a.dim"), saved);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(Value(PlaceOf("&Standard Deviation")), "2");
}

// --- The file dialog --------------------------------------------------------------------------

TEST_F(FileWindows, TheDialogProposesAndCompletesNames) {
    OpenTTest();
    SaveAs("Phase 2.5");
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Calculation"});
    EXPECT_EQ(Messages.FileProposals, QStringList{"Calculation1"});
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"Phase 2.5.dim"});
    EXPECT_EQ(Titles(), QStringList{"Phase 2.5.dim"});
    SaveAs("other.DIM");
    EXPECT_EQ(Messages.FileProposals.back(), "Phase 2.5") << "the file's own name";
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"Phase 2.5.dim", "other.DIM"}));
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(FileWindows, TheDialogRemembersItsFolder) {
    std::filesystem::create_directories(folder_.Path("one"));
    std::filesystem::create_directories(folder_.Path("two"));
    const QString one = QDir(ToQt(folder_.Path("one"))).absolutePath();
    const QString two = QDir(ToQt(folder_.Path("two"))).absolutePath();
    OpenTTest();
    SaveAs("one/a.dim");
    Trigger("mnuFile(5)");
    EXPECT_EQ(Messages.FileFolders.back(), one);
    SaveAs("two/b.dim");
    Trigger("mnuFile(11)");
    EXPECT_EQ(Messages.FileFolders.back(), two);
    Window().OpenFiles({one + "/a.dim"});
    Trigger("mnuFile(7)");
    EXPECT_EQ(Messages.FileFolders.back(), one) << "a file that was dropped";
    std::filesystem::remove_all(folder_.Path("one"));
    Trigger("mnuFile(7)");
    EXPECT_EQ(Messages.FileFolders.back(), QDir::homePath()) << "the folder has vanished";
}

TEST_F(FileWindows, TheDialogAsksBeforeItReplacesAFile) {
    OpenTTest();
    folder_.Write("a.dim", "old");
    // No: another name; the question looks at the name with its extension.
    Messages.Answers = {QMessageBox::No};
    NameNextFile("a");
    SaveAs("b");
    EXPECT_EQ(Messages.Texts, QStringList{"a.dim Already Exists.\n\nReplace It?"});
    EXPECT_EQ(Messages.LastButtons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(Messages.FileQuestions, (QStringList{"Save Calculation", "Save Calculation"}));
    EXPECT_EQ(ContentOf("a.dim"), "old");
    EXPECT_EQ(ContentOf("b.dim").size(), fileBytes);
    // Cancel: nothing.
    Type(PlaceOf("&Standard Deviation"), "2");
    Messages.Answers = {QMessageBox::Cancel};
    SaveAs("a.dim");
    EXPECT_EQ(ContentOf("a.dim"), "old");
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(Titles(), QStringList{"b.dim"});
    // Yes.
    Messages.Answers = {QMessageBox::Yes};
    SaveAs("a.dim");
    EXPECT_EQ(ContentOf("a.dim").size(), fileBytes);
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(Messages.Texts.size(), 3);
}

// --- Keys -------------------------------------------------------------------------------------

TEST_F(FileWindows, TheUsualKeysWork) {
    const auto press = [this](Qt::Key key) { PressCtrlKey(Window(), key); };
    press(Qt::Key_S);
    EXPECT_TRUE(Messages.FileQuestions.isEmpty()) << "nothing to save";
    press(Qt::Key_N);
    EXPECT_EQ(Titles(), QStringList{"Calculation 1"});
    press(Qt::Key_S);
    EXPECT_TRUE(Messages.FileQuestions.isEmpty()) << "no test yet";
    Trigger("mnuStudent(0)");
    AcceptOptions();
    NameNextFile("a.dim");
    press(Qt::Key_S);
    EXPECT_EQ(ContentOf("a.dim").size(), fileBytes);
    NameNextFile("a.dim");
    press(Qt::Key_O);
    EXPECT_EQ(Titles(), (QStringList{"a.dim", "a.dim"}));
    press(Qt::Key_C);
    EXPECT_NE(ClipboardText().find("Student's t-test"), std::string::npos);
    press(Qt::Key_P);
    EXPECT_TRUE(IsOpen("frmOutput"));
}

TEST_F(FileWindows, TheKeysOfTextKeepTheirMeaningInABox) {
    OpenTTest();
    const int sd = PlaceOf("&Standard Deviation");
    Type(sd, "0.456");
    EmptyClipboard();
    QTest::keyClick(&Box(sd), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Box(sd), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(ClipboardText(), "0.456");
    const int power = PlaceOf("&Power");
    hands::Click(Box(power));
    QTest::keyClick(&Box(power), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Box(power), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Value(power), "0.456");
    // The other keys go to the window.
    NameNextFile("a.dim");
    QTest::keyClick(&Box(power), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ContentOf("a.dim").size(), fileBytes);

    OpenRun(TableWindow);
    hands::TypeInto(Parameters(), "txtXminValue", "0.2");
    QWidget& box = *hands::Control(Parameters(), "txtXminValue");
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(ClipboardText(), "0.2");
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

// --- Drops ------------------------------------------------------------------------------------

class Drops : public FileWindows {
  protected:
    // Drags the files from another program over the widget and lets go; false if they were not
    // taken. The program proposes to move them.
    static bool Drop(QWidget& widget, const QStringList& paths,
                     const std::function<void()>& betweenEnterAndDrop = {}) {
        QMimeData files;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls << QUrl::fromLocalFile(path);
        files.setUrls(urls);
        files.setText(paths.join('\n'));
        const QPoint at = widget.rect().center();
        const Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction;
        QDragEnterEvent enter(at, offered, &files, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&widget, &enter);
        if (!enter.isAccepted())
            return false;
        if (betweenEnterAndDrop)
            betweenEnterAndDrop();
        QDropEvent drop(at, offered, &files, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        drop.ignore();
        QApplication::sendEvent(&widget, &drop);
        if (!drop.isAccepted())
            return false;
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "a move would delete the file";
        hands::Settle();
        return true;
    }

    void SaveTwo() {
        OpenTTest();
        SaveAs("a.dim");
        SaveAs("b.dim");
        CloseChild();
        a_ = ToQt(folder_.Path("a.dim"));
        b_ = ToQt(folder_.Path("b.dim"));
    }

    QString a_;
    QString b_;
};

TEST_F(Drops, OpenAFile) {
    SaveTwo();
    EXPECT_TRUE(Drop(*Area().viewport(), {a_}));
    EXPECT_EQ(Titles(), QStringList{"a.dim"});
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(Calculated, True);
}

TEST_F(Drops, OpenTwoFilesAtOnceAndNoOthers) {
    SaveTwo();
    folder_.Write("notes.txt", "x");
    folder_.Write("bad.dim", "x");
    EXPECT_TRUE(Drop(*Area().viewport(),
                     {a_, ToQt(folder_.Path("notes.txt")), ToQt(folder_.Path("bad.dim")), b_}));
    EXPECT_EQ(Titles(), (QStringList{"a.dim", "b.dim"}));
    EXPECT_FALSE(Drop(Window(), {ToQt(folder_.Path("notes.txt"))}));
    EXPECT_FALSE(Drop(Window(), {}));
    EXPECT_EQ(Titles().size(), 2);
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(Drops, OnAValueOpenTheFileToo) {
    SaveTwo();
    OpenTTest();
    const int sd = PlaceOf("&Standard Deviation");
    const QString value = Value(sd);
    EXPECT_TRUE(Drop(Box(sd), {a_}));
    EXPECT_EQ(Titles(), (QStringList{"Calculation 1", "a.dim"}));
    Window().RaiseChild(CalculationWindow, 1);
    EXPECT_EQ(Value(sd), value);
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(Drops, AreRefusedWhileAQuestionWaits) {
    SaveTwo();
    OpenRun(TableWindow);
    const AnalysisRecord before = CurrentRecord();
    hands::WhenModal("frmEditTable", [this](QWidget& edit) {
        EXPECT_FALSE(Drop(*Area().viewport(), {a_}));
        Window().OpenFiles({a_});
        hands::Click(edit, "cmdCancel");
    });
    hands::Click(Child(), "cmdEditTable");
    EXPECT_EQ(Titles(), QStringList{"Table 1"});
    EXPECT_EQ(CurrentRecord(), before);
}

TEST_F(Drops, AreRefusedDuringARun) {
    SaveTwo();
    OpenTTest();
    EXPECT_FALSE(Drop(*Area().viewport(), {a_}, [] { Calculating = True; }));
    EXPECT_FALSE(Drop(*Area().viewport(), {a_}));
    Window().OpenFiles({a_});
    Calculating = False;
    EXPECT_EQ(Titles(), QStringList{"Calculation 1"});
}

TEST_F(Drops, EndOptionsThatWereOpen) {
    SaveTwo();
    OpenTTest();
    const AnalysisRecord before = CurrentRecord();
    Trigger("mnuStudent(1)");
    EXPECT_TRUE(Drop(*Area().viewport(), {a_}));
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(Titles(), (QStringList{"Calculation 1", "a.dim"}));
    Window().RaiseChild(CalculationWindow, 1);
    EXPECT_EQ(CurrentRecord(), before) << "as after Cancel";
}

TEST_F(Drops, OpenATableThatCantBeCalculated) {
    OpenRun(TableWindow);
    hands::TypeInto(Parameters(), "txtXstepValue", "0");
    SaveAs("a.dim");
    CloseChild();
    EXPECT_TRUE(Drop(*Area().viewport(), {ToQt(folder_.Path("a.dim"))}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Messages.Texts.isEmpty(); }));
    EXPECT_EQ(Messages.Texts, QStringList{"Xstep Must Be # 0."});
    EXPECT_EQ(Titles(), QStringList{"a.dim"});
    EXPECT_EQ(Calculated, False);
}

// --- The list of windows ----------------------------------------------------------------------

TEST_F(FileWindows, TheWindowMenuNamesFilesAsTheyAre) {
    OpenTTest();
    SaveAs("R&D.dim");
    Trigger("mnuFile(0)");
    auto& menu = *Window().findChild<QMenu*>("mnuWindowHead");
    for (int times = 0; times < 2; ++times) { // the list is built anew, not longer
        emit menu.aboutToShow();
        QStringList texts;
        for (const QAction* action : menu.actions())
            texts << (action->isSeparator() ? "-" : action->text());
        EXPECT_EQ(texts,
                  (QStringList{"&Undo", "&Options...", "Input &Grids", "-", "&Cascade", "&Tile",
                               "Ne&xt", "C&lose", "-", "R&&D.dim", "Calculation 2"}));
    }
    EXPECT_TRUE(menu.actions().back()->isChecked());
    menu.actions()[9]->trigger();
    EXPECT_EQ(AnalysisNo, 1);
}

} // namespace
} // namespace quorvanta
