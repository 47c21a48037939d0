// Replicates per second (items_per_second) of a simulated Wilcoxon-Mann-Whitney test of two samples
// of 30: each is drawn and tested once under H0 and once under H1. Beside it the plain version of
// the same replicate: std::sort of an index for the ranks, the p-value by the same functions.
#include "simulating.h"
#include "tests/powereq.h"

#include <algorithm>
#include <numeric>

namespace quorvanta {
namespace {

constexpr i16 menuWilcoxon = 300;
constexpr int size = 30;
constexpr f64 difference = 0.75;

void Wilcoxon(benchmark::State& state) {
    PrepareTwoSamples(menuWilcoxon, size);
    MeasureReplicates(state);
}

f32 PlainPValue(f64 shift) {
    std::vector<f64> values = PlainSample(size, 0);
    const std::vector<f64> second = PlainSample(size, shift);
    values.insert(values.end(), second.begin(), second.end());
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&values](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    f64 sum = 0;
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        if (order[rank] >= size)
            sum += static_cast<f64>(rank + 1);
    const f64 mean = size * (2 * size + 1) / 2.0;
    const f64 se = std::sqrt(size * size * (2 * size + 1) / 12.0);
    return NorPValue(static_cast<f32>(sum), static_cast<f32>(mean), static_cast<f32>(se), 0, 0, 0);
}

void WilcoxonPlain(benchmark::State& state) {
    PrepareTwoSamples(menuWilcoxon, size);
    for (auto _ : state)
        for (const f64 shift : {0.0, difference})
            benchmark::DoNotOptimize(PlainPValue(shift));
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(Wilcoxon);
BENCHMARK(WilcoxonPlain);

} // namespace
} // namespace quorvanta
