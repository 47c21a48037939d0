// Analyses of variance, regressions, correlations, tests of scale parameters and of finite
// populations, point estimates and confidence intervals: what their simulations show beside what is
// exact.
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/grids.h"
#include "montecarlo/simstudy.h"
#include "numeric/rnd.h"
#include "support/grid_filling.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/validation.h"
#include "tests/anovaeq.h"
#include "tests/scalestatistic.h"
#include "tests/studenttest.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace quorvanta::checks {
namespace {

// --- Beside exact probabilities ------------------------------------------------------------------

// The rows of one analysis: the probabilities of its results.
struct SimulatedCase {
    ValidationCase Analysis;
    std::vector<ValidationCase> Results;
};

std::vector<SimulatedCase> ReadCases() {
    std::vector<SimulatedCase> cases;
    const auto keyOf = [](const ValidationCase& row) {
        return std::tie(row.Analysis, row.NoOfSamples, row.NoOfTails, row.Left, row.Checks,
                        row.Groups, row.Values);
    };
    for (const ValidationCase& row :
         ReadValidation(std::string(CHECK_DATA_DIR) + "/simulated.tsv")) {
        if (cases.empty() || keyOf(cases.back().Analysis) != keyOf(row))
            cases.push_back({row, {}});
        cases.back().Results.push_back(row);
    }
    return cases;
}

class SimulatedParametric : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        NewWindow(SimulationWindow);
    }
    void TearDown() override { SimNo = 0; } // as the next one finds it in a program just started

    void Choose(const ValidationCase& analysis) {
        // An analysis of a distribution starts as the last one was left.
        ParListNo = analysis.ParListNo;
        ProcedureNo = analysis.ProcedureNo;
        quorvanta::checks::SetUp(analysis);
    }

    void Prepare(const ValidationCase& analysis) {
        Choose(analysis);
        for (const auto& [kind, text] : analysis.Values)
            Type(kind, text);
    }

    void RunTimes(int most) { Run(std::to_string(most), "20240615"); }

    // Those that covered or rejected under H0, that were narrow or rejected under H1, that were
    // both.
    static i32 CountOf(i16 result) {
        const std::array<i32, 3> counts{CountRejectH0(1), CountRejectH1(1), CountAcceptH1(1)};
        return counts.at(static_cast<std::size_t>(result));
    }
};

TEST_F(SimulatedParametric, AgreesWithExactProbabilities) {
    const int replicates = WholeStatistics() ? 100000 : 2000;
    for (const SimulatedCase& simulated : ReadCases()) {
        Prepare(simulated.Analysis);
        RunTimes(replicates);
        ASSERT_EQ(SimNo, replicates) << Describe(simulated.Analysis) << " " << LastMessage();
        for (const ValidationCase& result : simulated.Results) {
            const f64 estimate = static_cast<f64>(CountOf(result.UnknownKind)) / replicates;
            const f64 p = result.Exact;
            constexpr f64 quantile = 3.2905; // 99.9 %
            const f64 chance = quantile * std::sqrt(p * (1 - p) / replicates);
            EXPECT_NEAR(estimate, p, chance + result.Tolerance)
                << simulated.Analysis.Analysis << " samples " << result.NoOfSamples << " tails "
                << result.NoOfTails << " left " << result.Left << " result " << result.UnknownKind
                << ":" << Describe(simulated.Analysis);
        }
    }
}

// --- Edges ---------------------------------------------------------------------------------------

bool IsTestCase(const SimulatedCase& simulated) {
    return simulated.Analysis.MenuNo >= 0 || simulated.Analysis.ProcedureNo == ProcedureTest;
}

// One study of these sizes at a single analysis.
void SizesOfStudy(i16 n1, i16 n2) {
    SimSize1.ReDim(0, 1);
    SimSize2.ReDim(0, 1);
    SimSize1(1) = n1;
    SimSize2(1) = n2;
    SelGetSimPar();
}

