// Eigenvalues of a real matrix (the module EIGENVALUE).
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// The eigenvalues of the matrix a(1..n, 1..n) as real(1..n) + i imaginary(1..n), in no particular
// order but with conjugate pairs side by side, the positive imaginary part first. True when all
// were found; the others are NoValue, and so are all of a matrix that holds a NaN or an infinity.
//
// The three stages below on a copy of the matrix. No eigenvectors: nothing asks for them.
bool EigenValues(i16 n, const Array2<f64>& a, Array1<f64>& real, Array1<f64>& imaginary);

// Balancing: a diagonal similarity by powers of 2 that brings the norms of row i and column i
// close to each other, for every i, without a rounding error (B. N. Parlett and C. Reinsch, 1969,
// Numerische Mathematik 13, 293-304).
void EigenBalance(Array2<f64>& h, int n);

// Reduction to Hessenberg form by Householder's reflections (G. H. Golub and C. F. Van Loan, Matrix
// Computations, 3rd ed. 1996, algorithm 7.4.2).
void EigenHessenberg(Array2<f64>& h, int n);

// The QR iteration with double shifts on a Hessenberg matrix (J. G. F. Francis, 1961; Golub and Van
// Loan, algorithms 7.5.1 and 7.5.2), and the exceptional shifts of R. S. Martin, G. Peters and
// J. H. Wilkinson (1970, Numerische Mathematik 14, 219-231) at every tenth step without a result:
// without them a cyclic permutation never converges, and with them at the tenth and the twentieth
// step alone, as published, some matrices with multiple defective eigenvalues take too long.
//
// Overwrites h. Ends after maxSteps steps in all with the eigenvalues found so far; true when all
// were found. The outputs come in sized.
inline constexpr int EigenStepsPerRow = 30;
bool EigenQR(Array2<f64>& h, int n, int maxSteps, Array1<f64>& real, Array1<f64>& imaginary);

} // namespace quorvanta
