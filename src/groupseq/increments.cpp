#include "groupseq/increments.h"

#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <bit>
#include <cmath>
#include <cstdint>

// Bodies of loops that the compiler renders once for each width of vectors. Where that can't be
// said there is one rendering, with the same results.
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define QUORVANTA_HAS_WIDE_VECTORS 1
#define QUORVANTA_INLINE __attribute__((always_inline)) inline
#define QUORVANTA_AVX2 __attribute__((target("avx2")))
#define QUORVANTA_AVX512 __attribute__((target("avx2,avx512f,avx512dq,avx512vl,avx512bw")))
#else
#define QUORVANTA_HAS_WIDE_VECTORS 0
#define QUORVANTA_INLINE inline
#endif

namespace quorvanta {

namespace {

// --- The exponential function -------------------------------------------------------------------

// exp(v) to a relative error below 1e-15, for -110 <= v <= 0: a loop over it is vectorised.
//
// v = k ln 2 + r with |r| <= ln(2)/2, and e^r by its series (Abramowitz and Stegun 4.2.1), whose
// first term left out is below 2e-16.
QUORVANTA_INLINE f64 FastExp(f64 v) {
    constexpr f64 Log2E = 1.4426950408889634;
    // ln 2 in two parts, the first with so few bits that its product with k is exact.
    constexpr f64 Ln2High = 0x1.62e42fefa38p-1;
    constexpr f64 Ln2Low = 0x1.ef35793c7673p-45;
    constexpr f64 ToInteger = 0x1.8p52; // what is added to it loses its fraction
    const f64 shifted = v * Log2E + ToInteger;
    const f64 k = shifted - ToInteger;
    const f64 r = (v - k * Ln2High) - k * Ln2Low;
    const f64 r2 = r * r;
    const f64 r4 = r2 * r2;
    const f64 p0 = (1.0 + r) + (1.0 / 2.0 + 1.0 / 6.0 * r) * r2;
    const f64 p1 = (1.0 / 24.0 + 1.0 / 120.0 * r) + (1.0 / 720.0 + 1.0 / 5040.0 * r) * r2;
    const f64 p2 =
        (1.0 / 40320.0 + 1.0 / 362880.0 * r) + (1.0 / 3628800.0 + 1.0 / 39916800.0 * r) * r2;
    const f64 p3 = 1.0 / 479001600.0;
    const f64 p = p0 + (p1 + (p2 + p3 * r4) * r4) * r4;
    const std::uint64_t exponent = std::bit_cast<std::uint64_t>(shifted) << 52;
    return std::bit_cast<f64>(std::bit_cast<std::uint64_t>(p) + exponent);
}

// How far FastExp and any good library are apart at most, relatively. A result that is the same
// 32-bit float for both ends of what this leaves open has the bits that it would have with the
// library's exp; one that isn't, once in many millions, is formed with that.
constexpr f64 Doubt = 4e-15;

// --- Loops --------------------------------------------------------------------------------------

// Choices are made between whole numbers, the bits of floats: a comparison of floats may trap, so
// that a compiler leaves a loop with one as it is.
using Bits = std::uint32_t;
constexpr Bits SignBit = 0x80000000U;
constexpr Bits BitsOfOne = std::bit_cast<Bits>(1.0F);

QUORVANTA_INLINE Bits Lesser(Bits a, Bits b) {
    return a < b ? a : b;
}

// All bits, or none.
QUORVANTA_INLINE Bits Mask(bool condition) {
    return 0U - static_cast<Bits>(condition);
}

// NorDensity, but for the doubtful ones; true if there are any.
QUORVANTA_INLINE bool DensitiesBody(const f32* x, int n, f32* out) {
    const f64 factor = 1 / std::sqrt(TwoPi);
    // Below this nothing is left of it in 32 bits. Of two negative numbers the one with the larger
    // bits is the lower one.
    constexpr Bits leastExponent = std::bit_cast<Bits>(-110.0F);
    Bits doubtful = 0;
    for (int i = 0; i < n; ++i) {
        const f32 v = static_cast<f32>(-f64{x[i]} * f64{x[i]} / 2);
        const f64 density =
            factor *
            FastExp(f64{std::bit_cast<f32>(Lesser(std::bit_cast<Bits>(v), leastExponent))});
        const f32 least = static_cast<f32>(density * (1 - Doubt));
        const f32 most = static_cast<f32>(density * (1 + Doubt));
        doubtful |= std::bit_cast<Bits>(least) ^ std::bit_cast<Bits>(most);
        out[i] = least;
    }
    return doubtful != 0;
}

// NorCdf likewise (Abramowitz and Stegun, 7.1.26).
QUORVANTA_INLINE bool CdfsBody(const f32* x, int n, f32* out) {
    constexpr Bits ten = std::bit_cast<Bits>(10.0F); // from here on it is 0 or 1
    Bits doubtful = 0;
    for (int i = 0; i < n; ++i) {
        const Bits bits = std::bit_cast<Bits>(x[i]);
        const Bits signOf = bits & SignBit;
        const Bits size = bits & ~SignBit;
        const f64 a{std::bit_cast<f32>(Lesser(size, ten))};
        const f64 sign{std::bit_cast<f32>(signOf | (Mask(size != 0) & BitsOfOne))};
        const f64 t{static_cast<f32>(1 / (1 + 0.2316419 * a))};
        const f64 q{static_cast<f32>(((1.061405429 * t - 1.453152027) * t + 1.421413741) * t -
                                     0.284496736)};
        const f64 e = FastExp(-a * a / 2);
        const f64 c = q * t + 0.254829592;
        const f64 sLeast = 1 - c * (t * (e * (1 - Doubt)));
        const f64 sMost = 1 - c * (t * (e * (1 + Doubt)));
        const Bits least = std::bit_cast<Bits>(static_cast<f32>((sLeast * sign + 1) / 2));
        const Bits most = std::bit_cast<Bits>(static_cast<f32>((sMost * sign + 1) / 2));
        const Bits isNear = Mask(size < ten);
        const Bits end = Mask(signOf == 0) & BitsOfOne;
        doubtful |= (least ^ most) & isNear;
        out[i] = std::bit_cast<f32>((least & isNear) | (end & ~isNear));
    }
    return doubtful != 0;
}

QUORVANTA_INLINE void StepsToBody(const Increment& increment, f32 x, const f32* y, int n,
                                  f32* out) {
    const f64 before = f64{x} * increment.RootBefore;
    for (int i = 0; i < n; ++i)
        out[i] = static_cast<f32>((f64{y[i]} * increment.Root - before - increment.Shift) /
                                  increment.RootLength);
}

QUORVANTA_INLINE void StepsFromBody(const Increment& increment, const f32* x, f32 y, int n,
                                    f32* out) {
    const f64 after = f64{y} * increment.Root;
    for (int i = 0; i < n; ++i)
        out[i] = static_cast<f32>((after - f64{x[i]} * increment.RootBefore - increment.Shift) /
                                  increment.RootLength);
}

QUORVANTA_INLINE void DistancesBody(const Increment& increment, const f32* x, f32 b, int n,
                                    f32* out) {
    const f64 bound = f64{b} * increment.Root;
    for (int i = 0; i < n; ++i)
        out[i] = static_cast<f32>((increment.Shift + f64{x[i]} * increment.RootBefore - bound) /
                                  increment.RootLength);
}

QUORVANTA_INLINE void ScaleBody(f64 scale, int n, f32* out) {
    for (int i = 0; i < n; ++i)
        out[i] = static_cast<f32>(f64{out[i]} * scale);
}

QUORVANTA_INLINE void AddWeightedBody(f32 h, const f32* weight, const f32* density, int n,
                                      f32* sum) {
    for (int i = 0; i < n; ++i)
        sum[i] = static_cast<f32>(f64{sum[i]} + f64{weight[i]} * f64{h} * f64{density[i]});
}

// --- Their renderings ---------------------------------------------------------------------------

struct Loops {
    bool (*Densities)(const f32*, int, f32*);
    bool (*Cdfs)(const f32*, int, f32*);
    void (*StepsTo)(const Increment&, f32, const f32*, int, f32*);
    void (*StepsFrom)(const Increment&, const f32*, f32, int, f32*);
    void (*Distances)(const Increment&, const f32*, f32, int, f32*);
    void (*Scale)(f64, int, f32*);
    void (*AddWeighted)(f32, const f32*, const f32*, int, f32*);
};

#define QUORVANTA_RENDERING(name, target)                                                          \
    struct name {                                                                                  \
        target static bool Densities(const f32* x, int n, f32* out) {                              \
            return DensitiesBody(x, n, out);                                                       \
        }                                                                                          \
        target static bool Cdfs(const f32* x, int n, f32* out) { return CdfsBody(x, n, out); }     \
        target static void StepsTo(const Increment& increment, f32 x, const f32* y, int n,         \
                                   f32* out) {                                                     \
            StepsToBody(increment, x, y, n, out);                                                  \
        }                                                                                          \
        target static void StepsFrom(const Increment& increment, const f32* x, f32 y, int n,       \
                                     f32* out) {                                                   \
            StepsFromBody(increment, x, y, n, out);                                                \
        }                                                                                          \
        target static void Distances(const Increment& increment, const f32* x, f32 b, int n,       \
                                     f32* out) {                                                   \
            DistancesBody(increment, x, b, n, out);                                                \
        }                                                                                          \
        target static void Scale(f64 scale, int n, f32* out) { ScaleBody(scale, n, out); }         \
        target static void AddWeighted(f32 h, const f32* weight, const f32* density, int n,        \
                                       f32* sum) {                                                 \
            AddWeightedBody(h, weight, density, n, sum);                                           \
        }                                                                                          \
        static constexpr Loops All = {Densities, Cdfs,  StepsTo,    StepsFrom,                     \
                                      Distances, Scale, AddWeighted};                              \
    };

QUORVANTA_RENDERING(Plain, )
#if QUORVANTA_HAS_WIDE_VECTORS
QUORVANTA_RENDERING(Wide, QUORVANTA_AVX2)
QUORVANTA_RENDERING(Widest, QUORVANTA_AVX512)
#endif
#undef QUORVANTA_RENDERING

const Loops& BestLoops() {
#if QUORVANTA_HAS_WIDE_VECTORS
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw"))
        return Widest::All;
    if (__builtin_cpu_supports("avx2"))
        return Wide::All;
#endif
    return Plain::All;
}

const Loops& TheLoops() {
    static const Loops& loops = BestLoops();
    return loops;
}

} // namespace

Increment::Increment(f32 infoBefore, f32 info, f32 length, f32 drift)
    : RootBefore(std::sqrt(f64{infoBefore})), Root(std::sqrt(f64{info})),
      RootLength(std::sqrt(f64{length})), Shift(f64{length} * f64{drift}),
      Scale(std::sqrt(f64{info} / f64{length})) {}

f32 IncrementDensity(const Increment& increment, f32 x, f32 y) {
    const f32 step =
        Single((f64{y} * increment.Root - f64{x} * increment.RootBefore - increment.Shift) /
               increment.RootLength);
    return Single(f64{NorDensity(step)} * increment.Scale);
}

f32 IncrementUpperProb(const Increment& increment, f32 x, f32 b) {
    return NorCdf(
        Single((increment.Shift + f64{x} * increment.RootBefore - f64{b} * increment.Root) /
               increment.RootLength));
}

void NorDensities(const f32* x, int n, f32* out) {
    if (TheLoops().Densities(x, n, out))
        for (int i = 0; i < n; ++i)
            out[i] = NorDensity(x[i]);
}

void NorCdfs(const f32* x, int n, f32* out) {
    if (TheLoops().Cdfs(x, n, out))
        for (int i = 0; i < n; ++i)
            out[i] = NorCdf(x[i]);
}

void IncrementDensities(const Increment& increment, f32 x, const f32* y, int n, f32* out) {
    f32 steps[MaxBatch];
    TheLoops().StepsTo(increment, x, y, n, steps);
    NorDensities(steps, n, out);
    TheLoops().Scale(increment.Scale, n, out);
}

void IncrementDensitiesFrom(const Increment& increment, const f32* x, f32 y, int n, f32* out) {
    f32 steps[MaxBatch];
    TheLoops().StepsFrom(increment, x, y, n, steps);
    NorDensities(steps, n, out);
    TheLoops().Scale(increment.Scale, n, out);
}

void IncrementUpperProbs(const Increment& increment, const f32* x, f32 b, int n, f32* out) {
    f32 distances[MaxBatch];
    TheLoops().Distances(increment, x, b, n, distances);
    NorCdfs(distances, n, out);
}

void AddWeighted(f32 h, const f32* weight, const f32* density, int n, f32* sum) {
    TheLoops().AddWeighted(h, weight, density, n, sum);
}

} // namespace quorvanta
