// frmShowPar beside a table: its lists and boxes, its keys, its messages, runs and their end.
#include "core/general.h"
#include "core/records.h"
#include "ui/paint_record.h"
#include "ui/qttext.h"
#include "ui/run_fixture.h"
#include "ui/valuebox.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QStatusBar>
#include <QTest>
#include <QWheelEvent>

#include <utility>

namespace quorvanta {
namespace {

class ShowParWindow : public RunCheck {
  protected:
    ShowParWindow() { OpenRunWindow(NewTable); }

    QString Drawn() { return Picture().accessibleDescription(); }
    bool Shows(const QString& name) { return hands::Control(Parameters(), name)->isVisible(); }
    QString Text(const QString& name) { return hands::TextOf(Parameters(), name); }
    static QString PlainLabel(i16 parNo) { return ToQt(StripAmpersand(ParLabel(ParKind(parNo)))); }

    // What the window shows of its parameters: the three lists, then the labels of the boxes.
    QStringList Shown() {
        QStringList shown;
        for (int k = 0; k < 3; ++k)
            shown << List(k).currentText();
        for (int i = 0; Shows(ControlName("lblParLabel", i)); ++i) {
            shown << Text(ControlName("lblParLabel", i)).remove('&');
            if (i == 9)
                break;
        }
        return shown;
    }

    // The state and the window agree, and each parameter is in one place.
    void ExpectPermutation() {
        const QStringList shown = Shown();
        ASSERT_EQ(shown.size(), NoOfPar + 1);
        EXPECT_EQ(QSet<QString>(shown.begin(), shown.end()).size(), NoOfPar + 1)
            << qPrintable(shown.join(", "));
        EXPECT_EQ(shown[0], PlainLabel(UnknownParNo));
        EXPECT_EQ(shown[1], PlainLabel(XParNo));
        EXPECT_EQ(shown[2], PlainLabel(ZParNo));
    }

