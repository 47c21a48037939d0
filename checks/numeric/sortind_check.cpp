#include "numeric/rnd.h"
#include "numeric/sortind.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <numeric>
#include <vector>

namespace quorvanta {
namespace {

Array1<f32> Cells(const std::vector<f32>& values) {
    Array1<f32> cells(1, static_cast<int>(values.size()));
    std::ranges::copy(values, cells.Raw().begin());
    return cells;
}

std::vector<i32> Sorted(const std::vector<f32>& values) {
    Array1<i32> index;
    SortIndex(Cells(values), index, static_cast<i32>(values.size()));
    EXPECT_EQ(index.LowBound(), 1);
    return {index.Raw().begin(), index.Raw().end()};
}

// The plain order of positions for ties is that of a stable sort.
void ExpectStableOrder(const std::vector<f32>& values) {
    std::vector<i32> expected(values.size());
    std::iota(expected.begin(), expected.end(), 1);
    std::ranges::stable_sort(expected, [&values](i32 a, i32 b) {
        return values[static_cast<std::size_t>(a - 1)] < values[static_cast<std::size_t>(b - 1)];
    });
    EXPECT_EQ(Sorted(values), expected);
}

// n values of a shape: position 0..n - 1 to value.
std::vector<f32> Shape(int n, const std::function<f32(int)>& value) {
    std::vector<f32> values;
    for (int i = 0; i < n; ++i)
        values.push_back(value(i));
    return values;
}

TEST(SortIndex, OrdersRandomValuesOfEveryLength) {
    Rnd(-8.0);
    for (int n = 0; n <= 300; ++n)
        ExpectStableOrder(Shape(n, [](int) { return Rnd() - 0.5F; }));
    for (const int n : {1000, 32767, 100000})
        ExpectStableOrder(Shape(n, [](int) { return std::tan(3.0F * (Rnd() - 0.5F)); }));
}

// The arrangements on which a quicksort may take time proportional to the square of n.
TEST(SortIndex, OrdersArrangedValues) {
    for (const int n : {1, 2, 3, 10, 79, 80, 81, 82, 1000, 100000}) {
        SCOPED_TRACE(n);
        ExpectStableOrder(Shape(n, [](int i) { return static_cast<f32>(i); }));
        ExpectStableOrder(Shape(n, [](int i) { return static_cast<f32>(-i); }));
        ExpectStableOrder(Shape(n, [](int) { return -3.25F; }));
        ExpectStableOrder(
            Shape(n, [n](int i) { return static_cast<f32>(std::min(i, n - 1 - i)); }));
        ExpectStableOrder(
            Shape(n, [n](int i) { return static_cast<f32>(std::max(i, n - 1 - i)); }));
        ExpectStableOrder(Shape(n, [](int i) { return i % 2 == 0 ? 1.0F : -1.0F; }));
        ExpectStableOrder(Shape(n, [](int i) { return static_cast<f32>(i % 17); }));
    }
}

// Values so close together, beside one that is far away, that the leading bits of their range are
// the same: each in its place, and in no more time than their number.
TEST(SortIndex, OrdersValuesThatShareTheirLeadingBits) {
    Rnd(-9.0);
    for (const int n : {81, 200, 5000, 100000})
        ExpectStableOrder(Shape(n, [](int i) { return i == 0 ? -1e30F : 1.0F + Rnd() * 1e-3F; }));
    ExpectStableOrder(Shape(
        100000, [](int i) { return i == 0 ? -1e30F : 1.0F - static_cast<f32>(i) * 0x1p-24F; }));
}

TEST(SortIndex, TiesKeepTheOrderOfTheirPositions) {
    EXPECT_EQ(Sorted({2, 1, 2, 1, 2}), (std::vector<i32>{2, 4, 1, 3, 5}));
    EXPECT_EQ(Sorted({7, 7, 7, 7}), (std::vector<i32>{1, 2, 3, 4}));
}

TEST(SortIndex, BothZerosAreEqual) {
    EXPECT_EQ(Sorted({0.0F, -0.0F, 0.0F, -0.0F, -1.0F}), (std::vector<i32>{5, 1, 2, 3, 4}));
    ExpectStableOrder(Shape(200, [](int i) { return i % 2 == 0 ? 0.0F : -0.0F; }));
}

TEST(SortIndex, ExtremeValuesHaveTheirPlace) {
    using Limits = std::numeric_limits<f32>;
    const std::vector<f32> values{
        Limits::quiet_NaN(), Limits::infinity(),  Limits::max(),   1.0F, Limits::denorm_min(), 0.0F,
        -Limits::min(),      -Limits::infinity(), Limits::lowest()};
    EXPECT_EQ(Sorted(values), (std::vector<i32>{8, 9, 7, 6, 5, 4, 3, 2, 1}));
    // The same among many.
    std::vector<f32> many = Shape(200, [](int i) { return static_cast<f32>(i); });
    many.insert(many.end(), values.begin(), values.end());
    const std::vector<i32> order = Sorted(many);
    EXPECT_EQ(order.front(), 208);
    EXPECT_EQ(order.back(), 201);
}

// The samples of the generators begin at 0 and may be longer than what is sorted.
TEST(SortIndex, ReadsFromPositionOneOnly) {
    Array1<f32> values(0, 4);
    for (int i = 0; i <= 4; ++i)
        values(i) = static_cast<f32>(-i);
    Array1<i32> index(0, 77);
    SortIndex(values, index, 3);
    ASSERT_EQ(index.HighBound(), 3);
    EXPECT_EQ(index(1), 3);
    EXPECT_EQ(index(2), 2);
    EXPECT_EQ(index(3), 1);
    EXPECT_EQ(values(2), -2.0F);
    SortIndex(values, index, 0);
    EXPECT_EQ(index.HighBound(), 0);
    EXPECT_THROW(SortIndex(values, index, 5), RunTimeError);
}

} // namespace
} // namespace quorvanta
