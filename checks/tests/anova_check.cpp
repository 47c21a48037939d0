// The analyses of variance with fixed effects: their designs, edge cases, and what they offer.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/search.h"
#include "core/values.h"
#include "numeric/probdist.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/properties.h"
#include "support/tsv.h"
#include "support/validation.h"
#include "tests/anovaeq.h"

#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::checks {
namespace {

// Menu numbers.
constexpr i16 oneWay = 10;
constexpr i16 twoWay = 11;
constexpr i16 threeWay = 12;
constexpr i16 latinSquare = 14;
constexpr i16 latinSquares = 15;
constexpr i16 latinSquareBlocks = 16;
constexpr i16 blocksOneFactor = 18;
constexpr i16 blocksTwoFactors = 19;
constexpr i16 ancova = 50;

constexpr i16 mainEffectB = 1;
constexpr i16 interaction = 2;

class Anova : public AnalysisFixture {
  protected:
    // With nothing ticked, whatever was chosen before.
    void OpenPlain(i16 menuNo) {
        OpenTest(menuNo);
        for (i16 i = 0; i < NoOfCheck; ++i)
            ChooseCheck(i, false);
        ChooseTails(TwoSided);
    }

    static void Tick(i16 kind) {
        for (i16 i = 0; i < NoOfCheck; ++i)
            if (CheckList(i) == kind)
                return ChooseCheck(i, true);
        FAIL() << "check box " << kind << " is not offered";
    }

    void Put(i16 kind, const std::string& text) {
        Type(kind, text);
        ParValue(PositionOf(kind)) = ReadNumber(text);
    }

    // The power at ParValue, which a target of 0 leaves alone.
    static f64 PowerNow() {
        ParValue(PowerParNo) = 0;
        return SelRootFunction();
    }

    // Four groups of 20, or what is put there.
    void OpenOneWay(i16 type = 0) {
        OpenPlain(oneWay);
        Pick(Group::EffectSize, type);
        AcceptOptions();
        Put(Kind::SignificanceLevel, "0.05");
        Put(Kind::Sd, "1");
        Put(Kind::NoOfGroups, "4");
        Put(Kind::Size1, "20");
        Put(Kind::SizeK, "20");
    }

