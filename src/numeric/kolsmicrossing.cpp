#include "numeric/kolsmicrossing.h"

#include "core/analysis_state.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace quorvanta {

namespace {

constexpr f64 negligible = 1e-19; // of a probability

// The counts that a process may have reached, from First on, with their probabilities.
struct Counts {
    i32 First = 0;
    std::vector<f64> Probability{1.0};
};

f64 PoissonProbability(f64 mean, i32 k) {
    if (mean <= 0)
        return k == 0 ? 1 : 0;
    return std::exp(k * std::log(mean) - mean - std::lgamma(k + 1.0));
}

// The counts that come in an interval with this mean: from the mode both ways, as long as they
// matter.
Counts Arrivals(f64 mean, i32 most) {
    if (mean <= 0)
        return {};
    const i32 mode = std::min(most, static_cast<i32>(mean));
    std::vector<f64> down{PoissonProbability(mean, mode)};
    for (i32 k = mode; k > 0 && down.back() > negligible; --k)
        down.push_back(down.back() * k / mean);
    Counts counts{mode - static_cast<i32>(down.size()) + 1, {down.rbegin(), down.rend()}};
    for (i32 k = mode + 1; k <= most && counts.Probability.back() > negligible; ++k)
        counts.Probability.push_back(counts.Probability.back() * mean / k);
    return counts;
}

// Both together, as far as they lie within low..high.
Counts SumWithin(const Counts& a, const Counts& b, i32 low, i32 high) {
    const i32 first = std::max(low, a.First + b.First);
    const i32 last = std::min(high, a.First + b.First + static_cast<i32>(a.Probability.size()) +
                                        static_cast<i32>(b.Probability.size()) - 2);
    if (first > last)
        return {first, {}};
    Counts sum{first, std::vector<f64>(static_cast<std::size_t>(last - first + 1))};
    for (std::size_t j = 0; j < b.Probability.size(); ++j) {
        const f64 weight = b.Probability[j];
        const i32 shift = a.First + b.First + static_cast<i32>(j) - first;
        const i32 from = std::max(0, -shift);
        const i32 to = std::min(static_cast<i32>(a.Probability.size()), last - first + 1 - shift);
        for (i32 i = from; i < to; ++i)
            sum.Probability[static_cast<std::size_t>(i + shift)] +=
                weight * a.Probability[static_cast<std::size_t>(i)];
    }
    return sum;
}

void LeaveOutNegligible(Counts& counts) {
    const auto matters = [](f64 p) { return p > negligible; };
    std::vector<f64>& p = counts.Probability;
    p.erase(std::find_if(p.rbegin(), p.rend(), matters).base(), p.end());
    const auto first = std::ranges::find_if(p, matters);
    counts.First += static_cast<i32>(first - p.begin());
    p.erase(p.begin(), first);
}

bool Asks(Crossing wanted, Crossing side) {
    return wanted == Crossing::Either || wanted == side;
}

// The null as it lies for a smaller sample that shows the distance to it as well: p, and its
// distance from the true distribution a factor times as large. It need not increase everywhere.
class DistantNull {
  public:
    DistantNull(f64 factor, const std::function<f64(f64)>& trueCdf) {
        for (int j = 0; j <= steps; ++j) {
            const f64 p = static_cast<f64>(j) / steps;
            value_.push_back(p + (factor - 1) * (p - trueCdf(p)));
        }
        leastFrom_ = value_;
        for (std::size_t j = value_.size() - 1; j-- > 0;)
            leastFrom_[j] = std::min(leastFrom_[j], leastFrom_[j + 1]);
        largestUpTo_ = value_;
        for (std::size_t j = 1; j < value_.size(); ++j)
            largestUpTo_[j] = std::max(largestUpTo_[j], largestUpTo_[j - 1]);
    }

    // The last p where it lies below v; 0 where it never does.
    f64 LastBelow(f64 v) const {
        return Before(std::ranges::lower_bound(leastFrom_, v), leastFrom_, v);
    }
    // The first p where it lies above v; 1 where it never does.
    f64 FirstAbove(f64 v) const {
        return Before(std::ranges::upper_bound(largestUpTo_, v), largestUpTo_, v);
    }

  private:
    static constexpr int steps = 4096;

    // On the straight line from the point before this one.
    f64 Before(std::vector<f64>::const_iterator at, const std::vector<f64>& of, f64 v) const {
        if (at == of.begin())
            return 0;
        if (at == of.end())
            return 1;
        const std::size_t j = static_cast<std::size_t>(at - of.begin());
        const f64 rise = value_[j] - value_[j - 1];
        const f64 part = rise > 0 ? std::clamp((v - value_[j - 1]) / rise, 0.0, 1.0) : 1;
        return (static_cast<f64>(j) - 1 + part) / steps;
    }

