// The distributions behind an analysis: which they are, and the plot of them.
#include "core/driver.h"
#include "core/kinds.h"
#include "core/menus.h"
#include "core/records.h"
#include "core/showpar.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/randdist.h"
#include "output/distrplot.h"
#include "output/distrtable.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/solving_fixture.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

class DistrPlot : public SolvingFixture {
  protected:
    static const PlottedDistr& Row(const DistrTable& table, std::size_t row) {
        return table.Distributions.at(row);
    }

    // A row of the table of distributions, as if it had been chosen.
    static void ChooseFamily(const DistrRow& null, const DistrRow& alternative) {
        ClearDistrRows();
        SelectDistr(null);
        StoreDistrRow(1);
        SelectDistr(alternative);
        StoreDistrRow(2);
    }
};

// The share of a distribution in its areas.
f64 ShareOfAreas(const PlottedDistr& distr) {
    f64 share = 0;
    for (const auto& [from, to] : distr.Areas)
        share +=
            (std::isfinite(to) ? distr.Cdf(to) : 1) - (std::isfinite(from) ? distr.Cdf(from) : 0);
    return share;
}

bool IsTruth(const PlottedDistr& distr) {
    return distr.Label.starts_with("H1");
}

// What is not hatched under H1; of two one-sided tests both have to reject.
f64 PowerShown(const DistrTable& table) {
    f64 power = 1;
    for (const PlottedDistr& distr : table.Distributions)
        if (IsTruth(distr))
            power -= ShareOfAreas(distr);
    return power < 0 ? 0 : power;
}

const Values TTest{{Kind::SignificanceLevel, "0.05"},
                   {Kind::H0Mean2Minus1, "0"},
                   {Kind::H1Mean1, "0"},
                   {Kind::H1Mean2, "0.5"},
                   {Kind::H1Mean2Minus1, "0.5"},
                   {Kind::Sd, "1"},
                   {Kind::Size1, "64"},
                   {Kind::Size2, "64"},
                   {Kind::Power, "0.8"}};

// Values of scipy.stats: t.ppf(0.975, 126), t.pdf(0, 126), nct.pdf(2, 126, 0.5 sqrt(32)) and
// nct.cdf of the same.
TEST_F(DistrPlot, ATTestHasACentralAndANoncentralT) {
    ASSERT_NE(PowerOf(MenuChoice(0, TwoSamples, TwoSided), TTest), NoValue);
    const DistrTable table = CurrentDistributions();
    ASSERT_EQ(table.Kind, DistrTableKind::Statistic);
    EXPECT_EQ(table.What, "Test Statistic (t)");
    ASSERT_EQ(table.Distributions.size(), 2U);
    ASSERT_EQ(table.CriticalValues.size(), 2U);
    EXPECT_NEAR(table.CriticalValues[0], -1.9789706, 0.0005);
    EXPECT_NEAR(table.CriticalValues[1], 1.9789706, 0.0005);
    EXPECT_EQ(Row(table, 0).Label, "H0");
    EXPECT_NEAR(Row(table, 0).Density(0), 0.3981515, 0.0005);
    EXPECT_EQ(Row(table, 1).Label, "H1");
    EXPECT_NEAR(Row(table, 1).Density(2), 0.2826959, 0.001);
    EXPECT_NEAR(Row(table, 1).Cdf(2), 0.2044355, 0.0005);
    EXPECT_LT(table.Low, -3);
    EXPECT_GT(table.High, 5.5);
}

