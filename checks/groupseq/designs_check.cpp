#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/option_choice.h"
#include "core/run.h"
#include "core/setup.h"
#include "core/showintpar.h"
#include "core/showpar.h"
#include "core/values.h"
#include "groupseq/boundaries.h"
#include "groupseq/boundchoice.h"
#include "groupseq/designs.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "numeric/rounding.h"
#include "output/counted_sizes.h"
#include "output/designresults.h"
#include "output/statement.h"
#include "support/design_answers.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/solving_fixture.h"
#include "support/temporary_folder.h"
#include "support/tsv.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 MenuMeans = 600;
constexpr i16 MenuLogrank = 630;

std::vector<std::string> Words(const std::string& text, char between) {
    std::vector<std::string> words;
    std::istringstream all(text);
    for (std::string word; std::getline(all, word, between);)
        words.push_back(word);
    return words;
}

class GroupSeqDesigns : public SolvingFixture {
  protected:
    void SetUp() override {
        SolvingFixture::SetUp();
        ForgetCritValues();
    }

    // What the user will answer: boundaries with their parameter, fractions.
    void Plan(i16 type, const std::string& par, const std::vector<std::string>& fractions,
              const GridRowTexts& levels = {}) {
        NoOfInterim = static_cast<i16>(fractions.size());
        AnswerDesign(platform, type, par, fractions, levels);
    }

    std::string LastStatus() const {
        return platform.Statuses.empty() ? "" : platform.Statuses.back();
    }

    static Values ValuesOf(const std::string& text) {
        Values values;
        for (const std::string& word : Words(text, ';')) {
            const auto pair = Words(word, '=');
            values[ToI16(ParseNumber(pair[0]))] = pair[1];
        }
        return values;
    }

    f64 Solve(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        return SolutionOf(choice, values, unknown);
    }

    // Levels as "0.01,0.045;0.5,1": for rejecting and for accepting, at each analysis.
    static GridRowTexts LevelRows(const std::string& text) {
        const auto sides = Words(text, ';');
        const auto reject = Words(sides.at(0), ',');
        const auto accept = Words(sides.at(1), ',');
        GridRowTexts rows;
        for (std::size_t k = 0; k < reject.size(); ++k)
            rows.push_back({reject[k], accept[k]});
        return rows;
    }

    static AnalysisChoice ChoiceOf(i16 menuNo, i16 samples, i16 tails) {
        const bool isMeans = menuNo == MenuMeans;
        std::map<i16, i16> groups{{isMeans ? Group::H1Mean : Group::H1Proportion, 0}};
        if (samples == TwoSamples && isMeans)
            groups = {{Group::Mean2, 1}, {Group::Sd2, 0}, {Group::Size2, 2}};
        else if (samples == TwoSamples)
            groups = {{Group::Proportion2, 0}, {Group::Size2, 2}};
        return MenuChoice(menuNo, samples, tails, groups);
    }

    void ExpectDesign(const std::vector<std::string>& row) {
        SCOPED_TRACE(row[0] + " samples " + row[1] + " tails " + row[2] + " type " + row[4] + " " +
                     row[5] + " at " + row[6]);
        const i16 samples = ToI16(ParseNumber(row[1]));
        const i16 type = ToI16(ParseNumber(row[4]));
        auto fractions = Words(row[6], ',');
        fractions.pop_back();
        Plan(type, row[5], fractions,
             type == BoundUserDefined ? LevelRows(row[5]) : GridRowTexts());
        const f64 exact = ParseNumber(row[7]);
        const f64 solved =
            Solve(ChoiceOf(ToI16(ParseNumber(row[0])), samples, ToI16(ParseNumber(row[2]))),
                  ValuesOf(row[3]), samples == OneSample ? Kind::Size : Kind::Size1);
        // Bounds off by 5e-4 of NorInv move the size by their share of the drift, twice.
        EXPECT_NEAR(solved / exact, 1, 0.0015);
        if (Int(solved - 1e-5) != Int(exact - 1e-5))
            return; // a whole subject more or less
        const auto stops = Words(row[8], ',');
        for (i16 k = 1; k <= NoOfAnal; ++k)
            EXPECT_NEAR(f64{GsColumnOf(k).UppH1},
                        ParseNumber(stops[static_cast<std::size_t>(k - 1)]), 5e-4)
                << k;
        if (row[9] != "-") {
            EXPECT_NEAR(GsAverageSize(false) / ParseNumber(row[9]), 1, 5e-4);
        }
        EXPECT_NEAR(GsAverageSize(true) / ParseNumber(row[10]), 1, 5e-4);
    }
};

TEST_F(GroupSeqDesigns, HaveTheSizesAndStopsOfExactIntegration) {
    const auto rows = ReadTsv("group_sequential_designs.tsv");
    EXPECT_GE(rows.size(), 40U);
    for (const auto& row : rows)
        ExpectDesign(row);
}

TEST_F(GroupSeqDesigns, HaveTheSizesAndStopsOfExactIntegrationWithTwoBoundaries) {
    const auto rows = ReadTsv("group_sequential_two_boundaries.tsv");
    EXPECT_GE(rows.size(), 12U);
    for (const auto& row : rows)
        ExpectDesign(row);
}

TEST_F(GroupSeqDesigns, PutBackTheirSizeHaveThePower) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.85"},
                        {Kind::H0Mean, "0"},
                        {Kind::H1Mean, "0.4"},
                        {Kind::Sd, "1"},
                        {Kind::MeanLeftLimit, "-0.5"},
                        {Kind::MeanRightLimit, "0.6"}};
    for (const i16 menuList : {i16{0}, i16{1}})
        for (const i16 tails : {OneSided, TwoSided, TwoOneSided})
            for (i16 type = 0; type < NoOfBoundTypes; ++type) {
                if (type == BoundUserDefined || (type == BoundPowerFamily && tails == TwoSided))
                    continue;
                SCOPED_TRACE(std::to_string(menuList) + " tails " + std::to_string(tails) +
                             " type " + std::to_string(type));
                AnalysisChoice choice =
                    MenuChoice(MenuMeans, OneSample, tails, {{Group::H1Mean, 0}});
                Plan(type, type == BoundRhoFamily ? "2" : "0", {"0.4", "0.7"});
                if (tails == TwoOneSided)
                    Plan(type, type == BoundRhoFamily ? "2" : "0", {"0.7", "0.9"});
                Open(choice);
                ChooseParList(menuList);
                ChooseSamples(OneSample);
                ChooseTails(tails);
                ParText(Kind::Power) = "0.85";
                AcceptOptions();
                for (const auto& [kind, text] : values)
                    ParText(kind) = text;
                if (tails == TwoOneSided)
                    ParText(Kind::H1Mean) = "0.05";
                Calculated = False;
                MakeUnknown(NoOfPar);
                CalcUnknown();
                ASSERT_TRUE(HasValue(ParText(Kind::Size)));
                const f64 size = ParValue(NoOfPar);
                EXPECT_EQ(NoOfTails, tails);
                ReadParValues();
                ParValue(NoOfPar) = size;
                ForgetCritValues();
                UnknownParNo = NoOfPar;
                EXPECT_NEAR(SelRootFunction(), 0, 1.5e-3);
            }
}

