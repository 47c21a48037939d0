// Critical values of multiple comparisons against quantiles of other origin.
#include "core/kinds.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "numeric/integra2.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/tsv.h"

#include <cmath>
#include <cstddef>
#include <sstream>
#include <string>

namespace quorvanta::checks {
namespace {

class Critical : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        IsTest = True;
        SizeRatio = 1;
        KnownVariance = false;
    }

    static f32 QuantileOf(i16 funcNo, f32 groups, f32 df, f32 alpha) {
        FamilyGroups = groups;
        return QuantileIntegral(df, alpha, funcNo);
    }
};

f32 Number(const std::string& text) {
    return static_cast<f32>(ParseNumber(text));
}
i16 Whole(const std::string& text) {
    return ToI16(ParseNumber(text));
}

TEST_F(Critical, QuantilesAgreeWithIntegralsOfOtherOrigin) {
    const auto rows = ReadTsv("multiple_comparisons.tsv");
    EXPECT_GE(rows.size(), 120U);
    for (const auto& row : rows) {
        SizeRatio = Number(row[4]);
        EXPECT_NEAR(QuantileOf(Whole(row[0]), Number(row[3]), Number(row[1]), Number(row[2])),
                    ParseNumber(row[5]), ParseNumber(row[6]))
            << "function " << row[0] << ", df " << row[1] << ", alpha " << row[2] << ", k "
            << row[3] << ", ratio " << row[4];
    }
}

// C. W. Dunnett, Biometrics 20, 1964, table II (two-sided, 5 %); the upper 5 % points of the
// studentized range as every textbook prints them (over the square root of 2 here); and of
// Dunnett's one-sided tests (Journal of the American Statistical Association 50, 1955, 1096-1121),
// which are those of the comparisons with the best (J. C. Hsu, Annals of Statistics 9, 1981,
// 1026-1034).
TEST_F(Critical, QuantilesAgreeWithPublishedTables) {
    struct Published {
        i16 FuncNo;
        f32 Groups;
        f32 Df;
        f64 Value;
    };
    const f64 root = std::sqrt(2.0);
    for (const Published& row :
         {Published{Studentized::Dunnett, 2, 20, 2.09},
          Published{Studentized::Dunnett, 3, 20, 2.38},
          Published{Studentized::Dunnett, 4, 20, 2.54},
          Published{Studentized::Dunnett, 3, 10, 2.57},
          Published{Studentized::Tukey, 3, 10, 3.88 / root},
          Published{Studentized::Tukey, 4, 20, 3.96 / root},
          Published{Studentized::Tukey, 5, 30, 4.10 / root},
          Published{Studentized::Tukey, 3, 20, 3.58 / root},
          Published{Studentized::Best, 3, 5, 2.44}, Published{Studentized::Best, 4, 5, 2.68},
          Published{Studentized::Best, 3, 10, 2.15}, Published{Studentized::Best, 6, 10, 2.56},
          Published{Studentized::Best, 3, 20, 2.03}, Published{Studentized::Best, 4, 20, 2.19},
          Published{Studentized::Best, 5, 20, 2.30}, Published{Studentized::Best, 10, 20, 2.60},
          Published{Studentized::Best, 3, 40, 1.97}, Published{Studentized::Best, 5, 40, 2.23},
          Published{Studentized::Best, 4, 120, 2.08}})
        EXPECT_NEAR(QuantileOf(row.FuncNo, row.Groups, row.Df, 0.05F), row.Value, 0.0065)
            << row.FuncNo << " " << row.Groups << " " << row.Df;
}

TEST_F(Critical, MaximumModuliAgreeWithAPublishedTable) {
    int compared = 0;
    for (const auto& row : ReadTsv("maximum_modulus.tsv")) {
        std::istringstream values(row[1]);
        f32 comparisons = 2;
        for (std::string value; std::getline(values, value, ','); ++comparisons, ++compared)
            EXPECT_NEAR(QuantileOf(Studentized::MaximumModulus, comparisons, Number(row[0]), 0.05F),
                        ParseNumber(value), 0.0105)
                << comparisons << " comparisons, df " << row[0];
    }
    EXPECT_GE(compared, 400);
}

