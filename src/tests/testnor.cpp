#include "tests/testnor.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/options.h"
#include "tests/powereq.h"

#include <cmath>
#include <optional>

namespace quorvanta {

i16 NorH1Mode;
i16 NorSd2Mode;
i16 NorUneqSd;

namespace {

MeansList list;

// Groups of interchangeable parameters.
constexpr i16 groupMean = 0;
constexpr i16 groupMean2 = 1;
constexpr i16 groupSize2 = 2;
constexpr i16 groupMedian = 9;
constexpr i16 groupMedian2 = 10;
constexpr i16 groupMeanOfDifference = 21;
constexpr i16 groupSd2 = 29;
constexpr i16 groupShape2 = 31;
// Check boxes.
constexpr i16 checkDf = 0;
constexpr i16 checkGroups = 5;
constexpr i16 checkSatterthwaite = 16;
// Parameter kinds that all variants share.
constexpr i16 kindAlpha = 0;
constexpr i16 kindPower = 1;
constexpr i16 kindSize = 85;
constexpr i16 kindSize1 = 4;
constexpr i16 kindSize2 = 37;
constexpr i16 kindSizeDifference = 38;
constexpr i16 kindSizeRatio = 5;
constexpr i16 kindDf = 36;
constexpr i16 kindGroups = 17;

struct OneSampleKinds {
    i16 Group;
    i16 H0;
    i16 H1[3];
    i16 LeftLimit;
    i16 RightLimit;
    i16 Sd;
};

struct TwoSampleKinds {
    i16 Group;
    i16 Sd2Group;
    i16 H0;
    i16 Effect;
    i16 Mean1;
    i16 Mean2;
    i16 Mean2Ratio;
    i16 LeftLimit;
    i16 RightLimit;
    i16 CommonSd;
    i16 Sd1;
    i16 Sd2[3];
};

constexpr OneSampleKinds meanKinds{groupMean, 57, {58, 59, 60}, 6, 7, 2};
constexpr OneSampleKinds pairedKinds{groupMeanOfDifference, 157, {158, 159, 160}, 6, 7, 3};
constexpr OneSampleKinds medianKinds{groupMedian, 89, {90, 91, 92}, 97, 98, 27};

constexpr TwoSampleKinds meansKinds{groupMean2, groupSd2, 61, 62, 86,  87,
                                    88,         6,        7,  2,  216, {217, 218, 219}};
// Medians have no ratio form of their own beside the effect, which is the ratio.
constexpr TwoSampleKinds mediansKinds{groupMedian2, groupShape2,   93, 96, 94, 95, 0, 97, 98, 27,
                                      50,           {54, 107, 108}};

bool IsLogScale() {
    return CurrentVariant() == TestVariant::LTT;
}

const OneSampleKinds& OneSampleList() {
    if (IsLogScale())
        return medianKinds;
    return CurrentVariant() == TestVariant::PTT ? pairedKinds : meanKinds;
}

const TwoSampleKinds& TwoSampleList() {
    return IsLogScale() ? mediansKinds : meansKinds;
}

// Known standard deviations are entered for each group; estimated ones only with the Satterthwaite
// approximation.
bool HasUnequalSd() {
    const bool known = IsTest == False && ParListNo == 0;
    return NoOfSamples == TwoSamples && (known || Ticked(checkSatterthwaite));
}

// The effect, mean 2 - mean 1 or median 2 / median 1, is entered itself.
bool EffectIsEntered() {
    return NorH1Mode == AsDifference;
}

void AddOneSample() {
    const OneSampleKinds& kinds = OneSampleList();
    if (NoOfTails == TwoOneSided) {
        list.H0 = AddPar(kinds.LeftLimit);
        AddPar(kinds.RightLimit);
        list.H1 = AddPar(kinds.H1[0]);
    } else {
        list.H0 = AddPar(kinds.H0);
        list.H1 = AddPar(ParSelect(NorH1Mode, kinds.H1[0], kinds.H1[1], kinds.H1[2]));
    }
    list.Sd1 = AddPar(kinds.Sd);
    list.Size1 = AddPar(kindSize);
}

void AddTwoSamples() {
    const TwoSampleKinds& kinds = TwoSampleList();
    if (NoOfTails == TwoOneSided) {
        list.H0 = AddPar(kinds.LeftLimit);
        AddPar(kinds.RightLimit);
    } else {
        list.H0 = AddPar(kinds.H0);
    }
    if (EffectIsEntered()) {
        list.H1 = AddPar(kinds.Effect);
    } else {
        list.H1 = AddPar(kinds.Mean1);
        list.Mean2 = AddPar(NorH1Mode == AsRatio ? kinds.Mean2Ratio : kinds.Mean2);
    }
    if (NorUneqSd == 1) {
        list.Sd1 = AddPar(kinds.Sd1);
        list.Sd2 = AddPar(ParSelect(NorSd2Mode, kinds.Sd2[0], kinds.Sd2[1], kinds.Sd2[2]));
    } else {
        list.Sd1 = AddPar(kinds.CommonSd);
    }
    list.Size1 = AddPar(kindSize1);
    list.Size2 = AddPar(ParSelect(WorkNo, kindSize2, kindSizeDifference, kindSizeRatio));
}

f64 Wide(f32 x) {
    return static_cast<f64>(x);
}

// A location as the equation sees it.
f32 Location(f64 value) {
    return static_cast<f32>(list.LogScale ? std::log(Wide(static_cast<f32>(value))) : value);
}

f32 TrueEffect() {
    if (list.Mean2 == 0)
        return Location(ParValue(list.H1));
    const f32 mean1 = static_cast<f32>(ParValue(list.H1));
    const f32 mean2 = ParDep(list.Mean2, mean1, NorH1Mode);
    return static_cast<f32>(Wide(Location(Wide(mean2))) - Wide(Location(Wide(mean1))));
}

// H1 minus H0, for one or two tails.
f32 Difference() {
    const f32 h0 = Location(ParValue(list.H0));
    if (NoOfSamples == OneSample) {
        const f32 h1 = ParDep(list.H1, static_cast<f32>(ParValue(list.H0)), NorH1Mode);
        return static_cast<f32>(Wide(Location(Wide(h1))) - Wide(h0));
    }
    return static_cast<f32>(Wide(TrueEffect()) - Wide(h0));
}

// The value of the unknown at which the true effect is what is asked for, and whether the effect
// grows with the unknown.
struct EffectPoint {
    f64 At = 0;
    bool Rising = true;
};

// The unknown is the H1 value of one sample, in its form.
std::optional<EffectPoint> OneSamplePoint(f64 value) {
    if (NoOfTails == TwoOneSided || NorH1Mode == AsValue)
        return EffectPoint{value, true};
    const f64 h0 = ParValue(list.H0);
    if (NorH1Mode == AsDifference)
        return EffectPoint{value - h0, true};
    if (h0 == 0)
        return std::nullopt;
    return EffectPoint{value / h0, h0 > 0};
}

// The unknown is one of two means or medians.
std::optional<EffectPoint> TwoMeansPoint(f64 effect) {
    if (UnknownParNo == list.Mean2) {
        const f64 mean1 = ParValue(list.H1);
        const f64 mean2 = list.LogScale ? mean1 * effect : mean1 + effect;
        if (NorH1Mode == AsValue)
            return EffectPoint{mean2, true};
        if (mean1 == 0)
            return std::nullopt;
        return EffectPoint{mean2 / mean1, mean1 > 0};
    }
    const f64 second = ParValue(list.Mean2);
    if (NorH1Mode == AsRatio) {
        if (second == 1)
            return std::nullopt;
        return EffectPoint{effect / (second - 1), second > 1};
    }
    return EffectPoint{list.LogScale ? second / effect : second - effect, false};
}

std::optional<EffectPoint> PointOf(f64 effect) {
    if (NoOfSamples == OneSample)
        return OneSamplePoint(effect);
    if (list.Mean2 == 0)
        return EffectPoint{effect, true};
    return TwoMeansPoint(effect);
}

// The true effect on the scale on which it is entered.
f64 EnteredEffect() {
    if (NoOfSamples == OneSample || list.Mean2 == 0)
        return ParValue(list.H1);
    const f64 mean1 = ParValue(list.H1);
    const f64 second = ParValue(list.Mean2);
    if (list.LogScale)
        return second / mean1;
    return NorH1Mode == AsRatio ? mean1 * (second - 1) : second - mean1;
}

void KeepAbove(f64& lower, f64& upper, const EffectPoint& point) {
    if (point.Rising)
        lower = MaxOf(lower, point.At);
    else
        upper = MinOf(upper, point.At);
}

void KeepBelow(f64& lower, f64& upper, const EffectPoint& point) {
    KeepAbove(lower, upper, EffectPoint{point.At, !point.Rising});
}

void LimitsOfEffect(f64& lower, f64& upper) {
    const auto h0 = PointOf(ParValue(list.H0));
    if (!h0)
        return;
    if (SearchesLeft())
        KeepBelow(lower, upper, *h0);
    else
        KeepAbove(lower, upper, *h0);
}

// From the middle of the limits, where the power is highest, to one of them.
void LimitsOfTruth(f64& lower, f64& upper) {
    const f64 left = ParValue(list.H0);
    const f64 right = ParValue(list.H0 + 1);
    const f64 middle = list.LogScale ? std::sqrt(left * right) : (left + right) / 2;
    const auto low = PointOf(SearchesLeft() ? left : middle);
    const auto high = PointOf(SearchesLeft() ? middle : right);
    if (!low || !high)
        return;
    KeepAbove(lower, upper, *low);
    KeepBelow(lower, upper, *high);
}

void LimitsOfH0(f64& lower, f64& upper) {
    if (NoOfSamples == TwoSamples || NorH1Mode == AsValue) {
        RightTailLimit(lower, upper, EnteredEffect());
    } else if (NorH1Mode == AsRatio && !list.LogScale) {
        // delta = H0 (ratio - 1)
        if (ParValue(list.H1) > 1)
            LeftTailLimit(lower, upper, 0);
        else
            RightTailLimit(lower, upper, 0);
    }
}

f64 LocationMin() {
    return ParMin(NoOfSamples == OneSample ? OneSampleList().H1[0] : TwoSampleList().Mean2);
}

f64 LocationMax() {
    return ParMax(NoOfSamples == OneSample ? OneSampleList().H1[0] : TwoSampleList().Mean2);
}

} // namespace

const MeansList& CurrentMeans() {
    return list;
}

void TESTNOR::SetupTest() {
    if (IsTest == False)
        OfferSamples({OneSample, TwoSamples});
    if (NoOfSamples == OneSample) {
        // Between two limits there is no single H0 value to relate the true value to.
        if (NoOfTails != TwoOneSided)
            OfferGroups({OneSampleList().Group});
        return;
    }
    OfferGroups({TwoSampleList().Group});
    if (HasUnequalSd())
        OfferGroups({TwoSampleList().Sd2Group});
    OfferGroups({groupSize2});
}

void TESTNOR::SetParList() {
    list = MeansList();
    list.LogScale = IsLogScale();
    const bool oneSample = NoOfSamples == OneSample;
    NorH1Mode = ChosenOption(oneSample ? OneSampleList().Group : TwoSampleList().Group);
    NorSd2Mode = ChosenOption(TwoSampleList().Sd2Group);
    NorUneqSd = HasUnequalSd() ? 1 : 0;
    WorkNo = ChosenOption(groupSize2);

    StartParList();
    AddPar(kindAlpha);
    AddPar(kindPower);
    if (oneSample)
        AddOneSample();
    else
        AddTwoSamples();
    if (NorUneqSd == 0)
        list.Extra = AddDfEntry();
}

bool TESTNOR::CheckPar() {
    if (NoOfTails == TwoOneSided && !CheckPairs(list.H0))
        return false;
    if (NoOfSamples == OneSample)
        return NoOfTails == TwoOneSided ||
               CheckPair(list.H0, list.H1, LocationMin(), LocationMax(), NorH1Mode);
    if (list.Mean2 != 0 && !CheckPair(list.H1, list.Mean2, LocationMin(), LocationMax(), NorH1Mode))
        return false;
    if (list.Sd2 != 0) {
        const i16 kind = TwoSampleList().Sd2[0];
        if (!CheckPair(list.Sd1, list.Sd2, ParMin(kind), ParMax(kind), NorSd2Mode))
            return false;
    }
    return CheckPair(list.Size1, list.Size2, ParMin(kindSize2), ParMax(kindSize2), WorkNo);
}

void TESTNOR::SearchLimits(f64& lower, f64& upper) {
    const bool effectUnknown =
        UnknownParNo == list.H1 || (list.Mean2 != 0 && UnknownParNo == list.Mean2);
    if (NoOfSamples == OneSample) {
        if (NoOfTails != TwoOneSided)
            PairLimits(lower, upper, list.H0, LocationMin(), LocationMax(), NorH1Mode);
    } else {
        if (list.Mean2 != 0)
            PairLimits(lower, upper, list.H1, LocationMin(), LocationMax(), NorH1Mode);
        if (list.Sd2 != 0) {
            const i16 kind = TwoSampleList().Sd2[0];
            PairLimits(lower, upper, list.Sd1, ParMin(kind), ParMax(kind), NorSd2Mode);
        }
        PairLimits(lower, upper, list.Size1, ParMin(kindSize2), ParMax(kindSize2), WorkNo);
    }
    if (NoOfTails == TwoOneSided) {
        if (effectUnknown)
            LimitsOfTruth(lower, upper);
        else if (UnknownParNo == list.H0)
            upper = MinOf(upper, EnteredEffect());
        else if (UnknownParNo == list.H0 + 1)
            lower = MaxOf(lower, EnteredEffect());
    } else if (effectUnknown) {
        LimitsOfEffect(lower, upper);
    } else if (UnknownParNo == list.H0) {
        LimitsOfH0(lower, upper);
    }
}

i16 AddDfEntry() {
    if (Ticked(checkDf))
        return AddPar(kindDf);
    return Ticked(checkGroups) ? AddPar(kindGroups) : i16{0};
}

MeansValues ReadMeans() {
    MeansValues values;
    if (NoOfTails == TwoOneSided) {
        const f32 truth = TrueEffect();
        values.DeltaLow = static_cast<f32>(Wide(truth) - Wide(Location(ParValue(list.H0))));
        values.DeltaHigh = static_cast<f32>(Wide(Location(ParValue(list.H0 + 1))) - Wide(truth));
    } else {
        values.Delta = Difference();
    }
    values.Sd1 = static_cast<f32>(ParValue(list.Sd1));
    values.N1 = static_cast<f32>(ParValue(list.Size1));
    const f64 sd1 = Wide(values.Sd1);
    const f64 n1 = Wide(values.N1);
    if (NoOfSamples == OneSample) {
        values.Se = static_cast<f32>(sd1 / std::sqrt(n1));
        return values;
    }
    values.N2 = ParDep(list.Size2, values.N1, WorkNo);
    const f64 n2 = Wide(values.N2);
    if (NorUneqSd == 1) {
        values.Sd2 = ParDep(list.Sd2, values.Sd1, NorSd2Mode);
        const f64 sd2 = Wide(values.Sd2);
        values.Se = static_cast<f32>(std::sqrt(sd2 * sd2 / n2 + sd1 * sd1 / n1));
    } else {
        values.Se = static_cast<f32>(sd1 * std::sqrt(1 / n1 + 1 / n2));
    }
    return values;
}

f64 TESTNOR::RootFunction() {
    const MeansValues values = ReadMeans();
    return NorPowerEq(values.Delta, values.Se, values.Se, values.DeltaLow, values.DeltaHigh,
                      values.Se, values.Se, 0);
}

} // namespace quorvanta