f32 PValueOfStudy(bool isH1) {
    f32 p = -1;
    SimStage = 0;
    SelSimStatistic(p, isH1 ? 1 : 0);
    return p;
}

TEST_F(SimulatedParametric, SmallStudiesHaveAPValue) {
    for (const SimulatedCase& simulated : ReadCases()) {
        if (!IsTestCase(simulated))
            continue;
        Prepare(simulated.Analysis);
        RunTimes(1);
        for (const auto& [n1, n2] : {std::pair<i16, i16>{1, 1}, {2, 2}, {3, 2}, {2, 5}, {5, 4}}) {
            SizesOfStudy(n1, n2);
            for (int study = 0; study < 20; ++study)
                for (const bool isH1 : {false, true}) {
                    const f32 p = PValueOfStudy(isH1);
                    EXPECT_TRUE(p >= 0 && p <= 1) << p << Describe(simulated.Analysis);
                }
        }
        EXPECT_NO_THROW(ThrowIfFloatFault()) << Describe(simulated.Analysis);
    }
}

TEST_F(SimulatedParametric, AnEmptyGroupIsNoEvidence) {
    for (const SimulatedCase& simulated : ReadCases()) {
        if (!IsTestCase(simulated))
            continue;
        Prepare(simulated.Analysis);
        RunTimes(1);
        const bool hasSecond = SimSize2(1) > 0;
        for (const auto& [n1, n2] : {std::pair<i16, i16>{0, 0}, {0, 9}, {9, 0}}) {
            if (n1 > 0 && !hasSecond)
                continue;
            SimSize1(1) = n1;
            SimSize2(1) = n2;
            EXPECT_EQ(PValueOfStudy(true), 1) << n1 << " " << n2 << Describe(simulated.Analysis);
        }
    }
}

TEST_F(SimulatedParametric, AnEmptyGroupHasAnIntervalWithoutEnd) {
    for (const SimulatedCase& simulated : ReadCases()) {
        const bool isRate = simulated.Analysis.DistrNo == DistrPoisson &&
                            simulated.Analysis.ParListNo == 1; // its time can't be 0
        if (IsTestCase(simulated) || isRate)
            continue;
        Prepare(simulated.Analysis);
        RunTimes(1);
        SimSize1(1) = 0;
        if (simulated.Analysis.DistrNo == DistrPoisson)
            SelGetSimPar();
        SimStage = 0;
        SelSimInterval();
        EXPECT_FALSE(SimStudy.IsNarrow) << Describe(simulated.Analysis);
        EXPECT_EQ(SimStudy.Covers, simulated.Analysis.ProcedureNo == ProcedureInterval)
            << Describe(simulated.Analysis);
    }
}

// 99999 is narrow only where more is allowed, and nothing can be entered above it.
TEST_F(SimulatedParametric, SmallSamplesHaveAnInterval) {
    for (const SimulatedCase& simulated : ReadCases()) {
        if (IsTestCase(simulated))
            continue;
        Prepare(simulated.Analysis);
        RunTimes(1);
        for (const i16 n : {i16{1}, i16{2}, i16{3}, i16{4}}) {
            SizesOfStudy(n, simulated.Analysis.NoOfSamples == TwoSamples ? n : i16{0});
            for (int study = 0; study < 20; ++study) {
                SimStage = 0;
                EXPECT_NO_THROW(SelSimInterval()) << Describe(simulated.Analysis);
            }
        }
        EXPECT_NO_THROW(ThrowIfFloatFault()) << Describe(simulated.Analysis);
    }
}

TEST_F(SimulatedParametric, WithoutErrorTheEffectIsCertain) {
    EXPECT_EQ(FTestPValue(1, 0, 2, 5), 0);
    EXPECT_EQ(FTestPValue(0, 0, 2, 5), 1);
    EXPECT_EQ(FTestPValue(1, 1, 2, 0), 1) << "no degree of freedom";
    Prepare(ReadCases().front().Analysis);
    const Hypotheses noEffect;
    NoOfTails = OneSided;
    LeftTail = False;
    EXPECT_LT(StudentPValue(noEffect, 1, 0, 5), 1e-6);
    EXPECT_GT(StudentPValue(noEffect, -1, 0, 5), 0.999);
    EXPECT_NEAR(StudentPValue(noEffect, 0, 0, 5), 0.5, 0.01);
    EXPECT_EQ(StudentPValue(noEffect, 1, 1, 0), 1) << "no degree of freedom";
}

