// The rank tests: their lists, messages, edges, and the values that derive from a distribution or
// from proportions of categories.
//
// Figures of other origin come from scipy, as checks/reference/rank.py forms them.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/last_step.h"
#include "core/step_back.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/randdist.h"
#include "output/statement.h"
#include "ranksurv/testmw.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/solving_fixture.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuContinuous = 300;
constexpr i16 menuOrdered = 301;
constexpr i16 menuSavage = 350;
constexpr i16 menuSignedRank = 360;
constexpr i16 menuSign = 370;

// What the approximations of the normal distribution may be away from a power.
constexpr f64 normalError = 3e-4;

AnalysisChoice Menu(i16 menuNo, i16 tails, std::map<i16, i16> groups = {},
                    std::vector<i16> checks = {}) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = menuNo >= menuSignedRank ? OneSample : TwoSamples;
    choice.NoOfTails = tails;
    choice.Groups = std::move(groups);
    choice.Checks = std::move(checks);
    return choice;
}

class RankTest : public SolvingFixture {
  protected:
    // The user names a distribution in the dialog of the next blue parameter.
    void PlanDistr(i16 code, const std::string& par1, const std::string& par2) {
        platform.DistrChoices.emplace_back([=] {
            for (i16 i = 0; i <= static_cast<i16>(ShiftList.HighBound()); ++i)
                if (ShiftList(i) == code)
                    ChooseShiftDistr(i);
            ShiftParText(0) = par1;
            ShiftParText(1) = par2;
            return AcceptShift() == ShiftRefused::Nothing;
        });
    }

    // The user fills the grid of the control group.
    void PlanControl(const std::vector<std::string>& proportions) {
        platform.GridFillings.emplace_back(
            [proportions] { return FillCurrentGrid({proportions}); });
    }

    static f64 Value(i16 kind) { return ParseNumber(ParText(kind)); }
};

// --- Parameter lists -----------------------------------------------------------------------------

TEST_F(RankTest, Lists) {
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 37}, {1, 38}, {2, 5}}) {
        EXPECT_EQ(ListOf(Menu(menuContinuous, 1, {{2, option}})), (Kinds{0, 1, 152, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuContinuous, 2, {{2, option}})), (Kinds{0, 1, 152, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuContinuous, 3, {{2, option}})),
                  (Kinds{0, 1, 47, 48, 152, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuOrdered, 2, {{26, 0}, {2, option}})),
                  (Kinds{0, 1, 200, 202, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuOrdered, 1, {{26, 1}, {2, option}})),
                  (Kinds{0, 1, 200, 201, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuSavage, 2, {{16, 0}, {2, option}})),
                  (Kinds{0, 1, 26, 141, 4, kind}));
        EXPECT_EQ(ListOf(Menu(menuSavage, 1, {{16, 1}, {2, option}})), (Kinds{0, 1, 128, 4, kind}));
    }
    EXPECT_EQ(ListOf(Menu(menuSignedRank, 2)), (Kinds{0, 1, 153, 154, 85}));
    EXPECT_EQ(ListOf(Menu(menuSign, 1)), (Kinds{0, 1, 153, 85}));
}

TEST_F(RankTest, Options) {
    NewTest(menuContinuous);
    EXPECT_EQ(NoOfCheck, 0);
    EXPECT_TRUE(TailsOffered(TwoOneSided));
    EXPECT_FALSE(SamplesOffered(OneSample));
    CancelOptions();
    for (const i16 menu : {menuOrdered, menuSavage, menuSignedRank, menuSign}) {
        NewTest(menu);
        EXPECT_FALSE(TailsOffered(TwoOneSided)) << menu;
        const bool corrects = menu == menuSignedRank || menu == menuSign;
        EXPECT_EQ(NoOfCheck, corrects ? 1 : 0) << menu;
        EXPECT_TRUE(!corrects || CheckList(0) == Check::Correction) << menu;
        EXPECT_EQ(SamplesOffered(TwoSamples), !corrects) << menu;
        CancelOptions();
    }
}

// --- Messages ------------------------------------------------------------------------------------

TEST_F(RankTest, SecondSizesAreInTheirRange) {
    for (const i16 menu : {menuContinuous, menuOrdered, menuSavage})
        EXPECT_EQ(MessageOf(Menu(menu, 2, {{2, 1}}),
                            {{Kind::Size1, "30"}, {Kind::Size2Minus1, "-28"}}, Kind::Power),
                  "Sample Size 2 - Sample Size 1 Has To Be Greater Than or Equal to -27.");
}

