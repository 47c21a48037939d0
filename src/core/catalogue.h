// The vocabulary of the program: what can be analysed, under which number, from which menu entry,
// with which options, and what each kind of parameter is called, starts with and may be.
#pragma once

#include "core/types.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

// --- Parameter kinds --------------------------------------------------------------------------

// Fills ParLabel, ParText, ParXminText, ParXmaxText, ParXstepText, ParZValuesText, ParMin and
// ParMax for every kind: each text becomes the text of its own number ("0.30" reads "0.3"), the z
// values are minimum, start value and maximum. Kind 349 is not defined and stays empty.
void SetAllParKinds();

// --- Options ----------------------------------------------------------------------------------

// Fill IntParCaption and IntParOption; CheckLabel. All options start at 0.
void SetAllIntPar();
void SetAllChecks();

// --- Menus ------------------------------------------------------------------------------------

// What an entry of a menu does when it is chosen.
enum class MenuAction { Submenu, Test, Distribution, File, GetInfo, Help, Output, Separator };

// One entry of the menu tree.
struct MenuItem {
    std::string_view Name;    // control name without index, "mnuStudent"
    i16 Index;                // its index in the control array; -1: a single control
    std::string_view Caption; // with "&" before the accelerator
    MenuAction Action;
    i16 MenuNo;               // menu number of a test, distribution number of a distribution
    std::span<const MenuItem> Children;
};

// The entries of the menu bar, left to right.
std::span<const MenuItem> MainMenu();

// The hidden pop-up menu of a window with a result.
const MenuItem& OutputMenu();

// --- Tests ------------------------------------------------------------------------------------

// The test number of a menu number. Menu numbers of group sequential designs set IsGroupSeq and
// those of multiple comparisons IsMultComp. A number that no entry has gives 0.
i16 MenuToTestNo(i16 menuNo);

// The text of TestName: the captions on the way to the entry, without the top menu, joined by ", ".
std::string TestMenuName(i16 menuNo);

// The short code that lets the shared modules tell their callers apart; "" if none applies.
std::string TestCode();

// True if the test exists only as a simulation; false at once when the current window is one.
bool IsSimOnly(i16 menuNo);

// False for the menu numbers that can't be opened in a Monte Carlo Simulation window.
bool HasSimWindow(i16 menuNo);

// Sets SimDistrNo from TestNo where the test fixes the distribution of the survival times.
void SetSimDistr();

bool HasSurvivalGraph();
bool IsDiscreteTest();
bool UsesEventTimes();

// Help numbers of the current analysis.
i32 HelpDescription();
i32 HelpParameters();
i32 HelpExample();

// --- Distributions ----------------------------------------------------------------------------

// The parameters of a distribution, by ParListNo; empty for a number without a distribution.
std::span<const std::string_view> DistrParList(i16 distrNo);

// The caption of the distribution's menu entry without its accelerator.
std::string DistrMenuName(i16 distrNo);

// --- Window kinds -----------------------------------------------------------------------------

inline constexpr i16 CalculationWindow = 0;
inline constexpr i16 TableWindow = 1;
inline constexpr i16 GraphWindow = 2;
inline constexpr i16 SimulationWindow = 3;

// "Calculation", "Table", "Graph", "Monte Carlo Simulation".
std::string_view WindowKindCaption(i16 windowKind);

// Kind of the current analysis' window; -1 when none is open.
i16 CurrentWindowKind();

} // namespace quorvanta
