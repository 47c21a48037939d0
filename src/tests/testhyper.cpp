#include "tests/testhyper.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "numeric/probdist_discrete.h"
#include "tests/exactsums.h"
#include "tests/lists/finitesamples.h"
#include "tests/parhyper.h"
#include "tests/proportions.h"

namespace quorvanta {

i16 HyperCorrection;
i16 HyperExact;
i16 HyperH1Mode;

namespace {

ProportionList list;
FiniteSamples samples;

// A census leaves no variance; the least correction lets the sign of the effect decide there, where
// a standard error of 0 would give power 1, and 0 in the left tail, whatever the effect is.
f32 FiniteFactor(f32 populationSize, f32 n) {
    constexpr f64 least = 1e-12;
    return Single(MaxOf(least, FiniteCorrection(populationSize, n)));
}

// W. G. Cochran, Sampling Techniques, 3rd edition, 1977, chapter 3.
f64 NormalEq(const ProportionValues& values, f32 populationSize, f32 n) {
    return OneProportionEq(values, n, FiniteFactor(populationSize, n), HyperCorrection == 1);
}

f64 ExactEq(const ProportionValues& values, i16 populationSize, i16 n) {
    const auto densities = [populationSize, n](f32 p) {
        return [populationSize, n, p](i16 x) { return HyperDensity(populationSize, n, x, p); };
    };
    const f32 right = NoOfTails == TwoOneSided ? values.Right : values.Null;
    const auto cdf = [&](i16 x) { return HyperCdf(populationSize, n, x, values.P1); };
    return ExactPower(n, densities(values.Null), densities(right), cdf) - ParValue(1);
}

f64 OneSampleEq(const ProportionValues& values) {
    const f32 populationSize = samples.Populations().First();
    const f32 n = samples.Sizes().First();
    if (HyperExact == 0 || Int(populationSize) > MaxExactSize)
        return NormalEq(values, populationSize, n);
    return AtWholeSizes(populationSize, n, [&values](f64 wholePopulation, f64 whole) {
        if (wholePopulation > MaxExactSize)
            return NormalEq(values, Single(wholePopulation), Single(whole));
        return ExactEq(values, ToI16(wholePopulation), ToI16(whole));
    });
}

bool IsPopulationTooLarge() {
    constexpr f64 unknown = 0;
    return HyperExact == 1 && samples.Populations().FirstAt(unknown) > MaxExactSize;
}

} // namespace

void TESTHYPER::SetupTest() {
    if (IsTest == False)
        OfferSamples({OneSample, TwoSamples});
    OfferChecks({Check::Correction});
    if (NoOfSamples == OneSample)
        OfferChecks({Check::Exact});
    OfferProportions(false);
    FiniteSamples::Offer();
}

void TESTHYPER::SetParList() {
    HyperCorrection = Ticked(Check::Correction) ? 1 : 0;
    HyperExact = Ticked(Check::Exact) ? 1 : 0;
    StartTestList();
    list = AddProportions(false, NullDifference::Entered);
    samples.Add();
    HyperH1Mode = list.Hypothesis.TruthForm();
}

bool TESTHYPER::CheckPar() {
    if (IsPopulationTooLarge()) {
        ShowMessage("Exact Calculation Chosen. Population Size Must Be <= 1000.");
        return false;
    }
    return list.Check() && samples.Check();
}

void TESTHYPER::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper, RootFunction);
    samples.Narrow(lower, upper);
    if (NoOfSamples == OneSample && HyperExact == 1 && samples.Sizes().HasUnknown())
        StartFromTooSmall(lower, upper, RootFunction);
}

f64 TESTHYPER::RootFunction() {
    const ProportionValues values = ReadProportions(list);
    if (NoOfSamples == OneSample)
        return OneSampleEq(values);
    const f32 n1 = samples.Sizes().First();
    const f32 n2 = samples.Sizes().Second();
    return TwoProportionsEq(values, n1, n2, FiniteFactor(samples.Populations().First(), n1),
                            FiniteFactor(samples.Populations().Second(), n2), HyperCorrection == 1);
}

} // namespace quorvanta
