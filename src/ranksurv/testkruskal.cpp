#include "ranksurv/testkruskal.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/anovagrids.h"
#include "tests/lists/hypotheses.h"

#include <cmath>
#include <cstddef>
#include <string>

namespace quorvanta {

namespace {

i16 sdOfLocations;
i16 scale;
i16 groups;
SampleValues sizes;
Array1<f32> locations; // (1..k) of the groups under H1

// The means of the analyses of variance stand in the same grid.
TestedMeans Tested() {
    return {.Levels = groups, .Head = "Group"};
}

i16 NoOfGroupsHere() {
    return ToI16(ParValue(groups));
}

// Those of the grid; without one equally spaced, in the order of the groups, with the standard
// deviation that was typed.
void FindLocations() {
    const i16 k = NoOfGroupsHere();
    locations.ReDim(1, k);
    if (const auto figures = FiguresOfMeans(k)) {
        for (i16 j = 1; j <= k; ++j)
            locations(j) = Single(figures->Means[static_cast<std::size_t>(j - 1)]);
        return;
    }
    const f64 step = ParValue(sdOfLocations) / std::sqrt((static_cast<f64>(k) * k - 1) / 12);
    for (i16 j = 1; j <= k; ++j)
        locations(j) = Single(step * (j - 1));
}

f64 SizeOf(i16 group, i16 n1, i16 n2) {
    return group == 1 ? f64{static_cast<f32>(n1)} : f64{static_cast<f32>(n2)};
}

} // namespace

void RankGroupsTest::SetupTest() {
    FixSamples(MoreSamples);
    OfferTails({TwoSided});
    OfferGroups({Group::SizeK});
}

void RankGroupsTest::SetParList() {
    StartTestList();
    sdOfLocations = AddPar(Kind::SdOfMeans);
    scale = AddPar(Kind::Sd);
    groups = AddPar(Kind::NoOfGroups);
    sizes = AddPair(GroupSizeKinds);
}

bool RankGroupsTest::CheckPar() {
    return sizes.Check();
}

bool RankGroupsTest::IsTablePar(i16 parNo) {
    return parNo == sdOfLocations || parNo == scale;
}

std::vector<Grid> RankGroupsTest::TableGrids(i16 /*parNo*/) {
    return MeansGrids(Tested());
}

std::optional<DistrList> RankGroupsTest::TableDistr(i16 parNo) {
    return parNo == scale ? std::optional(DistrList::ShiftModels) : std::nullopt;
}

f32 RankGroupsTest::CalcTablePar(i16 parNo) {
    return parNo == scale ? Single(ParValue(scale))
                          : Single(EffectFromGrids(Tested(), AnovaEffectType::SdOfMeans));
}

// Under H0 all groups have location 0.
std::vector<NamedDistr> RankGroupsTest::GroupDistr() {
    GetSimPar();
    std::vector<NamedDistr> rows = {{"H0", SimulatedDistr(0, SimScale1)}};
    for (i16 j = 1; j <= locations.HighBound(); ++j)
        rows.emplace_back("Group " + std::to_string(j), SimulatedDistr(locations(j), SimScale1));
    return rows;
}

void RankGroupsTest::GetSimPar() {
    SimulateFamily(DistrList::ShiftModels);
    SimScale1 = Single(ParValue(scale));
    FindLocations();
}

void RankGroupsTest::SimSample(i16 n1, i16 n2, bool isH1) {
    for (i16 j = 1; j <= locations.HighBound(); ++j)
        SimOneSample(j == 1 ? n1 : n2, static_cast<f32>(j), isH1 ? locations(j) : 0.0F, SimScale1);
}

// W. H. Kruskal and W. A. Wallis, Journal of the American Statistical Association 47, 1952,
// 583-621.
f32 TESTKRUSKAL::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || n2 == 0)
        return 1;
    static Array1<f32> sums; // keeps its memory between replicates
    const i16 k = static_cast<i16>(locations.HighBound());
    sums.ReDim(1, k);
    RankSums(sums);
    const f64 n = SizeOf(1, n1, n2) + SizeOf(2, n1, n2) * (k - 1);
    f64 h = 0;
    for (i16 j = 1; j <= k; ++j) {
        const f64 nj = SizeOf(j, n1, n2);
        const f64 distance = f64{sums(j)} - nj * (n + 1) / 2;
        h += distance * distance / nj;
    }
    h *= 12 / (n * (n + 1));
    return Single(1 - f64{Chi2Cdf(Single(h), static_cast<f32>(k - 1))});
}

// The pairs of observations of two groups of which the later one has the larger (T. J. Terpstra,
// Indagationes Mathematicae 14, 1952, 327-333; A. R. Jonckheere, Biometrika 41, 1954, 133-145).
// Against an order in which the groups increase, whatever the tails.
f32 TESTJONCKTERP::SimTest(i16 n1, i16 n2) {
    if (n1 == 0 || n2 == 0)
        return 1;
    static Array1<i32> order; // both keep their memory between replicates
    static Array1<i32> seen;
    const i16 k = static_cast<i16>(locations.HighBound());
    OrderOfValues(order);
    seen.ReDim(1, k);
    f64 concordant = 0;
    for (const i32 position : order.Raw()) {
        const int group = static_cast<int>(SimStudy.Group(position));
        for (int earlier = 1; earlier < group; ++earlier)
            concordant += seen(earlier);
        ++seen(group);
    }
    f64 n = 0;
    f64 squares = 0;
    f64 cubes = 0;
    for (i16 j = 1; j <= k; ++j) {
        const f64 nj = SizeOf(j, n1, n2);
        n += nj;
        squares += nj * nj;
        cubes += nj * nj * (2 * nj + 3);
    }
    const f64 mean = (n * n - squares) / 4;
    const f64 variance = (n * n * (2 * n + 3) - cubes) / 72;
    return Single(1 - f64{NorCdf(Single((concordant - mean) / std::sqrt(variance)))});
}

} // namespace quorvanta
