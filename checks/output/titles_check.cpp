#include "core/kinds.h"
#include "core/run.h"
#include "core/showpar.h"
#include "output/titles.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 paired = 1;

class Titles : public AnalysisFixture {
  protected:
    void SetUp() override {
        Main();
        FileCommand(GraphWindow);
        NewTest(unpaired);
        Pick(Group::Mean2, 1);
        AcceptOptions();
        RunOrCancel();
    }
};

TEST_F(Titles, AGraphStartsWithItsTestAndItsParameters) {
    EXPECT_EQ(OutTitle(0), "Student's t-test, Unpaired, two-sided.");
    EXPECT_EQ(OutTitle.HighBound(), 0);
    EXPECT_EQ(OutXAxis(0), "H0: Mean 2 - Mean 1");
    EXPECT_EQ(OutYAxis(0), "Power");
    EXPECT_EQ(OutZLabel, "H1: Mean 2 - Mean 1");
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(OutXAxis(i), "Auto");
        EXPECT_EQ(OutYAxis(i), "Auto");
    }
}

TEST_F(Titles, EditedTextsStayWhileTheyStandForTheSame) {
    OutTitle(0) = "Figure 1";
    OutXAxis(0) = "Difference under H0";
    OutXAxis(1) = "-1";
    OutYAxis(2) = "1";
    OutZLabel.clear(); // blanked by the user
    TypedAxisText(AxisText::Xmax, "0.2");
    RunOrCancel();
    EXPECT_EQ(OutTitle(0), "Figure 1");
    EXPECT_EQ(OutXAxis(0), "Difference under H0");
    EXPECT_EQ(OutXAxis(1), "-1");
    EXPECT_EQ(OutYAxis(2), "1");
    EXPECT_EQ(OutZLabel, "");
}

TEST_F(Titles, AnotherParameterOnAnAxisTakesItsOwnLabelAndLimits) {
    OutTitle(0) = "Figure 1";
    OutXAxis(0) = "Difference under H0";
    OutXAxis(1) = "-1";
    OutYAxis(2) = "1";
    SwapAxis(XRole, 4);
    RunOrCancel();
    EXPECT_EQ(OutXAxis(0), "Standard Deviation");
    EXPECT_EQ(OutXAxis(1), "Auto");
    EXPECT_EQ(OutYAxis(2), "1");
    EXPECT_EQ(OutTitle(0), "Figure 1");
}

TEST_F(Titles, AnotherAnalysisTakesItsOwnTitle) {
    OutTitle.ReDim(0, 1);
    OutTitle(1) = "second line";
    NewTest(paired);
    AcceptOptions();
    RunOrCancel();
    EXPECT_EQ(OutTitle(0), "Student's t-test, Paired, two-sided.");
    EXPECT_EQ(OutTitle.HighBound(), 0);
}

TEST_F(Titles, AnotherWindowStartsWithItsOwn) {
    OutXAxis(0) = "Edited";
    OutCurveWidth = 9;
    FileCommand(TableWindow);
    NewTest(unpaired);
    Pick(Group::Mean2, 1);
    AcceptOptions();
    RunOrCancel();
    EXPECT_EQ(OutXAxis(0), "H0: Mean 2 - Mean 1");
    EXPECT_EQ(OutCurveWidth, 4);
    ChildActivated(1);
    EXPECT_EQ(OutXAxis(0), "Edited");
    EXPECT_EQ(OutCurveWidth, 9);
    RunOrCancel();
    EXPECT_EQ(OutXAxis(0), "Edited");
}

} // namespace
} // namespace quorvanta::checks
