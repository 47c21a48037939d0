// The life-table test, solved for a sample size and for a hazard by the driver: two years of
// accrual, five years of study, and a hundred intervals.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/search.h"
#include "core/setup.h"
#include "output/format.h"

#include <benchmark/benchmark.h>
#include <map>

namespace {

using namespace quorvanta;

constexpr i16 menuExponential = 390;
constexpr i16 menuGamma = 392;

i16 PositionOf(i16 kind) {
    i16 i = 0;
    while (ParKind(i) != kind)
        ++i;
    return i;
}

void OpenPlan(i16 menuNo, i16 unknownKind) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewTest(menuNo);
    AcceptOptions();
    const std::map<i16, f64> values{{Kind::SignificanceLevel, 0.05},
                                    {Kind::Power, 0.80},
                                    {Kind::H1Rate1, 0.5},
                                    {Kind::H1Rate2, 0.8},
                                    {Kind::H1Median1, 1.5},
                                    {Kind::H1Median2, 2.4},
                                    {Kind::GammaShape, 2.5},
                                    {Kind::LossRate1, 0.1},
                                    {Kind::LossRate2, 0.1},
                                    {Kind::AccrualRate, 0},
                                    {Kind::AccrualTime, 2},
                                    {Kind::TotalStudyTime, 5},
                                    {Kind::IntervalLength, 0.05},
                                    {Kind::Size1, 60},
                                    {Kind::Size2, 80}};
    for (i16 i = 0; i <= NoOfPar; ++i) {
        ParValue(i) = values.at(ParKind(i));
        ParText(ParKind(i)) = Str(ParValue(i));
    }
    UnknownParNo = PositionOf(unknownKind);
}

// Each time another loss rate, so that nothing is known from the solve before.
void Solve(benchmark::State& state, i16 menuNo, i16 unknownKind) {
    OpenPlan(menuNo, unknownKind);
    const i16 losses = PositionOf(Kind::LossRate1);
    for (auto _ : state) {
        ParValue(losses) = ParValue(losses) < 0.2 ? ParValue(losses) + 1e-6 : 0.1;
        benchmark::DoNotOptimize(SolveUnknown());
    }
}

BENCHMARK_CAPTURE(Solve, LifeTableSize, menuExponential, Kind::Size1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Solve, LifeTableHazard, menuExponential, Kind::H1Rate2)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Solve, LifeTableSizeOfGamma, menuGamma, Kind::Size1)
    ->Unit(benchmark::kMicrosecond);

} // namespace
