// Simulated multiple comparisons as the user sets them up: family-wise error, powers and rejections
// beside a simulation of other origin, the grids with their checks, interim analyses, and files.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "core/showintpar.h"
#include "montecarlo/simstudy.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "multcomp/normalmodel.h"
#include "multcomp/procedures.h"
#include "numeric/rounding.h"
#include "output/statement.h"
#include "output/statement_simulation.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/temporary_folder.h"
#include "support/tsv.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 menuControl = 700;
constexpr i16 menuPairs = 701;
constexpr i16 menuEach = 702;
constexpr i16 menuNormalEach = 712;

std::vector<std::string> Split(const std::string& text, char at) {
    std::vector<std::string> cells;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, at);)
        if (part != "-")
            cells.push_back(part);
    return cells;
}

GridRowTexts Column(const std::vector<std::string>& cells) {
    GridRowTexts rows;
    for (const std::string& cell : cells)
        rows.push_back({cell});
    return rows;
}

class MultComp : public SimulationFixture {
  protected:
    void TearDown() override {
        SimNo = 0;
        KnownVariance = false;
    }

    void Open(i16 menuNo) { OpenSimulation(menuNo); }

    // Between these two the options are open.
    void Options() { ReopenOptions(); }
    void Accept() { AcceptOptions(); }

    // What is typed into the next grid that is asked for.
    void OfferGrid(const GridRowTexts& rows) {
        platform.GridFillings.emplace_back([this, rows] {
            Titles.push_back(CurrentGrid().Title);
            Heads.push_back(CurrentGrid().ColumnHeads);
            return FillCurrentGrid(rows);
        });
    }
    void OfferColumn(const std::vector<std::string>& column) { OfferGrid(Column(column)); }
    // The next grid is taken as it stands.
    void OfferAsItStands() { OfferGrid(GridRowTexts{}); }

    void RunTimes(int most) { Run(std::to_string(most), "20240615"); }

    std::vector<std::string> Titles;
    std::vector<std::string> Heads;
};

// --- Beside a simulation of other origin ---------------------------------------------------------

using Design = std::map<std::string, std::string>;

std::vector<Design> ReadDesigns(const std::string& file, const std::vector<std::string>& results) {
    std::vector<std::string> names{
        "Test",        "Tails",  "Left",  "Means",        "Sd",   "Size",    "Size2",    "Cov",
        "Correlation", "Matrix", "Known", "Combinations", "Gate", "Methods", "Families", "Weights"};
    names.insert(names.end(), results.begin(), results.end());
    std::vector<Design> designs;
    for (const auto& row : ReadTsv("simulated/" + file)) {
        Design& design = designs.emplace_back();
        for (std::size_t i = 0; i < names.size(); ++i)
            design[names[i]] = row.at(i);
    }
    return designs;
}

class SimulatedMultComp : public MultComp {
  protected:
    static i16 Number(const Design& d, const std::string& name) {
        return ToI16(ParseNumber(d.at(name)));
    }
    static i16 MenuOf(i16 testNo) {
        return static_cast<i16>(testNo < 142 ? testNo - 138 + 700 : testNo - 142 + 710);
    }

