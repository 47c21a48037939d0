// The tests of agreement and of rank correlation: their lists, messages, edges and formulas.
//
// Figures of other origin come from scipy, as checks/reference/agreement.py forms them.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "numeric/simplex.h"
#include "ranksurv/testcohen.h"
#include "ranksurv/testcohengeneral.h"
#include "ranksurv/testcron.h"
#include "ranksurv/testkappa.h"
#include "ranksurv/testkendall.h"
#include "ranksurv/testlinsconc.h"
#include "ranksurv/testspear.h"
#include "support/number.h"
#include "support/solving_fixture.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuSpearman = 490;
constexpr i16 menuKendall = 491;
constexpr i16 menuIntraclass = 510;
constexpr i16 menuAlpha = 511;
constexpr i16 menuKappa = 512;
constexpr i16 menuCohen = 513;
constexpr i16 menuGeneral = 514;
constexpr i16 menuLin = 515;

// What the approximations of the F and of the normal distribution may be away from a power.
constexpr f64 fError = 2e-3;
constexpr f64 normalError = 3e-4;

AnalysisChoice Menu(i16 menuNo, i16 tails, std::map<i16, i16> groups = {}, i16 samples = OneSample,
                    std::vector<i16> checks = {}) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = samples;
    choice.NoOfTails = tails;
    choice.Groups = std::move(groups);
    choice.Checks = std::move(checks);
    return choice;
}

using Agreement = SolvingFixture;

// --- Parameter lists -----------------------------------------------------------------------------

TEST_F(Agreement, ListsOfOneCoefficient) {
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 186}, {1, 187}, {2, 188}})
        EXPECT_EQ(ListOf(Menu(menuSpearman, 2, {{23, option}})), (Kinds{0, 1, 185, kind, 14}));
    EXPECT_EQ(ListOf(Menu(menuSpearman, 3)), (Kinds{0, 1, 194, 195, 186, 14}));
    EXPECT_EQ(ListOf(Menu(menuKendall, 2, {{52, 0}})), (Kinds{0, 1, 331, 14}));
    EXPECT_EQ(ListOf(Menu(menuKendall, 1, {{52, 1}})), (Kinds{0, 1, 315, 14}));
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 32}, {1, 109}, {2, 144}})
        EXPECT_EQ(ListOf(Menu(menuIntraclass, 2, {{33, option}})),
                  (Kinds{0, 1, 28, kind, 223, 224}));
    EXPECT_EQ(ListOf(Menu(menuIntraclass, 3)), (Kinds{0, 1, 47, 48, 32, 223, 224}));
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 292}, {1, 293}, {2, 294}}) {
        EXPECT_EQ(ListOf(Menu(menuKappa, 2, {{48, option}})), (Kinds{0, 1, 291, kind, 102, 224}));
        EXPECT_EQ(ListOf(Menu(menuGeneral, 2, {{48, option}})),
                  (Kinds{0, 1, 291, kind, 337, 338, 201, 224}));
    }
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 104}, {1, 105}, {2, 106}}) {
        EXPECT_EQ(ListOf(Menu(menuCohen, 1, {{48, 0}, {12, option}})),
                  (Kinds{0, 1, 291, 292, 103, kind, 224}));
        EXPECT_EQ(ListOf(Menu(menuCohen, 3, {{12, option}})),
                  (Kinds{0, 1, 47, 48, 292, 103, kind, 224}));
    }
    EXPECT_EQ(ListOf(Menu(menuLin, 2, {{49, 0}, {50, 0}, {51, 0}})),
              (Kinds{0, 1, 295, 296, 299, 300, 303, 304, 224}));
    EXPECT_EQ(ListOf(Menu(menuLin, 1, {{49, 1}, {50, 2}, {51, 1}})),
              (Kinds{0, 1, 295, 297, 299, 302, 303, 305, 224}));
}

