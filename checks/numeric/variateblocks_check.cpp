// Blocks of variates: whole vectors and the rest of one, and the pairs that a rank sum counts.
#include "numeric/fastlog.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"
#include "numeric/variateblocks.h"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

namespace quorvanta {
namespace {

constexpr f64 guard = 1e-10;

// One element after the other by the same functions has the same bits, whatever the vector unit.
TEST(VariateBlocks, HaveTheBitsOfOneElementAfterTheOther) {
    for (const std::size_t n : std::initializer_list<std::size_t>{0, 1, 3, 7, 8, 9, 15, 16, 17, 20,
                                                                  40, 127, 128, 129, 300}) {
        std::vector<f64> normals(n);
        std::vector<f64> times(n);
        Rnd(-3.0);
        DrawNormals(normals, guard);
        DrawUniforms(times);
        MakeExponentials(times, 1 + guard);
        const f32 next = Rnd();
        Rnd(-3.0);
        for (const f64 normal : normals) {
            const f64 u{Rnd()};
            const f64 v{Rnd()};
            EXPECT_EQ(normal, std::sqrt(-2.0 * FastLog(u + guard)) * FastCos(TwoPi * v));
        }
        for (const f64 time : times)
            EXPECT_EQ(time, -FastLog(1 + guard - f64{Rnd()}));
        EXPECT_EQ(Rnd(), next);
    }
}

TEST(VariateBlocks, PairsAreDrawnOneAfterTheOther) {
    std::vector<f64> firsts(5);
    std::vector<f64> seconds(5);
    Rnd(-4.0);
    DrawUniformPairs(firsts, seconds);
    Rnd(-4.0);
    for (std::size_t i = 0; i < firsts.size(); ++i) {
        EXPECT_EQ(firsts[i], f64{Rnd()});
        EXPECT_EQ(seconds[i], f64{Rnd()});
    }
}

TEST(VariateBlocks, CountsPairsInOrder) {
    Rnd(-5.0);
    for (const std::size_t n : std::initializer_list<std::size_t>{1, 2, 15, 16, 17, 30, 127, 128}) {
        std::vector<f32> xs(n);
        std::vector<f32> ys(2 * n + 1);
        for (std::vector<f32>* values : {&xs, &ys})
            for (f32& value : *values)
                value = std::floor(Rnd() * 20.0F) - 10.0F; // with ties, and with -0 below
        xs[0] = -0.0F;
        i32 pairs = 0;
        for (const f32 x : xs)
            for (const f32 y : ys)
                pairs += x <= y ? 1 : 0;
        EXPECT_EQ(CountPairsInOrder(xs, ys), pairs) << n;
        EXPECT_EQ(CountPairsInOrder(xs, {}), 0);
    }
}

} // namespace
} // namespace quorvanta