// scipy: chi2.cdf(12, 7) = 0.899441, chi2.cdf(4, 7) = 0.220223, f.cdf(2.5, 6, 9) = 0.895292.
TEST_F(SimulatedParametric, PValuesOfScalesFollowTheTails) {
    struct Row {
        i16 Tails;
        i16 Left;
        f64 Chi2;
        f64 F;
    };
    constexpr Row rows[] = {{OneSided, True, 0.899441, 0.895292},
                            {OneSided, False, 1 - 0.899441, 1 - 0.895292},
                            {TwoSided, False, 2 * (1 - 0.899441), 2 * (1 - 0.895292)}};
    for (const Row& row : rows) {
        NoOfTails = row.Tails;
        LeftTail = row.Left;
        EXPECT_NEAR(Chi2PValue(24, 2, 0, 7), row.Chi2, 0.002);
        EXPECT_NEAR(FPValue(5, 2, 0, 6, 9), row.F, 0.0005);
    }
    // Two one-sided tests: above the left limit and below the right one.
    NoOfTails = TwoOneSided;
    EXPECT_NEAR(Chi2PValue(24, 2, 6, 7), 0.220223, 0.002) << "x/6 = 4 is not small enough";
    EXPECT_NEAR(Chi2PValue(24, 2, 24, 7), 1 - 0.899441, 0.002) << "x/2 = 12 is not large enough";
}

// --- Interim analyses ----------------------------------------------------------------------------

// What has been drawn is not drawn again: with hardly a chance to reject before, the last analysis
// has the level and the power of a single one.
TEST_F(SimulatedParametric, TheLastAnalysisSeesAllSubjects) {
    const int replicates = WholeStatistics() ? 100000 : 1000;
    for (const SimulatedCase& simulated : ReadCases()) {
        if (!IsTestCase(simulated))
            continue;
        Choose(simulated.Analysis);
        ReopenOptions();
        ASSERT_TRUE(InterimShown);
        ChooseInterim(2);
        AcceptOptions();
        for (const auto& [kind, text] : simulated.Analysis.Values)
            Type(kind, text);
        RejectH0Text(0) = RejectH0Text(1) = "0.0000001";
        RunTimes(replicates);
        ASSERT_EQ(SimNo, replicates) << Describe(simulated.Analysis) << " " << LastMessage();
        for (const ValidationCase& result : simulated.Results) {
            const i32 count = result.UnknownKind == 0 ? CountRejectH0(4) : CountRejectH1(4);
            const f64 p = result.Exact;
            EXPECT_NEAR(static_cast<f64>(count) / replicates, p,
                        3.2905 * std::sqrt(p * (1 - p) / replicates) + result.Tolerance)
                << simulated.Analysis.Analysis << " result " << result.UnknownKind << ":"
                << Describe(simulated.Analysis);
        }
        ReopenOptions();
        ChooseInterim(0);
        AcceptOptions();
    }
}

// --- Means of a grid -----------------------------------------------------------------------------

class SimulatedGroups : public SimulatedParametric {
  protected:
    static constexpr i16 menuAnova = 10;

    void DeriveFrom(i16 kind, const std::vector<GridRowTexts>& grids) {
        for (const GridRowTexts& rows : grids)
            platform.GridFillings.emplace_back([rows] { return FillCurrentGrid(rows); });
        GetFromTable(PositionOf(kind));
    }

