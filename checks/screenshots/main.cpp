// Saves a picture of every window: quorvanta_screenshots folder light|dark dots-per-inch.
// The same program gives the same files, as far as the fonts of the machine are the same: nothing
// blinks, and no picture is taken before the windows have come to rest.
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "tour/hands.h"
#include "ui/application.h"
#include "ui/childwindow.h"
#include "ui/frmabout.h"
#include "ui/frmprogress.h"
#include "ui/frmsplash.h"
#include "ui/frmvalidate.h"
#include "ui/helpviewer.h"
#include "ui/program.h"
#include "ui/qttext.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QTest>

#include <algorithm>
#include <iostream>
#include <map>

namespace quorvanta {

namespace {

QPalette DarkPalette() {
    const QColor window(45, 45, 48);
    const QColor text(235, 235, 235);
    const QColor faint(140, 140, 140);
    QPalette dark(window, window);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor ink = group == QPalette::Disabled ? faint : text;
        dark.setColor(group, QPalette::WindowText, ink);
        dark.setColor(group, QPalette::Text, ink);
        dark.setColor(group, QPalette::ButtonText, ink);
        dark.setColor(group, QPalette::Base, QColor(30, 30, 30));
        dark.setColor(group, QPalette::AlternateBase, QColor(37, 37, 38));
        dark.setColor(group, QPalette::Highlight, QColor(42, 110, 187));
        dark.setColor(group, QPalette::HighlightedText, Qt::white);
        dark.setColor(group, QPalette::Link, QColor(102, 178, 255));
        dark.setColor(group, QPalette::LinkVisited, QColor(190, 160, 255));
        dark.setColor(group, QPalette::PlaceholderText, faint);
    }
    return dark;
}

int Distance(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

constexpr qsizetype mostColours = 128;

// The most frequent colours of the picture, each farther than that from all others; of more than
// can be had the first, and one more.
QList<QRgb> Palette(const std::vector<std::pair<int, QRgb>>& byFrequency, int distance) {
    QList<QRgb> colours;
    for (const auto& [frequency, colour] : byFrequency) {
        const auto isNear = [colour = colour, distance](QRgb other) {
            return Distance(colour, other) <= distance;
        };
        if (colours.size() <= mostColours && std::ranges::none_of(colours, isNear))
            colours << colour;
    }
    return colours;
}

// A picture of few colours, in which every colour is as close to its own as they allow: a third of
// the bytes, and no difference that one could see.
QImage WithFewColours(const QImage& picture) {
    std::map<QRgb, int> frequencies;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++frequencies[picture.pixel(x, y)];
    std::vector<std::pair<int, QRgb>> byFrequency;
    for (const auto& [colour, frequency] : frequencies)
        byFrequency.emplace_back(-frequency, colour);
    std::ranges::sort(byFrequency);
    QList<QRgb> colours;
    for (int distance = 0; distance == 0 || colours.size() > mostColours; ++distance)
        colours = Palette(byFrequency, distance);

    std::map<QRgb, int> places;
    for (const auto& [colour, frequency] : frequencies) {
        const auto nearest = std::ranges::min_element(
            colours, {}, [colour = colour](QRgb other) { return Distance(colour, other); });
        places[colour] = static_cast<int>(nearest - colours.begin());
    }
    QImage few(picture.size(), QImage::Format_Indexed8);
    few.setColorTable(colours);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            few.setPixel(x, y, static_cast<uint>(places[picture.pixel(x, y)]));
    return few;
}

// Lists take their final width a little after their entries, and the button that clears a box
// comes slowly.
void ComeToRest() {
    constexpr int milliseconds = 400;
    QTest::qWait(milliseconds);
    hands::Settle();
}

class Photographer {
  public:
    Photographer(frmMain& window, QString folder) : window_(window), folder_(std::move(folder)) {}

    // One window alone.
    void Take(const QString& name, QWidget& window) {
        ComeToRest();
        Save(name, window.grab());
    }

    // The main window with all that stands over it.
    void TakeAll(const QString& name) {
        ComeToRest();
        QPixmap picture = window_.grab();
        QPainter painter(&picture);
        painter.setPen(QApplication::palette().color(QPalette::Shadow));
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other != &window_ && other->isVisible()) {
                const QRect place(other->pos() - window_.pos(), other->size());
                painter.drawPixmap(place.topLeft(), other->grab());
                painter.drawRect(place.adjusted(-1, -1, 0, 0));
            }
        painter.end();
        Save(name, picture);
    }

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

    void Check(int checks) const {
        if (saved_ < checks)
            qFatal("Only %d pictures", saved_);
    }

  private:
    void Save(const QString& name, const QPixmap& picture) {
        const QString path = QDir(folder_).filePath(name + ".png");
        constexpr int smallest = 0; // by compression alone
        const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
        if (!WithFewColours(image).save(path, "PNG", smallest))
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
void SetUpRun(frmMain& window, Photographer& photographer) {
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
    QWidget& options = Floating(window, FloatingWindow::Options);
    photographer.Trigger("mnuPar(0)");
    photographer.Take("frmShowSmp-distribution", options);
    photographer.Trigger("mnuStudent(0)");
    hands::Click(options, "optIntPar0(1)");
    hands::Click(options, "optIntPar1(2)");
    photographer.Take("frmShowSmp", options);
    photographer.TakeAll("main-options");
    hands::Click(options, "cmdOK");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(1)", "0.8");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(3)", "0.5");
    hands::TypeInto(*window.CurrentChild(), "txtParValue(4)", "1");
    photographer.Take("frmCalc-typed", *window.CurrentChild()->parentWidget());
    hands::Click(*window.CurrentChild(), "cmdParLabel(5)");
    photographer.Take("frmCalc", *window.CurrentChild()->parentWidget());
    photographer.Trigger("mnuGetInfo(3)");
    photographer.Take("frmSummary", Floating(window, FloatingWindow::Summary));
    photographer.TakeModal("frmEditSummary", "frmEditSummary", [&window] {
        hands::Click(Floating(window, FloatingWindow::Summary), "cmdEdit");
    });
    Floating(window, FloatingWindow::Summary).hide();
    photographer.Trigger("mnuGetInfo(4)");
    photographer.Take("frmDistrGraph", Floating(window, FloatingWindow::DistrGraph));
    Floating(window, FloatingWindow::DistrGraph).hide();
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
    photographer.TakeModal("msgBox-close", "msgBox",
                           [&window] { window.CurrentChild()->parentWidget()->close(); });
    window.Progress().Start(100, "");
    for (int i = 0; i < 62; ++i)
        window.Progress().Step();
    photographer.Take("frmProgress", window.Progress());
    window.Progress().hide();
    photographer.TakeAll("main-calculation");
}

// The means of five groups, from which the effect of an analysis of variance derives, and the first
// two of the grids of a distance of measurements that are repeated.
void TakeGrids(frmMain& window, Photographer& photographer) {
    constexpr i16 oneWay = 10;
    constexpr i16 hotelling = 30;
    constexpr const char* means[] = {"128.5", "124", "121.5", "119", "118"};
    photographer.Trigger("mnuFile(0)");
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
        photographer.Take("frmGridTable", grid);
        hands::Click(grid, "cmdOK");
    });
    press("txtParValue(2)");
    photographer.Take("frmCalc-blue", *window.CurrentChild()->parentWidget());
    photographer.Trigger("mnuShowGrids");
    photographer.Take("frmGridTable0", Floating(window, FloatingWindow::Grid));
    NewTest(hotelling);
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    hands::WhenModal("frmGridTable", [&](QWidget& grid) {
        QApplication::clipboard()->setText("0\t0\t0\t0\t0\n2\t1.5\t1\t1\t0.5\n");
        QTest::keyClick(hands::Control(grid, "txtText"), Qt::Key_V, Qt::ControlModifier);
        hands::WhenModal("frmGridTable", [&](QWidget& next) {
            QTest::keyClicks(hands::Control(next, "txtText"), "0.5");
            photographer.Take("frmGridTable-matrix", next);
            hands::Click(next, "cmdCancel");
        });
        hands::Click(grid, "cmdOK");
    });
    press("txtParValue(2)");
    AnalysisState(AnalysisNo).Changed = False;
    window.CurrentChild()->parentWidget()->close();
}

