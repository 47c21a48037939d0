#include "montecarlo/distrcdf.h"
#include "numeric/randdist.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace quorvanta {
namespace {

struct Row {
    DistrRow Distr;
    f64 X;
    f64 Cdf;
};

// Calculated with scipy 1.10.1.
const std::vector<Row> rows{
    {{SimUniform, 1, 2}, 0.06, 0.03},
    {{SimUniform, 1, 2}, 0.8, 0.4},
    {{SimUniform, 1, 2}, 1.98, 0.99},
    {{SimNormal, 1, 2}, -2.76159, 0.029999905296019},
    {{SimNormal, 1, 2}, 0.493306, 0.400000039845747},
    {{SimNormal, 1, 2}, 5.6527, 0.990000056661226},
    {{SimExponential, -1, 3}, -0.908622, 0.0300001220731584},
    {{SimExponential, -1, 3}, 0.532477, 0.400000025740405},
    {{SimExponential, -1, 3}, 12.8155, 0.989999964806724},
    {{SimLaplace, 0, 1.5F}, -4.22012, 0.0299999215029038},
    {{SimLaplace, 0, 1.5F}, -0.334715, 0.40000008719236},
    {{SimLaplace, 0, 1.5F}, 5.86803, 0.989999969945673},
    {{SimCauchy, 2, 0.5F}, -3.28945, 0.0299999858860586},
    {{SimCauchy, 2, 0.5F}, 1.83754, 0.39999991254121},
    {{SimCauchy, 2, 0.5F}, 17.9103, 0.990000026395146},
    {{SimWeibull, 1.75F, 3}, 0.408014, 0.0300000387013639},
    {{SimWeibull, 1.75F, 3}, 2.04371, 0.399999190311532},
    {{SimWeibull, 1.75F, 3}, 7.17991, 0.990000039296203},
    {{SimLogistic, 1, 2}, -5.9522, 0.0299999618742299},
    {{SimLogistic, 1, 2}, 0.18907, 0.40000002594596},
    {{SimLogistic, 1, 2}, 10.1902, 0.989999803481756},
    {{SimChi2, 5, 1}, 0.903056, 0.0300000007983222},
    {{SimChi2, 5, 1}, 3.6555, 0.400000056312587},
    {{SimChi2, 5, 1}, 15.0863, 0.990000113640398},
    {{SimChi2, 40, 1}, 24.9437, 0.0300000949029728},
    {{SimChi2, 40, 1}, 37.134, 0.400001836969279},
    {{SimChi2, 40, 1}, 63.6907, 0.989999912734498},
    {{SimLognormal, 2, 3}, 1.17142, 0.0300001637804055},
    {{SimLognormal, 2, 3}, 2.64306, 0.399998918040287},
    {{SimLognormal, 2, 3}, 9.60022, 0.989999988762883},
    {{SimExtremeValue, 0.5F, 1}, -0.754635, 0.0299999895103992},
    {{SimExtremeValue, 0.5F, 1}, 0.587422, 0.400000156945662},
    {{SimExtremeValue, 0.5F, 1}, 5.10015, 0.990000007693441},
};

TEST(DistrCdf, HasTheValuesOfOtherSoftware) {
    for (const Row& row : rows) {
        EXPECT_NEAR(DistrCdf(row.Distr, row.X), row.Cdf, 1e-12) << row.Distr.Code;
        EXPECT_TRUE(IsContinuousDistr(row.Distr));
        EXPECT_FALSE(IsDiscreteDistr(row.Distr));
    }
}

TEST(DistrCdf, TheQuantileIsItsInverse) {
    for (const Row& row : rows)
        for (const f64 p : {1e-9, 1e-4, 0.01, 0.3, 0.5, 0.8, 0.999, 1 - 1e-9})
            EXPECT_NEAR(DistrCdf(row.Distr, DistrQuantile(row.Distr, p)), p, 1e-11)
                << row.Distr.Code;
}

TEST(DistrCdf, QuantilesOf0And1AreTheEnds) {
    EXPECT_EQ(DistrQuantile({SimUniform, 1, 2}, 0), 0);
    EXPECT_EQ(DistrQuantile({SimUniform, 1, 2}, 1), 2);
    EXPECT_EQ(DistrQuantile({SimExponential, -1, 3}, 0), -1);
    EXPECT_EQ(DistrQuantile({SimChi2, 4, 1}, 0), 0);
    EXPECT_TRUE(std::isinf(DistrQuantile({SimNormal, 0, 1}, 0)));
    EXPECT_TRUE(std::isinf(DistrQuantile({SimNormal, 0, 1}, 1)));
}

TEST(DistrCdf, RefusesWhatIsNoDistribution) {
    EXPECT_FALSE(IsContinuousDistr({SimNormal, 0, 0}));
    EXPECT_FALSE(IsContinuousDistr({SimWeibull, 0, 1}));
    EXPECT_FALSE(IsContinuousDistr({SimChi2, 2.5F, 1}));
    EXPECT_FALSE(IsContinuousDistr({SimChi2, 1, 1}));
    EXPECT_FALSE(IsContinuousDistr({SimBinomial, 5, 0.5F}));
    EXPECT_FALSE(IsDiscreteDistr({SimBinomial, 5, 1}));
    EXPECT_FALSE(IsDiscreteDistr({SimBinomial, 2.5F, 0.5F}));
    EXPECT_FALSE(IsDiscreteDistr({SimPoisson, 0, 1}));
    EXPECT_FALSE(IsDiscreteDistr({SimMultinomial, 4, 1}));
}

TEST(DistrProportions, AreTheProbabilitiesOfCounts) {
    const auto binomial = DistrProportions({SimBinomial, 3, 0.5F}, 4);
    ASSERT_EQ(binomial.size(), 4U);
    EXPECT_NEAR(binomial[0], 0.125, 1e-12);
    EXPECT_NEAR(binomial[1], 0.375, 1e-12);
    EXPECT_NEAR(binomial[3], 0.125, 1e-12);
    const auto poisson = DistrProportions({SimPoisson, 2, 1}, 5);
    EXPECT_NEAR(poisson[0], std::exp(-2.0), 1e-12);
    EXPECT_NEAR(poisson[3], std::exp(-2.0) * 8 / 6, 1e-12);
    EXPECT_NEAR(std::accumulate(poisson.begin(), poisson.end(), 0.0), 1, 1e-12);
    const DistrRow rare{SimPoisson, 2, 1};
    EXPECT_LT(DistrProportions(rare, DistrCategories(rare)).back(), 1e-12);
}

} // namespace
} // namespace quorvanta
