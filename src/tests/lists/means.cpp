#include "tests/lists/means.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/options.h"

namespace quorvanta {

namespace {

// Check boxes.
constexpr i16 checkDf = 0;
constexpr i16 checkGroups = 5;
constexpr i16 checkSatterthwaite = 16;
constexpr i16 kindDf = 36;
constexpr i16 kindGroups = 17;

struct MeansKinds {
    OneSampleKinds One;
    TwoSampleKinds Two;
    SampleKinds Deviations;
};

constexpr MeansKinds meanKinds{
    {0, 57, {58, 59, 60}, 6, 7}, {1, 61, 62, 86, {87, 0, 88}, 6, 7}, SdKinds};
// Medians have no ratio form of their own beside the effect, which is the ratio.
constexpr MeansKinds medianKinds{
    {9, 89, {90, 91, 92}, 97, 98}, {10, 93, 96, 94, {95, 0, 0}, 97, 98}, ShapeKinds};
// One sample of differences of pairs.
constexpr MeansKinds pairedKinds{{21, 157, {158, 159, 160}, 6, 7}, {}, {3, 0, 0, {}}};

bool IsLogScale() {
    return CurrentVariant() == TestVariant::LTT;
}

const MeansKinds& Kinds() {
    if (IsLogScale())
        return medianKinds;
    return CurrentVariant() == TestVariant::PTT ? pairedKinds : meanKinds;
}

// Known standard deviations are entered for each group; estimated ones only with the Satterthwaite
// approximation.
bool HasUnequalSd() {
    const bool known = IsTest == False && ParListNo == 0;
    return NoOfSamples == TwoSamples && (known || Ticked(checkSatterthwaite));
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
    if (Ticked(checkDf))
        return AddPar(kindDf);
    return Ticked(checkGroups) ? AddPar(kindGroups) : i16{0};
}

} // namespace quorvanta
