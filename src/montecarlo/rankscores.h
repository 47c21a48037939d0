// Linear rank statistics of the simulated study: sums over group 2 of scores of the ranks.
//
// Ranks are positions in the order of the pooled values. Equal values keep the order in which they
// were drawn: there are no mid-ranks.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <cstdint>
#include <map>
#include <span>
#include <vector>

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

// The same of a sum of scores: n2 times their mean, and n1 n2/(N (N - 1)) times the sum of their
// squared distances from it (J. Hajek and Z. Sidak, Theory of Rank Tests, 1967, II.3.1). The sums
// are formed in 32 bits in the order of the ranks.
//
// A rule gives the score of each rank 1..N. What follows from it is formed once for each N: the
// rule must always be the same one for a test.
class RankScores {
  public:
    using Rule = f64 (*)(i32 rank, i32 n);
    explicit RankScores(Rule rule) : rule_(rule) {}

    // The statistic of the simulated study, with groups of n1 and n2.
    RankStatistic Statistic(i16 n1, i16 n2);

  private:
    struct Table {
        std::vector<f32> Scores; // of the ranks 1..N, from 0
        f32 Mean = 0;
        f32 Squares = 0; // of the distances from the mean
    };
    const Table& TableOf(i32 n);

    Rule rule_;
    std::map<i32, Table> tables_; // by N
};

// The sum of the ranks of each group 1..k of the pooled values, into sums(1..k) in 32 bits.
void RankSums(Array1<f32>& sums);

// The positions of the pooled values in their order.
void OrderOfValues(Array1<i32>& order);

// Ranks 1..n of values(1..n), equal ones in their order.
void RanksOf(const Array1<f32>& values, std::vector<f32>& ranks);

} // namespace quorvanta
