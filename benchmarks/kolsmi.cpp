// One evaluation of the power of the one-sample Kolmogorov-Smirnov test, normal against normal: by
// the counts that stay within bounds, for samples up to the largest that is exact.
#include "montecarlo/distrcdf.h"
#include "numeric/kolsmicrossing.h"
#include "numeric/randdist.h"

#include <benchmark/benchmark.h>

namespace {

using namespace quorvanta;

void Measure(benchmark::State& state, Crossing side) {
    const DistrRow null{SimNormal, 0, 1};
    const DistrRow truth{SimNormal, 0.1F, 1.05F};
    const i32 n = static_cast<i32>(state.range(0));
    constexpr f64 level = 0.05;
    const auto trueCdf = [&](f64 p) { return DistrCdf(truth, DistrQuantile(null, p)); };
    for (auto _ : state)
        benchmark::DoNotOptimize(KolSmiPower(n, level, side, trueCdf));
}

void KolSmiPowerTwoSided(benchmark::State& state) {
    Measure(state, Crossing::Either);
}
BENCHMARK(KolSmiPowerTwoSided)
    ->Arg(50)
    ->Arg(200)
    ->Arg(1000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond);

void KolSmiPowerOneSided(benchmark::State& state) {
    Measure(state, Crossing::Below);
}
BENCHMARK(KolSmiPowerOneSided)
    ->Arg(50)
    ->Arg(200)
    ->Arg(1000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond);

} // namespace
