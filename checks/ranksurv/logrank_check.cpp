// The log-rank tests and the tests of exponential survival: lists, messages, edges, reductions.
//
// Powers and sizes are held against numerical integration and simulation in checks/data/validation.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "output/statement.h"
#include "ranksurv/accrual.h"
#include "ranksurv/testlogrank.h"
#include "ranksurv/testlogranknoninf.h"
#include "ranksurv/testlogranknonparam.h"
#include "ranksurv/testlogrankstrat.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/properties.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuSchoenfeld = 400;
constexpr i16 menuFreedman = 401;
constexpr i16 menuLachin = 402;
constexpr i16 menuGeorge = 403;
constexpr i16 menuRubenstein = 404;
constexpr i16 menuNonInferiority = 410;
constexpr i16 menuStrata = 420;
constexpr i16 menuStrataLachin = 421;
constexpr i16 menuStrataGeorge = 422;
constexpr i16 menuStrataRubenstein = 423;
constexpr i16 menuMlLachin = 150;
constexpr i16 menuMlGeorge = 151;
constexpr i16 menuMlRubenstein = 152;
constexpr i16 menuEquivalence = 804;
constexpr i16 menuIntervalNonInferiority = 834;

constexpr std::initializer_list<i16> twoSampleMenus{menuLachin,   menuGeorge,   menuRubenstein,
                                                    menuMlLachin, menuMlGeorge, menuMlRubenstein};

constexpr f64 normalError = 3e-4; // of a power
constexpr f64 rounding = 1e-5;    // of a power, by 32 bits on the way

AnalysisChoice Menu(i16 menuNo, i16 tails, std::map<i16, i16> groups = {},
                    std::vector<i16> checks = {}, i16 samples = TwoSamples) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = samples;
    choice.NoOfTails = tails;
    choice.Groups = std::move(groups);
    choice.Checks = std::move(checks);
    return choice;
}

AnalysisChoice LeftOf(AnalysisChoice choice) {
    choice.Left = true;
    return choice;
}

class LogRank : public AnalysisFixture {
  protected:
    using Kinds = std::vector<i16>;

    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    static Kinds ListOf(const AnalysisChoice& choice) {
        Start(choice, {});
        Kinds kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        return kinds;
    }

    // The unrounded solution; 99999 if there is none.
    f64 SolutionOf(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        Start(choice, values);
        return SolutionHere(unknown);
    }
    f64 SolutionHere(i16 unknown) {
        platform.Messages.clear();
        Calculated = False;
        SolveFor(PositionOf(unknown));
        return HasValue(ParText(unknown)) ? ParValue(UnknownParNo) : NoValue;
    }
    f64 PowerOf(const AnalysisChoice& choice, const Values& values) {
        return SolutionOf(choice, values, Kind::Power);
    }
    std::string LastMessage() const {
        return platform.Messages.empty() ? "" : platform.Messages.back().Text;
    }
    std::string MessageOf(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        EXPECT_EQ(SolutionOf(choice, values, unknown), NoValue);
        return LastMessage();
    }

    // Types the rows into the grids that a blue parameter opens, one grid after the other. False
    // where a grid refuses.
    bool Fill(i16 kind, const std::vector<std::vector<std::vector<std::string>>>& grids) {
        bool accepted = true;
        platform.GridFillings.clear();
        for (const auto& rows : grids)
            platform.GridFillings.push_back([&accepted, rows] {
                for (std::size_t i = 0; i < rows.size(); ++i)
                    for (std::size_t j = 0; j < rows[i].size(); ++j)
                        GridOK(static_cast<i16>(i + 1), static_cast<i16>(j + 1), rows[i][j],
                               Leaving::Nothing);
                const bool good = !AcceptGrid();
                accepted = accepted && good;
                return good;
            });
        platform.Messages.clear();
        GetFromTable(PositionOf(kind));
        return accepted;
    }
};

// Uniform accrual over 3 of 5 years, losses.
const Values plan{{Kind::SignificanceLevel, "0.05"},
                  {Kind::Power, "0.8"},
                  {Kind::H0Rate2Minus1, "0"},
                  {Kind::H0Rate2Over1, "1"},
                  {Kind::H1Rate1, "0.3"},
                  {Kind::H1Rate2, "0.45"},
                  {Kind::LossRate1, "0.1"},
                  {Kind::LossRate2, "0.2"},
                  {Kind::AccrualRate, "0"},
                  {Kind::AccrualTime, "3"},
                  {Kind::TotalStudyTime, "5"},
                  {Kind::Size1, "150"},
                  {Kind::Size2, "100"},
                  {Kind::Size2Over1, "0.8"},
                  {Kind::TotalSize, "250"}};

Values With(Values values, const Values& others) {
    for (const auto& [kind, text] : others)
        values[kind] = text;
    return values;
}

const std::map<i16, i16> plainForms{{5, 0}, {8, 0}, {2, 0}, {55, 0}};

// --- Parameter lists -----------------------------------------------------------------------------

