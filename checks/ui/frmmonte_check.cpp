// The simulation window and the dialog beside it, by mouse and keys while the simulation runs.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/kinds.h"
#include "core/records.h"
#include "montecarlo/simulation.h"
#include "ui/childwindow.h"
#include "ui/frmmain.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <cfenv>
#include <cstddef>
#include <functional>
#include <vector>

namespace quorvanta {
namespace {

class SimulationWindowCheck : public WindowCheck {
  protected:
    SimulationWindowCheck() {
        Trigger("mnuFile(3)");
        Trigger("mnuMW(0)");
        AcceptOptions();
    }

    QWidget& Dialog() { return *Window().Floating(FloatingWindow::InterimParameters); }
    QString Text(const QString& name) { return hands::TextOf(Child(), name); }
    QPushButton& Button(const QString& name) { return *hands::Control<QPushButton>(Child(), name); }
    bool IsShown(const QString& name) { return hands::Control(Child(), name)->isVisible(); }

    void Ask(const QString& most, const QString& seed) {
        hands::TypeInto(Dialog(), "txtMaxNoOfSim", most);
        hands::TypeInto(Dialog(), "txtSeed", seed);
    }
    void Start() { hands::Click(Dialog(), "cmdOK"); }

    struct Step {
        std::function<bool()> When;
        std::function<void()> Act;
    };

    // Starts a run, and does one after the other as soon as its time has come; every run comes to
    // an end.
    void StartAnd(const std::vector<Step>& steps) {
        QTimer look;
        QElapsedTimer sinceStart;
        sinceStart.start();
        std::size_t done = 0;
        QObject::connect(&look, &QTimer::timeout, [&] {
            constexpr qint64 patience = 60'000;
            if (sinceStart.elapsed() > patience)
                SimStop();
            if (done == steps.size() || SimRunning == False || !steps[done].When())
                return;
            ++done;
            steps[done - 1].Act();
        });
        look.start(1);
        Start();
        EXPECT_EQ(done, steps.size());
    }
    void StartAnd(const std::function<bool()>& when, const std::function<void()>& act) {
        StartAnd({{when, act}});
    }
    static std::function<bool()> After(i32 replicates) {
        return [replicates] { return SimNo >= replicates; };
    }
};

TEST_F(SimulationWindowCheck, HasItsControls) {
    EXPECT_EQ(Text("lblSimulationNo"), "Simulation No:");
    EXPECT_EQ(Text("lblSignLevel"), "Actual Significance Level");
    EXPECT_EQ(Text("lblPower"), "Power");
    EXPECT_EQ(Text("lblPrAccept"), "Pr(Accept H0 if H1 true)");
    for (const char* head : {"lblSignEst", "lblPowerEst", "lblPrAcceptEst"})
        EXPECT_EQ(Text(head), " Lower   Estimate   Upper");
    EXPECT_EQ(Text("lblInterimAnalysis(0)"), "Final Analysis");
    EXPECT_FALSE(IsShown("lblInterimAnalysis(1)"));
    EXPECT_FALSE(IsShown("lblASN"));
    EXPECT_EQ(Button("cmdPause").text(), "&Pause");
    EXPECT_EQ(Button("cmdExit").text(), "E&xit");
    EXPECT_FALSE(Button("cmdPause").isEnabled());
    const QWidget& hidden = *hands::Control(Child(), "txtHide");
    EXPECT_FALSE(Child().rect().intersects(hidden.geometry()));
}

TEST_F(SimulationWindowCheck, ItsDialogHasItsControls) {
    EXPECT_TRUE(Dialog().isVisible());
    EXPECT_FALSE(Window().Floating(FloatingWindow::Parameters)->isVisible());
    EXPECT_EQ(hands::TextOf(Dialog(), "lblRejectH0"), "&Reject H0 if p<");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblAcceptH0"), "Accep&t H0 if p>");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblSize1"), "S&ample Size 1");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblSize2"), "Sa&mple Size 2");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblMaxNoOfSim"), "&Max. No of Simulations");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblSeed"), "Rand&om Seed");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblAnalysis(0)"), "Final Analysis");
    EXPECT_FALSE(hands::Control(Dialog(), "lblAnalysis(1)")->isVisible());
    // All parameters but the power, which is estimated.
    for (int i = 0; i < NoOfPar; ++i)
        EXPECT_NE(hands::TextOf(Dialog(), ControlName("lblParName", i)), "&Power");
    EXPECT_FALSE(hands::Control(Dialog(), ControlName("lblParName", NoOfPar))->isVisible());
}

