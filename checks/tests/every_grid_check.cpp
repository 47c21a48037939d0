// The tables and the distributions behind every value that derives from some, opened while another
// value is absurd: what can't be is told, and nothing fails.
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/grids.h"
#include "montecarlo/shiftmodel.h"
#include "support/simulation_fixture.h"

#include <span>
#include <vector>

namespace quorvanta::checks {
namespace {

class EveryGrid : public SimulationFixture {
  protected:
    void WalkTests(std::span<const MenuItem> items) {
        for (const MenuItem& item : items) {
            WalkTests(item.Children);
            if (item.Action != MenuAction::Test)
                continue;
            const AnalysisKey key{.IsTest = True, .TestNo = item.TestNo};
            if (HasEquation(key))
                WalkWindow(CalculationWindow, item.MenuNo);
            if (HasSimulation(key))
                WalkWindow(SimulationWindow, item.MenuNo);
        }
    }

    int Opened = 0;

  private:
    void WalkWindow(i16 windowKind, i16 menuNo) {
        SCOPED_TRACE("menu " + std::to_string(menuNo) + " in window " + std::to_string(windowKind));
        Main();
        NewWindow(windowKind);
        NewTest(menuNo);
        AcceptOptions();
        for (i16 blue = 0; blue <= NoOfPar; ++blue)
            if (SelIsTablePar(blue))
                OpenWithAbsurdValues(blue);
    }

    static bool TakeFirstDistribution() {
        ChooseShiftDistr(0);
        for (i16 field = 0; field < ShiftNoOfPar; ++field)
            ShiftParText(field) = "2";
        return AcceptShift() == ShiftRefused::Nothing;
    }

    void OpenWithAbsurdValues(i16 blue) {
        for (i16 other = 0; other <= NoOfPar; ++other)
            for (const char* absurd : {"", "0", "0.2", "-3", "50", "99999", "1e30"}) {
                const std::string kept = ParText(ParKind(other));
                TypedParText(other, absurd);
                ++Opened;
                platform.DistrChoices = {TakeFirstDistribution, TakeFirstDistribution};
                try {
                    GetFromTable(blue);
                } catch (const RunTimeError& error) {
                    ADD_FAILURE() << StripAmpersand(ParLabel(ParKind(other))) << " is \"" << absurd
                                  << "\": " << error.what();
                }
                TypedParText(other, kept);
            }
    }
};

TEST_F(EveryGrid, IsOpenedOrRefusedWhateverTheOtherValuesAre) {
    WalkTests(MainMenu());
    EXPECT_GT(Opened, 5000);
}

} // namespace
} // namespace quorvanta::checks
