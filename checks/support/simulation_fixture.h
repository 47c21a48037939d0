// An analysis in a simulation window, and its runs.
#pragma once

#include "core/kinds.h"
#include "montecarlo/simulation.h"
#include "support/analysis_fixture.h"

#include <initializer_list>
#include <string>

namespace quorvanta::checks {

class SimulationFixture : public AnalysisFixture {
  protected:
    // Opens a test of the menus in a new simulation window and accepts its options.
    void OpenSimulation(i16 menuNo) {
        NewWindow(SimulationWindow);
        NewTest(menuNo);
        AcceptOptions();
        platform.Messages.clear();
    }

    // A run with a maximum and a seed; without a maximum the user ends it at replicate last.
    void Run(const std::string& most, const std::string& seed, i32 last = 0) {
        MaxNoOfSimText = most;
        SeedText = seed;
        platform.Messages.clear();
        const auto users = platform.OnDoEvents;
        if (last > 0)
            platform.OnDoEvents = [users, last] {
                if (users)
                    users();
                if (SimNo == last)
                    SimStop();
            };
        SimStart();
        platform.OnDoEvents = users;
    }

    std::string LastMessage() const {
        return platform.Messages.empty() ? "" : platform.Messages.back().Text;
    }

    static std::string Estimates() {
        return SignEstimateText(0) + "|" + PowerEstimateText(0) + "|" + PrAcceptEstimateText(0);
    }

    // An array from 0.
    template <class Cell>
    static Array1<Cell> CellsOf(std::initializer_list<Cell> values) {
        Array1<Cell> cells(0, static_cast<int>(values.size()) - 1);
        std::copy(values.begin(), values.end(), cells.Raw().begin());
        return cells;
    }
};

} // namespace quorvanta::checks
