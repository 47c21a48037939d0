#include "montecarlo/simnormal.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

#include <cmath>
#include <span>

namespace quorvanta {

namespace {

constexpr int FirstGroup = 1;

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

// Two sums side by side, each in the order of the draws.
void AddNormals(int group, i16 n, f32 mean, f32 sd) {
    if (n < 1)
        return;
    f64 sum = 0;
    f64 squares = 0;
    for (const f32 drawn : DrawNormals(n)) {
        const f64 u{drawn};
        sum += u;
        squares += u * u;
    }
    const f64 scale{sd};
    const NormalSums sums = SumsOf(group);
    Add(sums.Values, n * f64{mean} + scale * sum);
    Add(sums.Deviations, scale * sum);
    Add(sums.Squares, scale * scale * squares);
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
