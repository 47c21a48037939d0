// Distribution functions (module PROBDIST): the normal family, the continuous distributions that
// tests are built on, and the location-scale families of tables, plots and simulations. The
// discrete ones are in numeric/probdist_discrete.h.
//
// The figures of the program are defined by these approximations: each step that is held in 32
// bits is, and no formula is to be replaced by a more exact one. How far each is from the exact
// function stands in docs/accuracy.md.
//
// Nothing here reports an error. What has no finite value is answered by a sentinel where a
// function names one, and raises a float fault otherwise.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// What the normal and the extreme value quantile answer to a probability outside 0 to 1.
inline constexpr f32 QuantileBelowAll = -100.0F;
inline constexpr f32 QuantileAboveAll = 100.0F;

// --- Normal family ----------------------------------------------------------------------------

// P(Z <= x) (M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 7.1.26,
// there for erf). Exactly 0.5 at 0, exactly 0 and 1 from |x| = 10 on.
f32 NorCdf(f32 x);

// P(|Z| <= |x|) with the sign of x, in 64 bits: what NorCdf(x) and NorCdf(-x) are both made of.
f64 CenterShare(f32 x);

// The density of Z at x.
f32 NorDensity(f32 x);

// The z with P(Z <= z) = p (Abramowitz and Stegun, 26.2.23): 1.96040 for 0.975, where 1.95996 is
// exact. -100 for p <= 0 and for a p too small to have a logarithm here (below 3e-17), 100 for
// p >= 1, exactly 0 for 0.5.
f32 NorInv(f32 p);

// The normal upper tail as Chi2Tail and FTail use it, and only they: its inverse does not agree
// with NorInv in the fourth digit. Mode 1 reads z and writes the tail into p (Abramowitz and
// Stegun, 26.2.19; 0 above z = 7). Mode 2 reads p and writes z (H. Toda 1967, without the last two
// coefficients, which matter for p below 0.001 only; 1.64485, 1.95996, 2.32635 and 2.57583 for the
// usual levels). Any other mode does nothing.
void NorTail(i16 mode, f32& z, f32& p);

// --- Gamma and beta functions -----------------------------------------------------------------

// ln Gamma(x) - 0.5 ln(2 pi), x > 0 (Stirling's series, Abramowitz and Stegun, 6.1.41, after a
// shift to x >= 10). BetaInc wants it without the constant.
f32 LogGammaStar(f32 x);

// n!, exact to the 64-bit float up to 50, Stirling's formula up to 140, 1e300 above. A negative n
// is a RunTimeError (BadIndex).
f64 Factorial(i16 n);

// What Factorial answers to an n above 140.
inline constexpr f64 FactorialTooLarge = 1e300;

// The regularised incomplete beta function I_x(a, b), a and b above 0: the continued fraction
// of Abramowitz and Stegun, 26.5.8, for a + 2 and b + 2, brought back by recurrence.
//
// x below 1e-5 counts as 1e-5, and the caller's x is set to it. The factor 1/B(a, b) is cut off at
// exp(75): with a and b both above 56 the result is too small. Both stay; with them
// TCdf(0, 10) is 0.5039.
f32 BetaInc(f32& x, f32 a, f32 b);

// --- Student's t ------------------------------------------------------------------------------

// P(T <= t), df above 0.
f32 TCdf(f32 t, f32 df);

// The t with P(T <= t) = p: the expansion of R. A. Fisher and E. A. Cornish (1960) around the
// normal quantile (Abramowitz and Stegun, 26.7.5), for df <= 1 the Cauchy quantile. p outside 0 to
// 1 goes through the expansion as -100 or 100.
f32 TInv(f32 p, f32 df);

// The non-central t distribution function by its normal approximation (Abramowitz and Stegun,
// 26.7.10), df above 0.
f32 NcTCdf(f32 t, f32 df, f32 delta);

// --- Chi-square -------------------------------------------------------------------------------

// The upper tail of chi-square. Mode 1 reads chi2 >= 0 and writes p: the finite sum (Abramowitz and
// Stegun, 26.4.4 and 26.4.5), above df = 40 the cube root form of E. B. Wilson and M. M. Hilferty
// (1931; 26.4.17). Mode 2 reads p and writes chi2, by bisection; with df = 1 it leaves the caller's
// p halved. A broken df makes the sum end where the next whole number would: Chi2Inv climbs in
// steps over a broken df.
void Chi2Tail(i16 mode, f32 df, f32& chi2, f32& p);

// P(X <= x): 0 for x <= 1e-10, else 1 for df <= 0. Up to df = 21 through FCdf with 10000
// denominator degrees of freedom, above by Wilson and Hilferty.
f32 Chi2Cdf(f32 x, f32 df);

// The x with P(X <= x) = p, 0 < p < 1.
f32 Chi2Inv(f32 p, f32 df);

// The non-central chi-square distribution function; 0 for x <= 0. With df above 10 or lambda above
// 50 by P. B. Patnaik (1949; Abramowitz and Stegun, 26.4.27), else the Poisson mixture 26.4.25.
f32 NcChi2Cdf(f32 x, f32 df, f32 lambda);

