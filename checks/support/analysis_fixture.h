// A started program with one open analysis, driven as a user would through the engine.
#pragma once

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/driver.h"
#include "core/general.h"
#include "core/menus.h"
#include "core/option_choice.h"
#include "core/records.h"
#include "core/run.h"
#include "core/search.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "support/scripted_platform.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvanta::checks {

class AnalysisFixture : public ::testing::Test {
  protected:
    void SetUp() override { Main(); }

    // Chooses a test, in a new Calculation window if none is open; its options stay open.
    void OpenTest(i16 menuNo) {
        OfferCalculationWindow();
        NewTest(menuNo);
    }

    // Chooses a distribution and what is asked about it.
    void OpenDistribution(i16 distrNo, i16 parListNo, i16 procedureNo) {
        OfferCalculationWindow();
        NewDistribution(distrNo);
        ChooseParList(parListNo);
        ChooseProcedure(procedureNo);
    }

    // Ticks the check box of a kind, or picks an option of a group, among those offered.
    void Tick(i16 checkKind, bool ticked = true) {
        for (i16 i = 0; i < NoOfCheck; ++i)
            if (CheckList(i) == checkKind)
                return ChooseCheck(i, ticked);
        FAIL() << "check box " << checkKind << " is not offered";
    }
    void Pick(i16 group, i16 option) {
        for (i16 i = 0; i < NoOfIntPar; ++i)
            if (IntParList(i) == group)
                return ChooseIntPar(i, option);
        FAIL() << "group " << group << " is not offered";
    }

    // The position of a kind in the parameter list; -1 if it has none.
    static i16 PositionOf(i16 kind) {
        for (i16 i = 0; i <= NoOfPar; ++i)
            if (ParKind(i) == kind)
                return i;
        return -1;
    }

    void Type(i16 kind, const std::string& text) {
        const i16 position = PositionOf(kind);
        ASSERT_GE(position, 0) << "kind " << kind << " is not in the list";
        TypedParText(position, text);
    }

    // Presses the label of a kind; the text that its box then shows.
    std::string Solve(i16 kind) {
        const i16 position = PositionOf(kind);
        if (position < 0)
            return "no such parameter";
        SolveFor(position);
        return ParText(kind);
    }

    ScriptedPlatform platform;

  private:
    void OfferCalculationWindow() {
        if (AnalysisNo == 0)
            platform.WindowKinds.push_back(CalculationWindow);
    }
};

} // namespace quorvanta::checks
