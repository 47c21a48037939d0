// The one-way analysis of variance, solved for its sample size by the driver, and by a plain
// rendering of the same equations that leaves out nothing: 101 terms in each non-central
// distribution function and two bisections in each quantile. All results have the same bits.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/root.h"
#include "core/run.h"
#include "core/search.h"
#include "core/setup.h"
#include "numeric/probdist.h"
#include "opening.h"
#include "output/format.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace {

using namespace quorvanta;

constexpr i16 menuOneWay = 10;
constexpr f64 groups = 4;

// Level 0.05, power 0.80, means with a standard deviation of 0.25 in 4 equal groups, standard
// deviation 1.
void OpenPlan(i16 windowKind = CalculationWindow) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(windowKind);
    NewTest(menuOneWay);
    Choose(Group::EffectSize, 0);
    Choose(Group::SizeK, 2);
    AcceptOptions();
    const f64 values[] = {0.05, 0.80, 0.25, 1, groups, 30, 1};
    for (i16 i = 0; i <= NoOfPar; ++i) {
        ParValue(i) = values[i];
        ParText(ParKind(i)) = Str(values[i]);
    }
    UnknownParNo = PositionOf(Kind::Size1);
}

namespace plain {

f32 Rounded(f64 x) {
    return static_cast<f32>(x);
}

f32 LogGamma(f32 x) {
    f32 p = 1;
    while (x < 10) {
        p = Rounded(f64{p} * f64{x});
        x = Rounded(f64{x} + 1);
    }
    const f64 w = x;
    return Rounded(1 / (12 * w) + (w - 0.5) * std::log(w) - 1 / (360 * w * w * w) +
                   1 / (1260 * w * w * w * w * w) - std::log(f64{p}) - w);
}

f32 Beta(f32 at, f32 a32, f32 b32) {
    const f64 x = std::max(at, 1e-5F);
    const f64 a = a32;
    const f64 b = b32;
    if ((a + 1) / (a + b + 2) < x)
        return Rounded(1 - f64{Beta(Rounded(1 - x), b32, a32)});
    const f64 p = Rounded(a + 2);
    const f64 q = Rounded(b + 2);
    f32 A1 = 1, A2 = 1, B1 = 0, B2 = 1, R2 = 0;
    f64 m = 0;
    do {
        const f64 d = Rounded((q + p + m) * (p + m) * x / (2 * m + p) / (2 * m + p + 1));
        const f32 A3 = Rounded(f64{A2} - d * f64{A1});
        const f32 B3 = Rounded(f64{B2} - d * f64{B1});
        m += 1;
        const f64 e = Rounded((q - m) * m * x / (2 * m + p - 1) / (2 * m + p));
        const f32 A4 = Rounded(e * f64{A2} + f64{A3});
        const f32 B4 = Rounded(e * f64{B2} + f64{B3});
        if (A3 == 0 || A4 == 0)
            break;
        const f32 R1 = Rounded(f64{B3} / f64{A3});
        R2 = Rounded(f64{B4} / f64{A4});
        A1 = A3;
        B1 = B3;
        A2 = A4;
        B2 = B4;
        if (R1 == R2)
            break;
    } while (m <= 25);
    const f64 k1 = Rounded((a + b) * x / (a + 1));
    const f64 k2 = Rounded((a + b + 1) * x / p);
    const f64 y = 1 - x;
    f64 f = Rounded(((a + b + 3) * y * f64{R2} - p) * (a + b + 2) * y / (b + 1));
    f = Rounded((f - p) * k2 / b);
    f = Rounded((f + 1) * k1 + 1);
    const f64 exponent =
        Rounded(f64{LogGamma(Rounded(a + b))} - f64{LogGamma(Rounded(a + 1))} - f64{LogGamma(b32)});
    return Rounded(std::pow(x, a) * std::pow(y, b) * f * std::exp(std::min(exponent, 75.0)) /
                   std::sqrt(6.283185308));
}

f32 UpperTail(f32 df1, f32 df2, f32 f) {
    const f64 x = Rounded(f64{df2} / (f64{df1} * f64{f} + f64{df2}));
    const f64 y = Rounded(std::sqrt(1 - x));
    const bool odd1 = std::fmod(f64{df1}, 2) != 0;
    const bool odd2 = std::fmod(f64{df2}, 2) != 0;
    const int e1 = odd1 ? 1 : 2;
    const int e2 = odd2 ? 1 : 2;
    f32 p = 0;
    f32 term = 0;
    if (odd1 && odd2) {
        p = Rounded(1 - 2 / 3.141592654 * std::atan(y / std::sqrt(x)));
        term = Rounded(y * std::sqrt(x) / 3.141592654);
    } else if (odd2) {
        p = Rounded(std::sqrt(x));
        term = Rounded((1 - x) * std::sqrt(x) / 2);
    } else if (odd1) {
        p = Rounded(1 - y);
        term = Rounded(y * x / 2);
    } else {
        p = Rounded(x);
        term = Rounded((1 - x) * x);
    }
    int u = e2;
    for (; static_cast<f32>(u) < df2; u += 2) {
        const f64 step = 2 * f64{term} / u;
        if (std::fabs(step) < 1e-5 * f64{p})
            break;
        p = Rounded(f64{p} - step);
        term = Rounded((static_cast<f64>(e1) / u + 1) * x * f64{term});
    }
    for (int i = e1; static_cast<f32>(i) < df1; i += 2) {
        const f64 step = 2 * f64{term} / i;
        if (std::fabs(step) < 1e-5 * f64{p})
            break;
        p = Rounded(f64{p} + step);
        term = Rounded((static_cast<f64>(u) / i + 1) * (1 - x) * f64{term});
    }
    return p;
}

f32 WholeQuantile(f32 p, f32 df1, f32 df2) {
    const f32 tail = Rounded(1 - f64{p});
    const auto value = [df1, df2](f64 w) { return Rounded((1 / w - 1) * f64{df2} / f64{df1}); };
    f32 low = 0, high = 1, w = 0.5F, previous = 0;
    do {
        if (UpperTail(df1, df2, value(f64{w})) <= tail)
            low = w;
        else
            high = w;
        previous = w;
        w = Rounded((f64{low} + f64{high}) / 2);
    } while (std::fabs(f64{w} - f64{previous}) > 1e-5 * f64{w});
    return value(f64{w});
}

// At most 10 degrees of freedom of the effect, whole; those of the error as they come.
f32 Quantile(f32 p, f32 df1, f32& df2) {
    df2 = std::min(df2, 999.0F);
    const f32 below = Rounded(std::floor(f64{df2}));
    const f32 share = Rounded(f64{df2} - f64{below});
    if (share == 0)
        return WholeQuantile(p, df1, df2);
    const f32 low = WholeQuantile(p, df1, below);
    const f32 high = WholeQuantile(p, df1, Rounded(f64{below} + 1));
    return Rounded((1 - f64{share}) * f64{low} + f64{share} * f64{high});
}

f32 Noncentral(f32 f, f32 df1, f32 df2, f32 lambda32) {
    const f64 lambda = std::max(lambda32, 1e-5F);
    const f64 scaled = f64{f} * f64{df1};
    if (lambda > 50) {
        const f64 sum = lambda + f64{df1};
        return FCdf(Rounded(scaled / sum), Rounded(sum * sum / (2 * lambda + f64{df1})), df2);
    }
    const f32 w = Rounded(scaled / (scaled + f64{df2}));
    const f64 none = std::exp(-lambda / 2);
    f64 power = 1;
    f64 sum = 0;
    for (i16 i = 0; i <= 100; ++i) {
        sum += power * none / Factorial(i) * f64{Beta(w, Rounded(f64{df1} / 2 + i), df2 / 2)};
        power *= lambda / 2;
    }
    return Rounded(sum);
}

struct Plan {
    f64 Level, Power, Effect, Sd, Groups, Ratio;