TEST_F(Agreement, ListsOfAlphas) {
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 272}, {1, 273}, {2, 274}})
        EXPECT_EQ(ListOf(Menu(menuAlpha, 2, {{44, option}})), (Kinds{0, 1, 271, kind, 280, 224}));
    EXPECT_EQ(ListOf(Menu(menuAlpha, 3)), (Kinds{0, 1, 47, 48, 272, 280, 224}));
    EXPECT_EQ(ListOf(Menu(menuAlpha, 2, {{45, 0}, {46, 1}, {2, 2}}, TwoSamples)),
              (Kinds{0, 1, 275, 276, 277, 281, 283, 4, 5}));
    EXPECT_EQ(ListOf(Menu(menuAlpha, 3, {{45, 2}, {46, 0}, {2, 0}}, TwoSamples)),
              (Kinds{0, 1, 71, 72, 276, 279, 281, 282, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuAlpha, 1, {{45, 1}}, TwoSamples, {Check::DependentSamples})),
              (Kinds{0, 1, 275, 276, 278, 280, 220, 224}));
    EXPECT_EQ(ListOf(Menu(menuAlpha, 3, {{45, 0}}, TwoSamples, {Check::DependentSamples})),
              (Kinds{0, 1, 71, 72, 276, 277, 280, 220, 224}));
}

// --- Edges ---------------------------------------------------------------------------------------

TEST_F(Agreement, EqualCoefficientsHaveTheLevelAsTheirPower) {
    for (const char* level : {"0.01", "0.05", "0.2"}) {
        const Values values{{0, level},
                            {Kind::H0Intraclass, "0.4"},
                            {Kind::H1Intraclass, "0.4"},
                            {Kind::NoOfRaters, "3"},
                            {Kind::NoOfSubjects, "25"},
                            {Kind::H0Alpha, "0.6"},
                            {Kind::H1Alpha, "0.6"},
                            {Kind::NoOfItems, "8"}};
        for (const i16 tails : {OneSided, TwoSided}) {
            EXPECT_NEAR(PowerOf(Menu(menuIntraclass, tails, {{33, 0}}), values), ParseNumber(level),
                        fError);
            EXPECT_NEAR(PowerOf(Menu(menuAlpha, tails, {{44, 0}}), values), ParseNumber(level),
                        fError);
        }
    }
}

TEST_F(Agreement, RhoOfANormalDistribution) {
    EXPECT_EQ(RhoFromR(1), 1.0F);
    EXPECT_EQ(RhoFromR(-1), -1.0F);
    EXPECT_EQ(RhoFromR(0), 0.0F);
    EXPECT_NEAR(RhoFromR(0.5F), 0.4825837, 1e-6); // 6/pi asin 0.25
}

TEST_F(Agreement, RankCorrelationInStandardErrors) {
    EXPECT_EQ(RankCorrZ(27, 0.6F, 0.6F), 0.0F);
    EXPECT_NEAR(RankCorrZ(27, 0.6F, 0), 3.75, 1e-5); // 0.6 * 5/0.8
    EXPECT_NEAR(RankCorrZ(27, 0.6F, 0.2F), 2.5, 1e-5);
}

TEST_F(Agreement, EvenConcordanceIsNoAssociation) {
    const AnalysisChoice concordance = Menu(menuKendall, 2, {{52, 1}});
    EXPECT_NEAR(PowerOf(concordance, {{Kind::SignificanceLevel, "0.05"},
                                      {Kind::H1ProbabilityOfConcordance, "0.5"},
                                      {Kind::SizeFrom4, "30"}}),
                0.05, normalError);
    EXPECT_NEAR(
        PowerOf(Menu(menuKendall, 2, {{52, 0}}),
                {{Kind::SignificanceLevel, "0.05"}, {Kind::H1Tau, "0"}, {Kind::SizeFrom4, "30"}}),
        0.05, normalError);
}

