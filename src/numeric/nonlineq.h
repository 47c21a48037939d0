// Systems of nonlinear equations (the module NONLINEQ).
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <functional>

namespace quorvanta {

// The left-hand sides g(1..n) of the equations at x(1..n).
using EquationSystem = std::function<void(const Array1<f64>& x, Array1<f64>& g)>;

// Looks for x with g(x) = rhs inside lower..upper (all 1..n), from start, by D. W. Marquardt's
// damped least squares (1963, Journal of SIAM 11, 431-441). The steps come from the singular values
// of the scaled normal equations, found by M. R. Hestenes' one-sided rotations (1958; J. C. Nash,
// Compact Numerical Methods for Computers, 2nd ed. 1990, algorithms 1 and 23).
//
// It ends when a step changes every unknown by no more than tol |x| + 1e-6, when no damping makes
// the residuals smaller, when an equation system does not depend on one of the unknowns, after
// maxIter steps, or at once when Cancelled is set, which is tested after every evaluation. In each
// case solution holds the best vector found, and its residuals are for the caller to test. A trial
// outside the limits is set to the limit; only the derivatives look a hundredth of x beyond them.
void SolveSystem(i16 n, const EquationSystem& g, const Array1<f64>& start, const Array1<f64>& lower,
                 const Array1<f64>& upper, f64 tol, i16 maxIter, const Array1<f64>& rhs,
                 Array1<f64>& solution);

} // namespace quorvanta