    void OpenContrast(i16 menuNo) {
        OpenPlain(menuNo);
        Tick(Check::Contrast);
        AcceptOptions();
    }
};

// --- Designs -------------------------------------------------------------------------------------

TEST(AnovaDesigns, WithEqualGroupsTheSmallestDifferenceIsThatOfOneGroupFromTheOthers) {
    const AnovaDesign equal = OneWayDesign(4, 20, 20);
    EXPECT_DOUBLE_EQ(equal.Lambda[2], 3 * 20.0 / 4);
    EXPECT_DOUBLE_EQ(equal.Lambda[0], 80);
    EXPECT_DOUBLE_EQ(equal.Lambda[1], 10);
    // From either side the two forms meet where the sizes are equal.
    EXPECT_NEAR(OneWayDesign(4, 20.001F, 20).Lambda[2], equal.Lambda[2], 0.01);
    EXPECT_NEAR(OneWayDesign(4, 19.999F, 20).Lambda[2], equal.Lambda[2], 0.01);
}

// By hand: 10 and 30: 10 x 90/100; 30 and three of 10: 10 x 50/60.
TEST(AnovaDesigns, TheSmallestGroupIsTheOneThatIsApart) {
    EXPECT_DOUBLE_EQ(OneWayDesign(4, 10, 30).Lambda[2], 9);
    EXPECT_NEAR(OneWayDesign(4, 30, 10).Lambda[2], 10 * 50.0 / 60, 1e-12);
    EXPECT_DOUBLE_EQ(OneWayDesign(4, 30, 10).Lambda[1], 7.5);
}

TEST(AnovaDesigns, OneGroupAndAllOfItsDegreesOfFreedom) {
    const AnovaDesign design = OneWayDesign(3, 12, 8);
    EXPECT_EQ(design.Df1, 2);
    EXPECT_EQ(design.Df2, 25);
    EXPECT_EQ(InteractionEffect(3, 4, 2, 12).Df1, 6);
}

// --- The equation of the F-test ---------------------------------------------------------------

TEST_F(Anova, WithoutAnEffectThePowerIsTheLevelAndAHairMore) {
    OpenOneWay();
    Put(Kind::SdOfMeans, "0");
    const f64 power = PowerNow();
    f32 df1 = 3;
    f32 df2 = 76;
    const f32 critical = FInv(0.95F, df1, df2);
    f32 floor = 1e-5F;
    EXPECT_EQ(power, 1 - f64{NcFCdf(critical, df1, df2, floor)});
    EXPECT_GT(power, 1 - f64{FCdf(critical, df1, df2)});
    EXPECT_NEAR(power, 0.05, 5e-5);
}

// The cut of FInv at 999 degrees of freedom has to reach NcFCdf, whose sums of incomplete beta
// functions can't do more beside 9. scipy, 10 groups of 5000, sd of the means 0.02: 0.90291 with
// 49990 degrees of freedom, 0.90005 with 999.
TEST_F(Anova, ThousandsOfSubjectsCountWithTheDegreesOfFreedomThatTheQuantileKeeps) {
    OpenOneWay();
    Put(Kind::NoOfGroups, "10");
    Put(Kind::Size1, "5000");
    Put(Kind::SizeK, "5000");
    Put(Kind::SdOfMeans, "0.02");
    EXPECT_NEAR(PowerNow(), 0.90005, 0.001);
}

// What the guards of the incomplete beta function do at a level of 0.001, as docs/accuracy.md
// tells: scipy has 0.80001 and 0.90092, and with these guards 0.83804 and 0.98112
// (checks/reference/model_matrices.py).
TEST_F(Anova, SmallLevelsMeetTheGuardsOfTheBetaFunction) {
    OpenOneWay();
    Put(Kind::SignificanceLevel, "0.001");
    Put(Kind::NoOfGroups, "10");
    Put(Kind::Size1, "101");
    Put(Kind::SizeK, "101");
    Put(Kind::SdOfMeans, "0.17003");
    EXPECT_NEAR(PowerNow(), 0.83804, 0.001);
    OpenPlain(blocksOneFactor);
    Pick(Group::EffectSize, 2);
    AcceptOptions();
    Put(Kind::SignificanceLevel, "0.001");
    Put(Kind::MinMeanDifference, "1050");
    Put(Kind::Sd, "1");
    Put(Kind::LevelsA, "2");
    Put(Kind::NoOfBlocks, "2");
    EXPECT_NEAR(PowerNow(), 0.98112, 0.001);
}

TEST_F(Anova, MoreEffectIsMorePowerWhateverTheType) {
    const i16 kinds[] = {Kind::SdOfMeans, Kind::AnyMeanDifference, Kind::MinMeanDifference};
    for (i16 type = 0; type <= 2; ++type) {
        OpenOneWay(type);
        f64 former = 0;
        for (const char* effect : {"0", "0.1", "0.3", "0.6", "1", "2", "10", "1000"}) {
            Put(kinds[type], effect);
            EXPECT_GE(PowerNow(), former) << type << ", " << effect;
            former = PowerNow();
        }
        EXPECT_NEAR(former, 1, 1e-6);
    }
}

// --- Contrasts -----------------------------------------------------------------------------------

TEST_F(Anova, AContrastIgnoresTheTypeOfEffect) {
    OpenContrast(oneWay);
    const f64 power = PowerNow();
    for (i16 type = 0; type <= 2; ++type) {
        IntParValue(Group::EffectSize) = type;
        SelSetParList();
        EXPECT_EQ(PowerNow(), power) << type;
    }
}

// With two groups the contrast 1, -1 is the difference of two means, and its standard deviation
// that of the error times the root of 2: scipy's power of the unpaired t-test, 20 per group and a
// difference of 0.8 standard deviations, is 0.69340.
TEST_F(Anova, AContrastOfTwoGroupsIsTheUnpairedTTest) {
    OpenContrast(oneWay);
    Put(Kind::SignificanceLevel, "0.05");
    Put(Kind::ContrastMean, "0.8");
    Put(Kind::ContrastSd, "1.4142136");
    Put(Kind::NoOfGroups, "2");
    Put(Kind::SizePerGroup, "20");
    EXPECT_NEAR(PowerNow(), 0.69340, 0.002);
}

TEST_F(Anova, OnlyAContrastHasDirectionsAndOnlyTheOneWayContrastTwoOneSidedTests) {
    for (const i16 menuNo : {oneWay, ancova, twoWay, threeWay, latinSquare, latinSquares,
                             latinSquareBlocks, blocksOneFactor, blocksTwoFactors}) {
        OpenPlain(menuNo);
        EXPECT_EQ(NoOfSamples, MoreSamples);
        EXPECT_FALSE(TailsOffered(OneSided)) << menuNo;
        EXPECT_FALSE(TailsOffered(TwoOneSided)) << menuNo;
        Tick(Check::Contrast);
        EXPECT_TRUE(TailsOffered(OneSided)) << menuNo;
        EXPECT_EQ(TailsOffered(TwoOneSided), menuNo == oneWay) << menuNo;
        CancelOptions();
    }
}

TEST_F(Anova, LimitsOfAContrastHaveToBeInOrder) {
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    Put(Kind::MeanLeftLimit, "0.5");
    Put(Kind::MeanRightLimit, "-0.5");
    platform.Messages.clear();
    Solve(Kind::Power);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "H0: Left Equivalence Limit Has To Be Less Than or Equal to -0.5."});
}