    QWidget* FocusAfter(QWidget& where, Qt::Key letter) {
        where.setFocus();
        QTest::keyClick(&where, letter, Qt::AltModifier);
        return QApplication::focusWidget();
    }
};

// --- What is shown ----------------------------------------------------------------------------

TEST_F(ShowParWindow, HasItsLabelsWordForWord) {
    const struct {
        const char* Name;
        const char* Text;
    } labels[] = {{"lblYXZParLabel(0)", "Parameter To Calculate (&y-axis):"},
                  {"lblYXZParLabel(1)", "Independent Parameter 1 (&x-axis):"},
                  {"lblYXZParLabel(2)", "Independent Parameter 2 (&z-values):"},
                  {"lblXmin", "M&in:"},
                  {"lblXmax", "M&ax:"},
                  {"lblXStep", "St&ep:"},
                  {"lblZValue", "&Value(s) separated by space:"},
                  {"lblProgress", "Percent Calculated:"},
                  {"cmdOK", "OK"}};
    for (const auto& label : labels)
        EXPECT_EQ(Text(label.Name), label.Text);
    EXPECT_FALSE(Shows("lblProgress"));
    EXPECT_FALSE(Shows("pgrProgress"));
    EXPECT_FALSE(Shows("lblGetCalc"));
}

TEST_F(ShowParWindow, ListsEveryParameterInTheOrderOfTheTest) {
    const QStringList all{"Significance Level",           "Power",
                          "H0: Mean 2 - Mean 1",          "H1: Mean 2 - Mean 1",
                          "Standard Deviation",           "Sample Size 1",
                          "Sample Size 2 / Sample Size 1"};
    for (int k = 0; k < 3; ++k) {
        QStringList entries;
        for (int i = 0; i < List(k).count(); ++i)
            entries << List(k).itemText(i);
        EXPECT_EQ(entries, all);
    }
    EXPECT_EQ(List(YRole).currentIndex(), Power);
    EXPECT_EQ(List(XRole).currentIndex(), Mean0);
    EXPECT_EQ(List(ZRole).currentIndex(), Mean1);
}

TEST_F(ShowParWindow, HasABoxForEachParameterWithoutARole) {
    const i16 fixed[] = {Level, Sd, Size1, Size2};
    for (int i = 0; i < 4; ++i) {
        const i16 kind = ParKind(fixed[i]);
        EXPECT_EQ(Text(ControlName("lblParLabel", i)), ToQt(ParLabel(kind)));
        EXPECT_EQ(Text(ControlName("txtParValue", i)), ToQt(ParText(kind)));
        EXPECT_EQ(ParBox(ControlName("txtParValue", i)).accessibleName(), PlainLabel(fixed[i]));
    }
    for (int i = 4; i < 10; ++i) {
        EXPECT_FALSE(Shows(ControlName("lblParLabel", i)));
        EXPECT_FALSE(Shows(ControlName("txtParValue", i)));
    }
}

TEST_F(ShowParWindow, ShowsTheTextsOfTheKindsOnTheAxes) {
    EXPECT_EQ(Text("txtXminValue"), ToQt(ParXminText(ParKind(Mean0))));
    EXPECT_EQ(Text("txtXmaxValue"), ToQt(ParXmaxText(ParKind(Mean0))));
    EXPECT_EQ(Text("txtXstepValue"), ToQt(ParXstepText(ParKind(Mean0))));
    EXPECT_EQ(Text("txtZValue"), ToQt(ParZValuesText(ParKind(Mean1))));
    Choose(XRole, Sd);
    EXPECT_EQ(Text("txtXminValue"), ToQt(ParXminText(ParKind(Sd))));
    EXPECT_EQ(Text("txtXmaxValue"), ToQt(ParXmaxText(ParKind(Sd))));
    EXPECT_EQ(Text("txtXstepValue"), ToQt(ParXstepText(ParKind(Sd))));
    EXPECT_EQ(Text("txtZValue"), ToQt(ParZValuesText(ParKind(Mean1))));
    Choose(ZRole, Level);
    EXPECT_EQ(Text("txtZValue"), ToQt(ParZValuesText(ParKind(Level))));
    EXPECT_EQ(Text("txtXminValue"), ToQt(ParXminText(ParKind(Sd))));
    TypeIntoBox("txtXminValue", "0,15");
    Choose(XRole, Size1);
    Choose(XRole, Sd);
    EXPECT_EQ(Text("txtXminValue"), "0,15") << "a text is kept with its kind";
}

TEST_F(ShowParWindow, IsThereForTablesAndGraphsOnly) {
    EXPECT_TRUE(Parameters().isVisible());
    OpenTTest();
    EXPECT_FALSE(Parameters().isVisible());
    Area().setActiveSubWindow(Area().subWindowList().front());
    hands::Settle();
    EXPECT_TRUE(Parameters().isVisible());
    OpenRunWindow(NewGraph);
    EXPECT_TRUE(Parameters().isVisible());
}

TEST_F(ShowParWindow, HasNoZWithTwoParameters) {
    NoOfPar = 1;
    UnknownParNo = 1;
    XParNo = 0;
    ZParNo = 2;
    SetupShowPar();
    EXPECT_EQ(Shown(), (QStringList{"Power", "Significance Level", ""}));
    EXPECT_FALSE(List(ZRole).isEnabled());
    EXPECT_FALSE(ParBox("txtZValue").isEnabled());
    EXPECT_EQ(Text("txtZValue"), "");
}

// --- Exchanging axes --------------------------------------------------------------------------

TEST_F(ShowParWindow, ExchangesYAndXWhenYIsChosenForX) {
    PressOk();
    ASSERT_EQ(Calculated, True);
    Choose(XRole, Power);
    EXPECT_EQ(UnknownParNo, Mean0);
    EXPECT_EQ(XParNo, Power);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Text("txtXminValue"), ToQt(ParXminText(ParKind(Power))));
    ExpectPermutation();
}

TEST_F(ShowParWindow, GivesTheBoxOfTheNewAxisToTheFormer) {
    FixedBox(Sd).setFocus();
    Choose(XRole, Sd);
    EXPECT_EQ(Shown(), (QStringList{"Power", "Standard Deviation", "H1: Mean 2 - Mean 1",
                                    "Significance Level", "H0: Mean 2 - Mean 1", "Sample Size 1",
                                    "Sample Size 2 / Sample Size 1"}));
    EXPECT_EQ(FixedBox(Mean0).text(), ToQt(ParText(ParKind(Mean0))));
    ExpectPermutation();
}

TEST_F(ShowParWindow, ShowsNoParameterTwiceWhateverIsChosen) {
    for (i16 i = 0; i < 24; ++i) {
        Choose(i % 3, static_cast<i16>((i * 5 + i / 4) % (NoOfPar + 1)));
        ExpectPermutation();
    }
}

TEST_F(ShowParWindow, TakesAutomaticDecimalsWithAnotherY) {
    OutDecimals = 3;
    Choose(ZRole, Sd);
    EXPECT_EQ(OutDecimals, 3);
    Choose(YRole, Size1);
    EXPECT_EQ(OutDecimals, -1);
}

TEST_F(ShowParWindow, StaysAsItIsWhenTheSameIsChosen) {
    PressOk();
    AnalysisState(AnalysisNo).Changed = False;
    Choose(XRole, XParNo);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
}

TEST_F(ShowParWindow, ChoosesByTheArrowKeysToo) {
    List(XRole).setFocus();
    QTest::keyClick(&List(XRole), Qt::Key_Up);
    EXPECT_EQ(XParNo, Power);
    ExpectPermutation();
}

TEST_F(ShowParWindow, KeepsItsAxesUnderTheMouseWheel) {
    QComboBox& list = List(XRole);
    const QPointF middle = list.rect().center();
    QWheelEvent wheel(middle, list.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(XParNo, Mean0);
}

// --- Keys and focus ---------------------------------------------------------------------------

TEST_F(ShowParWindow, FollowsTheEyeWithTheTabKey) {
    QList<QWidget*> order{&List(YRole),
                          &List(XRole),
                          &ParBox("txtXminValue"),
                          &ParBox("txtXmaxValue"),
                          &ParBox("txtXstepValue"),
                          &List(ZRole),
                          &ParBox("txtZValue")};
    for (int i = 0; i < 4; ++i)
        order << &ParBox(ControlName("txtParValue", i));
    order << &Ok();
    order.front()->setFocus();
    for (QWidget* control : order) {
        EXPECT_EQ(QApplication::focusWidget(), control) << qPrintable(control->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    Ok().setFocus();
    for (qsizetype i = order.size() - 1; i >= 0; --i) {
        EXPECT_EQ(QApplication::focusWidget(), order[i]) << qPrintable(order[i]->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    }
}

TEST_F(ShowParWindow, IsLeftForTheTableAndReachedFromItByTheTabKey) {
    PressOk();
    QWidget& edit = *hands::Control(Child(), "cmdEditTable");
    Ok().setFocus();
    for (QWidget* control : {&Picture(), &edit, static_cast<QWidget*>(&List(YRole))}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), control) << qPrintable(control->objectName());
    }
    for (QWidget* control : {&edit, &Picture(), &Ok()}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), control) << qPrintable(control->objectName());
    }
}

TEST_F(ShowParWindow, GoesToAControlByItsLetter) {
    QWidget& from = FixedBox(Size2);
    EXPECT_EQ(FocusAfter(from, Qt::Key_Y), &List(YRole));
    EXPECT_EQ(FocusAfter(from, Qt::Key_X), &List(XRole));
    EXPECT_EQ(FocusAfter(from, Qt::Key_Z), &List(ZRole));
    EXPECT_EQ(FocusAfter(from, Qt::Key_A), &ParBox("txtXmaxValue"));
    EXPECT_EQ(FocusAfter(from, Qt::Key_E), &ParBox("txtXstepValue"));
    EXPECT_EQ(FocusAfter(from, Qt::Key_V), &ParBox("txtZValue"));
    EXPECT_EQ(FocusAfter(from, Qt::Key_1), &FixedBox(Size1));
    EXPECT_EQ(FocusAfter(List(YRole), Qt::Key_S), &FixedBox(Sd));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

// "M&in:" and "S&ignificance Level".
TEST_F(ShowParWindow, GoesRoundTheControlsThatShareALetter) {
    QWidget& from = List(YRole);
    EXPECT_EQ(FocusAfter(from, Qt::Key_I), &ParBox("txtXminValue"));
    EXPECT_EQ(FocusAfter(ParBox("txtXminValue"), Qt::Key_I), &FixedBox(Level));
    EXPECT_EQ(FocusAfter(FixedBox(Level), Qt::Key_I), &ParBox("txtXminValue"));
}

TEST_F(ShowParWindow, IsReachedByItsLettersFromTheTable) {
    PressOk();
    EXPECT_EQ(FocusAfter(Picture(), Qt::Key_Y), &List(YRole));
    EXPECT_EQ(FocusAfter(Picture(), Qt::Key_V), &ParBox("txtZValue"));
    EXPECT_EQ(ParBox("txtZValue").selectedText(), Text("txtZValue"));
}

TEST_F(ShowParWindow, SelectsTheTextOfABoxOnFocus) {
    for (const char* name : {"txtXminValue", "txtXmaxValue", "txtXstepValue", "txtZValue",
                             "txtParValue(0)", "txtParValue(3)"}) {
        hands::Click(ParBox(name));
        EXPECT_EQ(ParBox(name).selectedText(), Text(name)) << name;
    }
    QTest::keyClick(&ParBox("txtParValue(3)"), Qt::Key_Backtab);
    EXPECT_EQ(ParBox("txtParValue(2)").selectedText(), Text("txtParValue(2)"));
}

TEST_F(ShowParWindow, MovesBetweenTheFixedBoxesWithTheArrowKeys) {
    FixedBox(Level).setFocus();
    for (const i16 next : {Sd, Size1, Size2, Size2}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        EXPECT_EQ(QApplication::focusWidget(), &FixedBox(next));
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), &FixedBox(Size1));
}

TEST_F(ShowParWindow, UndoesCopiesAndPastes) {
    const QString old = Text("txtXminValue");
    QLineEdit& box = ParBox("txtXminValue");
    TypeIntoBox("txtXminValue", "-7,25");
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "-7,25");
    QLineEdit& zBox = ParBox("txtZValue");
    hands::Click(zBox);
    QTest::keyClick(&zBox, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(ParZValuesText(ParKind(ZParNo)), "-7,25");
    box.setFocus();
    for (int i = 0; i < 4 && box.text() != old; ++i)
        QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), old);
    EXPECT_EQ(ParXminText(ParKind(XParNo)), FromQt(old));
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(ShowParWindow, RefusesACharacterAndLeavesTheRest) {
    PressOk();
    TypeIntoBox("txtXstepValue", "0.1e");
    EXPECT_EQ(Messages.Texts, QStringList{"e   Is Not Allowed. Must Be a Digit."});
    EXPECT_EQ(Text("txtXstepValue"), "0.1");
    EXPECT_EQ(ParXstepText(ParKind(XParNo)), "0.1");
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &ParBox("txtXstepValue"));
}

