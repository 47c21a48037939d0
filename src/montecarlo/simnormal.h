// The running sums of a simulated study with normal observations, and where its hypotheses lie.
//
// Sum1 and Sum2 of SimStudy are the sums of the observations of the two groups. Of single
// observations, Sum3 and Sum4 are the sums of their deviations from the true means, Sum5 and Sum6
// those of the squares of the deviations: the variances follow from them without the loss of
// digits that the squares of large observations would bring.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Prepares SimLoc1, what is drawn where H0 is true: its value, or of two one-sided tests the limit
// that is nearer to the truth, the left one from the middle; SimLoc2, what is drawn where H1 is
// true: the truth; SimLoLimit and SimHiLimit, the two limits.
void SetSimLocations(f32 null, f32 right, f32 truth);

// The one of them that is drawn.
f32 SimLocation(bool isH1);

// Adds the sum of n new observations with this mean and standard deviation to that of a group, in
// one draw. Nothing for n < 1.
void AddNormalSum(i16 n, f32 mean, f32 sd, f32& sum);

// New observations of a group: so many, with this mean and standard deviation.
struct NewNormals {
    i16 Size = 0;
    f32 Mean = 0;
    f32 Sd = 0;
};

// Adds them to the sums of the groups, those of group 1 being drawn first. Of a Size < 1 nothing.
void AddNormals(const NewNormals& first, const NewNormals& second);

// The mean of a group of n > 0, and the sum of squares about that mean; not below 0.
f64 SimMean(int group, i16 n);
f64 SimSquares(int group, i16 n);

} // namespace quorvanta