TEST_F(LogRank, ListsOfTwoHazards) {
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{5, 0}, {8, 0}, {2, 0}, {55, 0}})),
              (Kinds{0, 1, 64, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 1, {{5, 1}, {8, 1}, {2, 1}, {55, 0}}, {28})),
              (Kinds{0, 1, 64, 9, 65, 13, 46, 343, 10, 11, 4, 38}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{5, 2}, {8, 2}, {55, 0}}, {35})),
              (Kinds{0, 1, 64, 9, 74, 13, 49, 33, 10, 11, 320, 5}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{5, 0}, {55, 1}})), (Kinds{0, 1, 64, 9, 73, 99, 5}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{5, 0}, {55, 2}})), (Kinds{0, 1, 64, 9, 73, 347, 174}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 3, plainForms)),
              (Kinds{0, 1, 77, 78, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{7, 1}, {30, 2}, {2, 2}, {55, 0}}, {3})),
              (Kinds{0, 1, 67, 53, 68, 119, 122, 33, 10, 11, 4, 5}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 3, {{7, 0}, {30, 0}, {2, 0}, {55, 0}}, {3})),
              (Kinds{0, 1, 71, 72, 53, 79, 119, 120, 33, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 2, {{10, 1}, {8, 0}, {2, 0}, {55, 0}}, {12})),
              (Kinds{0, 1, 370, 94, 96, 13, 45, 33, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuLachin, 3, {{10, 0}, {8, 0}, {2, 0}, {55, 0}}, {12})),
              (Kinds{0, 1, 6, 7, 94, 95, 13, 45, 33, 10, 11, 4, 37}));
    for (const i16 menuNo : {menuGeorge, menuRubenstein, menuMlGeorge, menuMlRubenstein}) {
        EXPECT_EQ(ListOf(Menu(menuNo, 2, plainForms)),
                  (Kinds{0, 1, 332, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
        EXPECT_EQ(ListOf(Menu(menuNo, 3, plainForms)),
                  (Kinds{0, 1, 29, 30, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {{7, 0}, {30, 1}, {2, 0}, {55, 0}}, {3})),
                  (Kinds{0, 1, 333, 53, 79, 119, 121, 33, 10, 11, 4, 37}));
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {{10, 0}, {8, 0}, {2, 0}, {55, 0}}, {12})),
                  (Kinds{0, 1, 93, 94, 95, 13, 45, 33, 10, 11, 4, 37}));
        EXPECT_EQ(ListOf(Menu(menuNo, 3, {{10, 0}, {8, 0}, {2, 0}, {55, 0}}, {12})),
                  (Kinds{0, 1, 97, 98, 94, 95, 13, 45, 33, 10, 11, 4, 37}));
    }
    EXPECT_EQ(ListOf(Menu(menuEquivalence, 3, {{5, 0}, {8, 0}, {2, 0}})),
              (Kinds{321, 318, 29, 30, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuIntervalNonInferiority, 1, {{5, 0}, {8, 0}, {2, 0}})),
              (Kinds{321, 318, 319, 9, 73, 13, 45, 33, 10, 11, 4, 37}));
}

TEST_F(LogRank, ListsOfOneHazard) {
    const auto one = [](i16 tails, std::map<i16, i16> groups, std::vector<i16> checks = {}) {
        return ListOf(Menu(menuMlGeorge, tails, std::move(groups), std::move(checks), OneSample));
    };
    EXPECT_EQ(one(2, {{4, 0}, {55, 0}}), (Kinds{0, 1, 63, 81, 84, 33, 10, 11, 85}));
    EXPECT_EQ(one(2, {{4, 1}, {55, 0}}, {28}), (Kinds{0, 1, 63, 43, 84, 343, 10, 11, 85}));
    EXPECT_EQ(one(2, {{6, 2}, {55, 0}}, {3}), (Kinds{0, 1, 66, 56, 118, 33, 10, 11, 85}));
    EXPECT_EQ(one(2, {{9, 1}, {55, 0}}, {12}), (Kinds{0, 1, 89, 91, 84, 33, 10, 11, 85}));
    EXPECT_EQ(one(1, {{4, 2}, {55, 1}}), (Kinds{0, 1, 63, 44, 99}));
    EXPECT_EQ(one(1, {{4, 2}, {55, 2}}), (Kinds{0, 1, 63, 44, 347}));
    EXPECT_EQ(one(3, {{55, 0}}), (Kinds{0, 1, 75, 76, 81, 84, 33, 10, 11, 85}));
    EXPECT_EQ(one(3, {{55, 0}}, {3}), (Kinds{0, 1, 47, 48, 82, 118, 33, 10, 11, 85}));
    EXPECT_EQ(one(3, {{55, 0}}, {12}), (Kinds{0, 1, 166, 167, 90, 84, 33, 10, 11, 85}));
}

TEST_F(LogRank, ListsWithoutASurvivalModelAndOfStrata) {
    for (const i16 menuNo : {menuSchoenfeld, menuFreedman}) {
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {}, {4, 33})), (Kinds{0, 1, 264, 99, 5}));
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {{12, 1}}, {4})), (Kinds{0, 1, 353, 355, 99, 5}));
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {{2, 1}}, {33})), (Kinds{0, 1, 353, 264, 348, 4, 38}));
        EXPECT_EQ(ListOf(Menu(menuNo, 2, {}, {33, 35})), (Kinds{0, 1, 353, 264, 348, 320, 5}));
        EXPECT_EQ(ListOf(Menu(menuNo, 1, {{12, 2}, {2, 0}})), (Kinds{0, 1, 353, 356, 348, 4, 37}));
        EXPECT_EQ(ListOf(Menu(menuNo, 1, {{12, 0}}, {35})), (Kinds{0, 1, 353, 354, 348, 320, 5}));
    }
    EXPECT_EQ(ListOf(Menu(menuNonInferiority, 1, {{12, 0}}, {4})),
              (Kinds{0, 1, 350, 353, 354, 99, 5}));
    EXPECT_EQ(ListOf(Menu(menuNonInferiority, 1, {{2, 0}})),
              (Kinds{0, 1, 350, 264, 9, 10, 11, 4, 37}));
    EXPECT_EQ(ListOf(Menu(menuNonInferiority, 1, {}, {35})),
              (Kinds{0, 1, 350, 264, 9, 10, 11, 320, 5}));
    EXPECT_EQ(ListOf(Menu(menuStrata, 2)), (Kinds{0, 1, 352, 340, 310, 320}));
    EXPECT_EQ(ListOf(Menu(menuStrataLachin, 2)),
              (Kinds{0, 1, 339, 340, 341, 310, 33, 10, 11, 320}));
    EXPECT_EQ(ListOf(Menu(menuStrataLachin, 2, {}, {3})),
              (Kinds{0, 1, 342, 340, 341, 310, 33, 10, 11, 320}));
    EXPECT_EQ(ListOf(Menu(menuStrataGeorge, 2)),
              (Kinds{0, 1, 352, 340, 341, 310, 33, 10, 11, 320}));
    EXPECT_EQ(ListOf(Menu(menuStrataRubenstein, 2)), (Kinds{0, 1, 352, 341, 310, 33, 10, 11, 320}));
}

