// A worked example: what a user chooses, types, presses and reads, and the exact value that the
// result is held against. A page of the help shows it, a check plays it.
//
// In the topic it is a block "```example" of lines "name: text":
//   analysis:   the captions from the menu bar to the entry, joined by " > "
//   procedure:, parameter:   of a distribution, as the option window has them
//   samples:, tails:         likewise, where there is a choice
//   left tail:  "yes" ticks the box; without this line it is not ticked
//   tick:       a check box, one line each; all others are not ticked
//   choose:     a form of an interchangeable parameter, one line each
//   adjust:     the method of the window "Adjustment Method"; without this line it is the first
//   interim:    the number of interim analyses of a group sequential design, and what it asks for:
//   boundaries:, boundary parameter:   as the window of the boundaries has them
//   levels:     of the user's own boundaries: that for rejecting and that for accepting H0, joined
//               by " | ", one line for each analysis
//   fractions:  of the information, of the interim analyses, joined by " | "
//   told:       what the program says when the options are accepted, where it solves for the
//               power at once
//   source:     where the figures are from, and how the exact values were calculated
// and then, once or several times, a step:
//   type:       label = text, one line for each box; boxes not named keep what they show
//   open:       the label whose blue box opens input grids
//   table:      the title of an input grid, in their order
//   fill:       a line of that grid, its cells joined by " | "
//   derived:    label = text, one line for each box that then shows what derives from the grids
//   press:      the label of the unknown
//   read:       what its box then shows
//   exact:      the value without rounding, of other origin
//   tolerance:  what our approximations may differ from it, absolutely
//
// A worked table or graph is a block "```run": the same lines up to source:, and then
//   window:     "Table" or "Graph"
//   y:, x:, z:  the labels of the parameters on the axes
//   min:, max:, step:, values:   the boxes of the axes
//   set:        label = text, one line for each of the other parameters
//   tolerance:  as above, for all cells
//   row:        x | what the table shows, or the curves let read, for each z-value
//   exact:      the same row without rounding, of other origin
//
// A worked simulation is a block "```simulation": the same lines up to source:, and then
//   set:          label = text, one line for each parameter but the one that is estimated
//   reject below: the levels of the interim analyses of what is no design, joined by " | "
//   maximum:      Max. No of Simulations: a multiple of 1000, so that the last estimates are those
//                 of the end
//   seed:         Random Seed
//   distribution: label of a blue box | a distribution of its list | its parameters; a second line
//                 for the same box where it asks for two
//   open:         the label whose blue box opens the grids; without it the start asks for them
//   table:        the title of an input grid, in their order
//   fill:         a line of that grid, its cells joined by " | "
//   level:        what the window shows at the end: lower limit, estimate and upper limit in its
//                 first column, of the whole study where there are interim analyses
//   power:        likewise, in its second column
//   exact level:, exact power:   what they estimate, of other origin
//   row:          analysis | first column | second column | third column, where there are interim
//                 analyses; the third one where something is accepted
//   exact:        the same row, of other origin
//   average:      if H0 is true | if H1 is, what stands there of the average size
//   exact average:, tolerance:   of other origin, and what ours may differ from it
//   reject heads: the heads of the table of rejections where it has several columns
//   reject:       number of a hypothesis | what that table shows of it
//   exact reject: the same row, of other origin
// Captions and labels are written without the "&" before their accelerator.
#pragma once

#include "core/catalogue.h"
#include "core/types.h"

#include <string>
#include <utility>
#include <vector>

