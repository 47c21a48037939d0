// Procedures of many hypotheses: families, gatekeeping, the decision on one data set, and the
// counts that become the family-wise error and the power. Everything here works on data that are
// given; nothing draws them.
//
// Tests are numbered 1 to NoOfTests, families f and analyses k from 1 on, positions t within a
// family from 1 on.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "multcomp/mctable.h"

#include <vector>

namespace quorvanta {

inline constexpr i16 MostTests = 10;
inline constexpr i16 MostFamilies = 9; // and combinations of analyses and families
inline constexpr i16 MostAnalyses = 6;
inline constexpr i16 MostGroups = 10;

template <class T>
using FamilyArray = FixedGrid<T, 1, MostFamilies, 1, MostAnalyses>; // (f, k)
template <class T>
using FamilyPositions = FixedArray<FamilyArray<T>, 1, MostTests>; // (t)(f, k)

// What power means: some false hypothesis is rejected, all are, the share that is.
inline constexpr i16 DisjunctivePower = 0;
inline constexpr i16 ConjunctivePower = 1;
inline constexpr i16 AveragePower = 2;

// Which hypotheses a data set is judged by.
inline constexpr i16 UnderH0 = 0;
inline constexpr i16 UnderH1 = 1;

// --- The plan -----------------------------------------------------------------------------------

extern i16 PowerKind;
extern i16 SerialGate;   // 1: a family is tested if all of the one before are rejected
extern i16 ParallelGate; // 1: it is tested if some of it are, at the level of those
i16 GateCount();

extern i16 NoOfTests;
extern i16 NoOfMeans; // groups, or dimensions
extern FixedArray<i16, 1, MostAnalyses> NoOfFamilies;
extern FamilyArray<i16> FamilySize;
extern FamilyArray<i16> FamilyMethod; // an AdjustMethod
extern FamilyArray<f32> FamilyLevel;
extern FamilyPositions<i16> FamilyTest;   // the test at a position
extern FamilyPositions<f32> FamilyWeight; // its share of the level, under the weighted method
extern FamilyPositions<f32> TestCrit;     // the critical value at a position, in the method's order
extern FixedGrid<f32, 1, MostGroups, 1, MostTests> Contrast; // (group, test)
extern FixedArray<f32, 1, MostGroups> H1Means;

// One family with all tests in their own order at each analysis, of the same method, equal weights
// and the level of the analysis.
void McDefaultFamilies(const std::vector<f32>& levels, i16 method);

// Families by number: familyNo[k - 1][test - 1] is the family of the test at analysis k, 1 to 9; 0
// leaves it out. The numbers are ranks: gaps close. methods and weights count as McDefaultFamilies'
// do until they are set. False, after a message, for more than 9 combinations of analyses and
// families.
bool McSetUpFamilies(const std::vector<std::vector<i16>>& familyNo, const std::vector<f32>& levels,
                     i16 method);

// "Number of Combinations of Interim and Final Analyses and Families Within an Analysis Must Not
// Exceed 9.", and false, where these families are more.
bool McHaveRoom(const std::vector<std::vector<i16>>& familyNo);

// Contrasts of the family that MultCompKind names: of k means each from the first, all pairs in
// their lexicographic order, each mean. NoOfTests and NoOfMeans with them. False, after a message,
// for more than 10 pairs. Linear combinations are the caller's.
bool McStandardContrasts(i16 k);

// "Average Power Is Calculated Only When No Interim Analyses.", and false, where that is violated.
bool McCheckPowerKind(i16 noOfInterim);

// --- The true state -----------------------------------------------------------------------------

extern FixedArray<bool, 1, MostTests> TrueNull; // H0 of the test holds
extern i16 NoOfFalseNull;

// From the contrasts of H1Means.
void McMarkNulls();

// The covariance of a normal vector: equal correlation (form 0), or r^|i - j| (form 1).
Array2<f64> McCovariance(i16 form, i16 dimension, f64 sd, f64 r);

// The lower triangular factor L with L L' = covariance, row by row. False for a matrix that is not
// positive semidefinite.
bool McCholesky(const Array2<f64>& covariance, Array2<f64>& factor);

// --- Critical values ----------------------------------------------------------------------------

// All critical values, at df degrees of freedom of analysis k.
void McAllCrit(const std::vector<f32>& df);

// --- One data set -------------------------------------------------------------------------------

// Statistics of independent groups: their means and sizes, and the sum of squares within them,
// which has one degree of freedom less for each group. Z is large where H0 is doubtful: turned by
// LeftTail, absolute with two tails. Without any error it is as large as there are numbers.
void McGroupStatistics(const std::vector<f64>& means, const std::vector<f64>& sizes, f64 within,
                       Array1<f32>& z);

// Statistics of n vectors: their mean, and the covariance of one of them, known or estimated.
void McVectorStatistics(const std::vector<f64>& means, const Array2<f64>& covariance, f64 n,
                        Array1<f32>& z);

// What was decided on one data set at one analysis.
struct McDecision {
    FixedArray<bool, 1, MostTests> Rejected;
    i16 TrueRejected = 0;
    i16 FalseRejected = 0;
    f64 Result = 1;    // the p-value for the run: below 0 the share rejected, in hundredths
    bool Stop = false; // the trial stops here
};

// Decides by the families of analysis k, counts, and judges: under H0 the result is 0 where a true
// null hypothesis was rejected, else 1; under H1 0 where the power's event was met, with average
// power -100 times the share of the false ones rejected. df: the analysis' degrees of freedom.
// Where no hypothesis is true, the data sets under H0 have none that is false: any one that is
// rejected is an error. What an earlier analysis of the trial has rejected stays so, and is counted
// there.
McDecision McRunOne(const Array1<f32>& z, i16 k, f32 df, i16 mode);

// --- Counts -------------------------------------------------------------------------------------

extern i32 SimCount; // data sets under H1, with one under H0 beside each of them
extern FixedArray<FixedGrid<i32, 1, MostAnalyses, 1, MostFamilies>, 1, MostTests>
    RejectCount; // (test)(k, f)

void McClearCounts();

// The shares of the data sets that rejected each test, of so many analyses.
McTable McShowResult(i16 analyses);

} // namespace quorvanta
