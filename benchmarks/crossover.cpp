// The largest general crossover design, ten sequences of ten periods and ten treatments with
// carryover: what its grid derives, and that with the sample size solved from it.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/search.h"
#include "core/setup.h"
#include "core/values.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

using namespace quorvanta;

constexpr i16 menuAdditive = 240;
constexpr i16 lines = 10;

i16 PositionOf(i16 kind) {
    i16 i = 0;
    while (ParKind(i) != kind)
        ++i;
    return i;
}

ScriptedPlatform& OpenPlan() {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewTest(menuAdditive);
    for (i16 i = 0; i < NoOfCheck; ++i)
        ChooseCheck(i, CheckList(i) == Check::Carryover);
    AcceptOptions();
    for (const i16 kind : {Kind::NoOfSequences, Kind::NoOfPeriods, Kind::NoOfTreatments})
        ParText(kind) = std::to_string(lines);
    return platform;
}

// A Williams square, and means that rise from treatment to treatment.
bool FillDesign() {
    for (i16 i = 1; i <= lines; ++i)
        for (i16 j = 1; j <= lines; ++j) {
            const int step = j / 2 * (j % 2 == 0 ? 1 : -1);
            GridOK(i, j, std::to_string((i + step + lines) % lines + 1), Leaving::Nothing);
        }
    return !AcceptGrid();
}

bool FillMeans() {
    for (i16 j = 1; j <= lines; ++j)
        GridOK(1, j, "0." + std::to_string(9 + j), Leaving::Nothing);
    return !AcceptGrid();
}

void FillGrids(ScriptedPlatform& platform) {
    platform.GridFillings = {FillDesign, FillMeans};
    GetFromTable(PositionOf(Kind::MahalanobisDistance));
}

void CrossoverDistanceOfAFilledGrid(benchmark::State& state) {
    ScriptedPlatform& platform = OpenPlan();
    FillGrids(platform);
    const i16 distance = PositionOf(Kind::MahalanobisDistance);
    for (auto _ : state)
        benchmark::DoNotOptimize(SelCalcTablePar(distance));
}
BENCHMARK(CrossoverDistanceOfAFilledGrid)->Unit(benchmark::kMicrosecond);

void CrossoverGridAndSize(benchmark::State& state) {
    ScriptedPlatform& platform = OpenPlan();
    const i16 size = PositionOf(Kind::SizePerSequence);
    for (auto _ : state) {
        FillGrids(platform);
        SolveFor(size);
    }
    if (!HasValue(ParText(Kind::SizePerSequence)))
        state.SkipWithError("no size");
}
BENCHMARK(CrossoverGridAndSize)->Unit(benchmark::kMicrosecond);

} // namespace
