// Group sequential designs: constants and powers by the program, and by the recursion step by step
// with the same search; a design's size and a table of sizes.
#include "groupseq/groupseq.h"

#include "../checks/support/groupseq_literal.h"
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/driver.h"
#include "core/fault.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/root.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "groupseq/boundaries.h"
#include "groupseq/boundchoice.h"
#include "groupseq/spending.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "opening.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace {

using namespace quorvanta;

// Equally spaced looks of a two-sided design at 0.05.
void OpenDesign(i16 type, i16 looks) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    ResetAnalysisState();
    NoOfTails = TwoSided;
    NoOfInterim = static_cast<i16>(looks - 1);
    ParValue(PowerParNo) = 0.8;
    BoundType = type;
    GsTestKind = GsMeans;
    SdValue = 1;
    CritReady = False;
    std::vector<f64> fractions;
    for (i16 k = 1; k <= looks; ++k)
        fractions.push_back(f64(k) / looks);
    SetAnalyses(fractions);
}

constexpr f32 Target = 0.975F;

void Solve() {
    CritReady = False;
    ForgetCritValues();
    f32 target = Target;
    GsCritValues(target);
}

// A run under another drift, so that nothing is left of the last search.
void DropStages() {
    CritReady = True;
    GsExitProb(0.5F, 1, false);
}

namespace plain {

f64 Root(f32 target) {
    i16 iterations = 0;
    f64 root = 0;
    f64 rest = 0;
    FindRootOf(
        [target](f64 c) {
            BoundC1 = Single(c);
            for (i16 k = 1; k <= NoOfAnal; ++k)
                if (BoundType <= BoundWangTsiatis)
                    UppBound(k) =
                        Single(std::pow(f64{IntTime(k)}, f64{BoundDelta} - 0.5) * f64{BoundC1});
                else if (k == NoOfAnal)
                    UppBound(k) = BoundC1;
            // A spending design of two tails asks for the exits of either boundary, too.
            return f64{literal::EitherTotal(0, true)} - f64{target};
        },
        1e-5, 8, RootTolerance, RootIterations, iterations, root, rest);
    return root;
}

void Prepare() {
    Info.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        Info(k) = IntTime(k);
        LowBound(k) = BoundBelowAll;
    }
}

f64 Constant() {
    Prepare();
    return Root(Single(1 - f64{Target}));
}

f64 Spending() {
    const f32 alpha = Single(1 - f64{Target});
    const i16 last = NoOfAnal;
    Prepare();
    const f32 first = GsSpend(IntTime(1), alpha, BoundType);
    UppBound(1) = NorInv(Single(1 - f64{MaxSingle(0.00001F, first)}));
    f32 spent = first;
    for (i16 k = 2; k <= last; ++k) {
        NoOfAnal = k;
        const f32 step = Single(f64{GsSpend(IntTime(k), alpha, BoundType)} -
                                f64{GsSpend(IntTime(k - 1), alpha, BoundType)});
        spent = Single(f64{spent} + f64{step});
        UppBound(k) = Single(Root(spent));
    }
    NoOfAnal = last;
    return f64{UppBound(last)};
}

} // namespace plain

void BM_Constant(benchmark::State& state) {
    OpenDesign(BoundOBrienFleming, static_cast<i16>(state.range(0)));
    Solve();
    for (auto _ : state) {
        state.PauseTiming();
        DropStages();
        state.ResumeTiming();
        Solve();
        benchmark::DoNotOptimize(BoundC1);
    }
}
BENCHMARK(BM_Constant)->Arg(5)->Unit(benchmark::kMicrosecond);

void BM_ConstantPlain(benchmark::State& state) {
    OpenDesign(BoundOBrienFleming, static_cast<i16>(state.range(0)));
    Solve();
    const f32 constant = BoundC1;
    for (auto _ : state)
        if (Single(plain::Constant()) != constant)
            state.SkipWithError("not the same bits");
}
BENCHMARK(BM_ConstantPlain)->Arg(5)->Unit(benchmark::kMicrosecond);

void BM_Spending(benchmark::State& state) {
    OpenDesign(BoundLanDeMetsOBrienFleming, static_cast<i16>(state.range(0)));
    Solve();
    for (auto _ : state) {
        state.PauseTiming();
        DropStages();
        state.ResumeTiming();
        Solve();
        benchmark::DoNotOptimize(BoundC1);
    }
}
BENCHMARK(BM_Spending)->Arg(5)->Arg(10)->Unit(benchmark::kMicrosecond);