// tau = 2 p - 1: both forms are one test.
TEST_F(Agreement, TauAndConcordanceAgree) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H1Tau, "0.3"},
                        {Kind::H1ProbabilityOfConcordance, "0.65"},
                        {Kind::SizeFrom4, "30"}};
    const f64 byTau = PowerOf(Menu(menuKendall, 2, {{52, 0}}), values);
    EXPECT_NEAR(KendallSD, 0.128852, 1e-5); // sqrt(130/7830)
    EXPECT_NEAR(PowerOf(Menu(menuKendall, 2, {{52, 1}}), values), byTau, 1e-5);
    EXPECT_NEAR(KendallSD, 28.02528, 1e-4); // sqrt(870 * 65/72)
}

TEST_F(Agreement, AlphaRatios) {
    EXPECT_EQ(AlphaRatio(0.5F, 0.75F), 0.5F);
    EXPECT_EQ(AlphaRatio(1, 0.5F), 99999.0F);
}

// An alpha 2 above 1 is never reached: only the left limit counts, and the power is that of the
// one-sided test against it.
TEST_F(Agreement, AnEquivalenceLimitOfAlphaBeyond1IsNoneAtAll) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::ProportionDifferenceLeftLimit, "-0.1"},
                        {Kind::ProportionDifferenceRightLimit, "0.2"},
                        {Kind::H0Alpha2Minus1, "-0.1"},
                        {Kind::H1Alpha1, "0.85"},
                        {Kind::H1Alpha2, "0.85"},
                        {Kind::NoOfItems1, "10"},
                        {Kind::NoOfItems2, "10"},
                        {Kind::Size1, "80"},
                        {Kind::Size2, "80"}};
    const std::map<i16, i16> groups{{45, 0}, {46, 0}, {2, 0}};
    EXPECT_NEAR(PowerOf(Menu(menuAlpha, 3, groups, TwoSamples), values),
                PowerOf(Menu(menuAlpha, 1, groups, TwoSamples), values), 1e-6);
    // A limit cut to less than 1 would be reached by an alpha 2 next to it.
    const Values close{{Kind::SignificanceLevel, "0.05"},
                       {Kind::ProportionDifferenceLeftLimit, "-0.2"},
                       {Kind::ProportionDifferenceRightLimit, "0.2"},
                       {Kind::H0Alpha2Minus1, "-0.2"},
                       {Kind::H1Alpha1, "0.9"},
                       {Kind::H1Alpha2, "0.99999"},
                       {Kind::NoOfItems1, "3"},
                       {Kind::NoOfItems2, "3"},
                       {Kind::Size1, "5"},
                       {Kind::Size2, "5"}};
    const f64 power = PowerOf(Menu(menuAlpha, 3, groups, TwoSamples), close);
    EXPECT_NEAR(power, PowerOf(Menu(menuAlpha, 1, groups, TwoSamples), close), 1e-6);
    EXPECT_GT(power, 0.9);
}

// An H0 difference leaves both alphas within their guarded edges.
TEST_F(Agreement, ASearchForADifferenceOfAlphasKeepsThemWithinTheirEdges) {
    Start(Menu(menuAlpha, 2, {{45, 0}, {46, 0}, {2, 0}}, TwoSamples),
          {{Kind::H1Alpha1, "0.3"}, {Kind::H1Alpha2, "0.9"}});
    UnknownParNo = PositionOf(Kind::H0Alpha2Minus1);
    f64 lower = -0.99999;
    f64 upper = 0.99999;
    TESTCRON::SearchLimits(lower, upper);
    EXPECT_NEAR(lower, -0.29999, 1e-7);
    EXPECT_LE(upper, 0.69999 + 1e-7);
}

TEST_F(Agreement, ASearchForOneAlphaKeepsItsDegreesOfFreedom) {
    const AnalysisChoice choice = Menu(menuAlpha, 1, {{44, 0}});
    Start(choice, {{Kind::H0Alpha, "0.01"}, {Kind::H1Alpha, "0.99"}, {Kind::NoOfItems, "2"}});
    f64 lower = 2;
    f64 upper = 99999;
    UnknownParNo = PositionOf(Kind::NoOfSubjects);
    TESTCRON::SearchLimits(lower, upper);
    EXPECT_NEAR(lower, 4.00001, 1e-9);
    ParValue(PositionOf(Kind::NoOfItems)) = 30;
    lower = 2;
    TESTCRON::SearchLimits(lower, upper);
    EXPECT_NEAR(lower, 3.00001, 1e-9);
}

