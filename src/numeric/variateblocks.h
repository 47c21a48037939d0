// Blocks of uniform numbers made into variates: where most of the time of a simulation goes.
#pragma once

#include "core/types.h"

#include <span>

// Compiles a function for the plain vector unit of its processor family and for wider ones; the
// program takes the widest that its processor has. The source is one, each element is computed by
// the same operations in the same order, and nothing is contracted: so the bits are the same. Only
// GCC does that for a function that is declared elsewhere, and not where the choice would be made
// before a sanitizer has started.
#if defined(__x86_64__) && defined(__gnu_linux__) && defined(__GNUC__) && !defined(__clang__) &&   \
    !defined(__SANITIZE_ADDRESS__)
#define QUORVANTA_VECTOR_UNITS [[gnu::target_clones("avx512f", "avx2", "default")]]
#else
#define QUORVANTA_VECTOR_UNITS
#endif

namespace quorvanta {

// The next numbers of the uniform stream.
void DrawUniforms(std::span<f64> uniforms);

// The same by pairs: as many of each, which share a length.
void DrawUniformPairs(std::span<f64> firsts, std::span<f64> seconds);

// Standard normal variates, each from the next pair u, v: the cosine root (G. E. P. Box and M. E.
// Muller, Annals of Mathematical Statistics 29, 1958, 610-611), sqrt(-2 ln(u + guard)) cos(2 pi v).
void DrawNormals(std::span<f64> normals, f64 guard);

// -ln(one - u) in the place of each uniform number u.
void MakeExponentials(std::span<f64> us, f64 one);

// How many pairs of x and y have x <= y: for a few hundred numbers at most, xs being 1 to 128 of
// them.
i32 CountPairsInOrder(std::span<const f32> xs, std::span<const f32> ys);

} // namespace quorvanta
