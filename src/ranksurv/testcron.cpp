#include "ranksurv/testcron.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

namespace quorvanta {

namespace {

constexpr OneSampleKinds AlphaKinds{Group::H1Alpha,
                                    Kind::H0Alpha,
                                    {Kind::H1Alpha, Kind::H1AlphaMinusH0, Kind::H1AlphaOverH0},
                                    Kind::ProportionLeftLimit,
                                    Kind::ProportionRightLimit};
constexpr TwoSampleKinds TwoAlphasKinds{Group::Alpha2,
                                        Kind::H0Alpha2Minus1,
                                        NoKind,
                                        Kind::H1Alpha1,
                                        {Kind::H1Alpha2, Kind::H1Alpha2Minus1, Kind::H1Alpha2Over1},
                                        Kind::ProportionDifferenceLeftLimit,
                                        Kind::ProportionDifferenceRightLimit};
constexpr SampleKinds ItemsKinds{Kind::NoOfItems,
                                 Group::NoOfItems2,
                                 Kind::NoOfItems1,
                                 {Kind::NoOfItems2, Kind::NoOfItems2Minus1, Kind::NoOfItems2Over1}};

Hypotheses hypotheses;
constexpr SampleKinds SubjectsKinds{Kind::NoOfSubjects, NoKind, NoKind, {NoKind, NoKind, NoKind}};

enum class Design { OneAlpha, TwoGroups, SameSubjects };

Design design = Design::OneAlpha;
SampleValues items; // two numbers with two groups only, and so the sizes
SampleValues sizes;
i16 correlation; // of the scores of the same subjects in the two tests

bool IsDependent() {
    return NoOfSamples == TwoSamples && Ticked(Check::DependentSamples);
}

// The guarded edges of an alpha.
constexpr f64 LeastAlpha = 1e-5F;
constexpr f64 LargestAlpha = 0.99999F;

f32 Clipped(f64 alpha) {
    return Single(MaxOf(LeastAlpha, MinOf(LargestAlpha, alpha)));
}

// The ratio at which H0, or a limit of two one-sided tests, stands to the truth. A limit for alpha
// 2 of 1 or more is never reached: cut to less than 1 it would be, by an alpha 2 next to 1.
f32 RatioTo(f32 null) {
    if (!hypotheses.HasTwo())
        return AlphaRatio(Clipped(f64{null}), Clipped(hypotheses.Truth()));
    const f64 second = f64{hypotheses.First()} + f64{null};
    return AlphaRatio(second >= 1 ? 1 : Clipped(second), Clipped(hypotheses.Second()));
}

struct DegreesOfFreedom {
    f64 Between; // subjects
    f64 Within;  // items within subjects
};

DegreesOfFreedom DfOf(f64 n, f64 k) {
    return {n - 1, (n - 1) * (k - 1)};
}

// The df of a chi-square over its df whose logarithm has the variance that the logarithms of two
// such have together. That of one with df degrees of freedom is 2/(df - 1) (M. S. Bartlett and D.
// G. Kendall, Supplement to the Journal of the Royal Statistical Society 8, 1946, 128-138; trigamma
// to second order). weight is that of the first.
f32 JointDf(f64 first, f64 weight, f64 second) {
    return Single(1 + 1 / (weight / (first - 1) + 1 / (second - 1)));
}

f64 NullEq(f32 df1, f32 df2) {
    const f32 right = NoOfTails == TwoOneSided ? hypotheses.Right() : hypotheses.H0();
    return FPowerEq(RatioTo(hypotheses.H0()), RatioTo(right), df1, df2);
}

// (1 - alpha)/(1 - estimate) is F distributed (L. S. Feldt, Psychometrika 30, 1965, 357-370).
f64 OneAlphaEq() {
    const DegreesOfFreedom df = DfOf(f64{sizes.First()}, f64{items.First()});
    return NullEq(Single(df.Between), Single(df.Within));
}

// (1 - estimate 1)/(1 - estimate 2) over its true value is a product of two independent F, each
// part of which is a product of two chi-squares over their df. L. S. Feldt (Psychometrika 34, 1969,
// 363-373) takes one F with the first two moments of the product; here it has those of its
// logarithm, which exist for all sizes and keep the level of small ones better. With many items
// both are F with n2 - 1 and n1 - 1 df.
//
// The corrected df always stand: without them at some size the power would jump there, and no size
// would be found for what lies in between.
f64 TwoGroupsEq() {
    const DegreesOfFreedom df1 = DfOf(f64{sizes.First()}, f64{items.First()});
    const DegreesOfFreedom df2 = DfOf(f64{sizes.Second()}, f64{items.Second()});
    return NullEq(JointDf(df2.Between, 1, df1.Within), JointDf(df1.Between, 1, df2.Within));
}

// In the same subjects the mean squares between them are correlated as the squared scores are,
// which leaves the part 1 - rho^2 of their variance to the ratio (L. S. Feldt, Psychometrika 45,
// 1980, 99-105, for many items).
f64 SameSubjectsEq() {
    const f64 rho{Single(ParValue(correlation))};
    const DegreesOfFreedom df = DfOf(f64{sizes.First()}, f64{items.First()});
    const f32 both = JointDf(df.Between, 1 - rho * rho, df.Within);
    return NullEq(both, both);
}

// The least df of a search with one alpha.
constexpr f64 LeastBetween = 2.00001;
constexpr f64 LeastWithin = 3.00001;

// Two tests of the same subjects leave n - 2 df.
constexpr f64 LeastOfBothTests = 3;

} // namespace

void TESTCRON::SetupTest() {
    OfferSamples({OneSample, TwoSamples});
    if (NoOfSamples == OneSample) {
        OfferForms(AlphaKinds);
        return;
    }
    OfferChecks({Check::DependentSamples});
    OfferForms(TwoAlphasKinds);
    if (!IsDependent()) {
        OfferForms(ItemsKinds);
        OfferForms(SizeKinds);
    }
}

void TESTCRON::SetParList() {
    StartTestList();
    design = NoOfSamples == OneSample ? Design::OneAlpha
             : IsDependent()          ? Design::SameSubjects
                                      : Design::TwoGroups;
    hypotheses = NoOfSamples == OneSample ? AddHypotheses(AlphaKinds, EffectScale::Plain)
                                          : AddHypotheses(TwoAlphasKinds, EffectScale::Plain);
    if (design == Design::TwoGroups) {
        items = AddPair(ItemsKinds);
        sizes = AddSizes();
        return;
    }
    items = AddCommonValue(ItemsKinds);
    correlation = design == Design::SameSubjects ? AddPar(Kind::Correlation) : i16{0};
    sizes = AddCommonValue(SubjectsKinds);
}

bool TESTCRON::CheckPar() {
    if (!hypotheses.Check())
        return false;
    if (design == Design::TwoGroups)
        return items.Check() && sizes.Check();
    const Range subjects = sizes.FirstRange();
    return design == Design::OneAlpha || sizes.Check({LeastOfBothTests, subjects.Max}, subjects);
}

void TESTCRON::SearchLimits(f64& lower, f64& upper) {
    hypotheses.Narrow(lower, upper, &RootFunction);
    items.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
    if (hypotheses.NullIsUnknown() && hypotheses.HasTwo()) {
        const f64 first{hypotheses.First()};
        lower = MaxOf(lower, LeastAlpha - first);
        upper = MinOf(upper, LargestAlpha - first);
    }
    if (design == Design::OneAlpha && sizes.FirstIsUnknown())
        lower = 1 + MaxOf(LeastBetween, LeastWithin / (f64{items.First()} - 1));
    else if (design == Design::OneAlpha && items.FirstIsUnknown())
        lower = MaxOf(lower, 1 + LeastWithin / (f64{sizes.First()} - 1));
    else if (design == Design::SameSubjects && sizes.FirstIsUnknown())
        lower = LeastOfBothTests;
    // A correlation counts by its square: the search finds the positive one.
    if (design == Design::SameSubjects && UnknownParNo == correlation)
        lower = 0;
}

f64 TESTCRON::RootFunction() {
    switch (design) {
    case Design::OneAlpha:
        return OneAlphaEq();
    case Design::TwoGroups:
        return TwoGroupsEq();
    default:
        return SameSubjectsEq();
    }
}

f32 AlphaRatio(f32 a0, f32 a1) {
    if (a0 == 1)
        return static_cast<f32>(NoValue);
    return Single((1 - f64{a1}) / (1 - f64{a0}));
}

} // namespace quorvanta
