#include "tests/lists/means.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/kinds.h"
#include "core/options.h"

namespace quorvanta {

namespace {

struct MeansKinds {
    OneSampleKinds One;
    TwoSampleKinds Two;
    SampleKinds Deviations;
};

constexpr MeansKinds MeanKinds{OneMeanKinds, TwoMeansKinds, SdKinds};
// Medians have no ratio form of their own beside the effect, which is the ratio.
constexpr MeansKinds MedianKinds{{Group::H1Median,
                                  Kind::H0Median,
                                  {Kind::H1Median, Kind::H1MedianMinusH0, Kind::H1MedianOverH0},
                                  Kind::MedianLeftLimit,
                                  Kind::MedianRightLimit},
                                 {Group::Median2,
                                  Kind::H0Median2Over1,
                                  Kind::H1Median2Over1,
                                  Kind::H1Median1,
                                  {Kind::H1Median2, NoKind, NoKind},
                                  Kind::MedianLeftLimit,
                                  Kind::MedianRightLimit},
                                 ShapeKinds};
// One sample of differences of pairs.
constexpr MeansKinds PairedKinds{
    {Group::H1MeanOfDifference,
     Kind::H0MeanOfDifference,
     {Kind::H1MeanOfDifference, Kind::H1MeanOfDifferenceMinusH0, Kind::H1MeanOfDifferenceOverH0},
     Kind::MeanLeftLimit,
     Kind::MeanRightLimit},
    {},
    {Kind::SdOfDifference, 0, NoKind, {}}};

bool IsLogScale() {
    return CurrentVariant() == TestVariant::LTT;
}

const MeansKinds& Kinds() {
    if (IsLogScale())
        return MedianKinds;
    return CurrentVariant() == TestVariant::PTT ? PairedKinds : MeanKinds;
}

// Known standard deviations are entered for each group; estimated ones only with the Satterthwaite
// approximation.
bool HasUnequalSd() {
    const bool known = IsTest == False ? ParListNo == 0 : TestNo == MeansDesign;
    return NoOfSamples == TwoSamples && (known || Ticked(Check::Satterthwaite));
}

} // namespace

void MeansList::Offer() {
    if (NoOfSamples == OneSample)
        return OfferForms(Kinds().One);
    OfferForms(Kinds().Two);
    if (HasUnequalSd())
        OfferForms(Kinds().Deviations);
    OfferForms(SizeKinds);
}

void MeansList::Build() {
    const MeansKinds& kinds = Kinds();
    LogScale = IsLogScale();
    const EffectScale scale = LogScale ? EffectScale::Log : EffectScale::Plain;
    StartTestList();
    Hypothesis = NoOfSamples == OneSample ? AddHypotheses(kinds.One, scale)
                                          : AddHypotheses(kinds.Two, scale);
    Deviations = HasUnequalSd() ? AddPair(kinds.Deviations) : AddCommonValue(kinds.Deviations);
    Sizes = AddSizes();
    DfEntry = HasUnequalSd() ? i16{0} : AddDfEntry();
}

bool MeansList::Check() const {
    return Hypothesis.Check() && Deviations.Check() && Sizes.Check();
}

void MeansList::Narrow(f64& lower, f64& upper) const {
    Hypothesis.Narrow(lower, upper);
    Deviations.Narrow(lower, upper);
    Sizes.Narrow(lower, upper);
}

i16 AddDfEntry() {
    if (Ticked(Check::DegreesOfFreedom))
        return AddPar(Kind::DegreesOfFreedom);
    return Ticked(Check::GroupsInAnova) ? AddPar(Kind::NoOfGroups) : i16{0};
}

} // namespace quorvanta
