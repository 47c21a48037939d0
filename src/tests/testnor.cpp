#include "tests/testnor.h"

#include "core/analysis_state.h"
#include "core/options.h"
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
    if (IsTest == False)
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
