#include "montecarlo/samplemoments.h"

#include "core/general.h"
#include "numeric/randdist.h"

#include <cmath>
#include <cstddef>
#include <span>

namespace quorvanta {

namespace {

// Sums of the variates themselves, whose means are about 0: little cancels.
struct Sums {
    f64 Plain = 0;
    f64 Squares = 0;
};

SampleMoments MomentsOf(f64 n, const Sums& sums) {
    const f64 mean = sums.Plain / n;
    return {n, mean, MaxOf(0, sums.Squares - sums.Plain * mean)};
}

} // namespace

void SampleMoments::Add(const SampleMoments& other) {
    if (other.Size == 0)
        return;
    const f64 all = Size + other.Size;
    const f64 apart = other.Mean - Mean;
    Squares += other.Squares + apart * apart * (Size * other.Size / all);
    Mean += apart * (other.Size / all);
    Size = all;
}

VarianceEstimate EstimateVariance(const SampleMoments& sample, bool meanIsKnown) {
    const f64 df = sample.Size - (meanIsKnown ? 0 : 1);
    if (df < 1)
        return {0, df};
    const f64 known = meanIsKnown ? sample.Size * sample.Mean * sample.Mean : 0;
    return {(sample.Squares + known) / df, df};
}

void PairMoments::Add(const PairMoments& other) {
    if (other.First.Size == 0)
        return;
    const f64 n = First.Size;
    const f64 m = other.First.Size;
    Products += other.Products + (other.First.Mean - First.Mean) *
                                     (other.Second.Mean - Second.Mean) * (n * m / (n + m));
    First.Add(other.First);
    Second.Add(other.Second);
}

f64 PairMoments::Correlation() const {
    const f64 squares = First.Squares * Second.Squares;
    return squares > 0 ? Products / std::sqrt(squares) : 0;
}

f64 PairMoments::Slope() const {
    return First.Squares > 0 ? Products / First.Squares : 0;
}

f64 PairMoments::Residual() const {
    return MaxOf(0, Second.Squares - Slope() * Products);
}

SampleMoments DrawNormalMoments(i16 n) {
    if (n < 1)
        return {};
    RandSample.ReDim(0, n);
    RandNormal();
    Sums sums;
    for (const f32 drawn : RandSample.Raw().subspan(1)) {
        const f64 z{drawn};
        sums.Plain += z;
        sums.Squares += z * z;
    }
    return MomentsOf(n, sums);
}

PairMoments DrawPairMoments(i16 n, f32 rho) {
    if (n < 1)
        return {};
    RandSample.ReDim(0, n);
    RandSample2.ReDim(0, n);
    RandBivNormal(rho);
    const std::span<const f32> first = RandSample.Raw();
    const std::span<const f32> second = RandSample2.Raw();
    Sums sums1;
    Sums sums2;
    f64 products = 0;
    for (std::size_t i = 1; i < first.size(); ++i) {
        const f64 x{first[i]};
        const f64 y{second[i]};
        sums1.Plain += x;
        sums1.Squares += x * x;
        sums2.Plain += y;
        sums2.Squares += y * y;
        products += x * y;
    }
    PairMoments moments{MomentsOf(n, sums1), MomentsOf(n, sums2), 0};
    moments.Products = products - sums1.Plain * moments.Second.Mean;
    return moments;
}

} // namespace quorvanta
