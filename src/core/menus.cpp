#include "core/menus.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/kinds.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/values.h"

#include <cstddef>

namespace quorvanta {

namespace {

// An interval has the sides that its check box gives it; tails are for tests.
std::string TailsInWords() {
    if (IsIntervalAnalysis())
        return CheckValue(Check::TwoSidedInterval) == 1 ? "two-sided" : "one-sided";
    switch (NoOfTails) {
    case OneSided:
        return "one-sided";
    case TwoSided:
        return "two-sided";
    default:
        return "two one-sided (equivalence)";
    }
}

bool HasDistributionGraph() {
    const bool hasOnlyGraph = HasDistrGraph == True && HasGridData == False;
    const bool hasNeither = HasDistrGraph == False && HasGridData == False;
    const bool isLeftOut =
        (!IsDiscreteTest() || hasNeither) && !hasOnlyGraph && !HasSurvivalGraph();
    return IsGroupSeq == False && !isLeftOut;
}

} // namespace

bool IsIntervalAnalysis() {
    return IsTest == False && ProcedureNo == ProcedureInterval;
}

void ShowNotAvailable(const std::string& what) {
    ShowMessage(what + " Is Not Available in This Version.");
}

void UpdateMenus() {
    GetInfoEnabled.Fill(false);
    if (AnalysisNo != 0) {
        for (int i = 0; i <= 2; ++i)
            GetInfoEnabled(i) = true;
        const bool hasResult =
            Calculated == True && NoOfPar >= 1 &&
            (CurrentWindowKind() != CalculationWindow || HasValue(ParText(ParKind(UnknownParNo))));
        GetInfoEnabled(3) = hasResult;
        GetInfoEnabled(4) = hasResult && HasDistributionGraph();
    }
    ThePlatform().RefreshMenus();
}

std::string Headline() {
    std::string text;
    if (IsTest == True) {
        text = TestName;
    } else {
        constexpr const char* procedures[] = {"Test of ", "Point Estimate of ",
                                              "Conf. Interval for "};
        text = procedures[ProcedureNo];
        text += DistrParList(DistrNo)[static_cast<std::size_t>(ParListNo)];
        text += " " + DistrName;
    }
    return text + ", " + TailsInWords() + ".";
}

} // namespace quorvanta
