// When the floating windows go.
#include "core/floating_windows.h"
#include "output/saving.h"
#include "support/analysis_fixture.h"

#include <set>

namespace quorvanta {
namespace {

using enum FloatingWindow;
using WindowSet = std::set<FloatingWindow>;

constexpr i16 unpairedTTest = 0;

class Floating : public checks::AnalysisFixture {
  protected:
    // All windows stand open, as far as they ever can.
    void ShowAll() {
        for (const FloatingRow& row : FloatingWindows())
            platform.Show(row.Window);
    }
};

TEST_F(Floating, AllGoWhenATestIsChosen) {
    NewWindow(CalculationWindow);
    ShowAll();
    NewTest(unpairedTTest);
    EXPECT_EQ(platform.Shown, WindowSet{Options});
}

TEST_F(Floating, ThoseOfAResultGoWithIt) {
    NewWindow(CalculationWindow);
    NewTest(unpairedTTest);
    AcceptOptions();
    ShowAll();
    SolveFor(4);
    EXPECT_EQ(platform.Shown,
              (WindowSet{Options, Parameters, InterimParameters, SequentialMonitor, Grid}));
}

TEST_F(Floating, ThoseOfAnAnalysisGoWhenAnotherBecomesCurrent) {
    NewWindow(CalculationWindow);
    NewTest(unpairedTTest);
    AcceptOptions();
    NewWindow(CalculationWindow);
    NewTest(unpairedTTest);
    AcceptOptions();
    ShowAll();
    ChildActivated(1);
    EXPECT_EQ(platform.Shown, WindowSet{});
}

// What shows grids shows those of the analysis that becomes current, if it has any.
TEST_F(Floating, GridsAreThoseOfTheCurrentAnalysis) {
    NewWindow(CalculationWindow);
    NewTest(unpairedTTest);
    AcceptOptions();
    NewWindow(CalculationWindow);
    Analysis(1).HasGridData = True;
    Analysis(1).GridTestNo = Analysis(1).TestNo;
    ShowAll();
    ChildActivated(1);
    EXPECT_EQ(platform.Shown, WindowSet{Grid});
}

TEST_F(Floating, ThoseOfAGroupSequentialDesignStayWithOne) {
    NewWindow(CalculationWindow);
    NewTest(unpairedTTest);
    AcceptOptions();
    NewWindow(CalculationWindow);
    Analysis(1).IsGroupSeq = True;
    ShowAll();
    ChildActivated(1);
    EXPECT_EQ(platform.Shown, (WindowSet{SequentialMonitor}));
}

TEST_F(Floating, ThoseOfAClosedWindowGo) {
    NewWindow(CalculationWindow);
    NewWindow(CalculationWindow);
    ShowAll();
    ChildClosed(1); // one behind
    EXPECT_EQ(platform.Shown.size(), FloatingWindows().size());
    NewWindow(CalculationWindow);
    ShowAll();
    CloseMode = CloseWithMain;
    ChildClosed(3);
    EXPECT_TRUE(platform.Shown.contains(Summary)) << "they go with the main window";
}

TEST_F(Floating, NoneStaysWhenTheLastWindowCloses) {
    NewWindow(CalculationWindow);
    ShowAll();
    ChildClosed(1);
    EXPECT_EQ(platform.Shown, WindowSet{});
}

TEST_F(Floating, MessagesNameTheWindowInFront) {
    NewWindow(GraphWindow);
    EXPECT_EQ(WindowKindName(), "Graph");
    platform.Show(Output);
    EXPECT_EQ(WindowKindName(), "Graph");
    platform.Show(DistrGraph);
    EXPECT_EQ(WindowKindName(), "Distribution Graph");
    platform.Show(Summary);
    EXPECT_EQ(WindowKindName(), "Summary");
}

} // namespace
} // namespace quorvanta
