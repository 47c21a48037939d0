// Simulated group sequential trials: what a simulation of a design comes out with, against exact
// distributions and trials that another program has simulated (checks/reference/
// sequential_trials.py), and against the exact design that stands beside it.
#include "core/dispatch.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "core/showintpar.h"
#include "groupseq/boundaries.h"
#include "groupseq/boundchoice.h"
#include "groupseq/designs.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "output/designresults.h"
#include "support/design_answers.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/tsv.h"

#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 MenuMeans = 600;
constexpr i16 MenuLogrank = 630;

using Texts = std::map<i16, std::string>;

std::vector<std::string> Words(const std::string& text, char between) {
    std::vector<std::string> words;
    std::istringstream all(text);
    for (std::string word; std::getline(all, word, between);)
        if (!word.empty())
            words.push_back(word);
    return words;
}

std::vector<f64> Numbers(const std::string& text) {
    std::vector<f64> numbers;
    for (const std::string& word : Words(text, ','))
        numbers.push_back(ParseNumber(word));
    return numbers;
}

Texts TextsOf(const std::string& text) {
    Texts texts;
    for (const std::string& word : Words(text, ';')) {
        const auto pair = Words(word, '=');
        texts[ToI16(ParseNumber(pair[0]))] = pair[1];
    }
    return texts;
}

// "Lower   Estimate   Upper".
f64 EstimateOf(const std::string& text) {
    return ParseNumber(Words(text, ' ').at(1));
}

class SequentialSimulation : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        ForgetCritValues();
        NewWindow(SimulationWindow);
    }

    // The next one starts as if nothing had been simulated.
    void TearDown() override { SimNo = 0; }

    // What the user will answer when the run starts: boundaries, levels of his own, fractions.
    void Answer(i16 type, const std::string& par, const std::vector<std::string>& fractions,
                const GridRowTexts& levels = {}) {
        AnswerDesign(platform, type, par, fractions, levels);
    }

    // Opens the design with effects and sizes in these forms, and types its values.
    void OpenDesign(i16 menuNo, i16 list, i16 samples, i16 tails, std::size_t interim,
                    const Texts& values) {
        NewTest(menuNo);
        if (menuNo == MenuMeans)
            ChooseParList(list);
        if (SamplesOffered(samples))
            ChooseSamples(samples);
        ChooseTails(tails);
        if (menuNo == MenuMeans && samples == TwoSamples)
            Pick(Group::Mean2, 1);
        if (menuNo == MenuMeans && samples == TwoSamples && list == 0)
            Pick(Group::Sd2, 0);
        if (samples == TwoSamples)
            Pick(Group::Size2, 2);
        ChooseInterim(static_cast<i16>(interim));
        AcceptOptions();
        for (const auto& [kind, text] : values)
            Type(kind, text);
        platform.Messages.clear();
    }
    void OpenMeans(std::size_t interim, i16 tails = OneSided) {
        OpenDesign(MenuMeans, 0, OneSample, tails, interim,
                   {{Kind::SignificanceLevel, "0.05"},
                    {Kind::H0Mean, "0"},
                    {Kind::H1Mean, "0.5"},
                    {Kind::Sd, "1"},
                    {Kind::Size, "40"}});
    }
};

// Shares of trials, with the error that they have in common with the reference.
class Agreement {
  public:
    explicit Agreement(f64 error) : error_(error) {}

    void Expect(const Array1<i32>& counts, const std::string& reference, const char* what) {
        const std::vector<f64> shares = Numbers(reference);
        for (std::size_t i = 0; i < shares.size(); ++i)
            ExpectShare(counts(static_cast<int>(i) + 1), shares[i],
                        what + std::string(" at analysis ") + std::to_string(i + 1));
    }
    void ExpectShare(i32 count, f64 exact, const std::string& what) {
        const f64 share = static_cast<f64>(count) / static_cast<f64>(SimNo);
        const f64 error =
            std::sqrt(exact * (1 - exact) / static_cast<f64>(SimNo) + error_ * error_);
        // Bounds are off by up to 5e-4, the error of the normal quantile.
        constexpr f64 ofBounds = 3e-4;
        EXPECT_NEAR(share, exact, 4 * error + ofBounds) << what;
        ++compared;
        within += std::fabs(share - exact) <= 1.96 * error + 1e-9 ? 1 : 0;
    }

    static int compared;
    static int within;

  private:
    f64 error_;
};
int Agreement::compared = 0;
int Agreement::within = 0;

