// What is shown of a group sequential design: the stopping probabilities of the window
// "Probabilities to Stop at Interim Analyses", average sizes, and the boundaries as a picture.
#pragma once

#include "core/types.h"
#include "output/presentation.h"

#include <string>
#include <vector>

namespace quorvanta {

inline constexpr const char* DesignCaption = "Probabilities to Stop at Interim Analyses";

// After a calculation: works the design out, writes the probabilities into the texts of the
// analysis, and shows the window. Its interim parameters go into their texts as well.
void GsShowResults();
void GsShowIntPar();

// A calculation has failed: there is no design to be shown.
void DropDesign();

// One line of the window: an analysis, or all of them.
struct DesignRow {
    std::string Analysis; // "Interim Analysis 1", "Final Analysis", "Over-All"
    std::string Fraction;
    std::string Boundaries;
    std::string Level;  // H0 is true
    std::string Power;  // H1 is true
    std::string Accept; // H0 accepted though H1 is true
};

// The lines of the current analysis; none where its design is not worked out.
std::vector<DesignRow> DesignRows();
// "Rej.H0    Acc.H0    Either" above the probabilities of a design with two boundaries,
// "Reject H0      Accept H0" above its bounds; empty without.
std::string DesignPairHead();
std::string DesignBoundHead();

// The average size if H0 is true, and if H1 is; empty with one analysis.
struct DesignAverage {
    std::string Caption;
    std::string H0;
    std::string H1;
};
DesignAverage AverageOfDesign();

// The boundaries against the information: on the scale of the statistic, or as nominal levels.
enum class BoundScale { Statistic, Level };
Presentation BoundaryPlot(BoundScale scale);

} // namespace quorvanta
