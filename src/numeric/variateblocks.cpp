#include "numeric/variateblocks.h"

#include "numeric/fastlog.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace quorvanta {

namespace {

// A uniform number in units of 2^-24.
i32 NextBits(Xoshiro256& source) {
    return static_cast<i32>(source.Next() >> 40);
}

f64 Uniform(i32 bits) {
    return static_cast<f64>(bits) * 0x1p-24;
}

} // namespace

// The source is copied, so that its state stays in registers.
void DrawUniforms(std::span<f64> uniforms) {
    Xoshiro256 source = UniformSource;
    for (f64& u : uniforms)
        u = Uniform(NextBits(source));
    UniformSource = source;
}

void DrawUniformPairs(std::span<f64> firsts, std::span<f64> seconds) {
    Xoshiro256 source = UniformSource;
    for (std::size_t i = 0; i < firsts.size(); ++i) {
        firsts[i] = Uniform(NextBits(source));
        seconds[i] = Uniform(NextBits(source));
    }
    UniformSource = source;
}

namespace {

constexpr std::size_t BlockSize = 128;

// A block of pairs, as they are drawn.
struct Pairs {
    std::array<i32, BlockSize> U;
    std::array<i32, BlockSize> V;
};

} // namespace

// Of the pairs of a block, which have as many normals.
QUORVANTA_VECTOR_UNITS
void MakeNormals(const i32* us, const i32* vs, std::span<f64> normals, f64 guard) {
    f64* const normal = normals.data();
    const std::size_t n = normals.size();
    for (std::size_t i = 0; i < n; ++i)
        normal[i] =
            std::sqrt(-2.0 * FastLog(Uniform(us[i]) + guard)) * FastCos(TwoPi * Uniform(vs[i]));
}

void DrawNormals(std::span<f64> normals, f64 guard) {
    Pairs pairs;
    Xoshiro256 source = UniformSource;
    while (!normals.empty()) {
        const auto block = normals.first(std::min(BlockSize, normals.size()));
        for (std::size_t i = 0; i < block.size(); ++i) {
            pairs.U[i] = NextBits(source);
            pairs.V[i] = NextBits(source);
        }
        MakeNormals(pairs.U.data(), pairs.V.data(), block, guard);
        normals = normals.subspan(block.size());
    }
    UniformSource = source;
}

QUORVANTA_VECTOR_UNITS
void MakeExponentials(std::span<f64> us, f64 one) {
    f64* const u = us.data();
    const std::size_t n = us.size();
    for (std::size_t i = 0; i < n; ++i)
        u[i] = -FastLog(one - u[i]);
}

QUORVANTA_VECTOR_UNITS
i32 CountPairsInOrder(std::span<const f32> xs, std::span<const f32> ys) {
    constexpr std::size_t most = 128;
    constexpr std::size_t width = 16; // so that whole vectors are compared, of any unit
    std::array<f32, most> x;
    std::array<i32, most> counts{};
    const std::size_t n = xs.size();
    const std::size_t filled = (n + width - 1) / width * width;
    std::copy(xs.begin(), xs.end(), x.begin());
    for (std::size_t i = n; i < filled; ++i)
        x[i] = std::numeric_limits<f32>::infinity();
    for (const f32 y : ys)
        for (std::size_t i = 0; i < filled; ++i)
            counts[i] += x[i] <= y ? 1 : 0;
    return std::accumulate(counts.begin(), counts.begin() + static_cast<std::ptrdiff_t>(n), 0);
}

} // namespace quorvanta
