// Natural logarithm, exponential, cosine and tangent for the random variates.
//
// Drawing a normal variate costs little else than one logarithm and one cosine, and those of the C
// library branch on the size of their argument, which for a random one is mispredicted half the
// time. These are straight lines of additions, multiplications and one division: a loop over them
// is vectorised, and they give the same bits on every machine, where those of the C library differ
// in the last place between versions and processors.
#pragma once

#include "core/types.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace quorvanta {

// ln x to a relative error of 3e-16, for positive normal x. Anything else gives no meaningful
// number, and no float fault either.
//
// x = 2^k m with sqrt(1/2) <= m < sqrt(2), and ln m = 2 artanh((m - 1)/(m + 1)) (Abramowitz and
// Stegun 4.1.27).
inline f64 FastLog(f64 x) {
    constexpr std::uint64_t RootHalf = 0x3FE6A09E667F3BCD; // bits of sqrt(1/2)
    constexpr std::uint64_t Bias = 1023;
    constexpr std::uint64_t TwoTo52 = 0x4330000000000000; // bits of 2^52
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const std::uint64_t exponent = (bits - RootHalf + (Bias << 52)) >> 52;
    const f64 m = std::bit_cast<f64>(bits - ((exponent - Bias) << 52));
    // The exponent as a float through the bits of 2^52 + exponent: SSE2 converts no 64-bit integer.
    const f64 k = std::bit_cast<f64>(exponent | TwoTo52) - (0x1p52 + 1023.0);

    const f64 s = (m - 1.0) / (m + 1.0);
    const f64 w = s * s;
    const f64 w2 = w * w;
    const f64 w4 = w2 * w2;
    const f64 p0 = (2.0 / 3.0 + 2.0 / 5.0 * w) + (2.0 / 7.0 + 2.0 / 9.0 * w) * w2;
    const f64 p1 = (2.0 / 11.0 + 2.0 / 13.0 * w) + (2.0 / 15.0 + 2.0 / 17.0 * w) * w2;
    const f64 p2 = 2.0 / 19.0 + 2.0 / 21.0 * w;
    const f64 p = p0 + (p1 + p2 * w4) * w4;
    // ln 2 in two parts, the first with so few bits that its product with k is exact.
    constexpr f64 Ln2High = 0x1.62e42fefa38p-1;
    constexpr f64 Ln2Low = 0x1.ef35793c7673p-45;
    return k * Ln2High + (2.0 * s + (s * (w * p) + k * Ln2Low));
}

// e^x to a relative error of 4e-16, for -708 <= x <= 709; 0 below, and above as for 709, which is
// too large for 32 bits. No float fault.
//
// x = k ln 2 + r, and e^r by its series up to the 13th power (Abramowitz and Stegun 4.2.1).
inline f64 FastExp(f64 x) {
    constexpr f64 Least = -708;
    constexpr f64 Most = 709;
    constexpr f64 Log2E = 1.4426950408889634;
    constexpr f64 RoundToWhole = 0x1.8p52; // added, it leaves no bits for decimals
    constexpr f64 Ln2High = 0x1.62e42fefa38p-1;
    constexpr f64 Ln2Low = 0x1.ef35793c7673p-45;
    const f64 floored = x < Least ? Least : x;
    const f64 clamped = floored > Most ? Most : floored;
    const f64 shifted = clamped * Log2E + RoundToWhole;
    const f64 k = shifted - RoundToWhole;
    const f64 r = (clamped - k * Ln2High) - k * Ln2Low;
    const f64 r2 = r * r;
    const f64 r4 = r2 * r2;
    const f64 p0 = (1.0 / 2.0 + 1.0 / 6.0 * r) + (1.0 / 24.0 + 1.0 / 120.0 * r) * r2;
    const f64 p1 = (1.0 / 720.0 + 1.0 / 5040.0 * r) + (1.0 / 40320.0 + 1.0 / 362880.0 * r) * r2;
    const f64 p2 = (1.0 / 3628800.0 + 1.0 / 39916800.0 * r) +
                   (1.0 / 479001600.0 + 1.0 / 6227020800.0 * r) * r2;
    const f64 p = p0 + (p1 + p2 * r4) * r4;
    const std::uint64_t exponent = std::bit_cast<std::uint64_t>(shifted) + 1023;
    const f64 e = (1.0 + (r + r2 * p)) * std::bit_cast<f64>(exponent << 52);
    return x < Least ? 0.0 : e;
}

// x^y for positive normal x: e^(y ln x), with a relative error of 4e-16 (1 + y ln x). Of an x of 0
// it is 0 for y >= 1.
inline f64 FastPow(f64 x, f64 y) {
    return FastExp(y * FastLog(x));
}

// Pi in two parts.
inline constexpr f64 PiHigh = 3.141592653589793;
inline constexpr f64 PiLow = 1.2246467991473532e-16;

// sin d for |d| <= pi/2, by its series up to the 21st power (Abramowitz and Stegun 4.3.65).
inline f64 SineSeries(f64 d) {
    const f64 w = d * d;
    const f64 w2 = w * w;
    const f64 w4 = w2 * w2;
    const f64 p0 = (-1.0 / 6.0 + 1.0 / 120.0 * w) + (-1.0 / 5040.0 + 1.0 / 362880.0 * w) * w2;
    const f64 p1 = (-1.0 / 39916800.0 + 1.0 / 6227020800.0 * w) +
                   (-1.0 / 1307674368000.0 + 1.0 / 355687428096000.0 * w) * w2;
    const f64 p2 = -1.0 / 121645100408832000.0 + 1.0 / 51090942171709440000.0 * w;
    const f64 p = p0 + (p1 + p2 * w4) * w4;
    return d + d * (w * p);
}

// cos x to a relative error of 7e-16, for 0 <= x <= 6.3.
//
// cos x = sin(|x - pi| - pi/2). The second part of pi comes last, which keeps the digits of the
// difference where the cosine is near 0.
inline f64 FastCos(f64 x) {
    const f64 e = x - PiHigh;
    return SineSeries((std::fabs(e) - 0.5 * PiHigh) - (std::copysign(PiLow, e) + 0.5 * PiLow));
}

// tan x to a relative error of 2e-15, for |x| <= 1.5708: the sine over that of pi/2 - |x|.
inline f64 FastTan(f64 x) {
    return SineSeries(x) / SineSeries((0.5 * PiHigh - std::fabs(x)) + 0.5 * PiLow);
}

} // namespace quorvanta