    // In a new window, or in the one that is open.
    void SetUpDesign(const Design& d, bool isOpen = false) {
        const i16 test = Number(d, "Test");
        const bool isNormal = test >= 142;
        if (!isOpen)
            Open(MenuOf(test));
        Options();
        ChooseTails(Number(d, "Tails"));
        ChooseLeftTail(Number(d, "Left") == 1);
        Tick(Check::SerialGatekeeping, Number(d, "Gate") == 1);
        Tick(Check::ParallelGatekeeping, Number(d, "Gate") == 2);
        const auto methods = Split(d.at("Methods"), ',');
        ChooseAdjustMethod(ToI16(ParseNumber(methods.front())));
        const i16 form = Number(d, "Cov");
        if (isNormal) {
            Tick(Check::CovarianceMatrix, d.at("Known") == "1");
            Pick(Group::CorrelationMatrix, form);
        }
        Accept();
        const auto means = Split(d.at("Means"), ',');
        const std::string k = std::to_string(means.size());
        const std::string n2 = d.at("Size2") == "0" ? d.at("Size") : d.at("Size2");
        if (!isNormal || form != EnteredCovariance)
            Type(Kind::Sd, d.at("Sd"));
        if (isNormal && form != EnteredCovariance)
            Type(Kind::Correlation, d.at("Correlation"));
        Type(isNormal ? Kind::NormalDimension : Kind::LevelsA, k);
        if (isNormal) {
            Type(Kind::VectorSize, d.at("Size"));
        } else if (test == 138) {
            Type(Kind::Size1, d.at("Size"));
            Type(Kind::SizeK, n2);
        } else {
            Type(Kind::SizePerGroup, d.at("Size"));
        }
        OfferColumn(means);
        const auto combinations = Split(d.at("Combinations"), ';');
        if (!combinations.empty()) {
            Type(Kind::LinearCombinations, std::to_string(combinations.size()));
            GridRowTexts rows;
            for (const std::string& combination : combinations)
                rows.push_back(Split(combination, ','));
            OfferGrid(rows);
        }
        if (isNormal && form == EnteredCovariance) {
            GridRowTexts rows;
            for (const std::string& cell : Split(d.at("Matrix"), ',')) {
                if (rows.empty() || rows.back().size() == means.size())
                    rows.emplace_back();
                rows.back().push_back(cell);
            }
            OfferGrid(rows);
        }
        if (d.at("Gate") != "0")
            OfferFamilies(Split(d.at("Families"), ','), methods);
        if (const auto weights = Split(d.at("Weights"), ','); !weights.empty())
            OfferGrid(WeightRows(d, weights));
    }

    // The same at each analysis.
    void OfferFamilies(const std::vector<std::string>& families,
                       const std::vector<std::string>& methods) {
        GridRowTexts rows;
        for (const std::string& family : families)
            rows.emplace_back(static_cast<std::size_t>(NoOfAnalyses()), family);
        OfferGrid(rows);
        std::vector<std::string> all;
        for (i16 k = 1; k <= NoOfAnalyses(); ++k)
            all.insert(all.end(), methods.begin(), methods.end());
        OfferGrid(GridRowTexts{all});
    }

    // One column for each family that has weights.
    static GridRowTexts WeightRows(const Design& d, const std::vector<std::string>& weights) {
        const auto methods = Split(d.at("Methods"), ',');
        const auto families = Split(d.at("Families"), ',');
        GridRowTexts rows;
        for (std::size_t test = 0; test < weights.size(); ++test) {
            rows.emplace_back();
            for (std::size_t f = 0; f < methods.size(); ++f)
                if (methods[f] == "0")
                    rows.back().push_back(families[test] == std::to_string(f + 1) ? weights[test]
                                                                                  : "0");
        }
        return rows;
    }

    // What the run came to, beside theirs.
    void ExpectNear(f64 share, const std::string& text, int runs, const std::string& what) {
        constexpr f64 theirs = 100000;
        const f64 p = ParseNumber(text);
        const f64 variance = MaxOf(p * (1 - p), 0.0005);
        // 0.0015: the approximations of the quantiles.
        EXPECT_NEAR(share, p, 4 * std::sqrt(variance * (1.0 / runs + 1 / theirs)) + 0.0015) << what;
    }
};