TEST_F(Anova, AContrastIsSoughtOnTheSideOfItsTail) {
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    AcceptOptions();
    Put(Kind::Power, "0.8");
    EXPECT_LT(ReadNumber(Solve(Kind::ContrastMean)), 0);
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    ChooseTails(TwoSided);
    AcceptOptions();
    Put(Kind::Power, "0.8");
    EXPECT_GT(ReadNumber(Solve(Kind::ContrastMean)), 0);
}

// --- Lists ---------------------------------------------------------------------------------------

using Ks = std::vector<i16>;

Ks Kinds() {
    return {&ParKind(0), &ParKind(0) + NoOfPar + 1};
}

Ks Joined(Ks kinds, const Ks& others) {
    kinds.insert(kinds.end(), others.begin(), others.end());
    return kinds;
}

// What follows the effect and its standard deviation, and the mean of a contrast.
struct LayoutKinds {
    i16 MenuNo;
    Ks OfFTest;
    Ks OfContrast;
    i16 ContrastMean = 247;
};

TEST_F(Anova, TheListOfEachDesign) {
    const LayoutKinds designs[] = {{oneWay, {17, 4, 149}, {17, 326}},
                                   {ancova, {357, 17, 4, 149}, {357, 17, 326}},
                                   {twoWay, {238, 239, 327}, {238, 239, 327}},
                                   {threeWay, {238, 239, 243, 328}, {238, 239, 243, 328}},
                                   {latinSquare, {244}, {244}},
                                   {latinSquares, {270, 245}, {270, 245}, 269},
                                   {latinSquareBlocks, {270, 245}, {270, 245}, 269},
                                   {blocksOneFactor, {238, 246}, {238, 246}},
                                   {blocksTwoFactors, {238, 239, 246}, {238, 239, 246}}};
    const i16 effects[] = {34, 147, 148};
    for (const LayoutKinds& design : designs) {
        SCOPED_TRACE(design.MenuNo);
        for (i16 type = 0; type <= 2; ++type) {
            OpenPlain(design.MenuNo);
            Pick(Group::EffectSize, type);
            AcceptOptions();
            EXPECT_EQ(Kinds(), Joined({0, 1, effects[type], 2}, design.OfFTest));
        }
        OpenContrast(design.MenuNo);
        EXPECT_EQ(Kinds(), Joined({0, 1, design.ContrastMean, 137}, design.OfContrast));
    }
}

TEST_F(Anova, TheListOfAnOption) {
    const i16 lastSizes[] = {149, 150, 151};
    for (i16 form = 0; form <= 2; ++form) {
        OpenPlain(oneWay);
        Pick(Group::SizeK, form);
        AcceptOptions();
        EXPECT_EQ(Kinds(), (Ks{0, 1, 34, 2, 17, 4, lastSizes[form]}));
    }
    OpenPlain(twoWay);
    Tick(Check::Additive);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 34, 2, 238, 239, 328}));
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 6, 7, 247, 137, 17, 326}));
}

TEST_F(Anova, TheOptionsInTheOrderOfTheWindow) {
    const auto expect = [this](i16 menuNo, const Ks& checks, const Ks& groups) {
        OpenPlain(menuNo);
        EXPECT_EQ(Ks(&CheckList(0), &CheckList(0) + NoOfCheck), checks) << menuNo;
        EXPECT_EQ(Ks(&IntParList(0), &IntParList(0) + NoOfIntPar), groups) << menuNo;
        CancelOptions();
    };
    expect(oneWay, {10}, {17, 18});
    expect(ancova, {10}, {17, 18});
    expect(twoWay, {10, 11}, {36, 17});
    expect(threeWay, {10}, {38, 17});
    expect(latinSquare, {10}, {17});
    expect(latinSquares, {10, 15}, {17});
    expect(latinSquareBlocks, {10, 13}, {17});
    expect(blocksOneFactor, {10}, {17});
    expect(blocksTwoFactors, {10, 11}, {36, 17});
    // A contrast needs no type of effect, and of one factor nothing at all.
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    EXPECT_EQ(NoOfIntPar, 0);
    CancelOptions();
    OpenPlain(twoWay);
    Tick(Check::Contrast);
    EXPECT_EQ(Ks(&IntParList(0), &IntParList(0) + NoOfIntPar), Ks{36});
}

