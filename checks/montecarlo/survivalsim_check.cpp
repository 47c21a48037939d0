// Simulated survival studies: rates of rejection under H0 and H1 against those of another program
// (checks/reference/survivalsim.py), what no run may stumble over, and the same counts from a seed.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simulation.h"
#include "montecarlo/survivalsim.h"
#include "numeric/rnd.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/validation.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

using Menus = std::initializer_list<i16>;

class SurvivalSimulation : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        NewWindow(SimulationWindow);
    }

    static f64 Share(const Array1<i32>& counts) {
        return static_cast<f64>(counts(1)) / static_cast<f64>(SimNo);
    }

    // So many replicates of the current analysis, from a fixed seed.
    void RunStudies(int replicates) { Run(NumberText(replicates, 9), "7"); }

    // H0 is equality, in the lists that enter it as well.
    void OpenWithEqualHazards(i16 menuNo) {
        NewTest(menuNo);
        AcceptOptions();
        for (i16 i = 0; i <= NoOfPar; ++i)
            if (ParKind(i) == Kind::H0Rate2Minus1)
                TypedParText(i, "0");
    }

    // Types the size of both groups.
    void TypeSizes(const std::string& n1, const std::string& n2) {
        Type(Kind::Size1, n1);
        Type(Kind::Size2, n2);
    }
};

// The level, and the power, of every statistic in every model. A rate may be off by 3.29 standard
// errors of both runs: one check in a thousand fails, and the seed is one that does not.
TEST_F(SurvivalSimulation, HasTheRatesOfAnotherProgram) {
    const int replicates = WholeStatistics() ? 100000 : 1500;
    int rows = 0;
    for (const ValidationCase& row :
         ReadValidation(std::string(CHECK_DATA_DIR) + "/simulated/survival.tsv")) {
        ++rows;
        const bool isNull = row.UnknownKind == Kind::SignificanceLevel;
        if (isNull) {
            SetUpWithValues(row);
            RunStudies(replicates);
        }
        SCOPED_TRACE(Describe(row) + ", tails " + std::to_string(NoOfTails));
        ASSERT_EQ(SimNo, replicates) << LastMessage();
        const f64 p = row.Exact;
        const f64 own = 3.29 * std::sqrt(std::max(p * (1 - p), 1.0 / replicates) / replicates);
        EXPECT_NEAR(Share(isNull ? CountRejectH0 : CountRejectH1), p,
                    std::hypot(own, row.Tolerance));
    }
    EXPECT_EQ(rows, 108);
}

// Every test of survival that a simulation window offers is served there.
TEST_F(SurvivalSimulation, IsThereForEveryTestThatIsOffered) {
    for (const i16 first : Menus{150, 390, 402, 405, 420, 424, 430, 440, 450, 460, 804, 834}) {
        const i16 last = static_cast<i16>(first == 150 || first == 402  ? first + 2
                                          : first == 420                ? first + 3
                                          : first == 424 || first > 800 ? first
                                                                        : first + 4);
        for (i16 menuNo = first; menuNo <= last; ++menuNo)
            EXPECT_TRUE(HasSimulation({.IsTest = True, .TestNo = TestNoOfMenu(menuNo)})) << menuNo;
    }
}

// Three subjects in each group, of whom few have the event.
TEST_F(SurvivalSimulation, RunsWithAHandfulOfSubjects) {
    for (const i16 menuNo : Menus{402, 152, 390, 405, 430, 440, 450, 451, 460, 804}) {
        OpenWithEqualHazards(menuNo);
        TypeSizes("3", "3");
        RunStudies(200);
        EXPECT_EQ(SimNo, 200) << menuNo << LastMessage();
        EXPECT_EQ(OutputReady, True) << menuNo;
    }
}

// A study that ends before anything happens: nothing is rejected, and no fault.
TEST_F(SurvivalSimulation, AllCensoredRejectsNothing) {
    for (const i16 menuNo : Menus{402, 152, 390, 405, 430, 440, 450, 460, 804}) {
        OpenWithEqualHazards(menuNo);
        Type(Kind::H1Rate1, "0.00001");
        Type(Kind::H1Rate2, "0.00001");
        Type(Kind::AccrualTime, "0");
        Type(Kind::TotalStudyTime, "0.00001");
        RunStudies(50);
        EXPECT_EQ(SimNo, 50) << menuNo << LastMessage();
        EXPECT_EQ(CountRejectH0(1), 0) << menuNo;
        EXPECT_EQ(CountRejectH1(1), 0) << menuNo;
    }
}

