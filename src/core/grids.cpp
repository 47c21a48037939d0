#include "core/grids.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"
#include "output/format.h"

#include <algorithm>
#include <iterator>

namespace quorvanta {

void GetFromTable(i16 parNo) {
    if (!SelIsTablePar(parNo))
        return;
    const f64 value = static_cast<f64>(SelCalcTablePar());
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

bool IsGridKind(i16 kind) {
    constexpr i16 kinds[] = {34,  137, 152, 153, 154, 202, 240, 247, 249, 250, 251,
                             252, 253, 254, 269, 287, 290, 307, 308, 309, 311, 312,
                             313, 314, 337, 338, 339, 340, 341, 342, 352};
    return std::binary_search(std::begin(kinds), std::end(kinds), kind);
}

bool IsBluePar(i16 parNo) {
    return SelIsTablePar(parNo) || (HasGridData == True && IsGridKind(ParKind(parNo)));
}

} // namespace quorvanta
