// The sizes of the samples of the current analysis, in whole subjects.
#pragma once

#include "core/catalogue.h"
#include "core/types.h"

#include <initializer_list>

namespace quorvanta {

// No parameter of the list.
inline constexpr i16 NoPar = -1;

// The first size of the list that has one of these roles; NoPar if none has.
i16 FindSize(std::initializer_list<SizeRole> roles);

// The partner of a first size; NoPar for a size that stands alone.
i16 FindSecondSize(SizeRole role);

// A size rounded up as the box of a size shows it.
f64 CountedSize(f64 size);

struct SizePair {
    f64 First;
    f64 Second;
};

// The texts of a first size and of its partner, in whole subjects. A difference or a ratio applies
// to the first size as it will be used.
SizePair CountedPair(i16 first, i16 second);

// What the texts say of the subjects: those of the only or first sample, and of the second one or
// of each other group; 0 where there is none.
SizePair CountedSizes();

// How many groups have the first of these sizes, and how many the second one: 1 of each, but of k
// groups 1 and k - 1, or k and none where all have one size.
SizePair CountedGroups();

} // namespace quorvanta
