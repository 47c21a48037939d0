// From the click on OK to the drawn table or graph of 100 x 5 sample sizes, in the real windows.
#include "core/analysis_state.h"
#include "core/showpar.h"
#include "tour/hands.h"
#include "ui/application.h"
#include "ui/childwindow.h"
#include "ui/program.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>

#include <benchmark/benchmark.h>
#include <chrono>

namespace quorvanta {
namespace {

// Counts how often a widget has been drawn.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& watched) { watched.installEventFilter(this); }

    int Paints = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        // The event goes its way first, so that a paint counts when it is done.
        if (event->type() == QEvent::Paint && !isInside_) {
            isInside_ = true;
            QCoreApplication::sendEvent(watched, event);
            isInside_ = false;
            ++Paints;
            return true;
        }
        return false;
    }

  private:
    bool isInside_ = false;
};

void Trigger(frmMain& window, const char* entry) {
    window.findChild<QAction*>(entry)->trigger();
    hands::Settle();
}

// The unpaired t-test: sample size against 100 differences, for 5 standard deviations.
QWidget& SetUp(frmMain& window, const char* newWindow) {
    Trigger(window, newWindow);
    Trigger(window, "mnuStudent(0)");
    const QWidget& options = *window.Floating(FloatingWindow::Options);
    hands::Click(options, "optIntPar0(1)");
    hands::Click(options, "optIntPar1(2)");
    hands::Click(options, "cmdOK");
    constexpr i16 sizePosition = 5;
    constexpr i16 differencePosition = 3;
    constexpr i16 sdPosition = 4;
    SwapAxis(YRole, sizePosition);
    SwapAxis(XRole, differencePosition);
    SwapAxis(ZRole, sdPosition);
    QWidget& parameters = *window.Floating(FloatingWindow::Parameters);
    hands::TypeInto(parameters, "txtXminValue", "0.3");
    hands::TypeInto(parameters, "txtXmaxValue", "0.795");
    hands::TypeInto(parameters, "txtXstepValue", "0.005");
    return parameters;
}

void FromOkToDrawn(benchmark::State& state, const char* newWindow, const char* pictureName) {
    Program program;
    frmMain& window = program.Window();
    window.show();
    QWidget& parameters = SetUp(window, newWindow);
    hands::TypeInto(parameters, "txtZValue", "1");
    hands::Click(parameters, "cmdOK");
    PaintCounter counter(*hands::Control(*window.CurrentChild(), pictureName));
    bool isOdd = false;
    for (auto _ : state) {
        // Something to calculate: what is typed makes the former result stale.
        isOdd = !isOdd;
        hands::TypeInto(parameters, "txtZValue", isOdd ? "0.8 0.9 1 1.1 1.2" : "0.7 0.9 1 1.1 1.2");
        const int before = counter.Paints;
        const auto start = std::chrono::steady_clock::now();
        hands::Click(parameters, "cmdOK");
        while (counter.Paints == before)
            QCoreApplication::processEvents();
        state.SetIterationTime(
            std::chrono::duration<f64>(std::chrono::steady_clock::now() - start).count());
    }
    if (TableY.HighBound1() != 100 || TableY.HighBound2() != 5)
        state.SkipWithError("not the grid");
}

void FromOkToTheTable(benchmark::State& state) {
    FromOkToDrawn(state, "mnuFile(1)", "PicTable");
}
BENCHMARK(FromOkToTheTable)->UseManualTime()->Unit(benchmark::kMillisecond);

void FromOkToTheGraph(benchmark::State& state) {
    FromOkToDrawn(state, "mnuFile(2)", "PicGraph");
}
BENCHMARK(FromOkToTheGraph)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvanta

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    quorvanta::hands::UseMemoryForDisplay();
    quorvanta::Application application(argc, argv);
    quorvanta::Application::setQuitOnLastWindowClosed(false);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
