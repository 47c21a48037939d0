#include "tour/windows.h"

#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "tour/hands.h"
#include "ui/childwindow.h"
#include "ui/frmabout.h"
#include "ui/frmprogress.h"
#include "ui/frmsplash.h"
#include "ui/helpviewer.h"
#include "ui/qttext.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTest>
#include <QTimeZone>

#include <functional>

namespace quorvanta {

namespace {

class Walk {
  public:
    Walk(frmMain& window, WindowVisitor& visitor) : window_(window), visitor_(visitor) {}

    void Take(const QString& name, QWidget& window) { visitor_.Take(name, window); }
    void TakeAll(const QString& name) { visitor_.TakeAll(name); }

    // The modal window that this call opens; it is closed again.
    void TakeModal(const QString& name, const QString& objectName,
                   const std::function<void()>& open) {
        hands::WhenModal(objectName, [this, name](QWidget& modal) {
            Take(name, modal);
            modal.close();
        });
        open();
    }

    void Trigger(const QString& entry) {
        window_.findChild<QAction*>(entry)->trigger();
        hands::Settle();
    }

  private:
    frmMain& window_;
    WindowVisitor& visitor_;
};

QWidget& Floating(frmMain& window, FloatingWindow which) {
    return *window.Floating(which);
}

// The sample size of an unpaired t-test against the difference, for three levels.
void SetUpRun(frmMain& window, Walk& walk) {
    walk.Trigger("mnuStudent(0)");
    QWidget& options = Floating(window, FloatingWindow::Options);
    hands::Click(options, "optIntPar0(1)");
    hands::Click(options, "optIntPar1(2)");
    hands::Click(options, "cmdOK");
    SwapAxis(YRole, 5);
    SwapAxis(XRole, 3);
    SwapAxis(ZRole, 4);
    const QWidget& parameters = Floating(window, FloatingWindow::Parameters);
    hands::TypeInto(parameters, "txtXminValue", "0.4");
    hands::TypeInto(parameters, "txtXmaxValue", "1.2");
    hands::TypeInto(parameters, "txtXstepValue", "0.05");
    hands::TypeInto(parameters, "txtZValue", "0.8 1 1.2");
    ParText(1) = "0.9";
    window.RefreshChild();
    hands::Click(parameters, "cmdOK");
}

void TakeCalculation(frmMain& window, Walk& walk) {
    walk.TakeModal("frmNewWindow", "frmNewWindow", [] { ThePlatform().AskWindowKind(true); });
    walk.Trigger("mnuFile(0)");
    QWidget& options = Floating(window, FloatingWindow::Options);
    walk.Trigger("mnuPar(0)");
    walk.Take("frmShowSmp-distribution", options);
    walk.Trigger("mnuStudent(0)");
    hands::Click(options, "optIntPar0(1)");
    hands::Click(options, "optIntPar1(2)");
    walk.Take("frmShowSmp", options);
    walk.TakeAll("main-options");
    hands::Click(options, "cmdOK");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(1)", "0.8");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(3)", "0.5");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(4)", "1");
    walk.Take("frmCalc-typed", *window.CurrentChild()->parentWidget());
    hands::Click(*window.CurrentChild(), "cmdParLabel(5)");
    walk.Take("frmCalc", *window.CurrentChild()->parentWidget());
    walk.Trigger("mnuGetInfo(3)");
    walk.Take("frmSummary", Floating(window, FloatingWindow::Summary));
    walk.TakeModal("frmEditSummary", "frmEditSummary", [&window] {
        hands::Click(Floating(window, FloatingWindow::Summary), "cmdEdit");
    });
    Floating(window, FloatingWindow::Summary).hide();
    walk.Trigger("mnuGetInfo(4)");
    walk.Take("frmDistrGraph", Floating(window, FloatingWindow::DistrGraph));
    Floating(window, FloatingWindow::DistrGraph).hide();
    walk.Trigger("mnuFile(9)");
    walk.Take("frmOutput", Floating(window, FloatingWindow::Output));
    walk.TakeModal("frmEditOutput", "frmEditTable", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdEditOutput");
    });
    walk.TakeModal("printPreview", "printPreview", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdPrintOutput");
    });
    Floating(window, FloatingWindow::Output).hide();
    walk.TakeModal("msgBox", "msgBox", [] { ShowMessage("Xmin Must Be < Xmax If Xstep > 0."); });
    walk.TakeModal("msgBox-close", "msgBox",
                   [&window] { window.CurrentChild()->parentWidget()->close(); });
    window.Progress().Start(100, ProgramTitle());
    for (int i = 0; i < 62; ++i)
        window.Progress().Step();
    walk.Take("frmProgress", window.Progress());
    window.Progress().hide();
    walk.TakeAll("main-calculation");
}