// scipy's f.ppf(0.95, 3, 66), ncf.pdf(8, 3, 66, 20) and ncf.cdf of the same.
TEST_F(DistrPlot, TheTestOfACrossoverHasACentralAndANoncentralF) {
    ASSERT_NE(PowerOf(MenuChoice(240, MoreSamples, TwoSided), {{Kind::MahalanobisDistance, "0.3"},
                                                               {Kind::ResidualSd, "0.3"},
                                                               {Kind::NoOfSequences, "4"},
                                                               {Kind::NoOfPeriods, "4"},
                                                               {Kind::NoOfTreatments, "4"},
                                                               {Kind::SizePerSequence, "6"}}),
              NoValue);
    ASSERT_EQ(HasDistrGraph, True);
    const DistrTable table = CurrentDistributions();
    EXPECT_EQ(table.What, "Test Statistic (F)");
    ASSERT_EQ(table.CriticalValues.size(), 1U);
    EXPECT_NEAR(table.CriticalValues[0], 2.7437108, 0.001);
    ASSERT_EQ(table.Distributions.size(), 2U);
    EXPECT_NEAR(Row(table, 1).Density(8), 0.1116973, 0.0005);
    EXPECT_NEAR(Row(table, 1).Cdf(8), 0.5695928, 0.0005);
}

// The picture and the equation agree: what is hatched under H0 is the significance level, what is
// not under H1 the power. The exact tests keep below their level.
TEST_F(DistrPlot, AreasAreTheLevelAndThePower) {
    int pictures = 0;
    for (const int menu :
         {0,   1,   10,  11,  12,  18,  20,  30,  31,  40,  50,  70,  80,  111, 112, 113,
          120, 130, 170, 171, 180, 190, 210, 230, 240, 300, 360, 400, 491, 510, 511, 512})
        for (const AnalysisChoice& choice : AllChoices(MenuChoice(static_cast<i16>(menu), 1, 1))) {
            SCOPED_TRACE(Describe(choice));
            const f64 power = PowerOf(choice, {});
            if (power == NoValue || HasDistrGraph == False || HasSurvivalGraph())
                continue;
            const DistrTable table = CurrentDistributions();
            if (table.Kind != DistrTableKind::Statistic)
                continue;
            ++pictures;
            EXPECT_NEAR(PowerShown(table), power, 0.002);
            const f64 level = ParValue(0) > 0.5 ? 1 - ParValue(0) : ParValue(0);
            for (const PlottedDistr& distr : table.Distributions)
                if (!IsTruth(distr)) {
                    const f64 both = NoOfTails == TwoOneSided ? 2 * level : level;
                    EXPECT_LE(ShareOfAreas(distr), both + 0.0005);
                }
        }
    EXPECT_GT(pictures, 100);
}

// 15 of 20 or more reject p = 0.5: 0.0207 by the binomial distribution, 0.8042 for p = 0.8.
TEST_F(DistrPlot, AnExactTestShowsItsCounts) {
    OpenDistribution(DistrBinomial, 0, ProcedureTest);
    ChooseSamples(OneSample);
    ChooseTails(OneSided);
    Tick(Check::Exact);
    AcceptOptions();
    Type(Kind::SignificanceLevel, "0.05");
    Type(Kind::H0Proportion, "0.5");
    Type(Kind::H1Proportion, "0.8");
    Type(Kind::Size, "20");
    ASSERT_NE(Solve(Kind::Power), "-");
    const DistrTable table = CurrentDistributions();
    EXPECT_EQ(table.What, "Number of Successes");
    EXPECT_TRUE(table.IsDiscrete);
    ASSERT_EQ(table.CriticalValues, std::vector<f64>{14.5});
    EXPECT_NEAR(Row(table, 0).Density(15), 0.0147858, 1e-6);
    EXPECT_NEAR(Row(table, 1).Density(15), 0.1745595, 1e-6);
    EXPECT_NEAR(ShareOfAreas(Row(table, 0)), 0.0206947, 1e-5);
    EXPECT_NEAR(PowerShown(table), 0.8042078, 1e-5);
    const Presentation plot = FillDistrTable(DensityPlot);
    EXPECT_EQ(plot.YAxis(0), "Probability Mass Function");
    EXPECT_EQ(plot.Areas.size(), 2U);
    EXPECT_EQ(plot.Marks, std::vector<f64>{14.5});
}

