// The option window.
#include "core/analysis_state.h"
#include "core/records.h"
#include "core/setup.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

namespace quorvanta {
namespace {

class OptionWindow : public WindowCheck {
  protected:
    OptionWindow() {
        Trigger("mnuFile(0)");
        Trigger("mnuStudent(0)");
    }

    QAbstractButton& Option(const QString& name) {
        return *hands::Control<QAbstractButton>(Options(), name);
    }
    QString Title(const QString& name) {
        return hands::Control<QGroupBox>(Options(), name)->title();
    }
    bool Shown(const QString& name) { return hands::Control(Options(), name)->isVisible(); }
    void Choose(const QString& name) { hands::Click(Options(), name); }

    // The options of a distribution, whatever modules there are.
    void OfferDistribution(i16 distrNo) {
        IsTest = False;
        DistrNo = distrNo;
        ParListNo = 0;
        Window().RefreshOptions();
    }
};

TEST_F(OptionWindow, HasItsTexts) {
    EXPECT_EQ(Title("fraSamples"), "No Of &Samples");
    EXPECT_EQ(Option("optSamples(0)").text(), "One Sample");
    EXPECT_EQ(Option("optSamples(1)").text(), "Two Samples");
    EXPECT_EQ(Option("optSamples(2)").text(), ">Two Samples");
    EXPECT_EQ(Title("fraTails"), "No Of &Tails");
    EXPECT_EQ(Option("optTails(0)").text(), "One-sided (non-inferiority, superiority)");
    EXPECT_EQ(Option("optTails(1)").text(), "Two-sided (inequality)");
    EXPECT_EQ(Option("optTails(2)").text(), "Two One-sided (equivalence)");
    EXPECT_EQ(Option("chkLeftTail").text(), "&Reject in Left Tail");
    EXPECT_EQ(Title("fraProcedure"), "&Procedure");
    EXPECT_EQ(Option("optProcedure(0)").text(), "Test");
    EXPECT_EQ(Option("optProcedure(1)").text(), "Point Estimate");
    EXPECT_EQ(Option("optProcedure(2)").text(), "Conf. Interval");
    EXPECT_EQ(hands::TextOf(Options(), "lblParameter"), "P&arameter:");
    EXPECT_EQ(hands::TextOf(Options(), "lblInterchangeable"), "&Interchangeable Parameters:");
    EXPECT_EQ(Title("fraInterim"), "&Number Of Interim Analyses");
    EXPECT_EQ(Option("cmdOK").text(), "OK");
    EXPECT_EQ(Options().windowTitle(), "Student's t-test, Unpaired");
}

TEST_F(OptionWindow, DrawsWhatTheTestOffers) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Option(ControlName("optSamples", i)).isEnabled(), SamplesOffered(i + 1));
        EXPECT_EQ(Option(ControlName("optSamples", i)).isChecked(), NoOfSamples == i + 1);
        EXPECT_EQ(Option(ControlName("optTails", i)).isEnabled(), TailsOffered(i + 1));
        EXPECT_EQ(Option(ControlName("optTails", i)).isChecked(), NoOfTails == i + 1);
    }
    ASSERT_EQ(NoOfCheck, 3);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Shown(ControlName("chkCheck", i)), i < NoOfCheck);
        if (i < NoOfCheck) {
            EXPECT_EQ(Option(ControlName("chkCheck", i)).text(), ToQt(CheckLabel(CheckList(i))));
        }
    }
    ASSERT_EQ(NoOfIntPar, 2);
    EXPECT_TRUE(Shown("lblInterchangeable"));
    for (int group = 0; group < 4; ++group) {
        EXPECT_EQ(Shown(ControlName("fraIntPar", group)), group < NoOfIntPar);
        if (group >= NoOfIntPar)
            continue;
        const i16 kind = IntParList(group);
        EXPECT_EQ(Title(ControlName("fraIntPar", group)), ToQt(IntParCaption(kind)));
        for (int option = 0; option < 3; ++option) {
            QAbstractButton& button =
                Option(ControlName(QString("optIntPar%1").arg(group), option));
            EXPECT_EQ(button.text(), ToQt(IntParOption(option, kind)));
            EXPECT_EQ(button.isChecked(), IntParValue(kind) == option);
        }
    }
    EXPECT_FALSE(Shown("fraProcedure"));
    EXPECT_FALSE(Shown("lblParameter"));
    EXPECT_FALSE(Shown("lstParList"));
    EXPECT_FALSE(Shown("fraInterim"));
}

