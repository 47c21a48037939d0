// Saves a picture of every window: quorvanta_screenshots folder light|dark.
#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "core/showpar.h"
#include "tour/hands.h"
#include "ui/application.h"
#include "ui/childwindow.h"
#include "ui/frmabout.h"
#include "ui/frmsplash.h"
#include "ui/program.h"
#include "ui/qttext.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QTest>

#include <iostream>

namespace quorvanta {

namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(45, 45, 48), QColor(45, 45, 48));
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        dark.setColor(group, QPalette::WindowText, QColor(235, 235, 235));
        dark.setColor(group, QPalette::Base, QColor(30, 30, 30));
        dark.setColor(group, QPalette::Text, QColor(235, 235, 235));
        dark.setColor(group, QPalette::ButtonText, QColor(235, 235, 235));
        dark.setColor(group, QPalette::Highlight, QColor(42, 110, 187));
        dark.setColor(group, QPalette::HighlightedText, Qt::white);
    }
    return dark;
}

class Photographer {
  public:
    Photographer(frmMain& window, QString folder) : window_(window), folder_(std::move(folder)) {}

    // One window alone.
    void Take(const QString& name, QWidget& window) { Save(name, window.grab()); }

    // The main window with all that stands over it.
    void TakeAll(const QString& name) {
        hands::Settle();
        QPixmap picture = window_.grab();
        QPainter painter(&picture);
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other != &window_ && other->isVisible())
                painter.drawPixmap(other->pos() - window_.pos(), other->grab());
        painter.end();
        Save(name, picture);
    }

    // The modal window that this call opens; it is closed again.
    void TakeModal(const QString& name, const QString& objectName,
                   const std::function<void()>& open) {
        hands::WhenModal(objectName, [this, name](QWidget& modal) {
            hands::Settle();
            Take(name, modal);
            modal.close();
        });
        open();
    }

    void Trigger(const QString& entry) {
        window_.findChild<QAction*>(entry)->trigger();
        hands::Settle();
    }

    void Check(int checks) const {
        if (saved_ < checks)
            qFatal("Only %d pictures", saved_);
    }

  private:
    void Save(const QString& name, const QPixmap& picture) {
        hands::Settle();
        const QString path = QDir(folder_).filePath(name + ".png");
        constexpr int smallest = 0; // by compression alone
        if (!picture.toImage().convertToFormat(QImage::Format_RGB888).save(path, "PNG", smallest))
            qFatal("Can't save %s", qPrintable(path));
        std::cout << qPrintable(path) << std::endl;
        ++saved_;
    }

    frmMain& window_;
    QString folder_;
    int saved_ = 0;
};

QWidget& Floating(frmMain& window, FloatingWindow which) {
    return *window.Floating(which);
}

// The sample size of an unpaired t-test against the difference, for three levels.
void SetUpRun(frmMain& window, const QString& newWindow, Photographer& photographer) {
    photographer.Trigger(newWindow);
    photographer.Trigger("mnuStudent(0)");
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

void TakeCalculation(frmMain& window, Photographer& photographer) {
    photographer.TakeModal("frmNewWindow", "frmNewWindow",
                           [] { ThePlatform().AskWindowKind(true); });
    photographer.Trigger("mnuFile(0)");
    photographer.Trigger("mnuStudent(0)");
    QWidget& options = Floating(window, FloatingWindow::Options);
    hands::Click(options, "optIntPar0(1)");
    hands::Click(options, "optIntPar1(2)");
    photographer.Take("frmShowSmp", options);
    hands::Click(options, "cmdOK");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(1)", "0.8");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(3)", "0.5");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(4)", "1");
    hands::Click(*window.CurrentChild(), "cmdParLabel(5)");
    photographer.Take("frmCalc", *window.CurrentChild()->parentWidget());
    photographer.Trigger("mnuGetInfo(3)");
    photographer.Take("frmSummary", Floating(window, FloatingWindow::Summary));
    photographer.TakeModal("frmEditSummary", "frmEditSummary", [&window] {
        hands::Click(Floating(window, FloatingWindow::Summary), "cmdEdit");
    });
    Floating(window, FloatingWindow::Summary).hide();
    photographer.Trigger("mnuFile(9)");
    photographer.Take("frmOutput", Floating(window, FloatingWindow::Output));
    photographer.TakeModal("frmEditOutput", "frmEditTable", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdEditOutput");
    });
    photographer.TakeModal("printPreview", "printPreview", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdPrintOutput");
    });
    Floating(window, FloatingWindow::Output).hide();
    photographer.TakeModal("msgBox", "msgBox",
                           [] { ShowMessage("Xmin Must Be < Xmax If Xstep > 0."); });
    photographer.TakeModal("frmCmdialog", "frmCmdialog",
                           [&photographer] { photographer.Trigger("mnuFile(5)"); });
    photographer.TakeAll("main-calculation");
}

