#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/driver.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/records.h"
#include "core/setup.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 paired = 1;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 size1 = Kind::Size1;
constexpr i16 sd = Kind::Sd;

class Analyses : public AnalysisFixture {
  protected:
    void OpenAnother(i16 menuNo) {
        FileCommand(CalculationWindow);
        NewTest(menuNo);
        AcceptOptions();
    }
};

TEST_F(Analyses, TheProgramStartsWithItsDefaults) {
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_EQ(Analysis.HighBound(), 0);
    EXPECT_EQ(NoOfSamples, 2);
    EXPECT_EQ(NoOfTails, 2);
    EXPECT_EQ(LeftTail, False);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_EQ(OutFontName, "Arial");
    EXPECT_EQ(OutFontSize, "9");
    EXPECT_EQ(OutFontBold, 1);
    EXPECT_EQ(OutCurveWidth, 4);
    EXPECT_EQ(CrLf, "\r\n");
    EXPECT_EQ(SimDistrNo, 1);
    EXPECT_EQ(SimDistrShape, 0.3F);
    EXPECT_EQ(SimDistrScale, 1.0F);
    EXPECT_EQ(SimAlpha(7), 0.05F);
    EXPECT_EQ(SimWeight(1), 1.0F);
    EXPECT_EQ(SimMaxValue, 99999999.0);
    for (int i = 0; i <= 4; ++i)
        EXPECT_FALSE(GetInfoEnabled(i));
}

TEST_F(Analyses, AFreshGridStoreHoldsTheMarkOfAnEmptyGrid) {
    EXPECT_EQ(GridData(1)(1, 1), 99999.0F);
    EXPECT_EQ(GridData(3)(1, 1), 1.0F);
    EXPECT_EQ(GridData(7)(1, 1), 1.0F);
    EXPECT_EQ(GridData(9)(1, 1), 99999.0F);
    EXPECT_EQ(GridTexts(1, 1), "");
    EXPECT_EQ(GridData(1).HighBound1(), 1);
}

TEST_F(Analyses, AValueIsRememberedByKind) {
    OpenAnother(unpaired);
    Type(alpha, "0.01");
    OpenAnother(paired);
    EXPECT_EQ(ParText(alpha), "0.01");
}

TEST_F(Analyses, WindowsAreNumberedAndCascaded) {
    FileCommand(CalculationWindow);
    EXPECT_EQ(CascadeLeft, 0);
    EXPECT_EQ(CascadeTop, 0);
    FileCommand(CalculationWindow);
    EXPECT_EQ(CascadeLeft, 150);
    EXPECT_EQ(CascadeTop, 350);
    EXPECT_EQ(platform.Children, (std::vector<std::string>{"Calculation 1", "Calculation 2"}));
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(CalcNo, 2);
    EXPECT_EQ(AnalysisFileName, "Calculation 2");
}

TEST_F(Analyses, ASwitchBringsEveryChoiceBack) {
    FileCommand(CalculationWindow);
    NewTest(unpaired);
    Tick(Check::Satterthwaite);
    Pick(Group::Mean2, 1);
    Pick(Group::Sd2, 2);
    Pick(Group::Size2, 1);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    AcceptOptions();
    Type(Kind::Power, "0.9");
    Type(Kind::H1Mean2Minus1, "-0.7");
    Type(Kind::Sd1, "1,5");
    SolveFor(PositionOf(size1));
    StoreAnalysis();
    const AnalysisRecord before = Analysis(AnalysisNo);
    const std::string result = ParText(size1);

    OpenAnother(paired);
    Type(alpha, "0.2");
    EXPECT_EQ(NoOfSamples, 1);
    ChildActivated(1);

    EXPECT_EQ(TestNo, 0);
    EXPECT_EQ(NoOfSamples, 2);
    EXPECT_EQ(NoOfTails, OneSided);
    EXPECT_EQ(LeftTail, True);
    EXPECT_TRUE(Ticked(16));
    EXPECT_EQ(ChosenOption(29), 2);
    EXPECT_EQ(ParText(Kind::H1Mean2Minus1), "-0.7");
    EXPECT_EQ(ParText(Kind::Sd1), "1,5");
    EXPECT_EQ(ParText(size1), result);
    EXPECT_EQ(ParText(alpha), "0.05");
    EXPECT_EQ(Calculated, True);
    StoreAnalysis();
    EXPECT_EQ(Analysis(1), before);
}

TEST_F(Analyses, AStaleResultStaysStaleAfterASwitch) {
    OpenAnother(unpaired);
    SolveFor(PositionOf(size1));
    Type(sd, "0.9");
    OpenAnother(paired);
    ChildActivated(1);
    EXPECT_EQ(Calculated, False);
    EXPECT_FALSE(GetInfoEnabled(3));
}

TEST_F(Analyses, AnAnalysisWithoutAResultHasNoneAfterASwitch) {
    OpenAnother(unpaired);
    Type(sd, "0");
    SolveFor(PositionOf(size1));
    EXPECT_EQ(ParText(size1), "-");
    OpenAnother(paired);
    ChildActivated(1);
    EXPECT_EQ(ParText(size1), "-");
    EXPECT_EQ(Calculated, False);
}

TEST_F(Analyses, AWindowWithoutATestStaysEmptyAfterASwitch) {
    FileCommand(CalculationWindow);
    OpenAnother(unpaired);
    ChildActivated(1);
    EXPECT_EQ(NoOfPar, 0);
    EXPECT_TRUE(TestName.empty());
    ChildActivated(2);
    EXPECT_EQ(NoOfPar, 7);
}