void TakeFiles(Photographer& photographer) {
    const QString path = QDir::home().filePath("Blood pressure.dim");
    WriteAnalysisFile(FromQt(path));
    QFile file(path);
    const QDateTime fixed(QDate(2024, 3, 1), QTime(9, 30), Qt::UTC);
    if (!file.open(QFile::ReadWrite) || !file.setFileTime(fixed, QFileDevice::FileModificationTime))
        qFatal("Can't date %s", qPrintable(path));
    file.close();
    photographer.TakeModal("frmCmdialog-open", "frmCmdialog",
                           [&photographer] { photographer.Trigger("mnuFile(5)"); });
    photographer.TakeModal("frmCmdialog-save", "frmCmdialog",
                           [&photographer] { photographer.Trigger("mnuFile(7)"); });
    file.remove();
}

void TakeHelp(Photographer& photographer) {
    constexpr i32 unpaired = 301;
    OpenHelp(unpaired);
    QWidget* viewer = hands::TopWindow("frmHelp");
    photographer.Take("frmHelp", *viewer);
    OpenHelpSearch();
    hands::TypeInto(*viewer, "txtSearch", "decimal comma");
    photographer.Take("frmHelp-search", *viewer);
    viewer->close();
}

void TakeTable(frmMain& window, Photographer& photographer) {
    photographer.Trigger("mnuFile(1)");
    photographer.Take("frmTable-empty", *window.CurrentChild()->parentWidget());
    SetUpRun(window, photographer);
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
    photographer.TakeModal("frmEditOutput-table", "frmEditTable", [&window] {
        hands::Click(Floating(window, FloatingWindow::Output), "cmdEditOutput");
    });
    Floating(window, FloatingWindow::Output).hide();
}