TEST_F(RankTest, LimitsOfAnEquivalenceAreInOrder) {
    EXPECT_EQ(MessageOf(Menu(menuContinuous, 3),
                        {{Kind::ProportionLeftLimit, "0.7"}, {Kind::ProportionRightLimit, "0.6"}},
                        Kind::Power),
              "H0: Left Equivalence Limit Has To Be Less Than or Equal to 0.6.");
}

// There is no equation for them.
TEST_F(RankTest, RelativesAreSimulationsOnly) {
    for (const i16 menu : std::initializer_list<i16>{310, 311, 312, 330, 331, 332, 333, 334}) {
        EXPECT_TRUE(IsSimOnly(menu, CalculationWindow)) << menu;
        EXPECT_FALSE(HasEquation({.IsTest = True, .TestNo = TestNoOfMenu(menu)})) << menu;
    }
    for (const i16 menu : {menuContinuous, menuOrdered, menuSavage, menuSignedRank, menuSign})
        EXPECT_FALSE(IsSimOnly(menu, CalculationWindow)) << menu;
    EXPECT_FALSE(HasSimWindow(menuOrdered));
}

// --- Edges ---------------------------------------------------------------------------------------

TEST_F(RankTest, NoEffectHasTheLevelAsItsPower) {
    for (const char* level : {"0.01", "0.05", "0.2"}) {
        const Values values{{0, level},
                            {Kind::H1ProbabilityOfOrder, "0.5"},
                            {Kind::H1ProbabilityAbove0, "0.5"},
                            {Kind::H1ProbabilityOfSumAbove0, "0.5"},
                            {Kind::H1OddsRatio, "1"},
                            {Kind::SumOfCubedProportions, "0.1"},
                            {Kind::H1Scale1, "0.4"},
                            {Kind::H1Scale2, "0.4"},
                            {Kind::Size1, "30"},
                            {Kind::Size2, "40"},
                            {Kind::Size, "40"}};
        for (const i16 tails : {OneSided, TwoSided})
            for (const i16 menu : {menuContinuous, menuOrdered, menuSavage, menuSignedRank})
                for (const bool left : {false, true}) {
                    AnalysisChoice choice = Menu(menu, tails);
                    choice.Left = left && tails == OneSided;
                    EXPECT_NEAR(PowerOf(choice, values), ParseNumber(level), normalError)
                        << menu << " " << tails;
                }
    }
}

// Exchanging the groups and turning the tail changes nothing.
TEST_F(RankTest, MirrorImages) {
    const Values right{{Kind::SignificanceLevel, "0.05"},
                       {Kind::H1ProbabilityOfOrder, "0.65"},
                       {Kind::H1ProbabilityAbove0, "0.7"},
                       {Kind::H1ProbabilityOfSumAbove0, "0.72"},
                       {Kind::H1OddsRatio, "1.8"},
                       {Kind::NoOfCategories, "4"},
                       {Kind::H1Scale1, "0.4"},
                       {Kind::H1Scale2, "0.7"},
                       {Kind::Size1, "30"},
                       {Kind::Size2, "45"},
                       {Kind::Size, "40"}};
    const Values left{{Kind::SignificanceLevel, "0.05"},
                      {Kind::H1ProbabilityOfOrder, "0.35"},
                      {Kind::H1ProbabilityAbove0, "0.3"},
                      {Kind::H1ProbabilityOfSumAbove0, "0.28"},
                      {Kind::H1OddsRatio, "0.555555555"},
                      {Kind::NoOfCategories, "4"},
                      {Kind::H1Scale1, "0.7"},
                      {Kind::H1Scale2, "0.4"},
                      {Kind::Size1, "45"},
                      {Kind::Size2, "30"},
                      {Kind::Size, "40"}};
    for (const AnalysisChoice& choice :
         {Menu(menuContinuous, 1), Menu(menuOrdered, 1, {{26, 1}}), Menu(menuSavage, 1, {{16, 0}}),
          Menu(menuSignedRank, 1), Menu(menuSignedRank, 1, {}, {1}), Menu(menuSign, 1)})
        EXPECT_NEAR(PowerOf(choice, right), PowerOf(LeftOf(choice), left), 2e-6) << choice.MenuNo;
}