void BM_SpendingPlain(benchmark::State& state) {
    OpenDesign(BoundLanDeMetsOBrienFleming, static_cast<i16>(state.range(0)));
    Solve();
    const f32 bound = UppBound(NoOfAnal);
    for (auto _ : state)
        if (Single(plain::Spending()) != bound)
            state.SkipWithError("not the same bits");
}
BENCHMARK(BM_SpendingPlain)->Arg(5)->Arg(10)->Unit(benchmark::kMicrosecond);

void OpenPower(i16 looks) {
    OpenDesign(BoundOBrienFleming, looks);
    Solve();
    CritReady = True;
    for (i16 k = 1; k <= NoOfAnal; ++k)
        LowBound(k) = -UppBound(k);
}

void BM_Power(benchmark::State& state) {
    OpenPower(static_cast<i16>(state.range(0)));
    f32 drift = 3;
    for (auto _ : state) {
        drift = drift > 4 ? 3.0F : drift + 0.001F; // nothing of the last run serves again
        benchmark::DoNotOptimize(GsExitProb(drift, 1, false));
    }
}
BENCHMARK(BM_Power)->Arg(5)->Unit(benchmark::kMicrosecond);

void BM_PowerPlain(benchmark::State& state) {
    OpenPower(static_cast<i16>(state.range(0)));
    const f32 power = GsExitProb(3, 1, false);
    for (auto _ : state)
        if (literal::EitherTotal(3, true) != power)
            state.SkipWithError("not the same bits");
}
BENCHMARK(BM_PowerPlain)->Arg(5)->Unit(benchmark::kMicrosecond);

// --- Sizes of a design --------------------------------------------------------------------------

constexpr i16 MenuMeans = 600;

// A window on one mean, two-sided at 0.05 with a power of 0.90, after equal steps; O'Brien and
// Fleming's boundaries, asked for as a user is.
void OpenMeans(i16 windowKind, i16 looks) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(windowKind);
    NewTest(MenuMeans);
    ChooseSamples(OneSample);
    ChooseTails(TwoSided);
    Choose(Group::H1Mean, 0);
    ChooseInterim(static_cast<i16>(looks - 1));
    const auto answer = [] {
        platform.BoundaryChoices.assign(1, [] {
            ChooseBoundType(BoundOBrienFleming);
            return AcceptBoundary();
        });
        platform.GridFillings.assign(1, [] { return !AcceptGrid().has_value(); });
    };
    answer();
    AcceptOptions();
    answer();
    ParText(Kind::H0Mean) = "0";
    ParText(Kind::H1Mean) = "0.5";
    ParText(Kind::Sd) = "1";
    ParText(Kind::SignificanceLevel) = "0.05";
    ParText(Kind::Power) = "0.9";
}

// Constants and size anew, as after a press on the label.
void BM_DesignSize(benchmark::State& state) {
    OpenMeans(CalculationWindow, static_cast<i16>(state.range(0)));
    const i16 size = PositionOf(Kind::Size);
    SolveFor(size);
    for (auto _ : state) {
        ForgetCritValues();
        Calculated = False;
        CalcUnknown();
        if (!(ParValue(size) > 0))
            state.SkipWithError("no size");
    }
}
BENCHMARK(BM_DesignSize)->Arg(5)->Unit(benchmark::kMicrosecond);

// 100 effects at 5 levels.
void BM_DesignTable(benchmark::State& state) {
    OpenMeans(TableWindow, static_cast<i16>(state.range(0)));
    SwapAxis(YRole, PositionOf(Kind::Size));
    SwapAxis(XRole, PositionOf(Kind::H1Mean));
    SwapAxis(ZRole, PositionOf(Kind::SignificanceLevel));
    TypedAxisText(AxisText::Xmin, "0.3");
    TypedAxisText(AxisText::Xmax, "1.29");
    TypedAxisText(AxisText::Xstep, "0.01");
    TypedAxisText(AxisText::ZValues, "0.01 0.02 0.05 0.1 0.2");
    RunOrCancel();
    for (auto _ : state) {
        ForgetCritValues();
        Calculated = False;
        RunOrCancel();
        if (TableY.HighBound1() != 100 || TableY.HighBound2() != 5)
            state.SkipWithError("no table");
    }
}
BENCHMARK(BM_DesignTable)->Arg(5)->Unit(benchmark::kMillisecond);

} // namespace
