// What a simulation has estimated, in a statement.
#pragma once

#include "core/types.h"
#include "output/statement_clauses.h"

#include <string>

namespace quorvanta {

// The current window shows a simulation.
bool IsSimulation();

// What its three columns of estimates are called; empty for one that is not shown.
struct EstimateCaptions {
    std::string Sign;
    std::string Power;
    std::string PrAccept;
};
EstimateCaptions CaptionsOfEstimates();

// What stands before a row of estimates, from 0: "Interim Analysis 1", "Final Analysis", and behind
// the analyses "Over-All".
std::string EstimateRowHead(i16 row);
// The rows: one for each analysis, and one over all where there are several.
i16 EstimateRows();

// Its estimate of the power is there.
bool HasEstimates();

// "the estimated actual significance level is ... and the estimated power is ...".
std::string EstimatesClause(SumUsed& used);

// The replicates that the estimates come from; before the window has counted any, those asked for.
std::string ReplicatesSentence();

// Where a simulation's estimate is told: in a sequence of estimates, or in running text.
enum class MonteCI { InTable, InText };

// An estimate with its limits, from "Lower   Estimate   Upper". A text of another shape comes back
// as it is.
std::string SumMonteCI(const std::string& text, MonteCI form);

} // namespace quorvanta