TEST_F(LogRank, TheApproachIsThatOfTheTestNumber) {
    const std::map<i16, std::vector<i16>> tests{
        {1, {179, 200}},    {2, {36}},
        {3, {201}},         {4, {31, 85, 90, 95, 100, 180, 331}},
        {5, {181, 202}},    {6, {37, 127, 182}},
        {7, {203}},         {8, {204}},
        {9, {205, 77, 84}}, {10, {183, 184, 185, 186, 187}},
        {0, {0, 62}}};
    for (const auto& [kind, numbers] : tests)
        for (const i16 number : numbers)
            EXPECT_EQ(HazardApproach(number), kind) << number;
}

// --- HazardVar -----------------------------------------------------------------------------------

// Uniform accrual until the end of the study: D = 1 - (1 - E2)/(c R).
TEST_F(LogRank, VarianceWhenAccrualLastsAllTheStudy) {
    Start(Menu(menuLachin, 2, plainForms), With(plan, {{Kind::AccrualTime, "5"}}));
    const f64 c = 0.3 + 0.1;
    const f64 left = 1 - (1 - std::exp(-c * 5)) / (c * 5);
    EXPECT_NEAR(HazardVar(0.3F, 0.1F), c * 0.3 / left, 1e-6);
    EXPECT_EQ(LRAccrualKind(), UniformAccrual);
}

// All patients from the start: the accrual time is then shown to the equation as 1e-5.
TEST_F(LogRank, VarianceWithoutAccrual) {
    Start(Menu(menuLachin, 2, plainForms), With(plan, {{Kind::AccrualTime, "0"}}));
    EXPECT_NEAR(HazardVar(0.3F, 0), 0.09 / (1 - std::exp(-0.3 * 5)), 1e-5);
    EXPECT_EQ(ParValue(PositionOf(Kind::AccrualTime)), f64{1e-5F});
    EXPECT_NEAR(HazardVar(0.3F, 0), 0.09 / (1 - std::exp(-0.3 * 5)), 1e-5);
}

// 1 - x/2 + ... of the share that leaves is all that is left of it.
TEST_F(LogRank, RareEventsAndShortAccrualHaveAnExactVariance) {
    for (const f64 rate : {1e-9, 1e-7, 1e-5})
        for (const f64 accrual : {1e-4, 0.5, 2.0})
            EXPECT_NEAR(ShareLeaving(rate, 0, accrual, 2) / (rate * (2 - accrual / 2)), 1, 2e-5);
    EXPECT_NEAR(ShareLeaving(1e-3, 0, 1e-4, 1000), 1 - std::exp(-1.0), 1e-6);
}

// A rate of accrual that is none, or that equals the rate of leaving, is no exception.
TEST_F(LogRank, ExponentialAccrualHasNoGaps) {
    for (const f64 study : {1.5, 4.0}) {
        EXPECT_NEAR(ShareLeaving(0.4, 1e-7, 3, study), ShareLeaving(0.4, 0, 3, study), 1e-6);
        EXPECT_NEAR(ShareLeaving(0.4, -1e-7, 3, study), ShareLeaving(0.4, 0, 3, study), 1e-6);
        const f64 before = ShareLeaving(0.4, 0.4 - 1e-6, 3, study);
        EXPECT_NEAR(ShareLeaving(0.4, 0.4, 3, study), before, 1e-6);
    }
    // Nearly all at once, at the beginning and at the end.
    EXPECT_NEAR(ShareLeaving(0.4, 99, 3, 5), 1 - std::exp(-0.4 * 5), 5e-3);
    EXPECT_NEAR(ShareLeaving(0.4, -99, 3, 5), 1 - std::exp(-0.4 * 2), 5e-3);
    EXPECT_GT(ShareLeaving(0.4, -99, 99999, 5), 0);
}

// --- Edges ---------------------------------------------------------------------------------------

TEST_F(LogRank, EqualHazardsHaveTheLevelAsTheirPower) {
    for (const i16 menuNo : twoSampleMenus)
        for (const char* level : {"0.01", "0.05", "0.2"})
            for (const i16 tails : {OneSided, TwoSided}) {
                const Values values =
                    With(plan, {{0, level}, {Kind::H1Rate2, "0.3"}, {Kind::LossRate2, "0.1"}});
                EXPECT_NEAR(PowerOf(Menu(menuNo, tails, plainForms), values), ParseNumber(level),
                            normalError)
                    << menuNo;
            }
}

