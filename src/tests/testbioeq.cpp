#include "tests/testbioeq.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "tests/lists/crossover.h"
#include "tests/locationeffect.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta {

namespace {

i16 BioH1Mode; // 1: the ratio is entered itself; otherwise two medians
i16 BioUseCv;  // non-zero: the coefficient of variation stands for the log-scale deviation

Hypotheses hypotheses;
i16 deviation;
SampleValues sizes;

f64 Log(f32 value) {
    return std::log(f64{value});
}

f32 LogRatio() {
    return Single(BioH1Mode == AsDifference ? Log(Single(hypotheses.Truth()))
                                            : Log(hypotheses.Second()) - Log(hypotheses.First()));
}

Locations LogHypotheses() {
    return {Single(Log(hypotheses.Left())), Single(Log(hypotheses.Right())), LogRatio()};
}

// A lognormal variable with this coefficient of variation has this deviation of its logarithm.
f32 LogDeviation() {
    const f32 entered = Single(ParValue(deviation));
    return BioUseCv == 0 ? entered : Single(std::sqrt(std::log(f64{entered} * f64{entered} + 1)));
}

} // namespace

void TESTBIOEQ::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({TwoOneSided});
    OfferForms(TreatmentMediansKinds);
    OfferGroups({Group::LogSd});
    OfferForms(SequenceKinds);
}

void TESTBIOEQ::SetParList() {
    BioUseCv = ChosenOption(Group::LogSd);
    StartTestList();
    hypotheses = AddHypotheses(TreatmentMediansKinds, EffectScale::Log);
    BioH1Mode = hypotheses.TruthForm();
    deviation = AddPar(BioUseCv != 0 ? Kind::CoefficientOfVariation : Kind::LogSd);
    sizes = AddSizes(SequenceKinds);
}

bool TESTBIOEQ::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

void TESTBIOEQ::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
}

// Two one-sided t-tests of the log ratio (D. J. Schuirmann, Journal of Pharmacokinetics and
// Biopharmaceutics 15, 1987, 657-680; E. Diletti, D. Hauschke and V. W. Steinijans, International
// Journal of Clinical Pharmacology, Therapy and Toxicology 29, 1991, 1-8).
f64 TESTBIOEQ::RootFunction() {
    const auto [low, high, ratio] = LogHypotheses();
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    // The half belongs to the two periods: each subject has both treatments.
    const f32 se = Single(f64{LogDeviation()} * std::sqrt((1 / n1 + 1 / n2) / 2));
    return TPowerEq(ratio, se, Single(f64{ratio} - f64{low}), Single(f64{high} - f64{ratio}),
                    Single(n1 + n2 - 2));
}

// A subject's two logarithms differ by the treatments and by the periods, which the two sequences
// have in opposite order: half the sum of their mean differences is the log ratio without the
// periods. The variance of a difference is twice that of a logarithm.
void TESTBIOEQ::GetSimPar() {
    const auto [low, high, ratio] = LogHypotheses();
    SetSimLocations(low, high, ratio);
    SimScale1 = SimScale2 = Single(f64{LogDeviation()} * std::sqrt(2.0));
}

void TESTBIOEQ::SimSample(i16 n1, i16 n2, bool isH1) {
    AddNormals({n1, SimLocation(isH1), SimScale1}, {n2, SimLocation(isH1), SimScale2});
}

f32 TESTBIOEQ::SimTest(i16 n1, i16 n2) {
    const f64 df = static_cast<f64>(n1) + n2 - 2;
    if (n1 < 1 || n2 < 1 || df < 1)
        return 1;
    const f64 ratio = (SimMean(1, n1) + SimMean(2, n2)) / 2;
    const f64 variance = (SimSquares(1, n1) + SimSquares(2, n2)) / df;
    const f32 se = Single(std::sqrt(variance * (1.0 / n1 + 1.0 / n2)) / 2);
    return TPValue(Single(ratio), SimLoc1, se, SimLoLimit, SimHiLimit, Single(df));
}

} // namespace quorvanta