TEST_F(SimulationWindowCheck, SizesOfTheLastRowAreThoseOfTheParameters) {
    hands::TypeInto(Dialog(), "txtParValue(2)", "30");
    EXPECT_EQ(ParText(Kind::Size1), "30");
    EXPECT_EQ(hands::TextOf(Dialog(), "txtSize1(0)"), "30");
    EXPECT_TRUE(hands::Control<QLineEdit>(Dialog(), "txtSize1(0)")->isReadOnly());
}

TEST_F(SimulationWindowCheck, ShowsTheEstimatesOfARun) {
    Ask("1500", "123");
    Start();
    EXPECT_EQ(Messages.Texts, QStringList());
    EXPECT_EQ(Text("lblSimValue"), " 1000");
    EXPECT_EQ(Text("lblPowerEstimate(0)"), ToQt(PowerEstimateText(0)));
    EXPECT_NE(Text("lblPowerEstimate(0)"), "");
    EXPECT_EQ(SimNo, 1500);
    EXPECT_TRUE(Dialog().isEnabled());
    EXPECT_FALSE(Button("cmdExit").isEnabled());
}

// Every label has the width of its text, inside of the window.
void ExpectNothingCut(const QWidget& window) {
    int labels = 0;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->wordWrap())
            continue;
        ++labels;
        const std::string name = label->objectName().toStdString();
        EXPECT_GE(label->width(), label->sizeHint().width()) << name;
        const QRect place(label->mapTo(&window, QPoint(0, 0)), label->size());
        EXPECT_TRUE(window.rect().contains(place)) << name;
    }
    EXPECT_GT(labels, 8);
}

TEST_F(SimulationWindowCheck, ItsColumnsAreNotCut) {
    ExpectNothingCut(Child());
    Ask("1000", "1");
    Start();
    ExpectNothingCut(Child());
}

TEST_F(SimulationWindowCheck, PausesContinuesAndExits) {
    Ask("", "1");
    i32 halted = 0;
    const auto pause = [&] {
        EXPECT_FALSE(IsShown("pgrProgress")) << "no maximum was entered";
        EXPECT_FALSE(hands::Control(Dialog(), "txtSeed")->isEnabled());
        halted = SimNo;
        hands::Click(Child(), "cmdPause");
        EXPECT_EQ(Paused, True);
        EXPECT_EQ(Button("cmdPause").text(), "&Continue");
        QTimer::singleShot(60, [&] {
            EXPECT_EQ(SimNo, halted);
            hands::Click(Child(), "cmdPause");
            EXPECT_EQ(Button("cmdPause").text(), "&Pause");
        });
    };
    StartAnd({{After(300), pause},
              {[&] { return Paused == False && SimNo > halted; },
               [this] { hands::Click(Child(), "cmdExit"); }}});
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(SimNo, 0);
    EXPECT_EQ(OutputReady, True);
    EXPECT_NE(Text("lblPowerEstimate(0)"), "");
    EXPECT_TRUE(Window().findChild<QAction*>("mnuGetInfo(3)")->isEnabled());
}

TEST_F(SimulationWindowCheck, EscEndsItWhilePaused) {
    Ask("", "1");
    StartAnd(After(50), [this] {
        hands::Click(Child(), "cmdPause");
        QTimer::singleShot(30, [this] { QTest::keyClick(&Button("cmdPause"), Qt::Key_Escape); });
    });
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(SimNo, 0);
    EXPECT_EQ(Button("cmdPause").text(), "&Pause");
}

