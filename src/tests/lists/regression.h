// The vocabulary of the lists about slopes and correlations.
#pragma once

#include "core/kinds.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

// The kinds of one slope in a test, and of two.
inline constexpr OneSampleKinds OneSlopeKinds{
    Group::H1Slope,
    Kind::H0Slope,
    {Kind::H1Slope, Kind::H1SlopeMinusH0, Kind::H1SlopeOverH0},
    Kind::MeanLeftLimit,
    Kind::MeanRightLimit};
inline constexpr TwoSampleKinds TwoSlopesKinds{Group::Slope2,
                                               Kind::H0Slope2Minus1,
                                               Kind::H1Slope2Minus1,
                                               Kind::H1Slope1,
                                               {Kind::H1Slope2, NoKind, Kind::H1Slope2Over1},
                                               Kind::MeanLeftLimit,
                                               Kind::MeanRightLimit};
inline constexpr SampleKinds CovariateSdKinds{
    Kind::CovariateSd,
    Group::Sd2,
    Kind::CovariateSd1,
    {Kind::CovariateSd2, Kind::CovariateSd2Minus1, Kind::CovariateSd2Over1}};

// The kinds of one correlation in a test, and of two.
inline constexpr OneSampleKinds OneCorrelationKinds{
    Group::H1Correlation,
    Kind::H0Correlation,
    {Kind::H1Correlation, Kind::H1CorrelationMinusH0, Kind::H1CorrelationOverH0},
    Kind::CorrelationLeftLimit,
    Kind::CorrelationRightLimit};
inline constexpr TwoSampleKinds TwoCorrelationsKinds{
    Group::Correlation2,
    Kind::H0Correlation2Minus1,
    NoKind,
    Kind::H1Correlation1,
    {Kind::H1Correlation2, Kind::H1Correlation2Minus1, Kind::H1Correlation2Over1},
    Kind::CorrelationLeftLimit,
    Kind::CorrelationRightLimit};
// Sizes of which the distribution of a correlation leaves at least one.
inline constexpr SampleKinds CorrelationSizeKinds{
    Kind::SizeFrom4,
    Group::Size2,
    Kind::Size1From4,
    {Kind::Size2From4, Kind::Size2Minus1, Kind::Size2Over1}};

} // namespace quorvanta
