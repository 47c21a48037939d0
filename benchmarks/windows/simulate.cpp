// Replicates per second (items_per_second) of a simulated Wilcoxon-Mann-Whitney test of two samples
// of 30 in the real window, from the click on OK to the end of the run, with the display and the
// user's events; beside it the bare loop over the same replicates in the same process.
#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "tour/hands.h"
#include "ui/application.h"
#include "ui/childwindow.h"
#include "ui/program.h"

#include <QAction>

#include <benchmark/benchmark.h>
#include <chrono>

namespace quorvanta {
namespace {

constexpr int replicates = 1'000'000;

void Trigger(frmMain& window, const char* entry) {
    window.findChild<QAction*>(entry)->trigger();
    hands::Settle();
}

QWidget& OpenSimulation(frmMain& window) {
    window.show();
    Trigger(window, "mnuFile(3)");
    Trigger(window, "mnuMW(0)");
    hands::Click(*window.Floating(FloatingWindow::Options), "cmdOK");
    QWidget& dialog = *window.Floating(FloatingWindow::InterimParameters);
    constexpr const char* sizes[] = {"txtParValue(2)", "txtParValue(3)"};
    for (const char* box : sizes)
        hands::TypeInto(dialog, box, "30");
    hands::TypeInto(dialog, "txtMaxNoOfSim", QString::number(replicates));
    hands::TypeInto(dialog, "txtSeed", "1");
    return dialog;
}

template <class Run>
void Measure(benchmark::State& state, Run&& run) {
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        run();
        state.SetIterationTime(
            std::chrono::duration<f64>(std::chrono::steady_clock::now() - start).count());
    }
    state.SetItemsProcessed(state.iterations() * replicates);
}

void ThroughTheWindow(benchmark::State& state) {
    Program program;
    QWidget& dialog = OpenSimulation(program.Window());
    Measure(state, [&dialog] { hands::Click(dialog, "cmdOK"); });
    if (SimNo != replicates)
        state.SkipWithError("not the run");
}
BENCHMARK(ThroughTheWindow)->UseManualTime()->Unit(benchmark::kMillisecond);

void BareLoop(benchmark::State& state) {
    Program program;
    hands::Click(OpenSimulation(program.Window()), "cmdOK");
    Measure(state, [] {
        f32 p = 0;
        for (int i = 0; i < replicates; ++i) {
            for (const i16 isH1 : {i16{0}, i16{1}}) {
                SimStage = 0;
                SelSimStatistic(p, isH1);
                benchmark::DoNotOptimize(p);
            }
            ThrowIfFloatFault();
        }
    });
}
BENCHMARK(BareLoop)->UseManualTime()->Unit(benchmark::kMillisecond);

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