// A null hypothesis with which group 2 has no hazard can't be drawn from.
TEST_F(SurvivalSimulation, RefusesANullHypothesisWithoutAHazard) {
    NewTest(402);
    AcceptOptions();
    Type(Kind::H1Rate1, "0.3");
    Type(Kind::H0Rate2Minus1, "-0.3");
    RunStudies(10);
    EXPECT_EQ(LastMessage(), "Hazard Rate 2 under H0 Must Be > 0.");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
}

TEST_F(SurvivalSimulation, AnEmptyGroupGivesOne) {
    OpenWithEqualHazards(402);
    RunStudies(1);
    EXPECT_EQ(SimSurvivalTest(0, 30), 1);
    EXPECT_EQ(SimSurvivalTest(30, 0), 1);
}

// Survival that is entered as medians has the longer one as the larger value.
TEST_F(SurvivalSimulation, LeftTailsAndMediansTurn) {
    NewTest(430);
    ChooseTails(OneSided);
    AcceptOptions();
    Type(Kind::H1Rate1, "0.3");
    Type(Kind::H1Rate2, "0.6");
    TypeSizes("60", "60");
    RunStudies(400);
    EXPECT_GT(CountRejectH1(1), 200);
    const i32 right = CountRejectH0(1);
    NewTest(430);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    AcceptOptions();
    TypeSizes("60", "60");
    RunStudies(400);
    EXPECT_LT(CountRejectH1(1), 5);
    EXPECT_NE(CountRejectH0(1), right);
}

// --- Strata --------------------------------------------------------------------------------------

class StrataSimulation : public SurvivalSimulation {
  protected:
    void Fill(i16 kind, const std::vector<GridRowTexts>& grids) {
        for (const GridRowTexts& rows : grids)
            platform.GridFillings.emplace_back([rows] { return FillCurrentGrid(rows); });
        GetFromTable(PositionOf(kind));
        platform.GridFillings.clear();
    }

    const GridRowTexts sizes{{"0.4", "1"}, {"0.6", "2"}};
    const GridRowTexts hazards{{"0.2", "0.35", "0.05", "0"}, {"0.5", "0.85", "0.1", "0.1"}};
};

TEST_F(StrataSimulation, AsksForTheStrata) {
    NewTest(424);
    AcceptOptions();
    Type(Kind::NoOfStrata, "2");
    RunStudies(10);
    EXPECT_EQ(LastMessage(), "Strata Have No Values.");
    EXPECT_EQ(OutputReady, False);
    NewTest(421);
    AcceptOptions();
    Type(Kind::NoOfStrata, "2");
    HasGridData = False;
    RunStudies(10);
    EXPECT_EQ(LastMessage(), "H1: Weighted Hazard 2-Hazard 1 Can't Be Calculated.");
}

// 150,000 studies of the same strata in numpy (checks/reference/survivalsim.py --strata): 0.0493
// and 0.8067, each to 0.002.
TEST_F(StrataSimulation, KeepsItsLevelAndHasItsPower) {
    const int replicates = WholeStatistics() ? 100000 : 4000;
    for (const i16 menuNo : Menus{424, 422}) {
        NewTest(menuNo);
        AcceptOptions();
        Type(Kind::NoOfStrata, "2");
        Type(Kind::AccrualRate, "0");
        Type(Kind::AccrualTime, "2");
        Type(Kind::TotalStudyTime, "5");
        Type(Kind::TotalSize, "160");
        Fill(menuNo == 424 ? Kind::NoOfStrata : Kind::WeightedLogHazardRatio, {sizes, hazards});
        RunStudies(replicates);
        ASSERT_EQ(SimNo, replicates) << LastMessage();
        EXPECT_EQ(SimSize1(1), 64);
        EXPECT_EQ(SimSize2(1), 96);
        const f64 error = 3.29 / std::sqrt(replicates);
        EXPECT_NEAR(Share(CountRejectH0), 0.0493, 0.217 * error + 0.002) << menuNo;
        EXPECT_NEAR(Share(CountRejectH1), 0.8067, 0.395 * error + 0.002) << menuNo;
    }
}

} // namespace
} // namespace quorvanta::checks
