#include "core/fault.h"
#include "numeric/inverse.h"
#include "numeric/rnd.h"
#include "support/eigen_matrix.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvanta {
namespace {

using checks::FromEigen;
using checks::RandomMatrix;
using checks::ToEigen;

constexpr f64 epsilon = std::numeric_limits<f64>::epsilon();

// Random matrices, every second one with singular values spread evenly over up to eight orders of
// magnitude, against Eigen's LU decomposition with full pivoting. Two exact inverses of
// neighbouring matrices differ by the condition number times their distance.
TEST(MatInverse, AThousandMatrices) {
    Rnd(-5.0);
    Randomize(5.0);
    for (int k = 0; k < 1000; ++k) {
        const int n = 1 + k % 10;
        SCOPED_TRACE(testing::Message() << "matrix " << k);
        Eigen::MatrixXd m = RandomMatrix(n);
        if (k % 2 == 1) {
            const Eigen::JacobiSVD<Eigen::MatrixXd> svd(m,
                                                        Eigen::ComputeFullU | Eigen::ComputeFullV);
            const f64 spread = 8.0 * Rnd();
            const Eigen::VectorXd sizes = Eigen::VectorXd::NullaryExpr(n, [&](Eigen::Index i) {
                return std::pow(10.0, -spread * static_cast<f64>(i) / n);
            });
            m = svd.matrixU() * sizes.asDiagonal() * svd.matrixV().transpose();
        }
        Array2<f64> a = FromEigen(m);
        ClearFloatFaults();
        ASSERT_TRUE(MatInverse(a, static_cast<i16>(n)));
        EXPECT_FALSE(HasFloatFault());
        const Eigen::MatrixXd inverse = ToEigen(a);
        const Eigen::MatrixXd expected = m.fullPivLu().inverse();
        const f64 condition = m.norm() * expected.norm();
        EXPECT_LE((inverse - expected).norm(), 10.0 * n * epsilon * condition * expected.norm());
        EXPECT_LE((m * inverse - Eigen::MatrixXd::Identity(n, n)).norm(),
                  10.0 * n * epsilon * condition);
    }
}

TEST(MatInverse, APermutationIsItsTransposeExactly) {
    const Eigen::MatrixXd m{{0, 0, 1, 0}, {1, 0, 0, 0}, {0, 0, 0, 1}, {0, 1, 0, 0}};
    Array2<f64> a = FromEigen(m);
    EXPECT_TRUE(MatInverse(a, 4));
    EXPECT_EQ(ToEigen(a), m.transpose());
}

TEST(MatInverse, InvertsTheLeadingPartOnly) {
    const Eigen::MatrixXd m{{2, 0, 5}, {0, 4, 6}, {7, 8, 9}};
    Array2<f64> a = FromEigen(m);
    EXPECT_TRUE(MatInverse(a, 2));
    EXPECT_EQ(ToEigen(a), (Eigen::MatrixXd{{0.5, 0, 5}, {0, 0.25, 6}, {7, 8, 9}}));
}

TEST(MatInverse, ASingularMatrixIsRefused) {
    for (const Eigen::MatrixXd& m :
         {Eigen::MatrixXd(Eigen::MatrixXd::Zero(3, 3)), Eigen::MatrixXd{{1, 2}, {2, 4}},
          Eigen::MatrixXd{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}) {
        Array2<f64> a = FromEigen(m);
        ClearFloatFaults();
        EXPECT_FALSE(MatInverse(a, static_cast<i16>(m.rows())));
        EXPECT_FALSE(HasFloatFault());
    }
}

// The limit is an absolute one: 1e-12 itself still passes.
TEST(MatInverse, APivotBelowTheLimitIsTooSmall) {
    Array2<f64> a = FromEigen(Eigen::MatrixXd{{1, 0}, {0, 1.0E-12}});
    EXPECT_TRUE(MatInverse(a, 2));
    EXPECT_EQ(a(2, 2), 1.0 / 1.0E-12);
    a = FromEigen(Eigen::MatrixXd{{1, 0}, {0, 0.999E-12}});
    EXPECT_FALSE(MatInverse(a, 2));
    a = FromEigen(0.999E-12 * Eigen::MatrixXd::Identity(3, 3));
    EXPECT_FALSE(MatInverse(a, 3));
}

TEST(MatInverse, AMatrixOfNothingButNaNIsRefused) {
    Array2<f64> a =
        FromEigen(Eigen::MatrixXd::Constant(2, 2, std::numeric_limits<f64>::quiet_NaN()));
    EXPECT_FALSE(MatInverse(a, 2));
}

} // namespace
} // namespace quorvanta
