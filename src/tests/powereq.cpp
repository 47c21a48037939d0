#include "tests/powereq.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "numeric/probdist.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 confidenceLevelKind = 321;
constexpr i16 twoSidedIntervalCheck = 36;

f64 Wide(f32 x) {
    return static_cast<f64>(x);
}

f64 NormalCdf(f64 z) {
    return Wide(NorCdf(static_cast<f32>(z)));
}

} // namespace

f32 SignificanceLevel() {
    if (ParKind(0) != confidenceLevelKind)
        return static_cast<f32>(ParValue(0));
    const bool halved = NoOfTails == TwoOneSided || CheckValue(twoSidedIntervalCheck) == 1;
    return static_cast<f32>((1 - ParValue(0)) / (halved ? 2 : 1));
}

f64 PowerZ(f32 x, f32 c, f32 s, f32 z) {
    if (s <= 0)
        return NoValue;
    return (Wide(x) - Wide(c) * Wide(z)) / Wide(s);
}

f64 PowerOneTail(f32 x, f32 c, f32 s, f32 z) {
    return NormalCdf(PowerZ(x, c, s, z));
}

f64 PowerTwoTails(f32 x, f32 c, f32 s, f32 z) {
    return 1 - NormalCdf(PowerZ(x, c, s, -z)) + NormalCdf(PowerZ(x, c, s, z));
}

f64 PowerBetween(f32 xa, f32 xb, f32 ca, f32 cb, f32 s, f32 z) {
    return NormalCdf(PowerZ(xa, ca, s, z)) + NormalCdf(PowerZ(xb, cb, s, z)) - 1;
}

f64 NorPowerEq(f32 delta, f32 se0, f32 se1, f32 deltaLow, f32 deltaHigh, f32 se0Low, f32 se0High,
               f32 correction) {
    const f64 alpha = Wide(SignificanceLevel());
    f64 power = 0;
    if (NoOfTails == TwoOneSided) {
        const f32 z = NorInv(static_cast<f32>(1 - alpha));
        power = PowerBetween(static_cast<f32>(Wide(deltaLow) - Wide(correction)),
                             static_cast<f32>(Wide(deltaHigh) + Wide(correction)), se0Low, se0High,
                             se1, z);
    } else if (NoOfTails == TwoSided) {
        const f32 z = NorInv(static_cast<f32>(1 - alpha / 2));
        // A correction larger than the effect leaves no effect: below 0 the other tail would make
        // the power fall while the effect grows.
        const f64 distance = MaxOf(0, std::fabs(Wide(delta)) - Wide(correction));
        power = PowerTwoTails(static_cast<f32>(distance), se0, se1, z);
    } else if (LeftTail == True) {
        const f32 z = -NorInv(static_cast<f32>(1 - alpha));
        power = 1 - PowerOneTail(static_cast<f32>(Wide(delta) + Wide(correction)), se0, se1, z);
    } else {
        const f32 z = NorInv(static_cast<f32>(1 - alpha));
        power = PowerOneTail(static_cast<f32>(Wide(delta) - Wide(correction)), se0, se1, z);
    }
    return power - ParValue(1);
}

f32 NorPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 correction) {
    if (se <= 0)
        return 0;
    const f64 s = Wide(se);
    const f64 c = Wide(correction);
    const f64 d = Wide(mean) - Wide(m0);
    if (NoOfTails == TwoOneSided) {
        const f64 left = 1 - NormalCdf((Wide(mean) - Wide(low) - c) / s);
        const f64 right = NormalCdf((Wide(mean) - Wide(high) + c) / s);
        return static_cast<f32>(left > right ? left : right);
    }
    if (NoOfTails == TwoSided)
        return static_cast<f32>(2 * (1 - NormalCdf((std::fabs(d) - c) / s)));
    if (LeftTail == True)
        return static_cast<f32>(NormalCdf((d + c) / s));
    return static_cast<f32>(1 - NormalCdf((d - c) / s));
}

f32 ParDep(i16 position, f32 base, i16 mode) {
    switch (mode) {
    case 0:
        return static_cast<f32>(ParValue(position));
    case 1:
        return static_cast<f32>(Wide(base) + ParValue(position));
    case 2:
        return static_cast<f32>(Wide(base) * ParValue(position));
    default:
        return 0;
    }
}

i16 ParSelect(i16 mode, i16 a, i16 b, i16 c) {
    return mode == 0 ? a : (mode == 1 ? b : c);
}

} // namespace quorvanta
