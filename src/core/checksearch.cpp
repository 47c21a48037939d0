#include "core/checksearch.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/values.h"
#include "output/format.h"

#include <string>

namespace quorvanta {

namespace {

constexpr i16 none = -1;
i16 varyingX = none;
i16 varyingZ = none;
i16 refused = none;

std::string LimitText(f64 limit) {
    return Format(limit, "#####0.######");
}

} // namespace

bool SearchesLeft() {
    return LeftTail == True && NoOfTails != TwoSided;
}

void SetVaryingPars(i16 xParNo, i16 zParNo) {
    varyingX = xParNo;
    varyingZ = zParNo;
}

void ClearVaryingPars() {
    varyingX = none;
    varyingZ = none;
}

i16 RefusedParNo() {
    return refused;
}

void ForgetRefused() {
    refused = none;
}

bool CheckRange(i16 i, f64 min, f64 max) {
    const std::string label = StripAmpersand(ParLabel(ParKind(i)));
    if (i != varyingX && i != varyingZ && !HasValue(ParText(ParKind(i)))) {
        refused = i;
        ShowMessage(label + " Has No Value.");
        return false;
    }
    const f32 low = static_cast<f32>(min);
    const f32 high = static_cast<f32>(max);
    constexpr f32 open = 99999.0F;
    if (low <= -open && high >= open)
        return true;
    // The catalogue's limits are 32-bit floats: a typed 0.99999 equals the limit 0.99999 only when
    // both are taken in 32 bits.
    const f64 value = ParValue(i);
    const f32 narrow = static_cast<f32>(value);
    bool inRange = true;
    if (low != -open && !(value >= min || narrow >= low)) {
        ShowMessage(label + " Has To Be Greater Than or Equal to " + LimitText(min) + ".");
        inRange = false;
    }
    if (high != open && !(value <= max || narrow <= high)) {
        ShowMessage(label + " Has To Be Less Than or Equal to " + LimitText(max) + ".");
        inRange = false;
    }
    if (!inRange)
        refused = i;
    return inRange;
}

bool CheckPair(i16 i, i16 j, f64 min, f64 max, Form form) {
    if (j == UnknownParNo)
        return true;
    if (form == AsValue)
        return CheckRange(j, min, max);
    if (i == UnknownParNo || (form == AsRatio && ParValue(i) == 0))
        return true;
    const auto [low, high] = InForm(form, ParValue(i), Range{min, max});
    return CheckRange(j, low, high);
}

bool CheckPairs(i16 i) {
    const i16 right = static_cast<i16>(i + 1);
    if (i == UnknownParNo || right == UnknownParNo)
        return true;
    return CheckRange(i, ParMin(ParKind(i)), ParValue(right));
}

void PairLimits(f64& lower, f64& upper, i16 i, f64 min, f64 max, Form form) {
    if (UnknownParNo == i + 1) {
        if (form == AsValue) {
            lower = min;
            upper = max;
        } else if (form == AsDifference || ParValue(i) != 0) {
            const auto [low, high] = InForm(form, ParValue(i), Range{min, max});
            lower = MaxOf(lower, low);
            upper = MinOf(upper, high);
        }
    } else if (UnknownParNo == i) {
        const f64 partner = ParValue(i + 1);
        if (form == AsDifference || (form == AsRatio && partner != 0)) {
            const auto [low, high] = InForm(form, partner, Range{min, max});
            lower = MaxOf(lower, low);
            upper = MinOf(upper, high);
        }
    }
}

void LeftTailLimit(f64& lower, f64& upper, f64 x) {
    if (SearchesLeft())
        upper = MinOf(upper, x);
    else
        lower = MaxOf(lower, x);
}

void RightTailLimit(f64& lower, f64& upper, f64 x) {
    if (SearchesLeft())
        lower = MaxOf(lower, x);
    else
        upper = MinOf(upper, x);
}

} // namespace quorvanta
