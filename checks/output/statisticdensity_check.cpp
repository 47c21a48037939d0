// Densities of test statistics beside those of scipy.stats 1.10.1: t.pdf, nct.pdf, chi2.pdf,
// ncx2.pdf, f.pdf and ncf.pdf; with 1000 degrees of freedom, where nct.pdf overflows, of mpmath:
// the integral over the standard deviation in 30 digits.
#include "output/statisticdensity.h"

#include <gtest/gtest.h>

namespace quorvanta::checks {
namespace {

TEST(StatisticDensity, OfStudentsT) {
    EXPECT_NEAR(StudentDensity(0, 126, 0), 0.398151521301, 1e-7);
    EXPECT_NEAR(StudentDensity(2, 126, 2.8284271), 0.282695946588, 1e-7);
    EXPECT_NEAR(StudentDensity(-1.5, 3, 0), 0.120017174514, 1e-7);
    EXPECT_NEAR(StudentDensity(4, 3, 2), 0.0979607153771, 1e-7);
    EXPECT_NEAR(StudentDensity(0.5, 1, -1), 0.0918115222238, 1e-7);
    EXPECT_NEAR(StudentDensity(12, 20, 8), 0.0270352590246, 1e-7);
    EXPECT_NEAR(StudentDensity(2, 1000, 1.5), 0.35162604279, 1e-7);
    EXPECT_NEAR(StudentDensity(1, 2.5, 0.7), 0.312019368441, 1e-7);
}

TEST(StatisticDensity, OfChiSquare) {
    EXPECT_NEAR(ChiSquareDensity(3, 4, 0), 0.167347620111, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(10, 4, 12), 0.0507113301051, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(0.5, 1, 0), 0.439391289468, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(0.5, 1, 3), 0.181236007899, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(200, 150, 0), 0.000562304233594, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(260, 150, 90), 0.0107971888769, 2e-8);
    EXPECT_NEAR(ChiSquareDensity(30, 2, 30), 0.0365729732411, 2e-8);
}

TEST(StatisticDensity, OfF) {
    EXPECT_NEAR(FDensity(2, 2, 27, 0), 0.134905613009, 2e-8);
    EXPECT_NEAR(FDensity(3, 2, 27, 10), 0.112285095347, 2e-8);
    EXPECT_NEAR(FDensity(1, 1, 5, 0), 0.219679797351, 2e-8);
    EXPECT_NEAR(FDensity(4, 4, 145, 16), 0.189905086384, 2e-8);
    EXPECT_NEAR(FDensity(0.3, 10, 3, 0), 0.498479206708, 2e-8);
    EXPECT_NEAR(FDensity(6, 3, 60, 40), 0.0147299595182, 2e-8);
    EXPECT_NEAR(FDensity(1.2, 200, 300, 0), 0.938710676818, 2e-8);
}

TEST(StatisticDensity, IsZeroBelowAStatisticThatIsNotNegative) {
    EXPECT_EQ(ChiSquareDensity(0, 4, 2), 0);
    EXPECT_EQ(ChiSquareDensity(-1, 4, 2), 0);
    EXPECT_EQ(FDensity(0, 4, 20, 2), 0);
    EXPECT_EQ(FDensity(-1, 4, 20, 2), 0);
}

} // namespace
} // namespace quorvanta::checks
