// The hypotheses about a kappa, which the tests of intraclass and of Cohen's kappa share.
#pragma once

#include "core/kinds.h"
#include "core/types.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

inline constexpr OneSampleKinds KappaKinds{
    Group::H1Kappa,
    Kind::H0Kappa,
    {Kind::H1Kappa, Kind::H1KappaMinusH0, Kind::H1KappaOverH0},
    Kind::ProportionLeftLimit,
    Kind::ProportionRightLimit};

// Are all entered kappas, limits among them, within what proportions allow? Positions 2 and 3 hold
// them, and with two one-sided tests position 4.
bool CheckKappas(const Hypotheses& list, Range possible);

// Narrows the search for one of them to what is possible, and to one of two solutions.
void NarrowKappas(const Hypotheses& list, f64& lower, f64& upper, Range possible,
                  f64 (*residual)());

// The least and the largest of the kappas at hand, without the unknown: what proportions that are
// sought have to allow.
Range KappasAtHand(const Hypotheses& list);

// Power minus the power entered, of n subjects whose variance each is that of kappa.
f64 KappaPowerEq(const Hypotheses& list, f64 n, f64 (*variance)(f64 kappa));

} // namespace quorvanta