TEST_F(SimulationWindowCheck, AMaximumHasProgress) {
    Ask("99999998", "1");
    const auto isForeseen = [this] { return Text("lblTimeLeft").endsWith(" left"); };
    StartAnd(isForeseen, [this] {
        const auto& bar = *hands::Control<QProgressBar>(Child(), "pgrProgress");
        EXPECT_TRUE(bar.isVisible());
        EXPECT_EQ(bar.maximum(), 99999998);
        SimStop();
    });
    EXPECT_FALSE(IsShown("pgrProgress"));
}

TEST_F(SimulationWindowCheck, ClosingItIsRefusedWhileItRuns) {
    Ask("", "1");
    StartAnd(After(100), [this] { Child().parentWidget()->close(); });
    EXPECT_EQ(Area().subWindowList().size(), 1);
    EXPECT_EQ(SimRunning, False);
    EXPECT_EQ(Messages.Texts, QStringList());
    CloseChild();
    EXPECT_EQ(Messages.Texts.size(), 1) << "the changes are asked about when it is idle";
    EXPECT_TRUE(Area().subWindowList().isEmpty());
}

TEST_F(SimulationWindowCheck, ClosingTheProgramIsRefusedWhileItRuns) {
    Ask("", "1");
    StartAnd(After(100), [this] { Window().close(); });
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(SimRunning, False);
    StartAnd(After(100), [this] { Trigger("mnuFile(13)"); });
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(SimRunning, False);
}

TEST_F(SimulationWindowCheck, AnotherAnalysisAsksFirst) {
    Ask("", "1");
    Messages.Answers = {QMessageBox::No, QMessageBox::Yes};
    StartAnd(After(100), [this] {
        Trigger("mnuStudent(0)");
        EXPECT_EQ(SimRunning, True);
        EXPECT_EQ(Cancelled, False);
        EXPECT_EQ(Messages.LastButtons, QMessageBox::Yes | QMessageBox::No);
        Trigger("mnuFile(0)");
        EXPECT_EQ(Cancelled, True);
    });
    const QString question = "Calculation Ongoing \n\nExit Ongoing Calculation?";
    EXPECT_EQ(Messages.Texts, (QStringList{question, question}));
    EXPECT_EQ(Area().subWindowList().size(), 1);
    EXPECT_EQ(TestNo, 41);
}

TEST_F(SimulationWindowCheck, OtherWindowsRestWhileItRuns) {
    ChildWindow* simulation = &Child();
    Trigger("mnuFile(0)");
    ChildWindow* calculation = &Child();
    Window().RaiseChild(SimulationWindow, 1);
    ASSERT_EQ(&Child(), simulation);
    Ask("", "1");
    StartAnd(After(100), [=] {
        EXPECT_FALSE(calculation->isEnabled());
        EXPECT_TRUE(simulation->isEnabled());
        SimStop();
    });
    EXPECT_TRUE(calculation->isEnabled());
}

TEST_F(SimulationWindowCheck, ARightPressOpensTheMenuOfAResultOnly) {
    const auto press = [](QWidget& widget) {
        bool opened = false;
        QTimer::singleShot(20, [&opened] {
            if (QWidget* menu = QApplication::activePopupWidget()) {
                opened = menu->objectName() == "mnuOutput";
                menu->close();
            }
        });
        QTest::mouseClick(&widget, Qt::RightButton);
        QTest::qWait(40);
        return opened;
    };
    const auto places = [this] {
        return std::vector<QWidget*>{&Child(), hands::Control(Child(), "fraSim"),
                                     hands::Control(Child(), "lblHead1")};
    };
    for (QWidget* place : places())
        EXPECT_FALSE(press(*place));
    Ask("200", "1");
    Start();
    for (QWidget* place : places())
        EXPECT_TRUE(press(*place)) << place->objectName().toStdString();
    hands::TypeInto(Dialog(), "txtSeed", "2");
    EXPECT_FALSE(press(*hands::Control(Child(), "fraSim")));
}

TEST_F(SimulationWindowCheck, ATypedValueTakesTheEstimatesAway) {
    Ask("200", "1");
    Start();
    hands::TypeInto(Dialog(), "txtParValue(2)", "31");
    EXPECT_EQ(Text("lblPowerEstimate(0)"), "");
    EXPECT_EQ(Text("lblSimValue"), "");
}

