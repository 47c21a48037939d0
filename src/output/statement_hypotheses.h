// The hypotheses of a test, in a statement.
#pragma once

#include "output/statement_clauses.h"

#include <string>

namespace quorvanta {

// The hypotheses, from "the null hypothesis" on; empty if no parameter states one.
std::string SumHypClause(SumUsed& used);

} // namespace quorvanta
