#include "tests/testhotelling1.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/samples.h"

namespace quorvanta {

namespace {

constexpr i16 TestTwoGroups = 15;
constexpr SampleKinds OneGroupOrTwo{
    Kind::SizeFrom2, Group::Size2, Kind::Size1, {Kind::Size2, Kind::Size2Minus1, Kind::Size2Over1}};

SampleValues sizes;

bool HasTwoGroups() {
    return sizes.HasSecond();
}

// Degrees of freedom of the error in n subjects beyond the number of variables.
f64 SpareOf() {
    return HasTwoGroups() ? 2 : 1;
}

f64 SubjectsAt(f64 x) {
    return sizes.FirstAt(x) + (HasTwoGroups() ? sizes.SecondAt(x) : 0);
}

// How many subjects one more in the first group is altogether.
f64 SubjectsPerFirst() {
    switch (sizes.SecondForm()) {
    case AsDifference:
        return 2;
    case AsRatio:
        return SubjectsAt(0) / sizes.FirstAt(0);
    default:
        return 1;
    }
}

// The number of subjects is a straight line over each of the forms in which the unknown is one of
// two sizes.
f64 WithSubjects(f64 subjects) {
    const f64 none = SubjectsAt(0);
    return (subjects - none) / (SubjectsAt(1) - none);
}

} // namespace

void TESTHOTELLING1::SetupTest() {
    Offer(TestNo == TestTwoGroups ? TwoSamples : OneSample);
    OfferForms(OneGroupOrTwo);
}

void TESTHOTELLING1::SetParList() {
    if (IsLinearCombination())
        StartWithCombination();
    else
        StartWithDistance(false);
    AddLevels();
    sizes = AddSizes(OneGroupOrTwo);
    if (HasTwoGroups())
        List().Rows = MeanRows::TwoGroups;
    else if (!IsLinearCombination())
        List().Rows = MeanRows::Hypotheses;
}

bool TESTHOTELLING1::CheckPar() {
    if (!CheckList() || !sizes.Check())
        return false;
    if (IsLinearCombination() || sizes.HasUnknown() || UnknownParNo == List().Levels)
        return true;
    const f64 missing = ParValue(List().Levels) + SpareOf() - SubjectsAt(0);
    return !(missing > 0) ||
           CheckRange(sizes.FirstParNo(), sizes.FirstAt(0) + missing / SubjectsPerFirst(), NoValue);
}

void TESTHOTELLING1::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper);
    if (!IsLinearCombination()) {
        if (sizes.HasUnknown())
            lower = MaxOf(lower, WithSubjects(ParValue(List().Levels) + SpareOf()));
        if (UnknownParNo == List().Levels)
            upper = MinOf(upper, SubjectsAt(0) - SpareOf());
    }
    NarrowList(lower, upper, &RootFunction);
}

f64 TESTHOTELLING1::RootFunction() {
    const f64 n1{sizes.First()};
    const f64 n2 = HasTwoGroups() ? f64{sizes.Second()} : 0;
    const f64 perMean = HasTwoGroups() ? n1 * n2 / (n1 + n2) : n1;
    if (IsLinearCombination())
        return CombinationEq(perMean, Single(n1 + n2 - SpareOf()));
    const f32 p = Levels();
    return HotellingEq(p, n1 + n2 - f64{p} - SpareOf() + 1, f64{Effect()} * perMean);
}

} // namespace quorvanta