TEST_F(SimulatedMultComp, HasTheErrorsAndPowersOfASimulationOfOtherOrigin) {
    const int replicates = WholeStatistics() ? 100000 : 4000;
    const auto designs =
        ReadDesigns("multcomp.tsv", {"Error", "Disjunctive", "Conjunctive", "Average", "Rejected"});
    EXPECT_GE(designs.size(), 30U);
    for (const Design& d : designs) {
        const std::string what = d.at("Test") + ", methods " + d.at("Methods") + ", gate " +
                                 d.at("Gate") + ", means " + d.at("Means");
        SetUpDesign(d);
        RunTimes(replicates);
        ASSERT_EQ(SimNo, replicates) << what << ": " << LastMessage();
        EXPECT_TRUE(platform.GridFillings.empty()) << what;
        const f64 error = static_cast<f64>(CountRejectH0(1)) / replicates;
        ExpectNear(error, d.at("Error"), replicates, what + ": error");
        constexpr f64 level = 0.05;
        EXPECT_LE(error, level + 3.5 * std::sqrt(level * (1 - level) / replicates)) << what;
        ExpectNear(static_cast<f64>(CountRejectH1(1)) / replicates, d.at("Disjunctive"), replicates,
                   what + ": disjunctive power");
        const auto rejected = Split(d.at("Rejected"), ',');
        for (i16 test = 1; test <= NoOfTests; ++test) {
            i32 rejections = 0;
            for (i16 f = 1; f <= NoOfFamilies(1); ++f)
                rejections += RejectCount(test)(1, f);
            // A true hypothesis is counted in the data sets under H0.
            if (NoOfFalseNull < NoOfTests || !TrueNull(test))
                ExpectNear(static_cast<f64>(rejections) / replicates,
                           rejected.at(static_cast<std::size_t>(test - 1)), replicates,
                           what + ": test " + std::to_string(test));
        }
        for (const auto& [definition, name] :
             {std::pair{ConjunctivePower, "Conjunctive"}, {AveragePower, "Average"}}) {
            Options();
            Pick(Group::PowerDefinition, definition);
            Accept();
            EXPECT_EQ(HasGridData, False) << "the grids are asked for anew";
            for (int grid = 0; grid < 6; ++grid)
                OfferAsItStands();
            RunTimes(replicates);
            platform.GridFillings.clear();
            const f64 count = CountRejectH1(1);
            ExpectNear((definition == AveragePower ? -count / 100 : count) / replicates, d.at(name),
                       replicates, what + ": " + name);
        }
        Options();
        Pick(Group::PowerDefinition, DisjunctivePower);
        Accept();
    }
}

TEST_F(SimulatedMultComp, InterimAnalysesAgreeWithASimulationOfOtherOrigin) {
    const int replicates = WholeStatistics() ? 100000 : 4000;
    const auto designs =
        ReadDesigns("multcomp_interim.tsv", {"Levels", "DisjunctiveError", "Disjunctive",
                                             "ConjunctiveError", "Conjunctive"});
    EXPECT_GE(designs.size(), 5U);
    for (const Design& d : designs) {
        const auto levels = Split(d.at("Levels"), ',');
        for (const auto& [definition, name] :
             {std::pair{DisjunctivePower, "Disjunctive"}, {ConjunctivePower, "Conjunctive"}}) {
            const std::string what = d.at("Test") + ", levels " + d.at("Levels") + ", " + name;
            Open(MenuOf(Number(d, "Test")));
            Options();
            ChooseInterim(static_cast<i16>(levels.size() - 1));
            Pick(Group::PowerDefinition, definition);
            Accept();
            SetUpDesign(d, true);
            for (std::size_t k = 0; k < levels.size(); ++k)
                RejectH0Text(static_cast<int>(k)) = levels[k];
            RunTimes(replicates);
            ASSERT_EQ(SimNo, replicates) << what << ": " << LastMessage();
            const int overAll = static_cast<int>(levels.size()) + 1;
            ExpectNear(static_cast<f64>(CountRejectH0(overAll)) / replicates,
                       d.at(std::string(name) + "Error"), replicates, what + ": error");
            ExpectNear(static_cast<f64>(CountRejectH1(overAll)) / replicates, d.at(name),
                       replicates, what + ": power");
        }
    }
}

// --- Grids ---------------------------------------------------------------------------------------

TEST_F(MultComp, AsksForTheMeansAtTheStart) {
    Open(menuControl);
    Type(Kind::LevelsA, "3");
    RunTimes(10); // the user cancels
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
    OfferColumn({"0", "0.9", "0.6"});
    OfferAsItStands();
    RunTimes(10);
    EXPECT_EQ(Titles, (std::vector<std::string>{"Means", "Weight"}));
    EXPECT_EQ(Heads[1], "Final. Family No 1/Weighted  Bonferroni");
    EXPECT_EQ(OutputReady, True);
    EXPECT_EQ(ParText(Kind::SdOfMeans), "0.374166") << "follows from the means";
    RunTimes(20);
    EXPECT_EQ(SimNo, 20) << "they are not asked for again";
    Type(Kind::SdOfMeans, "0.5");
    RunTimes(5);
    EXPECT_EQ(SimNo, 20) << "a value that was changed by hand has no grid";
}

