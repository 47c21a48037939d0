// The distribution functions that sit in the inner loop of every search, and the exact sums.
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"

#include <array>
#include <benchmark/benchmark.h>

namespace {

using namespace quorvanta;

// Arguments that change from call to call, so that nothing is computed once for all.
template <std::size_t N>
class Cycle {
  public:
    explicit Cycle(const std::array<f32, N>& values) : values_(values) {}
    f32 Next() {
        i_ = (i_ + 1) % N;
        return values_[i_];
    }

  private:
    std::array<f32, N> values_;
    std::size_t i_ = 0;
};

const std::array<f32, 8> Values = {-2.2F, -1.1F, -0.3F, 0.2F, 0.9F, 1.5F, 2.1F, 3.4F};
const std::array<f32, 8> Probabilities = {0.005F, 0.025F, 0.1F, 0.3F, 0.7F, 0.9F, 0.975F, 0.995F};

void NorCdfCall(benchmark::State& state) {
    Cycle x(Values);
    for (auto _ : state)
        benchmark::DoNotOptimize(NorCdf(x.Next()));
}
BENCHMARK(NorCdfCall);

void NorInvCall(benchmark::State& state) {
    Cycle p(Probabilities);
    for (auto _ : state)
        benchmark::DoNotOptimize(NorInv(p.Next()));
}
BENCHMARK(NorInvCall);

void TInvCall(benchmark::State& state) {
    Cycle p(Probabilities);
    for (auto _ : state)
        benchmark::DoNotOptimize(TInv(p.Next(), 58.3F));
}
BENCHMARK(TInvCall);

void NcTCdfCall(benchmark::State& state) {
    Cycle t(Values);
    for (auto _ : state)
        benchmark::DoNotOptimize(NcTCdf(t.Next(), 58.3F, 2.8F));
}
BENCHMARK(NcTCdfCall);

void BetaIncCall(benchmark::State& state) {
    Cycle x(std::array<f32, 4>{0.6F, 0.75F, 0.9F, 0.97F});
    for (auto _ : state) {
        f32 argument = x.Next();
        benchmark::DoNotOptimize(BetaInc(argument, 15.0F, 2.5F));
    }
}
BENCHMARK(BetaIncCall);

void TCdfCall(benchmark::State& state) {
    Cycle t(Values);
    for (auto _ : state)
        benchmark::DoNotOptimize(TCdf(t.Next(), 58.3F));
}
BENCHMARK(TCdfCall);

// df1 and df2: a whole pair by bisection, a broken one between two of them, one of the formula.
void FInvCall(benchmark::State& state) {
    for (auto _ : state) {
        f32 df1 = static_cast<f32>(state.range(0));
        f32 df2 = static_cast<f32>(state.range(1)) / 4;
        benchmark::DoNotOptimize(FInv(0.95F, df1, df2));
    }
}
BENCHMARK(FInvCall)->ArgNames({"df1", "4df2"})->Args({3, 80})->Args({3, 81})->Args({3, 4000});
BENCHMARK(FInvCall)->ArgNames({"df1", "4df2"})->Args({12, 240});

void NcFCdfCall(benchmark::State& state) {
    for (auto _ : state) {
        f32 lambda = static_cast<f32>(state.range(0));
        benchmark::DoNotOptimize(NcFCdf(2.9F, 3.0F, 56.0F, lambda));
    }
}
BENCHMARK(NcFCdfCall)->ArgName("lambda")->Arg(2)->Arg(12)->Arg(40)->Arg(60);

void Chi2CdfCall(benchmark::State& state) {
    Cycle x(std::array<f32, 4>{2.5F, 5.5F, 9.5F, 14});
    for (auto _ : state)
        benchmark::DoNotOptimize(Chi2Cdf(x.Next(), 5.0F));
}
BENCHMARK(Chi2CdfCall);

void NcChi2CdfCall(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(NcChi2Cdf(9.49F, 4.0F, static_cast<f32>(state.range(0))));
}
BENCHMARK(NcChi2CdfCall)->ArgName("lambda")->Arg(12)->Arg(60);

void GammaCdfCall(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(GammaCdf(3.1F, 1.5F, 2.5F));
}
BENCHMARK(GammaCdfCall);

void BinCdfCall(benchmark::State& state) {
    const f32 n = static_cast<f32>(state.range(0));
    Cycle share(std::array<f32, 4>{0.5F, 0.45F, 0.4F, 0.35F});
    for (auto _ : state)
        benchmark::DoNotOptimize(BinCdf(n, static_cast<i16>(state.range(0) / 2), share.Next()));
}
BENCHMARK(BinCdfCall)->ArgName("n")->Arg(50)->Arg(1000);

void HyperCdfCall(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(HyperCdf(1000, 500, 245, 0.5F));
}
BENCHMARK(HyperCdfCall);

void KolSmiInvCall(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(KolSmiInv(static_cast<f32>(state.range(0)), 0.95F, 0));
}
BENCHMARK(KolSmiInvCall)->ArgName("n")->Arg(10)->Arg(50);

} // namespace
