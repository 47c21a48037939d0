// An open analysis whose values the user derives from input grids.
#pragma once

#include "core/dispatch.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "support/analysis_fixture.h"
#include "support/grid_filling.h"

#include <string>
#include <vector>

namespace quorvanta::checks {

using Rows = GridRowTexts;

class GridFixture : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    // The user opens the grids of the parameter and fills them so.
    void DeriveFrom(i16 kind, const std::vector<Rows>& grids) {
        platform.Messages.clear();
        asked.clear();
        for (const Rows& rows : grids)
            platform.GridFillings.emplace_back([this, rows] {
                asked.push_back(CurrentGrid());
                return FillCurrentGrid(rows);
            });
        GetFromTable(PositionOf(kind));
        platform.GridFillings.clear();
    }
    void Derive(i16 kind, const Rows& rows) { DeriveFrom(kind, {rows}); }

    // The first message that they bring; empty if there is none.
    std::string RefusalOf(i16 kind, const std::vector<Rows>& grids) {
        DeriveFrom(kind, grids);
        return platform.Messages.empty() ? "" : platform.Messages.front().Text;
    }
    std::string Refusal(i16 kind, const Rows& rows) { return RefusalOf(kind, {rows}); }

    // What the box of a kind shows.
    static f64 Value(i16 kind) { return ReadNumber(ParText(kind)); }

    std::vector<Grid> asked; // the grids that were asked for last
};

} // namespace quorvanta::checks