TEST_F(MultComp, NamesTheControlInTheGrid) {
    Open(menuControl);
    Type(Kind::LevelsA, "3");
    std::string heads;
    platform.GridFillings.emplace_back([&heads] {
        heads = CurrentGrid().RowHeads;
        return false;
    });
    RunTimes(1);
    EXPECT_EQ(heads, "Control,Factor A 2,Factor A 3");
}

TEST_F(MultComp, FamiliesHaveMethodsAndWeights) {
    Open(menuEach);
    Options();
    Tick(Check::SerialGatekeeping);
    ChooseInterim(1);
    Accept();
    Type(Kind::LevelsA, "3");
    OfferColumn({"0", "0.5", "0.5"});
    OfferGrid(GridRowTexts{{"1", "2"}, {"1", "2"}, {"2", "1"}});
    OfferGrid(GridRowTexts{{"5", "0", "1", "0"}});
    platform.GridFillings.emplace_back([this] {
        Titles.push_back(CurrentGrid().Title);
        Heads.push_back(CurrentGrid().ColumnHeads);
        EXPECT_EQ(GridText(3, 1), "1") << "the only test of its family";
        EXPECT_EQ(GridText(1, 1), "0");
        EXPECT_TRUE(IsLockedCell(1, 1));
        EXPECT_EQ(GridText(1, 2), "0.5");
        EXPECT_FALSE(IsLockedCell(1, 2));
        EXPECT_TRUE(GridIsLast());
        return FillCurrentGrid({});
    });
    RunTimes(10);
    ASSERT_EQ(Titles.size(), 4U);
    EXPECT_EQ(Titles[1], "Family No for Each Test");
    EXPECT_EQ(Heads[1], "Interim No 1,Final");
    EXPECT_EQ(Heads[2], "Interim No 1. Family No 1/Method,Interim No 1. Family No 2/Method,"
                        "Final. Family No 1/Method,Final. Family No 2/Method");
    EXPECT_EQ(Heads[3], "Interim No 1. Family No 2/Weighted  Bonferroni,"
                        "Final. Family No 2/Weighted  Bonferroni");
    EXPECT_EQ(FamilyMethod(1, 1), Adjust::Holm);
    EXPECT_EQ(FamilyMethod(1, 2), Adjust::Bonferroni);
    EXPECT_EQ(OutputReady, True);
}

TEST_F(MultComp, RefusesWhatNoGridCanHold) {
    Open(menuEach);
    Options();
    Tick(Check::ParallelGatekeeping);
    ChooseInterim(2);
    Accept();
    Type(Kind::LevelsA, "4");
    const auto refusal = [this](const GridRowTexts& rows) {
        platform.GridFillings.emplace_back([this, rows] {
            platform.Messages.clear();
            EXPECT_FALSE(FillCurrentGrid(rows));
            return false;
        });
        RunTimes(1);
        return LastMessage();
    };
    OfferColumn({"0", "1", "1", "1"});
    EXPECT_EQ(refusal({{"1", "1", "1"}, {"2", "2", "2"}, {"3", "3", "3"}, {"4", "4", "4"}}),
              "Number of Combinations of Interim and Final Analyses and Families Within an "
              "Analysis Must Not Exceed 9.");
    OfferColumn({"0", "1", "1", "1"});
    EXPECT_EQ(refusal({{"1", "1", "1"}, {"2", "0", "2"}, {"3", "3", "3"}, {"1", "1", "1"}}),
              "Numbers in Row 2 Must Be Integers between 1 and 9");
    OfferColumn({"0", "1", "1", "1"});
    OfferGrid(GridRowTexts{{"1", "1", "1"}, {"1", "1", "1"}, {"1", "1", "1"}, {"1", "1", "1"}});
    EXPECT_EQ(refusal({{"1", "7", "2"}}), "Methods Must Be Integers between 0 and 6.");
    OfferColumn({"0", "1", "1", "1"});
    OfferGrid(GridRowTexts{{"1", "1", "1"}, {"1", "1", "1"}, {"1", "1", "1"}, {"1", "1", "1"}});
    OfferGrid(GridRowTexts{{"1", "0", "2"}});
    EXPECT_EQ(refusal({{"0.3"}, {"0.3"}, {"0.3"}, {"0.2"}}),
              "Sum of Weights in Column 1 Must Not Exceed 1.");
}

