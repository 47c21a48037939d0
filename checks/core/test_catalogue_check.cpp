// The properties of tests and distributions against lists that were compiled apart from them.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "support/tsv.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 HighestTestNo = 500;
constexpr i16 HighestMenuNo = 900;

class TestCatalogue : public testing::Test {
  protected:
    void SetUp() override { ResetAnalysisState(); }

    static void TakeTest(int testNo) {
        IsTest = True;
        TestNo = static_cast<i16>(testNo);
    }

    static void TakeParameter(i16 distrNo, i16 samples, i16 parListNo,
                              i16 procedure = ProcedureTest) {
        IsTest = False;
        DistrNo = distrNo;
        NoOfSamples = samples;
        ParListNo = parListNo;
        ProcedureNo = procedure;
    }

    static std::set<int> Listed(const std::string& set) {
        std::set<int> numbers;
        for (const auto& row : checks::ReadTsv("catalogue_test_sets.tsv"))
            if (row[0] == set)
                numbers.insert(std::stoi(row[1]));
        EXPECT_FALSE(numbers.empty()) << set;
        return numbers;
    }

    static std::set<int> TestsWith(bool (*property)()) {
        std::set<int> numbers;
        for (i16 testNo = 0; testNo <= HighestTestNo; ++testNo) {
            TakeTest(testNo);
            if (property())
                numbers.insert(testNo);
        }
        return numbers;
    }
};

TEST_F(TestCatalogue, PropertiesHoldForTheListedTests) {
    EXPECT_EQ(TestsWith(HasSurvivalGraph), Listed("HasSurvivalGraph"));
    EXPECT_EQ(TestsWith(IsDiscreteTest), Listed("IsDiscreteTest"));
    EXPECT_EQ(TestsWith(UsesEventTimes), Listed("UsesEventTimes"));
}

TEST_F(TestCatalogue, SimulationsThatAreTheOnlyForm) {
    const auto listed = Listed("IsSimOnly");
    for (i16 menuNo = 0; menuNo <= HighestMenuNo; ++menuNo)
        for (const i16 window : {CalculationWindow, TableWindow, GraphWindow, i16{-1}})
            EXPECT_EQ(IsSimOnly(menuNo, window), listed.contains(TestNoOfMenu(menuNo))) << menuNo;
    EXPECT_TRUE(IsSimOnly(320, CalculationWindow));  // Friedman's test
    EXPECT_FALSE(IsSimOnly(350, CalculationWindow)); // Savage test
}

TEST_F(TestCatalogue, NothingIsSimOnlyInASimulationWindow) {
    for (i16 menuNo = 0; menuNo <= HighestMenuNo; ++menuNo)
        EXPECT_FALSE(IsSimOnly(menuNo, SimulationWindow)) << menuNo;
}

TEST_F(TestCatalogue, AskingForTheOnlyFormSetsNoFlag) {
    EXPECT_TRUE(IsSimOnly(700, CalculationWindow));
    IsSimOnly(600, CalculationWindow);
    EXPECT_EQ(IsMultComp, False);
    EXPECT_EQ(IsGroupSeq, False);
}

TEST_F(TestCatalogue, MenuNumbersWithoutSimulation) {
    const auto listed = Listed("no simulation window (menu)");
    for (i16 menuNo = 0; menuNo <= HighestMenuNo; ++menuNo)
        EXPECT_EQ(HasSimWindow(menuNo), !listed.contains(menuNo)) << menuNo;
}

TEST_F(TestCatalogue, EveryTestHasAWindow) {
    for (i16 menuNo = 0; menuNo <= HighestMenuNo; ++menuNo)
        EXPECT_TRUE(HasSimWindow(menuNo) || !IsSimOnly(menuNo, CalculationWindow)) << menuNo;
}

