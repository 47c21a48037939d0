#include "tests/testchi2rxc.h"

#include "core/analysis_state.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

i16 RxcEffectType;

namespace {

constexpr i16 ProportionsStore = 1;

i16 groups;
i16 categories;
i16 effect;
SampleValues sizes;
i16 otherSize;

// --- The effect of a table of proportions -------------------------------------------------------

f64 ProportionOf(i16 group, i16 category) {
    return f64{GridData(ProportionsStore)(group, category)};
}

i16 TableGroups() {
    return static_cast<i16>(GridData(ProportionsStore).HighBound1());
}

i16 TableCategories() {
    return static_cast<i16>(GridData(ProportionsStore).HighBound2());
}

// How large each other group is, in units of the first one. Sizes without a value count as equal.
f64 RelativeSize() {
    const f64 ratio = sizes.SecondForm() == AsRatio ? ParValue(otherSize)
                                                    : f64{sizes.Second()} / f64{sizes.First()};
    return ratio > 0 && std::isfinite(ratio) ? ratio : 1;
}

// Cohen's w: the root of the non-centrality for each subject, the sum over all cells of
// f (p - p0)^2/p0, f the group's part of the subjects and p0 the average proportion (J. Cohen,
// Statistical Power Analysis for the Behavioral Sciences, 2nd edition, 1988, 7.2).
f64 SdOfProportions() {
    const i16 r = TableGroups();
    const f64 relative = RelativeSize();
    const auto part = [r, relative](i16 group) {
        return (group == 1 ? 1 : relative) / (1 + (r - 1) * relative);
    };
    f64 sum = 0;
    for (i16 j = 1; j <= TableCategories(); ++j) {
        f64 average = 0;
        for (i16 i = 1; i <= r; ++i)
            average += part(i) * ProportionOf(i, j);
        if (average == 0)
            continue;
        for (i16 i = 1; i <= r; ++i) {
            const f64 d = ProportionOf(i, j) - average;
            sum += part(i) * d * d / average;
        }
    }
    return std::sqrt(sum);
}

// The least distance of a group from all others in a category.
f64 DistanceFromOthers(i16 group, i16 category) {
    f64 least = 1;
    for (i16 k = 1; k <= TableGroups(); ++k)
        if (k != group)
            least = std::min(least,
                             std::abs(ProportionOf(group, category) - ProportionOf(k, category)));
    return least;
}

template <class Measure>
f64 LargestOverCells(const Measure& measure) {
    f64 largest = 0;
    for (i16 i = 1; i <= TableGroups(); ++i)
        for (i16 j = 1; j <= TableCategories(); ++j)
            largest = std::max(largest, measure(i, j));
    return largest;
}

f64 LargestDifference(i16 group, i16 category) {
    f64 largest = 0;
    for (i16 k = 1; k <= TableGroups(); ++k)
        largest = std::max(largest, ProportionOf(group, category) - ProportionOf(k, category));
    return largest;
}

} // namespace

void TESTCHI2RXC::SetupTest() {
    FixSamples(MoreSamples);
    OfferTails({TwoSided});
    OfferGroups({Group::EffectOfProportions, Group::SizeK});
}

void TESTCHI2RXC::SetParList() {
    RxcEffectType = ChosenOption(Group::EffectOfProportions);
    WorkNo = ChosenOption(Group::SizeK);
    StartTestList();
    groups = AddPar(Kind::NoOfGroups);
    categories = AddPar(Kind::NoOfCategories);
    effect = AddPar(ParSelect(RxcEffectType, Kind::H1SdOfProportions,
                              Kind::H1AnyProportionDifference, Kind::H1LeastProportionDifference));
    sizes = AddPair(GroupSizeKinds);
    otherSize = NoOfPar;
}

bool TESTCHI2RXC::CheckPar() {
    return sizes.Check();
}

// Another group adds to the non-centrality, but to the degrees of freedom, too.
void TESTCHI2RXC::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper);
    if (UnknownParNo == groups)
        StartAtHighestPower(lower, upper, &RootFunction);
}

// J. M. Lachin, Biometrics 33, 1977, 315-324. Types 1 and 2 take the least non-centrality that the
// difference leaves: it lies in two categories that share all subjects half and half, and the other
// groups lie between the two that differ, or all together away from the one that does.
f64 TESTCHI2RXC::RootFunction() {
    const f64 r{Single(ParValue(groups))};
    const f64 c{Single(ParValue(categories))};
    const f64 e{Single(ParValue(effect))};
    const f64 n1{sizes.First()};
    const f64 nk{sizes.Second()};
    const f64 total = (r - 1) * nk + n1;
    f64 lambda = total * e * e;
    if (RxcEffectType == 1)
        lambda = 4 * n1 * nk / (n1 + nk) * e * e;
    else if (RxcEffectType == 2)
        lambda = (n1 <= nk ? 4 * (r - 1) * n1 * nk / total : 4 * nk * ((r - 2) * nk + n1) / total) *
                 e * e;
    return Chi2PowerEq((r - 1) * (c - 1), lambda);
}

bool TESTCHI2RXC::IsTablePar(i16 parNo) {
    return parNo == effect;
}

std::vector<Grid> TESTCHI2RXC::TableGrids(i16 /*parNo*/) {
    const auto rows = GridLines(groups);
    const auto columns = rows ? GridLines(categories) : std::nullopt;
    if (!columns)
        return {};
    return {{.Store = ProportionsStore,
             .Rows = *rows,
             .Columns = *columns,
             .Title = "Proportion in Category",
             .RowHeads = "Group",
             .ColumnHeads = "Category",
             .Check = RowsOfProportions(),
             .RowSum = 1}};
}

f32 TESTCHI2RXC::CalcTablePar(i16 /*parNo*/) {
    switch (RxcEffectType) {
    case 1:
        return Single(LargestOverCells(LargestDifference));
    case 2:
        return Single(LargestOverCells(DistanceFromOthers));
    default:
        return Single(SdOfProportions());
    }
}

} // namespace quorvanta