TEST_F(MultComp, ACombinationHasCoefficients) {
    Open(703);
    Options();
    ChooseAdjustMethod(Adjust::Holm);
    Accept();
    Type(Kind::LevelsA, "3");
    Type(Kind::LinearCombinations, "2");
    OfferColumn({"0", "1", "1"});
    platform.GridFillings.emplace_back([] {
        EXPECT_FALSE(FillCurrentGrid({{"1", "0", "-1"}, {"0", "0", "0"}}));
        return false;
    });
    RunTimes(1);
    EXPECT_EQ(LastMessage(), "Coefficients in Row 2 Must Not All Be 0.");
}

// Its grids are opened from the box of the standard deviation of the means, before any run.
TEST_F(MultComp, RefusesMoreCombinationsThanThereIsRoomFor) {
    Open(703);
    for (const char* number : {"50", "0.2", "99999", ""}) {
        Type(Kind::LinearCombinations, number);
        platform.Messages.clear();
        EXPECT_NO_THROW(GetFromTable(PositionOf(Kind::SdOfMeans))) << number;
        EXPECT_FALSE(platform.Messages.empty()) << number;
    }
    Type(Kind::LinearCombinations, "50");
    platform.Messages.clear();
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(LastMessage(), "No of Linear Combinations Has To Be Less Than or Equal to 9.");
}

TEST_F(MultComp, RefusesMoreThanTenPairs) {
    Open(menuPairs);
    Type(Kind::LevelsA, "6");
    RunTimes(1);
    EXPECT_EQ(LastMessage(), "Number of Pair-wise Comparisons Exceeds 10.");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
}

TEST_F(MultComp, RefusesAveragePowerWithInterimAnalyses) {
    Open(menuControl);
    Options();
    ChooseInterim(1);
    Pick(Group::PowerDefinition, AveragePower);
    Accept();
    RunTimes(1);
    EXPECT_EQ(LastMessage(), "Average Power Is Calculated Only When No Interim Analyses.");
    EXPECT_EQ(OutputReady, False);
}

TEST_F(MultComp, OneGateExcludesTheOther) {
    Open(menuControl);
    Options();
    Tick(Check::SerialGatekeeping);
    Tick(Check::ParallelGatekeeping);
    EXPECT_EQ(CheckValue(Check::SerialGatekeeping), 0);
    Accept();
}

TEST_F(MultComp, AFamilyIsNotAcceptedAsAWhole) {
    Open(menuControl);
    EXPECT_FALSE(HasIntColumn(IntColumn::AcceptH0));
    EXPECT_TRUE(HasIntColumn(IntColumn::RejectH0));
}

// --- Results -------------------------------------------------------------------------------------

class EachMean : public MultComp {
  protected:
    void SetUp() override {
        MultComp::SetUp();
        Open(menuEach);
        Options();
        ChooseAdjustMethod(Adjust::Holm);
        Accept();
        Type(Kind::LevelsA, "3");
        Type(Kind::Sd, "1");
        Type(Kind::SizePerGroup, "20");
    }
    void RunWith(const std::vector<std::string>& means, int replicates = 1000) {
        OfferColumn(means);
        DropGrids();
        RunTimes(replicates);
        ASSERT_EQ(SimNo, replicates) << LastMessage();
    }
};

TEST_F(EachMean, NamesWhatItEstimates) {
    EXPECT_EQ(CaptionsOfEstimates().Sign, "True Family-wise Error");
    EXPECT_EQ(CaptionsOfEstimates().Power, "Disjunctive Power");
    EXPECT_EQ(CaptionsOfEstimates().PrAccept, "");
    Options();
    Pick(Group::PowerDefinition, AveragePower);
    Accept();
    EXPECT_EQ(CaptionsOfEstimates().Power, "Average Power");
}