TEST_F(OptionWindow, HandsEveryChoiceToTheState) {
    Choose("optTails(0)");
    EXPECT_EQ(NoOfTails, OneSided);
    EXPECT_TRUE(Option("chkLeftTail").isEnabled());
    Choose("chkLeftTail");
    EXPECT_EQ(LeftTail, True);
    Choose("chkLeftTail");
    EXPECT_EQ(LeftTail, False);
    Choose("optTails(2)");
    EXPECT_EQ(NoOfTails, TwoOneSided);
    Choose("optTails(1)");
    EXPECT_EQ(NoOfTails, TwoSided);
    EXPECT_FALSE(Option("chkLeftTail").isEnabled());
    Choose("optIntPar0(2)");
    EXPECT_EQ(IntParValue(IntParList(0)), 2);
    Choose("optIntPar1(1)");
    EXPECT_EQ(IntParValue(IntParList(1)), 1);
}

// A letter and the Return key may follow each other faster than a button looks pressed.
TEST_F(OptionWindow, TakesAChoiceByItsLetterAtOnce) {
    Choose("optTails(0)");
    ASSERT_EQ(LeftTail, False);
    QTest::keyClick(&Options(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(LeftTail, True);
    EXPECT_TRUE(Option("chkLeftTail").hasFocus());
    QTest::keyClick(&Options(), Qt::Key_Return);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(LeftTail, True);
}

TEST_F(OptionWindow, KeepsChecksThatExcludeEachOtherApart) {
    Choose("chkCheck(0)"); // degrees of freedom
    EXPECT_TRUE(Option("chkCheck(0)").isChecked());
    Choose("chkCheck(1)"); // number of groups
    EXPECT_TRUE(Option("chkCheck(1)").isChecked());
    EXPECT_FALSE(Option("chkCheck(0)").isChecked());
    Choose("chkCheck(2)"); // unequal standard deviations
    EXPECT_FALSE(Option("chkCheck(0)").isEnabled());
    EXPECT_FALSE(Option("chkCheck(1)").isEnabled());
    EXPECT_FALSE(Option("chkCheck(1)").isChecked());
    Choose("chkCheck(2)");
    EXPECT_TRUE(Option("chkCheck(0)").isEnabled());
}

TEST_F(OptionWindow, TakesTheResultAwayWithAChoice) {
    AcceptOptions();
    ASSERT_EQ(Calculated, True);
    Trigger("mnuStudent(0)");
    Choose("optTails(0)");
    EXPECT_EQ(Calculated, False);
}

TEST_F(OptionWindow, HidesAnOptionWithoutACaption) {
    QTest::keyClick(&Options(), Qt::Key_Escape);
    Trigger("mnuNonInf(1)"); // ratio of medians: two forms
    ASSERT_TRUE(Options().isVisible());
    bool anyHidden = false;
    for (i16 group = 0; group < NoOfIntPar; ++group) {
        for (i16 option = 0; option < 3; ++option) {
            const bool empty = IntParOption(option, IntParList(group)).empty();
            const QString name = ControlName(QString("optIntPar%1").arg(group), option);
            EXPECT_EQ(Shown(name), !empty);
            anyHidden = anyHidden || empty;
        }
    }
    EXPECT_TRUE(anyHidden);
}

TEST_F(OptionWindow, AcceptsByMouseAndByReturn) {
    Choose("optIntPar1(2)");
    QTest::keyClick(&Options(), Qt::Key_Return);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_NE(PlaceOf("Sample Size &2 / Sample Size 1"), -1);
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
}

TEST_F(OptionWindow, GivesTheFormerAnalysisBackOnEsc) {
    Choose("optIntPar0(1)");
    AcceptOptions();
    const int sd = PlaceOf("&Standard Deviation");
    Type(sd, "0.9");
    const QString head = hands::TextOf(Child(), "lblHead1");
    Trigger("mnuStudent(1)");
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"), "Choose the options, then press OK.");
    QTest::keyClick(&Options(), Qt::Key_Escape);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head);
    EXPECT_EQ(Value(sd), "0.9");
    EXPECT_EQ(TestNo, 0);

    Trigger("mnuStudent(1)");
    Options().close();
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head);
    EXPECT_EQ(TestNo, 0);
}

TEST_F(OptionWindow, LeavesANewWindowEmptyOnEsc) {
    QTest::keyClick(&Options(), Qt::Key_Escape);
    EXPECT_EQ(NoOfPar, 0);
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"), "Choose a test or a distribution from the menus.");
}

TEST_F(OptionWindow, GivesUpWhenAnotherWindowComesToTheFront) {
    AcceptOptions();
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(1)");
    ASSERT_TRUE(Options().isVisible());
    Area().setActiveSubWindow(Area().subWindowList()[0]);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(TestNo, 0);
    Area().setActiveSubWindow(Area().subWindowList()[1]);
    EXPECT_EQ(NoOfPar, 0) << "the second window is still without a test";
}

TEST_F(OptionWindow, StandsBesideItsWindowWithoutBlockingIt) {
    EXPECT_FALSE(Options().isModal());
    EXPECT_EQ(Options().parentWidget(), &Window());
    const QWidget& frame = *Child().parentWidget();
    const QRect child(frame.mapToGlobal(QPoint(0, 0)), frame.size());
    EXPECT_FALSE(Options().frameGeometry().intersects(child));
}

