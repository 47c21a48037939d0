// The kinds of the scales of two samples in tests that compare them.
#pragma once

#include "tests/lists/hypotheses.h"

namespace quorvanta {

// Their ratio is 1 under H0. By itself it is entered for a scale 1 of 1.
inline constexpr TwoSampleKinds ScaleKinds{
    Group::H1Scale2, NoKind, Kind::H1Scale2Over1, Kind::H1Scale1, {Kind::H1Scale2, NoKind, NoKind},
    NoKind,          NoKind};

} // namespace quorvanta
