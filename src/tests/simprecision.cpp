#include "tests/simprecision.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/simstudy.h"
#include "numeric/fastlog.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/precision.h"
#include "tests/precisioneq.h"

#include <cmath>

namespace quorvanta {

namespace {

// The error or the width that is entered.
f64 Entered() {
    return ParValue(1);
}

void JudgeWidth(f64 width) {
    SimStudy.IsNarrow = width <= Entered();
}

bool IsWithin(f64 error, f64 below, f64 above) {
    return error <= above && (!IsTwoSidedPrecision() || error >= -below);
}

// On the scale of logarithms. No relative error of 1 or more is too far below.
bool IsLogWithin(f64 logError) {
    constexpr f64 everything = 1e6;
    const f64 e = Entered();
    return IsWithin(logError, e < 1 ? -FastLog(1 - e) : everything, FastLog(1 + e));
}

// The half width on that scale, at which the relative width is the one entered.
void JudgeLogInterval(f64 logError, f64 half) {
    SimStudy.Covers = logError >= -half && (!IsTwoSidedPrecision() || logError <= half);
    SimStudy.IsNarrow = half <= LogHalfWidth();
}

f64 StudentQuantile(f64 df) {
    return f64{TInv(PrecisionLevel(), Single(df))};
}

} // namespace

void JudgeInterval(f64 error, f64 other, f64 single) {
    const bool two = IsTwoSidedPrecision();
    SimStudy.Covers = error >= -single && (!two || error <= other);
    JudgeWidth(two ? other + single : single);
}

void JudgeEstimate(f64 error, f64 promised) {
    SimStudy.Covers = IsWithin(error, Entered(), Entered());
    JudgeWidth(promised);
}

void JudgeByProbability(f64 error, f64 residual) {
    SimStudy.Covers = IsWithin(error, Entered(), Entered());
    SimStudy.IsNarrow = residual >= 0;
}

void JudgeNoData() {
    SimStudy.Covers = IsInterval();
    JudgeWidth(NoValue);
}

void JudgeNormal(f64 error, f64 se) {
    const f64 half = f64{NorInv(PrecisionLevel())} * se;
    if (IsInterval())
        JudgeInterval(error, half, half);
    else
        JudgeEstimate(error, half);
}

void JudgeStudent(f64 error, f64 se, f64 df) {
    if (df < 1)
        return JudgeNoData();
    const f64 half = StudentQuantile(df) * se;
    if (IsInterval())
        JudgeInterval(error, half, half);
    else
        JudgeEstimate(error, half);
}

void JudgeLogNormal(f64 logError, f64 se) {
    if (IsInterval())
        return JudgeLogInterval(logError, f64{NorInv(PrecisionLevel())} * se);
    SimStudy.Covers = IsLogWithin(logError);
    SimStudy.IsNarrow = LogErrorEq(Single(se)) >= 0;
}

void JudgeLogStudent(f64 logError, f64 se, f64 df) {
    if (df < 1)
        return JudgeNoData();
    if (IsInterval())
        return JudgeLogInterval(logError, StudentQuantile(df) * se);
    JudgeLogNormal(logError, se);
}

ScaleJudge::ScaleJudge(ScaleStatistic statistic, int exponent, f64 unit) {
    if (!statistic.HasDf())
        return;
    const f64 truth = statistic.AtTruth();
    if (!IsInterval()) {
        residual_ = ScalePrecisionEq(statistic, exponent, unit);
        return;
    }
    const f64 level{PrecisionLevel()};
    const f64 width = ScaleWidth(statistic, exponent) * unit;
    low_ = statistic.Quantile(1 - level) / truth;
    high_ = statistic.Quantile(level) / truth;
    widest_ = width > 0 ? std::pow(Entered() / width, exponent) : NoValue;
}

void ScaleJudge::Judge(f64 ratio) const {
    if (!IsInterval())
        return JudgeByProbability(ratio - 1, residual_);
    SimStudy.Covers = ratio >= low_ && (!IsTwoSidedPrecision() || ratio <= high_);
    SimStudy.IsNarrow = ratio <= widest_;
}

} // namespace quorvanta
