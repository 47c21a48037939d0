#include "core/kinds.h"
#include "core/records.h"
#include "core/run.h"
#include "core/showpar.h"
#include "core/typed_text.h"
#include "support/analysis_fixture.h"

#include <set>

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 power = 1;
constexpr i16 sd = Kind::Sd;
constexpr i16 size1 = Kind::Size1;
constexpr i16 h1Difference = Kind::H1Mean2Minus1;

class ShowPar : public AnalysisFixture {
  protected:
    void SetUp() override {
        Main();
        OpenTable(TableWindow);
    }

    // Parameters: 0 level, 1 power, 2 H0, 3 H1, 4 standard deviation, 5 and 6 the sizes.
    void OpenTable(i16 windowKind) {
        FileCommand(windowKind);
        NewTest(unpaired);
        Pick(Group::Mean2, 1);
        AcceptOptions();
    }

    void ExpectPermutation() {
        std::set<i16> all;
        for (i16 i = 0; i <= NoOfPar; ++i)
            all.insert(ParBoxOrder(i));
        EXPECT_EQ(static_cast<i16>(all.size()), NoOfPar + 1);
        EXPECT_EQ(ParBoxOrder(YRole), UnknownParNo);
        EXPECT_EQ(ParBoxOrder(XRole), XParNo);
        EXPECT_EQ(ParBoxOrder(ZRole), ZParNo);
    }

    // What the user would see: role and boxes.
    std::vector<i16> Order() {
        std::vector<i16> order;
        for (i16 i = 0; i <= NoOfPar; ++i)
            order.push_back(ParBoxOrder(i));
        return order;
    }
};

TEST_F(ShowPar, TheRolesComeFirstAndTheOthersAscend) {
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Parameters));
    EXPECT_EQ(Order(), (std::vector<i16>{1, 2, 3, 0, 4, 5, 6}));
    EXPECT_EQ(FixedPar(0), 0);
    EXPECT_EQ(FixedPar(3), 6);
    EXPECT_EQ(FixedPar(4), -1);
    EXPECT_EQ(FixedPar(-1), -1);
}

TEST_F(ShowPar, ACalculationHasNone) {
    platform.Shown.clear();
    FileCommand(CalculationWindow);
    NewTest(unpaired);
    AcceptOptions();
    EXPECT_FALSE(platform.Shown.count(FloatingWindow::Parameters));
}

TEST_F(ShowPar, ChoosingAFixedParameterForAnAxisExchangesTheTwo) {
    SwapAxis(XRole, 4);
    EXPECT_EQ(Order(), (std::vector<i16>{1, 4, 3, 0, 2, 5, 6}));
    EXPECT_EQ(XParNo, 4);
    ExpectPermutation();
}

TEST_F(ShowPar, ChoosingYForXExchangesXAndY) {
    SwapAxis(XRole, 1);
    EXPECT_EQ(Order(), (std::vector<i16>{2, 1, 3, 0, 4, 5, 6}));
    EXPECT_EQ(UnknownParNo, 2);
    EXPECT_EQ(XParNo, 1);
    ExpectPermutation();
}

TEST_F(ShowPar, AnySequenceOfChoicesIsAPermutation) {
    for (int i = 0; i < 200; ++i) {
        SwapAxis(static_cast<i16>(i % 3), static_cast<i16>((i * 5 + i / 7) % (NoOfPar + 1)));
        ExpectPermutation();
    }
}

TEST_F(ShowPar, AChoiceMakesTheResultStale) {
    RunOrCancel();
    ASSERT_EQ(Calculated, True);
    AnalysisState(1).Changed = False;
    SwapAxis(XRole, XParNo);
    EXPECT_EQ(Calculated, True) << "the same parameter";
    EXPECT_EQ(AnalysisState(1).Changed, False);
    SwapAxis(XRole, 4);
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(GetInfoEnabled(3));
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(ShowPar, AnotherYTakesAutomaticDecimals) {
    OutDecimals = 3;
    SwapAxis(ZRole, 4);
    EXPECT_EQ(OutDecimals, 3);
    SwapAxis(YRole, 5);
    EXPECT_EQ(OutDecimals, -1);
    OutDecimals = 3;
    SwapAxis(XRole, 5); // y and x change places
    EXPECT_EQ(OutDecimals, -1);
}

TEST_F(ShowPar, TheTextsOfAnAxisAreThoseOfItsKind) {
    SwapAxis(XRole, PositionOf(h1Difference));
    SwapAxis(ZRole, PositionOf(alpha));
    EXPECT_EQ(AxisTextOf(AxisText::Xmin), "0.1");
    EXPECT_EQ(AxisTextOf(AxisText::Xmax), "0.5");
    EXPECT_EQ(AxisTextOf(AxisText::Xstep), "0.05");
    EXPECT_EQ(AxisTextOf(AxisText::ZValues), "0.001 0.05 0.1");
    TypedAxisText(AxisText::Xmin, "0,15");
    TypedAxisText(AxisText::ZValues, "0.01 0.02");
    EXPECT_EQ(ParXminText(h1Difference), "0,15");
    EXPECT_EQ(ParZValuesText(alpha), "0.01 0.02");
    SwapAxis(XRole, PositionOf(sd));
    EXPECT_EQ(AxisTextOf(AxisText::Xmin), "0.2");
    SwapAxis(XRole, PositionOf(h1Difference));
    EXPECT_EQ(AxisTextOf(AxisText::Xmin), "0,15");
}

TEST_F(ShowPar, AForbiddenCharacterIsToldAndTakenOut) {
    EXPECT_EQ(TypedAxisText(AxisText::Xstep, "0.1e"), "0.1");
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"e   Is Not Allowed. Must Be a Digit."});
    EXPECT_EQ(AxisTextOf(AxisText::Xstep), "0.1");
    EXPECT_EQ(platform.Beeps, 1);
}

