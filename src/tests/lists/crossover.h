// The vocabulary of crossover designs with two sequences.
#pragma once

#include "core/kinds.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

// The medians of the two treatments; their ratio is the effect.
inline constexpr TwoSampleKinds TreatmentMediansKinds{Group::Median2,
                                                      Kind::H0Median2Over1,
                                                      Kind::H1Median2Over1,
                                                      Kind::H1Median1,
                                                      {Kind::H1Median2, NoKind, NoKind},
                                                      Kind::RatioLeftLimit,
                                                      Kind::RatioRightLimit};
inline constexpr SampleKinds SequenceKinds{
    NoKind,
    Group::SequenceSize2,
    Kind::SequenceSize1,
    {Kind::SequenceSize2, Kind::SequenceSize2Minus1, Kind::SequenceSize2Over1}};

} // namespace quorvanta