TEST_F(LogRank, AHazardRatioOfOneHasTheLevelAsItsPower) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H1HazardRatio, "1"},
                        {Kind::H1Survival1, "0.4"},
                        {Kind::DropOuts, "0.1"},
                        {Kind::Size1, "80"},
                        {Kind::Size2, "60"},
                        {Kind::Events, "70"},
                        {Kind::Size2Over1, "1.5"},
                        {Kind::HazardRatioNonInferiorityLimit, "1"},
                        {Kind::H1Rate1, "0.3"},
                        {Kind::AccrualTime, "2"},
                        {Kind::TotalStudyTime, "5"}};
    for (const i16 menuNo : {menuSchoenfeld, menuFreedman}) {
        EXPECT_NEAR(PowerOf(Menu(menuNo, 2, {{2, 0}}, {33}), values), 0.05, normalError);
        EXPECT_NEAR(PowerOf(Menu(menuNo, 1, {}, {4, 33}), values), 0.05, normalError);
    }
    EXPECT_NEAR(PowerOf(Menu(menuNonInferiority, 1, {{2, 0}}), values), 0.05, normalError);
}

// A longer median is a lower hazard; the test's direction is that of the medians.
TEST_F(LogRank, LongerMediansAreFoundOnTheRight) {
    for (const i16 menuNo : twoSampleMenus) {
        const std::map<i16, i16> forms{{10, 0}, {8, 0}, {2, 0}, {55, 0}};
        const Values medians = With(plan, {{Kind::H0Median2Minus1, "0"},
                                           {Kind::H0Median2Over1, "1"},
                                           {Kind::H1Median1, "2"},
                                           {Kind::H1Median2, "3"}});
        const f64 right = PowerOf(Menu(menuNo, 1, forms, {12}), medians);
        EXPECT_GT(right, 0.5) << menuNo;
        EXPECT_LT(PowerOf(LeftOf(Menu(menuNo, 1, forms, {12})), medians), 0.01) << menuNo;
        // The same as hazards, which lie on the left.
        const Values hazards =
            With(plan, {{Kind::H1Rate1, "0.346573590"}, {Kind::H1Rate2, "0.231049060"}});
        EXPECT_NEAR(PowerOf(LeftOf(Menu(menuNo, 1, plainForms)), hazards), right, rounding)
            << menuNo;
    }
}

// The ranges leave a hazard of 0 out.
TEST_F(LogRank, NoHazardIsZero) {
    EXPECT_EQ(MessageOf(Menu(menuGeorge, 2, plainForms), With(plan, {{Kind::H1Rate1, "0"}}), 1),
              "H1: Hazard Rate 1 Has To Be Greater Than or Equal to 0.00001.");
    EXPECT_EQ(MessageOf(Menu(menuGeorge, 2, {{5, 1}, {8, 0}, {2, 0}, {55, 0}}),
                        With(plan, {{Kind::H1Rate2Minus1, "-0.3"}}), 1),
              "H1:Hazard Rate 2 - Hazard Rate 1 Has To Be Greater Than or Equal to -0.29999.");
}

TEST_F(LogRank, ASecondIncidenceUnderH0IsOne) {
    const Values values = With(plan, {{Kind::H0Incidence2Minus1, "0.5"},
                                      {Kind::H1Incidence1, "0.6"},
                                      {Kind::H1Incidence2, "0.7"},
                                      {Kind::LossIncidence1, "0"},
                                      {Kind::LossIncidence2, "0"}});
    EXPECT_EQ(MessageOf(Menu(menuLachin, 2, {{7, 0}, {30, 0}, {2, 0}, {55, 0}}, {3}), values, 1),
              "H0: Incidence 2 - Incidence 1 Has To Be Less Than or Equal to 0.39999.");
}

// --- Messages ------------------------------------------------------------------------------------

TEST_F(LogRank, UniformAccrualEndsWithTheStudyAtTheLatest) {
    const Values values = With(plan, {{Kind::AccrualTime, "6"}});
    EXPECT_EQ(MessageOf(Menu(menuLachin, 2, plainForms), values, 1),
              "Total Study Time Has To Be Greater Than or Equal to 6.");
    EXPECT_NE(PowerOf(Menu(menuLachin, 2, plainForms), With(values, {{Kind::AccrualRate, "0.5"}})),
              NoValue);
    EXPECT_EQ(MessageOf(Menu(menuNonInferiority, 1, {{2, 0}}),
                        {{Kind::AccrualTime, "6"},
                         {Kind::TotalStudyTime, "5"},
                         {Kind::H1HazardRatio, "0.9"},
                         {Kind::HazardRatioNonInferiorityLimit, "1.3"}},
                        1),
              "Total Study Time Has To Be Greater Than or Equal to 6.");
}

TEST_F(LogRank, EachGroupHasTwoSubjectsAtLeast) {
    const AnalysisChoice total = Menu(menuLachin, 2, {{5, 0}, {8, 0}, {55, 0}}, {35});
    EXPECT_EQ(MessageOf(total, With(plan, {{Kind::TotalSize, "3"}, {Kind::Size2Over1, "1"}}), 1),
              "Sample Size 1 Must Be >=2.");
    EXPECT_EQ(MessageOf(total, With(plan, {{Kind::TotalSize, "20"}, {Kind::Size2Over1, "0.1"}}), 1),
              "Sample Size 2 Must Be >=2.");
    EXPECT_EQ(MessageOf(total, With(plan, {{Kind::TotalSize, "20"}, {Kind::Size2Over1, "10"}}), 1),
              "Sample Size 1 Must Be >=2.");
}

