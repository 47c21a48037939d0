// The vocabulary of the program: what can be analysed, under which number, from which menu entry,
// with which options, and what each kind of parameter is called, starts with and may be.
#pragma once

#include "core/form.h"
#include "core/types.h"

#include <span>
#include <string>
#include <string_view>

namespace quorvanta {

// --- Parameter kinds --------------------------------------------------------------------------

// Fills ParLabel, ParText, ParXminText, ParXmaxText, ParXstepText, ParZValuesText, ParMin and
// ParMax for every kind: each text becomes the text of its own number ("0.30" reads "0.3"), the z
// values are minimum, start value and maximum. Kind 349 is not defined and stays empty.
void SetAllParKinds();

// What a kind is, whatever the analysis it stands in.
//
// It counts: sample sizes and their differences, events, subjects, raters, items, groups, levels,
// blocks, squares, strata, sequences, periods, treatments, categories, populations. Sizes given as
// a ratio don't count.
bool IsCountKind(i16 kind);
// The size of a population, or the difference of two.
bool IsPopulationKind(i16 kind);
// It lays out a design: groups, factor levels, squares, blocks, measurements, and the sequences,
// periods and treatments of a crossover.
bool IsLayoutKind(i16 kind);
// It is always derived from a grid while grid data exist.
bool IsGridKind(i16 kind);
// A power, or another probability that the equation yields directly.
bool IsPowerKind(i16 kind);

// What a size belongs to.
enum class SizeRole {
    None,   // no size
    Single, // one sample, or all of them: told with its own label
    First,  // of two samples, or of many groups
    Second,
    EachOther,     // of the groups but the first
    FirstSequence, // of a crossover
    SecondSequence,
    Exposure, // observation time, a size where no subjects are counted
    TimeAtRisk,
    FirstExposure,
    SecondExposure
};
SizeRole SizeRoleOf(i16 kind);
// How a second size is entered beside its first.
Form SizeFormOf(i16 kind);

// --- Options ----------------------------------------------------------------------------------

// Fills IntParCaption and IntParOption; option 0 of every group is chosen.
void SetAllIntPar();

// Fills CheckLabel; no check box is ticked.
void SetAllChecks();

// --- Window kinds -----------------------------------------------------------------------------

inline constexpr i16 CalculationWindow = 0;
inline constexpr i16 TableWindow = 1;
inline constexpr i16 GraphWindow = 2;
inline constexpr i16 SimulationWindow = 3;

// "Calculation", "Table", "Graph", "Monte Carlo Simulation"; RunTimeError (BadIndex) for any other
// kind.
std::string_view WindowKindCaption(i16 windowKind);

// --- Menus ------------------------------------------------------------------------------------

// What an entry of a menu does when it is chosen.
enum class MenuAction { Submenu, Test, Distribution, File, GetInfo, Help, Output, Separator };

inline constexpr i16 NoIndex = -1;
inline constexpr i16 NoNumber = -1;

// One entry of the menu tree.
struct MenuItem {
    std::string_view Name;    // control name without index, "mnuStudent"
    i16 Index;                // its index in the control array; NoIndex: a single control
    std::string_view Caption; // with "&" before the accelerator; empty: a separator
    MenuAction Action;
    i16 MenuNo; // menu number of a test, distribution number of a distribution, else NoNumber
    std::span<const MenuItem> Children;
    i16 TestNo; // test number of a test, else NoNumber
    i16 HelpNo; // help number of a menu; 0: none
};

// The entries of the menu bar, left to right.
std::span<const MenuItem> MainMenu();

// The hidden pop-up menu of a window with a result.
const MenuItem& OutputMenu();

// The test number of a menu number; 0 for a number that no entry has. The separators 60 and 220
// have one.
i16 TestNoOfMenu(i16 menuNo);

// The same on the way into a test: the menu numbers of group sequential designs set IsGroupSeq and
// those of multiple comparisons IsMultComp; neither is ever cleared here.
i16 MenuToTestNo(i16 menuNo);

// The text of TestName: the captions on the way to the entry, without the head of the menu bar and
// without accelerators, joined by ", ". The captions are taken as they stand, a final blank or
// point included. Empty for a number that no entry has.
std::string TestMenuName(i16 menuNo);

// --- Tests ------------------------------------------------------------------------------------

// The group sequential designs of means, with standard deviations that are known and unknown.
inline constexpr i16 MeansDesign = 124;
inline constexpr i16 StudentDesign = 125;

// The test whose menu entry leads to this one: that with unknown deviations is an option of the
// design of means. Any other is its own.
constexpr i16 MenuTestNo(i16 testNo) {
    return testNo == StudentDesign ? MeansDesign : testNo;
}

// Lets the modules that several tests share tell their callers apart.
enum class TestVariant {
    None,
    UNPTT,   // unpaired t-test
    PTT,     // paired t-test
    LTT,     // medians on the log scale
    GSTT,    // group sequential t-test
    WEIB,    // Weibull survival times
    GAM,     // gamma survival times
    LRPWEXP, // log-rank test on piecewise exponential survival times
    NOR1,    // one mean, standard deviation known
    TT1,     // one mean, standard deviation unknown
    NOR2     // parameters of two normal distributions
};

// The variant of the current analysis: a few comparisons, no text, for use inside RootFunction.
TestVariant CurrentVariant();

// The current variant's name, "" for None.
std::string_view TestCode();

// True if the test of a menu number exists only as a simulation; false at once for a simulation
// window, where there is nothing to warn of.
bool IsSimOnly(i16 menuNo, i16 windowKind);
// The same by the number of the test.
bool IsSimOnlyTest(i16 testNo);

// False for the menu numbers that can't be opened in a Monte Carlo Simulation window.
bool HasSimWindow(i16 menuNo);

// Is the test a group sequential design?
bool IsDesignTest(i16 testNo);

// Is it a multiple comparison?
bool IsMultipleComparison(i16 testNo);

// Sets SimDistrNo where TestNo fixes the distribution of the survival times; any other test leaves
// it alone.
void SetSimDistr();

// Properties of the current analysis: its distribution graph shows survival curves (a test) or the
// distribution itself (a parameter); its statistic is discrete; its simulation needs the times of
// events.
bool HasSurvivalGraph();
bool IsDiscreteTest();
bool UsesEventTimes();

// What the sizes of the current analysis count are pairs of observations.
bool IsPaired();

// Help numbers of the current analysis: its description, its parameters, its example. The second
// has up to seven digits.
i32 HelpDescription();
i32 HelpParameters();
i32 HelpExample();

// --- Distributions ----------------------------------------------------------------------------

// The parameters of a distribution, by ParListNo; empty for a number without a distribution.
std::span<const std::string_view> DistrParList(i16 distrNo);

// The caption of the distribution's menu entry without its accelerator; empty for a number without
// a distribution.
std::string DistrMenuName(i16 distrNo);

} // namespace quorvanta