// --- What proportions, shifts and sizes allow ----------------------------------------------------

TEST_F(Agreement, AKappaThatTheProportionDoesNotAllowIsRefused) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.8"},
                        {Kind::H0Kappa, "-0.2"},
                        {Kind::H1Kappa, "0.1"},
                        {Kind::Proportion, "0.1"}};
    EXPECT_EQ(MessageOf(Menu(menuKappa, 1, {{48, 0}}), values, Kind::NoOfSubjects),
              "H0: Kappa Has To Be Greater Than or Equal to -0.111111.");
    EXPECT_EQ(
        MessageOf(
            LeftOf(Menu(menuKappa, 1, {{48, 1}})),
            {{Kind::H0Kappa, "0.1"}, {Kind::H1KappaMinusH0, "-0.3"}, {Kind::Proportion, "0.1"}},
            Kind::NoOfSubjects),
        "H1: Kappa - H0: Kappa Has To Be Greater Than or Equal to -0.211111.");
    EXPECT_NEAR(LeastKappa(0.1), -1.0 / 9, 1e-12);
    EXPECT_NEAR(LeastKappa(0.5), -1, 1e-12);
}

TEST_F(Agreement, AKappaThatTheRatersDoNotAllowIsRefused) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.8"},
                        {Kind::H0Kappa, "0.3"},
                        {Kind::H1Kappa, "0.5"},
                        {Kind::Proportion1, "0.5"},
                        {Kind::Proportion2, "0.8"}};
    EXPECT_EQ(MessageOf(Menu(menuCohen, 2, {{48, 0}, {12, 0}}), values, Kind::NoOfSubjects),
              "H1: Kappa Has To Be Less Than or Equal to 0.4.");
    const Range range = CohenRange(0.5, 0.8);
    EXPECT_NEAR(range.Max, 0.4, 1e-12);
    EXPECT_NEAR(range.Min, -0.4, 1e-12);
    // A proportion is found only where both kappas are possible.
    const f64 found = SolutionOf(Menu(menuCohen, 2, {{48, 0}, {12, 0}}),
                                 {{Kind::SignificanceLevel, "0.05"},
                                  {Kind::Power, "0.6"},
                                  {Kind::H0Kappa, "0.3"},
                                  {Kind::H1Kappa, "0.5"},
                                  {Kind::Proportion1, "0.4"},
                                  {Kind::NoOfSubjects, "110"}},
                                 Kind::Proportion2);
    ASSERT_NE(found, NoValue);
    EXPECT_LE(0.5, CohenRange(0.4, found).Max + 1e-6);
}

TEST_F(Agreement, AConcordanceAboveItsAccuracyIsRefused) {
    const Values values{{Kind::SignificanceLevel, "0.05"}, {Kind::Power, "0.8"},
                        {Kind::H0Concordance, "0.3"},      {Kind::H1Concordance, "0.6"},
                        {Kind::H0LocationShift, "1"},      {Kind::H1LocationShift, "1.2"},
                        {Kind::H0ScaleShift, "1"},         {Kind::H1ScaleShift, "1"}};
    // 2/(2 + 1.44)
    EXPECT_EQ(MessageOf(Menu(menuLin, 2, {{49, 0}, {50, 0}, {51, 0}}), values, Kind::NoOfSubjects),
              "H1: Concordance Coefficient Has To Be Less Than or Equal to 0.581395.");
    EXPECT_DOUBLE_EQ(LinAccuracy(0, 1), 1);
    EXPECT_NEAR(LinAccuracy(1, 1), 2.0 / 3, 1e-12);
    EXPECT_DOUBLE_EQ(LinAccuracy(0.3, 2), LinAccuracy(0.3, 0.5));
}