// --- Two factors ---------------------------------------------------------------------------------

TEST_F(Anova, WithoutInteractionThereIsNoneToTest) {
    for (const i16 menuNo : {twoWay, blocksTwoFactors}) {
        OpenPlain(menuNo);
        Pick(Group::TestedOfTwoFactors, interaction);
        Tick(Check::Additive);
        EXPECT_EQ(ChosenOption(Group::TestedOfTwoFactors), 0) << menuNo;
        EXPECT_FALSE(IntParOptionEnabled(interaction, 0)) << menuNo;
        CancelOptions();
    }
}

// df2 = a b n - a - b + 1. One observation per cell then leaves (a - 1)(b - 1) of 3 x 4 cells: the
// analysis of randomized blocks with as many blocks as B has levels.
TEST_F(Anova, OneObservationInEachCellOfAnAdditiveDesignIsABlockDesign) {
    OpenPlain(twoWay);
    Tick(Check::Additive);
    AcceptOptions();
    Put(Kind::SignificanceLevel, "0.05");
    Put(Kind::SdOfMeans, "0.8");
    Put(Kind::Sd, "1");
    Put(Kind::LevelsA, "3");
    Put(Kind::LevelsB, "4");
    Put(Kind::AdditiveSizePerCell, "1");
    const f64 cells = PowerNow();
    OpenPlain(blocksOneFactor);
    AcceptOptions();
    Put(Kind::SdOfMeans, "0.8");
    Put(Kind::Sd, "1");
    Put(Kind::LevelsA, "3");
    Put(Kind::NoOfBlocks, "4");
    EXPECT_EQ(PowerNow(), cells);
}

// Five in each of 3 x 4 cells leave 60 - 3 - 4 + 1 = 54; with interaction 48. scipy's non-central
// F, the means of A with a standard deviation of 0.4 and so lambda 60 x 0.16.
TEST_F(Anova, AnAdditiveDesignHasTheErrorOfItsInteractionToo) {
    const auto power = [this](bool additive) {
        OpenPlain(twoWay);
        if (additive)
            Tick(Check::Additive);
        AcceptOptions();
        Put(Kind::SignificanceLevel, "0.05");
        Put(Kind::SdOfMeans, "0.4");
        Put(Kind::Sd, "1");
        Put(Kind::LevelsA, "3");
        Put(Kind::LevelsB, "4");
        Put(additive ? Kind::AdditiveSizePerCell : Kind::SizePerCell, "5");
        return PowerNow();
    };
    f32 df1 = 2;
    f32 lambda = 9.6F;
    for (const bool additive : {true, false}) {
        f32 df2 = additive ? 54 : 48;
        const f32 critical = FInv(0.95F, df1, df2);
        EXPECT_NEAR(power(additive), 1 - f64{NcFCdf(critical, df1, df2, lambda)}, 1e-6);
    }
    EXPECT_NEAR(power(true), 0.77443, 0.001);
    EXPECT_NEAR(power(false), 0.77134, 0.001);
}

// --- Squares -------------------------------------------------------------------------------------

// Four squares of size 4. Own rows and columns leave 33 degrees of freedom, rows and columns that
// all squares share 51, treatments by squares 9. Powers by scipy's non-central F, lambda 64 x 0.16.
TEST_F(Anova, WhatSquaresAreDecidesOnTheError) {
    const auto power = [this](i16 menuNo, i16 check) {
        OpenPlain(menuNo);
        if (check != 0)
            Tick(check);
        AcceptOptions();
        Put(Kind::SignificanceLevel, "0.05");
        Put(Kind::SdOfMeans, "0.4");
        Put(Kind::Sd, "1");
        Put(Kind::ReplicatedSquareSize, "4");
        Put(Kind::NoOfSquares, "4");
        return PowerNow();
    };
    EXPECT_NEAR(power(latinSquares, 0), 0.71632, 0.001);
    EXPECT_NEAR(power(latinSquares, Check::SquaresAsLevels), 0.73626, 0.001);
    EXPECT_NEAR(power(latinSquareBlocks, 0), 0.73626, 0.001);
    EXPECT_NEAR(power(latinSquareBlocks, Check::RandomSquares), 0.56695, 0.001);
}