// --- F ----------------------------------------------------------------------------------------

// The upper tail of F for whole df1 and df2. Mode 1 reads f >= 0 and writes p by the finite sums
// (Abramowitz and Stegun, 26.6.4 to 26.6.8). Mode 2 reads p and writes f, by bisection, or with
// both df above 30 by E. Paulson (1942; 26.6.15).
void FTail(i16 mode, f32 df1, f32 df2, f32& f, f32& p);

// P(F <= f); f below 0 gives 0. With both df above 10 and one above 100 by Paulson's normal form.
f32 FCdf(f32 f, f32 df1, f32 df2);

// The f with P(F <= f) = p. Whole df: FTail when one is 10 or less, else Abramowitz and Stegun,
// 26.5.22; broken ones are interpolated. 99999 for whole df of 0 or less and for a df that is no
// number.
//
// When one df is 10 or less, both are cut to 999 in the caller's variables: NcFCdf, which has to be
// called with the same two, sums incomplete beta functions that can't do more.
f32 FInv(f32 p, f32& df1, f32& df2);

// The non-central F distribution function; 0 for f <= 0. lambda below 1e-5 counts as 1e-5, and the
// caller's lambda is set to it. With both df above 10 or lambda above 50 by Patnaik (1949;
// Abramowitz and Stegun, 26.6.20), else the Poisson mixture 26.6.18.
f32 NcFCdf(f32 f, f32 df1, f32 df2, f32& lambda);

// --- Interpolation ----------------------------------------------------------------------------

// x minus the largest whole number not above it.
f32 FracPart(f32 x);

// (1 - w) a + w b.
f32 InterpLinear(f32 a, f32 b, f32 w);

// --- Location-scale families ------------------------------------------------------------------
//
// Distribution function, density and quantile of the standard form. 1e-5, 0.99999 and 99999 are
// marks that tables and plots know: the guarded edges of a probability, and no finite density.

// Exponential with mean 1. The density at 0 is 99999, where the curve jumps. 0 <= q < 1.
f32 ExpCdf(f32 x);
f32 ExpDensity(f32 x);
f32 ExpInv(f32 q);

// Uniform on -0.5 to 0.5.
f32 UniformCdf(f32 x);
f32 UniformDensity(f32 x);
f32 UniformInv(f32 q);

// Laplace: the density is exp(-|x|) / 2. 0 < q < 1.
f32 LaplaceCdf(f32 x);
f32 LaplaceDensity(f32 x);
f32 LaplaceInv(f32 q);

f32 CauchyCdf(f32 x);
f32 CauchyDensity(f32 x);
f32 CauchyInv(f32 q);

// Logistic. The quantile is -99999 for q <= 0 and 99999 for q >= 1.
f32 LogisticCdf(f32 x);
f32 LogisticDensity(f32 x);
f32 LogisticInv(f32 q);

// Extreme value of maxima (Gumbel). The quantile is -100 for q <= 0 and 100 for q >= 1.
f32 ExtremeCdf(f32 x);
f32 ExtremeDensity(f32 x);
f32 ExtremeInv(f32 q);

// Weibull with scale s and shape g. The distribution function is lowered by 1e-5 and never below
// it for a positive x, 0.99999 for s <= 0; the density has the scale to the first power only,
// whatever the shape, is 99999 at 0, and 0 for s <= 0. Both stay. q = 1 stands for 1 - 1e-5.
f32 WeibullCdf(f32 x, f32 s, f32 g);
f32 WeibullDensity(f32 x, f32 s, f32 g);
f32 WeibullInv(f32 q, f32 s, f32 g);

// Lognormal: ln X has mean mu and standard deviation sigma. For x <= 0 distribution function and
// density are 1e-5; for sigma <= 0 they are 0.99999 and 1e-5.
f32 LognormCdf(f32 x, f32 mu, f32 sigma);
f32 LognormDensity(f32 x, f32 mu, f32 sigma);
f32 LognormInv(f32 q, f32 mu, f32 sigma);

// Gamma with scale s and shape g. 0 for x < 0; the distribution function is 0 at 0, else 0.99999
// for s <= 0, and comes from the integral of the density, to 1e-5; the density is 0 for s <= 0, and
// 99999 at 0 for a shape below 1.
f32 GammaCdf(f32 x, f32 s, f32 g);
f32 GammaDensity(f32 x, f32 s, f32 g);

// Piecewise exponential: the hazard is hazards(i) from cuts(i - 1) to cuts(i), i = 1, 2, ...; past
// the last cut nothing happens any more. 0 for t <= 0.
f32 PwExpCdf(f32 t, const Array1<f32>& cuts, const Array1<f32>& hazards);

// Its density; 99999, where a plot breaks the curve, at t = 0 and where a cut lies between t and
// the t of the last call.
f32 PwExpDensity(f32 t, const Array1<f32>& cuts, const Array1<f32>& hazards);

} // namespace quorvanta