TEST_F(SimulationWindowCheck, RefusalsLeaveTheDialogAsItIs) {
    hands::TypeInto(Dialog(), "txtRejectH0(0)", "1.5");
    Start();
    EXPECT_EQ(Messages.Texts, QStringList{"Probability To Reject H0 Is Outside (0, 1)."});
    EXPECT_EQ(SimRunning, False);
    EXPECT_TRUE(Dialog().isVisible());
}

class InterimWindowCheck : public WindowCheck {
  protected:
    InterimWindowCheck() {
        Trigger("mnuFile(3)");
        Trigger("mnuMW(0)");
        hands::Click(Options(), "optInterim(2)");
        AcceptOptions();
    }
    QWidget& Dialog() { return *Window().Floating(FloatingWindow::InterimParameters); }
};

TEST_F(InterimWindowCheck, HasARowForEachAnalysisAndOneOverAll) {
    EXPECT_EQ(hands::TextOf(Dialog(), "lblAnalysis(0)"), "Interim Analysis 1");
    EXPECT_EQ(hands::TextOf(Dialog(), "lblAnalysis(2)"), "Final Analysis");
    hands::TypeInto(Dialog(), "txtRejectH0(0)", "0.01");
    hands::TypeInto(Dialog(), "txtAcceptH0(0)", "0.9");
    hands::TypeInto(Dialog(), "txtMaxNoOfSim", "200");
    hands::TypeInto(Dialog(), "txtSeed", "7");
    hands::Click(Dialog(), "cmdOK");
    EXPECT_EQ(hands::TextOf(Child(), "lblInterimAnalysis(0)"), "Interim Analysis 1");
    EXPECT_EQ(hands::TextOf(Child(), "lblInterimAnalysis(2)"), "Final Analysis");
    EXPECT_EQ(hands::TextOf(Child(), "lblInterimAnalysis(3)"), "Over-All");
    EXPECT_EQ(hands::TextOf(Child(), "lblASN"), "Average  Total Size");
    EXPECT_EQ(hands::TextOf(Child(), "lblH0True"), "H0 is True");
    EXPECT_EQ(hands::TextOf(Child(), "lblH1True"), "H1 is True");
    EXPECT_NE(hands::TextOf(Child(), "lblASNH1Est"), "");
    EXPECT_NE(hands::TextOf(Child(), "lblPowerEstimate(3)"), "");
    ExpectNothingCut(Child());
}

// A family of three means with gates, through its grids to the table of rejections.
class FamilyWindowCheck : public WindowCheck {
  protected:
    FamilyWindowCheck() {
        Trigger("mnuFile(3)");
        Trigger("mnuANOVAMultTest(2)");
    }
    QWidget& Dialog() { return *Window().Floating(FloatingWindow::InterimParameters); }