// Their replicates could never be drawn: neither the windows nor the menus lead to one.
TEST_F(TestCatalogue, TestsWithoutASimulatedStatisticHaveNoSimulationWindow) {
    std::set<int> without = {36, 38, 39, 42, 64, 65, 66, 67, 118, 119, 200, 201};
    for (i16 menuNo = 0; menuNo <= HighestMenuNo; ++menuNo)
        if (without.contains(TestNoOfMenu(menuNo))) {
            EXPECT_FALSE(HasSimWindow(menuNo)) << menuNo;
            without.erase(TestNoOfMenu(menuNo));
        }
    EXPECT_TRUE(without.empty());
}

TEST_F(TestCatalogue, SurvivalTimesOfSimulatedTests) {
    std::map<int, i16> listed;
    for (const i16 distribution : std::vector<i16>{5, 7, 8, 10})
        for (const int testNo : Listed("SimDistrNo " + std::to_string(distribution)))
            EXPECT_TRUE(listed.emplace(testNo, distribution).second) << testNo;
    constexpr i16 untouched = -7;
    for (int testNo = 0; testNo <= HighestTestNo; ++testNo) {
        TakeTest(testNo);
        SimDistrNo = untouched;
        SetSimDistr();
        EXPECT_EQ(SimDistrNo, listed.contains(testNo) ? listed[testNo] : untouched) << testNo;
    }
}

TEST_F(TestCatalogue, CodesOfTests) {
    const std::map<int, std::string> codes = {
        {0, "UNPTT"}, {74, "UNPTT"}, {81, "UNPTT"},  {1, "PTT"},   {75, "LTT"},
        {82, "LTT"},  {83, "LTT"},   {125, "GSTT"},  {27, "WEIB"}, {32, "WEIB"},
        {28, "GAM"},  {33, "GAM"},   {35, "LRPWEXP"}};
    for (int testNo = 0; testNo <= HighestTestNo; ++testNo) {
        TakeTest(testNo);
        const auto code = codes.find(testNo);
        EXPECT_EQ(TestCode(), code == codes.end() ? "" : code->second) << testNo;
    }
}

TEST_F(TestCatalogue, CodesOfParameterAnalyses) {
    TestNo = 0; // no test: its number must not count
    for (i16 distrNo = 0; distrNo <= 10; ++distrNo)
        for (const i16 samples : {OneSample, TwoSamples, MoreSamples})
            for (i16 parListNo = 0; parListNo <= 3; ++parListNo) {
                TakeParameter(distrNo, samples, parListNo);
                std::string code;
                if (distrNo == DistrNormal && samples == OneSample)
                    code = parListNo == 0 ? "NOR1" : parListNo == 1 ? "TT1" : "";
                else if (distrNo == DistrNormal && samples == TwoSamples)
                    code = "NOR2";
                else if (distrNo == DistrLognormal && samples != MoreSamples)
                    code = "LTT";
                EXPECT_EQ(TestCode(), code) << distrNo << " " << samples << " " << parListNo;
            }
}

TEST_F(TestCatalogue, VariantsAndCodesGoTogether) {
    TakeTest(0);
    EXPECT_EQ(CurrentVariant(), TestVariant::UNPTT);
    TakeTest(35);
    EXPECT_EQ(CurrentVariant(), TestVariant::LRPWEXP);
    TakeTest(2);
    EXPECT_EQ(CurrentVariant(), TestVariant::None);
    TakeParameter(DistrNormal, OneSample, 0);
    EXPECT_EQ(CurrentVariant(), TestVariant::NOR1);
    TakeParameter(DistrNormal, OneSample, 1);
    EXPECT_EQ(CurrentVariant(), TestVariant::TT1);
    TakeParameter(DistrNormal, TwoSamples, 3);
    EXPECT_EQ(CurrentVariant(), TestVariant::NOR2);
}