TEST_F(Agreement, AConcordanceNeedsThreeSubjects) {
    const Values values{{Kind::SignificanceLevel, "0.05"}, {Kind::H0Concordance, "0.3"},
                        {Kind::H1Concordance, "0.5"},      {Kind::H0LocationShift, "0"},
                        {Kind::H1LocationShift, "0"},      {Kind::H0ScaleShift, "1"},
                        {Kind::H1ScaleShift, "1"},         {Kind::NoOfSubjects, "2"}};
    EXPECT_EQ(MessageOf(Menu(menuLin, 2, {{49, 0}, {50, 0}, {51, 0}}), values, Kind::Power),
              "Number of Subjects Has To Be Greater Than or Equal to 3.");
    EXPECT_EQ(MessageOf(Menu(menuAlpha, 2, {{45, 0}}, TwoSamples, {Check::DependentSamples}),
                        {{Kind::NoOfSubjects, "2"}}, Kind::Power),
              "Number of Subjects Has To Be Greater Than or Equal to 3.");
}

TEST_F(Agreement, LimitsOfAnEquivalenceAreInOrder) {
    for (const i16 menu : {menuIntraclass, menuAlpha, menuCohen}) {
        const std::map<i16, i16> groups =
            menu == menuCohen ? std::map<i16, i16>{{12, 0}} : std::map<i16, i16>{};
        EXPECT_EQ(
            MessageOf(Menu(menu, 3, groups),
                      {{Kind::ProportionLeftLimit, "0.8"}, {Kind::ProportionRightLimit, "0.7"}},
                      Kind::Power),
            "H0: Left Equivalence Limit Has To Be Less Than or Equal to 0.7.");
    }
}

// --- Variances -----------------------------------------------------------------------------------

// Bloch and Kraemer (1989), as Donner and Eliasziw (1992) print it.
TEST_F(Agreement, VarianceOfAnIntraclassKappa) {
    for (const f64 pi : {0.05, 0.3, 0.5, 0.8})
        for (const f64 kappa : {0.0, 0.2, 0.6, 0.95}) {
            const f64 published = (1 - kappa) * ((1 - kappa) * (1 - 2 * kappa) +
                                                 kappa * (2 - kappa) / (2 * pi * (1 - pi)));
            EXPECT_NEAR(KappaVar(kappa, pi), published, 1e-10) << kappa << " at " << pi;
        }
    EXPECT_EQ(KappaVar(-1, 0.5), 0);
}

TEST_F(Agreement, VarianceOfCohensKappa) {
    EXPECT_NEAR(CohenVar(0.4, 0.3, 0.35), 0.933880165, 1e-8);
    // Chance agreement alone: pe (1 + pe) - sum of products of margins (Fleiss et al. 1969, eq.
    // 14).
    const f64 a = 0.3;
    const f64 b = 0.4;
    const f64 pe = a * b + (1 - a) * (1 - b);
    const f64 products = a * b * (a + b) + (1 - a) * (1 - b) * (2 - a - b);
    EXPECT_NEAR(CohenVar(0, a, b), (pe + pe * pe - products) / (1 - pe) / (1 - pe), 1e-12);
    EXPECT_EQ(CohenVar(1, 0.3, 0.3), 0);
}

// linprog of scipy, and the delta method on the table that it finds.
TEST_F(Agreement, LargestVarianceOfCohensKappa) {
    const auto largest = [](f64 kappa, std::vector<f64> first, std::vector<f64> second) {
        return LargestCohenVar(kappa, {std::move(first), std::move(second)});
    };
    EXPECT_NEAR(largest(0.4, {0.3, 0.7}, {0.35, 0.65}), 0.933880165, 1e-8);
    EXPECT_NEAR(largest(0.6, {0.2, 0.3, 0.5}, {0.2, 0.3, 0.5}), 0.527650364, 1e-8);
    EXPECT_NEAR(largest(0.4, {0.2, 0.3, 0.5}, {0.3, 0.3, 0.4}), 0.594773965, 1e-8);
    EXPECT_NEAR(largest(0, {0.25, 0.25, 0.25, 0.25}, {0.1, 0.2, 0.3, 0.4}), 0.435555556, 1e-8);
    EXPECT_NEAR(largest(0.7, {0.1, 0.1, 0.2, 0.2, 0.4}, {0.12, 0.1, 0.18, 0.22, 0.38}), 0.337991749,
                1e-8);
    EXPECT_NEAR(largest(-0.1, {0.2, 0.3, 0.5}, {0.2, 0.3, 0.5}), 0.7710359, 1e-7);
    std::vector<f64> first;
    std::vector<f64> second;
    for (int i = 1; i <= 10; ++i) {
        first.push_back(i / 55.0);
        second.push_back(0.1);
    }
    EXPECT_NEAR(largest(0.5, first, second), 0.308795021, 1e-8);
    EXPECT_EQ(largest(0.9, first, second), NoValue);
}

