// The t-test's sample size, solved by the driver and by a plain straight-line rendering of the same
// equations, in one process: the ratio is the price of the program's generality.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/run.h"
#include "core/search.h"
#include "core/setup.h"
#include "opening.h"
#include "output/format.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace {

using namespace quorvanta;

constexpr i16 kindSd = 2;
constexpr i16 kindSize1 = 4;
constexpr i16 kindDifference = 62;

// The unpaired two-sided test: level 0.05, power 0.80, difference 0.5, standard deviation 1.
void OpenPlan(i16 windowKind = CalculationWindow) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(windowKind);
    NewTest(0);
    Choose(1, 1);
    Choose(2, 2);
    AcceptOptions();
    const f64 values[] = {0.05, 0.80, 0, 0.5, 1, 30, 1};
    for (i16 i = 0; i <= NoOfPar; ++i) {
        ParValue(i) = values[i];
        ParText(ParKind(i)) = Str(values[i]);
    }
    UnknownParNo = PositionOf(kindSize1);
}

namespace plain {

// Everything that the program computes for this test, written out as one would by hand: no state,
// no dispatch, no checks, the same roundings. The equation is kept whole: the compiler would take
// the quantile, which is the same at every trial value, out of the search, and the comparison would
// be with another method and not with the price of generality.
double Cdf(float z) {
    const double x = z;
    const double a = std::fabs(x);
    if (a >= 10)
        return x > 0 ? 1 : 0;
    const float t = static_cast<float>(1 / (1 + 0.2316419 * a));
    const double w = t;
    const float q =
        static_cast<float>(((1.061405429 * w - 1.453152027) * w + 1.421413741) * w - 0.284496736);
    const double s = 1 - (static_cast<double>(q) * w + 0.254829592) * (w * std::exp(-x * x / 2));
    return static_cast<float>(((x > 0 ? s : (x < 0 ? -s : 0)) + 1) / 2);
}

float Quantile(float probability) {
    const double p = probability;
    const double m = 0.5 - std::fabs(0.5 - p);
    const double t = static_cast<float>(std::sqrt(-2 * std::log(m)));
    const double n = (0.010328 * t + 0.802853) * t + 2.515517;
    const double d = ((0.001308 * t + 0.189269) * t + 1.432788) * t + 1;
    return static_cast<float>(p < 0.5 ? -(t - n / d) : t - n / d);
}

double StudentQuantile(float p, double df) {
    const double z = Quantile(p);
    const double s = static_cast<float>(z * z);
    const float g1 = static_cast<float>((s + 1) / 4);
    const float g2 = static_cast<float>(((5 * s + 16) * s + 3) / 96);
    const float g3 = static_cast<float>((((3 * s + 19) * s + 17) * s - 15) / 384);
    const float g4 =
        static_cast<float>(((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160);
    return static_cast<float>(z * ((((static_cast<double>(g4) / df + static_cast<double>(g3)) / df +
                                     static_cast<double>(g2)) /
                                        df +
                                    static_cast<double>(g1)) /
                                       df +
                                   1));
}

double Noncentral(double t, double df, float delta) {
    return Cdf(static_cast<float>((t * (1 - 1 / (4 * df)) - static_cast<double>(delta)) /
                                  std::sqrt(1 + t * t / (2 * df))));
}

struct Plan {
    double Level, Power, Effect, Sd, Ratio;

    [[gnu::noinline]] double operator()(double size) const {
        const double n1 = static_cast<float>(size);
        const double n2 = static_cast<float>(n1 * Ratio);
        const double se = static_cast<float>(Sd * std::sqrt(1 / n1 + 1 / n2));
        const double df = static_cast<float>(n1 + n2 - 2);
        const float alpha = static_cast<float>(Level);
        const double t =
            StudentQuantile(static_cast<float>(1 - static_cast<double>(alpha) / 2), df);
        const float shift = static_cast<float>(Effect / se);
        return 1 - Noncentral(t, df, shift) + Noncentral(-t, df, shift) - Power;
    }
};

double Root(const Plan& f, double x1, double x2) {
    double e = 0, d = 0, a = x1, b = x2, c = 0;
    double fa = f(a), fb = f(b), fc = fb;
    for (int i = 0; i < 500; ++i) {
        if (fc * fb > 0) {
            c = a;
            fc = fa;
            e = d = b - a;
        }
        if (std::fabs(fc) < std::fabs(fb)) {
            a = b;
            b = c;
            c = a;
            fa = fb;
            fb = fc;
            fc = fa;
        }
        const double tol = 2e-10 * std::fabs(b) + 0.5e-5;
        const double xm = 0.5 * (c - b);
        if (std::fabs(xm) <= tol || fb == 0)
            break;
        double p = 0, q = 0;
        bool take = false;
        if (std::fabs(e) >= tol && std::fabs(fa) > std::fabs(fb)) {
            const double s = fb / fa;
            if (a == c) {
                p = 2 * xm * s;
                q = 1 - s;
            } else {
                q = fa / fc;
                const double r = fb / fc;
                p = s * (2 * xm * q * (q - r) - (b - a) * (r - 1));
                q = (q - 1) * (r - 1) * (s - 1);
            }
            if (p > 0)
                q = -q;
            p = std::fabs(p);
            const float m1 = static_cast<float>(std::fabs(e * q));
            const float m2 = static_cast<float>(3 * xm * q - std::fabs(tol * q));
            take = static_cast<float>(2 * p) < (m2 > m1 ? m2 : m1);
        }
        e = take ? d : xm;
        d = take ? p / q : xm;
        a = b;
        fa = fb;
        b += std::fabs(d) > tol ? d : (xm >= 0 ? tol : -tol);
        fb = f(b);
    }
    return b;
}

} // namespace plain

void SolveByDriver(benchmark::State& state) {
    OpenPlan();
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
}
BENCHMARK(SolveByDriver);

void SolveByPlainCode(benchmark::State& state) {
    plain::Plan plan{0.05, 0.80, 0.5, 1, 1};
    for (auto _ : state) {
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(plain::Root(plan, 3, 99999));
    }
}
BENCHMARK(SolveByPlainCode);

void FiveHundredByDriver(benchmark::State& state) {
    OpenPlan();
    for (auto _ : state)
        for (int i = 0; i < 500; ++i) {
            ParValue(3) = 0.1 + 0.001 * i;
            benchmark::DoNotOptimize(SolveUnknown());
        }
}
BENCHMARK(FiveHundredByDriver)->Unit(benchmark::kMicrosecond);

// The grid of a table: 100 differences under 5 standard deviations.
constexpr int gridX = 100;
const std::vector<f64> gridZ = {0.8, 0.9, 1, 1.1, 1.2};

// All points of a table without the table: the solves alone.
void BareSolvesOfATable(benchmark::State& state) {
    OpenPlan();
    for (auto _ : state)
        for (const f64 sd : gridZ)
            for (int k = 0; k < gridX; ++k) {
                ParValue(PositionOf(kindDifference)) = 0.3 + 0.005 * k;
                ParValue(PositionOf(kindSd)) = sd;
                benchmark::DoNotOptimize(SolveUnknown());
            }
}
BENCHMARK(BareSolvesOfATable)->Unit(benchmark::kMicrosecond);

// The same points by the road of a table or graph, with its check of every point first and its
// look at the clock after each.
void TableByCalcRun(benchmark::State& state) {
    OpenPlan(TableWindow);
    XParNo = PositionOf(kindDifference);
    ZParNo = PositionOf(kindSd);
    ParXminText(kindDifference) = "0.3";
    ParXmaxText(kindDifference) = "0.795";
    ParXstepText(kindDifference) = "0.005";
    ParZValuesText(kindSd) = "0.8 0.9 1 1.1 1.2";
    for (auto _ : state) {
        Calculated = False;
        CalcRun();
    }
    if (TableY.HighBound1() != gridX || TableY.HighBound2() != static_cast<int>(gridZ.size()))
        state.SkipWithError("not the grid");
}
BENCHMARK(TableByCalcRun)->Unit(benchmark::kMicrosecond);

void FiveHundredByPlainCode(benchmark::State& state) {
    plain::Plan plan{0.05, 0.80, 0.5, 1, 1};
    for (auto _ : state)
        for (int i = 0; i < 500; ++i) {
            plan.Effect = 0.1 + 0.001 * i;
            benchmark::DoNotOptimize(plain::Root(plan, 3, 99999));
        }
}
BENCHMARK(FiveHundredByPlainCode)->Unit(benchmark::kMicrosecond);

} // namespace
