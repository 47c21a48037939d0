#include "montecarlo/simnormal.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

namespace quorvanta {

namespace {

constexpr int FirstGroup = 1;
constexpr int SecondGroup = 2;

// The sums of a group.
struct NormalSums {
    f32& Values;
    f32& Deviations;
    f32& Squares;
};

NormalSums SumsOf(int group) {
    if (group == FirstGroup)
        return {SimStudy.Sum1, SimStudy.Sum3, SimStudy.Sum5};
    return {SimStudy.Sum2, SimStudy.Sum4, SimStudy.Sum6};
}

std::span<const f32> DrawNormals(i16 n) {
    RandSample.ReDim(0, n);
    RandNormal();
    return RandSample.Raw().subspan(1);
}

void Add(f32& sum, f64 term) {
    sum = Single(f64{sum} + term);
}

} // namespace

void SetSimLocations(f32 null, f32 right, f32 truth) {
    const f64 middle = (f64{null} + f64{right}) / 2;
    SimLoLimit = null;
    SimHiLimit = right;
    SimLoc1 = NoOfTails == TwoOneSided && truth > middle ? right : null;
    SimLoc2 = truth;
}

f32 SimLocation(bool isH1) {
    return isH1 ? SimLoc2 : SimLoc1;
}

void AddNormalSum(i16 n, f32 mean, f32 sd, f32& sum) {
    if (n < 1)
        return;
    const f64 u{DrawNormals(1).front()};
    Add(sum, n * f64{mean} + u * f64{sd} * std::sqrt(static_cast<f64>(n)));
}

namespace {

// The sums of standard draws, each in their order.
struct DrawnSums {
    f64 Values = 0;
    f64 Squares = 0;

    void Take(std::span<const f32> draws) {
        for (const f32 draw : draws)
            Take(f64{draw});
    }
    void Take(f64 u) {
        Values += u;
        Squares += u * u;
    }
};

void AddToGroup(int group, const NewNormals& more, const DrawnSums& drawn) {
    const f64 scale{more.Sd};
    const NormalSums sums = SumsOf(group);
    Add(sums.Values, more.Size * f64{more.Mean} + scale * drawn.Values);
    Add(sums.Deviations, scale * drawn.Values);
    Add(sums.Squares, scale * scale * drawn.Squares);
}

void AddNormals(int group, const NewNormals& more) {
    if (more.Size < 1)
        return;
    DrawnSums sums;
    sums.Take(DrawNormals(more.Size));
    AddToGroup(group, more, sums);
}

} // namespace

// Both groups are drawn at once, and four sums are formed side by side.
void AddNormals(const NewNormals& first, const NewNormals& second) {
    if (first.Size < 1 || second.Size < 1 ||
        first.Size > std::numeric_limits<i16>::max() - second.Size) {
        AddNormals(FirstGroup, first);
        AddNormals(SecondGroup, second);
        return;
    }
    const auto drawn = DrawNormals(static_cast<i16>(first.Size + second.Size));
    const auto draws1 = drawn.first(static_cast<std::size_t>(first.Size));
    const auto draws2 = drawn.subspan(static_cast<std::size_t>(first.Size));
    DrawnSums sums1;
    DrawnSums sums2;
    const std::size_t both = std::min(draws1.size(), draws2.size());
    for (std::size_t i = 0; i < both; ++i) {
        sums1.Take(f64{draws1[i]});
        sums2.Take(f64{draws2[i]});
    }
    sums1.Take(draws1.subspan(both));
    sums2.Take(draws2.subspan(both));
    AddToGroup(FirstGroup, first, sums1);
    AddToGroup(SecondGroup, second, sums2);
}

f64 SimMean(int group, i16 n) {
    return f64{SumsOf(group).Values} / n;
}

f64 SimSquares(int group, i16 n) {
    const NormalSums sums = SumsOf(group);
    const f64 deviations{sums.Deviations};
    return MaxOf(0, f64{sums.Squares} - deviations * deviations / n);
}

} // namespace quorvanta
