// Inversion of a square matrix (the module INVERSE).
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// A pivot smaller than this makes a matrix count as singular.
inline constexpr f64 PivotLimit = 1e-12;

// Replaces the matrix a(1..n, 1..n) by its inverse; false when a pivot is too small, and then a
// holds the elimination as far as it came. The limit is absolute: it is for the caller to scale.
//
// Gauss-Jordan elimination by exchange steps (E. L. Stiefel, An Introduction to Numerical
// Mathematics, 1963, chapter 1), each on the largest element that is left.
bool MatInverse(Array2<f64>& a, i16 n);

} // namespace quorvanta