    f64 operator()(f64 size) const {
        const f64 n1 = Rounded(size);
        const f64 nk = Rounded(n1 * Ratio);
        const f64 total = Rounded((Groups - 1) * nk + n1);
        const f64 standardised = Rounded(Effect) / f64{Rounded(Sd)};
        const f32 lambda = Rounded(total * standardised * standardised);
        const f32 df1 = Rounded(Groups - 1);
        f32 df2 = Rounded(total - Groups);
        const f32 critical = Quantile(Rounded(1 - f64{Rounded(Level)}), df1, df2);
        return 1 - f64{Noncentral(critical, df1, df2, lambda)} - Power;
    }
};

f64 Root(const Plan& plan) {
    i16 iterations = 0;
    f64 root = 0;
    f64 residual = 0;
    FindRootOf(plan, ParMin(Kind::Size1), ParMax(Kind::Size1), 1e-5, 500, iterations, root,
               residual);
    return root;
}

} // namespace plain

void AnovaSizeByDriver(benchmark::State& state) {
    OpenPlan();
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
    if (SolveUnknown() != plain::Root({0.05, 0.80, 0.25, 1, groups, 1}))
        state.SkipWithError("not the same bits");
}
BENCHMARK(AnovaSizeByDriver)->Unit(benchmark::kMicrosecond);

