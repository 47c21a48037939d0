// Critical values of multiple comparisons, beside the literal double sum: every point of the nested
// rule, the density of s at each of them. Both give the same 32 bits. And the decision on data sets
// with a family of ten hypotheses, all pairs of five groups, and its whole simulation: items are
// data sets.
#include "../checks/support/grid_filling.h"
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/root.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "multcomp/procedures.h"
#include "numeric/gamma0.h"
#include "numeric/integra2.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "opening.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace quorvanta {
namespace {

constexpr f32 Df = 30;
constexpr f32 Groups = 4;
constexpr f32 Alpha = 0.05F;

f64 LiteralIntegrand(i16 funcNo, f32 c, f64 x, f64 s) {
    const f64 k{Groups};
    const f64 density = NorDensity(Single(x));
    const f64 reach = std::sqrt(2.0) * f64{c} * s;
    switch (funcNo) {
    case Studentized::Dunnett:
        return density *
               std::pow(f64{NorCdf(Single(x + reach))} - f64{NorCdf(Single(x - reach))}, k - 1);
    case Studentized::Tukey:
        return k * density *
               std::pow(f64{NorCdf(Single(x))} - f64{NorCdf(Single(x - reach))}, k - 1);
    case Studentized::Best:
        return density * std::pow(f64{NorCdf(Single(x + reach))}, k - 1);
    default:
        return std::pow(f64{NorCdf(Single(f64{c} * s))} - f64{NorCdf(Single(-f64{c} * s))}, k);
    }
}

f64 LiteralDensity(f64 s) {
    const f64 d{Df};
    return 2 * d * s * f64{Chi2DensityRaw(Single(d * s * s), Df)};
}

f32 LiteralProbability(i16 funcNo, f32 c) {
    const auto integrand = [funcNo, c](f64 x, f64 s) {
        return LiteralIntegrand(funcNo, c, x, s) * LiteralDensity(s);
    };
    return Single(funcNo == Studentized::MaximumModulus
                      ? NestedSimpson(integrand, 0, 1, 1, SUpper, 30)
                      : NestedSimpson(integrand, -10, 10, 30, SUpper, 50));
}

f32 LiteralQuantile(i16 funcNo) {
    i16 iterations = 0;
    f64 root = 0;
    f64 residual = 0;
    FindRootOf(
        [funcNo](f64 c) { return f64{LiteralProbability(funcNo, Single(c))} - (1 - f64{Alpha}); },
        1, 5, RootTolerance, RootIterations, iterations, root, residual);
    return Single(root);
}

// Another level each time: the last quantile is kept.
f32 Quantile(i16 funcNo) {
    FamilyGroups = Groups;
    SizeRatio = 1;
    QuantileIntegral(Df, 2 * Alpha, funcNo);
    return QuantileIntegral(Df, Alpha, funcNo);
}

void Literal(benchmark::State& state) {
    const auto funcNo = static_cast<i16>(state.range(0));
    if (LiteralQuantile(funcNo) != Quantile(funcNo))
        state.SkipWithError("not the same 32 bits");
    for (auto _ : state)
        benchmark::DoNotOptimize(LiteralQuantile(funcNo));
}

void Fast(benchmark::State& state) {
    const auto funcNo = static_cast<i16>(state.range(0));
    FamilyGroups = Groups;
    SizeRatio = 1;
    f32 alpha = Alpha;
    for (auto _ : state) {
        alpha = std::nextafter(alpha, 1.0F); // another question each time: the last one is kept
        benchmark::DoNotOptimize(QuantileIntegral(Df, alpha, funcNo));
    }
}

BENCHMARK(Literal)
    ->Arg(Studentized::Dunnett)
    ->Arg(Studentized::Tukey)
    ->Arg(Studentized::Best)
    ->Arg(Studentized::MaximumModulus)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Fast)
    ->Arg(Studentized::Dunnett)
    ->Arg(Studentized::Tukey)
    ->Arg(Studentized::Best)
    ->Arg(Studentized::MaximumModulus)
    ->Unit(benchmark::kMillisecond);

void Decision(benchmark::State& state) {
    IsTest = True;
    TestNo = 139; // all pairs
    NoOfTails = TwoSided;
    constexpr i16 groups = 5;
    constexpr f64 n = 20;
    constexpr f32 df = 95;
    McStandardContrasts(groups);
    for (i16 i = 1; i <= groups; ++i)
        H1Means(i) = 0.3F * static_cast<f32>(i);
    McMarkNulls();
    McDefaultFamilies({0.05F}, static_cast<i16>(state.range(0)));
    McAllCrit({df});
    const std::vector<f64> sizes(groups, n);
    std::vector<f64> means{0.05, 0.25, 0.7, 0.9, 1.55};
    Array1<f32> z(1, NoOfTests);
    for (auto _ : state) {
        means[0] = -means[0]; // another data set each time
        McGroupStatistics(means, sizes, 95, z);
        benchmark::DoNotOptimize(McRunOne(z, 1, df, UnderH1));
    }
    state.SetItemsProcessed(state.iterations());
}
// The whole simulation of such a family, data sets under H0 and H1: 20 subjects in each group.
void SimulatedFamily(benchmark::State& state) {
    constexpr i16 menuPairs = 701;
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(SimulationWindow);
    NewTest(menuPairs);
    ChooseAdjustMethod(static_cast<i16>(state.range(0)));
    AcceptOptions();
    TypedParText(PositionOf(Kind::Sd), "1");
    TypedParText(PositionOf(Kind::LevelsA), "5");
    TypedParText(PositionOf(Kind::SizePerGroup), "20");
    platform.GridFillings = {[] {
        return checks::FillCurrentGrid({{"0"}, {"0.2"}, {"0.4"}, {"0.6"}, {"0.8"}});
    }};
    MaxNoOfSimText = "1";
    SeedText = "1";
    SimStart();
    f32 p = 1;
    for (auto _ : state)
        for (const i16 isH1 : {i16{0}, i16{1}}) {
            SimStage = 0;
            SelSimStatistic(p, isH1);
            benchmark::DoNotOptimize(p);
        }
    state.SetItemsProcessed(2 * state.iterations());
    if (OutputReady == False)
        state.SkipWithError("the simulation did not start");
}
BENCHMARK(SimulatedFamily)
    ->Arg(Adjust::Bonferroni)
    ->Arg(Adjust::JointOrScheffe)
    ->Arg(Adjust::Holm)
    ->Arg(Adjust::Hochberg);

BENCHMARK(Decision)->Arg(Adjust::Bonferroni)->Arg(Adjust::Holm)->Arg(Adjust::Hochberg);

} // namespace
} // namespace quorvanta
