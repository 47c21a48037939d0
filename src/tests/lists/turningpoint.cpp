#include "tests/lists/turningpoint.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "tests/trialvalue.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvanta {

Side SideOfTail() {
    return SearchesLeft() ? Side::Below : Side::Above;
}

Side Opposite(Side side) {
    return side == Side::Below ? Side::Above : Side::Below;
}

namespace {

f64 At(f64 x, f64 (*residual)()) {
    const TrialValue trial(x);
    return residual();
}

} // namespace

void StartWherePowerRises(f64& lower, f64 upper, f64 (*residual)()) {
    constexpr f64 few = 10;
    const f64 last = MinOf(upper, lower + few);
    if (!(upper > lower))
        return;
    f64 start = lower;
    f64 atStart = At(start, residual);
    if (atStart < 0 || At(upper, residual) < 0)
        return;
    while (atStart >= 0 && start + 1 <= last) {
        const f64 atNext = At(start + 1, residual);
        if (atNext >= atStart)
            return;
        ++start;
        atStart = atNext;
    }
    if (atStart < 0)
        lower = start;
}

void StartAtHighestPower(f64& lower, f64 upper, f64 (*residual)()) {
    f64 highest = MaxOf(At(lower, residual), At(upper, residual));
    if (highest >= 0)
        return;
    f64 start = lower;
    for (f64 count = lower + 1; count < upper; ++count) {
        const f64 atCount = At(count, residual);
        if (atCount <= highest)
            continue;
        highest = atCount;
        start = count;
    }
    if (highest >= 0)
        lower = start;
}

void KeepOneSide(f64& lower, f64& upper, f64 turn, Side preferred, f64 (*residual)()) {
    if (!(turn > lower && turn < upper))
        return;
    const f64 atTurn = At(turn, residual);
    const bool changesSign = At(preferred == Side::Below ? lower : upper, residual) * atTurn <= 0;
    if (changesSign == (preferred == Side::Below))
        upper = turn;
    else
        lower = turn;
}

namespace {

enum class Extreme { Highest, Lowest };

// The x between these two where the residual is highest, or lowest. Where it is the same over a
// stretch, as powers of 0 and 1 in 32 bits are, on the side of start. By golden section (J. Kiefer,
// Proceedings of the American Mathematical Society 4, 1953, 502-506).
f64 Turn(f64 start, f64 end, Extreme extreme, f64 (*residual)()) {
    constexpr f64 golden = 0.6180339887498949;
    constexpr int steps = 70; // to 1e-14 of the distance
    const f64 sign = extreme == Extreme::Highest ? 1 : -1;
    const auto height = [sign, residual](f64 x) { return sign * At(x, residual); };
    f64 nearer = end + golden * (start - end);
    f64 farther = start + golden * (end - start);
    f64 atNearer = height(nearer);
    f64 atFarther = height(farther);
    for (int i = 0; i < steps; ++i) {
        if (atFarther > atNearer) {
            start = nearer;
            nearer = farther;
            atNearer = atFarther;
            farther = start + golden * (end - start);
            atFarther = height(farther);
        } else {
            end = farther;
            farther = nearer;
            atFarther = atNearer;
            nearer = end + golden * (start - end);
            atNearer = height(nearer);
        }
    }
    return atFarther > atNearer ? farther : nearer;
}

// The peak of a function: of the highest of some steps, closed in by thirds.
template <class Function>
f64 PeakOf(f64 lower, f64 upper, Function&& f) {
    constexpr int steps = 60;
    const auto point = [=](int k) { return lower + (upper - lower) * k / steps; };
    int best = 0;
    f64 highest = f(lower);
    for (int k = 1; k <= steps; ++k)
        if (const f64 y = f(point(k)); y > highest) {
            best = k;
            highest = y;
        }
    f64 low = point(best > 0 ? best - 1 : 0);
    f64 high = point(best < steps ? best + 1 : steps);
    constexpr int cuts = 40;
    for (int i = 0; i < cuts; ++i) {
        const f64 third = (high - low) / 3;
        if (f(low + third) < f(high - third))
            low += third;
        else
            high -= third;
    }
    const f64 middle = (low + high) / 2;
    return f(middle) > highest ? middle : point(best);
}

} // namespace

void KeepOneSideOfTurn(f64& lower, f64& upper, Side preferred, f64 (*residual)()) {
    if (!(upper > lower))
        return;
    const bool tooLittle = At(lower, residual) < 0;
    if (tooLittle != (At(upper, residual) < 0))
        return;
    const bool fromLower = preferred == Side::Below;
    const f64 turn = Turn(fromLower ? lower : upper, fromLower ? upper : lower,
                          tooLittle ? Extreme::Highest : Extreme::Lowest, residual);
    KeepOneSide(lower, upper, turn, preferred, residual);
}

f64 HighestPoint(f64 lower, f64 upper, f64 (*residual)()) {
    if (!(upper > lower))
        return lower;
    return PeakOf(lower, upper, [residual](f64 x) { return At(x, residual); });
}

void KeepOneBranch(f64& lower, f64& upper, Side preferred, f64 (*residual)()) {
    if (!(upper > lower))
        return;
    f64 turn = HighestPoint(lower, upper, residual);
    if (turn <= lower || turn >= upper)
        turn = PeakOf(lower, upper, [residual](f64 x) { return -At(x, residual); });
    KeepOneSide(lower, upper, turn, preferred, residual);
}

namespace {

// Trial values over all of a range, denser towards its lower end: a hazard of 0.1 among 99999.
std::vector<f64> TrialValues(f64 lower, f64 upper) {
    constexpr int steps = 40;
    constexpr f64 decades = 8;
    std::vector<f64> trials{lower};
    for (int k = 1; k <= steps; ++k) {
        trials.push_back(lower + (upper - lower) * k / steps);
        trials.push_back(lower + (upper - lower) * std::pow(10.0, -decades * k / steps));
    }
    std::ranges::sort(trials);
    return trials;
}

} // namespace

void KeepNearestRoot(f64& lower, f64& upper, Side from, f64 (*residual)()) {
    if (!(upper > lower))
        return;
    std::vector<f64> trials = TrialValues(lower, upper);
    if (from == Side::Above)
        std::ranges::reverse(trials);
    const f64 atEnd = At(trials.front(), residual);
    for (std::size_t k = 1; k < trials.size(); ++k) {
        if (atEnd * At(trials[k], residual) > 0)
            continue;
        lower = MinOf(trials[k - 1], trials[k]);
        upper = MaxOf(trials[k - 1], trials[k]);
        return;
    }
    KeepOneBranch(lower, upper, from, residual);
}

} // namespace quorvanta
