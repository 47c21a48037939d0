// The sizes of two groups: each by itself, or what both have in total and the ratio of the second
// to the first: subjects, events, time at risk.
#pragma once

#include "core/types.h"
#include "tests/lists/samples.h"

namespace quorvanta {

class GroupSizes {
  public:
    // Adds the two sizes, or a total and a ratio, to the list.
    void AddEach();
    void AddTotal(i16 totalKind, i16 ratioKind);

    // The sizes, or the parts of the total that belong to them; their sum and their ratio.
    f32 First() const;
    f32 Second() const;
    f64 Total() const;
    f64 Ratio() const;

    // Is the second size in its range, and has each group at least two subjects?
    bool Check() const;
    // Narrows the search so that this is so. A ratio within a total has the highest power where the
    // groups are about equal: of two solutions the search takes the larger one.
    void Narrow(f64& lower, f64& upper, f64 (*residual)()) const;

  private:
    bool CountsSubjects() const;

    SampleValues each_;
    i16 total_ = 0; // 0: each by itself; the ratio is next
};

} // namespace quorvanta
