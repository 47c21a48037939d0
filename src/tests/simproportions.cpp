#include "tests/simproportions.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "tests/exactsums.h"

#include <algorithm>

namespace quorvanta {

namespace {

// The H0 value that is drawn.
f32 DrawnNull(const ProportionValues& values, f64 truth) {
    const f64 middle = (f64{values.Null} + f64{values.Right}) / 2;
    return NoOfTails == TwoOneSided && truth > middle ? values.Right : values.Null;
}

} // namespace

SimProportions OneProportionToSimulate(const ProportionValues& values) {
    const f32 null = DrawnNull(values, values.P1);
    return {{null, null}, {values.P1, values.P1}};
}

SimProportions TwoProportionsToSimulate(const ProportionValues& values) {
    const f32 null = DrawnNull(values, f64{values.P2} - f64{values.P1});
    return {ProportionsFromDiff(values.P1, values.P2, null), {values.P1, values.P2}};
}

i16 CountSuccesses(i16 n, f32 p) {
    if (n < 1)
        return 0;
    RandSample.ReDim(0, 1);
    RandBinomial(n, p);
    return ToI16(f64{RandSample(1)});
}

void AddSuccesses(i16 n1, i16 n2, const ProportionPair& proportions) {
    SimStudy.Sum1 += CountSuccesses(n1, proportions.Low);
    SimStudy.Sum2 += CountSuccesses(n2, proportions.High);
}

i32 SuccessesIn1() {
    return ToI32(f64{SimStudy.Sum1});
}

i32 SuccessesIn2() {
    return ToI32(f64{SimStudy.Sum2});
}

TwoCounts CountsOfStudy(i16 n1, i16 n2) {
    return {SuccessesIn1(), n1, SuccessesIn2(), n2};
}

f32 PValueOfTails(f32 above, f32 below) {
    if (NoOfTails == TwoOneSided)
        return std::max(above, below);
    if (NoOfTails == TwoSided)
        return std::min(1.0F, 2 * std::min(above, below));
    return LeftTail == True ? below : above;
}

f32 BinPValue(i16 n, i16 x, f32 p0, f32 pLow, f32 pHigh) {
    if (n < 1)
        return 1;
    const bool hasLimits = NoOfTails == TwoOneSided;
    const f32 upTo = BinCdf(n, static_cast<i16>(x - 1), hasLimits ? pLow : p0);
    return PValueOfTails(Single(1 - f64{upTo}), BinCdf(n, x, hasLimits ? pHigh : p0));
}

void SimOneProportion::Prepare(const ProportionValues& values, TestForm form, bool corrected) {
    values_ = values;
    form_ = form;
    corrected_ = corrected;
    drawn_ = OneProportionToSimulate(values);
    exact_.Prepare(form == TestForm::Exact
                       ? static_cast<std::size_t>(SimSize1.HighBound() + 1) * (MaxExactSize + 1)
                       : 0);
}

f32 SimOneProportion::PValue(i16 n) {
    if (n < 1)
        return 1;
    const i32 x = SuccessesIn1();
    if (form_ == TestForm::ArcSine)
        return ArcSinePValue(values_, x, n);
    if (form_ == TestForm::Normal || n > MaxExactSize)
        return OneProportionPValue(values_, x, n, 1, corrected_);
    const auto number = static_cast<std::size_t>(SimStage * (MaxExactSize + 1) + x);
    return exact_.At(number, [this, n, x] {
        return BinPValue(n, static_cast<i16>(x), values_.Null, values_.Null, values_.Right);
    });
}

} // namespace quorvanta
