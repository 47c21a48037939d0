// What a simulation has estimated, in a statement.
#pragma once

#include "output/statement_clauses.h"

#include <string>

namespace quorvanta {

// The current window shows a simulation.
bool IsSimulation();

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
