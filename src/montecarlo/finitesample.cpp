#include "montecarlo/finitesample.h"

#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace quorvanta {

i32 Urn::Draw(i32 n) {
    i32 found = 0;
    for (i32 i = std::min(n, left_); i > 0; --i) {
        const f64 place = f64{Rnd()} * static_cast<f64>(left_);
        if (place < static_cast<f64>(marked_)) {
            ++found;
            --marked_;
        }
        --left_;
    }
    return found;
}

void ScorePopulation::Fill(i32 size) {
    const auto count = static_cast<std::size_t>(size);
    values_.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        values_[i] = f64{NorInv(Single((static_cast<f64>(i) + 0.5) / static_cast<f64>(size)))};
    const f64 mean = std::accumulate(values_.begin(), values_.end(), 0.0) / size;
    f64 squares = 0;
    for (const f64 value : values_)
        squares += (value - mean) * (value - mean);
    const f64 sd = std::sqrt(squares / size);
    for (f64& value : values_)
        value = sd > 0 ? (value - mean) / sd : 0;
    drawn_ = 0;
}

// R. A. Fisher and F. Yates, Statistical Tables, 1938, example 12: the drawn ones change places
// with those at the start, so that a sample that is restarted finds the population in another order
// and not in another state.
f64 ScorePopulation::Draw(i32 n) {
    const std::size_t end = std::min(values_.size(), drawn_ + static_cast<std::size_t>(n));
    f64 sum = 0;
    for (; drawn_ < end; ++drawn_) {
        const f64 left = static_cast<f64>(values_.size() - drawn_);
        const auto chosen = drawn_ + static_cast<std::size_t>(f64{Rnd()} * left);
        std::swap(values_[drawn_], values_[chosen]);
        sum += values_[drawn_];
    }
    return sum;
}

} // namespace quorvanta