TEST_F(EachMean, WithoutAFalseHypothesisThePowerIs1) {
    for (const i16 definition : {DisjunctivePower, ConjunctivePower, AveragePower}) {
        Options();
        Pick(Group::PowerDefinition, definition);
        Accept();
        RunWith({"0", "0", "0"});
        EXPECT_EQ(CountRejectH1(1), definition == AveragePower ? -100000 : 1000);
        // The display at replicate 1000 comes ahead of it.
        EXPECT_EQ(PowerEstimateText(0), definition == AveragePower ? "0.9680   0.9990   1.0300"
                                                                   : "0.9970   0.9990   1.0010");
        EXPECT_NEAR(static_cast<f64>(CountRejectH0(1)) / 1000, 0.05, 0.025);
    }
}

TEST_F(EachMean, TheErrorIsThatOfTheTrueHypotheses) {
    RunWith({"0", "50", "50"});
    EXPECT_EQ(CountRejectH1(1), 1000);
    // Holm leaves the whole level to the last one.
    EXPECT_NEAR(static_cast<f64>(CountRejectH0(1)) / 1000, 0.05, 0.025);
    const McTable& table = SimRejections();
    EXPECT_EQ(table.Rows.at(1), (std::vector<std::string>{"1.0000"}));
    EXPECT_EQ(table.Rows.at(2), (std::vector<std::string>{"1.0000"}));
    RunWith({"50", "50", "50"});
    EXPECT_NEAR(static_cast<f64>(CountRejectH0(1)) / 1000, 0.05, 0.025)
        << "where none is true, the means under H0 are";
}

TEST_F(EachMean, RandomTrueHypothesesFollowTheSeed) {
    Options();
    Tick(Check::RandomTrueH0);
    Accept();
    OfferColumn({"2", "2", "2"});
    std::vector<i16> falseOnes;
    for (const char* seed : {"1", "2", "3", "4", "5", "6", "7", "8"}) {
        Run("200", seed);
        falseOnes.push_back(NoOfFalseNull);
        for (i16 test = 1; test <= 3; ++test)
            EXPECT_EQ(H1Means(test), TrueNull(test) ? 0.0F : 2.0F);
        const auto first = Estimates();
        Run("200", seed);
        EXPECT_EQ(Estimates(), first) << seed;
    }
    EXPECT_GT(std::ranges::max(falseOnes), std::ranges::min(falseOnes));
}

TEST_F(EachMean, AveragePowerIsAShareOfHypotheses) {
    Options();
    Pick(Group::PowerDefinition, AveragePower);
    Accept();
    RunWith({"50", "50", "0"}, 200);
    EXPECT_EQ(CountRejectH1(1), -20000);
    RunWith({"0.000001", "0.000001", "0"}, 200);
    EXPECT_LE(CountRejectH1(1), 0) << "a set without rejection is none";
    EXPECT_GT(CountRejectH1(1), -2000);
}

TEST_F(EachMean, WhatAnInterimAnalysisRejectedStaysSo) {
    Options();
    ChooseInterim(1);
    Pick(Group::PowerDefinition, ConjunctivePower);
    Accept();
    Type(Kind::SizePerGroup, "40");
    RejectH0Text(0) = "0.01";
    RejectH0Text(1) = "0.04";
    RunWith({"0", "0.5", "0.6"}, 2000);
    const McTable& table = SimRejections();
    EXPECT_EQ(table.Heads, (std::vector<std::string>{"Interim1", "Final      ", "Over-All"}));
    for (i16 test = 1; test <= 3; ++test)
        EXPECT_LE(RejectCount(test)(1, 1) + RejectCount(test)(2, 1), 2000);
    EXPECT_GT(RejectCount(3)(1, 1), 0);
    EXPECT_GT(RejectCount(3)(2, 1), 0);
    // Together they keep the level of both.
    EXPECT_LE(static_cast<f64>(CountRejectH0(3)) / 2000, 0.05 + 0.017);
    EXPECT_EQ(CountRejectH1(1) + CountRejectH1(2), CountRejectH1(3));
}

