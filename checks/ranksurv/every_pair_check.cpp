// Every parameter of the rank, survival and goodness-of-fit tests against the power, with every
// combination of their options: what is solved for a parameter, put back, gives the old power. The
// whole takes minutes; of it a tenth is drawn, evenly, unless QUORVANTA_STATISTICS=whole asks for
// all.
#include "core/catalogue.h"
#include "support/analysis_fixture.h"
#include "support/plans.h"
#include "support/properties.h"
#include "support/rank_survival.h"
#include "support/solutions.h"
#include "support/statistics.h"

#include <algorithm>
#include <cstddef>

namespace quorvanta::checks {
namespace {

TEST(EveryPair, OfRankSurvivalAndFitGivesTheOldPowerBack) {
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    const std::size_t step = WholeStatistics() ? 1 : 10;
    std::size_t next = 0;
    int solved = 0;
    for (const AnalysisChoice& analysis : ServedAnalyses())
        if (IsRankSurvivalOrFit(analysis.MenuNo))
            for (const AnalysisChoice& choice : AllChoices(analysis, FormsWalked::EachByItself))
                if (next++ % step == 0)
                    solved += ExpectRoundTrip(choice, PlanOf(choice));
    RecordProperty("solved", solved);
    EXPECT_GE(solved, static_cast<int>(20000 / step));
}

} // namespace
} // namespace quorvanta::checks