TEST_F(GroupSeqDesigns, AskForBoundariesAndFractionsOnce) {
    Plan(BoundWangTsiatis, "0.3", {"0.4", "0.8"});
    const f64 size = Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
                           {{Kind::H1Mean, "0.5"}}, Kind::Size);
    EXPECT_NE(size, NoValue);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(BoundType, BoundWangTsiatis);
    EXPECT_FLOAT_EQ(FamilyPar, 0.3F);
    EXPECT_FLOAT_EQ(IntTime(1), 0.4F);
    EXPECT_FLOAT_EQ(IntTime(2), 0.8F);
    EXPECT_EQ(IntTime(3), 1);
    EXPECT_TRUE(platform.BoundaryChoices.empty());
    // The next parameter is solved without another question.
    SolveFor(PositionOf(Kind::Power));
    EXPECT_TRUE(HasValue(ParText(Kind::Power)));
    EXPECT_TRUE(platform.IsShown(FloatingWindow::SequentialMonitor));
}

TEST_F(GroupSeqDesigns, OfOneInterimAnalysisKeepItsFraction) {
    Plan(BoundOBrienFleming, "", {"0.7"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}), {{Kind::H1Mean, "0.5"}},
          Kind::Size);
    EXPECT_FLOAT_EQ(IntTime(1), 0.7F);
    GsReadFractions();
    EXPECT_FLOAT_EQ(IntTime(1), 0.7F);
}

TEST_F(GroupSeqDesigns, GivenUpChangeNothing) {
    Plan(BoundRhoFamily, "2", {"0.5"});
    platform.BoundaryChoices = {[] { return false; }};
    Start(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}), {});
    SolveFor(PositionOf(Kind::Size));
    EXPECT_FALSE(HasValue(ParText(Kind::Size)));
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(platform.Messages.empty());
    // The boundaries are chosen, the fractions given up.
    Plan(BoundRhoFamily, "2", {"0.5"});
    platform.GridFillings = {[] { return false; }};
    SolveFor(PositionOf(Kind::Size));
    EXPECT_EQ(HasGridData, False);
    EXPECT_NE(SimDistrOption(1), BoundRhoFamily);
}

TEST_F(GroupSeqDesigns, StartWithEqualSteps) {
    Plan(BoundPocock, "", {"", "", ""});
    std::vector<std::string> start;
    platform.GridFillings = {[&start] {
        for (i16 row = 1; row <= 3; ++row)
            start.push_back(GridText(row, 1));
        EXPECT_EQ(CurrentGrid().RowHeads, "Interim Analysis");
        EXPECT_EQ(CurrentGrid().ColumnHeads, "Information Fraction");
        return !AcceptGrid().has_value();
    }};
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}), {}, Kind::Size);
    EXPECT_EQ(start, (std::vector<std::string>{"0.25", "0.5", "0.75"}));
}

TEST_F(GroupSeqDesigns, RefuseFractionsThatFall) {
    Plan(BoundPocock, "", {"0.7", "0.4"});
    Solve(MenuChoice(MenuMeans, TwoSamples, TwoSided, {{Group::Mean2, 1}}),
          {{Kind::Size1, "50"}, {Kind::Size2, "50"}}, Kind::Power);
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{"Sample Size 1 at Interim Analysis1 Is "
                                                          "Larger Than at Interim Analysis2."}));
    EXPECT_EQ(Cancelled, False);
}

TEST_F(GroupSeqDesigns, RefuseFractionsOutsideTheTrial) {
    Plan(BoundPocock, "", {"1.2"});
    platform.Messages.clear();
    Start(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}), {});
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Information Fraction Must Be > 0 and < 1."}));
}

TEST_F(GroupSeqDesigns, OfThePowerFamilyAskForNoPowerOrLevel) {
    for (const i16 unknown : {Kind::Power, Kind::SignificanceLevel}) {
        Plan(BoundPowerFamily, "0", {"0.5"});
        Solve(MenuChoice(MenuMeans, OneSample, OneSided, {{Group::H1Mean, 0}}),
              {{Kind::H1Mean, "0.5"}}, unknown);
        EXPECT_EQ(platform.Texts(),
                  (std::vector<std::string>{
                      "Significance Level and Power Can't Be Calculated in Power Family."}));
        EXPECT_EQ(Cancelled, False);
        EXPECT_FALSE(HasValue(ParText(unknown)));
    }
}

TEST_F(GroupSeqDesigns, OfThePowerFamilyBetweenLimitsRunWithTwoTails) {
    Plan(BoundPowerFamily, "-0.5", {"0.5"});
    const f64 size = Solve(MenuChoice(MenuMeans, OneSample, TwoOneSided),
                           {{Kind::MeanLeftLimit, "-0.5"},
                            {Kind::MeanRightLimit, "0.5"},
                            {Kind::H1Mean, "0"},
                            {Kind::Power, "0.9"}},
                           Kind::Size);
    EXPECT_NE(size, NoValue);
    EXPECT_EQ(NoOfTails, TwoOneSided);
}

// The smaller margin counts, on either side, and the boundaries are those of two tails.
TEST_F(GroupSeqDesigns, OfThePowerFamilyBetweenLimitsHaveTheSmallerMargin) {
    const auto sizeBetween = [this](const char* left, const char* right) {
        Plan(BoundPowerFamily, "-0.5", {"0.5"});
        return Solve(MenuChoice(MenuMeans, OneSample, TwoOneSided),
                     {{Kind::SignificanceLevel, "0.05"},
                      {Kind::MeanLeftLimit, left},
                      {Kind::MeanRightLimit, right},
                      {Kind::H1Mean, "0"},
                      {Kind::Sd, "1"},
                      {Kind::Power, "0.9"}},
                     Kind::Size);
    };
    const f64 size = sizeBetween("-0.3", "0.3");
    ASSERT_NE(size, NoValue);
    EXPECT_NEAR(sizeBetween("-0.3", "0.5") / size, 1, 1e-5);
    EXPECT_NEAR(sizeBetween("-0.5", "0.3") / size, 1, 1e-5);
    EXPECT_NEAR(sizeBetween("-0.5", "0.5") / size, 0.36, 0.001) << "(0.3/0.5)^2";
    EXPECT_EQ(NoOfTails, TwoOneSided);
    const Array1<f32> upper = UppBound;
    const Array1<f32> lower = LowBound;
    // A difference of the margin's size in a two-sided test.
    Plan(BoundPowerFamily, "-0.5", {"0.5"});
    EXPECT_NEAR(Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
                      {{Kind::SignificanceLevel, "0.05"},
                       {Kind::H0Mean, "0"},
                       {Kind::H1Mean, "0.3"},
                       {Kind::Sd, "1"},
                       {Kind::Power, "0.9"}},
                      Kind::Size) /
                    size,
                1, 0.001);
    for (i16 k = 1; k <= 2; ++k) {
        EXPECT_NEAR(UppBound(k), upper(k), 1e-3) << k;
        EXPECT_NEAR(LowBound(k), lower(k), 1e-3) << k;
    }
}

