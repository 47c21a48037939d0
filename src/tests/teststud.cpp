#include "tests/teststud.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/records.h"
#include "groupseq/designs.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/testnor.h"
#include "tests/teststatistic.h"

#include <cmath>

namespace quorvanta {

namespace {

f64 NoncentralT(f64 t, f32 df, f64 delta) {
    return f64{NcTCdf(Single(t), df, Single(delta))};
}

f32 DegreesOfFreedom(const MeansList& list) {
    if (list.Deviations.HasSecond())
        return SatterthwaiteDf(list.Deviations.First(), list.Deviations.Second(),
                               list.Sizes.First(), list.Sizes.Second());
    return CommonSdDf(list.Sizes, list.DfEntry);
}

// Of sizes as they are; n2 counts with two samples only.
f32 CommonSdDf(bool hasSecond, f64 n1, f64 n2, i16 entry) {
    if (entry == 0)
        return Single(hasSecond ? n1 + n2 - 2 : n1 - 1);
    const f32 entered = Single(ParValue(entry));
    if (Ticked(Check::DegreesOfFreedom))
        return entered;
    // Group 1 has n1 subjects, each of the others n2.
    return Single(hasSecond ? (n1 - 1) + (n2 - 1) * (f64{entered} - 1) : (n1 - 1) * f64{entered});
}

// In a simulation the degrees of freedom are those of the simulated data.
bool IsSimulation() {
    return CurrentWindowKind() == SimulationWindow;
}

void OfferTwoSampleChecks() {
    OfferChecks({Check::DegreesOfFreedom, Check::GroupsInAnova, Check::Satterthwaite});
    if (IsSimulation() || Ticked(Check::Satterthwaite)) {
        DisableCheck(Check::DegreesOfFreedom);
        DisableCheck(Check::GroupsInAnova);
    }
}

// --- Its simulation ------------------------------------------------------------------------------

// The standard error of a study, and its degrees of freedom; less than 1 where there is none.
struct StudyError {
    f32 Se = 0;
    f32 Df = 0;
};

// Degrees of freedom that are entered are those of an estimate which other data have a part in. It
// is no estimate of the sample then, but one of its own: the variance times chi-square over its
// degrees of freedom, whole ones. Those that come with later analyses are added.
void AddOtherVariance(f32 df) {
    const f32 more = Single(std::nearbyint(f64{df}) - f64{SimStudy.Sum8});
    if (more < 1)
        return;
    RandSample.ReDim(0, 1);
    RandChi2(more);
    const f64 variance = f64{SimScale1} * f64{SimScale1};
    SimStudy.Sum7 = Single(f64{SimStudy.Sum7} + variance * f64{RandSample(1)});
    SimStudy.Sum8 = Single(f64{SimStudy.Sum8} + f64{more});
}

StudyError ErrorOfOther(const MeansList& list, i16 n1, i16 n2) {
    const f32 df = CommonSdDf(list.Sizes.HasSecond(), n1, n2, list.DfEntry);
    if (SimStudy.Sum8 < 1)
        return {};
    const f64 second = list.Sizes.HasSecond() ? 1.0 / n2 : 0;
    return {Single(std::sqrt(f64{SimStudy.Sum7} / f64{SimStudy.Sum8} * (1.0 / n1 + second))), df};
}

StudyError ErrorOfStudy(const MeansList& list, i16 n1, i16 n2) {
    if (list.DfEntry != 0)
        return ErrorOfOther(list, n1, n2);
    const f64 squares1 = SimSquares(1, n1);
    if (!list.Sizes.HasSecond())
        return n1 < 2 ? StudyError{}
                      : StudyError{Single(std::sqrt(squares1 / (n1 - 1) / n1)),
                                   static_cast<f32>(n1 - 1)};
    const f64 squares2 = SimSquares(2, n2);
    if (!list.Deviations.HasSecond()) {
        const f64 df = static_cast<f64>(n1) + n2 - 2;
        if (df < 1)
            return {};
        return {Single(std::sqrt(squares1 + squares2) * std::sqrt((1.0 / n1 + 1.0 / n2) / df)),
                Single(df)};
    }
    if (n1 < 2 || n2 < 2)
        return {};
    const f32 sd1 = Single(std::sqrt(squares1 / (n1 - 1)));
    const f32 sd2 = Single(std::sqrt(squares2 / (n2 - 1)));
    const f32 se = Single(std::sqrt(squares1 / (n1 - 1) / n1 + squares2 / (n2 - 1) / n2));
    // Without any variance there are no degrees of freedom to compute.
    return {se, se > 0 ? SatterthwaiteDf(sd1, sd2, n1, n2) : 1.0F};
}

} // namespace

void TESTSTUD::SetupTest() {
    switch (CurrentVariant()) {
    case TestVariant::PTT:
        FixSamples(OneSample);
        if (!IsSimulation())
            OfferChecks({Check::DegreesOfFreedom});
        break;
    case TestVariant::GSTT:
        break;
    case TestVariant::UNPTT:
        FixSamples(TwoSamples);
        OfferTwoSampleChecks();
        break;
    default:
        if (NoOfSamples == OneSample)
            OfferChecks({Check::DegreesOfFreedom, Check::GroupsInAnova});
        else
            OfferTwoSampleChecks();
    }
    TESTNOR::SetupTest();
}

void TESTSTUD::SetParList() {
    TESTNOR::SetParList();
}

bool TESTSTUD::CheckPar() {
    return TESTNOR::CheckPar();
}

void TESTSTUD::SearchLimits(f64& lower, f64& upper) {
    TESTNOR::SearchLimits(lower, upper);
    if (CurrentMeans().Sizes.FirstIsUnknown())
        StartWherePowerRises(lower, upper, &RootFunction);
}

f64 TESTSTUD::RootFunction() {
    const MeansValues values = ReadMeans();
    if (IsGroupSeq == True)
        return GroupSequentialEq(GsPowerCalc({.Delta = values.Delta,
                                              .Sd = values.Se,
                                              .SdFixed = values.Se,
                                              .MarginLow = values.DeltaLow,
                                              .MarginUpp = values.DeltaHigh,
                                              .SdLow = values.Se,
                                              .SdUpp = values.Se}));
    return TPowerEq(values.Delta, values.Se, values.DeltaLow, values.DeltaHigh,
                    DegreesOfFreedom(CurrentMeans()));
}

void TESTSTUD::GetSimPar() {
    PrepareMeans();
}

void TESTSTUD::SimSample(i16 n1, i16 n2, bool isH1) {
    const SimMeans means = MeansOf(isH1);
    AddNormals({n1, means.First, SimScale1}, {n2, means.Second, SimScale2});
    const MeansList& list = CurrentMeans();
    if (list.DfEntry != 0)
        AddOtherVariance(CommonSdDf(list.Sizes.HasSecond(), SimSize1(SimStage), SimSize2(SimStage),
                                    list.DfEntry));
}

f32 TESTSTUD::SimTest(i16 n1, i16 n2) {
    if (HasEmptySample(n1, n2))
        return 1;
    const StudyError error = ErrorOfStudy(CurrentMeans(), n1, n2);
    if (error.Df < 1)
        return 1;
    return TPValue(SimEstimate(n1, n2), SimLoc1, error.Se, SimLoLimit, SimHiLimit, error.Df);
}

// N. L. Johnson and B. L. Welch, Biometrika 31, 1940, 362-389; two one-sided tests: D. J.
// Schuirmann, Journal of Pharmacokinetics and Biopharmaceutics 15, 1987, 657-680.
f64 TPowerEq(f32 delta, f32 se, f32 deltaLow, f32 deltaHigh, f32 df) {
    const f64 alpha{SignificanceLevel()};
    const f64 shift = f64{delta} / f64{se};
    NotedStatistic = {.Law = StatisticLaw::Student, .Df1 = f64{df}, .Truth = shift};
    if (NoOfTails == TwoOneSided) {
        NotedStatistic.Truth = f64{deltaLow} / f64{se};
        NotedStatistic.TruthRight = -f64{deltaHigh} / f64{se};
    }
    f64 power = 0;
    if (NoOfTails == TwoSided) {
        const f64 t{TInv(Single(1 - alpha / 2), df)};
        power = 1 - NoncentralT(t, df, shift) + NoncentralT(-t, df, shift);
    } else {
        const f64 t{TInv(Single(1 - alpha), df)};
        if (NoOfTails == TwoOneSided)
            power = NoncentralT(-t, df, -f64{deltaHigh} / f64{se}) -
                    NoncentralT(t, df, f64{deltaLow} / f64{se});
        else if (LeftTail == True)
            power = NoncentralT(-t, df, shift);
        else
            power = 1 - NoncentralT(t, df, shift);
    }
    return power - ParValue(1);
}

f32 CommonSdDf(const SampleValues& sizes, i16 entry) {
    return CommonSdDf(sizes.HasSecond(), f64{sizes.First()},
                      sizes.HasSecond() ? f64{sizes.Second()} : 0, entry);
}

// F. E. Satterthwaite, Biometrics Bulletin 2, 1946, 110-114.
f32 SatterthwaiteDf(f32 sd1, f32 sd2, f32 n1, f32 n2) {
    const f32 a = Single(f64{sd1} * f64{sd1} / f64{n1});
    const f32 b = Single(f64{sd2} * f64{sd2} / f64{n2});
    const f64 va{a};
    const f64 vb{b};
    return Single((va + vb) * (va + vb) / (va * va / (f64{n1} - 1) + vb * vb / (f64{n2} - 1)));
}

f32 TPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 df) {
    if (se <= 0)
        return 0;
    const auto cdf = [se, df](f64 distance) { return f64{TCdf(Single(distance / f64{se}), df)}; };
    const f64 d = f64{mean} - f64{m0};
    if (NoOfTails == TwoOneSided) {
        const f64 left = 1 - cdf(f64{mean} - f64{low});
        const f64 right = cdf(f64{mean} - f64{high});
        return Single(left > right ? left : right);
    }
    if (NoOfTails == TwoSided)
        return Single(2 * (1 - cdf(std::fabs(d))));
    return Single(LeftTail == True ? cdf(d) : 1 - cdf(d));
}

} // namespace quorvanta
