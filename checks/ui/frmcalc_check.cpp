// The Calculation window: its handlers, colours, focus and keys.
#include "core/analysis_state.h"
#include "core/general.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/values.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>

#include <algorithm>

namespace quorvanta {
namespace {

class CalcWindow : public WindowCheck {
  protected:
    CalcWindow() {
        OpenTTest();
        power_ = PlaceOf("&Power");
        sd_ = PlaceOf("&Standard Deviation");
        size1_ = PlaceOf("Sample Size &1");
        size2_ = PlaceOf("Sample Size &2");
    }

    static QColor Background(const ValueBox& box) { return box.palette().color(QPalette::Base); }
    static QColor PlainBackground() { return QApplication::palette().color(QPalette::Base); }
    QMenu& OutputMenu() { return *Window().findChild<QMenu*>("mnuOutput"); }
    QWidget& Head() { return *hands::Control(Child(), "lblHead1"); }

    bool OpensOutputMenu(QWidget& control) {
        QTest::mouseClick(&control, Qt::RightButton);
        const bool opened = OutputMenu().isVisible();
        OutputMenu().hide();
        return opened;
    }

    int power_ = -1;
    int sd_ = -1;
    int size1_ = -1;
    int size2_ = -1;
};

// --- Layout -----------------------------------------------------------------------------------

TEST_F(CalcWindow, ShowsOneRowForEachParameterInTheOrderOfTheList) {
    ASSERT_EQ(NoOfPar, 6);
    for (i16 i = 0; i <= MaxPar; ++i) {
        auto& label = *hands::Control<QAbstractButton>(Child(), ControlName("cmdParLabel", i));
        EXPECT_EQ(label.isVisible(), i <= NoOfPar);
        EXPECT_EQ(Box(i).isVisible(), i <= NoOfPar);
        if (i > NoOfPar)
            continue;
        EXPECT_EQ(FromQt(label.text()), ParLabel(ParKind(i)));
        EXPECT_EQ(FromQt(Box(i).text()), ParText(ParKind(i)));
        if (i > 0) {
            EXPECT_GT(Box(i).y(), Box(i - 1).y());
        }
    }
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), "Student's t-test, Unpaired, two-sided.");
    EXPECT_FALSE(hands::Control(Child(), "lblGetCalc")->isVisible());
}

TEST_F(CalcWindow, GivesTheFocusToTheHiddenHolder) {
    EXPECT_EQ(QApplication::focusWidget(), hands::Control(Child(), "txtHide"));
}

TEST_F(CalcWindow, IsEmptyUntilATestIsChosen) {
    Trigger("mnuFile(0)");
    for (i16 i = 0; i <= MaxPar; ++i) {
        EXPECT_FALSE(Box(i).isVisible());
        EXPECT_FALSE(Label(i).isVisible());
    }
    EXPECT_FALSE(Head().isVisible());
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"), "Choose a test or a distribution from the menus.");
}

TEST_F(CalcWindow, HasAccessibleNamesWithoutTheMark) {
    EXPECT_EQ(Box(sd_).accessibleName(), "Standard Deviation");
    for (i16 i = 0; i <= NoOfPar; ++i)
        EXPECT_EQ(FromQt(Box(i).accessibleName()), StripAmpersand(ParLabel(ParKind(i))));
}

TEST_F(CalcWindow, SaysInWordsWhatTheColoursSay) {
    EXPECT_EQ(Box(power_).accessibleDescription(), "calculated");
    EXPECT_EQ(Box(sd_).accessibleDescription(), "");
    Type(sd_, "2");
    EXPECT_EQ(Box(power_).accessibleDescription(), "to be calculated");
}

TEST_F(CalcWindow, LeavesSpaceUnderTheLastRow) {
    const QWidget& last = Box(NoOfPar);
    const int below = Child().height() - (last.y() + last.height());
    EXPECT_GE(below, 450 * Child().logicalDpiY() / 1440);
}

// --- Solving ----------------------------------------------------------------------------------

TEST_F(CalcWindow, IsSolvedAtOnceWhenAllValuesArePresent) {
    EXPECT_EQ(UnknownParNo, power_);
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(HasValue(FromQt(Value(power_))));
}