TEST_F(ShowParWindow, MarksTextsThatAreReadAsOtherNumbers) {
    const auto isMarked = [this](const char* box) {
        return ParBox(box).findChild<QAction*>("actReading")->isVisible();
    };
    const std::pair<const char*, std::pair<const char*, const char*>> typed[] = {
        {"txtXminValue", {"0.1.2", "0.1.2 is read as 0.1"}},
        {"txtXmaxValue", {"12-5", "12-5 is read as 12"}},
        {"txtXstepValue", {"15,420", "15,420 is read as 15.42"}},
        {"txtZValue", {"0.01 0.8,0.9", "0.8,0.9 is read as 0.8"}},
        {"txtParValue(0)", {"1.2.3", "1.2.3 is read as 1.2"}}};
    for (const auto& [box, text] : typed) {
        const QString before = Text(box);
        EXPECT_FALSE(isMarked(box)) << box;
        TypeIntoBox(box, text.first);
        EXPECT_TRUE(isMarked(box)) << box;
        EXPECT_EQ(ParBox(box).toolTip(), text.second);
        EXPECT_EQ(hands::TextOf(Window(), "lblStatus"), text.second);
        TypeIntoBox(box, before);
        EXPECT_FALSE(isMarked(box)) << box;
    }
}

// --- Messages ---------------------------------------------------------------------------------

