// Equations that turn: an unknown at which the precision or the power is highest or lowest has two
// values with the same result around it, and the search may only see one of them.
#pragma once

#include "core/general.h"
#include "core/types.h"

namespace quorvanta {

// Where a function of the second degree turns; NoValue for a straight line.
template <class Function>
f64 TurningPoint(Function&& f) {
    const f64 f0 = f(0.0);
    const f64 f1 = f(1.0);
    const f64 square = (f(2.0) - 2 * f1 + f0) / 2;
    if (square == 0)
        return NoValue;
    return -(f1 - f0 - square) / (2 * square);
}

enum class Side { Below, Above };

// The unknown is a size, and the search has too much power at both of its ends: starts it at the
// size, of those next to the least one, from which on the power rises, if that has too little. With
// 1 or 2 degrees of freedom the approximations of t give more power than with a few more.
void StartWherePowerRises(f64& lower, f64 upper, f64 (*residual)());

// The unknown is a count of a few, such as levels of a factor, and the search has too little power
// at both of its ends: starts it at the count that has the most, if that is enough.
void StartAtHighestPower(f64& lower, f64 upper, f64 (*residual)());

// The side on which a test is asked for: above, below when the search goes left.
Side SideOfTail();
Side Opposite(Side side);

// Keeps the search on one side of the turning point, if that lies between its limits: on the
// preferred side if the residual changes its sign there, else on the other one.
void KeepOneSide(f64& lower, f64& upper, f64 turn, Side preferred, f64 (*residual)());

// The same where only the equation knows its turning point: with too little power at both limits
// that of the highest power, with too much that of the lowest. Approximations that lose the power
// again with an effect beyond all measure are searched from the limit without effect.
void KeepOneSideOfTurn(f64& lower, f64& upper, Side preferred, f64 (*residual)());

// The unknown between two limits at which a residual with one peak is highest; one of the limits
// where it only rises or falls.
f64 HighestPoint(f64 lower, f64 upper, f64 (*residual)());

// The residual turns somewhere between its limits: keeps the search on one side of its peak, or of
// its lowest point where it has no peak inside.
void KeepOneBranch(f64& lower, f64& upper, Side preferred, f64 (*residual)());

// The residual may turn more than once: keeps the search between two neighbouring trial values of
// opposite sign, the first ones as seen from an end. Where no trial shows a change of sign, it is
// KeepOneBranch.
void KeepNearestRoot(f64& lower, f64& upper, Side from, f64 (*residual)());

} // namespace quorvanta
