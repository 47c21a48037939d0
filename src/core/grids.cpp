#include "core/grids.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/values.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

std::string PlainLabel(i16 parNo) {
    return StripAmpersand(ParLabel(ParKind(parNo)));
}

bool AreSameStores(const std::vector<Grid>& a, const std::vector<Grid>& b) {
    return std::ranges::equal(a, b, {}, &Grid::Store, &Grid::Store);
}

// The parameters that derive from the same grids as the one that was asked for: they would
// contradict each other if one of them were kept.
std::vector<i16> ParsOfGrids(i16 parNo, const std::vector<Grid>& grids) {
    std::vector<i16> pars{parNo};
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != parNo && SelIsTablePar(i) && AreSameStores(SelTableGrids(i), grids))
            pars.push_back(i);
    return pars;
}

// Derives the value; false if none follows from the figures.
bool TakeFromGrids(i16 parNo) {
    const f32 value = SelCalcTablePar(parNo);
    if (f64{value} == NoValue || !std::isfinite(value))
        return false;
    ParText(ParKind(parNo)) = Format(DecimalOf(value), "#####0.0#####");
    return true;
}

void TellOthers(const std::vector<i16>& pars) {
    std::string labels;
    for (std::size_t i = 1; i < pars.size(); ++i)
        labels += (i > 1 ? ", " : "") + PlainLabel(pars[i]);
    if (!labels.empty())
        ThePlatform().ShowStatus("Taken from the same tables: " + labels + ".");
}

} // namespace

void GetFromTable(i16 parNo) {
    if (!SelIsTablePar(parNo))
        return;
    AnalysisStep before = BeforeStep(StepKind::Tables);
    ReadParValues();
    const std::vector<Grid> grids = SelTableGrids(parNo);
    if (grids.empty() || !ShowGrids(grids, ParLabel(ParKind(parNo)))) {
        Cancelled = False;
        return;
    }
    std::vector<i16> derived;
    for (const i16 i : ParsOfGrids(parNo, grids))
        if (TakeFromGrids(i))
            derived.push_back(i);
    if (derived.empty() || derived.front() != parNo)
        ShowMessage(PlainLabel(parNo) + " Can't Be Calculated from These Tables.");
    else
        TellOthers(derived);
    Calculated = False;
    MarkChanged();
    RememberStep(std::move(before));
    UpdateMenus();
    ThePlatform().RefreshChild();
}

bool IsBluePar(i16 parNo) {
    return SelIsTablePar(parNo) || (HasGridData == True && IsGridKind(ParKind(parNo)));
}

} // namespace quorvanta
