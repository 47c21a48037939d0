// Draws per second of each generator of random variates (items_per_second), a thousand at a call.
#include "core/analysis_state.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"

#include <benchmark/benchmark.h>

namespace quorvanta {
namespace {

constexpr i16 sampleSize = 1000;

void Restart() {
    Rnd(-1.0);
    Randomize(1.0);
    RandSample.ReDim(0, sampleSize);
    RandSample2.ReDim(0, sampleSize);
}

template <class Generator>
void Measure(benchmark::State& state, Generator&& generator) {
    Restart();
    for (auto _ : state) {
        generator();
        benchmark::DoNotOptimize(RandSample.Raw().data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * sampleSize);
}

void Uniform01(benchmark::State& state) {
    Measure(state, [] { RandUniform01(); });
}
void UniformCentred(benchmark::State& state) {
    Measure(state, [] { RandUniformCentred(); });
}
void Normal(benchmark::State& state) {
    Measure(state, [] { RandNormal(); });
}
void Exponential(benchmark::State& state) {
    Measure(state, [] { RandExponential(); });
}
void Laplace(benchmark::State& state) {
    Measure(state, [] { RandLaplace(); });
}
void Cauchy(benchmark::State& state) {
    Measure(state, [] { RandCauchy(); });
}
void Logistic(benchmark::State& state) {
    Measure(state, [] { RandLogistic(); });
}
void ExtremeValue(benchmark::State& state) {
    Measure(state, [] { RandExtremeValue(); });
}
void WeibullShape2(benchmark::State& state) {
    Measure(state, [] { RandWeibull(2.0F); });
}
void LognormalShape2(benchmark::State& state) {
    Measure(state, [] { RandLognormal(2.0F); });
}
void GammaShape3(benchmark::State& state) {
    Measure(state, [] { RandGamma(3.0F); });
}
void GammaShape2_5(benchmark::State& state) {
    Measure(state, [] { RandGamma(2.5F); });
}
void Chi2Df5(benchmark::State& state) {
    Measure(state, [] { RandChi2(5.0F); });
}
void Chi2Df50(benchmark::State& state) {
    Measure(state, [] { RandChi2(50.0F); });
}
void BivNormal(benchmark::State& state) {
    Measure(state, [] { RandBivNormal(0.5F); });
}
void Binomial20(benchmark::State& state) {
    Measure(state, [] { RandBinomial(20, 0.3F); });
}
void Poisson4(benchmark::State& state) {
    Measure(state, [] { RandPoisson(4.0F); });
}

void Hypergeometric(benchmark::State& state) {
    Measure(state, [] { RandHypergeometric(500, 20, 0.3F); });
}

void Multinomial5(benchmark::State& state) {
    Array1<f32> P(1, 5);
    for (f32& p : P.Raw())
        p = 0.2F;
    Measure(state, [&P] { RandMultinomial(sampleSize, P); });
}

// One vector of ten correlated values counts as ten draws.
void MultiNormal10(benchmark::State& state) {
    constexpr int dimension = 10;
    Array2<f64> T(1, dimension, 1, dimension);
    for (int i = 1; i <= dimension; ++i)
        for (int j = i; j <= dimension; ++j)
            T(i, j) = 1.0 / (1 + j - i);
    const Array2<f32> M(1, dimension, 1, 1);
    Restart();
    for (auto _ : state) {
        RandMultiNormal(T, M);
        benchmark::DoNotOptimize(RandSample.Raw().data());
    }
    state.SetItemsProcessed(state.iterations() * dimension);
}

struct Intervals {
    Array1<f32> S{1, 4};
    Array1<f32> H{1, 4};
    Array1<f32> Q{1, 4};
    Intervals() {
        for (int j = 1; j <= 4; ++j) {
            S(j) = static_cast<f32>(j - 1);
            H(j) = 0.5F;
            Q(j) = 0.05F;
        }
    }
};

void PiecewiseExp3(benchmark::State& state) {
    const Intervals intervals;
    Measure(state, [&intervals] { RandPiecewiseExp(intervals.S, intervals.H); });
}

// Subjects of a two-group study with losses and staggered entry.
void SurvivalTwoGroups(benchmark::State& state) {
    SimDistrNo = SimExponential;
    SurvivalRecord record;
    Measure(state, [&record] {
        record.ReDim(sampleSize);
        SimSurvivalTwoGroups(sampleSize / 2, sampleSize / 2, 1.0F, 2.0F, 1.0F, 0.1F, 0.1F, 2.0F,
                             0.0F, record);
    });
}

void SurvivalPiecewise(benchmark::State& state) {
    const Intervals intervals;
    SurvivalRecord record;
    Measure(state, [&] {
        record.ReDim(sampleSize);
        SimSurvivalPiecewise(sampleSize / 2, sampleSize / 2, intervals.S, intervals.H, intervals.H,
                             intervals.H, true, intervals.Q, intervals.Q, 2.0F, 0.0F, record);
    });
}

BENCHMARK(Uniform01);
BENCHMARK(UniformCentred);
BENCHMARK(Normal);
BENCHMARK(Exponential);
BENCHMARK(Laplace);
BENCHMARK(Cauchy);
BENCHMARK(Logistic);
BENCHMARK(ExtremeValue);
BENCHMARK(WeibullShape2);
BENCHMARK(LognormalShape2);
BENCHMARK(GammaShape3);
BENCHMARK(GammaShape2_5);
BENCHMARK(Chi2Df5);
BENCHMARK(Chi2Df50);
BENCHMARK(BivNormal);
BENCHMARK(MultiNormal10);
BENCHMARK(PiecewiseExp3);
BENCHMARK(SurvivalTwoGroups);
BENCHMARK(SurvivalPiecewise);
BENCHMARK(Binomial20);
BENCHMARK(Hypergeometric);
BENCHMARK(Poisson4);
BENCHMARK(Multinomial5);

} // namespace
} // namespace quorvanta