TEST_F(LogRank, ATableOfAccrualIsAskedFor) {
    Start(Menu(menuLachin, 2, plainForms, {28}), With(plan, {{Kind::AccrualIntervals, "3"}}));
    HasGridData = False;
    EXPECT_EQ(SolutionHere(Kind::Power), NoValue);
    EXPECT_EQ(LastMessage(), "Proportion of Accrued Patients Has No Value.");
    EXPECT_TRUE(Fill(343, {{{"1", "0.2"}, {"2", "0.5"}, {"3", "1"}}}));
    EXPECT_EQ(ParText(Kind::AccrualIntervals), "3");
    EXPECT_NE(SolutionHere(Kind::Power), NoValue);
    // Another number of intervals, or another accrual time, needs another table.
    Type(Kind::AccrualIntervals, "4");
    EXPECT_EQ(SolutionHere(Kind::Power), NoValue);
    EXPECT_EQ(LastMessage(), "Proportion of Accrued Patients Has No Value.");
    Type(Kind::AccrualIntervals, "3");
    Type(Kind::AccrualTime, "2.5");
    EXPECT_EQ(SolutionHere(Kind::Power), NoValue);
    EXPECT_EQ(LastMessage(), "End of Last Interval Must Be 2.5");
}

TEST_F(LogRank, ATableOfAccrualIsChecked) {
    Start(Menu(menuLachin, 2, plainForms, {28}), With(plan, {{Kind::AccrualIntervals, "2"}}));
    const auto refusal = [this](const std::vector<std::vector<std::string>>& rows) {
        EXPECT_FALSE(Fill(343, {rows}));
        return LastMessage();
    };
    EXPECT_EQ(refusal({{"0", "0.2"}, {"3", "1"}}), "End of Interval Must Be > 0.");
    EXPECT_EQ(refusal({{"1", "0"}, {"3", "1"}}), "Cum. Proportion Must Be > 0.");
    EXPECT_EQ(refusal({{"1", "-0.1"}, {"3", "1"}}), "Cum. Proportion Must Be > 0.");
    EXPECT_EQ(refusal({{"1", "0.5"}, {"1", "1"}}), "End of Interval Must Be > 1.");
    EXPECT_EQ(refusal({{"1", "0.5"}, {"3", "0.4"}}), "Cum. Proportion Must Be >= 0.5.");
    EXPECT_EQ(refusal({{"1", "0.5"}, {"4", "1"}}), "End of Last Interval Must Be 3");
    EXPECT_EQ(refusal({{"1", "0.5"}, {"3", "0.9"}}), "Cum. Proportion of Last Interval Must Be 1.");
    EXPECT_TRUE(Fill(343, {{{"1", "0.5"}, {"3", "1"}}}));
}

// The accrual time that is sought stretches the table.
TEST_F(LogRank, AnAccrualTimeStretchesItsTable) {
    const AnalysisChoice choice = Menu(menuLachin, 2, plainForms, {28});
    Start(choice, With(plan, {{Kind::AccrualIntervals, "2"}}));
    FillAccrual({{1, 0.5}, {3, 1}});
    const f64 before = SolutionHere(Kind::Power);
    Start(choice,
          With(plan, {{Kind::AccrualIntervals, "2"}, {Kind::Power, NumberText(before + 0.02, 9)}}));
    FillAccrual({{1, 0.5}, {3, 1}});
    const f64 time = SolutionHere(Kind::AccrualTime);
    EXPECT_LT(time, 3);
    Start(choice,
          With(plan, {{Kind::AccrualIntervals, "2"}, {Kind::AccrualTime, NumberText(time, 9)}}));
    FillAccrual({{time / 3, 0.5}, {time, 1}});
    EXPECT_NEAR(SolutionHere(Kind::Power), before + 0.02, 1e-3);
}

// --- Reductions ----------------------------------------------------------------------------------

TEST_F(LogRank, AStraightTableIsUniformAccrual) {
    for (const i16 menuNo : twoSampleMenus)
        for (const AccrualTable& table : {AccrualTable{{3, 1}}, AccrualTable{{1, 1 / 3.0}, {3, 1}},
                                          AccrualTable{{0.75, 0.25}, {1.5, 0.5}, {3, 1}}}) {
            Start(Menu(menuNo, 2, plainForms, {28}),
                  With(plan, {{343, std::to_string(table.size())}}));
            FillAccrual(table);
            const f64 tabulated = SolutionHere(Kind::Power);
            EXPECT_NEAR(tabulated, PowerOf(Menu(menuNo, 2, plainForms), plan), rounding);
        }
}

TEST_F(LogRank, AMarginOfOneIsSchoenfeld) {
    const Values events{{Kind::HazardRatioNonInferiorityLimit, "1"},
                        {Kind::H1Survival1, "0.4"},
                        {Kind::H1Survival2, "0.6"},
                        {Kind::Events, "90"},
                        {Kind::Size2Over1, "1.5"}};
    for (const bool left : {false, true}) {
        AnalysisChoice margin = Menu(menuNonInferiority, 1, {{12, 0}}, {4});
        AnalysisChoice schoenfeld = Menu(menuSchoenfeld, 1, {{12, 0}}, {4});
        margin.Left = schoenfeld.Left = left;
        EXPECT_NEAR(PowerOf(margin, events), PowerOf(schoenfeld, events), rounding);
    }
    // Patients who all enter at once: survival at the end of the study is exp(-0.3 5).
    const Values patients{{Kind::HazardRatioNonInferiorityLimit, "1"},
                          {Kind::H1HazardRatio, "1.5"},
                          {Kind::H1Rate1, "0.3"},
                          {Kind::AccrualTime, "0"},
                          {Kind::TotalStudyTime, "5"},
                          {Kind::Size1, "120"},
                          {Kind::H1Survival1, "0.22313016"},
                          {Kind::DropOuts, "0"},
                          {Kind::Size2, "80"}};
    EXPECT_NEAR(PowerOf(Menu(menuNonInferiority, 1, {{2, 0}}), patients),
                PowerOf(Menu(menuSchoenfeld, 1, {{2, 0}}, {33}), patients), 1e-4);
}