// The means of five groups, from which the effect of an analysis of variance derives, and the first
// two of the grids of a distance of measurements that are repeated.
void TakeGrids(frmMain& window, Walk& walk) {
    constexpr i16 oneWay = 10;
    constexpr i16 hotelling = 30;
    constexpr const char* means[] = {"128.5", "124", "121.5", "119", "118"};
    walk.Trigger("mnuFile(0)");
    NewTest(oneWay);
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    const auto press = [&window](const char* box) {
        QWidget* value = hands::Control(*window.CurrentChild(), box);
        value->setFocus();
        QTest::keyClick(value, Qt::Key_F2);
    };
    hands::WhenModal("frmGridTable", [&](QWidget& grid) {
        QWidget* text = hands::Control(grid, "txtText");
        for (const char* mean : means) {
            QTest::keyClicks(text, mean);
            if (mean != std::end(means)[-1])
                QTest::keyClick(text, Qt::Key_Return);
        }
        walk.Take("frmGridTable", grid);
        hands::Click(grid, "cmdOK");
    });
    press("txtParValue(2)");
    walk.Take("frmCalc-blue", *window.CurrentChild()->parentWidget());
    walk.Trigger("mnuShowGrids");
    walk.Take("frmGridTable0", Floating(window, FloatingWindow::Grid));
    NewTest(hotelling);
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    hands::WhenModal("frmGridTable", [&](QWidget& grid) {
        QApplication::clipboard()->setText("0\t0\t0\t0\t0\n2\t1.5\t1\t1\t0.5\n");
        QTest::keyClick(hands::Control(grid, "txtText"), Qt::Key_V, Qt::ControlModifier);
        hands::WhenModal("frmGridTable", [&](QWidget& next) {
            QTest::keyClicks(hands::Control(next, "txtText"), "0.5");
            walk.Take("frmGridTable-matrix", next);
            hands::Click(next, "cmdCancel");
        });
        hands::Click(grid, "cmdOK");
    });
    press("txtParValue(2)");
    AnalysisState(AnalysisNo).Changed = False;
    window.CurrentChild()->parentWidget()->close();
}

// The dialog that this entry opens, with the files of its folder, which are read beside it.
void TakeFileDialog(const QString& name, const QString& entry, Walk& walk) {
    hands::WhenModal("frmCmdialog", [&walk, name](QWidget& dialog) {
        const auto& files = *hands::Control<QAbstractItemView>(dialog, "listView");
        const auto areShown = [&files] {
            return files.rootIndex().isValid() && files.model()->rowCount(files.rootIndex()) > 0;
        };
        constexpr int patience = 30000; // milliseconds
        if (!QTest::qWaitFor(areShown, patience))
            qFatal("No files in %s", qPrintable(name));
        walk.Take(name, dialog);
        dialog.close();
    });
    walk.Trigger(entry);
}

