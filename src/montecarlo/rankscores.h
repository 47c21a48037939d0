// Linear rank statistics of the simulated study: sums over group 2 of scores of the ranks.
//
// Ranks are positions in the order of the pooled values. Equal values keep the order in which they
// were drawn: there are no mid-ranks.
#pragma once

#include "core/types.h"

#include <cstdint>
#include <span>

namespace quorvanta {

// A statistic with its mean and standard error without a difference between the groups.
struct RankStatistic {
    f32 Sum = 0;
    f32 Mean = 0;
    f32 Se = 0;
};

// The groups of the pooled values of SimStudy in the order of the values: 1 for group 2, 0 for
// group 1. Valid until the next call.
std::span<const std::uint8_t> GroupsByRank();

// The sum of the ranks of group 2, added up in 32 bits in their order.
f32 RankSumOfGroup2();

// Mean n2 (N + 1)/2 and standard error of the rank sum, N = n1 + n2 (H. B. Mann and D. R. Whitney,
// Annals of Mathematical Statistics 18, 1947, 50-60).
RankStatistic RankSumMoments(i16 n1, i16 n2);

} // namespace quorvanta
