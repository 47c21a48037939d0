// What an analysis can be, asked by its key.
#include "core/dispatch.h"
#include "core/records.h"
#include "support/analysis_fixture.h"

#include <span>

namespace quorvanta {
namespace {

class Keys : public checks::AnalysisFixture {
  protected:
    template <class Visit>
    static void EachEntry(std::span<const MenuItem> items, Visit visit) {
        for (const MenuItem& item : items) {
            if (item.Action == MenuAction::Test || item.Action == MenuAction::Distribution)
                visit(item);
            EachEntry(item.Children, visit);
        }
    }

    static bool IsSame(const AnalysisKey& a, const AnalysisKey& b) {
        return a.IsTest == b.IsTest && a.TestNo == b.TestNo && a.DistrNo == b.DistrNo &&
               a.ProcedureNo == b.ProcedureNo && a.ParListNo == b.ParListNo;
    }
};

// In a window of its kind: what is only simulated has one of its own.
TEST_F(Keys, AnEntryOpensItsOptionsWhereAModuleServesIt) {
    int served = 0;
    int refused = 0;
    EachEntry(MainMenu(), [&served, &refused](const MenuItem& item) {
        const bool isTest = item.Action == MenuAction::Test;
        const bool isSimulated = isTest && IsSimOnlyTest(item.TestNo);
        if (const i16 kind = isSimulated ? SimulationWindow : CalculationWindow;
            AnalysisNo == 0 || CurrentWindowKind() != kind)
            NewWindow(kind);
        AnalysisKey key = CurrentKey();
        const AnalysisKey former = key;
        key.IsTest = ToFlag(isTest);
        (isTest ? key.TestNo : key.DistrNo) = isTest ? item.TestNo : item.MenuNo;
        const bool isServed = IsServedIn(key, CurrentWindowKind());
        EXPECT_TRUE(IsSame(CurrentKey(), former)) << item.Caption;
        if (isTest)
            NewTest(item.MenuNo);
        else
            NewDistribution(item.MenuNo);
        EXPECT_EQ(ChoosingOptions, isServed) << item.Caption;
        EXPECT_TRUE(isServed || IsSame(CurrentKey(), former)) << item.Caption;
        CancelOptions();
        ++(isServed ? served : refused);
    });
    EXPECT_EQ(served, 150) << "142 tests and 8 distributions";
    EXPECT_EQ(refused, 0);
}

TEST_F(Keys, AnAnalysisWithoutAModuleHasNeitherEquationNorSimulation) {
    constexpr i16 none = 9999;
    EXPECT_FALSE(HasEquation({.IsTest = True, .TestNo = none}));
    EXPECT_FALSE(HasSimulation({.IsTest = True, .TestNo = none}));
    EXPECT_FALSE(HasEquation({.IsTest = False, .TestNo = 0, .DistrNo = none}));
}

} // namespace
} // namespace quorvanta
