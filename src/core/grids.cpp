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
#include "montecarlo/shiftmodel.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

std::string PlainLabel(i16 parNo) {
    return StripAmpersand(ParLabel(ParKind(parNo)));
}

// What a parameter derives from: grids, or a distribution from one of the lists.
struct Source {
    std::vector<Grid> Grids;
    std::optional<DistrList> Distr;
};

Source SourceOf(i16 parNo) {
    const auto distr = SelTableDistr(parNo);
    return {distr ? std::vector<Grid>{} : SelTableGrids(parNo), distr};
}

bool AreSame(const Source& a, const Source& b) {
    return a.Distr == b.Distr &&
           std::ranges::equal(a.Grids, b.Grids, {}, &Grid::Store, &Grid::Store);
}

// False when the user cancels, or where the grids can't be known.
bool Ask(i16 parNo, const Source& source) {
    if (source.Distr)
        return ShowDistributions(*source.Distr, StepsOf(*source.Distr));
    return !source.Grids.empty() && ShowGrids(source.Grids, ParLabel(ParKind(parNo)));
}

// The parameters that derive from the same source as the one that was asked for: they would
// contradict each other if one of them were kept.
std::vector<i16> ParsOf(i16 parNo, const Source& source) {
    std::vector<i16> pars{parNo};
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != parNo && SelIsTablePar(i) && AreSame(SourceOf(i), source))
            pars.push_back(i);
    return pars;
}

// The value as its source gives it; empty if none follows from the figures.
std::string TextFromSource(i16 parNo) {
    const f32 value = SelCalcTablePar(parNo);
    if (f64{value} == NoValue || !std::isfinite(value))
        return "";
    const i16 kind = ParKind(parNo);
    return IsCountKind(kind) ? FormatPar(kind, f64{value})
                             : Format(DecimalOf(value), "#####0.0#####");
}

bool TakeFromSource(i16 parNo) {
    const std::string text = TextFromSource(parNo);
    if (!text.empty())
        ParText(ParKind(parNo)) = text;
    return !text.empty();
}

void TellOthers(const std::vector<i16>& pars, const char* source) {
    std::string labels;
    for (std::size_t i = 1; i < pars.size(); ++i)
        labels += (i > 1 ? ", " : "") + PlainLabel(pars[i]);
    if (!labels.empty())
        ThePlatform().ShowStatus("Taken from the same " + std::string(source) + ": " + labels +
                                 ".");
}

} // namespace

void GetFromTable(i16 parNo) {
    if (!SelIsTablePar(parNo))
        return;
    AnalysisStep before = BeforeStep(StepKind::Tables);
    ReadParValues();
    const Source source = SourceOf(parNo);
    if (!Ask(parNo, source)) {
        Cancelled = False;
        return;
    }
    std::vector<i16> derived;
    for (const i16 i : ParsOf(parNo, source))
        if (TakeFromSource(i))
            derived.push_back(i);
    if (derived.empty() || derived.front() != parNo)
        ShowMessage(PlainLabel(parNo) + " Can't Be Calculated from These Tables.");
    else
        TellOthers(derived, source.Distr ? "distribution" : "tables");
    if (source.Distr)
        HasDistrGraph = True;
    Calculated = False;
    MarkChanged();
    RememberStep(std::move(before));
    UpdateMenus();
    ThePlatform().RefreshChild();
}

std::string DistributionBehind(i16 parNo) {
    if (NoOfDistr() == 0 || !SelIsTablePar(parNo) || !SelTableDistr(parNo))
        return "";
    const DistrRow row = Distr(NoOfDistr());
    const DistrRow selected{SimDistrNo, ShiftPar1, ShiftPar2};
    SelectDistr(row);
    const bool isFromIt = TextFromSource(parNo) == ParText(ParKind(parNo));
    SelectDistr(selected);
    return isFromIt ? DistrText(row.Par1, row.Par2, row.Code) : "";
}

bool IsBluePar(i16 parNo) {
    return SelIsTablePar(parNo) || (HasGridData == True && IsGridKind(ParKind(parNo)));
}

} // namespace quorvanta
