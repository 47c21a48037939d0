#include "tests/testbioeq.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/options.h"
#include "tests/powereq.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 groupMedian2 = 10;
constexpr i16 groupSd = 19;
constexpr i16 groupSize2 = 53;

constexpr i16 kindAlpha = 0;
constexpr i16 kindPower = 1;
constexpr i16 kindLeftLimit = 29;
constexpr i16 kindRightLimit = 30;
constexpr i16 kindRatio = 96;
constexpr i16 kindMedian1 = 94;
constexpr i16 kindMedian2 = 95;
constexpr i16 kindLogSd = 155;
constexpr i16 kindCv = 156;
constexpr i16 kindSize1 = 322;
constexpr i16 kindSize2 = 323;
constexpr i16 kindSizeDifference = 324;
constexpr i16 kindSizeRatio = 325;

constexpr i16 left = 2;
constexpr i16 right = 3;
constexpr i16 truth = 4; // the ratio, or the first of two medians

i16 BioH1Mode; // 1: the ratio is entered itself; otherwise two medians
i16 BioUseCv;  // non-zero: the coefficient of variation stands for the log-scale deviation

i16 median2;
i16 deviation;
i16 size1;

f64 Log(f64 value) {
    return std::log(static_cast<f64>(static_cast<f32>(value)));
}

f64 TrueRatio() {
    return BioH1Mode == 1 ? ParValue(truth) : ParValue(median2) / ParValue(truth);
}

// The value of the unknown, a ratio or one of two medians, at which the ratio is this.
f64 UnknownAt(f64 ratio) {
    if (BioH1Mode == 1)
        return ratio;
    return UnknownParNo == median2 ? ParValue(truth) * ratio : ParValue(median2) / ratio;
}

} // namespace

void TESTBIOEQ::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({TwoOneSided});
    OfferGroups({groupMedian2, groupSd, groupSize2});
}

void TESTBIOEQ::SetParList() {
    BioH1Mode = ChosenOption(groupMedian2);
    BioUseCv = ChosenOption(groupSd);
    WorkNo = ChosenOption(groupSize2);

    StartParList();
    AddPar(kindAlpha);
    AddPar(kindPower);
    AddPar(kindLeftLimit);
    AddPar(kindRightLimit);
    if (BioH1Mode == 1) {
        AddPar(kindRatio);
        median2 = 0;
    } else {
        AddPar(kindMedian1);
        median2 = AddPar(kindMedian2);
    }
    deviation = AddPar(BioUseCv != 0 ? kindCv : kindLogSd);
    size1 = AddPar(kindSize1);
    AddPar(ParSelect(WorkNo, kindSize2, kindSizeDifference, kindSizeRatio));
}

bool TESTBIOEQ::CheckPar() {
    return CheckPairs(left) && CheckPair(size1, static_cast<i16>(size1 + 1), ParMin(kindSize2),
                                         ParMax(kindSize2), WorkNo);
}

void TESTBIOEQ::SearchLimits(f64& lower, f64& upper) {
    PairLimits(lower, upper, size1, ParMin(kindSize2), ParMax(kindSize2), WorkNo);
    if (UnknownParNo == left) {
        upper = MinOf(upper, TrueRatio());
    } else if (UnknownParNo == right) {
        lower = MaxOf(lower, TrueRatio());
    } else if (UnknownParNo == truth || (median2 != 0 && UnknownParNo == median2)) {
        // From the middle of the limits, where the power is highest, to one of them.
        const f64 middle = std::sqrt(ParValue(left) * ParValue(right));
        const f64 a = UnknownAt(middle);
        const f64 b = UnknownAt(ParValue(SearchesLeft() ? left : right));
        lower = MaxOf(lower, MinOf(a, b));
        upper = MinOf(upper, MaxOf(a, b));
    }
}

f64 TESTBIOEQ::RootFunction() {
    const f32 low = static_cast<f32>(Log(ParValue(left)));
    const f32 high = static_cast<f32>(Log(ParValue(right)));
    const f32 ratio = static_cast<f32>(
        BioH1Mode == 1
            ? Log(ParValue(truth))
            : Log(static_cast<f64>(ParDep(median2, static_cast<f32>(ParValue(truth)), BioH1Mode))) -
                  Log(ParValue(truth)));
    f32 sd = static_cast<f32>(ParValue(deviation));
    if (BioUseCv != 0) {
        const f64 cv = static_cast<f64>(sd);
        sd = static_cast<f32>(std::sqrt(std::log(cv * cv + 1)));
    }
    const f32 first = static_cast<f32>(ParValue(size1));
    const f64 n1 = static_cast<f64>(first);
    const f64 n2 = static_cast<f64>(ParDep(static_cast<i16>(size1 + 1), first, WorkNo));
    // The half belongs to the two periods: each subject has both treatments.
    const f32 se = static_cast<f32>(static_cast<f64>(sd) * std::sqrt((1 / n1 + 1 / n2) / 2));
    const f32 df = static_cast<f32>(n1 + n2 - 2);
    const f32 deltaLow = static_cast<f32>(static_cast<f64>(ratio) - static_cast<f64>(low));
    const f32 deltaHigh = static_cast<f32>(static_cast<f64>(high) - static_cast<f64>(ratio));
    return TPowerEq(ratio, se, deltaLow, deltaHigh, df);
}

} // namespace quorvanta
