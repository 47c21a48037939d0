#include "core/showpar.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/grids.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/run.h"
#include "core/typed_text.h"
#include "output/titles.h"

#include <algorithm>
#include <utility>

namespace quorvanta {

namespace {

constexpr i16 MaxFixed = MaxPar - NoOfRoles;

i16& ParNoOfRole(i16 k) {
    switch (k) {
    case YRole:
        return UnknownParNo;
    case XRole:
        return XParNo;
    default:
        return ZParNo;
    }
}

i16 PositionOf(i16 parNo) {
    const auto order = ParBoxOrder.Raw().first(static_cast<std::size_t>(NoOfPar) + 1);
    return static_cast<i16>(std::ranges::find(order, parNo) - order.begin());
}

// Nothing for the z-values of an analysis without a z parameter: none are shown or kept.
std::string* StoredAxisText(AxisText which) {
    switch (which) {
    case AxisText::Xmin:
        return &ParXminText(ParKind(XParNo));
    case AxisText::Xmax:
        return &ParXmaxText(ParKind(XParNo));
    case AxisText::Xstep:
        return &ParXstepText(ParKind(XParNo));
    default:
        return HasZPar() ? &ParZValuesText(ParKind(ZParNo)) : nullptr;
    }
}

std::string PlainLabel(i16 parNo) {
    return StripAmpersand(ParLabel(ParKind(parNo)));
}

} // namespace

void SetupShowPar() {
    if (NoOfPar < 1)
        return;
    if (CurrentWindowKind() == SimulationWindow)
        return ThePlatform().Show(FloatingWindow::InterimParameters);
    if (!IsTableOrGraph())
        return;
    ParBoxOrder.Fill(0);
    i16 position = 0;
    for (i16 k = YRole; k < NoOfRoles; ++k)
        ParBoxOrder(position++) = ParNoOfRole(k);
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && i != XParNo && i != ZParNo)
            ParBoxOrder(position++) = i;
    ThePlatform().Show(FloatingWindow::Parameters);
}

void SwapAxis(i16 k, i16 parNo) {
    const i16 former = ParBoxOrder(k);
    const bool hasRole = k != ZRole || HasZPar();
    if (Calculating == True || !hasRole || parNo == former)
        return;
    Calculated = False;
    const i16 position = PositionOf(parNo);
    ParBoxOrder(k) = parNo;
    ParNoOfRole(k) = parNo;
    ParBoxOrder(position) = former;
    if (position < NoOfRoles)
        ParNoOfRole(position) = former;
    if (k == YRole || position == YRole)
        OutDecimals = AutoDecimals;
    MarkChanged();
    UpdateMenus();
    ThePlatform().RefreshChild();
}

i16 FixedPar(i16 box) {
    const i16 position = static_cast<i16>(box + NoOfRoles);
    return box >= 0 && box <= MaxFixed && position <= NoOfPar ? ParBoxOrder(position) : i16{-1};
}

std::string AxisTextOf(AxisText which) {
    const std::string* stored = StoredAxisText(which);
    return stored != nullptr ? *stored : "";
}

std::string TypedAxisText(AxisText which, const std::string& text) {
    if (Calculating == True)
        return AxisTextOf(which);
    return CheckTyped(text, StoredAxisText(which));
}

std::string ShowParHint() {
    for (i16 k = YRole; k < NoOfRoles; ++k) {
        const i16 parNo = ParNoOfRole(k);
        if (parNo <= NoOfPar && IsBluePar(parNo))
            return "Can't Be Calculated When " + PlainLabel(parNo) + " Is the X-, Y-, or Z-axis.";
    }
    for (i16 box = 0; FixedPar(box) >= 0; ++box)
        if (IsBluePar(FixedPar(box)))
            return "Double-click Blue Text to Calculate the Value from Table(s).";
    return "";
}

void RunOrCancel() {
    if (Calculating == True) {
        Cancelled = True;
        return;
    }
    if (EnsureRun())
        StoreAnalysis();
}

bool EnsureRun() {
    Cancelled = False;
    const bool isStep = Calculated == False;
    AnalysisStep before = BeforeStep(StepKind::Calculation);
    CalcRun();
    if (Cancelled == True) {
        Cancelled = False;
        return false;
    }
    if (isStep && Calculated == True)
        RememberStep(std::move(before));
    // The texts change with the result and not before it: a run that comes to nothing leaves the
    // former drawing, whose labels have to stay true.
    BuildDefaultTitles();
    UpdateMenus();
    ThePlatform().RefreshChild();
    return Calculated == True;
}

} // namespace quorvanta