// exp(-0.1 t): half of the patients live 6.93, the hazard is 0.1 at every time.
TEST_F(DistrPlot, ASurvivalTestShowsItsGroups) {
    ASSERT_NE(PowerOf(MenuChoice(390, TwoSamples, TwoSided),
                      {{Kind::H1Rate1, "0.1"}, {Kind::H1Rate2, "0.2"}}),
              NoValue);
    const DistrTable table = CurrentDistributions();
    ASSERT_EQ(table.Kind, DistrTableKind::Survival);
    ASSERT_EQ(table.Distributions.size(), 2U);
    EXPECT_EQ(Row(table, 0).Label, "Group 1");
    EXPECT_EQ(Row(table, 1).Label, "Group 2");
    EXPECT_NEAR(Row(table, 0).Cdf(6.9314718), 0.5, 1e-6);
    EXPECT_NEAR(Row(table, 1).Cdf(6.9314718), 0.75, 1e-6);
    EXPECT_EQ(CurrentDistrPlot(), SurvivalPlot);
    EXPECT_EQ(DistrPlotOptions().size(), 4U);
    const Presentation hazard = FillDistrTable(HazardPlot);
    for (int i = 2; i < hazard.X.HighBound(); ++i) {
        EXPECT_NEAR(hazard.Y(i, 1), 0.1, 0.001);
        EXPECT_NEAR(hazard.Y(i, 2), 0.2, 0.002);
    }
    EXPECT_EQ(hazard.YAxis(1), "0.0");
    EXPECT_EQ(hazard.YAxis(2), "0.25");
    const Presentation survival = DistrGraph();
    EXPECT_EQ(survival.XAxis(1), "0") << "no curve begins before the study";
    EXPECT_EQ(survival.X(1), 0);
    EXPECT_EQ(ParseNumber(survival.XAxis(2)), f64{survival.X(survival.X.HighBound())});
    EXPECT_EQ(survival.YAxis(0), "Survival Function");
    EXPECT_EQ(survival.XAxis(0), "Time");
    EXPECT_EQ(survival.Y(1, 1), 1);
}

// --- The table of a chosen family ----------------------------------------------------------------

class DistrFamily : public DistrPlot {
  protected:
    void SetUp() override {
        DistrPlot::SetUp();
        OpenTest(300); // Wilcoxon-Mann-Whitney
        AcceptOptions();
        Solve(Kind::Power);
    }
};

TEST_F(DistrFamily, TheDensitiesOfH0AndH1) {
    ChooseFamily({SimNormal, 0, 1}, {SimNormal, 0.5F, 1});
    const DistrTable table = CurrentDistributions();
    ASSERT_EQ(table.Kind, DistrTableKind::Family);
    EXPECT_NEAR(Row(table, 0).Density(0), 0.3989423, 1e-6);
    EXPECT_NEAR(Row(table, 1).Density(0.5), 0.3989423, 1e-6);
    EXPECT_NEAR(Row(table, 1).Cdf(0.5), 0.5, 1e-9);
    EXPECT_EQ(FillDistrTable(DensityPlot).YAxis(0), "Probability Density Function");
    EXPECT_EQ(FillDistrTable(HazardPlot).YAxis(0), "Hazard Function");
    const Presentation cdf = FillDistrTable(CdfPlot);
    EXPECT_EQ(cdf.YAxis(0), "Cumulative Distribution Function");
    EXPECT_EQ(cdf.XAxis(0), "x-value");
    EXPECT_EQ(cdf.YAxis(2), "1.2");
    EXPECT_EQ(cdf.YAxis(3), "0.2");
    EXPECT_EQ(cdf.X.HighBound(), 401) << "a point at each end of each step";
    EXPECT_EQ(cdf.ZTexts, (std::vector<std::string>{"H0", "H1"}));
}