void TakeGraph(frmMain& window, Photographer& photographer) {
    photographer.Trigger("mnuFile(2)");
    SetUpRun(window, photographer);
    photographer.TakeAll("main-graph");
    photographer.Take("frmGraph", *window.CurrentChild()->parentWidget());
    photographer.TakeModal("frmEditGraph", "frmEditGraph",
                           [&window] { hands::Click(*window.CurrentChild(), "cmdEditGraph"); });
    photographer.TakeModal("frmGraphOrText", "frmGraphOrText",
                           [&photographer] { photographer.Trigger("mnuFile(10)"); });
    hands::WhenModal("frmGraphOrText", [](QWidget& form) { hands::Click(form, "cmdOK"); });
    photographer.TakeModal("printPreview-graph", "printPreview",
                           [&photographer] { photographer.Trigger("mnuFile(9)"); });
    auto* menu = window.findChild<QMenu*>("mnuOutput");
    menu->popup(QPoint(100, 100));
    photographer.Take("mnuOutput", *menu);
    menu->close();
    menu = window.findChild<QMenu*>("mnuWindowHead");
    menu->popup(QPoint(100, 100));
    photographer.Take("mnuWindow", *menu);
    menu->close();
}

// The distribution of a Mann-Whitney test.
void TakeDistributions(frmMain& window, Photographer& photographer) {
    photographer.Trigger("mnuFile(0)");
    photographer.Trigger("mnuMW(0)");
    hands::Click(Floating(window, FloatingWindow::Options), "cmdOK");
    photographer.TakeModal("frmShiftModel", "frmShiftModel", [&window] {
        QTest::keyClick(hands::Control(*window.CurrentChild(), "txtParValue(2)"), Qt::Key_F2);
    });
}

// A simulation with two interim analyses that has ended, and its dialog.
void TakeSimulation(frmMain& window, Photographer& photographer) {
    photographer.Trigger("mnuFile(3)");
    photographer.Trigger("mnuMW(0)");
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
    photographer.TakeAll("main-simulation");
    photographer.Take("frmMonte", *window.CurrentChild()->parentWidget());
    photographer.Take("frmShowIntPar", Floating(window, FloatingWindow::InterimParameters));
}

void TakeValidation(frmMain& window, Photographer& photographer) {
    const QDir home(QDir::homePath());
    frmValidate validation(&window, VALIDATE_PROGRAM, home.filePath("Quorvanta Validation.pdf"),
                           home.filePath("Quorvanta Validation.txt"));
    validation.show();
    const auto& bar = *hands::Control<QProgressBar>(validation, "pgrProgress");
    constexpr int longest = 120000; // milliseconds
    (void)QTest::qWaitFor([&bar] { return bar.isHidden(); }, longest);
    photographer.Take("frmValidate", validation);
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
    TakeValidation(window, photographer);
    TakeCalculation(window, photographer);
    TakeGrids(window, photographer);
    TakeFiles(photographer);
    TakeHelp(photographer);
    TakeTable(window, photographer);
    TakeGraph(window, photographer);
    ThePlatform().RaiseChild(CalculationWindow, 1);
    TakeDistributions(window, photographer);
    TakeSimulation(window, photographer);
    hands::Settle();
    photographer.Check(20);
    for (int n = 1; n <= 5; ++n)
        AnalysisState(n).Changed = False;
}

} // namespace

} // namespace quorvanta

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: quorvanta_screenshots folder light|dark dots-per-inch" << std::endl;
        return 1;
    }
    quorvanta::hands::UseMemoryForDisplay(QByteArray(argv[3]).toInt());
    quorvanta::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (!QDir().mkpath(arguments[1]))
        qFatal("Can't make %s", qPrintable(arguments[1]));
    QApplication::setStyle("Fusion");
    QApplication::setCursorFlashTime(0); // no cursor comes and goes
    if (arguments[2] == "dark")
        QApplication::setPalette(quorvanta::DarkPalette());
    quorvanta::Program program;
    quorvanta::TakePictures(program.Window(), arguments[1]);
    return 0;
}
