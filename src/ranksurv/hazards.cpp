#include "ranksurv/hazards.h"

#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr f64 Ln2 = 0.693147180559945;

constexpr OneSampleKinds OneHazard{Group::H1Rate,
                                   Kind::H0Rate,
                                   {Kind::H1Rate, Kind::H1RateMinusH0, Kind::H1RateOverH0},
                                   Kind::RateLeftLimit,
                                   Kind::RateRightLimit};
constexpr OneSampleKinds OneIncidence{
    Group::H1Incidence,
    Kind::H0Incidence,
    {Kind::H1Incidence, Kind::H1IncidenceMinusH0, Kind::H1IncidenceOverH0},
    Kind::ProportionLeftLimit,
    Kind::ProportionRightLimit};
constexpr OneSampleKinds OneMedian{Group::H1Median,
                                   Kind::H0Median,
                                   {Kind::H1Median, Kind::H1MedianMinusH0, Kind::H1MedianOverH0},
                                   Kind::PoissonMeanLeftLimit,
                                   Kind::PoissonMeanRightLimit};

constexpr TwoSampleKinds TwoHazards(i16 h0, i16 left, i16 right) {
    return {Group::Rate2,
            h0,
            NoKind,
            Kind::H1Rate1,
            {Kind::H1Rate2, Kind::H1Rate2Minus1, Kind::H1Rate2Over1},
            left,
            right};
}
constexpr TwoSampleKinds TwoIncidences(i16 h0, i16 left, i16 right) {
    return {Group::Incidence2,
            h0,
            NoKind,
            Kind::H1Incidence1,
            {Kind::H1Incidence2, Kind::H1Incidence2Minus1, Kind::H1Incidence2Over1},
            left,
            right};
}
constexpr TwoSampleKinds TwoMedians(i16 h0, i16 left, i16 right) {
    return {Group::Median2,
            h0,
            NoKind,
            Kind::H1Median1,
            {Kind::H1Median2, NoKind, Kind::H1Median2Over1},
            left,
            right};
}

constexpr TwoSampleKinds HazardDifference =
    TwoHazards(Kind::H0Rate2Minus1, Kind::RateDifferenceLeftLimit, Kind::RateDifferenceRightLimit);
constexpr TwoSampleKinds HazardRatio =
    TwoHazards(Kind::H0Rate2Over1, Kind::RatioLeftLimit, Kind::RatioRightLimit);
constexpr TwoSampleKinds IncidenceDifference =
    TwoIncidences(Kind::H0Incidence2Minus1, Kind::ProportionDifferenceLeftLimit,
                  Kind::ProportionDifferenceRightLimit);
constexpr TwoSampleKinds IncidenceRatio =
    TwoIncidences(Kind::H0Incidence2Over1, Kind::MedianLeftLimit, Kind::MedianRightLimit);
constexpr TwoSampleKinds MedianDifference =
    TwoMedians(Kind::H0Median2Minus1, Kind::MeanLeftLimit, Kind::MeanRightLimit);
constexpr TwoSampleKinds MedianRatio =
    TwoMedians(Kind::H0Median2Over1, Kind::MedianLeftLimit, Kind::MedianRightLimit);

constexpr SampleKinds LossRates{Kind::LossRate,
                                Group::LossRate2,
                                Kind::LossRate1,
                                {Kind::LossRate2, Kind::LossRate2Minus1, Kind::LossRate2Over1}};
constexpr SampleKinds LossIncidences{
    Kind::LossIncidence,
    Group::LossIncidence2,
    Kind::LossIncidence1,
    {Kind::LossIncidence2, Kind::LossIncidence2Minus1, Kind::LossIncidence2Over1}};

f32 FromIncidence(f32 proportion) {
    return Single(-std::log1p(-f64{proportion}));
}

} // namespace

void OfferSurvivalInput() {
    OfferChecks({Check::Incidences, Check::Medians});
}

SurvivalInput ChosenSurvivalInput() {
    if (Ticked(Check::Medians))
        return SurvivalInput::Median;
    return Ticked(Check::Incidences) ? SurvivalInput::Incidence : SurvivalInput::Hazard;
}

f32 HazardOf(SurvivalInput input, f32 value) {
    if (input == SurvivalInput::Median)
        return Single(Ln2 / f64{value});
    return input == SurvivalInput::Incidence ? FromIncidence(value) : value;
}

f32 LossHazardOf(SurvivalInput input, f32 value) {
    return input == SurvivalInput::Incidence ? FromIncidence(value) : value;
}

const OneSampleKinds& OneSurvivalKinds(SurvivalInput input) {
    if (input == SurvivalInput::Median)
        return OneMedian;
    return input == SurvivalInput::Incidence ? OneIncidence : OneHazard;
}

const TwoSampleKinds& TwoSurvivalKinds(SurvivalInput input, bool isRatio) {
    if (input == SurvivalInput::Median)
        return isRatio ? MedianRatio : MedianDifference;
    if (input == SurvivalInput::Incidence)
        return isRatio ? IncidenceRatio : IncidenceDifference;
    return isRatio ? HazardRatio : HazardDifference;
}

const SampleKinds& LossKinds(SurvivalInput input) {
    return input == SurvivalInput::Incidence ? LossIncidences : LossRates;
}

} // namespace quorvanta