TEST_F(GroupSeqDesigns, WithoutASolutionSaySo) {
    Plan(BoundPowerFamily, "0", {"0.333", "0.667"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Power, "0.8"}}, Kind::Size);
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{"Can't Be Calculated."}));
    EXPECT_EQ(LastStatus(), "No boundaries of this type agree with the other values.");
    EXPECT_TRUE(DesignRows().empty());
}

// Without a difference a design rejects as often as its level says, whatever its size.
TEST_F(GroupSeqDesigns, WithoutADifferenceSayWhy) {
    Plan(BoundRhoFamily, "2", {"0.333", "0.667"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::SignificanceLevel, "0.05"}, {Kind::H1Mean, "0"}, {Kind::Power, "0.8"}},
          Kind::Size);
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{"Can't Be Calculated."}));
    EXPECT_EQ(LastStatus(), "Sample Size from 3 to 99999: Power goes from 0.05 to 0.05, and 0.8 is "
                            "asked. H1 equals H0.");
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(DesignRows().empty());
}

TEST_F(GroupSeqDesigns, OfLevelsOfTheUserShowThemFirst) {
    Plan(BoundUserDefined, "", {"0.5"}, {{"0.01", "0"}, {"0.04", "1"}});
    platform.GridFillings.front() = [] {
        EXPECT_EQ(CurrentGrid().RowHeads, "1,Final");
        EXPECT_EQ(CurrentGrid().ColumnHeads, "Reject H0 if p<,Accept H0 if p>");
        return FillCurrentGrid({{"0.01", "0"}, {"0.04", "1"}});
    };
    Start(MenuChoice(MenuMeans, OneSample, OneSided, {{Group::H1Mean, 0}}),
          {{Kind::Sd, "1"}, {Kind::H1Mean, "0.5"}, {Kind::SignificanceLevel, "0.04"}});
    platform.Messages.clear();
    EXPECT_EQ(Calculated, False);
    EXPECT_TRUE(platform.IsShown(FloatingWindow::InterimParameters));
    SolveFor(PositionOf(Kind::Size));
    EXPECT_TRUE(HasValue(ParText(Kind::Size)));
    EXPECT_FLOAT_EQ(LevelReject(1), 0.01F);
    EXPECT_EQ(LevelAccept(1), 1); // nothing accepts there
    EXPECT_EQ(LowBound(1), BoundBelowAll);
    RejectH0Text(0) = "1.5";
    Calculated = False;
    SolveFor(PositionOf(Kind::Size));
    AcceptH0Text(0) = "-1";
    RejectH0Text(0) = "";
    Calculated = False;
    SolveFor(PositionOf(Kind::Size));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Probability To Reject H0 Is Outside (0, 1).",
                                        "Probability To Accept H0 Is Outside (0, 1)."}));
}

TEST_F(GroupSeqDesigns, OfOneAnalysisHaveNoLineOfAll) {
    NoOfInterim = 0;
    int asked = 0;
    platform.GridFillings.emplace_back([&asked] {
        ++asked;
        return false;
    });
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    const auto rows = DesignRows();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].Analysis, "Final Analysis");
    EXPECT_TRUE(AverageOfDesign().Caption.empty());
    EXPECT_EQ(asked, 0) << "there are no fractions to ask for";
}

TEST_F(GroupSeqDesigns, ShowTheirStops) {
    Plan(BoundOBrienFleming, "", {"0.5"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}, {Kind::Power, "0.8"}}, Kind::Size);
    const auto rows = DesignRows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].Analysis, "Interim Analysis 1");
    EXPECT_EQ(rows[1].Analysis, "Final Analysis");
    EXPECT_EQ(rows[2].Analysis, "Over-All");
    EXPECT_EQ(rows[0].Boundaries, "2.7965");
    EXPECT_EQ(rows[1].Boundaries, "1.9774");
    EXPECT_EQ(rows[2].Level, "0.0500");
    EXPECT_EQ(AverageOfDesign().Caption, "Average   Sample Size");
    EXPECT_EQ(InterimSize1Text(0), "16");
    EXPECT_EQ(InterimSize1Text(1), "32");
    EXPECT_EQ(RejectH0Text(0), "0.00517");
    const Presentation plot = BoundaryPlot(BoundScale::Statistic);
    ASSERT_EQ(plot.X.HighBound(), 2);
    EXPECT_NEAR(f64{plot.Y(1, 1)}, 2.7965, 5e-5);
    EXPECT_EQ(plot.Y(1, 2), -plot.Y(1, 1));
    EXPECT_EQ(BoundaryPlot(BoundScale::Level).Y(1, 1), LevelReject(1));
}

TEST_F(GroupSeqDesigns, ThatEquivalenceCannotReachAreBlank) {
    Plan(BoundPocock, "", {"0.1"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoOneSided),
          {{Kind::MeanLeftLimit, "-0.5"}, {Kind::MeanRightLimit, "0.5"}, {Kind::H1Mean, "0"}},
          Kind::Size);
    const auto rows = DesignRows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(UppBound(1), BoundAboveAll);
    EXPECT_EQ(rows[0].Boundaries, "   ");
}

