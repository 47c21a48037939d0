#include "tests/testhyper.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rnd.h"
#include "tests/exactsums.h"
#include "tests/lists/finitesamples.h"
#include "tests/parhyper.h"
#include "tests/proportions.h"
#include "tests/simproportions.h"
#include "tests/teststatistic.h"

#include <cmath>

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
    NotedStatistic = {.Law = StatisticLaw::Hypergeometric,
                      .Df1 = static_cast<f64>(n),
                      .Df2 = static_cast<f64>(populationSize),
                      .Null = f64{values.Null},
                      .NullRight = f64{right},
                      .Truth = f64{values.P1}};
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

// --- Its simulation ------------------------------------------------------------------------------

// A population, of which a share is marked in whole subjects, while samples are drawn from it.
struct Population {
    f64 Size = 0;
    f64 MarkedH0 = 0;
    f64 MarkedH1 = 0;
};

ProportionValues simulated;
Population populations[2];
PValueTable exactPValues; // by analysis and marked subjects

Population PopulationOf(f32 size, f32 p0, f32 p1) {
    const f64 whole = Int(f64{size});
    const auto marked = [whole](f32 p) { return std::nearbyint(f64{p} * whole); };
    return {whole, marked(p0), marked(p1)};
}

// Subjects are drawn one by one from those that the analyses before have left.
void AddMarked(i16 n, i16 before, const Population& population, bool isH1, f32& sum) {
    f64 left = population.Size - before;
    f64 marked = (isH1 ? population.MarkedH1 : population.MarkedH0) - f64{sum};
    for (i16 i = 0; i < n; ++i) {
        if (f64{Rnd()} * left < marked) {
            sum += 1;
            marked -= 1;
        }
        left -= 1;
    }
}

f32 HyperPValue(i16 populationSize, i16 n, i16 x) {
    const f32 right = NoOfTails == TwoOneSided ? simulated.Right : simulated.Null;
    const f32 upTo = HyperCdf(populationSize, n, static_cast<i16>(x - 1), simulated.Null);
    return PValueOfTails(Single(1 - f64{upTo}), HyperCdf(populationSize, n, x, right));
}

f32 OneSamplePValue(i16 n) {
    const i32 x = SuccessesIn1();
    const f64 size = populations[0].Size;
    if (HyperExact == 0 || size > MaxExactSize)
        return OneProportionPValue(simulated, x, n, FiniteFactor(Single(size), n),
                                   HyperCorrection == 1);
    const auto number = static_cast<std::size_t>(SimStage * (MaxExactSize + 1) + x);
    return exactPValues.At(number,
                           [=] { return HyperPValue(ToI16(size), n, static_cast<i16>(x)); });
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

void TESTHYPER::GetSimPar() {
    simulated = ReadProportions(list);
    const bool two = samples.Sizes().HasSecond();
    const SimProportions drawn =
        two ? TwoProportionsToSimulate(simulated) : OneProportionToSimulate(simulated);
    populations[0] =
        PopulationOf(samples.Populations().First(), drawn.UnderH0.Low, drawn.UnderH1.Low);
    if (two)
        populations[1] =
            PopulationOf(samples.Populations().Second(), drawn.UnderH0.High, drawn.UnderH1.High);
    exactPValues.Prepare(HyperExact == 1 && !two
                             ? static_cast<std::size_t>(SimSize1.HighBound() + 1) *
                                   (MaxExactSize + 1)
                             : 0);
}

void TESTHYPER::SimSample(i16 n1, i16 n2, bool isH1) {
    const i16 before = static_cast<i16>(SimStage - 1);
    AddMarked(n1, SimSize1(before), populations[0], isH1, SimStudy.Sum1);
    AddMarked(n2, SimSize2(before), populations[1], isH1, SimStudy.Sum2);
}

f32 TESTHYPER::SimTest(i16 n1, i16 n2) {
    if (n1 < 1)
        return 1;
    if (!samples.Sizes().HasSecond())
        return OneSamplePValue(n1);
    if (n2 < 1)
        return 1;
    const auto factor = [](const Population& population, i16 n) {
        return FiniteFactor(Single(population.Size), n);
    };
    return TwoProportionsPValue(simulated, CountsOfStudy(n1, n2), factor(populations[0], n1),
                                factor(populations[1], n2), HyperCorrection == 1);
}

} // namespace quorvanta