void TakeFiles(Walk& walk) {
    const QString path = QDir::home().filePath("Blood pressure.dim");
    WriteAnalysisFile(FromQt(path));
    QFile file(path);
    const QDateTime fixed(QDate(2024, 3, 1), QTime(9, 30), QTimeZone::utc());
    if (!file.open(QFile::ReadWrite) || !file.setFileTime(fixed, QFileDevice::FileModificationTime))
        qFatal("Can't date %s", qPrintable(path));
    file.close();
    TakeFileDialog("frmCmdialog-open", "mnuFile(5)", walk);
    TakeFileDialog("frmCmdialog-save", "mnuFile(7)", walk);
    file.remove();
}

void TakeHelp(Walk& walk) {
    constexpr i32 unpaired = 301;
    OpenHelp(unpaired);
    QWidget* viewer = hands::TopWindow("frmHelp");
    walk.Take("frmHelp", *viewer);
    OpenHelpSearch();
    hands::TypeInto(*viewer, "txtSearch", "decimal comma");
    walk.Take("frmHelp-search", *viewer);
    viewer->close();
}

void TakeTable(frmMain& window, Walk& walk) {
    walk.Trigger("mnuFile(1)");
    walk.Take("frmTable-empty", *window.CurrentChild()->parentWidget());
    SetUpRun(window, walk);
    walk.TakeAll("main-table");
    walk.Take("frmTable", *window.CurrentChild()->parentWidget());
    walk.Take("frmShowPar", Floating(window, FloatingWindow::Parameters));
    window.StartRun(100);
    for (int i = 0; i < 37; ++i)
        window.StepRun();
    walk.Take("frmShowPar-run", Floating(window, FloatingWindow::Parameters));
    window.EndRun();
    walk.TakeModal("frmEditTable", "frmEditTable",
                   [&window] { hands::Click(*window.CurrentChild(), "cmdEditTable"); });
    walk.Trigger("mnuFile(9)");
    walk.Take("frmOutput-table", Floating(window, FloatingWindow::Output));
    walk.TakeModal("frmEditOutput-table", "frmEditTable", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdEditOutput");
    });
    Floating(window, FloatingWindow::Output).hide();
}

void TakeGraph(frmMain& window, Walk& walk) {
    walk.Trigger("mnuFile(2)");
    SetUpRun(window, walk);
    walk.TakeAll("main-graph");
    walk.Take("frmGraph", *window.CurrentChild()->parentWidget());
    walk.TakeModal("frmEditGraph", "frmEditGraph",
                   [&window] { hands::Click(*window.CurrentChild(), "cmdEditGraph"); });
    walk.TakeModal("frmGraphOrText", "frmGraphOrText", [&walk] { walk.Trigger("mnuFile(10)"); });
    hands::WhenModal("frmGraphOrText", [](QWidget& form) { hands::Click(form, "cmdOK"); });
    walk.TakeModal("printPreview-graph", "printPreview", [&walk] { walk.Trigger("mnuFile(9)"); });
    auto* menu = window.findChild<QMenu*>("mnuOutput");
    menu->popup(QPoint(100, 100));
    walk.Take("mnuOutput", *menu);
    menu->close();
    menu = window.findChild<QMenu*>("mnuWindowHead");
    menu->popup(QPoint(100, 100));
    walk.Take("mnuWindow", *menu);
    menu->close();
}

// The distribution of a Mann-Whitney test.
void TakeDistributions(frmMain& window, Walk& walk) {
    walk.Trigger("mnuFile(0)");
    walk.Trigger("mnuMW(0)");
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    walk.TakeModal("frmShiftModel", "frmShiftModel", [&window] {
        QTest::keyClick(hands::Control(*window.CurrentChild(), "txtParValue(2)"), Qt::Key_F2);
    });
}