TEST_F(CalcWindow, ShowsADashOnGreyWhenAValueIsMissing) {
    Type(sd_, " ");
    Trigger("mnuStudent(0)");
    AcceptOptions();
    EXPECT_EQ(Value(power_), "-");
    EXPECT_EQ(Background(Box(power_)), QColor(0xC0, 0xC0, 0xC0));
    EXPECT_FALSE(Box(power_).font().bold());
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(CalcWindow, SolvesForTheParameterWhoseLabelIsPressed) {
    Press(size1_);
    EXPECT_EQ(UnknownParNo, size1_);
    EXPECT_EQ(XParNo, 1);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_TRUE(HasValue(FromQt(Value(size1_))));
    EXPECT_EQ(Background(Box(size1_)), PlainBackground());
    EXPECT_TRUE(Box(size1_).font().bold());
    EXPECT_FALSE(Box(power_).font().bold());
    EXPECT_EQ(Background(Box(power_)), PlainBackground());
}

TEST_F(CalcWindow, DoesNothingWhenTheSameLabelIsPressedTwice) {
    Press(size1_);
    ParText(ParKind(size1_)) = "untouched";
    Press(size1_);
    EXPECT_EQ(ParText(ParKind(size1_)), "untouched");
    Type(sd_, "0.6");
    Press(size1_);
    EXPECT_NE(ParText(ParKind(size1_)), "untouched");
}

TEST_F(CalcWindow, SolvesForThePresentUnknownOnReturnInABox) {
    Press(size1_);
    const QString former = Value(size1_);
    Type(sd_, "0.35");
    QTest::keyClick(&Box(sd_), Qt::Key_Return);
    EXPECT_EQ(UnknownParNo, size1_);
    EXPECT_EQ(Calculated, True);
    EXPECT_GT(ReadNumber(FromQt(Value(size1_))), ReadNumber(FromQt(former)));
    EXPECT_EQ(QApplication::focusWidget(), &Box(sd_));
}

TEST_F(CalcWindow, PressesAFocusedLabelOnReturn) {
    Label(size1_).setFocus();
    QTest::keyClick(&Label(size1_), Qt::Key_Return);
    EXPECT_EQ(UnknownParNo, size1_);
    EXPECT_EQ(Calculated, True);
}

TEST_F(CalcWindow, TakesADecimalCommaLikeAPointAndKeepsWhatWasTyped) {
    Type(sd_, "0.7");
    Press(power_);
    const QString withPoint = Value(power_);
    Type(sd_, "0,7");
    Press(power_);
    EXPECT_EQ(Value(power_), withPoint);
    EXPECT_EQ(Value(sd_), "0,7");
}

TEST_F(CalcWindow, TellsOfAMissingValue) {
    Type(sd_, "-");
    Press(size1_);
    EXPECT_EQ(Messages.Texts, QStringList{"Standard Deviation Has No Value."});
    EXPECT_EQ(Messages.Titles, QStringList{"Quorvanta3.0"});
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
    EXPECT_EQ(Value(size1_), "-");
    EXPECT_EQ(Background(Box(size1_)), QColor(0xC0, 0xC0, 0xC0));
    Press(size1_);
    EXPECT_EQ(Messages.Texts.size(), 1) << "the same bad values are not checked twice";
}

TEST_F(CalcWindow, AsksAgainAfterNoSolution) {
    Type(power_, "0.99");
    Type(size2_, "3");
    const QString told = "Can't Be Calculated.";
    Press(size1_);
    Press(size1_);
    EXPECT_EQ(Messages.Texts, (QStringList{told, told}));
    QTest::keyClick(&Box(sd_), Qt::Key_Return);
    EXPECT_EQ(Messages.Texts, (QStringList{told, told, told}));
    EXPECT_EQ(Value(size1_), "-");
}

TEST_F(CalcWindow, TellsThatThereIsNoSolution) {
    // 3 subjects in group 2 don't reach that power, however many there are in group 1.
    Type(power_, "0.99");
    Type(size2_, "3");
    Press(size1_);
    EXPECT_EQ(Value(size1_), "-");
    EXPECT_EQ(Messages.Texts, QStringList{"Can't Be Calculated."});
    const QStatusBar& line = *Window().statusBar();
    EXPECT_TRUE(line.currentMessage().startsWith("Sample Size 1 from 3 to 99999: Power goes from "))
        << line.currentMessage().toStdString();
    EXPECT_TRUE(line.currentMessage().endsWith(", and 0.99 is asked."))
        << line.currentMessage().toStdString();
    Type(size1_, "60");
    Press(power_);
    EXPECT_NE(Value(power_), "-");
    EXPECT_EQ(line.currentMessage(), "") << "nothing stands in the way any more";
}

TEST_F(CalcWindow, TellsTheSizesBesideARatio) {
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "optIntPar1(2)"); // the sizes as a ratio
    AcceptOptions();
    const int ratio = PlaceOf("Sample Size &2 / Sample Size 1");
    ASSERT_GE(ratio, 0);
    size1_ = PlaceOf("Sample Size &1");
    Type(size1_, "17");
    Type(ratio, "1.5");
    Press(PlaceOf("&Power"));
    const QString sizes = "Total sample size of 43 (17 in sample 1 and 26 in sample 2)";
    EXPECT_EQ(Box(size1_).toolTip(), sizes);
    EXPECT_EQ(Box(ratio).toolTip(), sizes);
    Type(ratio, "2");
    EXPECT_EQ(Box(size1_).toolTip(), "") << "no longer what was calculated with";
}

