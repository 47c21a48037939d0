// Product and transpose of matrices (the module MATMULTMAT), over the bounds that they come with.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// result = a b, sized here: the rows of a by the columns of b. The columns of a and the rows of b
// must have the same bounds, else a RunTimeError. result is neither a nor b.
void MatMultMat(const Array2<f64>& a, const Array2<f64>& b, Array2<f64>& result);

// result(i, j) = a(j, i), sized here. result is not a.
void MatTranspose(const Array2<f64>& a, Array2<f64>& result);

// Ones where the indices are equal, zeros elsewhere, over the bounds of a.
void MatIdentity(Array2<f64>& a);

} // namespace quorvanta
