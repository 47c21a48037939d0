#include "tests/testbin.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/probdist_discrete.h"
#include "tests/exactsums.h"
#include "tests/powereq.h"
#include "tests/proportions.h"
#include "tests/simproportions.h"
#include "tests/teststatistic.h"

namespace quorvanta {

i16 BinArcSine;
i16 BinCorrection;
i16 BinExact;
i16 BinH1Mode;

namespace {

constexpr i16 ListOfOdds = 1;

ProportionList list;
SampleValues sizes;

// Prepared for a simulation.
ProportionValues simulated;
SimOneProportion simOne;
SimProportions simTwo;

// A test of the catalogue is about proportions, whatever distribution was looked at before.
bool IsOdds() {
    return IsTest == False && ParListNo == ListOfOdds;
}

auto BinDensities(i16 n, f32 p) {
    return [n, p](i16 x) { return BinDensity(n, x, p); };
}

// The power of the exact test goes up and down with the size (M. R. Chernick and C. Y. Liu, The
// American Statistician 56, 2002, 149-155).
f64 ExactEq(const ProportionValues& values, i16 n) {
    const f32 right = NoOfTails == TwoOneSided ? values.Right : values.Null;
    const auto cdf = [&values, n](i16 x) { return BinCdf(n, x, values.P1); };
    NotedStatistic = {.Law = StatisticLaw::Binomial,
                      .Df1 = static_cast<f64>(n),
                      .Null = f64{values.Null},
                      .NullRight = f64{right},
                      .Truth = f64{values.P1}};
    return ExactPower(n, BinDensities(n, values.Null), BinDensities(n, right), cdf) - ParValue(1);
}

f64 OneSampleEq(const ProportionValues& values) {
    const f32 n = sizes.First();
    if (BinArcSine == 1)
        return ArcSineEq(values, n);
    if (BinExact == 0)
        return OneProportionEq(values, n, 1, BinCorrection == 1);
    return ExactProportionEq(values, n, BinCorrection == 1);
}

} // namespace

void TESTBIN::SetupTest() {
    if (IsTest == False || IsGroupSeq == True)
        OfferSamples({OneSample, TwoSamples});
    OfferChecks({Check::Correction, Check::ArcSine});
    if (NoOfSamples == OneSample && IsGroupSeq == False) // no boundaries of an exact test
        OfferChecks({Check::Exact});
    OfferProportions(IsOdds());
    OfferForms(SizeKinds);
}

void TESTBIN::SetParList() {
    BinCorrection = Ticked(Check::Correction) ? 1 : 0;
    BinArcSine = Ticked(Check::ArcSine) ? 1 : 0;
    BinExact = Ticked(Check::Exact) ? 1 : 0;
    StartTestList();
    list = AddProportions(IsOdds(), NullDifference::Entered);
    sizes = AddSizes();
    BinH1Mode = list.Hypothesis.TruthForm();
}

bool TESTBIN::CheckPar() {
    return list.Check() && sizes.Check();
}

void TESTBIN::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper, RootFunction);
    sizes.Narrow(lower, upper);
    if (NoOfSamples == OneSample && BinExact == 1 && BinArcSine == 0 && sizes.HasUnknown())
        StartFromTooSmall(lower, upper, RootFunction);
}

// The other forms have their sources with the equations of proportions.
f64 TESTBIN::RootFunction() {
    const ProportionValues values = ReadProportions(list);
    if (NoOfSamples == OneSample)
        return OneSampleEq(values);
    const f32 n1 = sizes.First();
    const f32 n2 = sizes.Second();
    if (BinArcSine == 1)
        return ArcSineEq(values, n1, n2);
    return TwoProportionsEq(values, n1, n2, 1, 1, BinCorrection == 1);
}

void TESTBIN::GetSimPar() {
    using enum SimOneProportion::TestForm;
    simulated = ReadProportions(list);
    if (sizes.HasSecond())
        simTwo = TwoProportionsToSimulate(simulated);
    else
        simOne.Prepare(simulated,
                       BinArcSine == 1 ? ArcSine
                       : BinExact == 1 ? Exact
                                       : Normal,
                       BinCorrection == 1);
}

void TESTBIN::SimSample(i16 n1, i16 n2, bool isH1) {
    if (sizes.HasSecond())
        AddSuccesses(n1, n2, simTwo.At(isH1));
    else
        simOne.Sample(n1, isH1);
}

f32 TESTBIN::SimTest(i16 n1, i16 n2) {
    if (!sizes.HasSecond())
        return simOne.PValue(n1);
    if (n1 < 1 || n2 < 1)
        return 1;
    const TwoCounts counts = CountsOfStudy(n1, n2);
    return BinArcSine == 1 ? ArcSinePValue(simulated, counts)
                           : TwoProportionsPValue(simulated, counts, 1, 1, BinCorrection == 1);
}

f64 ExactProportionEq(const ProportionValues& values, f32 n, bool corrected) {
    if (Int(n) > MaxExactSize)
        return OneProportionEq(values, n, 1, corrected);
    return AtWholeSize(n, [&values, corrected](f64 whole) {
        if (whole > MaxExactSize)
            return OneProportionEq(values, Single(whole), 1, corrected);
        return ExactEq(values, ToI16(whole));
    });
}

i16 BinCritLow(i16 n, f32 level, f32 p) {
    return CritLow(n, level, BinDensities(n, p));
}

i16 BinCritHigh(i16 n, f32 level, f32 p) {
    return CritHigh(n, level, BinDensities(n, p));
}

} // namespace quorvanta
