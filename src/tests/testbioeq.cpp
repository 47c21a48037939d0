#include "tests/testbioeq.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/crossover.h"
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
    const f64 ratio{LogRatio()};
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    // The half belongs to the two periods: each subject has both treatments.
    const f32 se = Single(f64{LogDeviation()} * std::sqrt((1 / n1 + 1 / n2) / 2));
    const f64 low{Single(Log(hypotheses.Left()))};
    const f64 high{Single(Log(hypotheses.Right()))};
    return TPowerEq(Single(ratio), se, Single(ratio - low), Single(high - ratio),
                    Single(n1 + n2 - 2));
}

} // namespace quorvanta
