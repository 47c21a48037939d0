#include "numeric/rnd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace quorvanta {
namespace {

void Seed(f64 seed) {
    Rnd(-std::fabs(seed));
    Randomize(seed);
}

std::vector<f32> Draws(int n) {
    std::vector<f32> draws;
    for (int i = 0; i < n; ++i)
        draws.push_back(Rnd());
    return draws;
}

// The vector that the implementations of the reference code quote for the state 1, 2, 3, 4.
TEST(Rnd, GeneratorGivesThePublishedNumbers) {
    Xoshiro256 source({1, 2, 3, 4});
    const std::array<std::uint64_t, 10> published{
        41943041U,
        58720359U,
        3588806011781223U,
        3591011842654386U,
        9228616714210784205U,
        9973669472204895162U,
        14011001112246962877U,
        12406186145184390807U,
        15849039046786891736U,
        10450023813501588000U,
    };
    for (const std::uint64_t number : published)
        EXPECT_EQ(source.Next(), number);
}

// SplitMix64 seeded with 1234567, as widely published (Rosetta Code, "Pseudo-random
// numbers/Splitmix64").
TEST(Rnd, SeedingGivesThePublishedNumbers) {
    Xoshiro256 source({});
    source.Absorb(1234567);
    const Xoshiro256::State published{6457827717110365317U, 3203168211198807973U,
                                      9817491932198370423U, 4593380528125082431U};
    EXPECT_EQ(source.Words(), published);
}

// The numbers times 2^24, from an implementation of both algorithms in Python's big integers.
TEST(Rnd, SeedsGiveTheSameStreamEverywhere) {
    const struct {
        f64 Seed;
        int Discarded;
        std::array<int, 6> Numbers;
    } streams[] = {
        {123.0, 2715724, {11951682, 1269716, 8336383, 13766962, 3670297, 16546481}},
        {-5.0, 1579553, {3708242, 6925139, 13336648, 3366279, 4606438, 10953834}},
        {5.0, 1579553, {3664115, 15492201, 10391901, 13541691, 270407, 5523881}},
        {0.0, 5445469, {3547699, 6384344, 13594169, 16133737, 10807252, 12872283}},
    };
    for (const auto& stream : streams) {
        EXPECT_EQ(Rnd(-std::fabs(stream.Seed)) * 0x1p24F, static_cast<f32>(stream.Discarded));
        Randomize(stream.Seed);
        for (const int number : stream.Numbers)
            EXPECT_EQ(Rnd() * 0x1p24F, static_cast<f32>(number)) << stream.Seed;
    }
}

TEST(Rnd, ASeedRepeatsItsStreamWhateverWasDrawnBefore) {
    Seed(2024.5);
    const std::vector<f32> first = Draws(1000);
    Randomize(77.0);
    Draws(12345);
    Seed(2024.5);
    EXPECT_EQ(Draws(1000), first);
}

// A seed and its negative restart at the same state and part where Randomize mixes them in.
TEST(Rnd, TheSignOfTheSeedMatters) {
    Seed(5.0);
    const std::vector<f32> positive = Draws(100);
    Seed(-5.0);
    EXPECT_NE(Draws(100), positive);
    EXPECT_EQ(Rnd(-5.0), Rnd(-5.0));
}

TEST(Rnd, ASeedOfZeroRestartsAsWell) {
    Seed(0.0);
    const std::vector<f32> first = Draws(100);
    Seed(-0.0);
    EXPECT_EQ(Draws(100), first);
}

TEST(Rnd, RandomizeKeepsWhatTheStateWas) {
    Rnd(-1.0);
    Randomize(3.0);
    const std::vector<f32> afterOne = Draws(100);
    Rnd(-2.0);
    Randomize(3.0);
    EXPECT_NE(Draws(100), afterOne);
}

TEST(Rnd, DrawsHave24BitsAndNeverReachOne) {
    static_assert(std::numeric_limits<f32>::digits == 24);
    Seed(1.0);
    bool oddSeen = false;
    for (int i = 0; i < 2000000; ++i) {
        const f32 u = Rnd();
        ASSERT_GE(u, 0.0F);
        ASSERT_LT(u, 1.0F);
        const f32 scaled = u * 0x1p24F;
        ASSERT_EQ(scaled, std::floor(scaled));
        oddSeen = oddSeen || std::fmod(scaled, 2.0F) == 1.0F;
    }
    EXPECT_TRUE(oddSeen);
    // The extreme numbers of the generator, all bits clear and all bits set: with the words s0 and
    // s3 the number is rotl(s0 + s3, 23) + s0.
    UniformSource = Xoshiro256({0, 1, 0, 0});
    EXPECT_EQ(Rnd(), 0.0F);
    UniformSource = Xoshiro256({~std::uint64_t{0}, 1, 0, 1});
    EXPECT_EQ(Rnd(), 1.0F - 0x1p-24F);
}

// Equal shares of 1000 cells, in one and in two dimensions (pairs of successive draws), and of the
// values of the lowest 8 bits: chi-square below its quantile at 1 - 1e-6 (R: qchisq).
TEST(Rnd, CellsGetEqualShares) {
    constexpr int draws = 1000000;
    const auto chi2 = [](const std::vector<int>& counts) {
        const f64 expected = static_cast<f64>(draws) / static_cast<f64>(counts.size());
        f64 sum = 0;
        for (const int count : counts)
            sum += (count - expected) * (count - expected) / expected;
        return sum;
    };
    Seed(42.0);
    std::vector<int> cells(1000);
    std::vector<int> pairs(1024);
    std::vector<int> lowBits(256);
    f32 before = 0.5F;
    for (int i = 0; i < draws; ++i) {
        const f32 u = Rnd();
        ++cells[static_cast<std::size_t>(static_cast<f64>(u) * 1000.0)];
        ++pairs[static_cast<std::size_t>(before * 32.0F) * 32 +
                static_cast<std::size_t>(u * 32.0F)];
        ++lowBits[static_cast<std::size_t>(u * 0x1p24F) % 256];
        before = u;
    }
    EXPECT_LT(chi2(cells), 1226.046);   // 999 degrees of freedom
    EXPECT_LT(chi2(pairs), 1252.581);   // 1023
    EXPECT_LT(chi2(lowBits), 377.0781); // 255
}

// Seeds that a user types one after another must give streams that have nothing in common: the
// correlation of the first draws over neighbouring seeds, in standard errors.
TEST(Rnd, NeighbouringSeedsAreUnrelated) {
    constexpr int seeds = 100000;
    f64 sum = 0;
    f64 before = 0.5;
    for (int seed = 1; seed <= seeds; ++seed) {
        Seed(seed);
        const f64 u = Rnd();
        sum += (u - 0.5) * (before - 0.5);
        before = u;
    }
    EXPECT_LT(std::fabs(sum) * 12.0 / std::sqrt(static_cast<f64>(seeds)), 4.8916);
}

} // namespace
} // namespace quorvanta
