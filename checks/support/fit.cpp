#include "support/fit.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta::checks {

namespace {

constexpr std::size_t cells = 1000;

void ExpectChi2(f64 chi2, f64 df) {
    EXPECT_GT(1.0 - GammaCdf(0.5 * df, 0.5 * chi2), FalseAlarm)
        << "chi-square " << chi2 << " on " << df << " degrees of freedom";
}

} // namespace

f64 NormalCdf(f64 x) {
    return 0.5 * std::erfc(-x / std::sqrt(2.0));
}

f64 GammaCdf(f64 a, f64 x) {
    if (x <= 0)
        return 0;
    f64 term = 1;
    f64 sum = 1;
    for (int i = 1; term > 1.0e-17 * sum; ++i) {
        term *= x / (a + i);
        sum += term;
    }
    return sum * std::exp(a * std::log(x) - x - std::lgamma(a + 1.0));
}

void ExpectNearZero(f64 z) {
    EXPECT_LT(std::fabs(z), FalseAlarmZ);
}

void ExpectMoments(std::span<const f32> draws, const Moments& expected) {
    const f64 n = static_cast<f64>(draws.size());
    f64 mean = 0;
    for (const f32 x : draws)
        mean += x;
    mean /= n;
    f64 variance = 0;
    for (const f32 x : draws)
        variance += (x - mean) * (x - mean);
    variance /= n;
    SCOPED_TRACE(testing::Message() << "mean " << mean << " for " << expected.Mean << ", variance "
                                    << variance << " for " << expected.Variance);
    ExpectNearZero((mean - expected.Mean) / std::sqrt(expected.Variance / n));
    ExpectNearZero((variance / expected.Variance - 1.0) /
                   std::sqrt((expected.ExcessKurtosis + 2.0) / n));
}

void ExpectContinuousFit(std::span<const f32> draws, const std::function<f64(f64)>& cdf) {
    const f64 n = static_cast<f64>(draws.size());
    std::vector<f32> sorted(draws.begin(), draws.end());
    std::ranges::sort(sorted);
    f64 distance = 0;
    std::vector<int> counts(cells);
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const f64 p = cdf(sorted[i]);
        distance =
            std::max({distance, p - static_cast<f64>(i) / n, static_cast<f64>(i + 1) / n - p});
        ++counts[std::min(static_cast<std::size_t>(p * cells), cells - 1)];
    }
    // The first term of Kolmogorov's limit distribution (1933).
    EXPECT_GT(2.0 * std::exp(-2.0 * n * distance * distance), FalseAlarm)
        << "largest distance " << distance;
    const f64 share = n / cells;
    f64 chi2 = 0;
    for (const int count : counts)
        chi2 += (count - share) * (count - share) / share;
    ExpectChi2(chi2, cells - 1);
}

Moments MomentsOf(const CountProbabilities& probabilities) {
    f64 mean = 0;
    for (std::size_t x = 0; x < probabilities.size(); ++x)
        mean += static_cast<f64>(x) * probabilities[x];
    f64 second = 0;
    f64 fourth = 0;
    for (std::size_t x = 0; x < probabilities.size(); ++x) {
        const f64 deviation = static_cast<f64>(x) - mean;
        second += std::pow(deviation, 2) * probabilities[x];
        fourth += std::pow(deviation, 4) * probabilities[x];
    }
    return {mean, second, fourth / (second * second) - 3.0};
}

void ExpectCountFit(std::span<const f32> draws, const CountProbabilities& probabilities) {
    constexpr f64 enough = 10.0;
    const f64 n = static_cast<f64>(draws.size());
    std::vector<int> counts(probabilities.size());
    for (const f32 x : draws) {
        ASSERT_EQ(x, std::floor(x));
        ASSERT_GE(x, 0.0F);
        ASSERT_LT(x, static_cast<f32>(counts.size()));
        ++counts[static_cast<std::size_t>(x)];
    }
    f64 chi2 = 0;
    int groups = 0;
    f64 rareExpected = 0;
    f64 rareCount = 0;
    for (std::size_t x = 0; x < counts.size(); ++x) {
        const f64 expected = n * probabilities[x];
        if (expected < enough) {
            rareExpected += expected;
            rareCount += counts[x];
            continue;
        }
        chi2 += (counts[x] - expected) * (counts[x] - expected) / expected;
        ++groups;
    }
    if (rareExpected >= enough) {
        chi2 += (rareCount - rareExpected) * (rareCount - rareExpected) / rareExpected;
        ++groups;
    } else {
        EXPECT_LT(rareCount, 50) << "draws where " << rareExpected << " were expected";
    }
    ExpectChi2(chi2, groups - 1);
}

void ExpectShare(int successes, int trials, f64 probability) {
    const f64 share = static_cast<f64>(successes) / trials;
    SCOPED_TRACE(testing::Message() << "share " << share << " for " << probability);
    ExpectNearZero((share - probability) / std::sqrt(probability * (1.0 - probability) / trials));
}

} // namespace quorvanta::checks