// --- Typing -----------------------------------------------------------------------------------

TEST_F(CalcWindow, RefusesAnExponentAtItsLetter) {
    Type(sd_, "1e5");
    EXPECT_EQ(Messages.Texts, QStringList{"e   Is Not Allowed. Must Be a Digit."});
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
    EXPECT_EQ(Value(sd_), "15");
    EXPECT_EQ(ParText(ParKind(sd_)), "15");
}

TEST_F(CalcWindow, TellsOfACharacterBeyondOneByteAsAWhole) {
    Type(sd_, QString::fromUtf8("1µ2"));
    EXPECT_EQ(Messages.Texts,
              QStringList{QString::fromUtf8("µ   Is Not Allowed. Must Be a Digit.")});
    EXPECT_EQ(Value(sd_), "12");
}

TEST_F(CalcWindow, AllowsBlankCommaAndMinusAnywhere) {
    Type(sd_, "- 1,5-.2 ");
    EXPECT_TRUE(Messages.Texts.isEmpty());
    EXPECT_EQ(Value(sd_), "- 1,5-.2 ");
}

TEST_F(CalcWindow, TakesOfAPastedTextWhatIsAllowed) {
    QApplication::clipboard()->setText(QString::fromUtf8(" $−1x2y3\n4\n"));
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Messages.Texts, QStringList());
    EXPECT_EQ(Value(sd_), "-123");
    EXPECT_EQ(ParText(ParKind(sd_)), "-123");
    EXPECT_EQ(Box(sd_).cursorPosition(), 4);
    EXPECT_EQ(Window().statusBar()->currentMessage(),
              "Left out of the pasted text: \"$\", \"x\", \"y\" and the lines after the first.");
    // Into the middle, and of nothing allowed nothing.
    Box(sd_).setCursorPosition(2);
    QApplication::clipboard()->setText("9");
    QTest::keyClick(&Box(sd_), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Value(sd_), "-1923");
    EXPECT_EQ(Window().statusBar()->currentMessage(), "");
    Box(sd_).selectAll();
    QApplication::clipboard()->setText("x");
    QTest::keyClick(&Box(sd_), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Value(sd_), "-1923");
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(CalcWindow, PastesFromItsPopUpMenuAlike) {
    QApplication::clipboard()->setText("7x\n8");
    Box(sd_).setFocus();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2),
                            Box(sd_).mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&Box(sd_), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const auto actions = menu->actions();
    const auto paste = std::ranges::find_if(
        actions, [](const QAction* action) { return action->text().startsWith("&Paste"); });
    ASSERT_NE(paste, actions.end());
    (*paste)->trigger();
    menu->close();
    EXPECT_EQ(Value(sd_), "7");
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(CalcWindow, MarksATextThatIsReadAsAnotherNumber) {
    const auto mark = [this] { return Box(sd_).findChild<QAction*>("actReading")->isVisible(); };
    EXPECT_FALSE(mark());
    const QString state = Box(sd_).accessibleDescription();
    const QString hint = hands::TextOf(Window(), "lblStatus");
    Type(sd_, "15,420");
    EXPECT_TRUE(mark());
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"), "15,420 is read as 15.42");
    EXPECT_EQ(Box(sd_).accessibleDescription(), "15,420 is read as 15.42");
    EXPECT_EQ(Box(sd_).toolTip(), "15,420 is read as 15.42");
    EXPECT_EQ(Value(sd_), "15,420") << "the text stays as typed";
    // As long as the box is marked, whatever else is done, and again when it comes back.
    Press(size1_);
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"), "15,420 is read as 15.42");
    Trigger("mnuFile(0)");
    EXPECT_NE(hands::TextOf(Window(), "lblStatus"), "15,420 is read as 15.42");
    Area().activatePreviousSubWindow();
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"), "15,420 is read as 15.42");
    EXPECT_TRUE(mark());
    Type(sd_, "15.42");
    EXPECT_FALSE(mark());
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"), hint);
    EXPECT_EQ(Box(sd_).accessibleDescription(), state);
    EXPECT_EQ(Box(sd_).toolTip(), "");
}