// A simulation with two interim analyses that has ended, and its dialog.
void TakeSimulation(frmMain& window, Walk& walk) {
    walk.Trigger("mnuFile(3)");
    walk.Trigger("mnuMW(0)");
    hands::Click(Floating(window, FloatingWindow::Options), "optInterim(2)");
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    const QWidget& dialog = Floating(window, FloatingWindow::InterimParameters);
    hands::TypeInto(dialog, "txtParValue(1)", "0.7");
    hands::TypeInto(dialog, "txtParValue(2)", "40");
    hands::TypeInto(dialog, "txtParValue(3)", "1"); // the ratio that was chosen before
    hands::TypeInto(dialog, "txtRejectH0(0)", "0.005");
    hands::TypeInto(dialog, "txtRejectH0(1)", "0.014");
    hands::TypeInto(dialog, "txtRejectH0(2)", "0.045");
    hands::TypeInto(dialog, "txtMaxNoOfSim", "20000");
    hands::TypeInto(dialog, "txtSeed", "1");
    hands::Click(dialog, "cmdOK");
    walk.TakeAll("main-simulation");
    walk.Take("frmMonte", *window.CurrentChild()->parentWidget());
    walk.Take("frmShowIntPar", Floating(window, FloatingWindow::InterimParameters));
}

// The adjustment of multiple comparisons, then a design with two interim analyses, solved.
void TakeDesign(frmMain& window, Walk& walk) {
    QWidget& options = Floating(window, FloatingWindow::Options);
    walk.Trigger("mnuFile(0)");
    walk.Trigger("mnuANOVACI(1)");
    walk.Take("frmShowSmp-method", options);
    walk.TakeModal("frmAdjustMethod", "frmAdjustMethod",
                   [&options] { hands::Click(options, "cmdMethod"); });
    walk.Trigger("mnuGrpSeqNorm(0)");
    hands::Click(options, "optSamples(0)");
    hands::Click(options, "optTails(1)");
    hands::Click(options, "optInterim(2)");
    walk.Take("frmShowSmp-design", options);
    hands::WhenModal("frmBoundary", [&walk](QWidget& bounds) {
        hands::Click(bounds, "OptBoundary(3)");
        walk.Take("frmBoundary", bounds);
        hands::WhenModal("frmGridTable", [&walk](QWidget& grid) {
            QWidget* text = hands::Control(grid, "txtText");
            QTest::keyClicks(text, "0.4");
            QTest::keyClick(text, Qt::Key_Return);
            QTest::keyClicks(text, "0.7");
            walk.Take("frmGridTable-fractions", grid);
            hands::Click(grid, "cmdOK");
        });
        hands::Click(bounds, "cmdOK");
    });
    hands::Click(options, "cmdOK");
    hands::Settle();
    hands::TypeInto(*window.CurrentChild(), "txtParValue(3)", "0.5");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(4)", "1");
    hands::Click(*window.CurrentChild(), "cmdParLabel(5)");
    walk.Take("frmMonteGroupSeq", Floating(window, FloatingWindow::SequentialMonitor));
    walk.Take("frmShowIntPar-design", Floating(window, FloatingWindow::InterimParameters));
    AnalysisState(AnalysisNo).Changed = False;
    window.CurrentChild()->parentWidget()->close();
}

} // namespace

void WindowVisitor::TakeAll(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            Take(name, *window);
}

void WalkWindows(frmMain& window, WindowVisitor& visitor) {
    Walk walk(window, visitor);
    window.resize(1180, 760);
    window.show();
    constexpr int patience = 500; // milliseconds; without a window manager it never happens
    (void)QTest::qWaitForWindowActive(&window, patience);

    walk.TakeAll("main-empty");
    frmSplash splash;
    walk.Take("frmSplash", splash);
    walk.TakeModal("frmAbout", "frmAbout", [&window] { frmAbout(&window).exec(); });
    TakeCalculation(window, walk);
    TakeGrids(window, walk);
    TakeFiles(walk);
    TakeHelp(walk);
    TakeTable(window, walk);
    TakeGraph(window, walk);
    ThePlatform().RaiseChild(CalculationWindow, 1);
    TakeDistributions(window, walk);
    TakeDesign(window, walk);
    TakeSimulation(window, walk);
    hands::Settle();
    for (int n = 1; n <= 5; ++n)
        AnalysisState(n).Changed = False;
}

} // namespace quorvanta