TEST_F(ShowPar, AChangeLeavesTheTableAsDrawnUntilOk) {
    RunOrCancel();
    const auto drawn = TableY;
    const std::string label = OutXAxis(0);
    SwapAxis(XRole, 4);
    TypedAxisText(AxisText::Xmin, "0.3");
    Type(alpha, "0.01");
    EXPECT_EQ(TableY, drawn);
    EXPECT_EQ(OutXAxis(0), label);
    EXPECT_EQ(Calculated, False);
    RunOrCancel();
    EXPECT_NE(TableY, drawn);
    EXPECT_EQ(OutXAxis(0), "Standard Deviation");
}

// A statement of the former result, left on the screen, would find its way into a protocol.
TEST_F(ShowPar, ANewResultClosesTheSummaryOfTheFormerOne) {
    RunOrCancel();
    platform.Shown.insert(FloatingWindow::Summary);
    RunOrCancel();
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Summary)) << "nothing has changed";
    Type(sd, "2");
    RunOrCancel();
    EXPECT_EQ(Calculated, True);
    EXPECT_FALSE(platform.Shown.count(FloatingWindow::Summary));
}

TEST_F(ShowPar, AFailedRunLeavesTheTableAsDrawn) {
    RunOrCancel();
    const auto drawn = TableY;
    const std::string label = OutXAxis(0);
    SwapAxis(XRole, 4);
    TypedAxisText(AxisText::Xstep, "0");
    RunOrCancel();
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xstep Must Be # 0."});
    EXPECT_EQ(TableY, drawn);
    EXPECT_EQ(OutXAxis(0), label);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Cancelled, False);
}

TEST_F(ShowPar, ARefusedRunTellsWhereToMendIt) {
    SwapAxis(XRole, alpha);
    const auto expectAxis = [](AxisText where) {
        RunOrCancel();
        EXPECT_EQ(LastRefusal().Axis, where);
        EXPECT_EQ(LastRefusal().ParNo, -1);
    };
    TypedAxisText(AxisText::Xmin, "0.5");
    expectAxis(AxisText::Xmin); // not below Xmax
    TypedAxisText(AxisText::Xmin, "0");
    expectAxis(AxisText::Xmin); // below what a level may be
    TypedAxisText(AxisText::Xmin, "0.9");
    TypedAxisText(AxisText::Xmax, "1.2");
    expectAxis(AxisText::Xmax); // above what a level may be
    TypedAxisText(AxisText::Xstep, "0");
    expectAxis(AxisText::Xstep);
    TypedAxisText(AxisText::Xstep, "0.001");
    expectAxis(AxisText::Xstep); // too many steps
    TypedAxisText(AxisText::Xmax, "0.91");
    TypedAxisText(AxisText::ZValues, "");
    expectAxis(AxisText::ZValues);
    TypedAxisText(AxisText::ZValues, "0.5");
    Type(sd, "-1");
    RunOrCancel();
    EXPECT_EQ(LastRefusal().Axis, std::nullopt);
    EXPECT_EQ(LastRefusal().ParNo, PositionOf(sd));
    Type(sd, "1");
    RunOrCancel();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(LastRefusal().Axis, std::nullopt);
    EXPECT_EQ(LastRefusal().ParNo, -1);
}