struct Refusal {
    const char* Min;
    const char* Max;
    const char* Step;
    const char* Message;
    const char* Box; // that has the focus then
};

class RefusedRun : public ShowParWindow, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedRun, TellsWhyLeadsToTheBoxAndLosesNothing) {
    Choose(XRole, Level);
    TypeIntoBox("txtXminValue", GetParam().Min);
    TypeIntoBox("txtXmaxValue", GetParam().Max);
    TypeIntoBox("txtXstepValue", GetParam().Step);
    PressOk();
    EXPECT_EQ(Messages.Texts, QStringList{GetParam().Message});
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
    EXPECT_EQ(Messages.LastButtons, QMessageBox::Ok);
    EXPECT_EQ(Text("txtXminValue"), GetParam().Min);
    EXPECT_EQ(Text("txtXmaxValue"), GetParam().Max);
    EXPECT_EQ(Text("txtXstepValue"), GetParam().Step);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    QLineEdit& box = ParBox(GetParam().Box);
    EXPECT_EQ(QApplication::focusWidget(), &box);
    EXPECT_EQ(box.selectedText(), box.text());
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_FALSE(Picture().isVisible());
}

INSTANTIATE_TEST_SUITE_P(
    Axis, RefusedRun,
    testing::Values(
        Refusal{"0.5", "0.1", "0.1", "Xmin Must Be < Xmax If Xstep > 0.", "txtXminValue"},
        Refusal{"0.1", "0.1", "0.1", "Xmin Must Be < Xmax If Xstep > 0.", "txtXminValue"},
        Refusal{"0.1", "0.5", "-0.1", "Xmin Must Be > Xmax If Xstep < 0.", "txtXminValue"},
        Refusal{"0.1", "0.5", "0", "Xstep Must Be # 0.", "txtXstepValue"},
        Refusal{"0.1", "0.5", "-", "Xstep Must Be # 0.", "txtXstepValue"},
        // 0.1, 0.1025, ..., 0.3525: 101 values of x
        Refusal{"0.1", "0.3525", "0.0025", "Maximum Number of Steps Is 100.", "txtXstepValue"},
        Refusal{"0", "0.2", "0.05",
                "Significance Level Has To Be Greater Than or Equal to 0.00001.", "txtXminValue"},
        Refusal{"0.8", "1.2", "0.1", "Significance Level Has To Be Less Than or Equal to 0.99999.",
                "txtXmaxValue"}));

