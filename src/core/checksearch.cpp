#include "core/checksearch.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/values.h"
#include "output/format.h"

#include <cmath>
#include <string>

namespace quorvanta {

namespace {

constexpr i16 NoPar = -1;
i16 varyingX = NoPar;
i16 varyingZ = NoPar;
i16 refused = NoPar;

std::string LimitText(f64 limit) {
    return Format(limit, "#####0.######");
}

f64 Rounded(f64 x) {
    return f64{static_cast<f32>(x)};
}

// The 32-bit values within a range.
Range InSingles(f64 min, f64 max) {
    const f32 low = static_cast<f32>(min);
    const f32 high = static_cast<f32>(max);
    return {f64{low} >= min ? low : std::nextafter(low, INFINITY),
            f64{high} <= max ? high : std::nextafter(high, -INFINITY)};
}

// The dependent value as the equations see it: formed from the 32-bit base, itself in 32 bits.
f64 Dependent(f64 base, f64 entered, Form form) {
    return Rounded(FromForm(form, Rounded(base), entered));
}

// Is there a value at all? Shows a message if not.
bool CheckPresent(i16 i) {
    if (i == varyingX || i == varyingZ || HasValue(ParText(ParKind(i))))
        return true;
    refused = i;
    ShowMessage(StripAmpersand(ParLabel(ParKind(i))) + " Has No Value.");
    return false;
}

// Tells which of its limits parameter i passes.
bool CheckLimits(i16 i, f64 min, f64 max, bool belowMin, bool aboveMax) {
    const f32 low = static_cast<f32>(min);
    const f32 high = static_cast<f32>(max);
    constexpr f32 open = 99999.0F;
    if (low <= -open && high >= open)
        return true;
    const std::string label = StripAmpersand(ParLabel(ParKind(i)));
    bool inRange = true;
    if (low != -open && belowMin) {
        ShowMessage(label + " Has To Be Greater Than or Equal to " + LimitText(min) + ".");
        inRange = false;
    }
    if (high != open && aboveMax) {
        ShowMessage(label + " Has To Be Less Than or Equal to " + LimitText(max) + ".");
        inRange = false;
    }
    if (!inRange)
        refused = i;
    return inRange;
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
    varyingX = NoPar;
    varyingZ = NoPar;
}

i16 RefusedParNo() {
    return refused;
}

void ForgetRefused() {
    refused = NoPar;
}

bool CheckRange(i16 i, f64 min, f64 max) {
    if (!CheckPresent(i))
        return false;
    // The catalogue's limits are 32-bit floats: a typed 0.99999 equals the limit 0.99999 only when
    // both are taken in 32 bits. A limit that follows from another value has no such excuse.
    const f64 value = ParValue(i);
    const i16 kind = ParKind(i);
    const bool reachesMin = value >= min || (min == ParMin(kind) && Rounded(value) >= min);
    const bool reachesMax = value <= max || (max == ParMax(kind) && Rounded(value) <= max);
    return CheckLimits(i, min, max, !reachesMin, !reachesMax);
}

bool CheckEqual(i16 i, f64 required) {
    if (!CheckPresent(i))
        return false;
    if (ParValue(i) == required)
        return true;
    refused = i;
    ShowMessage(StripAmpersand(ParLabel(ParKind(i))) + " Has To Be Equal to " +
                LimitText(required) + ".");
    return false;
}

bool CheckPair(i16 i, i16 j, f64 min, f64 max, Form form) {
    if (j == UnknownParNo)
        return true;
    if (form == AsValue)
        return CheckRange(j, min, max);
    const f64 base = ParValue(i);
    if (i == UnknownParNo || (form == AsRatio && base == 0))
        return true;
    if (!CheckPresent(j))
        return false;
    const f64 value = Dependent(base, ParValue(j), form);
    const bool mirrored = form == AsRatio && base < 0;
    const bool belowMin = !(value >= min);
    const bool aboveMax = !(value <= max);
    const auto [low, high] = InForm(form, base, Range{min, max});
    return CheckLimits(j, low, high, mirrored ? aboveMax : belowMin,
                       mirrored ? belowMin : aboveMax);
}

// The limits' own ranges are checked before, as those of every value; what is left to check is that
// they are in order, which doesn't ask for a conversion: both are entered on the same scale.
bool CheckPairs(i16 i) {
    const i16 right = static_cast<i16>(i + 1);
    if (i == UnknownParNo || right == UnknownParNo)
        return true;
    return CheckRange(i, ParMin(ParKind(i)), ParValue(right));
}

void PairLimits(f64& lower, f64& upper, i16 i, f64 min, f64 max, Form form) {
    const i16 j = static_cast<i16>(i + 1);
    if (UnknownParNo != i && UnknownParNo != j)
        return;
    if (form == AsValue) {
        if (UnknownParNo == j) {
            lower = min;
            upper = max;
        }
        return;
    }
    // From an end between two of them it would be half a million steps of 64 bits to the next one.
    const Range singles = InSingles(min, max);
    const bool baseKnown = UnknownParNo == j;
    const f64 partner = baseKnown ? Rounded(ParValue(i)) : ParValue(j);
    if (form == AsRatio && partner == 0)
        return;
    const auto inside = [=](f64 x) {
        const f64 value = baseKnown ? Dependent(partner, x, form) : Dependent(x, partner, form);
        return value >= singles.Min && value <= singles.Max;
    };
    // An unknown base counts in 32 bits, an unknown entry in 64.
    const auto next = [baseKnown](f64 x, f64 end) {
        return baseKnown ? std::nextafter(x, end)
                         : f64{std::nextafter(static_cast<f32>(x), static_cast<f32>(end))};
    };
    auto [low, high] = InForm(form, partner, singles);
    // Two ends between the same two 32-bit values have none inside.
    while (low < high && !inside(low)) {
        const f64 stepped = next(low, high);
        low = stepped > low ? stepped : high;
    }
    while (low < high && !inside(high)) {
        const f64 stepped = next(high, low);
        high = stepped < high ? stepped : low;
    }
    lower = MaxOf(lower, low);
    upper = MinOf(upper, high);
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
