#include "tests/testanov.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/samples.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 TestAncova = 130;

i16 covariate; // position of its correlation with the outcome; 0: no covariate
i16 groups;
i16 perGroup; // position of the size of all groups of a contrast
SampleValues sizes;

bool HasCovariate() {
    return covariate != 0;
}

// The size of the others beside the first group's follows from its entry alone, or from both.
bool OthersWeightIsKnown() {
    const auto hasValue = [](i16 parNo) {
        return HasGridValue(parNo, ParMin(ParKind(parNo)), ParMax(ParKind(parNo)));
    };
    const i16 first = static_cast<i16>(groups + 1);
    const i16 others = static_cast<i16>(first + 1);
    return hasValue(others) && (sizes.SecondForm() == AsRatio || hasValue(first));
}

f64 OthersWeight() {
    return sizes.SecondForm() == AsRatio ? ParValue(groups + 2)
                                         : f64{sizes.Second()} / f64{sizes.First()};
}

AnovaDesign Design(bool isContrast) {
    const f32 k = Single(ParValue(groups));
    const f32 n1 = isContrast ? Single(ParValue(perGroup)) : sizes.First();
    AnovaDesign design = OneWayDesign(k, n1, isContrast ? n1 : sizes.Second());
    if (HasCovariate())
        design.Df2 = Single(f64{design.Df2} - 1); // its regression coefficient
    return design;
}

} // namespace

void TESTANOV::SetupTest() {
    if (TestNo == TestAncova)
        AnovaEffect::Offer({Check::Contrast}, {});
    else
        AnovaEffect::Offer({Check::Contrast}, {}, {OneSided, TwoSided, TwoOneSided});
    if (!Ticked(Check::Contrast))
        OfferGroups({Group::SizeK});
}

void TESTANOV::SetParList() {
    StartAnovaList();
    covariate = TestNo == TestAncova ? AddPar(Kind::CovariateCorrelation) : i16{0};
    groups = AddPar(Kind::NoOfGroups);
    WorkNo = ChosenOption(Group::SizeK);
    if (Effect().IsContrast())
        perGroup = AddPar(Kind::SizePerGroup);
    else
        sizes = AddPair(GroupSizeKinds);
}

bool TESTANOV::CheckPar() {
    return Effect().Check() && (Effect().IsContrast() || sizes.Check());
}

// The power is the same for a correlation and its negative: the search takes the positive one.
void TESTANOV::SearchLimits(f64& lower, f64& upper) {
    AnovaTest::SearchLimits(lower, upper);
    if (!Effect().IsContrast())
        sizes.Narrow(lower, upper);
    if (HasCovariate() && UnknownParNo == covariate)
        lower = MaxOf(lower, 0);
}

// A covariate takes its share off the variance of the error: W. G. Cochran, Biometrics 13, 1957,
// 261-281.
f64 TESTANOV::RootFunction() {
    const AnovaDesign design = Design(Effect().IsContrast());
    if (!HasCovariate())
        return Effect().PowerEq(design);
    const f64 rho{Single(ParValue(covariate))};
    return Effect().PowerEq(design, Single(f64{Effect().Sd()} * std::sqrt(1 - rho * rho)));
}

// The standard deviation of the means weights each with the size of its group.
std::vector<Grid> TESTANOV::TableGrids(i16 parNo) {
    return IsWeighted() && !OthersWeightIsKnown() ? std::vector<Grid>{}
                                                  : AnovaTest::TableGrids(parNo);
}

TestedMeans TESTANOV::Tested() {
    return {.Levels = groups, .Head = "Group", .OthersWeight = IsWeighted() ? OthersWeight() : 1};
}

bool TESTANOV::IsWeighted() {
    return !Effect().IsContrast() && Effect().Type() == AnovaEffectType::SdOfMeans;
}

} // namespace quorvanta
