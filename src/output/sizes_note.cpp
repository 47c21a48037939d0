#include "output/sizes_note.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "output/statement_clauses.h"

namespace quorvanta {

std::string SizesNote(i16 parNo) {
    if (Calculated == False || parNo > NoOfPar)
        return "";
    // A file may hold any text, and a note has to be the last thing that fails.
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (!IsReadable(ParText(ParKind(i))))
            return "";
    SumUsed used;
    std::string clause = SumSampleClause(used);
    // One size alone has nothing beside it.
    if (!used.Has(parNo) || !Contains(clause, "("))
        return "";
    clause[0] = UpperCase(clause[0]);
    return clause;
}

} // namespace quorvanta
