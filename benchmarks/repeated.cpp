// Repeated measurements: a search whose every trial value builds a covariance matrix and finds the
// eigenvalues of its contrasts, with 10 levels.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/kinds.h"
#include "core/search.h"
#include "core/setup.h"
#include "opening.h"
#include "output/format.h"
#include "tests/repeatedeq.h"

#include <benchmark/benchmark.h>
#include <map>

namespace {

using namespace quorvanta;

constexpr i16 oneWithin = 20;

void OpenPlan(CorrelationStructure structure, i16 unknownKind) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewTest(oneWithin);
    Choose(Group::EffectSize, 0);
    Choose(Group::CorrelationMatrix, static_cast<i16>(structure));
    AcceptOptions();
    const std::map<i16, f64> plan{{Kind::SignificanceLevel, 0.05},
                                  {Kind::Power, 0.85},
                                  {Kind::SdOfMeans, 0.2},
                                  {Kind::Sd, 1},
                                  {Kind::Correlation, 0.5},
                                  {Kind::WithinLevels, 10},
                                  {Kind::SizeFrom2, 50}};
    for (const auto& [kind, value] : plan) {
        ParValue(PositionOf(kind)) = value;
        ParText(kind) = Str(value);
    }
    UnknownParNo = PositionOf(unknownKind);
}

void Solve(benchmark::State& state, CorrelationStructure structure, i16 unknownKind) {
    OpenPlan(structure, unknownKind);
    for (auto _ : state)
        if (SolveUnknown() == NoValue) {
            state.SkipWithError("no solution");
            break;
        }
}

void SolveSizeOfAutoCorrelation(benchmark::State& state) {
    Solve(state, CorrelationStructure::AutoCorrelation, Kind::SizeFrom2);
}
BENCHMARK(SolveSizeOfAutoCorrelation)->Unit(benchmark::kMicrosecond);

void SolveCorrelationOfAutoCorrelation(benchmark::State& state) {
    Solve(state, CorrelationStructure::AutoCorrelation, Kind::Correlation);
}
BENCHMARK(SolveCorrelationOfAutoCorrelation)->Unit(benchmark::kMicrosecond);

void SolveEffectOfAutoCorrelation(benchmark::State& state) {
    Solve(state, CorrelationStructure::AutoCorrelation, Kind::SdOfMeans);
}
BENCHMARK(SolveEffectOfAutoCorrelation)->Unit(benchmark::kMicrosecond);

void SolveSizeOfCompoundSymmetry(benchmark::State& state) {
    Solve(state, CorrelationStructure::CompoundSymmetry, Kind::SizeFrom2);
}
BENCHMARK(SolveSizeOfCompoundSymmetry)->Unit(benchmark::kMicrosecond);

void EpsilonOfTenLevels(benchmark::State& state) {
    Array2<f64> s;
    ErrorTerms errors;
    for (auto _ : state) {
        RepArMatrix(10, 1, 0.5F, s, errors);
        benchmark::DoNotOptimize(errors);
    }
}
BENCHMARK(EpsilonOfTenLevels)->Unit(benchmark::kMicrosecond);

} // namespace