TEST_F(ShowParWindow, TakesAHundredStepsAndAFallingAxis) {
    Choose(XRole, Level);
    TypeIntoBox("txtXminValue", "0.35");
    TypeIntoBox("txtXmaxValue", "0.1025");
    TypeIntoBox("txtXstepValue", "-0,0025");
    PressOk();
    EXPECT_TRUE(Messages.Texts.isEmpty()) << qPrintable(Messages.Texts.join('\n'));
    EXPECT_EQ(TableX.HighBound(), 100);
    EXPECT_EQ(Calculated, True);
}

TEST_F(ShowParWindow, LeadsToAFixedValueOutOfItsRange) {
    hands::TypeInto(Parameters(), FixedBox(Sd).objectName(), "-1");
    hands::Click(List(YRole)); // the focus is elsewhere
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    PressOk();
    ASSERT_EQ(Messages.Texts.size(), 1);
    EXPECT_TRUE(
        Messages.Texts[0].startsWith("Standard Deviation Has To Be Greater Than or Equal to "));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &FixedBox(Sd));
    EXPECT_EQ(FixedBox(Sd).text(), "-1");
}

TEST_F(ShowParWindow, LeadsToAFixedValueThatIsMissing) {
    hands::TypeInto(Parameters(), FixedBox(Size1).objectName(), " ");
    PressOk();
    EXPECT_EQ(Messages.Texts, QStringList{"Sample Size 1 Has No Value."});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &FixedBox(Size1));
}

TEST_F(ShowParWindow, LeadsToTheZValues) {
    Choose(ZRole, Sd);
    TypeIntoBox("txtZValue", "1 -2");
    PressOk();
    ASSERT_EQ(Messages.Texts.size(), 1);
    EXPECT_TRUE(
        Messages.Texts[0].startsWith("Standard Deviation Has To Be Greater Than or Equal to "));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &ParBox("txtZValue"));
    TypeIntoBox("txtZValue", "  ");
    PressOk();
    EXPECT_EQ(Messages.Texts.last(), "Standard Deviation Has No Value.");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(QApplication::focusWidget(), &ParBox("txtZValue"));
}

TEST_F(ShowParWindow, TellsWhenThereIsNoValueAnywhere) {
    PressOk();
    const QString drawn = Drawn();
    Choose(YRole, Size1); // sizes for equal means: none is large enough
    Choose(XRole, Level);
    TypeIntoBox("txtXminValue", "0.01");
    TypeIntoBox("txtXmaxValue", "0.05");
    TypeIntoBox("txtXstepValue", "0.01");
    Choose(ZRole, Mean1);
    TypeIntoBox("txtZValue", "0");
    PressOk();
    EXPECT_EQ(Messages.Texts, QStringList{"Can't Be Calculated For Any x-value."});
    EXPECT_EQ(Drawn(), drawn);
    EXPECT_EQ(Calculated, False);
    const QString why = Window().statusBar()->currentMessage();
    EXPECT_TRUE(why.startsWith("With Significance Level 0.01: Sample Size 1 from 3 to 99999: "))
        << why.toStdString();
    EXPECT_TRUE(why.endsWith(" H1 equals H0.")) << why.toStdString();
}

TEST_F(ShowParWindow, SurvivesARunTimeErrorWithEveryTypedValue) {
    const QString tooLarge(400, '9');
    hands::TypeInto(Parameters(), FixedBox(Size2).objectName(), tooLarge);
    PressOk();
    EXPECT_EQ(Messages.Texts, QStringList{"Run-time error: Overflow"});
    EXPECT_EQ(FixedBox(Size2).text(), tooLarge);
    EXPECT_TRUE(Ok().isEnabled());
    hands::TypeInto(Parameters(), FixedBox(Size2).objectName(), "1");
    PressOk();
    EXPECT_EQ(Messages.Texts.size(), 1);
    EXPECT_EQ(Calculated, True);
}

// --- Runs -------------------------------------------------------------------------------------

TEST_F(ShowParWindow, RunsOnReturnInABoxAndStaysThere) {
    hands::Click(ParBox("txtZValue"));
    QTest::keyClick(&ParBox("txtZValue"), Qt::Key_Return);
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(Picture().isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &ParBox("txtZValue"));
}