TEST_F(TestCatalogue, OnlyTestsOfDistributionsHaveTheirGraph) {
    const std::set<i16> withGraph = {DistrNormal,   DistrLognormal,      DistrExponential,
                                     DistrBinomial, DistrHypergeometric, DistrPoisson};
    TestNo = 26; // no test: its number must not count
    for (i16 distrNo = 0; distrNo <= 10; ++distrNo)
        for (const i16 procedure : {ProcedureTest, ProcedureEstimate, ProcedureInterval}) {
            TakeParameter(distrNo, OneSample, 0, procedure);
            EXPECT_EQ(HasSurvivalGraph(), withGraph.contains(distrNo) && procedure == ProcedureTest)
                << distrNo << " " << procedure;
        }
}

TEST_F(TestCatalogue, OnlyThePoissonRateUsesEventTimes) {
    TestNo = 26;
    for (i16 distrNo = 0; distrNo <= 10; ++distrNo)
        for (i16 parListNo = 0; parListNo <= 3; ++parListNo) {
            TakeParameter(distrNo, OneSample, parListNo);
            EXPECT_EQ(UsesEventTimes(), distrNo == DistrPoisson && parListNo == 1);
        }
}

TEST_F(TestCatalogue, ParameterAnalysesAreNoDiscreteTests) {
    TestNo = 41;
    TakeParameter(DistrBinomial, OneSample, 0);
    EXPECT_FALSE(IsDiscreteTest());
}

TEST_F(TestCatalogue, HelpNumbersOfTests) {
    NoOfSamples = TwoSamples;
    NoOfTails = TwoOneSided;
    TakeTest(0);
    EXPECT_EQ(HelpDescription(), 301);
    EXPECT_EQ(HelpParameters(), 2300);
    EXPECT_EQ(HelpExample(), 9301);
    // The number of the parameters needs more than 16 bits, and fits the state's 32-bit float.
    TakeTest(405);
    EXPECT_EQ(HelpDescription(), 706);
    EXPECT_EQ(HelpParameters(), 4052300);
    EXPECT_EQ(HelpExample(), 9706);
    EXPECT_EQ(static_cast<f64>(static_cast<f32>(HelpParameters())), 4052300.0);
}

TEST_F(TestCatalogue, HelpNumbersOfParameterAnalyses) {
    TakeParameter(DistrBivariateNormal, OneSample, 3, ProcedureInterval);
    NoOfTails = TwoSided;
    EXPECT_EQ(HelpDescription(), 811);
    EXPECT_EQ(HelpParameters(), 101242);
    EXPECT_EQ(HelpExample(), 9811);
    TakeParameter(DistrNormal, TwoSamples, 0);
    EXPECT_EQ(HelpDescription(), 801);
    EXPECT_EQ(HelpParameters(), 2210);
    EXPECT_EQ(HelpExample(), 9801);
}

TEST_F(TestCatalogue, ParameterListsAreAsListed) {
    std::map<int, std::vector<std::string>> lists;
    for (const auto& row : checks::ReadTsv("catalogue_distributions.tsv")) {
        auto& list = lists[std::stoi(row[0])];
        EXPECT_EQ(std::to_string(list.size()), row[1]);
        list.push_back(row[2]);
    }
    EXPECT_EQ(lists.size(), 8U);
    for (i16 distrNo = -1; distrNo <= 11; ++distrNo) {
        const auto list = DistrParList(distrNo);
        EXPECT_EQ(std::vector<std::string>(list.begin(), list.end()), lists[distrNo]) << distrNo;
    }
}

TEST_F(TestCatalogue, WindowKindsHaveTheirCaptions) {
    EXPECT_EQ(WindowKindCaption(CalculationWindow), "Calculation");
    EXPECT_EQ(WindowKindCaption(TableWindow), "Table");
    EXPECT_EQ(WindowKindCaption(GraphWindow), "Graph");
    EXPECT_EQ(WindowKindCaption(SimulationWindow), "Monte Carlo Simulation");
    EXPECT_THROW(WindowKindCaption(4), RunTimeError);
    EXPECT_THROW(WindowKindCaption(-1), RunTimeError);
}

} // namespace

} // namespace quorvanta
