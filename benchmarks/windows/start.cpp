// From the start of the process to the drawn main window. Each figure is a process of its own,
// which does what the program does, save that the splash window is clicked away as soon as it is
// drawn. The files of the program and of Qt are in the machine's disk cache after the first.
#include "tour/hands.h"
#include "ui/application.h"
#include "ui/frmsplash.h"
#include "ui/program.h"

#include <QProcess>
#include <QTest>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <ctime>
#include <functional>
#include <iostream>

namespace quorvanta {
namespace {

constexpr const char* childArgument = "--start-once";

// Seconds of a clock that all processes share.
f64 Now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<f64>(time.tv_sec) + static_cast<f64>(time.tv_nsec) * 1e-9;
}

// Ends the wait for a window at its first paint.
class UntilDrawn : public QObject {
  public:
    explicit UntilDrawn(QWidget& window, std::function<void()> then) : then_(std::move(then)) {
        window.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, then_);
        return false;
    }

  private:
    std::function<void()> then_;
};

int StartOnce(int argc, char** argv) {
    hands::UseMemoryForDisplay();
    Application application(argc, argv);
    Program program;
    {
        frmSplash splash;
        const UntilDrawn drawn(splash, [&splash] { QTest::mouseClick(&splash, Qt::LeftButton); });
        splash.exec();
    }
    const UntilDrawn drawn(program.Window(), [] {
        std::cout.precision(15);
        std::cout << Now() << std::endl;
        Application::exit();
    });
    program.Window().show();
    return Application::exec();
}

void ProcessToMainWindow(benchmark::State& state) {
    for (auto _ : state) {
        QProcess process;
        process.setProgram(QCoreApplication::applicationFilePath());
        process.setArguments({childArgument});
        const f64 start = Now();
        process.start();
        if (!process.waitForFinished() || process.exitCode() != 0)
            return state.SkipWithError("the program did not start");
        state.SetIterationTime(process.readAllStandardOutput().toDouble() - start);
    }
}
BENCHMARK(ProcessToMainWindow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace
} // namespace quorvanta

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == quorvanta::childArgument)
        return quorvanta::StartOnce(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QCoreApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