TEST_F(ShowPar, CancelDuringARunLeavesTheFormerDrawing) {
    RunOrCancel();
    const auto drawnX = TableX;
    const auto drawn = TableY;
    Type(alpha, "0.01");
    platform.ClockStep = 10;
    platform.OnDoEvents = [this] {
        if (platform.ProgressSteps == 3)
            RunOrCancel(); // the same button, which says "Cancel" now
    };
    RunOrCancel();
    EXPECT_EQ(platform.ProgressSteps, 3);
    EXPECT_EQ(TableX, drawnX);
    EXPECT_EQ(TableY, drawn);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(Calculating, False);
    EXPECT_TRUE(platform.Messages.empty());
    platform.OnDoEvents = nullptr;
    RunOrCancel();
    EXPECT_EQ(Calculated, True);
    EXPECT_NE(TableY, drawn);
}

// A slow test need not come to the end of a point: each evaluation lets the button through.
TEST_F(ShowPar, CancelIsAnsweredBetweenTwoEvaluations) {
    platform.ClockStep = 10;
    int yieldsAtCancel = 0;
    platform.OnDoEvents = [&] {
        if (platform.ProgressSteps == 1 && yieldsAtCancel == 0 && platform.Yields > 1) {
            yieldsAtCancel = platform.Yields;
            Cancelled = True;
        }
    };
    RunOrCancel();
    EXPECT_GT(yieldsAtCancel, 0);
    EXPECT_LE(platform.Yields, yieldsAtCancel + 1) << "one more evaluation at most";
}

TEST_F(ShowPar, NothingChangesDuringARun) {
    const auto order = Order();
    platform.ClockStep = 10;
    platform.OnDoEvents = [&] {
        SwapAxis(XRole, 5);
        TypedAxisText(AxisText::Xmin, "7");
        EXPECT_EQ(Order(), order);
        EXPECT_NE(AxisTextOf(AxisText::Xmin), "7");
    };
    RunOrCancel();
    EXPECT_EQ(Calculated, True);
}

TEST_F(ShowPar, EachWindowKeepsItsOwnResult) {
    RunOrCancel();
    const auto x1 = TableX;
    const auto y1 = TableY;
    const f32 max1 = TableYMax;
    OpenTable(GraphWindow);
    EXPECT_TRUE(TableX.Raw().empty()) << "a new window has no result of another";
    SwapAxis(YRole, PositionOf(size1));
    RunOrCancel();
    const auto y2 = TableY;
    EXPECT_EQ(TableYKind, size1);
    ChildActivated(1);
    EXPECT_EQ(TableX, x1);
    EXPECT_EQ(TableY, y1);
    EXPECT_EQ(TableYMax, max1);
    EXPECT_EQ(GraphYMax, max1);
    EXPECT_EQ(TableYKind, power);
    EXPECT_EQ(Calculated, True);
    ChildActivated(2);
    EXPECT_EQ(TableY, y2);
    EXPECT_EQ(TableYKind, size1);
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Parameters));
}

TEST_F(ShowPar, AnotherTestInTheWindowDropsTheResult) {
    RunOrCancel();
    const auto y = TableY;
    NewTest(1);
    CancelOptions();
    EXPECT_EQ(TableY, y);
    EXPECT_EQ(Calculated, True);
    NewTest(1);
    AcceptOptions();
    EXPECT_TRUE(TableY.Raw().empty());
    EXPECT_EQ(Calculated, False);
}

TEST_F(ShowPar, AListOfTwoHasNoZ) {
    NoOfPar = 1;
    UnknownParNo = 1;
    XParNo = 0;
    ZParNo = 2;
    SetupShowPar();
    EXPECT_EQ(Order(), (std::vector<i16>{1, 0}));
    EXPECT_EQ(AxisTextOf(AxisText::ZValues), "");
    SwapAxis(XRole, 1);
    EXPECT_EQ(Order(), (std::vector<i16>{0, 1}));
    SwapAxis(ZRole, 1);
    EXPECT_EQ(Order(), (std::vector<i16>{0, 1}));
    EXPECT_EQ(TypedAxisText(AxisText::ZValues, "1"), "1");
    EXPECT_EQ(AxisTextOf(AxisText::ZValues), "");
}

TEST_F(ShowPar, ABlueParameterIsHintedAt) {
    EXPECT_EQ(ShowParHint(), "");
    HasGridData = True;
    ParKind(4) = 34; // a kind that comes from a grid
    EXPECT_EQ(ShowParHint(), "Double-click Blue Text to Calculate the Value from Table(s).");
    SwapAxis(XRole, 4);
    EXPECT_EQ(ShowParHint(), "Can't Be Calculated When H1: Standard Deviation of Means Is the X-, "
                             "Y-, or Z-axis.");
}

TEST_F(ShowPar, AHandMadeChangeOfAGridValueDropsTheGrid) {
    HasGridData = True;
    ParKind(4) = 34;
    TypedParText(FixedPar(1), "0.4");
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(ParText(Kind::SdOfMeans), "0.4");
}

} // namespace
} // namespace quorvanta::checks