// With two one-sided tests the middle of the limits has the highest power.
TEST_F(RankTest, EquivalenceIsSymmetric) {
    const auto power = [this](const char* p) {
        return PowerOf(Menu(menuContinuous, 3, {{2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                           {Kind::ProportionLeftLimit, "0.3"},
                                                           {Kind::ProportionRightLimit, "0.7"},
                                                           {152, p},
                                                           {Kind::Size1, "50"},
                                                           {Kind::Size2, "50"}});
    };
    EXPECT_NEAR(power("0.45"), power("0.55"), 1e-6);
    EXPECT_GT(power("0.5"), power("0.52"));
}

// A ratio of the sizes that gives no whole number is kept as it is: 12.5 lies between 12 and 13.
TEST_F(RankTest, ABrokenSecondSizeCounts) {
    const auto power = [this](i16 option, i16 kind, const char* text) {
        return PowerOf(Menu(menuContinuous, 2, {{2, option}}), {{Kind::SignificanceLevel, "0.05"},
                                                                {Kind::H1ProbabilityOfOrder, "0.7"},
                                                                {Kind::Size1, "25"},
                                                                {kind, text}});
    };
    const f64 broken = power(2, 5, "0.5");
    EXPECT_GT(broken, power(0, 37, "12") + 1e-3);
    EXPECT_LT(broken, power(0, 37, "13") - 1e-3);
    EXPECT_NEAR(power(1, 38, "-12"), power(0, 37, "13"), 1e-6);
}

// With so many subjects and an even probability of 0.5 the exact test is below its level, the
// normal form at it.
TEST_F(RankTest, TheSignTestIsExactUpTo1000Subjects) {
    const auto power = [this](const char* n, std::vector<i16> checks = {}) {
        return PowerOf(
            Menu(menuSign, 1, {}, std::move(checks)),
            {{Kind::SignificanceLevel, "0.05"}, {Kind::H1ProbabilityAbove0, "0.5"}, {85, n}});
    };
    // binom.sf(526, 1000, 0.5), and the normal form without and with the correction (scipy).
    EXPECT_NEAR(power("1000"), 0.0468436, 2e-5);
    EXPECT_NEAR(power("1000", {Check::Correction}), 0.0468436, 2e-5) << "nothing to correct";
    EXPECT_NEAR(power("1001"), 0.05, normalError);
    EXPECT_NEAR(power("1001", {Check::Correction}), 0.0468, normalError);
    EXPECT_NEAR(power("1000.5"), (power("1000") + power("1001")) / 2, 1e-5);
}

TEST_F(RankTest, TheStatementSaysWhereTheSignTestIsNotExact) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H1ProbabilityAbove0, "0.55"},
                        {Kind::Size, "1001"}};
    PowerOf(Menu(menuSign, 2), values);
    EXPECT_NE(SumStatement().find(" With more than 1000 subjects, the power is that of the normal "
                                  "approximation, not of the exact test."),
              std::string::npos)
        << SumStatement();
    EXPECT_EQ(HeadlineNote(), "More than 1000: normal approximation, not exact.");
    Type(Kind::Size, "1000");
    Solve(Kind::Power);
    EXPECT_EQ(HeadlineNote(), "");
}

// A sum of cubes of nearly 1 leaves next to no information: the power stays near the level.
TEST_F(RankTest, ASumOfCubesAtItsEdgeHasNoPower) {
    const f64 power =
        PowerOf(Menu(menuOrdered, 1, {{26, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                  {Kind::H1OddsRatio, "3"},
                                                  {Kind::SumOfCubedProportions, "0.99999"},
                                                  {Kind::Size1, "50"},
                                                  {Kind::Size2, "50"}});
    EXPECT_NEAR(power, 0.05, 0.01);
}

// One of the two probabilities of the signed ranks can make up for the other.
TEST_F(RankTest, SignedRanksAreSoughtWhereTheStatisticIsAboveItsMean) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.07"},
                        {Kind::H1ProbabilityOfSumAbove0, "0.48"},
                        {Kind::Size, "20"}};
    const f64 p1 = SolutionOf(Menu(menuSignedRank, 1), values, Kind::H1ProbabilityAbove0);
    ASSERT_NE(p1, NoValue);
    EXPECT_GT(p1, 0.5 + 19 * 0.02 / 2);
    // Where even a probability of 1 can't, there is no solution.
    EXPECT_EQ(
        MessageOf(
            Menu(menuSignedRank, 1),
            {{Kind::Power, "0.8"}, {Kind::H1ProbabilityOfSumAbove0, "0.3"}, {Kind::Size, "60"}},
            Kind::H1ProbabilityAbove0),
        "Can't Be Calculated. Please Check if TickBox 'Reject in Left Tail' Should Be "
        "Ticked.");
}