TEST_F(SequentialSimulation, HasTheLevelPowerStopsAndSizesOfItsDesign) {
    const auto rows = ReadTsv("sequential_trials.tsv");
    ASSERT_GE(rows.size(), 20U);
    constexpr const char* trials = "100000";
    Agreement::compared = Agreement::within = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE("menu " + row[0] + " list " + row[1] + " samples " + row[2] + " tails " +
                     row[3] + " type " + row[5] + " " + row[6] + " at " + row[7]);
        const i16 type = ToI16(ParseNumber(row[5]));
        auto fractions = Words(row[7], ',');
        fractions.pop_back();
        GridRowTexts levels;
        if (type == BoundUserDefined)
            for (const std::string& pair : Words(row[8], ';'))
                levels.push_back(Words(pair, ','));
        Answer(type, row[6], fractions, levels);
        OpenDesign(ToI16(ParseNumber(row[0])), ToI16(ParseNumber(row[1])),
                   ToI16(ParseNumber(row[2])), ToI16(ParseNumber(row[3])), fractions.size(),
                   TextsOf(row[4]));
        Run(trials, "7");
        if (type == BoundUserDefined)
            Run(trials, "7"); // first his levels are shown
        ASSERT_EQ(platform.Texts(), std::vector<std::string>());
        ASSERT_EQ(SimNo, 100000);
        const auto entered = Words(row[8], ';');
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            const std::vector<f64> pair = Numbers(entered[static_cast<std::size_t>(k - 1)]);
            EXPECT_NEAR(f64{RejectP(k)}, pair[0], 0.01 * pair[0] + 1e-6) << k;
            EXPECT_NEAR(f64{AcceptP(k)}, pair[1], 0.005) << k;
        }
        Agreement agreement(ParseNumber(row[15]));
        agreement.Expect(CountRejectH0, row[9], "reject, H0");
        agreement.Expect(CountRejectH1, row[10], "reject, H1");
        agreement.Expect(CountAcceptH0, row[11], "accept, H0");
        agreement.Expect(CountAcceptH1, row[12], "accept, H1");
        f64 level = 0;
        f64 power = 0;
        for (const f64 share : Numbers(row[9]))
            level += share;
        for (const f64 share : Numbers(row[10]))
            power += share;
        agreement.ExpectShare(CountRejectH0(NoOfAnal + 1), level, "level");
        agreement.ExpectShare(CountRejectH1(NoOfAnal + 1), power, "power");
        EXPECT_NEAR(EstimateOf(PowerEstimateText(NoOfAnal)), power, 0.007);
        // A tenth is shown, and the size of a trial is spread over the analyses.
        const f64 spread = 0.5 * f64{CumSize(NoOfAnal)};
        const f64 slack = 0.05 + spread * (4 / std::sqrt(1e5) + 4 * ParseNumber(row[15]));
        EXPECT_NEAR(EstimateOf(SampleSizeEstimateText(0)), ParseNumber(row[13]), slack);
        EXPECT_NEAR(EstimateOf(SampleSizeEstimateText(1)), ParseNumber(row[14]), slack);
    }
    // Nearly all lie within the interval that the simulation tells.
    EXPECT_GT(Agreement::within, Agreement::compared * 0.92)
        << Agreement::within << " of " << Agreement::compared;
}

// The same comparison with the recursion of the program, whose window stands beside the run.
TEST_F(SequentialSimulation, StandsBesideTheExactDesign) {
    for (const i16 type : {BoundPocock, BoundOBrienFleming, BoundLanDeMetsOBrienFleming}) {
        Answer(type, "", {"0.25", "0.5", "0.75"});
        OpenMeans(3, TwoSided);
        Run("100000", "11");
        ASSERT_EQ(platform.Texts(), std::vector<std::string>());
        EXPECT_TRUE(platform.IsShown(FloatingWindow::SequentialMonitor));
        ASSERT_EQ(DesignRows().size(), 5U);
        EXPECT_NEAR(ParseNumber(DesignRows()[4].Power), EstimateOf(PowerEstimateText(4)), 0.007);
        Agreement agreement(0);
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            agreement.ExpectShare(CountRejectH0(k), f64{GsColumnOf(k).UppH0}, "H0");
            agreement.ExpectShare(CountRejectH1(k), f64{GsColumnOf(k).UppH1}, "H1");
        }
        EXPECT_NEAR(EstimateOf(SampleSizeEstimateText(1)), GsAverageSize(true), 0.25);
        EXPECT_EQ(std::string(SimAverageCaption()), "Average   Sample Size");
    }
}