// Each drawing of an icon of its own would be kept for a while after its window is gone.
TEST_F(CalcWindow, ItsBoxesShareTheirIcons) {
    for (const char* action : {"actReading", "actTables"}) {
        const auto icon = [&](int i) { return Box(i).findChild<QAction*>(action)->icon(); };
        EXPECT_FALSE(icon(sd_).isNull());
        EXPECT_EQ(icon(sd_).cacheKey(), icon(power_).cacheKey()) << action;
        const qint64 before = icon(sd_).cacheKey();
        Trigger("mnuFile(0)");
        Trigger("mnuStudent(0)");
        AcceptOptions();
        EXPECT_EQ(icon(0).cacheKey(), before) << action << " of another window";
    }
}

TEST_F(CalcWindow, KeepsTheCursorWhereTheRefusedCharacterWas) {
    Type(sd_, "1234");
    Box(sd_).setCursorPosition(2);
    QTest::keyClicks(&Box(sd_), "x");
    EXPECT_EQ(Value(sd_), "1234");
    EXPECT_EQ(Box(sd_).cursorPosition(), 2);
}

TEST_F(CalcWindow, CountsAsChangedAndNotCalculatedAfterTyping) {
    AnalysisState(AnalysisNo).Changed = False;
    EXPECT_TRUE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
    Box(sd_).setFocus();
    EXPECT_EQ(Calculated, True) << "the focus alone changes nothing";
    QTest::keyClicks(&Box(sd_), "2");
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
    EXPECT_FALSE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
    EXPECT_FALSE(Window().findChild<QAction*>("mnuGetInfo(4)")->isEnabled());
}

TEST_F(CalcWindow, LetsAStaleResultStandOnGrey) {
    const QString old = Value(power_);
    Type(sd_, "2");
    EXPECT_EQ(Value(power_), old);
    EXPECT_EQ(Background(Box(power_)), QColor(0xC0, 0xC0, 0xC0));
    EXPECT_FALSE(Box(power_).font().bold());
}

TEST_F(CalcWindow, UndoesTyping) {
    const QString old = Value(sd_);
    Type(sd_, "25");
    QTest::keyClick(&Box(sd_), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(Value(sd_), "25");
    for (int i = 0; i < 3 && Value(sd_) != old; ++i)
        QTest::keyClick(&Box(sd_), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Value(sd_), old);
    EXPECT_EQ(ParText(ParKind(sd_)), FromQt(old));
}

TEST_F(CalcWindow, WritesWithoutReportingAChange) {
    AnalysisState(AnalysisNo).Changed = False;
    ParText(ParKind(sd_)) = "7";
    Child().Refresh();
    EXPECT_EQ(Value(sd_), "7");
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
    EXPECT_EQ(Calculated, True);
}

// --- Focus ------------------------------------------------------------------------------------

TEST_F(CalcWindow, TurnsTheUnknownGreyAndSelectsTheTextOnFocus) {
    QTest::mouseClick(&Box(sd_), Qt::LeftButton);
    EXPECT_EQ(Box(sd_).selectedText(), Value(sd_));
    EXPECT_EQ(Background(Box(power_)), QColor(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(Box(power_).palette().color(QPalette::Text), QColor(Qt::black));

    QTest::keyClick(&Box(sd_), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &Box(sd_ + 1));
    EXPECT_EQ(Box(sd_ + 1).selectedText(), Value(sd_ + 1));
}

TEST_F(CalcWindow, KeepsASelectionDraggedWithTheMouse) {
    Type(sd_, "123456");
    Label(0).setFocus();
    ValueBox& box = Box(sd_);
    const QPoint start(box.width() - 8, box.height() / 2);
    QTest::mousePress(&box, Qt::LeftButton, {}, start);
    QTest::mouseMove(&box, start - QPoint(box.fontMetrics().horizontalAdvance("56"), 0));
    QTest::mouseRelease(&box, Qt::LeftButton, {},
                        start - QPoint(box.fontMetrics().horizontalAdvance("56"), 0));
    EXPECT_FALSE(box.selectedText().isEmpty());
    EXPECT_NE(box.selectedText(), "123456");
}

TEST_F(CalcWindow, FollowsTheEyeWithTheTabKey) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    for (int i = 0; i <= NoOfPar; ++i) {
        EXPECT_EQ(QApplication::focusWidget(), &Label(i));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), &Box(i));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), &Label(0));
}