TEST_F(ShowParWindow, RunsOnReturnOnTheButton) {
    Ok().setFocus();
    QTest::keyClick(&Ok(), Qt::Key_Return);
    EXPECT_EQ(Calculated, True);
}

TEST_F(ShowParWindow, LeavesTheTableAsDrawnUntilOk) {
    PressOk();
    const QString drawn = Drawn();
    const auto rows = RecordPaint(Picture()).Rows();
    Choose(XRole, Sd);
    Choose(YRole, Size1);
    TypeIntoBox("txtXminValue", "0.3");
    TypeIntoBox("txtZValue", "0.4 0.5");
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Drawn(), drawn);
    EXPECT_EQ(RecordPaint(Picture()).Rows(), rows);
    PressOk();
    EXPECT_EQ(Calculated, True);
    EXPECT_NE(Drawn(), drawn);
    EXPECT_TRUE(Drawn().contains("Standard Deviation"));
}

// Remembers the platform before another one takes its place.
class UsualPlatform {
  protected:
    Platform& usual_ = ThePlatform();
};

// The windows on a clock that sees ten seconds go by at every look, and an event loop that runs at
// every step.
class SlowPlatform : UsualPlatform, public QtPlatform {
  public:
    explicit SlowPlatform(frmMain& window) : QtPlatform(window) {}
    ~SlowPlatform() override { SetPlatform(usual_); }

    f64 Timer() override { return clock_ += SecondsPerLook; }
    void DoEvents() override { QCoreApplication::processEvents(); }
    void StepProgress() override {
        QtPlatform::StepProgress();
        ++Steps;
        if (OnStep)
            OnStep();
    }

    f64 SecondsPerLook = 10;
    int Steps = 0;
    std::function<void()> OnStep;

  private:
    f64 clock_ = 0;
};

class SlowRun : public ShowParWindow {
  protected:
    QProgressBar& Bar() { return *hands::Control<QProgressBar>(Parameters(), "pgrProgress"); }
};

TEST_F(SlowRun, ShowsHowFarItHasCome) {
    SlowPlatform slow(Window());
    QList<int> values;
    slow.OnStep = [&] {
        values << Bar().value();
        EXPECT_TRUE(Shows("lblProgress"));
        EXPECT_TRUE(Shows("pgrProgress"));
        EXPECT_EQ(Caption(), "Cancel");
        EXPECT_EQ(Calculating, True);
        EXPECT_FALSE(List(YRole).isEnabled());
        EXPECT_FALSE(ParBox("txtXminValue").isEnabled());
        EXPECT_TRUE(Ok().isEnabled());
    };
    hands::Click(ParBox("txtXminValue"));
    QTest::keyClick(&ParBox("txtXminValue"), Qt::Key_Return);
    ASSERT_EQ(Calculated, True);
    QList<int> expected;
    for (int i = 1; i <= static_cast<int>(TableY.Raw().size()); ++i)
        expected << i;
    EXPECT_EQ(values, expected);
    EXPECT_EQ(Bar().maximum(), expected.size());
    EXPECT_FALSE(Shows("lblProgress"));
    EXPECT_FALSE(Shows("pgrProgress"));
    EXPECT_EQ(Caption(), "OK");
    EXPECT_EQ(Calculating, False);
    EXPECT_TRUE(List(YRole).isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &ParBox("txtXminValue")) << "where it was before";
}

// 0.3 s at the first point foretell less than 5 s for 9 points; after the fourth more than 1 s has
// passed, and 5 points are open.
TEST_F(SlowRun, ShowsThePointsStillOpenWhenItHasBecomeLong) {
    Choose(XRole, Sd);
    TypeIntoBox("txtXminValue", "1");
    TypeIntoBox("txtXmaxValue", "9");
    TypeIntoBox("txtXstepValue", "1");
    TypeIntoBox("txtZValue", "0.5");
    SlowPlatform slow(Window());
    slow.SecondsPerLook = 0.3;
    QList<int> values;
    slow.OnStep = [&] { values << Bar().value(); };
    PressOk();
    ASSERT_EQ(Calculated, True);
    EXPECT_EQ(Bar().maximum(), 5);
    EXPECT_EQ(values, (QList<int>{1, 2, 3, 4, 5}));
}

TEST_F(SlowRun, IsNotShownWhenItIsShort) {
    SlowPlatform slow(Window());
    slow.SecondsPerLook = 0;
    PressOk();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(slow.Steps, 0);
}