void TakeTable(frmMain& window, Photographer& photographer) {
    SetUpRun(window, "mnuFile(1)", photographer);
    photographer.TakeAll("main-table");
    photographer.Take("frmTable", *window.CurrentChild()->parentWidget());
    photographer.Take("frmShowPar", Floating(window, FloatingWindow::Parameters));
    window.StartRun(100);
    for (int i = 0; i < 37; ++i)
        window.StepRun();
    photographer.Take("frmShowPar-run", Floating(window, FloatingWindow::Parameters));
    window.EndRun();
    photographer.TakeModal("frmEditTable", "frmEditTable",
                           [&window] { hands::Click(*window.CurrentChild(), "cmdEditTable"); });
    photographer.Trigger("mnuFile(9)");
    photographer.Take("frmOutput-table", Floating(window, FloatingWindow::Output));
    Floating(window, FloatingWindow::Output).hide();
}

void TakeGraph(frmMain& window, Photographer& photographer) {
    SetUpRun(window, "mnuFile(2)", photographer);
    photographer.TakeAll("main-graph");
    photographer.Take("frmGraph", *window.CurrentChild()->parentWidget());
    photographer.TakeModal("frmEditGraph", "frmEditGraph",
                           [&window] { hands::Click(*window.CurrentChild(), "cmdEditGraph"); });
    photographer.TakeModal("frmGraphOrText", "frmGraphOrText",
                           [&photographer] { photographer.Trigger("mnuFile(10)"); });
    auto* menu = window.findChild<QMenu*>("mnuOutput");
    menu->popup(QPoint(100, 100));
    photographer.Take("mnuOutput", *menu);
    menu->close();
}

void TakePictures(frmMain& window, const QString& folder) {
    Photographer photographer(window, folder);
    window.resize(1180, 760);
    window.show();
    constexpr int patience = 500; // milliseconds; without a window manager it never happens
    (void)QTest::qWaitForWindowActive(&window, patience);

    photographer.TakeAll("main-empty");
    frmSplash splash;
    photographer.Take("frmSplash", splash);
    photographer.TakeModal("frmAbout", "frmAbout", [&window] { frmAbout(&window).exec(); });
    TakeCalculation(window, photographer);
    TakeTable(window, photographer);
    TakeGraph(window, photographer);
    ThePlatform().RaiseChild(CalculationWindow, 1);
    hands::Settle();
    photographer.Check(20);
    for (int n = 1; n <= 3; ++n)
        AnalysisState(n).Changed = False;
}

} // namespace

} // namespace quorvanta

int main(int argc, char** argv) {
    quorvanta::hands::UseMemoryForDisplay();
    quorvanta::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3 || !QDir().mkpath(arguments[1])) {
        std::cerr << "usage: quorvanta_screenshots folder light|dark" << std::endl;
        return 1;
    }
    QApplication::setStyle("Fusion");
    if (arguments[2] == "dark")
        QApplication::setPalette(quorvanta::DarkPalette());
    quorvanta::Program program;
    quorvanta::TakePictures(program.Window(), arguments[1]);
    return 0;
}