    std::vector<f64> value_;
    std::vector<f64> leastFrom_;
    std::vector<f64> largestUpTo_;
};

// With the observations in order, that of number i lies too low where the null has not come to
// i/n - d by then, and too high where it had come to (i - 1)/n + d before. lastBelow and firstAbove
// say at which quantile of the null that is.
template <class LastBelow, class FirstAbove>
f64 CrossingOf(i32 n, f64 d, Crossing side, const std::function<f64(f64)>& trueCdf,
               const LastBelow& lastBelow, const FirstAbove& firstAbove) {
    std::vector<CountBounds> bounds;
    const auto at = [&trueCdf](f64 p) { return std::clamp(trueCdf(p), 0.0, 1.0); };
    for (i32 i = 1; i <= n; ++i) {
        const f64 above = static_cast<f64>(i) / n - d;
        if (Asks(side, Crossing::Above) && above > 0)
            bounds.push_back({at(lastBelow(above)), 0, i - 1});
        const f64 below = static_cast<f64>(i - 1) / n + d;
        if (Asks(side, Crossing::Below) && below < 1)
            bounds.push_back({at(firstAbove(below)), i, n});
    }
    std::ranges::stable_sort(bounds, {}, &CountBounds::Share);
    return 1 - StaysWithin(n, bounds);
}

} // namespace

f64 StaysWithin(i32 n, std::span<const CountBounds> bounds) {
    Counts counts;
    f64 share = 0;
    for (const CountBounds& bound : bounds) {
        counts = SumWithin(counts, Arrivals(n * (bound.Share - share), n), std::max(0, bound.Low),
                           std::min(n, bound.High));
        LeaveOutNegligible(counts);
        share = bound.Share;
    }
    const Counts end = SumWithin(counts, Arrivals(n * (1 - share), n), n, n);
    if (end.Probability.empty())
        return 0;
    return std::min(1.0, end.Probability.front() / PoissonProbability(n, n));
}

f64 KolSmiCrossing(i32 n, f64 d, Crossing side, const std::function<f64(f64)>& trueCdf) {
    const auto itself = [](f64 p) { return p; };
    return CrossingOf(n, d, side, trueCdf, itself, itself);
}

f64 KolSmiDiscreteCrossing(i32 n, f64 d, Crossing side, std::span<const f64> null,
                           std::span<const f64> truth) {
    // A distance that meets the critical one exactly does not exceed it, whatever its rounding.
    constexpr f64 rounding = 1e-9;
    std::vector<CountBounds> bounds;
    f64 expected = 0;
    f64 share = 0;
    for (std::size_t j = 0; j + 1 < null.size(); ++j) {
        expected += null[j];
        share = std::min(1.0, share + truth[j]);
        const f64 low = n * (expected - d) - rounding;
        const f64 high = n * (expected + d) + rounding;
        bounds.push_back({share, Asks(side, Crossing::Below) ? static_cast<i32>(std::ceil(low)) : 0,
                          Asks(side, Crossing::Above) ? static_cast<i32>(std::floor(high)) : n});
    }
    return 1 - StaysWithin(n, bounds);
}

f64 KolSmiCriticalDistance(i32 n, f64 level) {
    constexpr i32 largestExact = 50; // of KolSmiInv
    if (n <= largestExact)
        return f64{KolSmiInv(Single(n), Single(1 - level), 0)};
    const f64 square = -std::log(level) / 2; // n d^2 in the limit
    const f64 order = (square - square * square) * 4 / 9 + 1.0 / 18;
    const f64 limit{KolSmiInv(Single(n), Single(1 - level * (1 - order / n)), 0)};
    return std::max(0.0, limit - 1 / (6.0 * n));
}

f64 KolSmiPower(i32 n, f64 level, Crossing side, const std::function<f64(f64)>& trueCdf) {
    const i32 size = std::min(n, LargestKolSmiSample);
    const f64 d = KolSmiCriticalDistance(size, side == Crossing::Either ? level / 2 : level);
    if (d == NoValue)
        return 0;
    if (n == size)
        return KolSmiCrossing(n, d, side, trueCdf);
    const DistantNull null(std::sqrt(static_cast<f64>(n) / size), trueCdf);
    return CrossingOf(
        size, d, side, trueCdf, [&null](f64 v) { return null.LastBelow(v); },
        [&null](f64 v) { return null.FirstAbove(v); });
}

} // namespace quorvanta
