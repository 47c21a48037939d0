// Replicates per second (items_per_second) of a simulated t-test of two samples of 20: each is
// drawn and tested once under H0 and once under H1. Beside it the plain version of the same
// replicate: the logarithm and the cosine of the C library for each draw, a sample in an array of
// its own, and the variances in two passes.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "numeric/rnd.h"
#include "opening.h"
#include "tests/teststud.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <numeric>
#include <vector>

namespace quorvanta {
namespace {

constexpr i16 menuUnpaired = 0;
constexpr int size = 20;
constexpr f64 difference = 0.9;

// The prepared simulation of the test with its start values but the sizes.
void Prepare() {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(SimulationWindow);
    NewTest(menuUnpaired);
    AcceptOptions();
    TypedParText(PositionOf(Kind::Size1), "20");
    TypedParText(PositionOf(Kind::Size2), "20");
    MaxNoOfSimText = "1";
    SeedText = "1";
    SimStart();
}

void TTest(benchmark::State& state) {
    Prepare();
    f32 p = 0;
    for (auto _ : state)
        for (const i16 isH1 : {i16{0}, i16{1}}) {
            SimStage = 0;
            SelSimStatistic(p, isH1);
            benchmark::DoNotOptimize(p);
        }
    state.SetItemsProcessed(state.iterations());
}

f64 PlainNormal() {
    const f64 u{Rnd()};
    const f64 v{Rnd()};
    return std::sqrt(-2 * std::log(u + 1e-10)) * std::cos(2 * 3.141592653589793 * v);
}

std::vector<f64> PlainSample(f64 mean) {
    std::vector<f64> sample(size);
    for (f64& x : sample)
        x = mean + PlainNormal();
    return sample;
}

f64 Mean(const std::vector<f64>& sample) {
    return std::accumulate(sample.begin(), sample.end(), 0.0) / size;
}

f64 Squares(const std::vector<f64>& sample, f64 mean) {
    f64 sum = 0;
    for (const f64 x : sample)
        sum += (x - mean) * (x - mean);
    return sum;
}

f32 PlainPValue(f64 shift) {
    const std::vector<f64> first = PlainSample(0);
    const std::vector<f64> second = PlainSample(shift);
    const f64 mean1 = Mean(first);
    const f64 mean2 = Mean(second);
    const f64 variance = (Squares(first, mean1) + Squares(second, mean2)) / (2 * size - 2);
    return TPValue(static_cast<f32>(mean2 - mean1), 0,
                   static_cast<f32>(std::sqrt(variance * 2 / size)), 0, 0, 2 * size - 2);
}

void TTestPlain(benchmark::State& state) {
    Prepare();
    for (auto _ : state)
        for (const f64 shift : {0.0, difference})
            benchmark::DoNotOptimize(PlainPValue(shift));
    state.SetItemsProcessed(state.iterations());
}

// What both have in common: the p-value of a statistic.
void TTestPValues(benchmark::State& state) {
    Prepare();
    f32 mean = 0;
    for (auto _ : state) {
        mean = mean > 1 ? 0 : mean + 0.001F;
        benchmark::DoNotOptimize(TPValue(mean, 0, 0.3F, 0, 0, 2 * size - 2));
        benchmark::DoNotOptimize(TPValue(mean + 0.5F, 0, 0.3F, 0, 0, 2 * size - 2));
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(TTest);
BENCHMARK(TTestPlain);
BENCHMARK(TTestPValues);

} // namespace
} // namespace quorvanta
