#include "tests/testnor.h"

#include "core/analysis_state.h"
#include "core/options.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

i16 NorH1Mode;
i16 NorSd2Mode;
i16 NorUneqSd;

namespace {

MeansList list;

} // namespace

const MeansList& CurrentMeans() {
    return list;
}

void TESTNOR::SetupTest() {
    if (IsTest == False || IsGroupSeq == True)
        OfferSamples({OneSample, TwoSamples});
    MeansList::Offer();
}

void TESTNOR::SetParList() {
    list.Build();
    NorH1Mode = list.Hypothesis.TruthForm();
    NorSd2Mode = list.Deviations.SecondForm();
    NorUneqSd = list.Deviations.HasSecond() ? 1 : 0;
}

bool TESTNOR::CheckPar() {
    return list.Check();
}

void TESTNOR::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper);
}

MeansValues ReadMeans() {
    MeansValues values{ReadLocationEffect(list.Hypothesis, list.LogScale)};
    values.Se = MeanStandardError(list.Deviations, list.Sizes);
    return values;
}

// The z-test, whose standard error is the same under both hypotheses (J. M. Lachin, Controlled
// Clinical Trials 2, 1981, 93-113).
f64 TESTNOR::RootFunction() {
    const MeansValues values = ReadMeans();
    return NormalPowerEq({.Effect = values.Delta,
                          .Se0 = values.Se,
                          .Se1 = values.Se,
                          .AboveLeft = values.DeltaLow,
                          .BelowRight = values.DeltaHigh,
                          .Se0Left = values.Se,
                          .Se0Right = values.Se});
}

void TESTNOR::GetSimPar() {
    PrepareMeans();
}

// The sum of a sample is one draw: it is all that the test with a known deviation sees of it.
void TESTNOR::SimSample(i16 n1, i16 n2, bool isH1) {
    const SimMeans means = MeansOf(isH1);
    AddNormalSum(n1, means.First, SimScale1, SimStudy.Sum1);
    AddNormalSum(n2, means.Second, SimScale2, SimStudy.Sum2);
}

f32 TESTNOR::SimTest(i16 n1, i16 n2) {
    if (HasEmptySample(n1, n2))
        return 1;
    const f64 sd1{SimScale1};
    const f64 sd2{SimScale2};
    const f64 second = list.Sizes.HasSecond() ? sd2 * sd2 / n2 : 0;
    const f32 se = Single(std::sqrt(sd1 * sd1 / n1 + second));
    return NorPValue(SimEstimate(n1, n2), SimLoc1, se, SimLoLimit, SimHiLimit, 0);
}

void PrepareMeans() {
    const auto [null, right, truth] = ReadLocations(list.Hypothesis, list.LogScale);
    SetSimLocations(null, right, truth);
    SimScale1 = list.Deviations.First();
    SimScale2 = list.Deviations.HasSecond() ? list.Deviations.Second() : SimScale1;
}

SimMeans MeansOf(bool isH1) {
    const f32 location = SimLocation(isH1);
    return list.Sizes.HasSecond() ? SimMeans{0, location} : SimMeans{location, 0};
}

bool HasEmptySample(i16 n1, i16 n2) {
    return n1 < 1 || (list.Sizes.HasSecond() && n2 < 1);
}

f32 SimEstimate(i16 n1, i16 n2) {
    const f64 first = SimMean(1, n1);
    return Single(list.Sizes.HasSecond() ? SimMean(2, n2) - first : first);
}

f32 MeanStandardError(const SampleValues& deviations, const SampleValues& sizes) {
    const f64 sd1{deviations.First()};
    const f64 n1{sizes.First()};
    if (!sizes.HasSecond())
        return Single(sd1 / std::sqrt(n1));
    const f64 n2{sizes.Second()};
    if (!deviations.HasSecond())
        return Single(sd1 * std::sqrt(1 / n1 + 1 / n2));
    const f64 sd2{deviations.Second()};
    return Single(std::sqrt(sd2 * sd2 / n2 + sd1 * sd1 / n1));
}

} // namespace quorvanta
