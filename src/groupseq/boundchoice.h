// The boundary type of a design, as the user chooses it in the window "Group Sequential Designs",
// which only draws what stands here.
//
// The choice is kept where a simulation keeps its distributions, which a design does not have: so
// it goes with the analysis, and to its file.
#pragma once

#include "core/types.h"

#include <string>
#include <string_view>

namespace quorvanta {

inline constexpr std::string_view BoundCaption = "Group Sequential Designs";
inline constexpr std::string_view BoundHeading = "Boundaries for Rejecting H0:";

// What the status line says of a design whose boundaries have no solution.
inline constexpr std::string_view NoBoundaries =
    "No boundaries of this type agree with the other values.";

// "Pocock"; empty for a number that is no type.
std::string_view BoundName(i16 type);
// What FamilyPar is called with this type: "Delta", "Gamma", "Rho"; empty where there is none.
std::string_view FamilyParCaption(i16 type);

// Takes BoundType and FamilyPar from the current analysis; the first type where it has none, and
// with one analysis alone.
void ReadBoundChoice();

// Makes them those of the current analysis.
void StoreBoundChoice(i16 type, f32 familyPar);

// Lets the user choose; false when he cancels: the former choice stands.
bool ShowBoundaries();

// --- While he chooses ---------------------------------------------------------------------------

extern i16 BoundTypeShown;
extern std::string FamilyParText;

// He presses a button: the field gets the usual parameter of the type.
void ChooseBoundType(i16 type);

// Is the parameter in its range? Shows its message if not; takes the choice if it is.
bool AcceptBoundary();

} // namespace quorvanta
