#include "numeric/matmultmat.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>

namespace quorvanta {
namespace {

// Rows of n cells, from the lower bounds given.
Array2<f64> Matrix(int low1, int low2, int n, std::initializer_list<f64> cells) {
    Array2<f64> a(low1, low1 + static_cast<int>(cells.size()) / n - 1, low2, low2 + n - 1);
    std::copy(cells.begin(), cells.end(), a.Raw().begin());
    return a;
}

TEST(MatMultMat, MultipliesRowsByColumns) {
    const auto a = Matrix(1, 1, 3, {1, 2, 3, 4, 5, 6});
    const auto b = Matrix(1, 1, 2, {7, 8, 9, 10, 11, 12});
    Array2<f64> result(1, 9, 1, 9);
    MatMultMat(a, b, result);
    EXPECT_EQ(result, Matrix(1, 1, 2, {58, 64, 139, 154}));
    EXPECT_EQ(result.HighBound1(), 2);
    MatMultMat(b, a, result);
    EXPECT_EQ(result, Matrix(1, 1, 3, {39, 54, 69, 49, 68, 87, 59, 82, 105}));
}

TEST(MatMultMat, KeepsTheBoundsOfItsOperands) {
    Array2<f64> result;
    MatMultMat(Matrix(0, 1, 2, {1, 2}), Matrix(1, 3, 1, {5, 7}), result);
    EXPECT_EQ(result, Matrix(0, 3, 1, {19}));
}

TEST(MatMultMat, RefusesMatricesThatDoNotFit) {
    Array2<f64> result;
    EXPECT_THROW(MatMultMat(Matrix(1, 1, 2, {1, 2}), Matrix(1, 1, 1, {1, 2, 3}), result),
                 RunTimeError);
    EXPECT_THROW(MatMultMat(Matrix(1, 1, 2, {1, 2}), Matrix(0, 1, 1, {1, 2}), result),
                 RunTimeError);
}

TEST(MatTranspose, TurnsRowsIntoColumns) {
    Array2<f64> result;
    MatTranspose(Matrix(0, 1, 3, {1, 2, 3, 4, 5, 6}), result);
    EXPECT_EQ(result, Matrix(1, 0, 2, {1, 4, 2, 5, 3, 6}));
}

TEST(MatIdentity, HasOnesOnItsDiagonal) {
    auto square = Matrix(1, 1, 2, {9, 9, 9, 9});
    MatIdentity(square);
    EXPECT_EQ(square, Matrix(1, 1, 2, {1, 0, 0, 1}));
    auto wide = Matrix(0, 1, 2, {9, 9, 9, 9});
    MatIdentity(wide);
    EXPECT_EQ(wide, Matrix(0, 1, 2, {0, 0, 1, 0}));
}

} // namespace
} // namespace quorvanta