TEST_F(Agreement, VarianceOfAConcordance) {
    // Without shifts that of Fisher's z of a correlation, and of nothing it is that of no shift.
    EXPECT_NEAR(LinVar(52, 0, 1, 0), 1.0 / 50, 1e-12);
    // As printed by Lin, with the corrections of 2000: rho = 0.8/0.9.
    const f64 c = 2 / (2 + 2.0 / 9);
    const f64 r = 0.8;
    const f64 rho = r / c;
    const f64 u2 = 2.0 / 9;
    const f64 w = 1 - r * r;
    const f64 printed =
        ((1 - rho * rho) * r * r / (w * rho * rho) + 2 * r * r * r * (1 - r) * u2 / (rho * w * w) -
         r * r * r * r * u2 * u2 / (2 * rho * rho * w * w)) /
        50;
    EXPECT_NEAR(LinVar(52, rho, c, std::sqrt(u2)), printed, 1e-12);
}

// With four pairs the approximations of t see more power than with the next sizes: a search for a
// size looks beyond. scipy has 190.1.
TEST_F(Agreement, ASizeIsFoundThoughTheLeastOneSeemsToBeEnough) {
    const AnalysisChoice test = Menu(menuSpearman, TwoSided, {{Group::H1Correlation, AsValue}});
    Values values{{Kind::SignificanceLevel, "0.05"},
                  {Kind::H0Correlation, "0"},
                  {Kind::H1Correlation, "0.05"},
                  {Kind::SizeFrom4, "4"}};
    EXPECT_GT(PowerOf(test, values), 0.1);
    values[Kind::SizeFrom4] = "10";
    EXPECT_LT(PowerOf(test, values), 0.1);
    Type(Kind::Power, "0.1");
    EXPECT_NEAR(ReadNumber(Solve(Kind::SizeFrom4)), 191, 1);
}

// A difference that is kept is seen least between a correlation below and one above: the test of a
// larger correlation looks above, that of a smaller one below.
TEST_F(Agreement, ACorrelationUnderH0IsSoughtOnTheSideOfItsTail) {
    const auto sought = [this](const AnalysisChoice& test, const char* null, const char* more) {
        PowerOf(test, {{Kind::SignificanceLevel, "0.05"},
                       {Kind::H0Correlation, null},
                       {Kind::H1CorrelationMinusH0, more},
                       {Kind::SizeFrom4, "40"}});
        return ReadNumber(Solve(Kind::H0Correlation));
    };
    const auto test = [](i16 tails) {
        return Menu(menuSpearman, tails, {{Group::H1Correlation, AsDifference}});
    };
    for (const i16 tails : {OneSided, TwoSided})
        for (const char* null : {"0.5", "-0.65"})
            EXPECT_GT(sought(test(tails), null, "0.2"), 0.2) << tails << ' ' << null;
    for (const char* null : {"-0.5", "0.65"})
        EXPECT_LT(sought(LeftOf(test(OneSided)), null, "-0.2"), -0.2) << null;
}

