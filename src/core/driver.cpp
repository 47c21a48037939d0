#include "core/driver.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/floating_windows.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/search.h"
#include "core/values.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <string>

namespace quorvanta {

void SolveFor(i16 parNo) {
    if (Calculated == True && parNo == UnknownParNo)
        return;
    Cancelled = False;
    UnknownParNo = parNo;
    Calculated = False;
    ZParNo = parNo == 0 ? 1 : 0;
    XParNo = parNo <= 1 ? 2 : 1;
    FixParNos();
    CalcUnknown();
}

void CalcUnknown() {
    if (Calculated == True || NoOfPar < 1)
        return;
    ReadParValues();
    std::string& result = ParText(ParKind(UnknownParNo));
    result = "-";
    ThePlatform().RefreshChild();
    if (IsMultComp == True)
        HasGridData = False;
    if (!SelCheckPar()) {
        if (IsGroupSeq == False && IsMultComp == False)
            Calculated = True;
        UpdateMenus();
        return;
    }
    const f64 root = SolveUnknown();
    if (root == NoValue) {
        ShowCantCalculate();
    } else {
        ParValue(UnknownParNo) = root;
        result = FormatPar(ParKind(UnknownParNo), root);
        MarkChanged();
    }
    Calculated = True;
    StoreAnalysis();
    HideWindows(Occasion::ResultGone);
    ThePlatform().RefreshChild();
    UpdateMenus();
}

} // namespace quorvanta