TEST_F(LogRank, OneStratumIsItsOwnMean) {
    const WeightedEffect one = WeightedBy({{0.4, 6.25, 7.84}});
    EXPECT_NEAR(one.Effect, 0.4, 1e-12);
    EXPECT_NEAR(one.Sd0, 2.5, 1e-12);
    EXPECT_NEAR(one.Sd1, 2.8, 1e-12);
}

// Strata that are alike are no strata.
TEST_F(LogRank, EqualStrataAreTheUnstratifiedTest) {
    const std::vector<std::vector<std::string>> sizes{{"0.5", "0.8"}, {"0.5", "0.8"}};
    const std::vector<std::vector<std::string>> hazards{{"0.3", "0.45", "0.1", "0.2"},
                                                        {"0.3", "0.45", "0.1", "0.2"}};
    const std::vector<std::vector<std::string>> incidences{{"0.3", "0.45", "0.1", "0.2"},
                                                           {"0.3", "0.45", "0.1", "0.2"}};
    const std::pair<i16, i16> pairs[] = {{menuStrataLachin, menuLachin},
                                         {menuStrataGeorge, menuGeorge},
                                         {menuStrataRubenstein, menuRubenstein}};
    const Values times = With(plan, {{Kind::NoOfStrata, "2"}, {Kind::AccrualRate, "0.4"}});
    for (const auto& [stratified, plain] : pairs) {
        Start(Menu(stratified, 2), times);
        ASSERT_TRUE(Fill(stratified == menuStrataLachin ? 339 : 352, {sizes, hazards}));
        EXPECT_NEAR(SolutionHere(Kind::Power),
                    PowerOf(Menu(plain, 2, {{5, 0}, {8, 0}, {55, 0}}, {35}), times), rounding)
            << stratified;
        // Incidences, weighted as such, have the power of their hazards.
        Start(Menu(stratified, 2, {}, {3}), times);
        ASSERT_TRUE(Fill(stratified == menuStrataLachin ? 342 : 352, {sizes, incidences}));
        if (stratified == menuStrataLachin) {
            EXPECT_NEAR(ParseNumber(ParText(Kind::WeightedIncidenceDifference)), 0.15, 1e-6);
        }
        const Values asIncidences = With(times, {{Kind::H0Incidence2Minus1, "0"},
                                                 {Kind::H0Incidence2Over1, "1"},
                                                 {Kind::H1Incidence1, "0.3"},
                                                 {Kind::H1Incidence2, "0.45"},
                                                 {Kind::LossIncidence1, "0.1"},
                                                 {Kind::LossIncidence2, "0.2"}});
        EXPECT_NEAR(SolutionHere(Kind::Power),
                    PowerOf(Menu(plain, 2, {{7, 0}, {30, 0}, {55, 0}}, {3, 35}), asIncidences),
                    rounding)
            << stratified;
    }
    Start(Menu(menuStrata, 2), {{Kind::NoOfStrata, "2"}, {Kind::TotalSize, "250"}});
    ASSERT_TRUE(Fill(352, {sizes, {{"0.3", "0.45"}, {"0.3", "0.45"}}}));
    EXPECT_NEAR(SolutionHere(Kind::Power),
                PowerOf(Menu(menuSchoenfeld, 2, {{12, 0}}, {35}), {{Kind::H1Survival1, "0.3"},
                                                                   {Kind::H1Survival2, "0.45"},
                                                                   {Kind::DropOuts, "0"},
                                                                   {Kind::TotalSize, "250"},
                                                                   {Kind::Size2Over1, "0.8"}}),
                rounding);
}

// --- Strata --------------------------------------------------------------------------------------

TEST_F(LogRank, StrataFollowTheStudy) {
    Start(Menu(menuStrataGeorge, 2), With(plan, {{Kind::NoOfStrata, "2"}}));
    const std::vector<std::vector<std::string>> sizes{{"0.4", "1"}, {"0.6", "2"}};
    ASSERT_TRUE(Fill(352, {sizes, {{"0.2", "0.35", "0", "0"}, {"0.5", "0.8", "0.1", "0"}}}));
    EXPECT_TRUE(IsBluePar(PositionOf(Kind::H0WeightedSd)));
    const std::string before = ParText(Kind::H0WeightedSd);
    const f64 power = SolutionHere(Kind::Power);
    Type(Kind::TotalStudyTime, "9");
    EXPECT_GT(SolutionHere(Kind::Power), power + 0.01);
    EXPECT_LT(ParseNumber(ParText(Kind::H0WeightedSd)), ParseNumber(before));
    // The study time is found that gives the former power back.
    Type(Kind::Power, NumberText(power, 9));
    EXPECT_NEAR(SolutionHere(Kind::TotalStudyTime), 5, 0.02);
    // What derives is that of the solution, not of the time before it.
    const std::string renewed = ParText(Kind::H0WeightedSd);
    EXPECT_GT(ParseNumber(renewed), ParseNumber(before) * 0.99);
    SolutionHere(Kind::Power);
    EXPECT_EQ(ParText(Kind::H0WeightedSd), renewed);
    // Other strata than those of the tables.
    Type(Kind::NoOfStrata, "3");
    EXPECT_EQ(SolutionHere(Kind::Power), NoValue);
    EXPECT_EQ(LastMessage(), "H1: Weighted Log(HazardRatio) Can't Be Calculated.");
    Type(Kind::NoOfStrata, "2");
    // An effect that is asked for stands by itself.
    Type(Kind::Power, "0.9");
    EXPECT_NE(SolutionHere(Kind::WeightedLogHazardRatio), NoValue);
    EXPECT_EQ(HasGridData, False);
}