// --- Ordered categories --------------------------------------------------------------------------

TEST_F(RankTest, SumOfCubes) {
    // Without effect that of the control group; with c equal categories 1/c^2.
    EXPECT_NEAR(OrdCubeSum(1, 20, 70, {0.2F, 0.5F, 0.2F, 0.1F}), 0.142, 1e-6);
    for (const int c : {2, 3, 5, 10})
        EXPECT_NEAR(
            OrdCubeSum(1, 30, 30,
                       std::vector<f32>(static_cast<std::size_t>(c), static_cast<f32>(1.0 / c))),
            1.0 / (c * c), 1e-6);
    // Whitehead (1993): the average proportions are 0.289, 0.486, 0.153 and 0.071.
    EXPECT_NEAR(OrdCubeSum(std::exp(0.887F), 1, 1, {0.2F, 0.5F, 0.2F, 0.1F}),
                std::pow(0.289, 3) + std::pow(0.486, 3) + std::pow(0.153, 3) + std::pow(0.071, 3),
                1e-3);
    // The groups exchanged: the odds of the other one the other way round.
    const std::vector<f32> control{0.4F, 0.3F, 0.3F};
    const f64 q1 = 0.4 * 3 / (0.4 * 3 + 0.6);
    const f64 q2 = 0.7 * 3 / (0.7 * 3 + 0.3);
    const std::vector<f32> other{static_cast<f32>(q1), static_cast<f32>(q2 - q1),
                                 static_cast<f32>(1 - q2)};
    EXPECT_NEAR(OrdCubeSum(3, 20, 50, control), OrdCubeSum(1.0F / 3, 50, 20, other), 1e-6);
    // A category that nobody is in.
    EXPECT_NEAR(OrdCubeSum(3, 20, 50, {0, 0.4F, 0.3F, 0, 0.3F, 0}), OrdCubeSum(3, 20, 50, control),
                1e-6);
}

TEST_F(RankTest, EqualCategoriesAreASumOfCubes) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H1OddsRatio, "2"},
                        {Kind::NoOfCategories, "5"},
                        {Kind::SumOfCubedProportions, "0.04"},
                        {Kind::Size1, "50"},
                        {Kind::Size2, "60"}};
    EXPECT_NEAR(PowerOf(Menu(menuOrdered, 2, {{26, 0}}), values),
                PowerOf(Menu(menuOrdered, 2, {{26, 1}}), values), 1e-6);
}

TEST_F(RankTest, TheControlGroupGivesTheSumOfCubes) {
    Start(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                    {Kind::H1OddsRatio, "2.4278"},
                                                    {Kind::SumOfCubedProportions, "0.1"},
                                                    {Kind::Size1, "94"},
                                                    {Kind::Size2, "94"}});
    const i16 average = PositionOf(Kind::SumOfCubedProportions);
    EXPECT_TRUE(IsBluePar(average));
    EXPECT_FALSE(IsBluePar(PositionOf(Kind::H1OddsRatio)));
    platform.GridFillings.emplace_back([] {
        EXPECT_EQ(CurrentGrid().Title, "Proportion in Category");
        EXPECT_EQ(GridHeadOf(CurrentGrid().RowHeads, 1, 1), "Control Group");
        EXPECT_EQ(GridHeadOf(CurrentGrid().ColumnHeads, 10, 10), "Category 10");
        EXPECT_EQ(GridText(1, 10), "0");
        const char* proportions[] = {"0.2", "0.5", "0.2", "0.1"};
        for (i16 i = 0; i < 4; ++i)
            GridOK(1, static_cast<i16>(i + 1), proportions[i], Leaving::Nothing);
        EXPECT_EQ(RowSumText(1), "Sum: 1");
        return !AcceptGrid().has_value();
    });
    GetFromTable(average);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_NEAR(Value(Kind::SumOfCubedProportions), 0.142945, 2e-6); // rank.py
    EXPECT_NEAR(ParseNumber(Solve(Kind::Power)), 0.90, 2e-3);        // Whitehead (1993)
}

