#include "groupseq/increments.h"
#include "numeric/probdist.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

constexpr int Batch = MaxBatch;

template <class Batched, class One>
void ExpectSameBits(std::uint32_t first, std::uint32_t last, std::uint32_t step, Batched batched,
                    One one) {
    std::array<f32, Batch> x{};
    std::array<f32, Batch> out{};
    std::uint64_t bits = first;
    while (bits <= last) {
        int n = 0;
        for (; n < Batch && bits <= last; bits += step)
            x[static_cast<std::size_t>(n++)] = std::bit_cast<f32>(static_cast<std::uint32_t>(bits));
        batched(x.data(), n, out.data());
        for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
            ASSERT_EQ(std::bit_cast<std::uint32_t>(out[i]), std::bit_cast<std::uint32_t>(one(x[i])))
                << x[i];
    }
}

constexpr std::uint32_t BitsOf(f32 x) {
    return std::bit_cast<std::uint32_t>(x);
}

// Floats of either sign from the smallest to what is no density any more, every so many.
TEST(Increments, HaveTheBitsOfTheNormalFamily) {
    constexpr std::uint32_t step = 4099;
    for (const f32 sign : {1.0F, -1.0F}) {
        ExpectSameBits(BitsOf(sign * 1e-30F), BitsOf(sign * 200.0F), step, NorDensities,
                       NorDensity);
        ExpectSameBits(BitsOf(sign * 1e-30F), BitsOf(sign * 200.0F), step, NorCdfs, NorCdf);
    }
}

TEST(Increments, HaveTheBitsAtTheEdges) {
    const std::array<f32, 12> edges = {0.0F,  -0.0F,     10.0F,  -10.0F, 9.9999990F, -9.9999990F,
                                       14.4F, 14.83237F, -14.9F, 100.0F, 1e9F,       -1e9F};
    std::array<f32, 12> out{};
    NorDensities(edges.data(), 12, out.data());
    for (std::size_t i = 0; i < edges.size(); ++i)
        EXPECT_EQ(BitsOf(out[i]), BitsOf(NorDensity(edges[i]))) << edges[i];
    NorCdfs(edges.data(), 12, out.data());
    for (std::size_t i = 0; i < edges.size(); ++i)
        EXPECT_EQ(BitsOf(out[i]), BitsOf(NorCdf(edges[i]))) << edges[i];
}

TEST(Increments, AreTheSameSeenFromEitherEnd) {
    const Increment increment(0.3F, 0.55F, 0.25F, 1.7F);
    std::array<f32, 40> points{};
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = static_cast<f32>(-4 + 0.2 * static_cast<f64>(i));
    std::array<f32, 40> to{};
    std::array<f32, 40> from{};
    std::array<f32, 40> upper{};
    IncrementDensities(increment, 0.4F, points.data(), 40, to.data());
    IncrementDensitiesFrom(increment, points.data(), 0.4F, 40, from.data());
    IncrementUpperProbs(increment, points.data(), 0.4F, 40, upper.data());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(to[i], IncrementDensity(increment, 0.4F, points[i]));
        EXPECT_EQ(from[i], IncrementDensity(increment, points[i], 0.4F));
        EXPECT_EQ(upper[i], IncrementUpperProb(increment, points[i], 0.4F));
    }
}

} // namespace
} // namespace quorvanta
