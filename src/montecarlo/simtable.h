// Simulated tables: counts of the cells that subjects fall into.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

// Adds the cells that n new subjects fall into to the counts SimStudy.Value(1..k), k the number of
// probabilities, which add up to at most 1: the rest falls into none of them. Nothing for n < 1.
void AddToCells(i16 n, const Array1<f32>& probabilities);

// The sizes of groups that share all subjects of a study in given parts: each subject goes to the
// group that lacks most of its part, so that none is ever off by a whole subject or more, and later
// analyses only add to what there is.
class Allocation {
  public:
    // For the sizes SimSize1 of all analyses; at least one part, all above 0.
    void Prepare(const std::vector<f64>& parts);

    // The size of group 0.. at the current analysis, and how many of it are new there.
    i16 Size(std::size_t group) const;
    i16 NewOnes(std::size_t group) const;

  private:
    std::vector<std::vector<i16>> sizes_; // by analysis
};

} // namespace quorvanta
