// The exact forms of the tests of proportions, solved by the driver, and by a straightforward
// rendering of the same sums that computes every coefficient and every conditional power anew.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/option_choice.h"
#include "core/root.h"
#include "core/search.h"
#include "core/setup.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <initializer_list>

namespace {

using namespace quorvanta;

constexpr i16 menuFisher = 100;
constexpr i16 menuMcNemar = 70;

// A two-sided test with these values; the second size, where there is one, as a difference.
void OpenPlan(i16 menuNo, std::initializer_list<f64> values, i16 unknown) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewTest(menuNo);
    ChooseTails(TwoSided);
    if (NoOfIntPar > 1)
        ChooseIntPar(1, 1);
    AcceptOptions();
    i16 i = 0;
    for (const f64 value : values)
        ParValue(i++) = value;
    UnknownParNo = unknown;
}

// Fisher's test: level, power, proportions, sizes.
void OpenFisher(i16 unknown) {
    OpenPlan(menuFisher, {0.05, 0.9, 0.1, 0.4, 50, 0}, unknown);
}

namespace plain {

f64 Coefficient(int n, int k) {
    return ChooseProduct(static_cast<i16>(n), static_cast<i16>(std::min(k, n - k)));
}

f32 Binomial(int n, int x, f64 p) {
    return Single(Coefficient(n, x) * std::pow(p, x) * std::pow(1 - p, n - x));
}

f32 Cdf(int n, int x, f64 p) {
    f32 sum = 0;
    for (int i = 0; i <= x; ++i)
        sum = Single(f64{sum} + Binomial(n, i, p));
    return sum;
}

// Two-sided power of Fisher's test.
f64 Fisher(int n1, int n2, f64 p1, f64 p2, f64 level) {
    f32 power = 0;
    for (int t = 0; t <= n1 + n2; ++t) {
        const int low = std::max(0, t - n2);
        const int high = std::min(n1, t);
        const auto walk = [&](int from, int step) {
            f32 tail = 0;
            for (int x = from; x >= low && x <= high; x += step) {
                tail = Single(f64{tail} + Single(Coefficient(n1, x) * Coefficient(n2, t - x) /
                                                 Coefficient(n1 + n2, t)));
                if (tail > level / 2)
                    break;
                power =
                    Single(f64{power} + Single(f64{Binomial(n1, x, p1)} * Binomial(n2, t - x, p2)));
            }
        };
        walk(low, 1);
        walk(high, -1);
    }
    return power;
}

// Two-sided power of McNemar's test given m discordant pairs, r of one kind.
f64 SignTest(int m, f64 r, f64 level) {
    if (m >= 200) {
        const f64 z = NorInv(Single(1 - level / 2));
        const f64 x = std::fabs(r - 0.5) * m - 0.5;
        const f64 se0 = std::sqrt(m / 4.0);
        const f64 se1 = std::sqrt(r * (1 - r) * m);
        return 1 - f64{NorCdf(Single((x + z * se0) / se1))} + NorCdf(Single((x - z * se0) / se1));
    }
    int low = 0;
    while (Cdf(m, low, 0.5) <= level / 2)
        ++low;
    return f64{Cdf(m, low - 1, r)} + Cdf(m, low - 1, 1 - r);
}

f64 McNemar(int n, f64 s, f64 d, f64 level) {
    const f64 r = (s + d) / (2 * s);
    f32 power = 0;
    for (int m = 1; m <= n; ++m)
        power = Single(f64{power} + f64{Binomial(n, m, s)} * SignTest(m, r, level));
    return power;
}

// The size at which the power, linear between whole sizes, is the one asked for.
template <class Power>
f64 Size(const Power& power, f64 target, f64 largest) {
    i16 iterations = 0;
    f64 root = 0;
    f64 residual = 0;
    const auto f = [&](f64 n) {
        const int whole = static_cast<int>(n);
        const f64 rest = n - whole;
        return (1 - rest) * power(whole) + rest * power(whole + 1) - target;
    };
    FindRootOf(f, 3, largest, RootTolerance, RootIterations, iterations, root, residual);
    return root;
}

} // namespace plain

void FisherPower50By50(benchmark::State& state) {
    OpenFisher(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
}
BENCHMARK(FisherPower50By50)->Unit(benchmark::kMicrosecond);

void FisherPower50By50Plain(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(plain::Fisher(50, 50, 0.1, 0.4, 0.05));
}
BENCHMARK(FisherPower50By50Plain)->Unit(benchmark::kMicrosecond);

void FisherSize(benchmark::State& state) {
    OpenFisher(4);
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
    state.counters["size"] = ParValue(4);
}
BENCHMARK(FisherSize)->Unit(benchmark::kMicrosecond);

void FisherSizePlain(benchmark::State& state) {
    f64 size = 0;
    for (auto _ : state)
        size = plain::Size([](int n) { return plain::Fisher(n, n, 0.1, 0.4, 0.05); }, 0.9, 100);
    state.counters["size"] = size;
}
BENCHMARK(FisherSizePlain)->Unit(benchmark::kMicrosecond);

// Every time another effect, so that no conditional power is known from the time before.
f64 NextEffect() {
    static int k = 0;
    k = (k + 1) % 64;
    return 0.09 + 1e-4 * k;
}

void McNemarPower500(benchmark::State& state) {
    OpenPlan(menuMcNemar, {0.05, 0.9, 0.4, 0.09, 500}, 1);
    for (auto _ : state) {
        ParValue(3) = NextEffect();
        benchmark::DoNotOptimize(SolveUnknown());
    }
}
BENCHMARK(McNemarPower500)->Unit(benchmark::kMicrosecond);

void McNemarPower500Plain(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(plain::McNemar(500, 0.4, NextEffect(), 0.05));
}
BENCHMARK(McNemarPower500Plain)->Unit(benchmark::kMicrosecond);

void McNemarSize(benchmark::State& state) {
    OpenPlan(menuMcNemar, {0.05, 0.9, 0.4, 0.09, 500}, 4);
    for (auto _ : state) {
        ParValue(3) = NextEffect();
        benchmark::DoNotOptimize(SolveUnknown());
    }
    state.counters["size"] = ParValue(4);
}
BENCHMARK(McNemarSize)->Unit(benchmark::kMicrosecond);

void McNemarSizePlain(benchmark::State& state) {
    f64 size = 0;
    for (auto _ : state) {
        const f64 d = NextEffect();
        size = plain::Size([d](int n) { return plain::McNemar(n, 0.4, d, 0.05); }, 0.9, 1000);
    }
    state.counters["size"] = size;
}
BENCHMARK(McNemarSizePlain)->Unit(benchmark::kMicrosecond);

void BinomialPower1000(benchmark::State& state) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewDistribution(DistrBinomial);
    ChooseSamples(OneSample);
    ChooseTails(TwoSided);
    ChooseCheck(2, true);
    AcceptOptions();
    const f64 values[] = {0.05, 0.9, 0.3, 0.35, 1000};
    for (i16 i = 0; i <= NoOfPar; ++i)
        ParValue(i) = values[i];
    UnknownParNo = 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
}
BENCHMARK(BinomialPower1000)->Unit(benchmark::kMicrosecond);

} // namespace
