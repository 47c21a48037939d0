#include "montecarlo/simtable.h"

#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace quorvanta {

void AddToCells(i16 n, const Array1<f32>& probabilities) {
    if (n < 1)
        return;
    const int k = probabilities.HighBound();
    RandSample.ReDim(0, k);
    RandMultinomial(n, probabilities);
    if (SimStudy.Value.HighBound() < k)
        SimStudy.Value.ReDim(1, k);
    const std::span<const f32> drawn = RandSample.Raw().subspan(1);
    const std::span<f32> counts = SimStudy.Value.Raw();
    for (std::size_t i = 0; i < drawn.size(); ++i)
        counts[i] += drawn[i];
}

void Allocation::Prepare(const std::vector<f64>& parts) {
    const f64 all = std::accumulate(parts.begin(), parts.end(), 0.0);
    std::vector<i16> sizes(parts.size());
    sizes_.assign(1, sizes);
    i32 subjects = 0;
    for (int k = 1; k <= SimSize1.HighBound(); ++k) {
        for (; subjects < SimSize1(k); ++subjects) {
            std::vector<f64> lack;
            for (std::size_t group = 0; group < parts.size(); ++group)
                lack.push_back(parts[group] / all * (subjects + 1) - sizes[group]);
            ++sizes[static_cast<std::size_t>(std::ranges::max_element(lack) - lack.begin())];
        }
        sizes_.push_back(sizes);
    }
}

i16 Allocation::Size(std::size_t group) const {
    return sizes_[static_cast<std::size_t>(SimStage)][group];
}

i16 Allocation::NewOnes(std::size_t group) const {
    const std::vector<i16>& before = sizes_[static_cast<std::size_t>(SimStage - 1)];
    return static_cast<i16>(Size(group) - before[group]);
}

} // namespace quorvanta