// Where a family alone is chosen, the analysis itself says where its groups lie. Ordinates of the
// normal and of the Laplace density: 1 / sqrt(2 pi) = 0.3989423 and 1/2, divided by the scale.
class DistrOfGroups : public SimulationFixture {
  protected:
    DistrTable Choose(i16 code) {
        ClearDistrRows();
        SelectDistr({code, 0, 1});
        StoreDistrRow(1);
        return CurrentDistributions();
    }
};

TEST_F(DistrOfGroups, OfATestOfScalesTheyHaveItsScales) {
    OpenSimulation(330); // Siegel-Tukey
    ReopenOptions();
    Pick(Group::H1Scale2, 0);
    AcceptOptions();
    Type(Kind::H1Scale1, "2");
    Type(Kind::H1Scale2, "5");
    const DistrTable two = Choose(SimNormal);
    ASSERT_EQ(two.Distributions.size(), 2U);
    EXPECT_NEAR(two.Distributions[0].Density(0), 0.3989423 / 2, 1e-6);
    EXPECT_NEAR(two.Distributions[1].Density(0), 0.3989423 / 5, 1e-6);
    Type(Kind::H1Scale2, "4");
    EXPECT_NEAR(CurrentDistributions().Distributions[1].Density(0), 0.3989423 / 4, 1e-6)
        << "a value typed later";

    ReopenOptions();
    Pick(Group::H1Scale2, 1);
    AcceptOptions();
    Type(Kind::H1Scale2Over1, "2.5");
    const DistrTable one = Choose(SimLaplace);
    ASSERT_EQ(one.Distributions.size(), 2U);
    EXPECT_NEAR(one.Distributions[0].Density(0), 0.5, 1e-6) << "scale 1 under H0";
    EXPECT_NEAR(one.Distributions[1].Density(0), 0.5 / 2.5, 1e-6);
}

TEST_F(DistrOfGroups, OfATestOfLocationsTheyAreShifted) {
    OpenSimulation(310); // normal scores
    Type(Kind::H1Mean2Minus1, "3");
    Type(Kind::Sd, "2");
    const DistrTable two = Choose(SimNormal);
    ASSERT_EQ(two.Distributions.size(), 2U);
    EXPECT_NEAR(two.Distributions[0].Density(0), 0.3989423 / 2, 1e-6);
    EXPECT_NEAR(two.Distributions[1].Density(3), 0.3989423 / 2, 1e-6);

    OpenSimulation(311); // Kruskal-Wallis
    Type(Kind::NoOfGroups, "3");
    Type(Kind::SdOfMeans, "2");
    Type(Kind::Sd, "1");
    const DistrTable groups = Choose(SimNormal);
    ASSERT_EQ(groups.Distributions.size(), 4U);
    EXPECT_EQ(groups.Distributions[0].Label, "H0");
    EXPECT_EQ(groups.Distributions[3].Label, "Group 3");
    // Equally spaced with this standard deviation: at 0, 2 sqrt(3/2) and 4 sqrt(3/2).
    EXPECT_NEAR(groups.Distributions[2].Density(2.4494897), 0.3989423, 1e-5);
    EXPECT_NEAR(groups.Distributions[3].Cdf(4.8989795), 0.5, 1e-5);
}

// Beyond the end of a uniform distribution nothing is left to have a hazard.
TEST_F(DistrFamily, AHazardWhereNothingIsLeftIsMissing) {
    ChooseFamily({SimUniform, 0, 1}, {SimUniform, 1, 1});
    const Presentation plot = FillDistrTable(HazardPlot);
    int missing = 0;
    for (int i = 1; i <= plot.X.HighBound(); ++i) {
        if (plot.X(i) >= 0.5F) {
            EXPECT_EQ(plot.Y(i, 1), static_cast<f32>(NoValue)) << plot.X(i);
            ++missing;
        } else if (plot.X(i) > -0.49F && plot.X(i) < 0.49F) {
            EXPECT_NEAR(plot.Y(i, 1), 1 / (0.5 - f64{plot.X(i)}), 0.001) << plot.X(i);
        }
    }
    EXPECT_GT(missing, 50);
    EXPECT_FALSE(HasCellValue(plot.Y(plot.X.HighBound(), 2)));
}