TEST_F(OptionWindow, CanCloseTheWindowItBelongsTo) {
    AnalysisState(AnalysisNo).Changed = False;
    CloseChild();
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(AnalysisNo, 0);
}

TEST_F(OptionWindow, FollowsTheEyeWithTheTabKey) {
    QWidget* first = Options().focusWidget();
    ASSERT_NE(first, nullptr);
    Options().activateWindow();
    Option("optSamples(1)").setFocus();
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QStringList told{"optSamples(1)", "optTails(1)",   "chkCheck(0)",   "chkCheck(1)",
                           "chkCheck(2)",   "optIntPar0(0)", "optIntPar1(0)", "cmdOK"};
    EXPECT_EQ(order, told);
}

// --- Distributions ----------------------------------------------------------------------------

TEST_F(OptionWindow, ListsTheParametersOfADistribution) {
    OfferDistribution(DistrNormal);
    EXPECT_TRUE(Shown("fraProcedure"));
    EXPECT_TRUE(Shown("lblParameter"));
    ASSERT_TRUE(Shown("lstParList"));
    auto& list = *hands::Control<QListWidget>(Options(), "lstParList");
    ASSERT_EQ(list.count(), 4);
    EXPECT_EQ(list.item(0)->text(), "mean (std.dev. known)");
    EXPECT_EQ(list.item(3)->text(), "std.dev. (mean unknown)");
    EXPECT_EQ(list.currentRow(), 0);
    OfferDistribution(DistrHypergeometric);
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.item(0)->text(), "proportion");
}

TEST_F(OptionWindow, HandsTheChosenParameterAndProcedureToTheState) {
    OfferDistribution(DistrNormal);
    auto& list = *hands::Control<QListWidget>(Options(), "lstParList");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(2)).center());
    EXPECT_EQ(ParListNo, 2);
    EXPECT_EQ(list.currentRow(), 2);
    Choose("optProcedure(2)");
    EXPECT_EQ(ProcedureNo, ProcedureInterval);
    EXPECT_EQ(ParListNo, 2);
}

TEST_F(OptionWindow, ShowsTheInterimAnalysesWhereThereIsAChoice) {
    InterimShown = true;
    NoOfInterim = 3;
    Window().RefreshOptions();
    ASSERT_TRUE(Shown("fraInterim"));
    for (int i = 0; i <= 5; ++i) {
        EXPECT_EQ(Option(ControlName("optInterim", i)).text(), QString::number(i));
        EXPECT_EQ(Option(ControlName("optInterim", i)).isChecked(), i == 3);
    }
    Choose("optInterim(5)");
    EXPECT_EQ(NoOfInterim, 5);
}

TEST_F(OptionWindow, MarksNoOptionForAChoiceThatDoesNotExist) {
    NoOfSamples = 77;
    NoOfTails = -5;
    NoOfInterim = 99;
    ProcedureNo = 12;
    Window().RefreshOptions();
    EXPECT_TRUE(Options().isVisible());
}

// --- Multiple comparisons
// -------------------------------------------------------------------------

class MethodWindow : public WindowCheck {
  protected:
    MethodWindow() {
        Trigger("mnuFile(0)");
        Trigger("mnuANOVACI(1)");
    }

    QAbstractButton& Button() { return *hands::Control<QAbstractButton>(Options(), "cmdMethod"); }

    // Presses a button of the window of methods; the texts that it offered.
    QStringList PressIn(const QString& option, const QString& button) {
        QStringList texts;
        hands::WhenModal("frmAdjustMethod", [&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Adjustment Method");
            for (const QAbstractButton* each : dialog.findChildren<QRadioButton*>())
                texts << each->text();
            hands::Click(dialog, option);
            hands::Click(dialog, button);
        });
        hands::Click(Options(), "cmdMethod");
        return texts;
    }
};

TEST_F(MethodWindow, OffersTheMethodsOfTheFamilyAndKeepsTheChoice) {
    EXPECT_TRUE(Button().isVisible());
    EXPECT_EQ(Button().text(), "Adjustment &Method: Tukey");
    EXPECT_EQ(PressIn("optMethod(3)", "cmdOK"),
              (QStringList{"Tukey", "Bonferroni", "Sidak", "Scheffe"}));
    EXPECT_EQ(AdjustMethod, 3);
    EXPECT_EQ(Button().text(), "Adjustment &Method: Scheffe");
    PressIn("optMethod(1)", "cmdCancel");
    EXPECT_EQ(AdjustMethod, 3);
}

TEST_F(OptionWindow, HasNoMethodOfAdjustmentForASingleComparison) {
    EXPECT_FALSE(Shown("cmdMethod"));
}

} // namespace
} // namespace quorvanta