TEST_F(Critical, AdjustedValuesAgreeWithDistributionsOfOtherOrigin) {
    const auto rows = ReadTsv("adjusted_values.tsv");
    EXPECT_GE(rows.size(), 120U);
    for (const auto& row : rows) {
        TestNo = Whole(row[0]);
        NoOfTails = Whole(row[1]);
        FamilyGroups = Number(row[5]);
        KnownVariance = Whole(row[7]) == 1;
        WeightedLevel = Number(row[9]);
        const f32 level = Single(1 - ParseNumber(row[8]));
        EXPECT_NEAR(McCritValue(Whole(row[3]), Whole(row[4]), Number(row[6]), level, Whole(row[2])),
                    ParseNumber(row[10]), ParseNumber(row[11]))
            << "test " << row[0] << ", tails " << row[1] << ", method " << row[2] << ", rank "
            << row[3] << ", df " << row[6];
    }
}

// --- The sum is the literal one ------------------------------------------------------------------

TEST(StudentizedProbability, IsTheDoubleSumInAllItsBits) {
    for (const i16 funcNo :
         {Studentized::Dunnett, Studentized::Tukey, Studentized::Best, Studentized::DunnettWidth,
          Studentized::TukeyWidth, Studentized::BestWidth, Studentized::MaximumModulus})
        for (const f32 df : {2.0F, 7.5F, 30.0F, 59.0F, 60.0F, 250.0F, 301.0F})
            for (const f32 groups : {2.0F, 4.0F, 5.5F, 10.0F})
                for (const f32 c : {0.7F, 1.9F, 2.7F, 4.4F}) {
                    const bool isWidth =
                        funcNo >= Studentized::DunnettWidth && funcNo <= Studentized::BestWidth;
                    const bool isModulus = funcNo == Studentized::MaximumModulus;
                    const StudentizedIntegral integral{.FuncNo = funcNo,
                                                       .Groups = groups,
                                                       .Df = df,
                                                       .SizeRatio = 0.8F,
                                                       .Upper = isWidth ? 1.1F : SUpper};
                    const auto integrand = [&](f64 x, f64 s) {
                        return ComparisonIntegrand(integral, c, x, s) *
                               DeviationDensity(integral, s);
                    };
                    const f32 literal = Single(
                        isModulus ? NestedSimpson(integrand, 0, 1, 1, f64{integral.Upper}, 30)
                                  : NestedSimpson(integrand, -10, 10, 30, f64{integral.Upper}, 50));
                    EXPECT_EQ(StudentizedProbability(integral, c), literal)
                        << funcNo << " df " << df << " k " << groups << " c " << c;
                }
}

// --- The density of s
// -----------------------------------------------------------------------------

StudentizedIntegral WithDf(f32 df, i16 funcNo = Studentized::Tukey) {
    return {.FuncNo = funcNo, .Groups = 3, .Df = df};
}

f64 FisherDensity(f64 d, f64 s) {
    return std::sqrt(2 * d) * f64{NorDensity(Single(std::sqrt(2 * d) * s - std::sqrt(2 * d - 1)))};
}

TEST(DeviationDensity, IsTheNormalApproximationFrom60To300) {
    for (const f32 df : {60.0F, 300.0F})
        EXPECT_EQ(DeviationDensity(WithDf(df), 1.02), FisherDensity(f64{df}, 1.02));
    const f32 below = std::nextafter(60.0F, 0.0F);
    EXPECT_NE(DeviationDensity(WithDf(below), 1.02), FisherDensity(f64{below}, 1.02));
    EXPECT_EQ(DeviationDensity(WithDf(below), 1.02),
              2 * f64{below} * 1.02 * f64{Chi2DensityRaw(Single(f64{below} * 1.02 * 1.02), below)});
}

// Uniform: what is left is the integral of a known variance. That of a width stays normal.
TEST(DeviationDensity, IsUniformAbove300ButForWidths) {
    const f32 above = std::nextafter(300.0F, 1000.0F);
    EXPECT_EQ(DeviationDensity(WithDf(above), 1.02), 1 / f64{SUpper});
    EXPECT_EQ(DeviationDensity(WithDf(above, Studentized::TukeyWidth), 1.02),
              FisherDensity(f64{above}, 1.02));
}

TEST(Chi2DensityRaw, EndsAt0AndAt100) {
    EXPECT_EQ(Chi2DensityRaw(0, 5), 0);
    EXPECT_EQ(Chi2DensityRaw(-1, 5), 0);
    EXPECT_EQ(Chi2DensityRaw(100, 59), 0);
    EXPECT_GT(Chi2DensityRaw(std::nextafter(100.0F, 0.0F), 59), 0);
    // exp(-2)/2 with two degrees of freedom.
    EXPECT_NEAR(Chi2DensityRaw(4, 2), 0.0676676, 4e-6);
}

// --- Edges
// ----------------------------------------------------------------------------------------