// --- Checks and limits ---------------------------------------------------------------------------

TEST_F(Anova, AGroupWithoutSubjectsIsRefused) {
    OpenOneWay();
    platform.Messages.clear();
    Put(Kind::Size1, "0");
    Solve(Kind::Power);
    Put(Kind::Size1, "20");
    Put(Kind::SizeK, "0");
    Solve(Kind::Power);
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Sample Size 1 Has To Be Greater Than or Equal to 3.",
                                        "Sample Size k Has To Be Greater Than or Equal to 3."}));
}

TEST_F(Anova, AGroupThatGetsTooSmallBesideTheFirstIsRefused) {
    OpenPlain(oneWay);
    Pick(Group::SizeK, 1);
    AcceptOptions();
    platform.Messages.clear();
    Put(Kind::Size1, "20");
    Put(Kind::SizeKMinus1, "-18");
    Solve(Kind::Power);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Sample Size k - Sample Size 1 Has To Be Greater Than or Equal to -17."});
}

// scipy: 35.04 in each of the three others.
TEST_F(Anova, TheSizeOfTheOtherGroupsIsFoundInEveryForm) {
    const i16 kinds[] = {Kind::SizeK, Kind::SizeKMinus1, Kind::SizeKOver1};
    for (i16 form = 0; form <= 2; ++form) {
        OpenPlain(oneWay);
        Pick(Group::SizeK, form);
        AcceptOptions();
        Put(Kind::SignificanceLevel, "0.05");
        Put(Kind::SdOfMeans, "0.3");
        Put(Kind::Sd, "1");
        Put(Kind::NoOfGroups, "4");
        Put(Kind::Size1, "20");
        Put(Kind::Power, "0.8");
        UnknownParNo = PositionOf(kinds[form]);
        const f64 entry = SolveUnknown();
        ASSERT_NE(entry, NoValue) << form;
        const f64 others = form == 0 ? entry : (form == 1 ? 20 + entry : 20 * entry);
        EXPECT_NEAR(others, 35.0389, 0.2) << form;
    }
}

// The power is the same for a correlation and its negative.
TEST_F(Anova, TheCorrelationOfACovariateIsSoughtAboveZero) {
    OpenPlain(ancova);
    AcceptOptions();
    Put(Kind::SdOfMeans, "0.25");
    Put(Kind::Sd, "1");
    Put(Kind::NoOfGroups, "4");
    Put(Kind::Size1, "20");
    Put(Kind::SizeK, "20");
    Put(Kind::CovariateCorrelation, "-0.5");
    const f64 negative = PowerNow();
    Put(Kind::CovariateCorrelation, "0.5");
    EXPECT_EQ(PowerNow(), negative);
    Put(Kind::Power, std::to_string(negative));
    UnknownParNo = PositionOf(Kind::CovariateCorrelation);
    EXPECT_NEAR(SolveUnknown(), 0.5, 0.005);
}

// One mean apart from the others has its highest power with three levels or four: two numbers of
// levels have a smaller power, and the larger one is found.
TEST_F(Anova, TheLargerOfTwoNumbersOfLevelsIsFound) {
    OpenOneWay(2);
    Put(Kind::MinMeanDifference, "0.8");
    Put(Kind::NoOfGroups, "2");
    const f64 atTwo = PowerNow();
    Put(Kind::NoOfGroups, "3");
    EXPECT_GT(PowerNow(), atTwo);
    Put(Kind::Power, std::to_string(atTwo + 0.005));
    UnknownParNo = PositionOf(Kind::NoOfGroups);
    const f64 groups = SolveUnknown();
    ASSERT_NE(groups, NoValue);
    EXPECT_GT(groups, 3);
}

// --- Grids --------------------------------------------------------------------------------------

