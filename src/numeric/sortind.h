// Sorting by an index (the module SORTIND).
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <cstdint>
#include <vector>

namespace quorvanta {

// Sizes index to 1..n and fills it with the positions 1..n in the order of values(1..n), smallest
// value first; the values stay in place. Equal values keep the order of their positions, and so do
// -0 and 0; a NaN comes after every number (before, when its sign is set).
//
// The order is thus the only one there is, whatever the method. Up to 80 values each one's place is
// counted directly; beyond, they are sorted digit by digit (H. H. Seward, 1954; D. E. Knuth, The
// Art of Computer Programming, vol. 3, 1998, algorithm 5.2.5R), by two digits of the range that
// they lie in, or by all four where the values are too close together for that. Neither looks at
// the arrangement of the data: above 80 values the time is proportional to n for sorted, equal or
// organ-pipe input as for any other.
void SortIndex(const Array1<f32>& values, Array1<i32>& index, i32 n);

// Sorts words by their upper 32 bits, the smallest first; equal ones keep their order. For keys
// that carry what belongs to them below: there is no index to follow then.
void SortByUpperHalf(std::vector<std::uint64_t>& words);

} // namespace quorvanta