TEST_F(RankTest, TheSumOfCubesFollowsTheOddsRatio) {
    Start(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                    {Kind::Power, "0.8"},
                                                    {Kind::H1OddsRatio, "1"},
                                                    {Kind::SumOfCubedProportions, "0.3"},
                                                    {Kind::Size1, "80"},
                                                    {Kind::Size2, "80"}});
    PlanControl({"0.6", "0.2", "0.1", "0.1"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    EXPECT_NEAR(Value(Kind::SumOfCubedProportions), 0.216 + 0.008 + 0.002, 1e-6);
    const f64 ratio = ParseNumber(Solve(Kind::H1OddsRatio));
    const f64 cubes = f64{OrdCubeSum(static_cast<f32>(ratio), 80, 80, {0.6F, 0.2F, 0.1F, 0.1F})};
    EXPECT_NEAR(Value(Kind::SumOfCubedProportions), cubes, 2e-6) << "at the odds ratio found";
    EXPECT_GT(cubes, 0.24);
    EXPECT_EQ(HasGridData, True);
    // With the sum typed, and so fixed, the power is that of the table.
    const f64 power = ParseNumber(Solve(Kind::Power));
    Type(Kind::SumOfCubedProportions, ParText(Kind::SumOfCubedProportions));
    EXPECT_EQ(HasGridData, False);
    EXPECT_NEAR(ParseNumber(Solve(Kind::Power)), power, 2e-5);
    Type(Kind::SumOfCubedProportions, "0.5");
    EXPECT_LT(ParseNumber(Solve(Kind::Power)), power - 0.05);
}

// A sum of cubes that is sought is not that of the grid, and stays when it is found.
TEST_F(RankTest, ASumOfCubesIsSoughtLikeAnyOther) {
    Start(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                    {Kind::Power, "0.5"},
                                                    {Kind::H1OddsRatio, "2"},
                                                    {Kind::SumOfCubedProportions, "0.3"},
                                                    {Kind::Size1, "60"},
                                                    {Kind::Size2, "60"}});
    PlanControl({"0.6", "0.2", "0.1", "0.1"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    const f64 sought = ParseNumber(Solve(Kind::SumOfCubedProportions));
    EXPECT_NEAR(sought, 0.20045, 5e-4); // a power of 0.5: ln 2 is z s
    EXPECT_EQ(HasGridData, False);
    StepBack();
    EXPECT_EQ(HasGridData, True);
    StepBack();
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(Solve(Kind::Power), "0.5");
    EXPECT_NEAR(Value(Kind::SumOfCubedProportions), sought, 1e-9);
}

TEST_F(RankTest, ASumOfCubesOnAnAxisIsNotThatOfTheGrid) {
    FileCommand(TableWindow);
    checks::SetUp(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}));
    for (const auto& [kind, text] : Values{{Kind::SignificanceLevel, "0.05"},
                                           {Kind::H1OddsRatio, "2"},
                                           {Kind::SumOfCubedProportions, "0.3"},
                                           {Kind::Size1, "60"},
                                           {Kind::Size2, "60"}})
        Type(kind, text);
    PlanControl({"0.6", "0.2", "0.1", "0.1"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    ASSERT_EQ(HasGridData, True);
    UnknownParNo = PositionOf(Kind::Power);
    XParNo = PositionOf(Kind::SumOfCubedProportions);
    ZParNo = PositionOf(Kind::SignificanceLevel);
    const auto powerAt = [](f64 x) {
        ReadParValues();
        ParValue(XParNo) = x;
        ParValue(UnknownParNo) = 0;
        return TESTMW::RootFunction();
    };
    EXPECT_GT(powerAt(0.05), powerAt(0.5) + 0.05);
    XParNo = PositionOf(Kind::H1OddsRatio);
    const f64 ofTheGrid = powerAt(2);
    ParValue(PositionOf(Kind::SumOfCubedProportions)) = 0.9;
    ParValue(UnknownParNo) = 0;
    EXPECT_EQ(TESTMW::RootFunction(), ofTheGrid);
}

// The proportions of the control group alone, as long as there is no odds ratio.
TEST_F(RankTest, TheSumOfCubesCanBeHadBeforeTheOddsRatio) {
    Start(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}), {{Kind::SumOfCubedProportions, "0.3"}});
    Type(Kind::H1OddsRatio, "-");
    PlanControl({"0.25", "0.25", "0.5"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    EXPECT_NEAR(Value(Kind::SumOfCubedProportions), 0.15625, 1e-6);
}

TEST_F(RankTest, ProportionsOfTheControlGroupAddUpTo1) {
    Start(Menu(menuOrdered, 2, {{26, 0}, {2, 0}}), {{Kind::SumOfCubedProportions, "0.3"}});
    PlanControl({"0.25", "0.25"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    PlanControl({"0.75", "0.5"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    PlanControl({"1.5"});
    GetFromTable(PositionOf(Kind::SumOfCubedProportions));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Sum of Proportions in Row 1 Must Equal 1.",
                                        "Sum of Proportions in Row 1> 1. Must Equal 1.",
                                        "Proportion in Cell  (1,1)  Must Be >= 0 and <= 1."}));
    EXPECT_EQ(ParText(Kind::SumOfCubedProportions), "0.3");
    EXPECT_EQ(HasGridData, False);
}

// --- Distributions -------------------------------------------------------------------------------

TEST_F(RankTest, AShiftGivesTheProbability) {
    Start(Menu(menuContinuous, 2, {{2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                              {Kind::H1ProbabilityOfOrder, "0.8"},
                                              {Kind::Size1, "40"},
                                              {Kind::Size2, "40"}});
    const i16 order = PositionOf(Kind::H1ProbabilityOfOrder);
    EXPECT_TRUE(IsBluePar(order));
    PlanDistr(SimLogistic, "1.2", "1");
    GetFromTable(order);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_NEAR(Value(Kind::H1ProbabilityOfOrder), 0.690871, 2e-6); // rank.py
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(1), (DistrRow{SimLogistic, 0, 1})) << "H0 is not shifted";
    EXPECT_EQ(Distr(2), (DistrRow{SimLogistic, 1.2F, 1}));
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(HasGridData, False) << "there are no grids to look at";
}

TEST_F(RankTest, AShiftIsEnteredForAnEquivalenceToo) {
    Start(Menu(menuContinuous, 3, {{2, 0}}), {{Kind::H1ProbabilityOfOrder, "0.8"}});
    EXPECT_TRUE(IsBluePar(4));
    EXPECT_FALSE(IsBluePar(2));
    PlanDistr(SimUniform, "0", "1");
    GetFromTable(4);
    EXPECT_EQ(ParText(Kind::H1ProbabilityOfOrder), "0.5");
}

TEST_F(RankTest, ACancelledDistributionChangesNothing) {
    Start(Menu(menuContinuous, 2), {{Kind::H1ProbabilityOfOrder, "0.8"}});
    Solve(Kind::Power);
    const std::string step = StepBackName();
    GetFromTable(PositionOf(Kind::H1ProbabilityOfOrder)); // the scripted user cancels
    EXPECT_EQ(ParText(Kind::H1ProbabilityOfOrder), "0.8");
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(StepBackName(), step);
    EXPECT_EQ(NoOfDistr(), 0);
}

TEST_F(RankTest, ADistributionCanBeTakenBack) {
    Start(Menu(menuContinuous, 2), {{Kind::H1ProbabilityOfOrder, "0.8"}});
    PlanDistr(SimNormal, "1", "1");
    GetFromTable(PositionOf(Kind::H1ProbabilityOfOrder));
    EXPECT_EQ(ParText(Kind::H1ProbabilityOfOrder).substr(0, 6), "0.7602"); // norm.cdf(sqrt 0.5)
    EXPECT_EQ(StepBackName(), "Undo Value from Tables");
    StepBack();
    EXPECT_EQ(ParText(Kind::H1ProbabilityOfOrder), "0.8");
    EXPECT_EQ(NoOfDistr(), 0);
    StepBack();
    EXPECT_EQ(ParText(Kind::H1ProbabilityOfOrder).substr(0, 6), "0.7602");
    EXPECT_EQ(NoOfDistr(), 2);
}

// One distribution gives both probabilities of the signed ranks, whichever was asked for.
TEST_F(RankTest, SignedRanksTakeBothProbabilities) {
    for (const i16 asked : {Kind::H1ProbabilityAbove0, Kind::H1ProbabilityOfSumAbove0}) {
        Start(Menu(menuSignedRank, 2),
              {{Kind::H1ProbabilityAbove0, "0.9"}, {Kind::H1ProbabilityOfSumAbove0, "0.9"}});
        EXPECT_TRUE(IsBluePar(PositionOf(Kind::H1ProbabilityAbove0)));
        EXPECT_TRUE(IsBluePar(PositionOf(Kind::H1ProbabilityOfSumAbove0)));
        platform.Statuses.clear();
        PlanDistr(SimLaplace, "0.5", "1");
        GetFromTable(PositionOf(asked));
        EXPECT_NEAR(Value(Kind::H1ProbabilityAbove0), 0.696735, 2e-6); // rank.py
        EXPECT_NEAR(Value(Kind::H1ProbabilityOfSumAbove0), 0.724090, 2e-6);
        EXPECT_EQ(platform.Statuses.back(),
                  asked == Kind::H1ProbabilityAbove0
                      ? "Taken from the same distribution: H1: Prob (Sample + Sample' > 0)."
                      : "Taken from the same distribution: H1: Prob (Sample > 0).");
        EXPECT_EQ(Distr(1), (DistrRow{SimLaplace, 0, 1}));
    }
}

TEST_F(RankTest, SignsTakeTheirProbability) {
    Start(Menu(menuSign, 2), {{Kind::H1ProbabilityAbove0, "0.9"}});
    PlanDistr(SimCauchy, "1", "1");
    GetFromTable(PositionOf(Kind::H1ProbabilityAbove0));
    EXPECT_NEAR(Value(Kind::H1ProbabilityAbove0), 0.75, 1e-6);
    EXPECT_EQ(Distr(2), (DistrRow{SimCauchy, 1, 1}));
}

// --- Statements ----------------------------------------------------------------------------------

// As long as the value is that of the distribution.
TEST_F(RankTest, TheStatementNamesTheDistribution) {
    Start(Menu(menuContinuous, 2, {{2, 0}}), {{Kind::Size1, "30"}, {Kind::Size2, "30"}});
    PlanDistr(SimNormal, "0.8", "1");
    GetFromTable(PositionOf(Kind::H1ProbabilityOfOrder));
    const auto statement = [] {
        SolveFor(PowerParNo);
        return SumStatement();
    };
    const std::string named =
        "against H1: Prob (sample2 > sample1) = 0.714196 (Normal Distribution, m = 0.8, s = 1). "
        "The test used is";
    EXPECT_NE(statement().find(named), std::string::npos) << statement();
    TypedParText(PositionOf(Kind::H1ProbabilityOfOrder), "0.7");
    EXPECT_NE(statement().find("Prob (sample2 > sample1) = 0.7. The test used is"),
              std::string::npos)
        << statement();

    Start(Menu(menuSignedRank, 2), {{Kind::Size, "30"}});
    PlanDistr(SimLaplace, "0.5", "1");
    GetFromTable(PositionOf(Kind::H1ProbabilityAbove0));
    EXPECT_TRUE(
        statement().find("sample' > 0) = 0.72409 (Laplace Distribution, m = 0.5, s = 1).") !=
        std::string::npos)
        << statement();
}

TEST_F(RankTest, Statements) {
    const auto statement = [this](const AnalysisChoice& choice, const Values& values) {
        PowerOf(choice, values);
        return SumStatement();
    };
    EXPECT_EQ(statement(Menu(menuContinuous, 2, {{2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                            {Kind::H1ProbabilityOfOrder, "0.7"},
                                                            {Kind::Size1, "30"},
                                                            {Kind::Size2, "30"}}),
              "With a total sample size of 60 (30 in sample 1 and 30 in sample 2), the power is "
              "0.76 when testing the null hypothesis H0: Prob (sample2 > sample1) = 0.5 (equal "
              "distributions) against H1: Prob (sample2 > sample1) = 0.7. The test used is "
              "Wilcoxon-Mann-Whitney test, Continuous outcome, two-sided, at the significance "
              "level 0.05.");
    EXPECT_EQ(statement(Menu(menuContinuous, 3, {{2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                            {Kind::ProportionLeftLimit, "0.35"},
                                                            {Kind::ProportionRightLimit, "0.65"},
                                                            {Kind::H1ProbabilityOfOrder, "0.5"},
                                                            {Kind::Size1, "80"},
                                                            {Kind::Size2, "80"}}),
              "With a total sample size of 160 (80 in sample 1 and 80 in sample 2), the power "
              "is 0.90 when testing the null hypothesis H0: non-equivalence, with left "
              "equivalence limit = 0.35 and right equivalence limit = 0.65, against H1: Prob "
              "(sample2 > sample1) = 0.5 (equivalence). The test used is Wilcoxon-Mann-Whitney "
              "test, Continuous outcome, as two one-sided tests, at the significance level "
              "0.05.");
    EXPECT_EQ(
        statement(Menu(menuOrdered, 1, {{26, 0}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                            {Kind::H1OddsRatio, "2"},
                                                            {Kind::SumOfCubedProportions, "0.1"},
                                                            {Kind::Size1, "60"},
                                                            {Kind::Size2, "60"}}),
        "With a total sample size of 120 (60 in sample 1 and 60 in sample 2), the power "
        "is 0.67 when testing the null hypothesis H0: odds ratio = 1 against H1: odds "
        "ratio = 2. The test used is Wilcoxon-Mann-Whitney test, Ordered categories, "
        "one-sided, at the significance level 0.05. The calculation is based on the "
        "assumption that the sum of the cubed average proportions is 0.1.");
    EXPECT_EQ(statement(Menu(menuOrdered, 2, {{26, 1}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                                  {Kind::H1OddsRatio, "2"},
                                                                  {Kind::NoOfCategories, "5"},
                                                                  {Kind::Size1, "60"},
                                                                  {Kind::Size2, "60"}}),
              "With a total sample size of 120 (60 in sample 1 and 60 in sample 2), the power "
              "is 0.57 when testing the null hypothesis H0: odds ratio = 1 against H1: odds "
              "ratio = 2. The test used is Wilcoxon-Mann-Whitney test, Ordered categories, "
              "two-sided, at the significance level 0.05. The calculation is based on the "
              "assumption that the number of categories is 5.");
    EXPECT_EQ(statement(Menu(menuSavage, 2, {{16, 0}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                                 {Kind::H1Scale1, "0.2"},
                                                                 {Kind::H1Scale2, "0.35"},
                                                                 {Kind::Size1, "40"},
                                                                 {Kind::Size2, "40"}}),
              "With a total sample size of 80 (40 in sample 1 and 40 in sample 2), the power is "
              "0.68 when testing the null hypothesis H0: scale 2 = scale 1 against H1: scale 1 "
              "= 0.2 and scale 2 = 0.35. The test used is Savage test, two-sided, at the "
              "significance level 0.05.");
    EXPECT_EQ(statement(Menu(menuSavage, 1, {{16, 1}, {2, 0}}), {{Kind::SignificanceLevel, "0.05"},
                                                                 {Kind::H1Scale2Over1, "2"},
                                                                 {Kind::Size1, "40"},
                                                                 {Kind::Size2, "40"}}),
              "With a total sample size of 80 (40 in sample 1 and 40 in sample 2), the power is "
              "0.90 when testing the null hypothesis H0: scale 2 / scale 1 = 1 against H1: "
              "scale 2 / scale 1 = 2. The test used is Savage test, one-sided, at the "
              "significance level 0.05.");
    EXPECT_EQ(statement(Menu(menuSignedRank, 2), {{Kind::SignificanceLevel, "0.05"},
                                                  {Kind::H1ProbabilityAbove0, "0.7"},
                                                  {Kind::H1ProbabilityOfSumAbove0, "0.75"},
                                                  {Kind::Size, "30"}}),
              "With a sample size of 30, the power is 0.66 when testing the null hypothesis H0: "
              "Prob (sample > 0) = 0.5 (median 0) against H1: Prob (sample > 0) = 0.7 and Prob "
              "(sample + sample' > 0) = 0.75. The test used is Wilcoxon Signed-rank test, "
              "two-sided, at the significance level 0.05.");
    EXPECT_EQ(statement(Menu(menuSign, 1), {{Kind::SignificanceLevel, "0.05"},
                                            {Kind::H1ProbabilityAbove0, "0.7"},
                                            {Kind::Size, "30"}}),
              "With a sample size of 30, the power is 0.73 when testing the null hypothesis H0: "
              "Prob (sample > 0) = 0.5 (median 0) against H1: Prob (sample > 0) = 0.7. The test "
              "used is Sign test, one-sided, at the significance level 0.05.");
}

} // namespace
} // namespace quorvanta::checks
