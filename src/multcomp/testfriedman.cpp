#include "multcomp/testfriedman.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simstudy.h"
#include "multcomp/normalmodel.h"
#include "multcomp/procedures.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/anovagrids.h"
#include "tests/lists/hypotheses.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace quorvanta {

namespace {

constexpr const char* treatmentHead = "Treatment";

i16 sdOfMeans;
i16 dimension;
NormalModel model;

Array1<f64> means;       // (1..k) of the treatments under H1
Array2<f64> factor;      // L, with L L' the covariance of a block
Array1<f64> observation; // (1..k) one block
Array1<f64> rankSums;    // (1..k) over the blocks so far

TestedMeans Treatments() {
    return {.Levels = dimension, .Head = treatmentHead};
}

// Those of the grid; without one equally spaced, in the order of the treatments.
void FindMeans(i16 k) {
    means.ReDim(1, k);
    const auto figures = FiguresOfMeans(k);
    const f64 step = ParValue(sdOfMeans) / std::sqrt((static_cast<f64>(k) * k - 1) / 12);
    for (i16 j = 1; j <= k; ++j)
        means(j) = figures ? figures->Means[static_cast<std::size_t>(j - 1)] : step * (j - 1);
}

// Ranks from 1 on within one block; equal observations share no rank, those before count as less.
void AddRanks() {
    const int k = observation.HighBound();
    for (int i = 1; i <= k; ++i) {
        int rank = 1;
        for (int j = 1; j <= k; ++j)
            if (observation(j) < observation(i) || (j < i && observation(j) == observation(i)))
                ++rank;
        rankSums(i) += rank;
    }
}

} // namespace

void TESTFRIEDMAN::SetupTest() {
    FixSamples(MoreSamples);
    SamplesShown = false;
    OfferTails({TwoSided});
    TailsShown = false;
    NormalModel::Offer();
}

void TESTFRIEDMAN::SetParList() {
    StartTestList();
    sdOfMeans = AddPar(Kind::SdOfMeans);
    model.Add();
    dimension = AddPar(Kind::NormalDimension);
    AddPar(Kind::VectorSize);
}

bool TESTFRIEDMAN::CheckPar() {
    return model.Check(dimension);
}

bool TESTFRIEDMAN::IsTablePar(i16 parNo) {
    return parNo == sdOfMeans;
}

std::vector<Grid> TESTFRIEDMAN::TableGrids(i16 /*parNo*/) {
    std::vector<Grid> grids = MeansGrids(Treatments());
    if (!grids.empty())
        for (Grid& grid : NormalModel::Grids(grids.front().Rows, treatmentHead))
            grids.push_back(std::move(grid));
    return grids;
}

f32 TESTFRIEDMAN::CalcTablePar(i16 /*parNo*/) {
    return Single(EffectFromGrids(Treatments(), AnovaEffectType::SdOfMeans));
}

void TESTFRIEDMAN::GetSimPar() {
    const i16 k = ToI16(ParValue(dimension));
    if (!model.Covariance(k) &&
        !ShowGrids(NormalModel::Grids(k, treatmentHead), ParLabel(Kind::SdOfMeans))) {
        Cancelled = True;
        return;
    }
    FindMeans(k);
    const std::optional<Array2<f64>> covariance = model.Covariance(k);
    if (!covariance || !McCholesky(*covariance, factor)) {
        Cancelled = True;
        return;
    }
    observation.ReDim(1, k);
    rankSums.ReDim(1, k);
}

void TESTFRIEDMAN::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    if (SimStage == 1)
        std::ranges::fill(rankSums.Raw(), 0.0);
    const int k = means.HighBound();
    RandSample.ReDim(0, n1 * k);
    RandNormal();
    for (int block = 0; block < n1; ++block) {
        for (int i = 1; i <= k; ++i) {
            f64 x = isH1 ? means(i) : 0;
            for (int j = 1; j <= i; ++j)
                x += factor(i, j) * f64{RandSample(block * k + j)};
            observation(i) = x;
        }
        AddRanks();
    }
}

// M. Friedman, Journal of the American Statistical Association 32, 1937, 675-701.
f32 TESTFRIEDMAN::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 < 1)
        return 1;
    const f64 n = n1;
    const f64 k = means.HighBound();
    f64 squares = 0;
    for (const f64 sum : rankSums.Raw()) {
        const f64 distance = sum - n * (k + 1) / 2;
        squares += distance * distance;
    }
    const f64 statistic = 12 * squares / (n * k * (k + 1));
    return Single(1 - f64{Chi2Cdf(Single(statistic), Single(k - 1))});
}

} // namespace quorvanta
