// The engine's platform on Qt, and what the application does with a run-time error.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/platform.h"
#include "ui/application.h"
#include "ui/childwindow.h"
#include "ui/frmsplash.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QTest>

#include <chrono>
#include <new>

namespace quorvanta {
namespace {

class PlatformOnQt : public WindowCheck {
  protected:
    // Runs the action in the handling of an event.
    template <class Action>
    void InAnEvent(Action action) {
        bool begun = false;
        QTimer::singleShot(0, &Window(), [&begun, action] {
            begun = true;
            action();
        });
        EXPECT_TRUE(QTest::qWaitFor([&begun] { return begun; }));
    }

    QWidget& Progress() { return *Window().findChild<QWidget*>("frmProgress"); }
};

// --- Messages ---------------------------------------------------------------------------------

TEST_F(PlatformOnQt, ShowsMessagesLetterByLetter) {
    ShowMessage("Xmin Must Be < Xmax If Xstep > 0.");
    ShowMessage("a" + CrLf + CrLf + "b <b>c</b>");
    EXPECT_EQ(Messages.Texts,
              (QStringList{"Xmin Must Be < Xmax If Xstep > 0.", "a\n\nb <b>c</b>"}));
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
    EXPECT_EQ(Messages.LastButtons, QMessageBox::Ok);
    EXPECT_EQ(Messages.Titles.front(), "Quorvanta3.0");
}

TEST_F(PlatformOnQt, AnswersWithTheButtonPressed) {
    Platform& platform = ThePlatform();
    Messages.Answers = {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel, QMessageBox::Cancel,
                        QMessageBox::Ok};
    EXPECT_EQ(platform.MsgBox("?", Buttons::YesNoCancel, Icon::Question, "Copy"), Answer::Yes);
    EXPECT_EQ(Messages.Titles.back(), "Copy");
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Question);
    EXPECT_EQ(platform.MsgBox("?", Buttons::YesNoCancel, Icon::Information, ""), Answer::No);
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Information);
    EXPECT_EQ(platform.MsgBox("?", Buttons::YesNoCancel, Icon::None, ""), Answer::Cancel);
    EXPECT_EQ(Messages.LastIcon, QMessageBox::NoIcon);
    EXPECT_EQ(platform.MsgBox("?", Buttons::OkCancel, Icon::Exclamation, ""), Answer::Cancel);
    EXPECT_EQ(platform.MsgBox("?", Buttons::OkCancel, Icon::Exclamation, ""), Answer::Ok);
}

TEST_F(PlatformOnQt, TakesEscForCancel) {
    Messages.Answers = {MessageReader::Escape};
    EXPECT_EQ(ThePlatform().MsgBox("?", Buttons::YesNoCancel, Icon::Question, ""), Answer::Cancel);
}

TEST_F(PlatformOnQt, TitlesMessagesAlikeOverAMaximizedWindow) {
    OpenTTest();
    Window().CurrentChild()->parentWidget()->showMaximized();
    ShowMessage("!");
    EXPECT_EQ(Messages.Titles.back(), "Quorvanta3.0");
}

// --- Time and events --------------------------------------------------------------------------

TEST_F(PlatformOnQt, HasAClockThatRunsForward) {
    f64 last = ThePlatform().Timer();
    for (int i = 0; i < 1000; ++i) {
        const f64 now = ThePlatform().Timer();
        EXPECT_GE(now, last);
        last = now;
    }
}

TEST_F(PlatformOnQt, LetsEventsThroughDuringARunButNotAtEveryCall) {
    int seen = 0;
    QTimer events;
    QObject::connect(&events, &QTimer::timeout, [&seen] { ++seen; });
    events.start(0);
    QElapsedTimer clock;
    clock.start();
    i64 calls = 0;
    while (clock.nsecsElapsed() < 30'000'000) {
        ThePlatform().DoEvents();
        ++calls;
    }
    EXPECT_GT(seen, 0);
    EXPECT_LT(seen, 40) << "at most one pump per millisecond";
    EXPECT_GT(calls, seen);
}

TEST_F(PlatformOnQt, ShowsProgressAndTakesACancel) {
    Platform& platform = ThePlatform();
    platform.ShowProgress(200, "");
    EXPECT_TRUE(Progress().isVisible());
    auto& bar = *hands::Control<QProgressBar>(Progress(), "pgrProgress");
    EXPECT_EQ(bar.maximum(), 200);
    EXPECT_EQ(hands::TextOf(Progress(), "lblProgress"), "Percent Calculated:");
    for (int i = 0; i < 50; ++i)
        platform.StepProgress();
    EXPECT_EQ(bar.value(), 50);
    EXPECT_EQ(QApplication::activeModalWidget(), &Progress()) << "no other window takes part";

    EXPECT_EQ(Cancelled, False);
    hands::Click(Progress(), "cmdCancel");
    EXPECT_EQ(Cancelled, True);
    EXPECT_TRUE(Progress().isVisible()) << "the run itself ends the display";
    Cancelled = False;
    QTest::keyClick(&Progress(), Qt::Key_Escape);
    EXPECT_EQ(Cancelled, True);
    Cancelled = False;
    Progress().close();
    EXPECT_EQ(Cancelled, True);
    EXPECT_TRUE(Progress().isVisible());
    Cancelled = False;

    platform.HideProgress();
    EXPECT_FALSE(Progress().isVisible());
    platform.ShowProgress(0, "");
    EXPECT_EQ(bar.value(), 0);
    platform.HideProgress();
}

