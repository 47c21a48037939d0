// The estimation of a parameter, in a statement.
#pragma once

#include "output/statement_clauses.h"

#include <string>

namespace quorvanta {

// The parameter of a parameter analysis, "mean (standard deviation known)"; where two samples are
// compared, "difference between two samples in mean ..." or "ratio between two samples of ...",
// with a word for what a mean is before its name, if there is to be one.
std::string ParameterPhrase();
std::string ComparedParameterPhrase(std::string_view kind = "");

// The analysis' distribution in words: "normal distribution".
std::string DistributionPhrase();

// The interval is one-sided: its check box is offered and not ticked.
bool IsOneSidedInterval();

// What an interval will be: its level, its width and, where the analysis has it, the probability
// of that width. From "the probability is" or "a two-sided" on, without a full stop.
std::string SumIntervalClause(SumUsed& used);

// What is estimated how well, from "the probability is" or the interval on.
std::string EstimationClause(SumUsed& used);

// What is estimated, unless the sentence before has said it.
std::string EstimatedSentence();

} // namespace quorvanta
