#include "montecarlo/rankscores.h"

#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "numeric/sortind.h"
#include "numeric/variateblocks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace quorvanta {

std::span<const std::uint8_t> GroupsByRank() {
    // Both keep their memory between replicates.
    static Array1<i32> order;
    static std::vector<std::uint8_t> groups;
    const i32 n = SimStudy.Value.HighBound();
    SortIndex(SimStudy.Value, order, n);
    const auto positions = order.Raw();
    const auto group = SimStudy.Group.Raw();
    groups.resize(static_cast<std::size_t>(n));
    for (std::size_t rank = 0; rank < groups.size(); ++rank)
        groups[rank] = group[static_cast<std::size_t>(positions[rank] - 1)] == 2.0F ? 1 : 0;
    return groups;
}

namespace {

// How many are of group 1, if all of them stand before all of group 2, as in studies of one
// analysis they do; else 0.
std::size_t SizeOfFirstBefore(std::span<const f32> group) {
    const auto first = static_cast<std::size_t>(std::ranges::count(group, 1.0F));
    const auto inFront = static_cast<std::size_t>(std::ranges::count(group.first(first), 1.0F));
    return inFront == first ? first : 0;
}

} // namespace

// A few values are compared with each other rather than sorted: the ranks of group 2 are those
// within the group, and how many of group 1 come before, which equal ones do.
f32 RankSumOfGroup2() {
    constexpr std::size_t few = 128;
    const std::span<const f32> group = SimStudy.Group.Raw();
    const std::span<const f32> values = SimStudy.Value.Raw();
    const std::size_t n1 = group.size() <= 2 * few ? SizeOfFirstBefore(group) : 0;
    if (n1 > 0 && n1 <= few) {
        const std::size_t n2 = group.size() - n1;
        return static_cast<f32>(static_cast<i32>(n2 * (n2 + 1) / 2) +
                                CountPairsInOrder(values.first(n1), values.subspan(n1)));
    }
    f32 sum = 0;
    f32 rank = 0;
    for (const std::uint8_t isGroup2 : GroupsByRank()) {
        rank += 1.0F;
        sum += isGroup2 != 0 ? rank : 0.0F;
    }
    return sum;
}

RankStatistic RankSumMoments(i16 n1, i16 n2) {
    const f64 a{static_cast<f32>(n1)};
    const f64 b{static_cast<f32>(n2)};
    const f64 n = a + b;
    return {
        .Sum = 0, .Mean = Single(b * (n + 1) / 2), .Se = Single(std::sqrt(a * b * (n + 1) / 12))};
}

const RankScores::Table& RankScores::TableOf(i32 n) {
    const auto place = tables_.try_emplace(n);
    Table& table = place.first->second;
    if (!place.second)
        return table;
    f32 sum = 0;
    for (i32 rank = 1; rank <= n; ++rank) {
        table.Scores.push_back(Single(rule_(rank, n)));
        sum += table.Scores.back();
    }
    table.Mean = Single(f64{sum} / n);
    for (const f32 score : table.Scores) {
        const f64 distance = f64{score} - f64{table.Mean};
        table.Squares = Single(f64{table.Squares} + distance * distance);
    }
    return table;
}

RankStatistic RankScores::Statistic(i16 n1, i16 n2) {
    const auto groups = GroupsByRank();
    const Table& table = TableOf(static_cast<i32>(groups.size()));
    RankStatistic statistic;
    for (std::size_t i = 0; i < groups.size(); ++i)
        statistic.Sum += groups[i] != 0 ? table.Scores[i] : 0.0F;
    const f64 a{static_cast<f32>(n1)};
    const f64 b{static_cast<f32>(n2)};
    const f64 n = a + b;
    statistic.Mean = Single(b * f64{table.Mean});
    statistic.Se = Single(std::sqrt(a * b / (n * (n - 1)) * f64{table.Squares}));
    return statistic;
}

void RankSums(Array1<f32>& sums) {
    static Array1<i32> order; // keeps its memory between replicates
    std::ranges::fill(sums.Raw(), 0.0F);
    SortIndex(SimStudy.Value, order, SimStudy.Value.HighBound());
    f32 rank = 0;
    for (const i32 position : order.Raw()) {
        rank += 1.0F;
        sums(static_cast<int>(SimStudy.Group(position))) += rank;
    }
}

void OrderOfValues(Array1<i32>& order) {
    SortIndex(SimStudy.Value, order, SimStudy.Value.HighBound());
}

void RanksOf(const Array1<f32>& values, std::vector<f32>& ranks) {
    static Array1<i32> order; // keeps its memory between replicates
    SortIndex(values, order, values.HighBound());
    ranks.resize(values.Raw().size());
    f32 rank = 0;
    for (const i32 position : order.Raw())
        ranks[static_cast<std::size_t>(position - 1)] = rank += 1.0F;
}

} // namespace quorvanta
