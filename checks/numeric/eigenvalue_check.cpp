#include "core/fault.h"
#include "numeric/eigenvalue.h"
#include "numeric/rnd.h"
#include "support/eigen_matrix.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

using checks::FromEigen;
using checks::RandomElement;
using checks::RandomMatrix;

using Complex = std::complex<f64>;
using Spectrum = std::vector<Complex>;

constexpr f64 epsilon = std::numeric_limits<f64>::epsilon();

Spectrum SpectrumOf(const Eigen::MatrixXd& m) {
    const i16 n = static_cast<i16>(m.rows());
    Array1<f64> real;
    Array1<f64> imaginary;
    EXPECT_TRUE(EigenValues(n, FromEigen(m), real, imaginary));
    Spectrum spectrum;
    for (int i = 1; i <= n; ++i)
        spectrum.emplace_back(real(i), imaginary(i));
    return spectrum;
}

// --- Matrices ---------------------------------------------------------------------------------

Eigen::MatrixXd Symmetric(int n) {
    const Eigen::MatrixXd m = RandomMatrix(n);
    return m + m.transpose();
}

// Elements of very different size: from 1 down to 1e-10 along rows and columns.
Eigen::MatrixXd Graded(int n) {
    Eigen::MatrixXd m = RandomMatrix(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            m(i, j) *= std::pow(10.0, -10.0 * std::max(i, j) / n);
    return m;
}

Eigen::MatrixXd Singular(int n) {
    const int rank = std::max(1, n / 2);
    return RandomMatrix(n).leftCols(rank) * RandomMatrix(n).topRows(rank);
}

// A defective matrix: Jordan blocks of 0.5 and -0.25 hidden by a random basis.
Eigen::MatrixXd Defective(int n) {
    Eigen::MatrixXd jordan = Eigen::MatrixXd::Zero(n, n);
    for (int i = 0; i < n; ++i) {
        jordan(i, i) = i < n / 2 ? 0.5 : -0.25;
        if (i + 1 < n && i + 1 != n / 2)
            jordan(i, i + 1) = 1.0;
    }
    const Eigen::MatrixXd basis = RandomMatrix(n) + 3.0 * Eigen::MatrixXd::Identity(n, n);
    return basis * jordan * basis.inverse();
}

// Companion matrix of a polynomial with roots that crowd around 1.
Eigen::MatrixXd Companion(int n) {
    std::vector<f64> coefficients{1.0};
    for (int i = 0; i < n; ++i) {
        const f64 root = 1.0 + 0.1 * RandomElement();
        coefficients.push_back(0.0);
        for (std::size_t k = coefficients.size() - 1; k > 0; --k)
            coefficients[k] -= root * coefficients[k - 1];
    }
    Eigen::MatrixXd m = Eigen::MatrixXd::Zero(n, n);
    for (int j = 0; j < n; ++j)
        m(0, j) = -coefficients[static_cast<std::size_t>(j + 1)];
    for (int i = 1; i < n; ++i)
        m(i, i - 1) = 1.0;
    return m;
}

Eigen::MatrixXd Hilbert(int n) {
    return Eigen::MatrixXd::NullaryExpr(n, n, [](Eigen::Index i, Eigen::Index j) {
        return (1.0 + 0.001 * RandomElement()) / static_cast<f64>(i + j + 1);
    });
}

// W. L. Frank's matrix (1958): real eigenvalues, the small ones badly conditioned.
Eigen::MatrixXd Frank(int n) {
    Eigen::MatrixXd m = Eigen::MatrixXd::Zero(n, n);
    for (int i = 0; i < n; ++i)
        for (int j = std::max(0, i - 1); j < n; ++j)
            m(i, j) = static_cast<f64>(n - std::max(i, j)) * (1.0 + 0.01 * RandomElement());
    return m;
}

// All eigenvalues on the unit circle.
Eigen::MatrixXd Orthogonal(int n) {
    return RandomMatrix(n).householderQr().householderQ();
}

// Correlation matrices, as the analyses of repeated measures need them.
Eigen::MatrixXd Correlation(int n) {
    const f64 rho = 0.5 + 0.4999 * RandomElement();
    return Eigen::MatrixXd::NullaryExpr(n, n, [rho](Eigen::Index i, Eigen::Index j) {
        return std::pow(rho, std::abs(static_cast<f64>(i - j)));
    });
}

// --- Comparison -------------------------------------------------------------------------------

// An eigenvalue of a matrix near m, however badly conditioned: the smallest singular value of
// m - lambda is the distance to the nearest matrix that has it.
void ExpectEigenvaluesOfANeighbour(const Eigen::MatrixXd& m, const Spectrum& spectrum) {
    const auto n = m.rows();
    for (const Complex& lambda : spectrum) {
        const Eigen::MatrixXcd shifted =
            m.cast<Complex>() - lambda * Eigen::MatrixXcd::Identity(n, n);
        EXPECT_LE(shifted.jacobiSvd().singularValues()(n - 1),
                  10.0 * static_cast<f64>(n) * epsilon * m.norm());
    }
}

// Each eigenvalue of Eigen's solver has one of ours within the distance that two exact solutions
// of neighbouring matrices may have: the condition number 1/|y'x| of the eigenvalue times their
// distance.
void ExpectEigenvaluesOfEigen(const Eigen::MatrixXd& m, Spectrum spectrum) {
    const auto n = m.rows();
    const Eigen::EigenSolver<Eigen::MatrixXd> solver(m);
    const Eigen::MatrixXcd right = solver.eigenvectors();
    const Eigen::MatrixXcd left = right.inverse();
    for (Eigen::Index i = 0; i < n; ++i) {
        const Complex lambda = solver.eigenvalues()(i);
        const auto nearest = std::ranges::min_element(
            spectrum, {}, [lambda](const Complex& x) { return std::abs(x - lambda); });
        const f64 condition = right.col(i).norm() * left.row(i).norm();
        EXPECT_LE(std::abs(*nearest - lambda),
                  20.0 * static_cast<f64>(n) * epsilon * m.norm() * condition);
        spectrum.erase(nearest);
    }
}

void ExpectConjugatePairs(const Spectrum& spectrum) {
    for (std::size_t i = 0; i < spectrum.size(); ++i)
        if (spectrum[i].imag() != 0) {
            ASSERT_GT(spectrum[i].imag(), 0.0);
            ASSERT_LT(i + 1, spectrum.size());
            EXPECT_EQ(spectrum[i + 1], std::conj(spectrum[i]));
            ++i;
        }
}

struct Kind {
    std::string Name;
    Eigen::MatrixXd (*Make)(int);
    bool IsSymmetric;
};

class EigenValuesOf : public ::testing::TestWithParam<Kind> {};

TEST_P(EigenValuesOf, AHundredMatrices) {
    Rnd(-3.0);
    Randomize(3.0);
    ClearFloatFaults();
    for (int k = 0; k < 100; ++k) {
        const int n = 1 + k % 10;
        SCOPED_TRACE(testing::Message() << "matrix " << k);
        const Eigen::MatrixXd m = GetParam().Make(n);
        ClearFloatFaults();
        const Spectrum spectrum = SpectrumOf(m);
        EXPECT_FALSE(HasFloatFault());
        ExpectConjugatePairs(spectrum);
        ExpectEigenvaluesOfANeighbour(m, spectrum);
        ExpectEigenvaluesOfEigen(m, spectrum);
        if (GetParam().IsSymmetric) {
            for (const Complex& lambda : spectrum)
                EXPECT_LE(std::fabs(lambda.imag()), 1.0e-7 * m.norm());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Matrices, EigenValuesOf,
    ::testing::Values(Kind{"Random", RandomMatrix, false}, Kind{"Symmetric", Symmetric, true},
                      Kind{"Graded", Graded, false}, Kind{"Singular", Singular, false},
                      Kind{"Defective", Defective, false}, Kind{"Companion", Companion, false},
                      Kind{"Hilbert", Hilbert, false}, Kind{"Frank", Frank, false},
                      Kind{"Orthogonal", Orthogonal, false},
                      Kind{"Correlation", Correlation, true}),
    [](const auto& instance) { return instance.param.Name; });

// A diagonal similarity by powers of 2 up to 2^60 is exact and hides nothing from balancing: the
// eigenvalues are those of the matrix before.
TEST(EigenValues, BalancingUndoesBadScaling) {
    Rnd(-4.0);
    for (int k = 0; k < 100; ++k) {
        const int n = 2 + k % 9;
        const Eigen::MatrixXd m = RandomMatrix(n);
        Eigen::MatrixXd scaled = m;
        for (int i = 0; i < n; ++i) {
            const f64 factor = std::ldexp(1.0, static_cast<int>(60.0 * RandomElement()));
            scaled.row(i) *= factor;
            scaled.col(i) /= factor;
        }
        ExpectEigenvaluesOfANeighbour(m, SpectrumOf(scaled));
    }
}

// --- Spectra that are known -------------------------------------------------------------------

void ExpectSpectrum(const Eigen::MatrixXd& m, const Spectrum& expected, f64 tolerance) {
    Spectrum found = SpectrumOf(m);
    ASSERT_EQ(found.size(), expected.size());
    for (const Complex& lambda : expected) {
        const auto nearest = std::ranges::min_element(
            found, {}, [lambda](const Complex& x) { return std::abs(x - lambda); });
        EXPECT_LE(std::abs(*nearest - lambda), tolerance) << lambda;
        found.erase(nearest);
    }
}

TEST(EigenValues, SmallMatrices) {
    ExpectSpectrum(Eigen::MatrixXd::Constant(1, 1, -3.5), {-3.5}, 0);
    ExpectSpectrum(Eigen::MatrixXd::Zero(4, 4), {0, 0, 0, 0}, 0);
    ExpectSpectrum(Eigen::MatrixXd::Identity(3, 3), {1, 1, 1}, 0);
    ExpectSpectrum(Eigen::Matrix2d{{0, 1}, {-1, 0}}, {Complex(0, 1), Complex(0, -1)}, 0);
    ExpectSpectrum(Eigen::Matrix2d{{2, 1}, {0, 2}}, {2, 2}, 0);
    EXPECT_TRUE(SpectrumOf(Eigen::MatrixXd(0, 0)).empty());
}

TEST(EigenValues, ATriangularMatrixHasItsDiagonal) {
    const Eigen::MatrixXd m{{1.5, 9, 8, 7}, {0, -2.5, 6, 5}, {0, 0, 3.5, 4}, {0, 0, 0, 4.5}};
    ExpectSpectrum(m, {1.5, -2.5, 3.5, 4.5}, 0);
}

// The cyclic permutation: the plain double shift maps it to itself, and only the exceptional shifts
// find its eigenvalues, the roots of unity.
TEST(EigenValues, ExceptionalShiftsBreakACycle) {
    for (int n = 3; n <= 10; ++n) {
        Eigen::MatrixXd m = Eigen::MatrixXd::Zero(n, n);
        Spectrum roots;
        for (int i = 0; i < n; ++i) {
            m((i + 1) % n, i) = 1.0;
            roots.push_back(std::polar(1.0, 2.0 * std::numbers::pi * i / n));
        }
        ExpectSpectrum(m, roots, 1.0e-14);
    }
}

// Two double defective eigenvalues: three in a thousand of these matrices are not done in 30 steps
// per row when the exceptional shifts come at the tenth and the twentieth step alone.
TEST(EigenValues, DefectiveMatricesConverge) {
    Rnd(-6.0);
    for (int k = 0; k < 4000; ++k)
        SpectrumOf(Defective(4));
}

// Compound symmetry, on which the epsilon of repeated measures is 1: 1 + (n - 1) rho once and
// 1 - rho n - 1 times.
TEST(EigenValues, CompoundSymmetry) {
    for (const f64 rho : {-0.1, 0.0, 0.3, 0.9}) {
        constexpr int n = 6;
        const Eigen::MatrixXd m =
            Eigen::MatrixXd::Constant(n, n, rho) + (1.0 - rho) * Eigen::MatrixXd::Identity(n, n);
        Spectrum expected(n - 1, 1.0 - rho);
        expected.push_back(1.0 + (n - 1) * rho);
        ExpectSpectrum(m, expected, 1.0e-13);
    }
}

// --- What can't be found ----------------------------------------------------------------------

TEST(EigenValues, AMatrixThatIsNotFiniteHasNone) {
    for (const f64 bad :
         {std::numeric_limits<f64>::quiet_NaN(), std::numeric_limits<f64>::infinity()}) {
        Eigen::MatrixXd m = RandomMatrix(4);
        m(2, 1) = bad;
        Array1<f64> real;
        Array1<f64> imaginary;
        EXPECT_FALSE(EigenValues(4, FromEigen(m), real, imaginary));
        for (int i = 1; i <= 4; ++i) {
            EXPECT_EQ(real(i), NoValue);
            EXPECT_EQ(imaginary(i), NoValue);
        }
    }
}

// A cycle of three above a 7: without a step only the 7 is found.
TEST(EigenValues, TheStepLimitKeepsWhatWasFound) {
    const Eigen::MatrixXd m{{0, 0, 1, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 7}};
    Array2<f64> h = FromEigen(m);
    Array1<f64> real(1, 4);
    Array1<f64> imaginary(1, 4);
    real(3) = NoValue;
    EXPECT_FALSE(EigenQR(h, 4, 0, real, imaginary));
    EXPECT_EQ(real(4), 7.0);
    EXPECT_EQ(imaginary(4), 0.0);
    EXPECT_EQ(real(3), NoValue);
    h = FromEigen(m);
    EXPECT_TRUE(EigenQR(h, 4, 4 * EigenStepsPerRow, real, imaginary));
}

TEST(EigenValues, TheMatrixStaysAsItIs) {
    const Array2<f64> a = FromEigen(RandomMatrix(5));
    const Array2<f64> before = a;
    Array1<f64> real;
    Array1<f64> imaginary;
    EigenValues(5, a, real, imaginary);
    EXPECT_EQ(a, before);
}

} // namespace
} // namespace quorvanta
