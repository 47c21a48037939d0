#include "tests/testhyper.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/options.h"
#include "core/platform.h"
#include "numeric/probdist_discrete.h"
#include "tests/exactsums.h"
#include "tests/powereq.h"
#include "tests/proportions.h"

namespace quorvanta {

i16 HyperCorrection;
i16 HyperExact;
i16 HyperH1Mode;

namespace {

constexpr i16 groupSize2 = 2;
constexpr i16 groupPopulation2 = 25;
constexpr i16 checkCorrection = 1;
constexpr i16 checkExact = 7;

constexpr i16 kindAlpha = 0;
constexpr i16 kindPower = 1;
constexpr i16 kindSize = 85;
constexpr i16 kindPopulation = 31;
constexpr i16 kindPopulation1 = 196;
constexpr i16 kindPopulation2[] = {197, 198, 199};

ProportionList list;
i16 size;
i16 population;
i16 populationMode; // population 2 entered as value (0), difference (1), ratio (2)

// The finite population correction. A census leaves no variance; the least correction lets the
// sign of the effect decide there, where a standard error of 0 would give power 1, and 0 in the
// left tail, whatever the effect is.
f32 FiniteFactor(f32 populationSize, f32 n) {
    constexpr f64 least = 1.0E-12;
    return Single(MaxOf(least, (f64{populationSize} - n) / (f64{populationSize} - 1)));
}

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
    const f32 populationSize = Single(ParValue(population));
    const f32 n = Single(ParValue(size));
    if (HyperExact == 0 || Int(populationSize) > MaxExactSize)
        return NormalEq(values, populationSize, n);
    return AtWholeSizes(populationSize, n, [&values](f64 wholePopulation, f64 whole) {
        if (wholePopulation > MaxExactSize)
            return NormalEq(values, Single(wholePopulation), Single(whole));
        return ExactEq(values, ToI16(wholePopulation), ToI16(whole));
    });
}

// The second value of a pair of sizes.
f64 Second(i16 first, i16 mode) {
    return ParDep(static_cast<i16>(first + 1), Single(ParValue(first)), mode);
}

bool IsUnknown(i16 pair) {
    return UnknownParNo == pair || UnknownParNo == pair + 1;
}

f64 PopulationMin() {
    return ParMin(kindPopulation2[0]);
}

f64 PopulationMax() {
    return ParMax(kindPopulation2[0]);
}

// A sample is at most the whole population. One that depends on the unknown is narrowed by the
// search instead.
bool CheckTwoPopulations() {
    const i16 second = static_cast<i16>(population + 1);
    if (!CheckPair(population, second, PopulationMin(), PopulationMax(), populationMode))
        return false;
    const bool firstKnown = UnknownParNo != population;
    const bool secondKnown = UnknownParNo != second && (firstKnown || populationMode == AsValue);
    if (firstKnown && UnknownParNo != size &&
        !CheckRange(size, ParMin(ParKind(size)), ParValue(population)))
        return false;
    return secondKnown ? CheckTwoSizes(size, Second(population, populationMode))
                       : CheckTwoSizes(size);
}

bool CheckOnePopulation() {
    return IsUnknown(population) || CheckRange(size, ParMin(ParKind(size)), ParValue(population));
}

bool IsPopulationTooLarge() {
    return HyperExact == 1 && UnknownParNo != population && ParValue(population) > MaxExactSize;
}

void LimitOnePopulation(f64& lower, f64& upper) {
    if (UnknownParNo == population)
        lower = MaxOf(lower, ParValue(size));
    else if (UnknownParNo == size)
        upper = MinOf(upper, ParValue(population));
}

void LimitTwoPopulations(f64& lower, f64& upper) {
    if (IsUnknown(population)) {
        PairLimits(lower, upper, population, Second(size, WorkNo), PopulationMax(), populationMode);
        if (UnknownParNo == population)
            lower = MaxOf(lower, ParValue(size));
    } else if (IsUnknown(size)) {
        LimitTwoSizes(size, lower, upper, Second(population, populationMode));
        if (UnknownParNo == size)
            upper = MinOf(upper, ParValue(population));
    }
}

} // namespace

void TESTHYPER::SetupTest() {
    if (IsTest == False)
        OfferSamples({OneSample, TwoSamples});
    OfferChecks({checkCorrection});
    if (NoOfSamples == OneSample) {
        OfferChecks({checkExact});
        OfferOneProportion(false);
    } else {
        OfferTwoProportions(false);
        OfferGroups({groupPopulation2, groupSize2});
    }
}

void TESTHYPER::SetParList() {
    HyperCorrection = Ticked(checkCorrection) ? 1 : 0;
    HyperExact = Ticked(checkExact) ? 1 : 0;
    StartParList();
    AddPar(kindAlpha);
    AddPar(kindPower);
    if (NoOfSamples == OneSample) {
        list = AddOneProportion(false);
        population = AddPar(kindPopulation);
        size = AddPar(kindSize);
    } else {
        list = AddTwoProportions(false, NullDifference::Entered);
        populationMode = ChosenOption(groupPopulation2);
        population = AddPar(kindPopulation1);
        AddPar(
            ParSelect(populationMode, kindPopulation2[0], kindPopulation2[1], kindPopulation2[2]));
        size = AddTwoSizes();
    }
    HyperH1Mode = list.Mode;
}

bool TESTHYPER::CheckPar() {
    if (IsPopulationTooLarge()) {
        ShowMessage("Exact Calculation Chosen. Population Size Must Be <= 1000.");
        return false;
    }
    return CheckProportions(list) &&
           (NoOfSamples == OneSample ? CheckOnePopulation() : CheckTwoPopulations());
}

void TESTHYPER::SearchLimits(f64& lower, f64& upper) {
    LimitProportions(list, lower, upper, RootFunction);
    if (NoOfSamples == TwoSamples)
        return LimitTwoPopulations(lower, upper);
    LimitOnePopulation(lower, upper);
    if (HyperExact == 1 && UnknownParNo == size)
        StartFromTooSmall(lower, upper, RootFunction);
}

f64 TESTHYPER::RootFunction() {
    const ProportionValues values = ReadProportions(list);
    if (NoOfSamples == OneSample)
        return OneSampleEq(values);
    const f32 population1 = Single(ParValue(population));
    const f32 population2 = Single(Second(population, populationMode));
    const f32 n1 = Single(ParValue(size));
    const f32 n2 = Single(Second(size, WorkNo));
    return TwoProportionsEq(values, n1, n2, FiniteFactor(population1, n1),
                            FiniteFactor(population2, n2), HyperCorrection == 1);
}

} // namespace quorvanta