TEST_F(LogRank, StrataAreChecked) {
    Start(Menu(menuStrataLachin, 2), With(plan, {{Kind::NoOfStrata, "2"}}));
    const std::vector<std::vector<std::string>> hazards{{"0.2", "0.35", "0", "0"},
                                                        {"0.5", "0.8", "0.1", "0"}};
    const std::vector<std::vector<std::string>> sizes{{"0.4", "1"}, {"0.6", "2"}};
    EXPECT_FALSE(Fill(339, {{{"0.4", "1"}, {"0.5", "2"}}, hazards}));
    EXPECT_EQ(LastMessage(), "Sum of Numbers in Column 1 Must Be = 1");
    EXPECT_FALSE(Fill(339, {{{"0.4", "0"}, {"0.6", "2"}}, hazards}));
    EXPECT_EQ(LastMessage(), "Ratio in Cell  (1,2)  Must Be > 0.");
    EXPECT_FALSE(Fill(339, {sizes, {{"0", "0.35", "0", "0"}, {"0.5", "0.8", "0.1", "0"}}}));
    EXPECT_EQ(LastMessage(), "Hazard Rate in Cell  (1,1)  Must Be > 0.");
    EXPECT_FALSE(Fill(339, {sizes, {{"0.2", "0.35", "0", "0"}, {"0.5", "0.8", "-0.1", "0"}}}));
    EXPECT_EQ(LastMessage(), "Loss Rate in Cell  (2,3)  Must Be >= 0.");
    Start(Menu(menuStrataLachin, 2, {}, {3}), With(plan, {{Kind::NoOfStrata, "2"}}));
    EXPECT_FALSE(Fill(342, {sizes, {{"0.2", "0.35", "0", "1"}, {"0.5", "0.8", "0.1", "0"}}}));
    EXPECT_EQ(LastMessage(), "Loss Incidence in Cell  (1,4)  Must Be >= 0 and < 1.");
}

// --- Mirror images -------------------------------------------------------------------------------

// Groups exchanged and the tail turned: the same power.
TEST_F(LogRank, MirrorImagesHaveTheSamePower) {
    const Values mirrored = With(plan, {{Kind::H1Rate1, "0.45"},
                                        {Kind::H1Rate2, "0.3"},
                                        {Kind::LossRate1, "0.2"},
                                        {Kind::LossRate2, "0.1"},
                                        {Kind::Size1, "100"},
                                        {Kind::Size2, "150"},
                                        {Kind::Size2Over1, "1.25"}});
    for (const i16 menuNo : twoSampleMenus) {
        // A loss rate in group 1 turns the pooling off: both groups have one here.
        for (const auto& [groups, checks] :
             {std::pair<std::map<i16, i16>, std::vector<i16>>{plainForms, {}},
              {{{5, 0}, {8, 0}, {55, 0}}, {35}},
              {{{5, 0}, {55, 1}}, {}}}) {
            Values here = With(plan, {{Kind::Events, "120"}});
            Values there = With(mirrored, {{Kind::Events, "120"}});
            const f64 power = PowerOf(Menu(menuNo, 1, groups, checks), here);
            EXPECT_GT(power, 0.3);
            EXPECT_NEAR(PowerOf(LeftOf(Menu(menuNo, 1, groups, checks)), there), power, rounding)
                << menuNo;
            EXPECT_NEAR(PowerOf(Menu(menuNo, 2, groups, checks), there),
                        PowerOf(Menu(menuNo, 2, groups, checks), here), rounding)
                << menuNo;
        }
        const Values limits{{Kind::RateDifferenceLeftLimit, "-0.2"},
                            {Kind::RateDifferenceRightLimit, "0.3"},
                            {Kind::RatioLeftLimit, "0.6"},
                            {Kind::RatioRightLimit, "1.5"},
                            {Kind::Size1, "400"},
                            {Kind::Size2, "400"},
                            {Kind::H1Rate1, "0.3"},
                            {Kind::H1Rate2, "0.33"}};
        const Values turned{{Kind::RateDifferenceLeftLimit, "-0.3"},
                            {Kind::RateDifferenceRightLimit, "0.2"},
                            {Kind::RatioLeftLimit, "0.66666667"},
                            {Kind::RatioRightLimit, "1.66666667"},
                            {Kind::Size1, "400"},
                            {Kind::Size2, "400"},
                            {Kind::H1Rate1, "0.33"},
                            {Kind::H1Rate2, "0.3"}};
        EXPECT_NEAR(PowerOf(Menu(menuNo, 3, plainForms), With(plan, limits)),
                    PowerOf(Menu(menuNo, 3, plainForms), With(mirrored, turned)), 1e-4)
            << menuNo;
    }
    const Values survival{{Kind::H1Survival1, "0.4"},
                          {Kind::H1Survival2, "0.6"},
                          {Kind::H1HazardRatio, "2"},
                          {Kind::DropOuts, "0.1"},
                          {Kind::Size1, "60"},
                          {Kind::Size2, "90"},
                          {Kind::Events, "70"},
                          {Kind::Size2Over1, "1.5"},
                          {Kind::HazardRatioNonInferiorityLimit, "0.8"}};
    const Values exchanged{{Kind::H1Survival1, "0.6"},
                           {Kind::H1Survival2, "0.4"},
                           {Kind::H1HazardRatio, "0.5"},
                           {Kind::DropOuts, "0.1"},
                           {Kind::Size1, "90"},
                           {Kind::Size2, "60"},
                           {Kind::Events, "70"},
                           {Kind::Size2Over1, "0.66666667"},
                           {Kind::HazardRatioNonInferiorityLimit, "1.25"}};
    for (const i16 menuNo : {menuSchoenfeld, menuFreedman}) {
        EXPECT_NEAR(PowerOf(Menu(menuNo, 1, {{12, 0}, {2, 0}}), survival),
                    PowerOf(LeftOf(Menu(menuNo, 1, {{12, 0}, {2, 0}})), exchanged), rounding);
        EXPECT_NEAR(PowerOf(Menu(menuNo, 1, {}, {4, 33}), survival),
                    PowerOf(LeftOf(Menu(menuNo, 1, {}, {4, 33})), exchanged), rounding);
    }
    EXPECT_NEAR(PowerOf(Menu(menuNonInferiority, 1, {{12, 0}}, {4}), survival),
                PowerOf(LeftOf(Menu(menuNonInferiority, 1, {{12, 0}}, {4})), exchanged), rounding);
}

