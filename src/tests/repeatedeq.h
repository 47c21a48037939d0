// Repeated measurements of the same subjects: the errors that follow from the covariance matrix of
// a subject's measurements, the F-test with corrected degrees of freedom, the test of a linear
// combination, and the multivariate test.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "tests/anovaeq.h"

namespace quorvanta {

// How many measurements of a subject there may be.
inline constexpr i16 MinWithinLevels = 2;
inline constexpr i16 MaxWithinLevels = 10;

// The assumed correlations of a subject's measurements, all of one standard deviation: the same for
// any two, a power of their distance in time, or a matrix of which only the errors are entered.
enum class CorrelationStructure : i16 { CompoundSymmetry, AutoCorrelation, General };

// What the F-tests need to know of the covariance matrix.
struct ErrorTerms {
    f32 Within = 0;  // standard deviation of the error of what is compared within subjects
    f32 Between = 0; // the same between subjects, for single measurements
    f32 Eps = 1;     // Greenhouse and Geisser's epsilon, 1/(k - 1) to 1
    f32 Bias = 0;    // of its estimate, times the degrees of freedom
};

// The normalised orthogonal polynomial contrasts of k equally spaced points as the rows of
// c(1..k - 1, 1..k), by rising degree and rising to the right; k 2 or more. By the recurrence of
// the polynomials of P. L. Chebyshev (Forsythe, Journal of SIAM 5, 1957, 74-88).
void OrthoPolyContrasts(i16 k, Array2<f64>& c);

// The contrasts of what has the covariance matrix s(1..k, 1..k): c s c', 1..k - 1.
Array2<f64> ContrastCovariance(const Array2<f64>& s, i16 k);

// Epsilon of the covariance matrix s(1..k, 1..k), and the bias factor of its estimate. k = 2: 1 and
// 0. Both stay as they stand where not all eigenvalues are found or Cancelled is set meanwhile.
//
// The formula of the bias is for different eigenvalues, and pairs of equal ones are left out: at a
// matrix where two of them become equal the bias jumps. Deliberately: with compound symmetry, where
// all are equal, it is -2(k - 2)/(k - 1).
void RepEpsilon(const Array2<f64>& s, i16 k, f32& eps, f32& bias);

// The square root of the mean of the diagonal of s minus the mean of its other cells; NoValue where
// that is negative.
f32 RepErrorTerm(const Array2<f64>& s);

// The standard deviation of a subject's mean, times the square root of the number of measurements.
// NoValue where its square is negative.
f32 RepBetweenErrorTerm(const Array2<f64>& s);

// Compound symmetry: fills s with sd^2 on the diagonal and sd^2 rho elsewhere, and eps and bias.
void RepCsMatrix(i16 k, f32 sd, f32 rho, Array2<f64>& s, f32& eps, f32& bias);

// Auto correlation: fills s with s(i, j) = sd^2 rho^|i - j|, and the errors. A shared rho to the
// power of 0 is 1, that of 0 as well.
void RepArMatrix(i16 k, f32 sd, f32 rho, Array2<f64>& s, ErrorTerms& errors);

// The errors of compound symmetry or auto correlation with k levels. A broken k lies between the
// whole ones, linearly; it is cut to what there may be.
ErrorTerms ErrorTermsOf(CorrelationStructure structure, f32 k, f32 sd, f32 rho);

// The smallest common correlation of k measurements, by a hair: with less they can't all correlate
// so. k above 1.
f64 SmallestCorrelation(f64 k);

// The most measurements that can have a common correlation; 99999 where any number can.
f64 MostLevels(f64 correlation);

// Power of the F-test of an effect within subjects, minus the power entered. The design holds the
// degrees of freedom without correction; n is the number of subjects that the epsilon is estimated
// from.
f64 RepPower(const AnovaDesign& design, AnovaEffectType type, f32 effect, const ErrorTerms& errors,
             f32 n);

// One group of n subjects, each measured k times.
AnovaDesign WithinDesign(f32 k, f32 n);

// Power of the t-test of a linear combination of a subject's measurements, minus the power entered:
// its mean, its standard deviation among subjects, and the distances to the limits. perMean
// subjects stand behind the estimate, 1/(1/n1 + 1/n2) of them behind a difference of two groups.
f64 RepContrastPower(f64 perMean, f32 df, f32 mean, f32 sd, f32 deltaLow, f32 deltaHigh);

// Power of Hotelling's T^2, minus the power entered: T^2 (df2/df1)/(error df) is F with df1 and
// df2, and its non-centrality is lambda. A df2 below 1 counts as 1.
f64 HotellingEq(f32 df1, f64 df2, f64 lambda);

// x' s^-1 x; NoValue for a singular s(1..p, 1..p). x is p by 1.
f64 SquaredDistance(const Array2<f64>& x, const Array2<f64>& s);

} // namespace quorvanta