TEST_F(Analyses, NothingIsSwitchedDuringARun) {
    OpenAnother(unpaired);
    OpenAnother(paired);
    Calculating = True;
    ChildActivated(1);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(TestNo, 1);
}

TEST_F(Analyses, ClosingDuringARunIsRefusedWithoutAMessage) {
    OpenAnother(unpaired);
    Calculating = True;
    platform.Messages.clear();
    EXPECT_FALSE(QueryCloseChild(1, CloseByUser));
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Analyses, AnUnchangedAnalysisClosesWithoutAQuestion) {
    FileCommand(CalculationWindow);
    EXPECT_TRUE(QueryCloseChild(1, CloseByUser));
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Analyses, AChangedAnalysisAsks) {
    OpenAnother(unpaired);
    Type(sd, "2");
    platform.Messages.clear();
    platform.Answers = {Answer::Cancel, Answer::No};
    EXPECT_FALSE(QueryCloseChild(1, CloseByUser));
    EXPECT_TRUE(QueryCloseChild(1, CloseByUser));
    ASSERT_EQ(platform.Messages.size(), 2U);
    EXPECT_EQ(platform.Messages[0].Text, "Calculation 1 Has Been Changed.\r\n\r\nSave Analysis?");
    EXPECT_EQ(platform.Messages[0].ShownButtons, Buttons::YesNoCancel);
    EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
}

TEST_F(Analyses, ClosingTheLastWindowStartsOver) {
    OpenAnother(unpaired);
    OpenAnother(paired);
    CloseMode = CloseByUser;
    ChildClosed(2);
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(TestNo, 0);
    EXPECT_TRUE(AnyOpenAnalysis());
    ChildClosed(1);
    EXPECT_FALSE(AnyOpenAnalysis());
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_EQ(Analysis.HighBound(), 0);
    EXPECT_EQ(AnalysisState.HighBound(), 0);
    for (int i = 0; i <= 4; ++i)
        EXPECT_FALSE(GetInfoEnabled(i));
    FileCommand(CalculationWindow);
    EXPECT_EQ(AnalysisFileName, "Calculation 1");
    EXPECT_EQ(AnalysisNo, 1);
}

TEST_F(Analyses, ClosingAnotherWindowLeavesTheCurrentOne) {
    OpenAnother(unpaired);
    OpenAnother(paired);
    CloseMode = CloseByUser;
    ChildClosed(1);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(TestNo, 1);
    ChildActivated(1);
    EXPECT_EQ(AnalysisNo, 2) << "a closed record never becomes current";
}

TEST_F(Analyses, EachWindowKeepsItsOwnTable) {
    OpenAnother(unpaired);
    Analysis(1).WindowKind = TableWindow;
    TableX.ReDim(1, 2);
    TableX(2) = 3;
    TableYMax = 5;
    TableYMin = 4;
    Calculated = True;
    OpenAnother(paired);
    TableX.ReDim(1, 1);
    ChildActivated(1);
    ASSERT_EQ(TableX.HighBound(), 2);
    EXPECT_EQ(TableX(2), 3.0F);
    EXPECT_EQ(TableYMax, 5.0F);
    EXPECT_EQ(GraphYMin, 4.0F);
    EXPECT_EQ(Calculated, True);
}

TEST_F(Analyses, GridDataComeBackWithTheirBounds) {
    OpenAnother(unpaired);
    HasGridData = True;
    GridTestNo = TestNo;
    NoOfGrids = 1;
    GridRows(1) = 3;
    GridCols(1) = 2;
    GridKind(1) = 4;
    GridData(4).ReDim(0, 3, 0, 2);
    GridData(4)(3, 2) = 0.25F;
    OpenAnother(paired);
    EXPECT_EQ(HasGridData, False);
    ChildActivated(1);
    EXPECT_EQ(HasGridData, True);
    ASSERT_EQ(GridData(4).HighBound1(), 3);
    ASSERT_EQ(GridData(4).HighBound2(), 2);
    EXPECT_EQ(GridData(4)(3, 2), 0.25F);
}

// --- Parameter indices ------------------------------------------------------------------------

class ParNos : public AnalysisFixture {
  protected:
    static void Fix(i16 last, i16 unknown, i16 x, i16 z) {
        NoOfPar = last;
        UnknownParNo = unknown;
        XParNo = x;
        ZParNo = z;
        FixParNos();
    }
};

TEST_F(ParNos, IndicesInPlaceStay) {
    Fix(6, 1, 2, 0);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 0);
}

TEST_F(ParNos, IndicesBeyondAShorterListMoveDown) {
    Fix(4, 6, 5, 4);
    EXPECT_EQ(UnknownParNo, 3);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 4);
}

TEST_F(ParNos, AnIndexWithoutPlaceBelowTakesTheLowestFreeOne) {
    Fix(5, 0, 0, 1);
    EXPECT_EQ(UnknownParNo, 2);
    EXPECT_EQ(XParNo, 0);
    EXPECT_EQ(ZParNo, 1);
}

TEST_F(ParNos, AListOfThreeFillsAllRoles) {
    Fix(2, 1, 2, 3);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_TRUE(HasZPar());
}

TEST_F(ParNos, AListOfTwoHasNoZ) {
    Fix(1, 1, 2, 3);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 0);
    EXPECT_EQ(ZParNo, 2);
    EXPECT_FALSE(HasZPar());
}

} // namespace
} // namespace quorvanta::checks