// --- Limits of the search ------------------------------------------------------------------------

// A ratio within a total has two solutions; the groups are about equal between them.
TEST_F(LogRank, OfTwoRatiosTheLargerOneIsFound) {
    const AnalysisChoice total = Menu(menuGeorge, 2, {{5, 0}, {8, 0}, {55, 0}}, {35});
    const f64 power = PowerOf(total, With(plan, {{Kind::Size2Over1, "3"}}));
    EXPECT_NEAR(SolutionOf(total, With(plan, {{Kind::Power, NumberText(power, 9)}}), 5), 3, 0.01);
}

// Far below hazard 1 there are hardly any events: the solution next to H0 is the one asked for.
TEST_F(LogRank, TheEffectNextToH0IsFound) {
    for (const i16 menuNo : {menuGeorge, menuRubenstein}) {
        const AnalysisChoice left = LeftOf(Menu(menuNo, 1, plainForms));
        const f64 power = PowerOf(left, With(plan, {{Kind::H1Rate2, "0.2"}}));
        EXPECT_NEAR(SolutionOf(left, With(plan, {{Kind::Power, NumberText(power, 9)}}), 73), 0.2,
                    1e-3);
    }
}

// --- Statements ----------------------------------------------------------------------------------

TEST_F(LogRank, Statements) {
    Start(Menu(menuLachin, 3, {{10, 0}, {8, 0}, {2, 0}, {55, 0}}, {12}),
          {{Kind::MeanLeftLimit, "-1"},
           {Kind::MeanRightLimit, "1"},
           {Kind::H1Median1, "2.5"},
           {Kind::H1Median2, "2.6"},
           {Kind::Size1, "400"},
           {Kind::Size2, "400"}});
    SolutionHere(Kind::Power);
    EXPECT_NE(SumStatement().find("the null hypothesis H0: non-equivalence, with left equivalence "
                                  "limit = -1 and right equivalence limit = 1, against H1: median "
                                  "1 = 2.5 and median 2 = 2.6 (equivalence)"),
              std::string::npos)
        << SumStatement();
    Start(LeftOf(Menu(menuNonInferiority, 1, {{2, 0}})),
          {{Kind::HazardRatioNonInferiorityLimit, "1.3"},
           {Kind::H1HazardRatio, "0.9"},
           {Kind::H1Rate1, "0.2"},
           {Kind::AccrualTime, "2"},
           {Kind::TotalStudyTime, "5"},
           {Kind::Size1, "300"},
           {Kind::Size2, "300"}});
    SolutionHere(Kind::Power);
    EXPECT_NE(SumStatement().find("the null hypothesis H0: hazard rate 2 / hazard rate 1 = 1.3 "
                                  "against H1: hazard ratio = 0.9 and hazard rate 1 = 0.2"),
              std::string::npos)
        << SumStatement();
    Start(Menu(menuRubenstein, 2, {{7, 0}, {30, 0}, {2, 0}, {55, 0}}, {3}),
          {{Kind::H0Incidence2Over1, "1"},
           {Kind::H1Incidence1, "0.2"},
           {Kind::H1Incidence2, "0.3"},
           {Kind::LossIncidence1, "0"},
           {Kind::LossIncidence2, "0"}});
    SolutionHere(Kind::Power);
    EXPECT_NE(SumStatement().find("the null hypothesis H0: incidence 2 / incidence 1 = 1 against "
                                  "H1: incidence 1 = 0.2 and incidence 2 = 0.3"),
              std::string::npos)
        << SumStatement();
    Start(Menu(menuSchoenfeld, 1, {{12, 0}, {2, 0}}), {{Kind::H1Survival1, "0.4"},
                                                       {Kind::H1Survival2, "0.6"},
                                                       {Kind::DropOuts, "0.1"},
                                                       {Kind::Size1, "100"},
                                                       {Kind::Size2, "100"}});
    SolutionHere(Kind::Power);
    EXPECT_NE(SumStatement().find("the null hypothesis H0: survival proportion 2 = survival "
                                  "proportion 1 against H1: survival proportion 1 = 0.4 and "
                                  "survival proportion 2 = 0.6"),
              std::string::npos)
        << SumStatement();
    Start(Menu(menuStrataGeorge, 2), {{Kind::WeightedLogHazardRatio, "0.4"},
                                      {Kind::H0WeightedSd, "2.5"},
                                      {Kind::H1WeightedSd, "2.6"},
                                      {Kind::TotalSize, "300"}});
    SolutionHere(Kind::Power);
    EXPECT_NE(SumStatement().find("weighted log(hazard ratio) = 0"), std::string::npos)
        << SumStatement();
}

} // namespace
} // namespace quorvanta::checks