std::vector<std::string> Parts(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

using Assignments = std::vector<std::pair<i16, std::string>>;

// "2=1.5;17=4"
Assignments AssignmentsOf(const std::string& text, char separator) {
    Assignments all;
    for (const std::string& part : Parts(text, separator)) {
        const auto equals = part.find('=');
        all.emplace_back(static_cast<i16>(std::stoi(part.substr(0, equals))),
                         part.substr(equals + 1));
    }
    return all;
}

// A design whose true means are given one by one: the effect that derives from them, and the exact
// power of the design with them.
struct DesignWithMeans : AnalysisChoice {
    Assignments Entries;
    std::vector<std::string> Grids; // rows set apart by "/", cells by blanks
    Assignments Derived;
    f64 Power = 0;
    f64 Tolerance = 0;
};

std::vector<DesignWithMeans> DesignsWithMeans() {
    std::vector<DesignWithMeans> designs;
    for (const auto& row : ReadTsv("anova_means.tsv")) {
        DesignWithMeans design;
        design.MenuNo = static_cast<i16>(std::stoi(row[0].substr(row[0].find(' '))));
        design.NoOfSamples = MoreSamples;
        design.NoOfTails = TwoSided;
        for (const std::string& kind : Parts(row[1], ','))
            design.Checks.push_back(static_cast<i16>(std::stoi(kind)));
        for (const auto& [group, option] : AssignmentsOf(row[2], ','))
            design.Groups[group] = static_cast<i16>(std::stoi(option));
        design.Entries = AssignmentsOf(row[3], ';');
        design.Grids = Parts(row[4], '|');
        design.Derived = AssignmentsOf(row[5], ';');
        design.Power = ParseNumber(row[6]);
        design.Tolerance = ParseNumber(row[7]);
        designs.push_back(design);
    }
    return designs;
}

class AnovaGrids : public Anova {
  protected:
    // The user fills the next grid with this block; its size has to be the grid's.
    void Plan(const std::string& block) {
        platform.GridFillings.emplace_back([block] {
            const auto rows = Parts(block, '/');
            EXPECT_EQ(static_cast<std::size_t>(CurrentGrid().Rows), rows.size()) << block;
            for (std::size_t i = 0; i < rows.size(); ++i) {
                const auto cells = Parts(rows[i], ' ');
                EXPECT_EQ(static_cast<std::size_t>(CurrentGrid().Columns), cells.size()) << block;
                for (std::size_t j = 0; j < cells.size(); ++j)
                    GridOK(static_cast<i16>(i + 1), static_cast<i16>(j + 1), cells[j],
                           Leaving::Nothing);
            }
            return !AcceptGrid().has_value();
        });
    }

    // The value that derives from the grids planned, as it stands in its box.
    std::string FromGrids(i16 kind) {
        GetFromTable(PositionOf(kind));
        EXPECT_TRUE(platform.GridFillings.empty());
        ParValue(PositionOf(kind)) = ReadNumber(ParText(kind));
        return ParText(kind);
    }

    // The effect of four groups of 20 with these means.
    std::string EffectOf(const std::string& means, i16 type) {
        constexpr i16 kinds[] = {Kind::SdOfMeans, Kind::AnyMeanDifference, Kind::MinMeanDifference};
        OpenOneWay(type);
        Plan(means);
        return FromGrids(kinds[type]);
    }
};

// The power of a set of means is that of the design with these very means.
// The rocket propellants of D. C. Montgomery, Design and Analysis of Experiments, chapter on Latin
// squares: five formulations, whose means leave a sum of squares of 330 with 4 degrees of freedom,
// beside 128 with 12 of the error. Such means in such a square are seen at a level of 0.01 with the
// power that scipy has for a non-centrality of 330/(128/12).
TEST_F(AnovaGrids, ALatinSquareOfATextbook) {
    OpenPlain(latinSquare);
    AcceptOptions();
    Put(Kind::SquareSize, "5");
    Plan("28.6/20.2/22.4/29.8/26");
    EXPECT_EQ(FromGrids(Kind::SdOfMeans), "3.63318"); // sqrt(330/25)
    Put(Kind::SignificanceLevel, "0.01");
    Put(Kind::Sd, "3.2659863"); // sqrt(128/12)
    EXPECT_NEAR(PowerNow(), 0.8264275, 0.001);
}

TEST_F(AnovaGrids, MeansHaveThePowerOfTheirDesign) {
    std::set<i16> seen;
    FileCommand(CalculationWindow);
    for (const DesignWithMeans& design : DesignsWithMeans()) {
        SCOPED_TRACE(Describe(static_cast<const AnalysisChoice&>(design)));
        checks::SetUp(design);
        for (const auto& [kind, value] : design.Entries)
            Put(kind, value);
        for (const std::string& grid : design.Grids)
            Plan(grid);
        platform.Messages.clear();
        FromGrids(design.Derived.front().first);
        EXPECT_TRUE(platform.Messages.empty()) << platform.Messages.front().Text;
        for (const auto& [kind, value] : design.Derived) {
            EXPECT_TRUE(IsBluePar(PositionOf(kind))) << kind;
            EXPECT_NEAR(ReadNumber(ParText(kind)), ParseNumber(value), 6e-7) << kind;
            ParValue(PositionOf(kind)) = ReadNumber(ParText(kind));
        }
        EXPECT_NEAR(PowerNow(), design.Power, design.Tolerance);
        seen.insert(design.MenuNo);
    }
    EXPECT_EQ(seen.size(), 9U);
}

TEST_F(AnovaGrids, TypesOfDifferencesAreTheLargestAndTheSmallest) {
    EXPECT_EQ(EffectOf("1/4/2/8", 1), "7.0");
    EXPECT_EQ(EffectOf("1/4/2/8", 2), "1.0");
    // The stores hold 32 bits, of which nothing is to be seen.
    EXPECT_EQ(EffectOf("101.2/100.4/100.8/100.9", 1), "0.8");
    EXPECT_EQ(EffectOf("0/0/0/33.3", 1), "33.3");
}

// The difference of two means says less than all means: it never promises more power.
TEST_F(AnovaGrids, ADifferenceNeverPromisesMorePowerThanTheMeans) {
    for (const char* means : {"1/1/2/1", "1/1.5/2/1.7", "0/0/1/1", "3/2/1/0", "0.4/0/0.1/-0.3"}) {
        EffectOf(means, 0);
        const f64 ofMeans = PowerNow();
        for (i16 type = 1; type <= 2; ++type) {
            EffectOf(means, type);
            EXPECT_LE(PowerNow(), ofMeans + 1e-6) << means << ", " << type;
        }
    }
}

TEST_F(AnovaGrids, TheSizesOfGroupsWeighTheirMeansAndHaveToBeKnown) {
    OpenOneWay();
    Type(Kind::SizeK, "-");
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(platform.Texts().back(), "Sample Size k Has No Value.");
    OpenOneWay();
    Type(Kind::Size1, "-");
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(platform.Texts().back(), "Sample Size 1 Has No Value.");
    // Differences don't ask for them.
    OpenOneWay(1);
    Type(Kind::SizeK, "-");
    Plan("1/1/2/1");
    platform.Messages.clear();
    EXPECT_EQ(FromGrids(Kind::AnyMeanDifference), "1.0");
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(AnovaGrids, ASizeOnAnAxisIsNoWeight) {
    OpenOneWay();
    FileCommand(TableWindow);
    OpenPlain(oneWay);
    AcceptOptions();
    UnknownParNo = PowerParNo;
    XParNo = PositionOf(Kind::SizeK);
    platform.Messages.clear();
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Can't Be Calculated When Sample Size k Is the X-, Y-, or Z-axis."});
}

// With the ratio of the sizes the size itself may be what is solved for.
TEST_F(AnovaGrids, TheRatioOfTheSizesIsEnough) {
    OpenPlain(oneWay);
    Pick(Group::SizeK, 2);
    AcceptOptions();
    Put(Kind::NoOfGroups, "3");
    Put(Kind::SizeKOver1, "1");
    Type(Kind::Size1, "-");
    Plan("0/0/3");
    EXPECT_EQ(FromGrids(Kind::SdOfMeans), "1.414214");
}

TEST_F(AnovaGrids, AContrastHasToAddUpToNothingAndItsDeviationsAreAboveZero) {
    OpenContrast(oneWay);
    Put(Kind::NoOfGroups, "3");
    platform.Messages.clear();
    Plan("1 -0.5 -0.4");
    GetFromTable(PositionOf(Kind::ContrastMean));
    Plan("1 -0.5 -0.5");
    Plan("3 2 1/1 0 1");
    GetFromTable(PositionOf(Kind::ContrastMean));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Sum of Numbers in Row 1 Must Be = 0",
                                        "Standard Deviation in Cell  (2,2)  Must Be > 0."}));
}