TEST_F(GroupSeqDesigns, AreTheSameSavedAndOpenedAgain) {
    Plan(BoundGammaFamily, "-3", {"0.3", "0.6"});
    const AnalysisChoice choice = MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}});
    const f64 size = Solve(choice, {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    ASSERT_NE(size, NoValue);
    const Array1<f32> bounds = UppBound;
    const auto rows = DesignRows();
    const std::string text = ParText(Kind::Size);
    const auto levels = RejectH0Text;
    const TemporaryFolder folder;
    platform.FileNames.push_back(folder.Path("design.dim"));
    FileCommand(FileSaveAnalysis);
    NewWindow(CalculationWindow);
    Plan(BoundPocock, "", {"0.5"});
    Solve(choice, {{Kind::H1Mean, "0.7"}, {Kind::Sd, "1"}}, Kind::Size);
    ForgetCritValues();
    platform.FileNames.push_back(folder.Path("design.dim"));
    FileCommand(FileOpenAnalysis);
    EXPECT_EQ(platform.Texts(), std::vector<std::string>());
    EXPECT_EQ(IsGroupSeq, True);
    EXPECT_EQ(NoOfInterim, 2);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(RejectH0Text(0), levels(0));
    EXPECT_EQ(ParText(Kind::Size), text);
    Calculated = False;
    SolveFor(PositionOf(Kind::Size));
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(BoundType, BoundGammaFamily);
    EXPECT_FLOAT_EQ(FamilyPar, -3);
    EXPECT_EQ(UppBound, bounds);
    EXPECT_EQ(ParValue(UnknownParNo), size);
    const auto again = DesignRows();
    ASSERT_EQ(again.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(again[i].Power, rows[i].Power);
}

// No entry of the menus leads to this one: it is an option of the other.
TEST_F(GroupSeqDesigns, OfUnknownDeviationsAreOpenedAgain) {
    NoOfInterim = 0;
    Open(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}));
    EXPECT_EQ(OfferedParLists().size(), 2U);
    EXPECT_EQ(ChosenParList(), 0);
    ChooseParList(1);
    EXPECT_EQ(ChosenParList(), 1);
    EXPECT_EQ(HelpDescription(), 425);
    AcceptOptions();
    ParText(Kind::H1Mean) = "0.5";
    ParText(Kind::Sd) = "1";
    Calculated = False;
    SolveFor(PositionOf(Kind::Size));
    const std::string size = ParText(Kind::Size);
    ASSERT_TRUE(HasValue(size));
    const TemporaryFolder folder;
    platform.FileNames.assign(2, folder.Path("student.dim"));
    FileCommand(FileSaveAnalysis);
    NewWindow(CalculationWindow);
    FileCommand(FileOpenAnalysis);
    EXPECT_EQ(platform.Texts(), std::vector<std::string>());
    EXPECT_EQ(ChosenParList(), 1);
    EXPECT_EQ(ParText(Kind::Size), size);
}

TEST_F(GroupSeqDesigns, SearchForASizeWithoutNewConstants) {
    Plan(BoundLanDeMetsPocock, "", {"0.25", "0.5", "0.75"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    GsCritValuesAreNew();
    Calculated = False;
    ParText(Kind::H1Mean) = "0.4";
    SolveFor(PositionOf(Kind::Size));
    EXPECT_FALSE(GsCritValuesAreNew());
}

TEST_F(GroupSeqDesigns, OfEventsCountThem) {
    Plan(BoundOBrienFleming, "", {"0.5"});
    const f64 events =
        Solve(MenuChoice(MenuLogrank, TwoSamples, TwoSided, {{Group::Rate2, 0}, {Group::Given, 1}}),
              {{332, "1"}, {9, "0.5"}, {73, "0.8"}, {Kind::Power, "0.9"}, {5, "1"}}, Kind::Events);
    EXPECT_NE(events, NoValue);
    EXPECT_EQ(GsTestKind, GsLogrank);
    EXPECT_EQ(AverageOfDesign().Caption, "Average No of Events");
}

// --- Log-rank test ------------------------------------------------------------------------------

class LogrankDesigns : public GroupSeqDesigns {
  protected:
    static Values ValuesOfRow(const std::vector<std::string>& row) {
        return {
            {Kind::H0Rate2Over1, "1"},   {Kind::H1Rate1, row[0]},          {Kind::H1Rate2, row[1]},
            {Kind::LossRate1, row[2]},   {Kind::LossRate2, row[2]},        {Kind::AccrualRate, "0"},
            {Kind::AccrualTime, row[3]}, {Kind::TotalStudyTime, row[4]},   {Kind::Size1, row[5]},
            {Kind::Size2, row[6]},       {Kind::SignificanceLevel, "0.05"}};
    }
    static AnalysisChoice ChoiceOfSizes(std::vector<i16> ticked = {}) {
        return MenuChoice(
            MenuLogrank, TwoSamples, TwoSided,
            {{Group::Rate2, 0}, {Group::LossRate2, 0}, {Group::Size2, 0}, {Group::Given, 0}},
            std::move(ticked));
    }
};

TEST_F(LogrankDesigns, TakePlaceWhenTheEventsAreThere) {
    for (const auto& row : ReadTsv("group_sequential_times.tsv")) {
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2] + " at " + row[7]);
        Plan(BoundOBrienFleming, "", {row[7]});
        ASSERT_NE(Solve(ChoiceOfSizes(), ValuesOfRow(row), Kind::Power), NoValue);
        EXPECT_FLOAT_EQ(IntTime(1), Single(ParseNumber(row[7])));
        EXPECT_NEAR(ParseNumber(InterimSize1Text(0)), ParseNumber(row[8]), 1e-4);
        EXPECT_NEAR(ParseNumber(InterimSize2Text(0)), ParseNumber(row[9]), 1e-4);
        EXPECT_EQ(ParseNumber(InterimSize1Text(1)), ParseNumber(row[4]));
        EXPECT_EQ(IntColumnCaption(IntColumn::Size1), "Study &Time|H1");
        EXPECT_EQ(IntColumnCaption(IntColumn::Size2), "Study Ti&me|H0");
        EXPECT_EQ(AverageOfDesign().Caption, "Average  Study Time");
        // At the time of the analysis if it stops there, else at the end of the study.
        const f64 study = ParseNumber(row[4]);
        const f64 stopH0{GsColumnOf(1).UppH0};
        const f64 stopH1{GsColumnOf(1).UppH1};
        EXPECT_NEAR(GsAverageSize(false), study - stopH0 * (study - ParseNumber(row[9])), 1e-4);
        EXPECT_NEAR(GsAverageSize(true), study - stopH1 * (study - ParseNumber(row[8])), 1e-4);
    }
}

TEST_F(LogrankDesigns, AtFixedTimesHaveTheInformationOfThese) {
    for (const auto& row : ReadTsv("group_sequential_times.tsv")) {
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2] + " at " + row[7]);
        Plan(BoundOBrienFleming, "", {row[7]});
        ASSERT_NE(Solve(ChoiceOfSizes({Check::FixedInterimTimes}), ValuesOfRow(row), Kind::Power),
                  NoValue);
        EXPECT_NEAR(f64{IntTime(1)}, ParseNumber(row[10]), 2e-6);
        const f64 time = ParseNumber(row[7]) * ParseNumber(row[4]);
        EXPECT_NEAR(ParseNumber(InterimSize1Text(0)), time, 1e-4);
        EXPECT_EQ(InterimSize2Text(0), "");
        EXPECT_EQ(IntColumnCaption(IntColumn::Size1), "   Study &Time");
        EXPECT_FALSE(HasIntColumn(IntColumn::Size2));
        const f64 study = ParseNumber(row[4]);
        EXPECT_NEAR(GsAverageSize(true), study - f64{GsColumnOf(1).UppH1} * (study - time), 1e-4);
    }
}

