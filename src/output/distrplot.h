// The module DISTRPLOT: the picture of the distributions behind an analysis, as densities,
// distribution functions or hazards, drawn by the plotting routine of the graphs.
#pragma once

#include "core/types.h"
#include "output/presentation.h"
#include "output/settings.h"

#include <string>
#include <vector>

namespace quorvanta {

// What of a distribution is plotted; DistrGraphStyle of the analysis. The survival function stands
// for what the user has not chosen otherwise: of survival tests it is offered, of any other it is
// the density.
enum DistrPlotKind : i16 { SurvivalPlot = 0, DensityPlot = 1, CdfPlot = 2, HazardPlot = 3 };

// A kind that the current analysis offers, with the caption of its option.
struct DistrPlotOption {
    DistrPlotKind Kind;
    const char* Caption;
};
std::vector<DistrPlotOption> DistrPlotOptions();
// All there are, in the order of the window.
std::vector<DistrPlotOption> AllDistrPlotOptions();

// The kind in use, one of those offered.
DistrPlotKind CurrentDistrPlot();
void ChooseDistrPlot(DistrPlotKind kind);

// The table of the distributions of the current analysis, as a plot: X the values from one limit of
// the settings to the other, Y a column for each distribution, NoValue where it has none: a hazard
// where nothing is left. Empty where there is nothing to show.
Presentation FillDistrTable(DistrPlotKind kind);

// The plot of CurrentDistrPlot.
Presentation DistrGraph();

// What it shows, in a sentence: for those who don't see it.
std::string DistrGraphInWords();

// What the user has set for the plot of this analysis; "Auto" until then. Another analysis, or
// another kind of plot, starts with "Auto" anew.
GraphSettings DistrGraphSettings();
bool ApplyDistrGraphSettings(const GraphSettings& settings);

} // namespace quorvanta
