// The numbers that choose the module of an analysis.
#pragma once

#include "core/analysis_state.h"
#include "core/types.h"

namespace quorvanta {

// Whoever wants to know something of an analysis that is not the current one asks with its key and
// leaves the state alone. The fields mirror the globals of the same names; a test is chosen by the
// first two, a parameter of a distribution by all but the second.
struct AnalysisKey {
    i16 IsTest = False;
    i16 TestNo = 0;
    i16 DistrNo = 0;
    i16 ProcedureNo = 0;
    i16 ParListNo = 0;
};

// The key of the analysis in the state.
inline AnalysisKey CurrentKey() {
    return {IsTest, TestNo, DistrNo, ProcedureNo, ParListNo};
}

} // namespace quorvanta