TEST_F(SequentialSimulation, ShowsTheLevelsAndSizesOfTheDesign) {
    Answer(BoundOBrienFleming, "", {"0.25", "0.5"});
    OpenMeans(2, TwoSided);
    EXPECT_EQ(IntCellDefault(IntColumn::RejectH0, 0), "") << "no level before the boundaries";
    Run("10", "1");
    EXPECT_EQ(SimSize1, CellsOf<i16>({0, 10, 20, 40}));
    EXPECT_EQ(IntCellText(IntColumn::Size1, 0), "10");
    EXPECT_EQ(IntCellText(IntColumn::Size1, 2), "40");
    for (i16 k = 1; k <= 3; ++k) {
        EXPECT_NEAR(f64{RejectP(k)}, f64{LevelReject(k)}, 1e-7);
        EXPECT_EQ(AcceptP(k), 1);
        EXPECT_NEAR(ParseNumber(IntCellText(IntColumn::RejectH0, static_cast<i16>(k - 1))),
                    f64{RejectP(k)}, 1e-4);
        EXPECT_FALSE(IsIntCellOpen(IntColumn::RejectH0, static_cast<i16>(k - 1)));
        EXPECT_FALSE(IsIntCellOpen(IntColumn::Size1, static_cast<i16>(k - 1)));
    }
    // Another size, the same answers.
    Type(Kind::Size, "80");
    Run("10", "1");
    EXPECT_EQ(SimSize1, CellsOf<i16>({0, 20, 40, 80}));
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(SequentialSimulation, OfOneAnalysisIsThePlainTest) {
    OpenMeans(0);
    Run("50000", "3");
    ASSERT_EQ(platform.Texts(), std::vector<std::string>());
    EXPECT_NEAR(f64{RejectP(1)}, 0.05, 1e-4);
    EXPECT_NEAR(EstimateOf(SignEstimateText(0)), 0.05, 0.004);
    // Phi(0.5 sqrt(40) - 1.645).
    EXPECT_NEAR(EstimateOf(PowerEstimateText(0)), 0.9354, 0.0045);
    EXPECT_FALSE(HasValue(PowerEstimateText(1)));
}

TEST_F(SequentialSimulation, ShowsTheUsersOwnLevelsBeforeItRuns) {
    Answer(BoundUserDefined, "", {"0.5"}, {{"0.01", "0.6"}, {"0.04", "1"}});
    OpenMeans(1);
    platform.Shown.clear();
    Run("10", "1");
    EXPECT_EQ(OutputReady, False);
    EXPECT_TRUE(platform.IsShown(FloatingWindow::InterimParameters));
    EXPECT_TRUE(IsIntCellOpen(IntColumn::RejectH0, 0));
    EXPECT_TRUE(HasIntColumn(IntColumn::AcceptH0));
    TypedIntCell(IntColumn::RejectH0, 0, "0.02");
    Run("10", "1");
    EXPECT_EQ(OutputReady, True);
    EXPECT_EQ(RejectP(1), 0.02F);
    EXPECT_EQ(AcceptP(1), 0.6F);
    EXPECT_EQ(RejectP(2), 0.04F);
    TypedIntCell(IntColumn::RejectH0, 0, "1.5");
    Run("10", "1");
    EXPECT_EQ(LastMessage(), "Probability To Reject H0 Is Outside (0, 1).");
    TypedIntCell(IntColumn::RejectH0, 0, "0.02");
    TypedIntCell(IntColumn::AcceptH0, 0, "-0.5");
    Run("10", "1");
    EXPECT_EQ(LastMessage(), "Probability To Accept H0 Is Outside (0, 1).");
    EXPECT_EQ(SimRunning, False);
}

TEST_F(SequentialSimulation, WithoutItsBoundariesDoesNotRun) {
    OpenMeans(1);
    platform.BoundaryChoices = {[] { return false; }};
    Run("10", "1");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(HasGridData, False);
    Answer(BoundPocock, "", {"0.5"});
    Run("10", "1");
    EXPECT_EQ(OutputReady, True);
}

TEST_F(SequentialSimulation, OfAPowerFamilyNeedsThePower) {
    Answer(BoundPowerFamily, "0", {"0.5"});
    OpenMeans(1);
    ParText(Kind::Power) = "-";
    Run("10", "1");
    EXPECT_EQ(LastMessage(), "Power Has No Value.");
    EXPECT_EQ(OutputReady, False);
    ParText(Kind::Power) = "0.9";
    const i16 unknown = UnknownParNo;
    Run("10", "1");
    EXPECT_EQ(OutputReady, True);
    EXPECT_EQ(UnknownParNo, unknown);
    EXPECT_LT(AcceptP(1), 1);
}

TEST_F(SequentialSimulation, WithoutBoundariesSaysWhy) {
    Answer(BoundPowerFamily, "0", {"0.333", "0.667"});
    OpenMeans(2, TwoSided);
    ParText(Kind::Power) = "0.8";
    Run("10", "1");
    EXPECT_EQ(LastMessage(), "Can't Be Calculated For Any x-value.");
    ASSERT_FALSE(platform.Statuses.empty());
    EXPECT_EQ(platform.Statuses.back(), "No boundaries of this type agree with the other values.");
    EXPECT_EQ(OutputReady, False);
}

// The design of a closed window is not that of the next analysis of its number.
TEST_F(SequentialSimulation, OfAClosedWindowIsForgotten) {
    Answer(BoundPocock, "", {"0.5"});
    OpenMeans(1);
    Run("10", "1");
    ASSERT_FALSE(DesignRows().empty());
    const i16 number = AnalysisNo;
    CloseMode = CloseByUser;
    for (i16 n = number; n >= 1; --n)
        ChildClosed(n);
    while (AnalysisNo < number)
        NewWindow(SimulationWindow);
    NewTest(MenuMeans);
    AcceptOptions();
    EXPECT_EQ(IsGroupSeq, True);
    EXPECT_TRUE(DesignRows().empty());
}

// An interim bound that two one-sided tests can't cross.
TEST_F(SequentialSimulation, NothingReachesABoundThatCantBeReached) {
    Answer(BoundOBrienFleming, "", {"0.2"});
    OpenDesign(MenuMeans, 0, OneSample, TwoOneSided, 1,
               {{Kind::SignificanceLevel, "0.05"},
                {Kind::MeanLeftLimit, "-0.5"},
                {Kind::MeanRightLimit, "0.5"},
                {Kind::H1Mean, "0"},
                {Kind::Sd, "1"},
                {Kind::Size, "50"}});
    Run("2000", "5");
    ASSERT_EQ(platform.Texts(), std::vector<std::string>());
    EXPECT_EQ(UppBound(1), 100);
    EXPECT_EQ(RejectP(1), 0);
    EXPECT_EQ(CountRejectH1(1), 0);
    EXPECT_GT(CountRejectH1(2), 1500);
}

// The normal approximation of the log-rank test, whose analyses wait for their information: that
// takes another time if H1 is true.
TEST_F(SequentialSimulation, OfTheLogRankTestWaitsForItsInformation) {
    Answer(BoundOBrienFleming, "", {"0.4", "0.7"});
    OpenDesign(MenuLogrank, 0, TwoSamples, TwoSided, 2,
               {{Kind::SignificanceLevel, "0.05"},
                {Kind::H1Rate1, "0.5"},
                {Kind::H1Rate2, "0.3"},
                {Kind::AccrualTime, "2"},
                {Kind::TotalStudyTime, "4"},
                {Kind::Size1, "120"},
                {Kind::Size2Over1, "1"}});
    Run("20000", "9");
    ASSERT_EQ(platform.Texts(), std::vector<std::string>());
    EXPECT_EQ(std::string(SimAverageCaption()), "Average  Study Time");
    const GsColumn all = GsColumnOf(4);
    for (i16 k = 1; k <= 3; ++k) {
        const f64 n{20000};
        EXPECT_NEAR(CountRejectH0(k) / n, f64{GsColumnOf(k).UppH0}, 0.006) << k;
        EXPECT_NEAR(CountRejectH1(k) / n, f64{GsColumnOf(k).UppH1}, 0.03) << k;
    }
    for (i16 k = 0; k < 2; ++k)
        EXPECT_NE(ReadNumber(InterimSize1Text(k)), ReadNumber(InterimSize2Text(k)));
    EXPECT_NEAR(EstimateOf(PowerEstimateText(3)), f64{all.UppH1}, 0.02);
    EXPECT_NEAR(EstimateOf(SampleSizeEstimateText(1)), GsAverageSize(true), 0.06);
    EXPECT_NEAR(EstimateOf(SampleSizeEstimateText(0)), 4, 1e-6) << "no one accepts early";
}

} // namespace
} // namespace quorvanta::checks