    // The user types these lists into the grids that are asked for, one after the other.
    void FillGrids(const std::vector<QStringList>& lists, std::size_t at = 0) {
        if (at == lists.size())
            return;
        hands::WhenModal("frmGridTable", [this, lists, at](QWidget& grid) {
            std::feraiseexcept(FE_INVALID); // as painting does on some displays
            for (const QString& text : lists[at]) {
                auto* cell = hands::Control(grid, "txtText");
                QTest::keyClick(cell, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(cell, text);
                QTest::keyClick(cell, Qt::Key_Return);
            }
            captions_ << hands::TextOf(grid, "cmdOK");
            FillGrids(lists, at + 1);
            hands::Click(grid, "cmdOK");
        });
    }

    QStringList captions_; // of the button, once a grid is filled
};

TEST_F(FamilyWindowCheck, GoesFromItsGridsToItsRejections) {
    hands::Click(Options(), "chkCheck(1)"); // serial gatekeeping
    AcceptOptions();
    EXPECT_EQ(hands::TextOf(Child(), "lblSignLevel"), "True Family-wise Error");
    EXPECT_EQ(hands::TextOf(Child(), "lblPower"), "Disjunctive Power");
    EXPECT_FALSE(hands::Control(Child(), "lblPrAccept")->isVisible());
    EXPECT_FALSE(hands::Control(Child(), "lblPrAcceptEst")->isVisible());
    EXPECT_FALSE(hands::Control(Child(), "tblReject")->isVisible());
    EXPECT_FALSE(hands::Control(Dialog(), "lblAcceptH0")->isVisible());
    hands::TypeInto(Dialog(), "txtParValue(3)", "3"); // levels
    hands::TypeInto(Dialog(), "txtMaxNoOfSim", "1000");
    hands::TypeInto(Dialog(), "txtSeed", "5");
    FillGrids({{"1", "1", "0"}, {"1", "2", "2"}, {"5", "6"}});
    hands::Click(Dialog(), "cmdOK");
    EXPECT_EQ(Messages.Texts, QStringList());
    EXPECT_EQ(SimNo, 1000);
    EXPECT_EQ(captions_, (QStringList{"&Next", "&Next", "C&alculate"}));
    EXPECT_EQ(hands::TextOf(Child(), "lblReject"), "Prob (Reject Test No)");
    auto& table = *hands::Control<QTableWidget>(Child(), "tblReject");
    EXPECT_TRUE(table.isVisible());
    ASSERT_EQ(table.rowCount(), 3);
    EXPECT_GE(table.viewport()->height(), 3 * table.rowHeight(0)) << "all of them are seen";
    ASSERT_EQ(table.columnCount(), 3);
    EXPECT_EQ(table.horizontalHeaderItem(2)->text(), "Over-All");
    for (int row = 0; row < 3; ++row) {
        const int family = row == 0 ? 0 : 1;
        EXPECT_EQ(table.item(row, family)->text(), table.item(row, 2)->text());
        EXPECT_EQ(table.item(row, 1 - family)->text(), "     --");
    }
    EXPECT_NE(hands::TextOf(Child(), "lblSignEstimate(0)"), "");
}

// Only families with weights ask for a further grid; the button follows what is typed.
TEST_F(FamilyWindowCheck, TheGridOfMethodsSaysWhetherWeightsFollow) {
    hands::Click(Options(), "chkCheck(1)"); // serial gatekeeping
    AcceptOptions();
    hands::TypeInto(Dialog(), "txtParValue(3)", "3"); // levels
    QStringList captions;
    hands::WhenModal("frmGridTable", [&captions](QWidget& means) {
        const auto type = [](QWidget& grid, const QString& text) {
            QTest::keyClick(hands::Control(grid, "txtText"), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(hands::Control(grid, "txtText"), text);
        };
        for (const char* mean : {"1", "1", "0"}) {
            type(means, mean);
            QTest::keyClick(hands::Control(means, "txtText"), Qt::Key_Return);
        }
        hands::WhenModal("frmGridTable", [&captions, type](QWidget& families) {
            hands::WhenModal("frmGridTable", [&captions, type](QWidget& methods) {
                for (const char* method : {"0", "5", "", "0", "1"}) {
                    type(methods, method);
                    if (*method == '\0')
                        QTest::keyClick(hands::Control(methods, "txtText"), Qt::Key_Delete);
                    captions << hands::TextOf(methods, "cmdOK");
                }
                hands::Click(methods, "cmdCancel");
            });
            hands::Click(families, "cmdOK"); // all in the first family
        });
        hands::Click(means, "cmdOK");
    });
    hands::Click(Dialog(), "cmdOK");
    EXPECT_EQ(captions, (QStringList{"&Next", "C&alculate", "C&alculate", "&Next", "C&alculate"}));
}

TEST_F(FamilyWindowCheck, ACancelledGridStartsNothing) {
    AcceptOptions();
    hands::TypeInto(Dialog(), "txtMaxNoOfSim", "100");
    hands::WhenModal("frmGridTable", [](QWidget& grid) { hands::Click(grid, "cmdCancel"); });
    hands::Click(Dialog(), "cmdOK");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(hands::TextOf(Child(), "lblSimValue"), "");
    EXPECT_TRUE(Dialog().isEnabled());
}

} // namespace
} // namespace quorvanta