TEST_F(AnovaGrids, AContrastOfAnInteractionAddsUpToNothingBothWays) {
    OpenPlain(twoWay);
    Pick(Group::TestedOfTwoFactors, interaction);
    Tick(Check::Contrast);
    AcceptOptions();
    Put(Kind::LevelsA, "2");
    Put(Kind::LevelsB, "2");
    platform.Messages.clear();
    Plan("1 -1/1 -1");
    GetFromTable(PositionOf(Kind::ContrastSd));
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Sum of Numbers in Column 1 Must Be = 0"});
}

TEST_F(AnovaGrids, CoefficientsOfNothingGiveNoContrast) {
    OpenContrast(oneWay);
    Put(Kind::NoOfGroups, "2");
    platform.Messages.clear();
    Plan("0 0");
    Plan("3 2/1 1");
    GetFromTable(PositionOf(Kind::ContrastMean));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "H1: Mean of c1X1+...+ckXk Can't Be Calculated from These Tables."});
}

// Mean and standard deviation of a contrast derive from the same grids.
TEST_F(AnovaGrids, TheDeviationOfAContrastIsThatOfItsGroups) {
    OpenContrast(oneWay);
    Put(Kind::NoOfGroups, "3");
    Plan("2 -1 -1");
    Plan("10 9 8/1 2 3");
    EXPECT_EQ(FromGrids(Kind::ContrastSd), "4.123106"); // sqrt(4 + 4 + 9)
    EXPECT_EQ(ParText(Kind::ContrastMean), "3.0");
}

