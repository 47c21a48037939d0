// Replicates per second (items_per_second) of a simulated t-test of two samples of 20: each is
// drawn and tested once under H0 and once under H1. Beside it the plain version of the same
// replicate, with the variances in two passes.
#include "simulating.h"
#include "tests/teststud.h"

#include <numeric>

namespace quorvanta {
namespace {

constexpr i16 menuUnpaired = 0;
constexpr int size = 20;
constexpr f64 difference = 0.9;

void TTest(benchmark::State& state) {
    PrepareTwoSamples(menuUnpaired, size);
    MeasureReplicates(state);
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
    const std::vector<f64> first = PlainSample(size, 0);
    const std::vector<f64> second = PlainSample(size, shift);
    const f64 mean1 = Mean(first);
    const f64 mean2 = Mean(second);
    const f64 variance = (Squares(first, mean1) + Squares(second, mean2)) / (2 * size - 2);
    return TPValue(static_cast<f32>(mean2 - mean1), 0,
                   static_cast<f32>(std::sqrt(variance * 2 / size)), 0, 0, 2 * size - 2);
}

void TTestPlain(benchmark::State& state) {
    PrepareTwoSamples(menuUnpaired, size);
    for (auto _ : state)
        for (const f64 shift : {0.0, difference})
            benchmark::DoNotOptimize(PlainPValue(shift));
    state.SetItemsProcessed(state.iterations());
}

// What both have in common: the p-value of a statistic.
void TTestPValues(benchmark::State& state) {
    PrepareTwoSamples(menuUnpaired, size);
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