TEST_F(LogrankDesigns, AskForFractionsOfTimeWhereTimesAreFixed) {
    Plan(BoundPocock, "", {"0.5"});
    std::string heads;
    platform.GridFillings = {[&heads] {
        heads = CurrentGrid().ColumnHeads;
        return FillCurrentGrid({{"0.5"}});
    }};
    Start(ChoiceOfSizes({Check::FixedInterimTimes}), {});
    EXPECT_EQ(heads, "Fraction of Time");
}

TEST_F(LogrankDesigns, RefuseTimesThatFall) {
    Plan(BoundPocock, "", {"0.7", "0.4"});
    Solve(ChoiceOfSizes(), {{Kind::H1Rate1, "0.5"}, {Kind::H1Rate2, "0.3"}}, Kind::Power);
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{
                  "Time for Interim Analysis1 Is Larger Than for Interim Analysis2."}));
}

TEST_F(LogrankDesigns, OfOneAnalysisAreTheFixedTest) {
    const i16 menuFixed = 404;
    const Values values{{Kind::H0Rate2Over1, "1"},
                        {Kind::H1Rate1, "0.5"},
                        {Kind::H1Rate2, "0.3"},
                        {Kind::LossRate1, "0.1"},
                        {Kind::LossRate2, "0.1"},
                        {Kind::AccrualRate, "0"},
                        {Kind::AccrualTime, "2"},
                        {Kind::TotalStudyTime, "5"},
                        {Kind::Size1, "80"},
                        {Kind::Size2, "80"},
                        {Kind::Events, "120"},
                        {Kind::TimeAtRisk, "300"},
                        {Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.8"}};
    for (const i16 given : {i16{0}, i16{1}, i16{2}})
        for (const i16 tails : {OneSided, TwoSided})
            for (const i16 unknown : {Kind::Power, given == 0   ? Kind::Size1
                                                   : given == 1 ? Kind::Events
                                                                : Kind::TimeAtRisk}) {
                AnalysisChoice choice = MenuChoice(MenuLogrank, TwoSamples, tails,
                                                   {{Group::Rate2, 0}, {Group::Given, given}});
                choice.Left = tails == OneSided;
                NoOfInterim = 0;
                const f64 design = Solve(choice, values, unknown);
                choice.MenuNo = menuFixed;
                const f64 fixed = Solve(choice, values, unknown);
                ASSERT_NE(design, NoValue);
                EXPECT_NEAR(design / fixed, 1, 0.001) << given << " " << tails << " " << unknown;
            }
}

// --- One analysis -------------------------------------------------------------------------------

TEST_F(GroupSeqDesigns, OfOneAnalysisAreTheFixedTestOfMeans) {
    NoOfInterim = 0;
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.8"},
                        {Kind::H0Mean, "1"},
                        {Kind::H1Mean, "1.5"},
                        {Kind::Sd, "1.1"},
                        {Kind::Size, "40"},
                        {Kind::MeanLeftLimit, "0.4"},
                        {Kind::MeanRightLimit, "1.7"}};
    for (const i16 list : {i16{0}, i16{1}})
        for (const i16 tails : {OneSided, TwoSided, TwoOneSided})
            for (const i16 unknown : {Kind::Power, Kind::Size, Kind::Sd, Kind::H1Mean}) {
                // The power itself is that of the normal scale, deliberately.
                if (list == 1 && unknown == Kind::Power)
                    continue;
                SCOPED_TRACE(std::to_string(list) + " tails " + std::to_string(tails) + " for " +
                             std::to_string(unknown));
                AnalysisChoice fixed;
                fixed.DistrNo = DistrNormal;
                fixed.ParListNo = list;
                fixed.ProcedureNo = ProcedureTest;
                fixed.NoOfSamples = OneSample;
                fixed.NoOfTails = tails;
                const std::map<i16, i16> groups = tails == TwoOneSided
                                                      ? std::map<i16, i16>{}
                                                      : std::map<i16, i16>{{Group::H1Mean, 0}};
                fixed.Groups = groups;
                Values plan = values;
                if (tails == TwoOneSided)
                    plan[Kind::H1Mean] = "1.05";
                const f64 ofFixed = Solve(fixed, plan, unknown);
                Open(MenuChoice(MenuMeans, OneSample, tails, groups));
                ChooseParList(list);
                ChooseSamples(OneSample);
                ChooseTails(tails);
                AcceptOptions();
                for (const auto& [kind, text] : plan)
                    ParText(kind) = text;
                Calculated = False;
                SolveFor(PositionOf(unknown));
                ASSERT_TRUE(HasValue(ParText(unknown)));
                // The inverse of the distribution function differs from its approximation by 4e-4;
                // a truth between limits weighs that more.
                EXPECT_NEAR(ParValue(UnknownParNo) / ofFixed, 1,
                            tails == TwoOneSided ? 0.005 : 0.0015);
            }
}

// With limits at the same distance each test has to reject with 1 - (1 - p)/2: of p = 0.8 at 0.05
// x = ((1.6448536 + 1.2815516) 0.2/0.65)^2. With one limit far away the other test is all there is:
// ((1.6448536 + 0.8416212) 0.2/0.65)^2. No information has a power above 1.
TEST_F(GroupSeqDesigns, OfTwoOneSidedTestsKnowTheFixedSize) {
    EXPECT_NEAR(GsSizeSolve(0.8, 0.05, 0.65F, 0.65F, 0.2F, 0.2F), 0.8107766, 0.0005);
    EXPECT_NEAR(GsSizeSolve(0.8, 0.05, 0.65F, 0.325F, 0.2F, 0.1F), 0.8107766, 0.0005);
    EXPECT_NEAR(GsSizeSolve(0.8, 0.05, 0.65F, 65, 0.2F, 0.2F), 0.5853272, 0.0005);
    EXPECT_EQ(GsSizeSolve(1.2, 0.05, 0.65F, 0.65F, 0.2F, 0.2F), NoValue);
}

// The power that is shown is that of both tests together, which the size was solved for; the whole
// size adds less than 0.02. A bound that can't be crossed at the interim analysis stops nothing.
TEST_F(GroupSeqDesigns, OfStudentsEquivalenceShowThePowerOfBothTests) {
    for (const char* right : {"1.7", "2.4"}) {
        Plan(BoundOBrienFleming, "", {"0.5"});
        Open(MenuChoice(MenuMeans, OneSample, TwoOneSided));
        ChooseParList(1);
        ChooseSamples(OneSample);
        ChooseTails(TwoOneSided);
        ChooseInterim(1);
        AcceptOptions();
        const Values values{{Kind::SignificanceLevel, "0.05"},
                            {Kind::Power, "0.8"},
                            {Kind::H1Mean, "1.05"},
                            {Kind::Sd, "1.1"},
                            {Kind::MeanLeftLimit, "0.4"},
                            {Kind::MeanRightLimit, right}};
        for (const auto& [kind, text] : values)
            ParText(kind) = text;
        Calculated = False;
        SolveFor(PositionOf(Kind::Size));
        const std::vector<DesignRow> rows = DesignRows();
        ASSERT_EQ(rows.size(), 3U);
        const f64 power = ReadNumber(rows.back().Power);
        EXPECT_GE(power, 0.8) << right;
        EXPECT_LE(power, 0.82) << right;
        const f64 interim = ReadNumber(rows.front().Power);
        EXPECT_NEAR(interim + ReadNumber(rows[1].Power), power, 0.00011) << right;
        if (std::string(right) == "1.7") {
            EXPECT_EQ(interim, 0);
            EXPECT_FALSE(HasValue(rows.front().Boundaries));
        }
    }
}

// On the scale of the arc-sine n = ((z.975 + z.9)/(asin(sqrt 0.5) - asin(sqrt 0.3)))^2/2 = 124.095
// in each group. O'Brien and Fleming's design of two analyses needs 1.007 times as many (C.
// Jennison and B. W. Turnbull, Group Sequential Methods, 2000, table 2.4).
TEST_F(GroupSeqDesigns, OfProportionsMayBeOfTheirArcSine) {
    AnalysisChoice choice =
        MenuChoice(620, TwoSamples, TwoSided, {{Group::Proportion2, 0}, {Group::Size2, 2}});
    choice.Checks = {Check::ArcSine};
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.9"},
                        {Kind::H0Proportion2Minus1, "0"},
                        {Kind::H1Proportion1, "0.3"},
                        {Kind::H1Proportion2, "0.5"}};
    NoOfInterim = 0;
    EXPECT_NEAR(Solve(choice, values, Kind::Size1) / 124.095, 1, 0.001);
    Plan(BoundOBrienFleming, "", {"0.5"});
    EXPECT_NEAR(Solve(choice, values, Kind::Size1) / (1.007 * 124.095), 1, 0.001);
}

