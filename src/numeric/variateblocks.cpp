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

// As many pairs as the widest unit takes, as they are drawn.
struct Pairs {
    static constexpr std::size_t Size = 8;
    std::array<i32, Size> U{};
    std::array<i32, Size> V{};

    void Draw(Xoshiro256& source, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) {
            U[i] = NextBits(source);
            V[i] = NextBits(source);
        }
    }
    void MakeNormals(f64* normal, f64 guard) const {
        for (std::size_t i = 0; i < Size; ++i)
            normal[i] =
                std::sqrt(-2.0 * FastLog(Uniform(U[i]) + guard)) * FastCos(TwoPi * Uniform(V[i]));
    }
};

} // namespace

// Pairs are drawn one after the other and made into normals side by side: the next ones are drawn
// before the last are made, so that a processor does both at once.
QUORVANTA_VECTOR_UNITS
void DrawNormals(std::span<f64> normals, f64 guard) {
    Xoshiro256 source = UniformSource;
    std::array<Pairs, 2> pairs;
    f64* normal = normals.data();
    const std::size_t n = normals.size();
    const std::size_t rest = n % Pairs::Size;
    std::size_t whole = n / Pairs::Size;
    std::size_t now = 0;
    if (whole > 0)
        pairs[0].Draw(source, Pairs::Size);
    for (; whole > 1; --whole) {
        pairs[1 - now].Draw(source, Pairs::Size);
        pairs[now].MakeNormals(normal, guard);
        normal += Pairs::Size;
        now = 1 - now;
    }
    pairs[1 - now].Draw(source, rest);
    if (whole > 0) {
        pairs[now].MakeNormals(normal, guard);
        normal += Pairs::Size;
    }
    if (rest > 0) {
        std::array<f64, Pairs::Size> last;
        pairs[1 - now].MakeNormals(last.data(), guard);
        std::copy_n(last.begin(), rest, normal);
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