namespace quorvanta::help {

// An input grid of a blue box, as it is filled.
struct ExampleTable {
    std::string Title;
    std::vector<std::vector<std::string>> Rows;
};

// What a group sequential design is made of.
struct ExampleDesign {
    i16 Interim = 0; // none: it is asked for nothing
    std::string Boundaries;
    std::string Parameter;                        // of the boundaries; empty: they have none
    std::vector<std::vector<std::string>> Levels; // of the user's own boundaries, by analysis
    std::vector<std::string> Fractions;
};

struct ExampleStep {
    std::vector<std::pair<std::string, std::string>> Typed{}; // label, text
    std::string Opened{};                                     // label; empty: no grids are opened
    std::vector<ExampleTable> Tables{};
    std::vector<std::pair<std::string, std::string>> Derived{}; // label, text
    std::string Pressed{};
    std::string Shown{};
    std::string Exact{};
    f64 Tolerance = 0;
};

struct RunRow {
    std::string X;
    std::vector<std::string> Shown;
    std::vector<std::string> Exact;
};

// A table or graph, and what it shows.
struct ExampleRun {
    std::string Window;
    std::string Y;
    std::string X;
    std::string Z;
    std::string Min;
    std::string Max;
    std::string Step;
    std::string Values;
    std::vector<std::pair<std::string, std::string>> Set; // label, text
    f64 Tolerance = 0;
    std::vector<RunRow> Rows;
};

// Three numbers as a simulation window shows them, and what they estimate.
struct ExampleEstimate {
    std::string Shown;
    std::string Exact;
};

// A distribution that is chosen for a blue box.
struct ExampleDistribution {
    std::string Label;
    std::string Name;
    std::vector<std::string> Parameters;
};

struct ExampleSimulation {
    std::vector<std::pair<std::string, std::string>> Set; // label, text
    std::vector<std::string> Levels;                      // of interim analyses
    std::string Maximum;
    std::string Seed;
    std::vector<ExampleDistribution> Distributions;
    std::string Opened; // the label of the blue box; empty: the start asks
    std::vector<ExampleTable> Tables;
    ExampleEstimate Level;
    ExampleEstimate Power;
    std::vector<RunRow> Analyses; // X is the name of the analysis
    RunRow Average;               // X is empty; if H0 is true, and if H1 is
    f64 AverageTolerance = 0;
    std::vector<std::string> RejectionHeads;
    std::vector<RunRow> Rejections; // X is the number of the hypothesis
};

struct Example {
    std::vector<std::string> Menus;
    std::string Procedure;
    std::string Parameter;
    std::string Samples;
    std::string Tails;
    bool LeftTail = false;
    std::vector<std::string> Ticked;
    std::vector<std::string> Chosen;
    std::string Adjustment; // empty: the first method, or there is none
    ExampleDesign Design;
    std::vector<std::string> Told;
    std::string Source;
    std::vector<ExampleStep> Steps; // of a Calculation window
    ExampleRun Run;                 // of a Table or Graph window
    ExampleSimulation Simulation;   // of a Simulation window
};

// Throws std::runtime_error for a line that is none of the above and for an example without a
// step.
Example ParseExample(const std::string& lines);

// The same for a table or graph; it has to have a row.
Example ParseRun(const std::string& lines);

// The same for a simulation; both estimates have to be there.
Example ParseSimulation(const std::string& lines);

// The example of a topic's text; throws std::runtime_error if it has none.
Example ExampleOf(const std::string& topicText);

// Likewise, for a table or graph.
Example RunOf(const std::string& topicText);

// Likewise, for a simulation.
Example SimulationOf(const std::string& topicText);

// The entry of the menus with these captions, from the menu bar on; throws std::runtime_error if
// there is none.
const MenuItem& MenuEntry(const std::vector<std::string>& captions);

// Chooses the analysis and its options in the engine; the options stay open. A window has to be
// open. Throws std::runtime_error for a caption that is not offered.
void ChooseOptions(const Example& example);

// The place of that name among the methods of adjustment of the current analysis; the first one for
// an empty name. Throws std::runtime_error if there is none of that name.
i16 AdjustmentOfName(const std::string& name);

// The button of that distribution in the list that is being chosen from; throws std::runtime_error
// if there is none.
i16 ButtonOfDistribution(const std::string& name);

// The type of boundaries of that name; throws std::runtime_error if there is none.
i16 BoundaryOfName(const std::string& name);

// The position of a label in the current parameter list; throws std::runtime_error if it has none.
i16 PositionOfLabel(const std::string& label);

// The captions of the option window for NoOfSamples, NoOfTails and ProcedureNo.
const char* SamplesCaption(i16 noOfSamples);
const char* TailsCaption(i16 noOfTails);
const char* ProcedureCaption(i16 procedureNo);

} // namespace quorvanta::help