TEST_F(EachMean, SmallGroupsRejectNothing) {
    Type(Kind::SizePerGroup, "2");
    RunWith({"9", "9", "9"}, 10);
    EXPECT_EQ(OutputReady, True);
    for (const i16 n : {i16{0}, i16{1}}) {
        SimSize1(1) = n;
        SimStage = 0;
        f32 p = 0;
        SelSimStatistic(p, 1);
        EXPECT_EQ(p, 1) << n << ": no degree of freedom";
    }
}

TEST_F(EachMean, LargeMeansLoseNoDigits) {
    Type(Kind::Sd, "0.00001");
    RunWith({"0", "99999", "0.000001"}, 500);
    EXPECT_EQ(RejectCount(2)(1, 1), 500);
    EXPECT_LT(RejectCount(3)(1, 1), 200);
    EXPECT_NEAR(static_cast<f64>(CountRejectH0(1)) / 500, 0.025, 0.02);
}

TEST_F(EachMean, ASavedFileRunsTheSame) {
    Options();
    Tick(Check::SerialGatekeeping);
    Accept();
    OfferColumn({"0.5", "0.7", "0"});
    OfferColumn({"1", "2", "2"});
    OfferGrid(GridRowTexts{{"1", "6"}});
    RunTimes(500);
    ASSERT_EQ(SimNo, 500) << LastMessage();
    const auto first = Estimates();
    const McTable table = SimRejections();
    TemporaryFolder folder;
    platform.FileNames.push_back(folder.Path("family.dim"));
    FileCommand(FileSaveAnalysis);
    Open(menuNormalEach); // another one in between
    Type(Kind::NormalDimension, "2");
    OfferColumn({"1", "2"});
    OfferAsItStands();
    RunTimes(10);
    platform.FileNames.push_back(folder.Path("family.dim"));
    FileCommand(FileOpenAnalysis);
    ASSERT_EQ(TestNo, 140);
    platform.GridFillings.clear();
    SerialGate = 0;
    Run("500", "20240615");
    ASSERT_EQ(SimNo, 500) << LastMessage();
    EXPECT_EQ(Estimates(), first);
    EXPECT_EQ(SimRejections().Rows, table.Rows);
}

TEST_F(EachMean, TheStatementNamesTheHypotheses) {
    struct Row {
        i16 MenuNo;
        bool IsLeft;
        i16 Tails;
        const char* Null;
        const char* Other;
    };
    constexpr Row rows[] = {
        {700, false, TwoSided, "each mean equal to that of the control",
         "some mean different from that of the control"},
        {711, false, TwoSided, "all means equal", "some means different"},
        {701, true, OneSided, "all means equal", "the first mean of some pair below the second"},
        {702, false, OneSided, "each mean equal to 0", "some mean above 0"},
        {713, true, OneSided, "each linear combination equal to 0",
         "some linear combination below 0"}};
    for (const Row& row : rows) {
        Open(row.MenuNo);
        Options();
        ChooseTails(row.Tails);
        ChooseLeftTail(row.IsLeft);
        Accept();
        PowerEstimateText(0) = "0.7000   0.8000   0.9000";
        EXPECT_NE(SumStatement().find("when testing the null hypothesis H0: " +
                                      std::string(row.Null) + " against H1: " + row.Other),
                  std::string::npos)
            << SumStatement();
    }
}

TEST_F(EachMean, TheStatementNamesTheProcedure) {
    RunWith({"0.5", "0.7", "0"}, 100);
    EXPECT_NE(SumStatement().find("the estimated true family-wise error is"), std::string::npos)
        << SumStatement();
    EXPECT_NE(
        SumStatement().find(" The hypotheses are about each of the means in a one-way analysis "
                            "of variance. The procedure used is Holm."),
        std::string::npos)
        << SumStatement();
    Options();
    Tick(Check::ParallelGatekeeping);
    Accept();
    OfferAsItStands();
    OfferColumn({"1", "1", "2"});
    OfferGrid(GridRowTexts{{"1", "6"}});
    RunTimes(100);
    EXPECT_NE(SumStatement().find("The procedure used is parallel gatekeeping with Bonferroni for "
                                  "family 1 and Hochberg for family 2."),
              std::string::npos)
        << SumStatement();
}

} // namespace
} // namespace quorvanta::checks
