#include "core/checked_array.h"

#include <gtest/gtest.h>

namespace quorvanta {
namespace {

TEST(CheckedArray, ReadsAndWritesWithinItsBounds) {
    FixedArray<int, 2, 4> cells;
    cells(2) = 7;
    cells(4) = 9;
    EXPECT_EQ(cells(2), 7);
    EXPECT_EQ(cells(4), 9);
}

TEST(CheckedArray, AnIndexOutsideTheBoundsIsAFault) {
    FixedArray<int, 2, 4> fixed;
    EXPECT_THROW(fixed(1), RunTimeError);
    EXPECT_THROW(fixed(5), RunTimeError);
    Array1<int> sized(1, 3);
    EXPECT_THROW(sized(0), RunTimeError);
    EXPECT_THROW(sized(4), RunTimeError);
    Array2<int> grid(0, 1, 1, 2);
    EXPECT_THROW(grid(0, 0), RunTimeError);
    EXPECT_THROW(grid(2, 1), RunTimeError);
    const Array1<int> never;
    EXPECT_THROW(never(0), RunTimeError);
}

TEST(CheckedArray, PreservesWhatBothBoundsCover) {
    Array1<int> cells(0, 1);
    cells(1) = 5;
    cells.ReDimPreserve(3);
    EXPECT_EQ(cells(1), 5);
    EXPECT_EQ(cells(3), 0);
    EXPECT_EQ(cells.HighBound(), 3);
}

} // namespace
} // namespace quorvanta