// How much larger than the fixed test, and the average sizes under H0 and H1, in percent: C.
// Jennison and B. W. Turnbull, 2000, tables 2.2 and 2.7 (Pocock), 2.4 and 2.8 (O'Brien and
// Fleming), 2.10 (S. K. Wang and A. A. Tsiatis), 4.1 and 4.2 (S. Pampallona and A. A. Tsiatis) and
// 7.1 (levels spent with the square of the information), at 0.05.
TEST_F(GroupSeqDesigns, AreAsMuchLargerThanTheFixedTestAsPublished) {
    struct Row {
        i16 Type;
        const char* Parameter;
        int Looks;
        i16 Tails;
        const char* Power;
        f64 Size;
        f64 AverageH0; // 0: not printed
        f64 AverageH1;
    };
    for (const Row& row : {Row{BoundPocock, "", 4, TwoSided, "0.8", 120.2, 117.5, 80.5},
                           Row{BoundPocock, "", 5, TwoSided, "0.9", 120.7, 0, 0},
                           Row{BoundOBrienFleming, "", 5, TwoSided, "0.8", 102.8, 102.1, 0},
                           Row{BoundOBrienFleming, "", 5, TwoSided, "0.9", 102.6, 0, 0},
                           Row{BoundWangTsiatis, "0.25", 6, TwoSided, "0.8", 107.7, 0, 0},
                           Row{BoundWangTsiatis, "0.25", 5, TwoSided, "0.9", 106.6, 0, 0},
                           Row{BoundRhoFamily, "2", 5, TwoSided, "0.9", 105.8, 0, 0},
                           Row{BoundPowerFamily, "0.25", 4, OneSided, "0.8", 129.9, 0, 0},
                           Row{BoundPowerFamily, "-0.5", 5, OneSided, "0.9", 102.9, 0, 0}}) {
        SCOPED_TRACE(std::to_string(row.Type) + " with " + std::to_string(row.Looks));
        const AnalysisChoice choice =
            MenuChoice(MenuMeans, OneSample, row.Tails, {{Group::H1Mean, 0}});
        const Values values{{Kind::SignificanceLevel, "0.05"},
                            {Kind::Power, row.Power},
                            {Kind::H0Mean, "0"},
                            {Kind::H1Mean, "0.02"},
                            {Kind::Sd, "1"}};
        NoOfInterim = 0;
        const f64 fixed = Solve(choice, values, Kind::Size);
        std::vector<std::string> fractions;
        for (int k = 1; k < row.Looks; ++k)
            fractions.push_back(std::to_string(double(k) / row.Looks));
        Plan(row.Type, row.Parameter, fractions);
        EXPECT_NEAR(100 * Solve(choice, values, Kind::Size) / fixed, row.Size, 0.06);
        if (row.AverageH0 > 0) {
            EXPECT_NEAR(100 * GsAverageSize(false) / fixed, row.AverageH0, 0.06);
        }
        if (row.AverageH1 > 0) {
            EXPECT_NEAR(100 * GsAverageSize(true) / fixed, row.AverageH1, 0.06);
        }
    }
}

// --- At any moment ------------------------------------------------------------------------------