TEST_F(SlowRun, IsCancelledByTheButtonAndLeavesTheFormerDrawing) {
    PressOk();
    const QString drawn = Drawn();
    const auto rows = RecordPaint(Picture()).Rows();
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    SlowPlatform slow(Window());
    slow.OnStep = [&] {
        if (slow.Steps == 3)
            QTimer::singleShot(0, &Ok(), [this] { QTest::mouseClick(&Ok(), Qt::LeftButton); });
    };
    PressOk();
    EXPECT_EQ(slow.Steps, 3);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(Calculating, False);
    EXPECT_EQ(Caption(), "OK");
    EXPECT_FALSE(Shows("pgrProgress"));
    EXPECT_TRUE(Messages.Texts.isEmpty());
    EXPECT_EQ(Drawn(), drawn);
    EXPECT_EQ(RecordPaint(Picture()).Rows(), rows);
    EXPECT_EQ(Window().statusBar()->currentMessage(), "The run was cancelled.");
    EXPECT_EQ(FixedBox(Level).text(), "0.01");
    slow.OnStep = nullptr;
    PressOk();
    EXPECT_EQ(Calculated, True);
    EXPECT_NE(Drawn(), drawn);
}

TEST_F(SlowRun, IsCancelledByTheKeyboard) {
    SlowPlatform slow(Window());
    slow.OnStep = [&] {
        if (slow.Steps != 2)
            return;
        EXPECT_EQ(QApplication::focusWidget(), &Ok());
        QTimer::singleShot(0, &Ok(), [this] { QTest::keyClick(&Ok(), Qt::Key_Return); });
    };
    PressOk();
    EXPECT_EQ(slow.Steps, 2);
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(Picture().isVisible());
}

TEST_F(SlowRun, IsCancelledByEsc) {
    SlowPlatform slow(Window());
    QString hint;
    slow.OnStep = [&] {
        if (slow.Steps != 2)
            return;
        hint = hands::TextOf(Window(), "lblStatus");
        QTimer::singleShot(0, &Ok(),
                           [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); });
    };
    PressOk();
    EXPECT_EQ(slow.Steps, 2);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(hint, "Calculating. Esc or Cancel ends the run.");
    EXPECT_EQ(Window().statusBar()->currentMessage(), "The run was cancelled.");
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"),
              "Choose the axes and the values, then press OK. F1 explains them.");
    slow.OnStep = nullptr;
    PressOk();
    EXPECT_EQ(Window().statusBar()->currentMessage(), "The run is complete.");
}

TEST_F(SlowRun, LetsNothingElseThrough) {
    SlowPlatform slow(Window());
    slow.OnStep = [&] {
        if (slow.Steps == 2)
            QTimer::singleShot(0, &Window(), [this] {
                QTest::mouseClick(&ParBox("txtXminValue"), Qt::LeftButton);
                QTest::keyClicks(&ParBox("txtXminValue"), "7");
                Child().parentWidget()->close();
                Window().close();
            });
    };
    const QString min = Text("txtXminValue");
    PressOk();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(Text("txtXminValue"), min);
    EXPECT_EQ(Area().subWindowList().size(), 1);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

// --- Lists by the keyboard and for a screen reader --------------------------------------------

TEST_F(ShowParWindow, RunsWithEnterInAList) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        TypeIntoBox("txtXstepValue", key == Qt::Key_Return ? "0.1" : "0.2");
        ASSERT_EQ(Calculated, False);
        List(YRole).setFocus();
        QTest::keyClick(&List(YRole), key);
        EXPECT_EQ(Calculated, True);
    }
    QTest::keyClick(&List(YRole), Qt::Key_Escape);
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(Messages.Texts.isEmpty());
    // Once, from a list and from a box alike.
    TypeIntoBox("txtXstepValue", "0");
    for (QWidget* from :
         {static_cast<QWidget*>(&List(YRole)), static_cast<QWidget*>(&ParBox("txtXstepValue"))}) {
        Messages.Texts.clear();
        from->setFocus();
        QTest::keyClick(from, Qt::Key_Return);
        EXPECT_EQ(Messages.Texts, QStringList{"Xstep Must Be # 0."});
    }
}

TEST_F(ShowParWindow, NamesItsListsForAScreenReader) {
    const QStringList names{"Parameter To Calculate (y-axis):", "Independent Parameter 1 (x-axis):",
                            "Independent Parameter 2 (z-values):"};
    for (int k = 0; k < 3; ++k) {
        QStringList heard;
        for (const auto& [label, relation] :
             QAccessible::queryAccessibleInterface(&List(k))->relations(QAccessible::Label))
            heard << label->text(QAccessible::Name);
        EXPECT_EQ(heard, QStringList{names[k]});
        EXPECT_EQ(List(k).accessibleName(), names[k]);
    }
    for (QLabel* label : Parameters().findChildren<QLabel*>())
        EXPECT_FALSE(
            QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name).contains('&'))
            << qPrintable(label->text());
}