// Coefficients with five decimals add up to 0 as near as that; means around 10000 don't see it.
TEST_F(AnovaGrids, RoundedCoefficientsCostNothingWhereMeansAreLarge) {
    OpenContrast(oneWay);
    Put(Kind::NoOfGroups, "4");
    Plan("1 -0.33333 -0.33333 -0.33333");
    Plan("10003 10000 10000 10000/1 1 1 1");
    EXPECT_NEAR(ReadNumber(FromGrids(Kind::ContrastMean)), 3, 1e-4);
}

// --- Statements ----------------------------------------------------------------------------------

TEST_F(Anova, TheStatementNamesTheEffectThatIsTestedAndTheModel) {
    OpenPlain(twoWay);
    Pick(Group::TestedOfTwoFactors, mainEffectB);
    Tick(Check::Additive);
    AcceptOptions();
    Put(Kind::SdOfMeans, "0.3");
    Put(Kind::Sd, "1");
    Put(Kind::LevelsA, "3");
    Put(Kind::LevelsB, "4");
    Put(Kind::AdditiveSizePerCell, "6");
    Solve(Kind::Power);
    EXPECT_EQ(SumStatement(),
              "With a sample size per cell of 6, the power is 0.53 when testing the null "
              "hypothesis H0: standard deviation of means = 0 (no main effect B) against H1: "
              "standard deviation of means = 0.3. For the design, the number of A-factor levels is "
              "3 and the number of B-factor levels is 4. The test used is ANOVA, Two-way, fixed "
              "effects test with additive effects at the significance level 0.05. The calculation "
              "is based on the assumption that the standard deviation is 1.");
}

TEST_F(Anova, TheStatementOfAnInteractionAndOfAContrastOfIt) {
    OpenPlain(blocksTwoFactors);
    Pick(Group::TestedOfTwoFactors, interaction);
    Pick(Group::EffectSize, 1);
    AcceptOptions();
    Solve(Kind::Power);
    EXPECT_NE(SumStatement().find("H0: all (mean i - mean j) = 0 (no interaction AxB) against H1: "
                                  "any (mean i - mean j) ="),
              std::string::npos)
        << SumStatement();
    OpenPlain(blocksTwoFactors);
    Tick(Check::Contrast);
    AcceptOptions();
    Solve(Kind::Power);
    EXPECT_NE(SumStatement().find("H0: mean of c1x1+...+ckxk = 0 (contrast of interaction AxB) "
                                  "against H1: mean of c1x1+...+ckxk ="),
              std::string::npos)
        << SumStatement();
    EXPECT_NE(SumStatement().find(
                  "ANOVA, Randomized Blocks, two factors test of a contrast, two-sided, at "
                  "the "),
              std::string::npos)
        << SumStatement();
}

TEST_F(Anova, TheStatementOfAnEquivalenceOfAContrast) {
    OpenPlain(oneWay);
    Tick(Check::Contrast);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    Put(Kind::MeanLeftLimit, "-0.5");
    Put(Kind::MeanRightLimit, "0.5");
    Put(Kind::ContrastMean, "0");
    Solve(Kind::Power);
    EXPECT_NE(SumStatement().find("H0: non-equivalence, with left equivalence limit = -0.5 and "
                                  "right equivalence limit = 0.5, against H1: mean of "
                                  "c1x1+...+ckxk = 0 (equivalence)."),
              std::string::npos)
        << SumStatement();
}

TEST_F(Anova, TheStatementSaysWhatSquaresAre) {
    OpenPlain(latinSquareBlocks);
    Tick(Check::RandomSquares);
    AcceptOptions();
    Solve(Kind::Power);
    EXPECT_NE(SumStatement().find("block factor test with random squares at the"),
              std::string::npos)
        << SumStatement();
}

} // namespace
} // namespace quorvanta::checks