TEST_F(GroupSeqDesigns, CancelledAtAnyMomentLeaveNothingHalfDone) {
    Plan(BoundLanDeMetsOBrienFleming, "", {"0.4", "0.7"});
    const f64 size = Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
                           {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    ASSERT_NE(size, NoValue);
    const auto rows = DesignRows();
    int cancelled = 0;
    for (int stop = 1;; stop += 7) {
        int steps = 0;
        platform.ClockStep = 2;
        platform.OnDoEvents = [&] {
            if (++steps == stop)
                Cancelled = True;
        };
        ForgetCritValues();
        Calculated = False;
        ParText(Kind::H1Mean) = "0.45";
        SolveFor(PositionOf(Kind::Size));
        EXPECT_FALSE(platform.ProgressShown);
        EXPECT_EQ(Calculating, False);
        EXPECT_EQ(Cancelled, False);
        EXPECT_TRUE(platform.Messages.empty());
        if (HasValue(ParText(Kind::Size)))
            break;
        ++cancelled;
        EXPECT_TRUE(DesignRows().empty());
        EXPECT_FALSE(platform.IsShown(FloatingWindow::SequentialMonitor));
        ASSERT_LT(stop, 20000);
    }
    EXPECT_GT(cancelled, 3);
    platform.OnDoEvents = nullptr;
    platform.ClockStep = 0;
    Calculated = False;
    ParText(Kind::H1Mean) = "0.5";
    SolveFor(PositionOf(Kind::Size));
    EXPECT_EQ(ParValue(UnknownParNo), size);
    ASSERT_EQ(DesignRows().size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(DesignRows()[i].Boundaries, rows[i].Boundaries);
}

// --- Windows ------------------------------------------------------------------------------------

TEST_F(GroupSeqDesigns, ShowWhatIsTheirsAfterAnotherOne) {
    Plan(BoundOBrienFleming, "", {"0.5"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    const auto first = DesignRows();
    const i16 number = AnalysisNo;
    StoreAnalysis();
    NewWindow(CalculationWindow);
    Plan(BoundPocock, "", {"0.3", "0.6"});
    Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
          {{Kind::H1Mean, "0.5"}, {Kind::Sd, "1"}}, Kind::Size);
    EXPECT_EQ(DesignRows().size(), 4U);
    EXPECT_EQ(IntRows(), 3);
    SwitchAnalysis(number);
    const auto again = DesignRows();
    ASSERT_EQ(again.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(again[i].Boundaries, first[i].Boundaries);
        EXPECT_EQ(again[i].Level, first[i].Level);
        EXPECT_EQ(again[i].Power, first[i].Power);
    }
    EXPECT_EQ(IntRows(), 2);
    EXPECT_TRUE(platform.IsShown(FloatingWindow::InterimParameters));
}

TEST_F(GroupSeqDesigns, ShowLevelsAndSizesThatCannotBeTyped) {
    Plan(BoundOBrienFleming, "", {"0.5"});
    Solve(MenuChoice(MenuMeans, TwoSamples, TwoSided, {{Group::Mean2, 1}, {Group::Size2, 0}}),
          {{Kind::Size1, "50"}, {Kind::Size2, "60"}}, Kind::Power);
    EXPECT_TRUE(HasIntPar());
    EXPECT_FALSE(HasIntRun());
    EXPECT_EQ(IntRows(), 2);
    EXPECT_EQ(IntRowHead(0), "Interim Analysis 1");
    EXPECT_EQ(IntRowHead(1), "Final Analysis");
    EXPECT_EQ(IntPar(0), NoPar);
    EXPECT_FALSE(HasIntColumn(IntColumn::AcceptH0));
    EXPECT_EQ(IntColumnCaption(IntColumn::RejectH0), "&Reject H0 if p<");
    EXPECT_EQ(IntColumnCaption(IntColumn::Size1), "S&ample Size 1");
    EXPECT_EQ(IntColumnCaption(IntColumn::Size2), "Sa&mple Size 2");
    EXPECT_EQ(IntCellText(IntColumn::Size1, 0), "25");
    EXPECT_EQ(IntCellText(IntColumn::Size2, 0), "30");
    EXPECT_EQ(IntCellText(IntColumn::Size2, 1), "60");
    for (const IntColumn column : IntColumns)
        EXPECT_FALSE(IsIntCellOpen(column, 0));
    TypedIntCell(IntColumn::Size1, 0, "40");
    EXPECT_EQ(InterimSize1Text(0), "25");
}

// --- Statements ---------------------------------------------------------------------------------

// From the number of analyses on, up to what the calculation assumes.
std::string SequentialPart() {
    const std::string text = SumStatement();
    const std::size_t start = text.find(", with 1 interim");
    const std::size_t end = text.find(" The calculation is based");
    return start == std::string::npos ? text : text.substr(start + 2, end - start - 2);
}

// O'Brien and Fleming's nominal levels of two analyses, 0.0052 and 0.0480 (Jennison and Turnbull,
// 2000, table 2.3).
TEST_F(GroupSeqDesigns, AreStatedWithLevelsAndSizes) {
    Plan(BoundOBrienFleming, "", {"0.5"});
    Solve(MenuChoice(MenuMeans, TwoSamples, TwoSided,
                     {{Group::Mean2, 1}, {Group::Sd2, 0}, {Group::Size2, 2}}),
          {{Kind::H1Mean2Minus1, "0.5"}, {Kind::Sd1, "1"}, {Kind::Sd2, "1"}, {Kind::Power, "0.9"}},
          Kind::Size1);
    EXPECT_EQ(
        SequentialPart(),
        "with 1 interim analysis and a final analysis. The significance levels at the interim "
        "and final analysis are 0.00517 and 0.04799 respectively. The cumulative sample sizes "
        "(Sample 1, Sample 2) at the interim analysis are (43,43).");
}

TEST_F(LogrankDesigns, AreStatedWithEventsOrTimes) {
    const Values values{{Kind::H0Rate2Over1, "1"}, {Kind::H1Rate1, "0.5"}, {Kind::H1Rate2, "0.3"}};
    Plan(BoundOBrienFleming, "", {"0.5"});
    const AnalysisChoice ofEvents =
        MenuChoice(MenuLogrank, TwoSamples, TwoSided, {{Group::Rate2, 0}, {Group::Given, 1}});
    Solve(ofEvents, values, Kind::Events);
    const std::string begin =
        "with 1 interim analysis and a final analysis. The significance levels "
        "at the interim and final analysis are ";
    EXPECT_EQ(SequentialPart(), begin +
                                    "0.00517 and 0.04799 respectively. The cumulative number of "
                                    "events at the interim analysis is 65.");
    Plan(BoundOBrienFleming, "", {"0.5"});
    const auto row = ReadTsv("group_sequential_times.tsv").at(1);
    Solve(ChoiceOfSizes(), ValuesOfRow(row), Kind::Power);
    EXPECT_EQ(SequentialPart(), begin + "0.00517 and 0.04799 respectively. The analyses occur at "
                                        "2.3556 and 5 under H1, and at 2.2051 and 5 under H0.");
    Plan(BoundOBrienFleming, "", {"0.5"});
    Solve(ChoiceOfSizes({Check::FixedInterimTimes}), ValuesOfRow(row), Kind::Power);
    const std::string fixed = SequentialPart();
    EXPECT_EQ(fixed.substr(fixed.find(" The analyses")), " The analyses occur at 2.5 and 5.");
}

// --- Tables -------------------------------------------------------------------------------------

class DesignTables : public GroupSeqDesigns {
  protected:
    // Sizes for three effects at two levels.
    void OpenTable() {
        FileCommand(TableWindow);
        NewTest(MenuMeans);
        ChooseSamples(OneSample);
        ChooseTails(TwoSided);
        Pick(Group::H1Mean, 0);
        ChooseInterim(2);
        AcceptOptions();
        SwapAxis(YRole, PositionOf(Kind::Size));
        SwapAxis(XRole, PositionOf(Kind::H1Mean));
        SwapAxis(ZRole, PositionOf(Kind::SignificanceLevel));
        TypedAxisText(AxisText::Xmin, "0.4");
        TypedAxisText(AxisText::Xmax, "0.6");
        TypedAxisText(AxisText::Xstep, "0.1");
        TypedAxisText(AxisText::ZValues, "0.05 0.01");
        Type(Kind::Power, "0.9");
        Type(Kind::H0Mean, "0");
        Type(Kind::Sd, "1");
        Plan(BoundRhoFamily, "2", {"0.4", "0.7"});
    }
};

TEST_F(DesignTables, AreThoseOfTheirPoints) {
    std::vector<f64> sizes;
    for (const char* effect : {"0.4", "0.5", "0.6"}) {
        Plan(BoundRhoFamily, "2", {"0.4", "0.7"});
        sizes.push_back(Solve(MenuChoice(MenuMeans, OneSample, TwoSided, {{Group::H1Mean, 0}}),
                              {{Kind::H0Mean, "0"},
                               {Kind::H1Mean, effect},
                               {Kind::Sd, "1"},
                               {Kind::SignificanceLevel, "0.05"},
                               {Kind::Power, "0.9"}},
                              Kind::Size));
    }
    OpenTable();
    platform.Messages.clear();
    RunOrCancel();
    EXPECT_TRUE(platform.Messages.empty());
    ASSERT_EQ(TableX.HighBound(), 3);
    for (i16 i = 1; i <= 3; ++i) {
        EXPECT_NEAR(f64{TableY(i, 1)} / sizes[static_cast<std::size_t>(i - 1)], 1, 1e-5);
        EXPECT_GT(TableY(i, 2), TableY(i, 1));
    }
    EXPECT_EQ(HasGridData, True);
    EXPECT_TRUE(platform.BoundaryChoices.empty());
}

// The spending function alpha t^2: at 0.4 of the information 0.16 of the level is spent, so that of
// the levels 0.05 and 0.01 the first analysis has 0.008 and 0.0016, to the error of the quantiles.
// Sizes at 0.4 and 0.7 of the largest and the smallest of the table, as a size is shown.
TEST_F(DesignTables, AreStatedWithTheirRanges) {
    OpenTable();
    RunOrCancel();
    ASSERT_EQ(Calculated, True);
    const auto size = [](f64 fraction, i16 i, i16 j) {
        return std::to_string(std::lround(fraction * f64{TableY(i, j)}));
    };
    const std::string text = SumStatement();
    const auto firstLevels = [](const std::string& statement) {
        const std::string before =
            " The significance levels at the interim and final analysis are ";
        std::istringstream words(statement.substr(statement.find(before) + before.size()));
        std::vector<std::string> first(3);
        for (std::string& word : first)
            words >> word;
        return first;
    };
    const std::vector<std::string> levels = firstLevels(text);
    EXPECT_NEAR(ReadNumber(levels[0]), 0.0016, 2e-5) << text;
    EXPECT_EQ(levels[1], "to");
    EXPECT_NEAR(ReadNumber(levels[2]), 0.008, 2e-5) << text;
    EXPECT_NE(text.find(" The cumulative sample sizes at the interim analyses are " +
                        size(0.4, 3, 1) + " to " + size(0.4, 1, 2) + " and " + size(0.7, 3, 1) +
                        " to " + size(0.7, 1, 2) + "."),
              std::string::npos)
        << text;

    // The table of a window stays with it.
    const i16 table = AnalysisNo;
    NewWindow(CalculationWindow);
    NewTest(MenuMeans);
    AcceptOptions();
    SwitchAnalysis(table);
    EXPECT_EQ(SumStatement(), text);
    TypedAxisText(AxisText::ZValues, "0.05");
    RunOrCancel();
    const std::string one = SumStatement();
    EXPECT_NEAR(ReadNumber(firstLevels(one)[0]), 0.008, 2e-5) << one;
    EXPECT_NE(firstLevels(one)[1], "to") << one;
}

// Levels of the user's own are the same at all points.
TEST_F(DesignTables, OfLevelsOfOnesOwnAreStatedWithThese) {
    OpenTable();
    Plan(BoundUserDefined, "", {"0.4", "0.7"}, {{"0.01", "1"}, {"0.02", "1"}, {"0.04", "1"}});
    RunOrCancel();
    RunOrCancel(); // the levels are shown before
    const std::string text = SumStatement();
    EXPECT_NE(text.find(" final analysis are 0.01, 0.02 and 0.04 respectively."), std::string::npos)
        << text;
}

// Why, in the status line alone: a family made for its power is asked for no other one.
TEST_F(DesignTables, WithoutAnyValueSayWhy) {
    OpenTable();
    TypedAxisText(AxisText::Xmin, "0");
    TypedAxisText(AxisText::Xmax, "0.00001");
    TypedAxisText(AxisText::Xstep, "0.00001");
    RunOrCancel();
    const std::vector<std::string> told{"Can't Be Calculated For Any x-value."};
    EXPECT_EQ(platform.Texts(), told);
    EXPECT_EQ(LastStatus(), "With H1: Mean 0: Sample Size from 3 to 99999: Power goes from 0.05 to "
                            "0.05, and 0.9 is asked. H1 equals H0.");
    Calculated = False;
    platform.Messages.clear();
    HasGridData = False;
    Plan(BoundPowerFamily, "0", {"0.4", "0.7"});
    RunOrCancel();
    EXPECT_EQ(platform.Texts(), told);
    EXPECT_EQ(LastStatus(),
              "With H1: Mean 0: No boundaries of this type agree with the other values.");
    EXPECT_EQ(Cancelled, False);
}

TEST_F(DesignTables, AreCancelledBetweenTwoEvaluations) {
    OpenTable();
    platform.ClockStep = 2; // so long that the progress shows
    for (const int stop : {1, 5, 40, 150}) {
        int yields = 0;
        platform.OnDoEvents = [&yields, stop] {
            if (++yields == stop)
                Cancelled = True;
        };
        ForgetCritValues();
        Calculated = False;
        platform.Messages.clear();
        RunOrCancel();
        // At once: no further evaluation but that which was under way.
        EXPECT_LE(yields, stop + 1);
        EXPECT_EQ(Calculating, False);
        EXPECT_EQ(Cancelled, False);
        EXPECT_EQ(Calculated, False);
        EXPECT_TRUE(platform.Messages.empty());
        EXPECT_FALSE(platform.ProgressShown);
    }
    platform.OnDoEvents = nullptr;
    RunOrCancel();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(TableX.HighBound(), 3);
}

TEST_F(GroupSeqDesigns, NameTheirBoundaries) {
    const char* names[] = {"Pocock",
                           "O'Brien and Fleming",
                           "Wang and Tsiati",
                           "Haybittle and Peto",
                           "Lan-DeMets (Pocock)",
                           "Lan-DeMets (O'Brien-Fleming)",
                           "Gamma family (Hwang-Shih-DeCani)",
                           "Rho family (Kim-DeMets)",
                           "User defined",
                           "Power family"};
    for (i16 type = 0; type < NoOfBoundTypes; ++type)
        EXPECT_EQ(BoundName(type), names[type]);
    EXPECT_EQ(BoundHeading, "Boundaries for Rejecting H0:");
    EXPECT_EQ(BoundCaption, "Group Sequential Designs");
    ChooseBoundType(BoundRhoFamily);
    FamilyParText = "0";
    EXPECT_FALSE(AcceptBoundary());
    EXPECT_EQ(platform.Texts(), (std::vector<std::string>{"Rho Must Be >= 0.01 and <= 20."}));
}

} // namespace
} // namespace quorvanta::checks