// --- Place ------------------------------------------------------------------------------------

TEST_F(ShowParWindow, CoversNoTableAndFollowsTheMainWindow) {
    PressOk();
    const auto placeOf = [this](QWidget& widget) {
        return QRect(widget.mapTo(&Window(), QPoint(0, 0)), widget.size());
    };
    for (const QSize size : {QSize(1200, 780), QSize(900, 600), QSize(1400, 860)}) {
        Window().resize(size);
        hands::Settle();
        EXPECT_FALSE(placeOf(Parameters()).intersects(placeOf(Area())));
        EXPECT_TRUE(placeOf(Area()).contains(placeOf(*Child().parentWidget())));
        EXPECT_EQ(placeOf(Parameters()).right(), Window().width() - 1) << "at the right edge";
    }
    const QPoint before = Parameters().mapToGlobal(QPoint(0, 0));
    Window().move(Window().pos() + QPoint(30, 20));
    EXPECT_EQ(Parameters().mapToGlobal(QPoint(0, 0)), before + QPoint(30, 20));
    EXPECT_EQ(Parameters().window(), &Window()) << "it is minimized with it";
}

TEST_F(ShowParWindow, ShowsItsButtonInALowWindow) {
    Window().resize(800, 380);
    hands::Settle();
    auto* scroll = Parameters().findChild<QScrollArea*>();
    EXPECT_TRUE(scroll->verticalScrollBar()->isVisible());
    const QRect whole = Parameters().rect();
    EXPECT_TRUE(whole.contains(QRect(Ok().mapTo(&Parameters(), QPoint(0, 0)), Ok().size())));
    // The Tab key brings a box into view.
    FixedBox(Size2).setFocus(Qt::TabFocusReason);
    hands::Settle();
    EXPECT_FALSE(FixedBox(Size2).visibleRegion().isEmpty());
}

TEST_F(ShowParWindow, CutsNoText) {
    PressOk();
    for (const QSize size : {QSize(1200, 780), QSize(700, 420)}) {
        Window().resize(size);
        hands::Settle();
        for (const QLabel* label : Parameters().findChildren<QLabel*>()) {
            if (label->isVisible()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
                EXPECT_GE(label->height(), label->sizeHint().height()) << qPrintable(label->text());
            }
        }
        for (const QLineEdit* box : Parameters().findChildren<QLineEdit*>()) {
            EXPECT_TRUE(!box->isVisible() ||
                        box->width() > box->fontMetrics().horizontalAdvance(box->text()))
                << qPrintable(box->text());
        }
        for (int k = 0; k < 3; ++k)
            EXPECT_GE(List(k).width(), List(k).sizeHint().width());
    }
}

// --- Blue values ------------------------------------------------------------------------------

class BlueShowPar : public ShowParWindow {
  protected:
    // The standard deviation as a kind that is derived from a grid, with grid data.
    BlueShowPar() {
        ParKind(Sd) = blueKind;
        ParText(blueKind) = "1.5";
        HasGridData = True;
        Window().RefreshChild();
    }

    static constexpr i16 blueKind = 34;
};

TEST_F(BlueShowPar, ShowsTheValueInBlueWithTheHint) {
    EXPECT_EQ(FixedBox(Sd).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
    EXPECT_TRUE(Shows("lblGetCalc"));
    EXPECT_EQ(Text("lblGetCalc"), "Double-click Blue Text to Calculate the Value from Table(s).");
}

TEST_F(BlueShowPar, TellsThatAnAxisCantBeCalculated) {
    Choose(XRole, Sd);
    EXPECT_EQ(Text("lblGetCalc"),
              "Can't Be Calculated When " + PlainLabel(Sd) + " Is the X-, Y-, or Z-axis.");
    Choose(XRole, Level);
    EXPECT_EQ(Text("lblGetCalc"), "Double-click Blue Text to Calculate the Value from Table(s).");
    EXPECT_EQ(FixedBox(Sd).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
}

TEST_F(BlueShowPar, DiscardsTheGridDataWhenChangedByHand) {
    hands::TypeInto(Parameters(), FixedBox(Sd).objectName(), "2");
    EXPECT_EQ(HasGridData, False);
    EXPECT_NE(FixedBox(Sd).palette().color(QPalette::Text), QColor(0, 0, 0xFF));
    EXPECT_FALSE(Shows("lblGetCalc"));
}

} // namespace
} // namespace quorvanta