TEST_F(DistrFamily, LimitsThatAreTypedHoldForTheTable) {
    ChooseFamily({SimNormal, 0, 1}, {SimNormal, 0.5F, 1});
    ChooseDistrPlot(CdfPlot);
    GraphSettings settings = DistrGraphSettings();
    settings.XAxis(1) = "-1";
    settings.XAxis(2) = "1";
    settings.Title = {"Mine"};
    ASSERT_TRUE(ApplyDistrGraphSettings(settings));
    const Presentation plot = DistrGraph();
    EXPECT_EQ(plot.X(1), -1);
    EXPECT_EQ(plot.X(plot.X.HighBound()), 1);
    EXPECT_EQ(plot.Title, std::vector<std::string>{"Mine"});
    settings.XAxis(2) = "-2";
    EXPECT_FALSE(ApplyDistrGraphSettings(settings));
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xmin Must Be < Xmax."});
    EXPECT_EQ(DistrGraph().XAxis(2), "1");
    ChooseDistrPlot(DensityPlot);
    EXPECT_EQ(DistrGraphSettings().XAxis(2), "Auto") << "another plot starts anew";
}

// What was typed for an analysis whose window is closed is not that of the next one of its number.
TEST_F(DistrFamily, SettingsOfAnotherAnalysisAreNotTaken) {
    ChooseFamily({SimNormal, 0, 1}, {SimNormal, 0.5F, 1});
    ChooseDistrPlot(CdfPlot);
    GraphSettings settings = DistrGraphSettings();
    settings.Title = {"Mine"};
    ASSERT_TRUE(ApplyDistrGraphSettings(settings));
    const i16 number = AnalysisNo;
    const std::string headline = Headline();
    CloseMode = CloseByUser;
    for (i16 n = number; n >= 1; --n)
        ChildClosed(n);
    while (AnalysisNo < number) {
        FileCommand(CalculationWindow);
        NewTest(300);
        AcceptOptions();
    }
    Solve(Kind::Power);
    ChooseFamily({SimNormal, 0, 1}, {SimNormal, 0.5F, 1});
    ChooseDistrPlot(CdfPlot);
    ASSERT_EQ(Headline(), headline);
    EXPECT_NE(DistrGraphSettings().Title, std::vector<std::string>{"Mine"});
}

// --- When there is one ---------------------------------------------------------------------------

TEST_F(DistrPlot, TheMenuOffersItWithTheResult) {
    OpenTest(0);
    EXPECT_FALSE(GetInfoEnabled(4));
    AcceptOptions();
    Solve(Kind::Size1);
    EXPECT_EQ(HasDistrGraph, True);
    EXPECT_TRUE(GetInfoEnabled(4));
    TypedParText(PositionOf(Kind::Power), "0.9");
    EXPECT_FALSE(GetInfoEnabled(4));
}

// The values stay what they were: a solved size keeps its fraction.
TEST_F(DistrPlot, LookingChangesNothing) {
    ASSERT_NE(SolutionOf(MenuChoice(0, TwoSamples, TwoSided), TTest, Kind::Size1), NoValue);
    const auto values = ParValue;
    CurrentDistributions();
    for (i16 i = 0; i <= NoOfPar; ++i)
        EXPECT_EQ(ParValue(i), values(i));
}

TEST_F(DistrPlot, ItSaysInWordsWhatItShows) {
    ASSERT_NE(PowerOf(MenuChoice(0, TwoSamples, TwoSided), TTest), NoValue);
    EXPECT_EQ(DistrGraphInWords(), "Probability Density Function of Test Statistic (t): H0, H1. "
                                   "Critical Values: -1.979, 1.979.");
}

} // namespace
} // namespace quorvanta::checks