// Where H1 leaves the estimate no variance the direction decides, and not that there is none: total
// disagreement of two raters, and a perfect correlation of measurements on different scales.
TEST_F(Agreement, WithoutVarianceUnderH1TheDirectionDecides) {
    const AnalysisChoice kappa = Menu(menuKappa, OneSided, {{48, 0}});
    const Values disagreement{{Kind::SignificanceLevel, "0.05"},
                              {Kind::H0Kappa, "0.2"},
                              {Kind::H1Kappa, "-1"},
                              {Kind::Proportion, "0.5"},
                              {Kind::NoOfSubjects, "100"}};
    EXPECT_EQ(PowerOf(kappa, disagreement), 0);
    EXPECT_EQ(PowerOf(LeftOf(kappa), disagreement), 1);
    const AnalysisChoice lin = Menu(menuLin, OneSided, {{49, 0}, {50, 0}, {51, 0}});
    const Values scales{{Kind::SignificanceLevel, "0.05"}, {Kind::H0Concordance, "0.9"},
                        {Kind::H1Concordance, "0.8"},      {Kind::H0LocationShift, "0"},
                        {Kind::H1LocationShift, "0"},      {Kind::H0ScaleShift, "1"},
                        {Kind::H1ScaleShift, "2"},         {Kind::NoOfSubjects, "100"}};
    EXPECT_EQ(PowerOf(lin, scales), 0);
    EXPECT_EQ(PowerOf(LeftOf(lin), scales), 1);
    // Two tails reject what lies beyond the critical value only.
    const AnalysisChoice twoTails = Menu(menuKappa, TwoSided, {{48, 0}});
    EXPECT_EQ(PowerOf(twoTails, {{Kind::SignificanceLevel, "0.05"},
                                 {Kind::H0Kappa, "-0.5"},
                                 {Kind::H1Kappa, "-1"},
                                 {Kind::Proportion, "0.5"},
                                 {Kind::NoOfSubjects, "4"}}),
              0);
    EXPECT_EQ(PowerOf(twoTails, disagreement), 1);
}

// --- Linear programming --------------------------------------------------------------------------

TEST_F(Agreement, LinearProgramming) {
    // Maximise 3x + 5y under x <= 4, 2y <= 12, 3x + 2y <= 18 (Dantzig's school example): 36.
    const std::vector<f64> weights{3, 5, 0, 0, 0};
    const LinearConditions conditions{{{1, 0, 1, 0, 0}, {0, 2, 0, 1, 0}, {3, 2, 0, 0, 1}},
                                      {4, 12, 18}};
    EXPECT_NEAR(LargestSum(weights, conditions).value_or(0), 36, 1e-12);
    // A condition twice, and one that contradicts it.
    EXPECT_NEAR(LargestSum({1, 2}, {{{1, 1}, {2, 2}}, {1, 2}}).value_or(0), 2, 1e-12);
    EXPECT_FALSE(LargestSum({1, 2}, {{{1, 1}, {1, 1}}, {1, 2}}).has_value());
}

// --- The grid of margins -------------------------------------------------------------------------

class AgreementGrid : public Agreement {
  protected:
    void Fill(const std::vector<std::vector<std::string>>& rows) {
        platform.GridFillings.emplace_back([rows] {
            for (std::size_t i = 0; i < rows.size(); ++i)
                for (std::size_t j = 0; j < rows[i].size(); ++j)
                    GridOK(static_cast<i16>(i + 1), static_cast<i16>(j + 1), rows[i][j],
                           Leaving::Nothing);
            return !AcceptGrid().has_value();
        });
    }
};

TEST_F(AgreementGrid, MarginsGiveBothVariances) {
    Start(Menu(menuGeneral, 2, {{48, 0}}),
          {{Kind::H0Kappa, "0.4"}, {Kind::H1Kappa, "0.6"}, {Kind::NoOfCategories, "3"}});
    Fill({{"0.2", "0.3", "0.5"}, {"0.2", "0.3", "0.5"}});
    EXPECT_TRUE(IsBluePar(PositionOf(Kind::H0KappaVariance)));
    EXPECT_TRUE(IsBluePar(PositionOf(Kind::H1KappaVariance)));
    EXPECT_FALSE(IsBluePar(PositionOf(Kind::NoOfCategories)));
    GetFromTable(PositionOf(Kind::H1KappaVariance));
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_NEAR(ParseNumber(ParText(Kind::H1KappaVariance)), 0.527650364, 1e-6);
    const RaterMargins margins{{0.2, 0.3, 0.5}, {0.2, 0.3, 0.5}};
    EXPECT_NEAR(ParseNumber(ParText(Kind::H0KappaVariance)), LargestCohenVar(0.4, margins), 1e-6);
}