// Each time another level, so that no quantile is known from the solve before.
void AnovaSizeOfNewLevelByDriver(benchmark::State& state) {
    OpenPlan();
    f64 level = 0.05;
    for (auto _ : state) {
        ParValue(LevelParNo) = level;
        level = level < 0.06 ? level + 1e-6 : 0.05;
        benchmark::DoNotOptimize(SolveUnknown());
    }
    if (SolveUnknown() != plain::Root({ParValue(LevelParNo), 0.80, 0.25, 1, groups, 1}))
        state.SkipWithError("not the same bits");
}
BENCHMARK(AnovaSizeOfNewLevelByDriver)->Unit(benchmark::kMicrosecond);

void AnovaSizeByPlainCode(benchmark::State& state) {
    plain::Plan plan{0.05, 0.80, 0.25, 1, groups, 1};
    for (auto _ : state) {
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(plain::Root(plan));
    }
}
BENCHMARK(AnovaSizeByPlainCode)->Unit(benchmark::kMicrosecond);

constexpr int gridX = 100;
const std::vector<f64> gridZ = {0.8, 0.9, 1, 1.1, 1.2};

// A table of 100 effects under 5 standard deviations.
void AnovaTableByCalcRun(benchmark::State& state) {
    OpenPlan(TableWindow);
    XParNo = PositionOf(Kind::SdOfMeans);
    ZParNo = PositionOf(Kind::Sd);
    ParXminText(Kind::SdOfMeans) = "0.2";
    ParXmaxText(Kind::SdOfMeans) = "0.695";
    ParXstepText(Kind::SdOfMeans) = "0.005";
    ParZValuesText(Kind::Sd) = "0.8 0.9 1 1.1 1.2";
    for (auto _ : state) {
        Calculated = False;
        CalcRun();
    }
    if (TableY.HighBound1() != gridX || TableY.HighBound2() != static_cast<int>(gridZ.size()))
        return state.SkipWithError("not the grid");
    for (int j = 1; j <= static_cast<int>(gridZ.size()); ++j)
        for (int k = 1; k <= gridX; ++k)
            if (TableY(k, j) !=
                plain::Rounded(plain::Root({0.05, 0.80, f64{TableX(k)},
                                            gridZ[static_cast<std::size_t>(j - 1)], groups, 1})))
                return state.SkipWithError("not the same bits");
}
BENCHMARK(AnovaTableByCalcRun)->Unit(benchmark::kMillisecond);

void AnovaTableByPlainCode(benchmark::State& state) {
    plain::Plan plan{0.05, 0.80, 0, 0, groups, 1};
    for (auto _ : state)
        for (const f64 sd : gridZ)
            for (int k = 0; k < gridX; ++k) {
                plan.Effect = 0.2 + 0.005 * k;
                plan.Sd = sd;
                benchmark::DoNotOptimize(plain::Root(plan));
            }
}
BENCHMARK(AnovaTableByPlainCode)->Unit(benchmark::kMillisecond);

} // namespace
