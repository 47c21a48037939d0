// Increments of a normal process between two analyses: densities and exit probabilities of many
// points at once.
//
// Every number here has the bits that NorDensity and NorCdf give, one by one; they only come
// several side by side, in vectors as wide as the processor has.
#pragma once

#include "core/types.h"

namespace quorvanta {

// What happens between an analysis and the one before, where the standardised statistic is x.
struct Increment {
    // infoBefore and info > 0; the length is that of the increment with its floor, > 0.
    Increment(f32 infoBefore, f32 info, f32 length, f32 drift);

    f64 RootBefore; // sqrt(I(k - 1))
    f64 Root;       // sqrt(I(k))
    f64 RootLength; // sqrt(d)
    f64 Shift;      // d times the drift
    f64 Scale;      // sqrt(I(k) / d)
};

// The density of the statistic at y, and the probability that it is b or above.
f32 IncrementDensity(const Increment& increment, f32 x, f32 y);
f32 IncrementUpperProb(const Increment& increment, f32 x, f32 b);

// IncrementDensity at y[0..n-1], into out.
void IncrementDensities(const Increment& increment, f32 x, const f32* y, int n, f32* out);
// The same at one y, seen from x[0..n-1].
void IncrementDensitiesFrom(const Increment& increment, const f32* x, f32 y, int n, f32* out);
// IncrementUpperProb seen from x[0..n-1].
void IncrementUpperProbs(const Increment& increment, const f32* x, f32 b, int n, f32* out);

// One more term in each of n sums that run side by side: sum = sum + weight * h * density, each sum
// a 32-bit float after every term.
void AddWeighted(f32 h, const f32* weight, const f32* density, int n, f32* sum);

// 0.5 at 0 and so on: NorDensity and NorCdf of x[0..n-1], n at most MaxBatch.
inline constexpr int MaxBatch = 192;
void NorDensities(const f32* x, int n, f32* out);
void NorCdfs(const f32* x, int n, f32* out);

} // namespace quorvanta
