// Checks of single values and of pairs, and the search limits that follow from them.
#pragma once

#include "core/form.h"
#include "core/types.h"

namespace quorvanta {

// Is the value of parameter i within min..max? Shows a message and returns false if not, or if
// the parameter has no value. -99999 and 99999 stand for no limit. A limit of the parameter's own
// kind may be reached in 32 bits, any other one has to be in 64.
bool CheckRange(i16 i, f64 min, f64 max);

// Is the value of parameter i this one? Shows a message and returns false if not.
bool CheckEqual(i16 i, f64 required);

// The parameter that the last message of CheckRange or CheckEqual was about; -1 if there was none
// since ForgetRefused.
i16 RefusedParNo();
void ForgetRefused();

// A table or graph run takes these parameters' values from its axes, whatever their texts say.
void SetVaryingPars(i16 xParNo, i16 zParNo);
void ClearVaryingPars();

// Parameter j stands for a quantity entered as itself, as a difference from parameter i or as a
// ratio to it: is that quantity, in 32 bits as the equations see it, within min..max? True if it
// can't be known yet because i or j is the unknown, or because the ratio is to 0.
bool CheckPair(i16 i, i16 j, f64 min, f64 max, Form form);

// A left limit at i and a right limit at i + 1: is the left one not above the right one?
bool CheckPairs(i16 i);

// Narrows the search when the unknown is parameter i or its partner i + 1, so that the quantity of
// the pair stays within min..max at the limits themselves, as the equations see it: formed from the
// 32-bit base, and in 32 bits.
void PairLimits(f64& lower, f64& upper, i16 i, f64 min, f64 max, Form form);

// An effect has two values of the same power, one on each side of no effect (with two one-sided
// tests: of the middle between the limits). The search takes the left one with LeftTail, and the
// right one otherwise; a two-sided test always takes the right one.
bool SearchesLeft();

// Keeps the search on the side of x where the alternative lies: above x, or below it when the
// search goes left.
void LeftTailLimit(f64& lower, f64& upper, f64 x);
// The mirror image.
void RightTailLimit(f64& lower, f64& upper, f64 x);

} // namespace quorvanta
