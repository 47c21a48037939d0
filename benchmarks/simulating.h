// What benchmarks of simulations prepare, and the plain version that they are held against.
#pragma once

#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "numeric/rnd.h"
#include "opening.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <string>
#include <vector>

namespace quorvanta {

// Prepares the simulation of a test of two samples, with its start values but the sizes.
inline void PrepareTwoSamples(i16 menuNo, int size) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(SimulationWindow);
    NewTest(menuNo);
    AcceptOptions();
    TypedParText(PositionOf(Kind::Size1), std::to_string(size));
    TypedParText(PositionOf(Kind::Size2), std::to_string(size));
    MaxNoOfSimText = "1";
    SeedText = "1";
    SimStart();
}

// Replicates of what was prepared: a study under H0 and one under H1, without the loop around.
inline void MeasureReplicates(benchmark::State& state) {
    f32 p = 0;
    for (auto _ : state)
        for (const i16 isH1 : {i16{0}, i16{1}}) {
            SimStage = 0;
            SelSimStatistic(p, isH1);
            benchmark::DoNotOptimize(p);
        }
    state.SetItemsProcessed(state.iterations());
}

// The logarithm and the cosine of the C library for each draw.
inline f64 PlainNormal() {
    const f64 u{Rnd()};
    const f64 v{Rnd()};
    return std::sqrt(-2 * std::log(u + 1e-10)) * std::cos(2 * 3.141592653589793 * v);
}

// A sample in an array of its own.
inline std::vector<f64> PlainSample(int size, f64 mean) {
    std::vector<f64> sample(static_cast<std::size_t>(size));
    for (f64& x : sample)
        x = mean + PlainNormal();
    return sample;
}

} // namespace quorvanta
