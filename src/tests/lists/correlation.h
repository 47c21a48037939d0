// The kinds of one correlation coefficient in a test.
#pragma once

#include "core/kinds.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

inline constexpr OneSampleKinds CorrelationKinds{
    Group::H1Correlation,
    Kind::H0Correlation,
    {Kind::H1Correlation, Kind::H1CorrelationMinusH0, Kind::H1CorrelationOverH0},
    Kind::CorrelationLeftLimit,
    Kind::CorrelationRightLimit};

} // namespace quorvanta