TEST_F(Critical, QuantilesUseAtMost250DegreesOfFreedom) {
    for (const i16 testNo : std::initializer_list<i16>{138, 139, 140}) {
        TestNo = testNo;
        NoOfTails = TwoSided;
        FamilyGroups = 4;
        const f32 at250 = McCritValue(1, 4, 250, 0.95F, Adjust::JointOrScheffe);
        EXPECT_EQ(McCritValue(1, 4, 100000, 0.95F, Adjust::JointOrScheffe), at250);
        EXPECT_NE(McCritValue(1, 4, 249, 0.95F, Adjust::JointOrScheffe), at250);
    }
}

TEST_F(Critical, AQuantileAboveFiveIsNone) {
    EXPECT_LT(QuantileOf(Studentized::Tukey, 4, 8, 0.01F), 5);
    EXPECT_EQ(QuantileOf(Studentized::Tukey, 10, 3, 0.001F), NoQuantile);
}

TEST_F(Critical, AQuantileIsKeptAndFoundAnewForOtherInputs) {
    const f32 first = QuantileOf(Studentized::Dunnett, 4, 20, 0.05F);
    EXPECT_EQ(QuantileOf(Studentized::Dunnett, 4, 20, 0.05F), first);
    EXPECT_NE(QuantileOf(Studentized::Dunnett, 5, 20, 0.05F), first);
    EXPECT_NE(QuantileOf(Studentized::Dunnett, 4, 21, 0.05F), first);
    EXPECT_NE(QuantileOf(Studentized::Dunnett, 4, 20, 0.06F), first);
    SizeRatio = 0.5F;
    EXPECT_NE(QuantileOf(Studentized::Dunnett, 4, 20, 0.05F), first);
}

// The hypothesis of no weight can't be rejected.
TEST_F(Critical, AWeightOf0HasACriticalValueBeyondAllStatistics) {
    TestNo = 138;
    NoOfTails = TwoSided;
    WeightedLevel = 0;
    for (const bool known : {false, true})
        for (const i16 tails : {OneSided, TwoSided})
            for (const f32 df : {1.0F, 2.0F, 20.0F, 250.0F, 100000.0F}) {
                KnownVariance = known;
                NoOfTails = tails;
                EXPECT_TRUE(std::isinf(McCritValue(1, 3, df, 0.95F, Adjust::Weighted)))
                    << df << ", known " << known;
            }
}

// --- Families
// -------------------------------------------------------------------------------------

TEST_F(Critical, EachTestHasItsFamilyAndItsMethods) {
    struct Row {
        i16 TestNo;
        i16 Kind;
        f64 ComparisonsOf4;
        std::size_t Methods;
        const char* First;
        const char* Fourth;
    };
    const char* weighted = "Weighted  Bonferroni";
    for (const Row& row :
         {Row{135, 0, 3, 4, "Dunnett", "Scheffe"}, Row{136, 1, 6, 4, "Tukey", "Scheffe"},
          Row{137, 2, 3, 4, "Constrained MCB", "Scheffe"}, Row{138, 3, 3, 7, weighted, "Dunnett"},
          Row{139, 4, 6, 7, weighted, "Tukey"},
          Row{140, 5, 4, 7, weighted, "Studentized Maximum Modulus"},
          Row{141, 6, 9, 7, weighted, "Scheffe"}, Row{142, 7, 3, 7, weighted, "Scheffe"},
          Row{143, 8, 6, 7, weighted, "Scheffe"}, Row{144, 9, 4, 7, weighted, "Scheffe"},
          Row{145, 10, 9, 7, weighted, "Scheffe"}}) {
        TestNo = row.TestNo;
        EXPECT_EQ(MultCompKind(), row.Kind);
        EXPECT_EQ(NoOfComparisons(4, 9), row.ComparisonsOf4) << row.TestNo;
        const auto names = AdjustMethodNames();
        ASSERT_EQ(names.size(), row.Methods) << row.TestNo;
        EXPECT_EQ(names[0], row.First);
        EXPECT_EQ(names[1], "Bonferroni");
        EXPECT_EQ(names[2], "Sidak");
        EXPECT_EQ(names[3], row.Fourth);
        if (row.Methods == 7) {
            EXPECT_EQ(names[4], "Sequence");
            EXPECT_EQ(names[5], "Holm");
            EXPECT_EQ(names[6], "Hochberg");
        }
    }
    for (const i16 testNo : std::initializer_list<i16>{0, 134, 146, 376}) {
        TestNo = testNo;
        EXPECT_EQ(MultCompKind(), 0);
        EXPECT_TRUE(AdjustMethodNames().empty());
    }
}

} // namespace
} // namespace quorvanta::checks
