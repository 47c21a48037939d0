#include "montecarlo/rankscores.h"

#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "numeric/sortind.h"

#include <cmath>
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

f32 RankSumOfGroup2() {
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

} // namespace quorvanta
