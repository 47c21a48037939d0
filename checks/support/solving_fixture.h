// An analysis chosen from the menus, with values of its own, solved: its list, solution, message.
#pragma once

#include "core/kinds.h"
#include "support/analysis_fixture.h"
#include "support/properties.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::checks {

// A test of the menus with options of its groups and ticked check boxes.
inline AnalysisChoice MenuChoice(i16 menuNo, i16 samples, i16 tails, std::map<i16, i16> groups = {},
                                 std::vector<i16> ticked = {}) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = samples;
    choice.NoOfTails = tails;
    choice.Groups = std::move(groups);
    choice.Checks = std::move(ticked);
    return choice;
}

// The same test in the left tail.
inline AnalysisChoice LeftOf(AnalysisChoice choice) {
    choice.Left = true;
    return choice;
}

class SolvingFixture : public AnalysisFixture {
  protected:
    using Kinds = std::vector<i16>;

    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    static Kinds ListOf(const AnalysisChoice& choice) {
        Start(choice, {});
        Kinds kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        return kinds;
    }

    // The unrounded solution; 99999 if there is none.
    f64 SolutionOf(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        Start(choice, values);
        platform.Messages.clear();
        SolveFor(PositionOf(unknown));
        return HasValue(ParText(unknown)) ? ParValue(UnknownParNo) : NoValue;
    }
    f64 PowerOf(const AnalysisChoice& choice, const Values& values) {
        return SolutionOf(choice, values, Kind::Power);
    }
    // The message that the search for the unknown ends with.
    std::string MessageOf(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        EXPECT_EQ(SolutionOf(choice, values, unknown), NoValue);
        return platform.Messages.empty() ? "" : platform.Messages.back().Text;
    }
};

} // namespace quorvanta::checks
