#include "core/grids.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"
#include "output/format.h"

namespace quorvanta {

void GetFromTable(i16 parNo) {
    if (!SelIsTablePar(parNo))
        return;
    const f64 value{SelCalcTablePar()};
    if (Cancelled == True) {
        Cancelled = False;
        return;
    }
    ParText(ParKind(parNo)) = Format(value, "#####0.0#####");
    Calculated = False;
    MarkChanged();
    UpdateMenus();
    ThePlatform().RefreshChild();
}

bool IsBluePar(i16 parNo) {
    return SelIsTablePar(parNo) || (HasGridData == True && IsGridKind(ParKind(parNo)));
}

} // namespace quorvanta
