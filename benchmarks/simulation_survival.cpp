// Replicates per second (items_per_second) of the simulated log-rank test of two groups of 100 with
// uniform accrual and losses; one replicate is a study under H0 and one under H1, each drawn, cut
// at the study time and tested. Beside it the plain way to write the same down: a logarithm of the
// library for each draw, vectors of one study, std::sort of an index.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/survivalsim.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "tests/powereq.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <numeric>
#include <vector>

namespace quorvanta {
namespace {

constexpr i16 groupSize = 100;
constexpr f32 lossRate = 0.1F;
constexpr f32 accrual = 2;
constexpr f32 study = 5;
constexpr f32 hazard1 = 0.3F;
constexpr f32 hazard2 = 0.45F;
constexpr f32 level = 0.05F;

void Restart() {
    NoOfTails = 2;
    Rnd(-1.0);
    Randomize(1.0);
}

void Prepare(SurvivalMethod method, i16 distrNo = SimExponential) {
    SurvivalPlan plan;
    plan.Method = method;
    plan.DistrNo = distrNo;
    plan.Shape = 2;
    SurvivalStratum& groups = plan.Strata.front();
    groups.NullScale1 = groups.NullScale2 = groups.Scale1 = 1 / hazard1;
    groups.Scale2 = 1 / hazard2;
    groups.Loss1 = groups.Loss2 = lossRate;
    plan.AccrualTime = accrual;
    plan.StudyTime = study;
    plan.IntervalStarts = {0, 0.5, 1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5};
    SimSurvival = plan;
    SimStage = 1;
    Restart();
}

void Measure(benchmark::State& state, SurvivalMethod method, i16 distrNo = SimExponential) {
    Prepare(method, distrNo);
    int rejected = 0;
    for (auto _ : state)
        for (const bool isH1 : {false, true}) {
            SimSurvivalSample(groupSize, groupSize, isH1);
            rejected += SimSurvivalTest(groupSize, groupSize) < level ? 1 : 0;
        }
    benchmark::DoNotOptimize(rejected);
    state.SetItemsProcessed(state.iterations());
}

void LogRank(benchmark::State& state) {
    Measure(state, SurvivalMethod::LogRank);
}
void LogRankWeibull(benchmark::State& state) {
    Measure(state, SurvivalMethod::LogRank, SimWeibull);
}
void Gehan(benchmark::State& state) {
    Measure(state, SurvivalMethod::Gehan);
}
void CoxMantel(benchmark::State& state) {
    Measure(state, SurvivalMethod::CoxMantel);
}
void Peto(benchmark::State& state) {
    Measure(state, SurvivalMethod::Peto);
}
void CoxF(benchmark::State& state) {
    Measure(state, SurvivalMethod::CoxF);
}
void LifeTable(benchmark::State& state) {
    Measure(state, SurvivalMethod::LifeTable);
}
void RateRatio(benchmark::State& state) {
    Measure(state, SurvivalMethod::LogRateRatio);
}

struct PlainSubject {
    double Time;
    bool IsEvent;
    int Group;
};

void PlainGroup(std::vector<PlainSubject>& subjects, int group, double hazard) {
    for (int i = 0; i < groupSize; ++i) {
        const double event = -std::log(1.0 - static_cast<double>(Rnd())) / hazard;
        const double entry = static_cast<double>(Rnd()) * static_cast<double>(accrual);
        const double lost =
            -std::log(1.0 - static_cast<double>(Rnd())) / static_cast<double>(lossRate);
        const double followed = static_cast<double>(study) - entry;
        const double time = std::min(std::min(event, lost), followed);
        subjects.push_back({time, event <= lost && event < followed, group});
    }
}

double PlainLogRank(bool isH1) {
    std::vector<PlainSubject> subjects;
    PlainGroup(subjects, 1, static_cast<double>(hazard1));
    PlainGroup(subjects, 2, static_cast<double>(isH1 ? hazard2 : hazard1));
    std::vector<std::size_t> order(subjects.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&subjects](std::size_t a, std::size_t b) {
        return subjects[a].Time < subjects[b].Time;
    });
    const double n = static_cast<double>(subjects.size());
    double hazard = 0;
    double sum = 0;
    double squares = 0;
    double risk = n;
    for (const std::size_t i : order) {
        if (subjects[i].IsEvent)
            hazard += 1 / risk;
        const double score = (subjects[i].IsEvent ? 1 : 0) - hazard;
        squares += score * score;
        if (subjects[i].Group == 2)
            sum += score;
        risk -= 1;
    }
    return sum / std::sqrt(groupSize * groupSize * squares / (n * (n - 1)));
}

void PlainVersion(benchmark::State& state) {
    Restart();
    int rejected = 0;
    for (auto _ : state)
        for (const bool isH1 : {false, true}) {
            const f32 z = static_cast<f32>(PlainLogRank(isH1));
            rejected += NorPValue(z, 0, 1, 0, 0, 0) < level ? 1 : 0;
        }
    benchmark::DoNotOptimize(rejected);
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(LogRank);
BENCHMARK(PlainVersion);
BENCHMARK(LogRankWeibull);
BENCHMARK(Gehan);
BENCHMARK(CoxMantel);
BENCHMARK(Peto);
BENCHMARK(CoxF);
BENCHMARK(LifeTable);
BENCHMARK(RateRatio);

} // namespace
} // namespace quorvanta