TEST_F(CalcWindow, MovesBetweenTheBoxesWithTheArrowKeys) {
    Box(0).setFocus();
    QTest::keyClick(&Box(0), Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), &Box(0));
    for (int i = 0; i < NoOfPar; ++i)
        QTest::keyClick(&Box(i), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &Box(NoOfPar));
    QTest::keyClick(&Box(NoOfPar), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &Box(NoOfPar));
    QTest::keyClick(&Box(NoOfPar), Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), &Box(NoOfPar - 1));
    EXPECT_EQ(Box(NoOfPar - 1).selectedText(), Value(NoOfPar - 1));
}

TEST_F(CalcWindow, LeavesTheKeysOfTheHiddenHolderToTheWindow) {
    QWidget& holder = *hands::Control(Child(), "txtHide");
    ASSERT_EQ(QApplication::focusWidget(), &holder);
    QTest::keyClick(&holder, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Messages.Titles, QStringList{"Copy"});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    QTest::keyClick(&holder, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &Box(0));
}

TEST_F(CalcWindow, StaysAsItWasWhenTheFocusComesBackFromAnotherWindow) {
    Type(sd_, "0.5");
    QTest::keyClick(&Box(sd_), Qt::Key_Return);
    EXPECT_EQ(Background(Box(power_)), PlainBackground());
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &Box(sd_));
    EXPECT_EQ(Background(Box(power_)), PlainBackground());
    EXPECT_EQ(Calculated, True);
}

// --- Accelerators -----------------------------------------------------------------------------

TEST_F(CalcWindow, SolvesByTheLetterOfALabel) {
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(UnknownParNo, size1_);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(QApplication::focusWidget(), &Box(sd_)) << "typing goes on where it was";
}

TEST_F(CalcWindow, PrefersALabelToAMenuOfTheSameLetter) {
    Press(size1_);
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_P, Qt::AltModifier); // "&Power", "&Parametric Tests"
    EXPECT_EQ(UnknownParNo, power_);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(CalcWindow, OpensAMenuByALetterThatNoLabelHas) {
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_F, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->objectName(), "mnuFileHead");
    menu->hide();
}

TEST_F(CalcWindow, MovesTheFocusRoundLabelsThatShareALetter) {
    ParLabel(ParKind(size1_)) = "&X one";
    ParLabel(ParKind(size2_)) = "&X two";
    Child().Refresh();
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), &Label(size1_));
    QTest::keyClick(&Label(size1_), Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), &Label(size2_));
    QTest::keyClick(&Label(size2_), Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), &Label(size1_));
    EXPECT_EQ(UnknownParNo, power_) << "no value is calculated before Enter";
    QTest::keyClick(&Label(size1_), Qt::Key_Enter);
    EXPECT_EQ(UnknownParNo, size1_);
}

// --- Pop-up menu ------------------------------------------------------------------------------

TEST_F(CalcWindow, OpensTheOutputMenuOverAResult) {
    EXPECT_TRUE(OpensOutputMenu(Label(0)));
    EXPECT_TRUE(OpensOutputMenu(Head()));
    EXPECT_TRUE(OpensOutputMenu(Child()));
}

TEST_F(CalcWindow, OpensNoOutputMenuWithoutAResult) {
    Box(sd_).setFocus(); // the unknown is grey now, though calculated
    EXPECT_EQ(Calculated, True);
    for (QWidget* control : {&Label(0), &Head(), static_cast<QWidget*>(&Child())})
        EXPECT_FALSE(OpensOutputMenu(*control));
    Type(sd_, "3");
    for (QWidget* control : {&Label(0), &Head(), static_cast<QWidget*>(&Child())})
        EXPECT_FALSE(OpensOutputMenu(*control));
}