    void ExpectPower(f64 exact) {
        const int replicates = DrawsOf(100000);
        RunTimes(replicates);
        EXPECT_NEAR(static_cast<f64>(CountRejectH1(1)) / replicates, exact,
                    3.2905 * std::sqrt(exact * (1 - exact) / replicates) + 0.0015);
        EXPECT_NEAR(static_cast<f64>(CountRejectH0(1)) / replicates, 0.05,
                    3.2905 * std::sqrt(0.05 * 0.95 / replicates) + 0.0015);
    }
};

// scipy: ncf.sf(f.ppf(0.95, 3, 44), 3, 44, lambda) with lambda = 12 sum (m - mean)^2/1.5^2 for the
// means 101.2, 100.4, 99.1, 100.9, and of those that the largest difference alone stands for.
TEST_F(SimulatedGroups, HaveTheMeansOfTheirGridAsLongAsItHolds) {
    constexpr f64 ofMeans = 0.858712;
    constexpr f64 ofLargestDifference = 0.794109;
    OpenSimulation(menuAnova);
    ReopenOptions();
    Pick(Group::EffectSize, 1);
    AcceptOptions();
    Type(Kind::NoOfGroups, "4");
    Type(Kind::Sd, "1.5");
    Type(Kind::Size1, "12");
    Type(Kind::SizeK, "12");
    DeriveFrom(Kind::AnyMeanDifference, {{{"101.2"}, {"100.4"}, {"99.1"}, {"100.9"}}});
    EXPECT_EQ(ParText(Kind::AnyMeanDifference), "2.1");
    ExpectPower(ofMeans);
    Type(Kind::AnyMeanDifference, "2.1");
    ExpectPower(ofMeans);
    Type(Kind::AnyMeanDifference, "2.10001");
    ExpectPower(ofLargestDifference);
}

// nct: contrast 2.975 with the standard deviation 2.4751263 in single observations, 9 per group.
TEST_F(SimulatedGroups, HaveTheContrastOfTheirGrids) {
    OpenSimulation(menuAnova);
    ReopenOptions();
    Tick(Check::Contrast);
    AcceptOptions();
    Type(Kind::NoOfGroups, "5");
    Type(Kind::SizePerGroup, "9");
    DeriveFrom(Kind::ContrastMean,
               {{{"1", "0.5", "-1.5", "0.25", "-0.25"}},
                {{"101.2", "100.4", "99.1", "100.9", "100"}, {"1.3", "1.3", "1.3", "1.3", "1.3"}}});
    EXPECT_EQ(ParText(Kind::ContrastMean), "2.975");
    constexpr f64 exact = 0.940391;
    ExpectPower(exact);
}

// --- What can be simulated -----------------------------------------------------------------------

TEST_F(SimulatedParametric, RefusesTooManyEvents) {
    const auto cases = ReadCases();
    const auto ofRate = std::ranges::find_if(cases, [](const SimulatedCase& row) {
        return row.Analysis.Analysis == "distribution 6 1 2";
    });
    ASSERT_NE(ofRate, cases.end());
    Prepare(ofRate->Analysis);
    Type(Kind::Rate, "1000");
    Type(Kind::StudyTime, "1001");
    Run("1", "1");
    EXPECT_EQ(LastMessage(), "A Simulated Study Has 1000000 Events at Most.");
    EXPECT_EQ(OutputReady, False);
    EXPECT_EQ(Cancelled, False);
    Type(Kind::StudyTime, "1000");
    RunTimes(2);
    EXPECT_EQ(OutputReady, True);
}

// A window is offered for every estimate.
TEST_F(SimulatedParametric, EveryEstimateIsServed) {
    for (i16 distr = 0; distr <= DistrBivariateNormal; ++distr)
        for (i16 list = 0; list < static_cast<i16>(DistrParList(distr).size()); ++list)
            for (const i16 procedure : {ProcedureEstimate, ProcedureInterval})
                EXPECT_TRUE(HasSimulation({.IsTest = False,
                                           .DistrNo = distr,
                                           .ProcedureNo = procedure,
                                           .ParListNo = list}))
                    << distr << " " << list << " " << procedure;
}

} // namespace
} // namespace quorvanta::checks
