// Random variates (the module RANDDIST): everything that a simulation draws, in standard form.
//
// A generator fills RandSample(1..upper bound) with one draw per element; element 0 is never
// touched. The caller sizes the array, calls and reads, and does the scaling and shifting. Except
// where a function says that it resizes, an array that was never dimensioned is a RunTimeError.
//
// The methods are the simple ones: inversion, one pair of uniforms for each normal variate (G. E.
// P. Box and M. E. Muller, 1958) with the second root thrown away, and rejection only for the
// broken part of a gamma shape. Draws are 32-bit, arithmetic is 64-bit, and a variate is rounded to
// 32 bits when it is stored. The guard constants in the logarithms differ from generator to
// generator on purpose: they fix the tails. Uniforms are drawn in the order that the formulas
// write them, for each element in turn, so that a seed reproduces a simulation.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

extern Array1<f32> RandSample;  // (0..n) the draws of the last generator
extern Array1<f32> RandSample2; // (0..n) second coordinates; sized by the caller
extern f32 SimDistrPar;         // the one shape parameter of SimDistrNo's family

// Values of SimDistrNo.
inline constexpr i16 SimUniform = 0;
inline constexpr i16 SimNormal = 1;
inline constexpr i16 SimExponential = 2;
inline constexpr i16 SimLaplace = 3;
inline constexpr i16 SimCauchy = 4;
inline constexpr i16 SimWeibull = 5;
inline constexpr i16 SimLogistic = 6;
inline constexpr i16 SimPiecewise = 7;
inline constexpr i16 SimLognormal = 8;
inline constexpr i16 SimExtremeValue = 9;
inline constexpr i16 SimGamma = 10;
inline constexpr i16 SimBinomial = 11;
inline constexpr i16 SimMultinomial = 12;
inline constexpr i16 SimPoisson = 13;
inline constexpr i16 SimHypergeometric = 14;
inline constexpr i16 SimChi2 = 15;

// Resizes RandSample to 0..n and draws from the family of SimDistrNo with SimDistrPar. The
// piecewise and the discrete families have parameters of their own and are called directly: for
// their codes RandSample is resized and stays 0. A lognormal shape of exactly 0 becomes 1e-5 in
// SimDistrPar itself and stays so.
void RandFromDistrCode(i16 n);

void RandUniform01();      // [0, 1)
void RandUniformCentred(); // [-0.5, 0.5): its scale is a range, not a standard deviation
void RandNormal();
void RandExponential();  // mean 1
void RandLaplace();      // density exp(-|x|)/2
void RandCauchy();       // median 0, quartiles -1 and 1
void RandLogistic();     // density e^-x/(1 + e^-x)^2
void RandExtremeValue(); // distribution function exp(-exp(-x)); U held within 1e-5..0.99999

void RandWeibull(f32 shape);   // survival function exp(-x^shape); shape 0 divides by zero
void RandLognormal(f32 shape); // exp(z/shape), at most exp(75); shape 0 divides by zero

// Gamma with scale 1: the integer part of the shape as a sum of exponentials, the rest by the
// rejection method of J. H. Ahrens and U. Dieter (1974), algorithm GS.
void RandGamma(f32 shape);

// Chi-square: up to 30 degrees of freedom (rounded, halves to even) a sum of squares, 0 when they
// round to 0; above 30 the cube of E. B. Wilson and M. M. Hilferty (1931).
void RandChi2(f32 df);

// Standard bivariate normal with correlation rho: first coordinates into RandSample, second ones
// into RandSample2. |rho| > 1 is an invalid argument.
void RandBivNormal(f32 rho);

// One multivariate normal vector: resizes RandSample to 0..n, n the upper bound of T's columns.
// T(1..n, 1..n) is the transposed factor of the covariance matrix T'T, M(1..n, 1) are the means.
void RandMultiNormal(const Array2<f64>& T, const Array2<f32>& M);

// Event times under a hazard that is constant within intervals: S(1..m) are their starts, the first
// 0, and H(1..m) the hazards. A time past the last start goes on at the hazard of interval m - 1,
// so H(m) is never used: callers append a bound that ends the last interval. With m = 1 nothing is
// drawn and the elements keep their values.
void RandPiecewiseExp(const Array1<f32>& S, const Array1<f32>& H);

// The same after RandSample has been resized to 0..n.
void RandPiecewiseExpSized(i16 n, const Array1<f32>& S, const Array1<f32>& H);

// --- Survival studies -------------------------------------------------------------------------

// One simulated study, subject by subject (1..n), group 1 before group 2.
struct SurvivalRecord {
    Array1<f32> Entry;  // time of entry, counted from the start of the study
    Array1<f32> Time;   // from entry to event or loss
    Array1<f32> Group;  // 1 or 2
    Array1<i16> Status; // 0 event, 1 lost

    // All fields 1..n and 0, as the simulators expect them.
    void ReDim(int n);
};

// n1 + n2 subjects. Event times come from the family of SimDistrNo: times f1 in group 1, times f2
// and then f3 in group 2. Times to loss are exponential with the rates L1 and L2; 0: no loss. Entry
// is uniform over the accrual time A when its shape g is 0, else exponential with rate g, truncated
// to 0..A.
//
// Group 2 compares the time to loss with the event time before f3 is applied: callers put the whole
// scale into f2 and pass f3 = 1.
void SimSurvivalTwoGroups(i16 n1, i16 n2, f32 f1, f32 f2, f32 f3, f32 L1, f32 L2, f32 A, f32 g,
                          SurvivalRecord& record);

// The same for hazards and loss hazards that are constant within intervals with the starts S. Under
// the null hypothesis H0 serves both groups, with IsH1 the groups have H1a and H1b.
void SimSurvivalPiecewise(i16 n1, i16 n2, const Array1<f32>& S, const Array1<f32>& H0,
                          const Array1<f32>& H1a, const Array1<f32>& H1b, bool IsH1,
                          const Array1<f32>& Q1, const Array1<f32>& Q2, f32 A, f32 g,
                          SurvivalRecord& record);

// What has been seen of a record's first n subjects by study time t: those who entered before t,
// their time cut off at t with OutCens 1. The outputs come in with at least n elements from 1 on
// and are cut to the number of these subjects; if there is none they stay as they were.
void TruncateAtStudyTime(i16 n, f32 t, const SurvivalRecord& record, Array1<f32>& OutTime,
                         Array1<f32>& OutGroup, Array1<i16>& OutCens);

// --- Counts -----------------------------------------------------------------------------------

// Successes among n trials.
void RandBinomial(i16 n, f32 p);

// Marked ones in a sample of n from a population of N, of which the share p is marked, by inversion
// from zero. An element keeps its value when the sum of all probabilities does not exceed the
// uniform number, as for n > N.
void RandHypergeometric(i16 N, i16 n, f32 p);

// Events in a unit of time at the rate lambda, counted by exponential spacings. A count past 16
// bits is an overflow, a rate of 0 a division by zero.
void RandPoisson(f32 lambda);

// The k category counts of one sample of n, added to RandSample(1..k): the caller sizes and clears
// it. P(1..k) are proportions. A trial whose uniform number is 0, or lies above their sum, counts
// nowhere.
void RandMultinomial(i16 n, const Array1<f32>& P);

} // namespace quorvanta
