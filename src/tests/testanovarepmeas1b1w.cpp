#include "tests/testanovarepmeas1b1w.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/samples.h"

namespace quorvanta {

namespace {

SampleValues sizes;
i16 perGroup; // position of the size of every group of a linear combination

// The F-test of the groups, on the means of their subjects: W^2/b is the variance of such a mean
// (B. J. Winer, Statistical Principles in Experimental Design, 2nd edition 1971, section 7.2).
f64 BetweenEq(const RepeatedList& list, f32 a, f32 b, f32 effect) {
    AnovaDesign design = OneWayDesign(a, sizes.First(), sizes.Second());
    for (f64& lambda : design.Lambda)
        lambda *= f64{b};
    return AnovEq(design, list.Type, effect, list.Errors.At(b).Between);
}

// Group 1 has n1 subjects, each of the others n2.
f64 TotalSize(f32 a) {
    return f64{sizes.First()} + (f64{a} - 1) * f64{sizes.Second()};
}

f64 WithinEq(const RepeatedList& list, f32 a, f32 b, f32 effect) {
    const f64 total = TotalSize(a);
    const f64 errorDf = (f64{b} - 1) * (total - f64{a});
    const AnovaDesign design = Tested() == TestedFactor::Within
                                   ? MainEffect(b, Single(total), errorDf)
                                   : InteractionEffect(a, b, Single(total / f64{a}), errorDf);
    return RepPower(design, list.Type, effect, list.Errors.At(b), Single(total));
}

} // namespace

void TESTANOVAREPMEAS1B1W::SetupTest() {
    Offer(MoreSamples);
    if (!IsLinearCombination())
        OfferGroups({Group::TestedBetweenOrWithin});
    OfferCorrelationMatrix();
    if (!IsLinearCombination())
        OfferGroups({Group::EffectSize, Group::Size2});
}

void TESTANOVAREPMEAS1B1W::SetParList() {
    if (IsLinearCombination()) {
        StartWithCombination();
        List().Errors.AddOfCombination();
    } else {
        StartWithEffect();
        List().Errors.Add(Tested() == TestedFactor::Between);
    }
    AddGroups(MeanRows::LevelsOfFactor);
    AddLevels();
    WorkNo = ChosenOption(Group::Size2);
    if (IsLinearCombination())
        perGroup = AddPar(Kind::SizePerGroup);
    else
        sizes = AddPair(SizeKinds);
}

bool TESTANOVAREPMEAS1B1W::CheckPar() {
    return CheckList() && (IsLinearCombination() || sizes.Check());
}

void TESTANOVAREPMEAS1B1W::SearchLimits(f64& lower, f64& upper) {
    if (!IsLinearCombination())
        sizes.Narrow(lower, upper);
    NarrowList(lower, upper, &RootFunction);
}

f64 TESTANOVAREPMEAS1B1W::RootFunction() {
    const f32 a = Groups();
    if (IsLinearCombination()) {
        const f64 n{Single(ParValue(perGroup))};
        return CombinationEq(n, Single(f64{a} * (n - 1)));
    }
    const f32 b = Levels();
    return Tested() == TestedFactor::Between ? BetweenEq(List(), a, b, Effect())
                                             : WithinEq(List(), a, b, Effect());
}

} // namespace quorvanta