// Examples of the R package irr, N2.cohen.kappa, which takes the sizes of V. F. Flack, A. A. Afifi,
// P. A. Lachenbruch and H. J. A. Schouten, Psychometrika 53, 1988, 321-325: 101, 136 and 18.
TEST_F(AgreementGrid, SizesOfPublishedRatings) {
    const auto size = [this](const std::vector<std::string>& margins, const Values& values) {
        Start(Menu(menuGeneral, OneSided, {{48, 0}}), values);
        TypedParText(PositionOf(Kind::NoOfCategories), std::to_string(margins.size()));
        Fill({margins, margins});
        GetFromTable(PositionOf(Kind::H0KappaVariance));
        SolveFor(PositionOf(Kind::NoOfSubjects));
        return ParText(Kind::NoOfSubjects);
    };
    Values values{{Kind::SignificanceLevel, "0.05"},
                  {Kind::Power, "0.8"},
                  {Kind::H0Kappa, "0.4"},
                  {Kind::H1Kappa, "0.6"}};
    EXPECT_EQ(size({"0.2", "0.25", "0.55"}, values), "101");
    values[1] = "0.9";
    EXPECT_EQ(size({"0.2", "0.25", "0.55"}, values), "136");
    EXPECT_EQ(size({"0.2", "0.05", "0.2", "0.05", "0.2", "0.3"}, {{Kind::SignificanceLevel, "0.05"},
                                                                  {Kind::Power, "0.8"},
                                                                  {Kind::H0Kappa, "0.1"},
                                                                  {Kind::H1Kappa, "0.5"}}),
              "18");
}

// With two categories the general rating is the dichotomous one.
TEST_F(AgreementGrid, TwoCategoriesAreADichotomousRating) {
    Start(Menu(menuGeneral, 2, {{48, 1}}),
          {{Kind::H0Kappa, "0.4"}, {Kind::H1KappaMinusH0, "0.2"}, {Kind::NoOfCategories, "2"}});
    Fill({{"0.3", "0.7"}, {"0.35", "0.65"}});
    GetFromTable(PositionOf(Kind::H0KappaVariance));
    EXPECT_NEAR(ParseNumber(ParText(Kind::H0KappaVariance)), CohenVar(0.4, 0.3, 0.35), 1e-6);
    EXPECT_NEAR(ParseNumber(ParText(Kind::H1KappaVariance)), CohenVar(0.6, 0.3, 0.35), 1e-6);
}

TEST_F(AgreementGrid, AKappaThatTheMarginsDoNotAllowIsRefused) {
    Start(Menu(menuGeneral, 2, {{48, 0}}),
          {{Kind::H0Kappa, "0.1"}, {Kind::H1Kappa, "0.5"}, {Kind::NoOfCategories, "2"}});
    Fill({{"0.5", "0.5"}, {"0.8", "0.2"}});
    const std::string before = ParText(Kind::H1KappaVariance);
    GetFromTable(PositionOf(Kind::H1KappaVariance));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{
                  "H1: Kappa Has To Be Less Than or Equal to 0.4.",
                  "H1: Variance Component of Kappa Can't Be Calculated from These Tables."}));
    EXPECT_EQ(ParText(Kind::H1KappaVariance), before);
}

TEST_F(AgreementGrid, OneCategoryOfBothRatersIsRefused) {
    Start(Menu(menuGeneral, 2, {{48, 0}}), {{Kind::NoOfCategories, "2"}});
    Fill({{"1", "0"}, {"1", "0"}});
    GetFromTable(PositionOf(Kind::H0KappaVariance));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{
                  "H0: Variance Component of Kappa Can't Be Calculated from These Tables."}));
}

} // namespace
} // namespace quorvanta::checks
