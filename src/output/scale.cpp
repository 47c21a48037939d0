#include "output/scale.h"

#include "core/general.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

// Slack for quotients that rounding has put beside a whole number.
constexpr f64 Slack = 2e-5F;

// 1, 2, 5, 10, 20, 50, ...: the steps per power of ten, from i = 1.
f64 RoundStep(int i) {
    constexpr f64 steps[] = {1, 2, 5};
    return steps[(i - 1) % 3] * std::pow(10.0, (i - 1) / 3);
}

// The decimals of a number that is meant to be a short one.
int Decimals(f32 x) {
    constexpr int most = 7; // a 32-bit number has no more that are worth showing
    f64 scaled = std::fabs(f64{x});
    int decimals = 0;
    while (decimals < most && std::fabs(scaled - std::round(scaled)) > Slack * MinOf(scaled, 1)) {
        ++decimals;
        scaled *= 10;
    }
    return decimals;
}

} // namespace

void NiceScale(f32 low, f32 high, i16 n, f32& newLow, f32& newHigh, f32& step) {
    n = MaxInteger(n, 2);
    const f64 Low = f64{low};
    f64 High = f64{high};
    constexpr f64 smallestRange = 1e-30; // a step of less is 0 in 32 bits
    if (!(High - Low > smallestRange)) {
        constexpr f64 visible = 1e-6; // of a value so large that 1 more is the same 32-bit number
        High = Low + MaxOf(1, visible * std::fabs(Low));
    }

    const f64 a = (High - Low) / n;
    f64 m = std::trunc(std::log10(a));
    if (a < 1)
        m -= 1;
    const f64 decade = std::pow(10.0, m);
    const f64 b = a / decade;
    int i = 1;
    while (i < 4 && !(b <= RoundStep(i) + Slack))
        ++i;

    f64 m1 = 0;
    f64 m2 = 0;
    for (;; ++i) {
        step = static_cast<f32>(RoundStep(i) * decade);
        const f64 f = Low / f64{step};
        m1 = std::trunc(f);
        if (f < 0)
            m1 -= 1;
        if (std::fabs(m1 + 1 - f) < Slack)
            m1 += 1;
        const f64 g = High / f64{step};
        m2 = std::trunc(g + 1);
        if (g < -1)
            m2 -= 1;
        if (std::fabs(g + 1 - m2) < Slack)
            m2 -= 1;
        if (m2 - m1 <= n)
            break;
    }
    const f64 Step = f64{step};
    const f64 spare = std::trunc((n - (m2 - m1)) / 2);
    newLow = static_cast<f32>(m1 * Step);
    newLow = static_cast<f32>(f64{newLow} - spare * Step);
    newHigh = static_cast<f32>(f64{newLow} + n * Step);
    newLow = MinSingle(newLow, low);
    newHigh = MaxSingle(newHigh, high);
}

std::string TickFormat(f32 step, f32 first) {
    const int decimals = std::max(Decimals(step), Decimals(first));
    if (decimals == 0)
        return "0";
    return "0.0" + std::string(static_cast<std::size_t>(decimals - 1), '#');
}

std::optional<f64> TypedLimit(const std::string& text) {
    constexpr std::size_t longest = 30; // more digits than a number has, and none overflows
    const bool isNumber = text.size() <= longest &&
                          text.find_first_not_of("0123456789.,- ") == std::string::npos &&
                          text.find_first_of("0123456789") != std::string::npos;
    if (!isNumber)
        return std::nullopt;
    return ReadNumber(text);
}

} // namespace quorvanta
