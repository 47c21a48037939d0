// The recursion over the analyses: grid, weights, densities and exit probabilities of each stage
// (C. Jennison and B. W. Turnbull, Group Sequential Methods with Applications to Clinical Trials,
// 2000, section 19.3.2). All arguments and results are 32-bit floats, and so is every term of a sum
// once it is added.
//
// A stage whose boundaries, information and drift are what they were keeps its grid, its densities
// and its exit probabilities, and the densities between inner points of two grids, which do not
// depend on the boundaries, are kept as long as information and drift stay. So a search for a
// constant forms anew only what moves with the bound; the results are those of the plain recursion,
// bit for bit.
#pragma once

#include "groupseq/groupseq.h"

namespace quorvanta {

// The standard grid of 6r - 1 points for the density of a standard normal variate, into GridBase;
// r is GridFineness.
void GsStdGrid(i16 r);

// The standard grid around the drift at information I, cut off at the boundaries a and b, into
// GridX(1 to GridLast - GridFirst + 1).
//
// When a lies inside the grid the point just above a is overwritten by a, and the first point at or
// above b stays ahead of b, so that the last interval runs backwards and its weight is negative.
// That is deliberate: the figures are defined by it, and it changes no probability by more than
// 3e-6.
void GsTrimGrid(i16 r, f32 a, f32 b, f32 I);

// The points of GridX and those halfway between them, into GridZ of stage k.
void GsMidPoints(i16 k);

// Simpson's weights of these points, into GridW; 0 where there are less than 3.
void GsSimpsonWeights(i16 k);

// The information gained since the analysis before, but not less than 1e-5 of that of the last
// analysis, or 1e-5 where that is above 1. Analyses closer than 0.002 are not exact.
f32 GsIncrement(i16 k);

// The density of Z(k) = y given Z(k - 1) = x; of Z(1) = x for k = 1, whatever y is.
f32 GsIncrDensity(i16 k, f32 x, f32 y, f32 drift);

// P(Z(k) >= b given Z(k - 1) = x), k at least 2.
f32 GsIncrUpperProb(i16 k, f32 x, f32 b, f32 drift);

// Grid, points and weights of stage k for the drift Theta, Info(k), LowBound(k) and UppBound(k).
// The stages before are ready.
void GsPrepareStage(i16 k);

// The density that the process goes on to point j of stage k, times its weight, and as GridH(j, k).
f32 GsDensityAt(i16 k, i16 j, f32 drift);

// P(the process goes on to analysis k and is at or above UppBound(k) there), and that it is below
// LowBound(k); k at least 2.
f32 GsUpperExit(i16 k);
f32 GsLowerExit(i16 k);

} // namespace quorvanta