// --- Run-time errors --------------------------------------------------------------------------

TEST_F(PlatformOnQt, TellsEveryRunTimeErrorByItsName) {
    for (const Fault fault :
         {Fault::Overflow, Fault::DivisionByZero, Fault::InvalidArgument, Fault::BadIndex}) {
        Messages.Texts.clear();
        InAnEvent([fault] { throw RunTimeError(fault); });
        EXPECT_EQ(Messages.Texts, QStringList{QString("Run-time error: ") + FaultName(fault)});
        EXPECT_EQ(Messages.LastIcon, QMessageBox::Critical);
        EXPECT_EQ(Messages.Titles.back(), "Quorvanta3.0");
    }
}

TEST_F(PlatformOnQt, SurvivesExhaustedMemory) {
    InAnEvent([] { throw std::bad_alloc(); });
    EXPECT_EQ(Messages.Texts, QStringList{"Run-time error: Out of memory"});
}

TEST_F(PlatformOnQt, EndsTheRunThatFailed) {
    OpenTTest();
    InAnEvent([] {
        Calculating = True;
        Cancelled = True;
        ThePlatform().ShowProgress(10, "");
        throw RunTimeError(Fault::DivisionByZero);
    });
    EXPECT_EQ(Messages.Texts, QStringList{"Run-time error: Division by zero"});
    EXPECT_FALSE(Progress().isVisible());
    EXPECT_EQ(Calculating, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(Window().isEnabled());
    Press(5);
    EXPECT_EQ(UnknownParNo, 5);
    EXPECT_EQ(Calculated, True);
}

// A graph stays while its values change, and is drawn again when one of them was too much.
TEST_F(PlatformOnQt, SurvivesAValueThatNoNumberHolds) {
    Trigger("mnuFile(2)");
    Trigger("mnuStudent(0)");
    AcceptOptions();
    const QWidget& parameters = *Window().Floating(FloatingWindow::Parameters);
    hands::Click(parameters, "cmdOK");
    ASSERT_EQ(Calculated, True);
    const auto* graph = hands::Control(Child(), "PicGraph");
    const QString statement = graph->accessibleDescription();
    ASSERT_FALSE(statement.isEmpty());
    hands::Control<ValueBox>(parameters, "txtParValue(0)")->setText(QString(400, '9'));
    hands::Click(parameters, "cmdOK");
    EXPECT_EQ(Messages.Texts, QStringList{"Run-time error: Overflow"});
    EXPECT_EQ(graph->accessibleDescription(), statement);
    EXPECT_TRUE(graph->isVisible());
}

TEST_F(PlatformOnQt, OffersNoResultAfterAFault) {
    OpenTTest();
    auto* summary = Window().findChild<QAction*>("mnuGetInfo(3)");
    ASSERT_TRUE(summary->isEnabled());
    InAnEvent([] {
        Calculated = False;
        throw RunTimeError(Fault::Overflow);
    });
    EXPECT_FALSE(summary->isEnabled());
}

// --- Start ------------------------------------------------------------------------------------

TEST_F(PlatformOnQt, ShowsTheSplashUntilItsTimeIsOver) {
    frmSplash splash;
    splash.exec();
    EXPECT_FALSE(splash.isVisible());
}

// Waits for the loop to end, however early the key or the click comes: an end that came before the
// loop began would leave it running, until the guard ends it once more.
TEST_F(PlatformOnQt, EndsTheSplashWithAKeyOrAClick) {
    for (const bool byKey : {true, false}) {
        frmSplash splash;
        bool stillThere = false;
        QTimer::singleShot(0, &splash, [&splash, &stillThere, byKey] {
            stillThere = splash.isVisible();
            if (byKey)
                QTest::keyClick(&splash, Qt::Key_A);
            else
                QTest::mouseClick(&splash, Qt::LeftButton);
            EXPECT_FALSE(splash.isVisible());
        });
        bool hangs = false;
        QTimer guard;
        guard.setSingleShot(true);
        QObject::connect(&guard, &QTimer::timeout, &splash, [&splash, &hangs] {
            hangs = true;
            splash.show();
            splash.reject();
        });
        guard.start(std::chrono::seconds(30));
        splash.exec();
        EXPECT_TRUE(stillThere);
        EXPECT_FALSE(hangs);
    }
}

} // namespace
} // namespace quorvanta