TEST_F(CalcWindow, OpensTheOutputMenuWithTheMenuKey) {
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(&Label(0), &key);
    EXPECT_TRUE(OutputMenu().isVisible());
    OutputMenu().hide();
}

// --- Blue parameters --------------------------------------------------------------------------

class BluePar : public CalcWindow {
  protected:
    // The standard deviation as a kind that is derived from a grid, with grid data.
    BluePar() {
        ParKind(sd_) = blueKind;
        ParText(blueKind) = "1.5";
        HasGridData = True;
        HasDistrGraph = True;
        Child().Refresh();
    }

    static constexpr i16 blueKind = 34;
};

TEST_F(BluePar, IsShownInBlueWithItsTips) {
    EXPECT_EQ(Box(sd_).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
    EXPECT_NE(Box(size2_).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
    EXPECT_EQ(Box(sd_).toolTip(), " Doubleclick the textbox to get the value calculated.");
    EXPECT_FALSE(Box(size2_).toolTip().contains("Doubleclick"));
    EXPECT_TRUE(hands::Control(Child(), "lblGetCalc")->isVisible());
    EXPECT_EQ(hands::TextOf(Child(), "lblGetCalc"),
              "Double-click Blue Text to Calculate the Value from Table(s).");
}

TEST_F(BluePar, IsKnownWithoutColour) {
    EXPECT_TRUE(Box(sd_).findChild<QAction*>("actTables")->isVisible());
    EXPECT_TRUE(Box(sd_).accessibleDescription().contains("F2 calculates it from tables"));
    EXPECT_FALSE(Box(size2_).findChild<QAction*>("actTables")->isVisible());
    EXPECT_FALSE(Box(size2_).accessibleDescription().contains("F2"));
}

TEST_F(BluePar, DiscardsTheGridDataWhenChangedByHand) {
    Type(sd_, "2");
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(HasDistrGraph, False);
    EXPECT_NE(Box(sd_).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
    EXPECT_FALSE(hands::Control(Child(), "lblGetCalc")->isVisible());
    EXPECT_EQ(FromQt(hands::TextOf(Child(), "lblHead1")), ParListName);
}

TEST_F(BluePar, KeepsTheGridDataWhenAnotherValueChanges) {
    Type(size2_, "40");
    EXPECT_EQ(HasGridData, True);
}

TEST_F(BluePar, KeepsTheEditingKeysOfTheBox) {
    Box(sd_).setFocus();
    QTest::keyClick(&Box(sd_), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "1.5");
    // No grid belongs to the parameter of a t-test: the double click and Ctrl change nothing.
    QTest::mouseDClick(&Box(sd_), Qt::LeftButton);
    QTest::keyClick(&Box(sd_), Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(Value(sd_), "1.5");
    EXPECT_EQ(HasGridData, True);
}

// --- Runs and faults --------------------------------------------------------------------------

TEST_F(CalcWindow, ChangesNothingDuringARun) {
    Calculating = True;
    const QString old = Value(sd_);
    Press(size1_);
    EXPECT_EQ(UnknownParNo, power_);
    Type(sd_, "9");
    EXPECT_EQ(Value(sd_), old);
    EXPECT_EQ(ParText(ParKind(sd_)), FromQt(old));
    Calculating = False;
}

TEST_F(CalcWindow, SurvivesARunTimeErrorWithEveryTypedValue) {
    const QString tooLarge(400, '9');
    Type(sd_, tooLarge);
    Press(size1_);
    EXPECT_EQ(Messages.Texts, QStringList{"Run-time error: Overflow"});
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Critical);
    EXPECT_EQ(Value(sd_), tooLarge);
    EXPECT_EQ(ParText(ParKind(sd_)), FromQt(tooLarge));
    EXPECT_TRUE(Window().isEnabled());
    EXPECT_TRUE(Child().isEnabled());
    EXPECT_EQ(Calculating, False);

    Type(sd_, "0.3");
    Press(size1_);
    EXPECT_EQ(Messages.Texts.size(), 1);
    EXPECT_TRUE(HasValue(FromQt(Value(size1_))));
}

} // namespace
} // namespace quorvanta
