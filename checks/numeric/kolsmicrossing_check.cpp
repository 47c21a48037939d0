// Values of other origin are those that checks/reference/gof.py prints.
#include "core/analysis_state.h"
#include "numeric/kolsmicrossing.h"
#include "numeric/probdist_discrete.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace quorvanta {
namespace {

f64 Itself(f64 p) {
    return p;
}
f64 Square(f64 p) {
    return p * p;
}

constexpr f64 roundings = 1e-12;

// --- Counts within bounds -----------------------------------------------------------------------

TEST(StaysWithin, WithoutBoundsItAlwaysDoes) {
    EXPECT_EQ(StaysWithin(5, {}), 1);
    EXPECT_EQ(StaysWithin(0, {}), 1);
    const std::vector<CountBounds> none{{0.2, 0, 5}, {0.7, -3, 9}};
    EXPECT_NEAR(StaysWithin(5, none), 1, roundings);
}

TEST(StaysWithin, OneTimeIsABinomialCount) {
    const std::vector<CountBounds> bounds{{0.3, 2, 3}};
    EXPECT_NEAR(StaysWithin(6, bounds),
                15 * std::pow(0.3, 2) * std::pow(0.7, 4) + 20 * std::pow(0.3, 3) * std::pow(0.7, 3),
                roundings);
}

TEST(StaysWithin, NobodyComesBeforeTheBeginningOrAfterTheEnd) {
    const std::vector<CountBounds> someAtOnce{{0, 1, 4}};
    const std::vector<CountBounds> noneAtOnce{{0, 0, 0}};
    const std::vector<CountBounds> notAllAtTheEnd{{1, 0, 3}};
    const std::vector<CountBounds> allAtTheEnd{{1, 4, 4}};
    EXPECT_EQ(StaysWithin(4, someAtOnce), 0);
    EXPECT_NEAR(StaysWithin(4, noneAtOnce), 1, roundings);
    EXPECT_EQ(StaysWithin(4, notAllAtTheEnd), 0);
    EXPECT_NEAR(StaysWithin(4, allAtTheEnd), 1, roundings);
}

TEST(StaysWithin, EmptyBoundsAreNeverKept) {
    const std::vector<CountBounds> bounds{{0.5, 3, 2}};
    EXPECT_EQ(StaysWithin(4, bounds), 0);
}

// --- A continuous null --------------------------------------------------------------------------

// One observation at the quantile u of the null: D+ = 1 - u, D- = u.
TEST(KolSmiCrossing, OfOneObservation) {
    EXPECT_NEAR(KolSmiCrossing(1, 0.7, Crossing::Above, Square), 0.3 * 0.3, roundings);
    EXPECT_NEAR(KolSmiCrossing(1, 0.7, Crossing::Below, Square), 1 - 0.7 * 0.7, roundings);
    EXPECT_NEAR(KolSmiCrossing(1, 0.7, Crossing::Either, Square), 0.09 + 0.51, roundings);
}

// Under the null it is the distribution that Birnbaum and Tingey give.
TEST(KolSmiCrossing, WithoutDifferenceIsTheNullDistribution) {
    constexpr f64 single = 2e-6; // KolSmiCdf sums in 32 bits
    for (const i32 n : {2, 5, 17, 30})
        for (const f32 d : {0.1F, 0.25F, 0.4F, 0.7F}) {
            const f64 tail = 1 - f64{KolSmiCdf(static_cast<f32>(n), d)};
            EXPECT_NEAR(KolSmiCrossing(n, f64{d}, Crossing::Above, Itself), tail, single);
            EXPECT_NEAR(KolSmiCrossing(n, f64{d}, Crossing::Below, Itself), tail, single);
        }
}

// The true distribution is the square of the null.
TEST(KolSmiCrossing, AgreesWithTheDeterminantOfSteck) {
    struct Row {
        i32 N;
        f64 Above;
        f64 Below;
        f64 Either;
    };
    const std::vector<Row> rows{
        {5, 0.15819581440000008, 0.9560851456, 0.98838784},
        {20, 0.0005115992759772148, 0.9608376671317514, 0.9610760727382334},
        {60, 1.0912493131343126e-10, 0.9764949166221697, 0.9764949167018744}};
    for (const Row& row : rows)
        for (const auto& [side, value] :
             {std::pair{Crossing::Above, row.Above}, std::pair{Crossing::Below, row.Below},
              std::pair{Crossing::Either, row.Either}})
            EXPECT_NEAR(KolSmiCrossing(row.N, 0.2, side, Square), value, roundings) << row.N;
}

TEST(KolSmiCrossing, DistributionsApartAreAlwaysToldApart) {
    const auto allBefore = [](f64) { return 1.0; };
    const auto allAfter = [](f64) { return 0.0; };
    for (const i32 n : {3, 100}) {
        EXPECT_EQ(KolSmiCrossing(n, 0.3, Crossing::Above, allBefore), 1);
        EXPECT_EQ(KolSmiCrossing(n, 0.3, Crossing::Below, allAfter), 1);
        EXPECT_NEAR(KolSmiCrossing(n, 0.3, Crossing::Below, allBefore), 0, roundings);
        EXPECT_NEAR(KolSmiCrossing(n, 0.3, Crossing::Above, allAfter), 0, roundings);
    }
}

// --- A discrete null ----------------------------------------------------------------------------

struct DiscreteRow {
    i32 N;
    f64 D;
    std::vector<f64> Null;
    std::vector<f64> Truth;
    f64 Above;
    f64 Below;
    f64 Either;
};

// All counts of the observations, one after the other. In the second row distances meet the
// critical one, and do not exceed it.
TEST(KolSmiDiscreteCrossing, AgreesWithTheSumOverAllSamples) {
    const std::vector<DiscreteRow> rows{
        {10, 0.25, {0.2, 0.3, 0.5}, {0.4, 0.3, 0.3}, 0.5232567448, 0.0015903864, 0.5248471312},
        {10, 0.2, {0.2, 0.3, 0.5}, {0.4, 0.3, 0.3}, 0.5232567448, 0.0015903864, 0.5248471312},
        {12,
         0.22,
         {0.1, 0.2, 0.3, 0.4},
         {0.25, 0.25, 0.25, 0.25},
         0.6172254085540771,
         0.0029783248901367188,
         0.6201695203781128},
        {12,
         0.22,
         {0.1, 0.2, 0.3, 0.4},
         {0.1, 0.2, 0.3, 0.4},
         0.120550343424,
         0.066175780897,
         0.18662229376}};
    for (const DiscreteRow& row : rows) {
        const auto crossing = [&row](Crossing side) {
            return KolSmiDiscreteCrossing(row.N, row.D, side, row.Null, row.Truth);
        };
        EXPECT_NEAR(crossing(Crossing::Above), row.Above, roundings);
        EXPECT_NEAR(crossing(Crossing::Below), row.Below, roundings);
        EXPECT_NEAR(crossing(Crossing::Either), row.Either, roundings);
    }
}

// --- Critical distances -------------------------------------------------------------------------

TEST(KolSmiPower, WithoutDifferenceIsTheLevel) {
    for (const i32 n : {1, 3, 10, 49, 50, 51, 52, 100, 400, 1000, 1001, 5000, 99999})
        for (const f64 level : {0.001, 0.01, 0.05, 0.2, 0.5})
            for (const Crossing side : {Crossing::Above, Crossing::Below})
                EXPECT_NEAR(KolSmiPower(n, level, side, Itself), level, 3e-5) << n;
}

// Each side has half of the level; both at once hardly ever happen, and less and less with it.
TEST(KolSmiPower, OnEitherSideIsTheLevelLessWhatBothHaveInCommon) {
    for (const i32 n : {3, 20, 50, 51, 300, 1000, 3000}) {
        EXPECT_NEAR(KolSmiPower(n, 0.05, Crossing::Either, Itself), 0.05, 3e-5) << n;
        EXPECT_NEAR(KolSmiPower(n, 0.01, Crossing::Either, Itself), 0.01, 3e-5) << n;
        const f64 often = KolSmiPower(n, 0.4, Crossing::Either, Itself);
        EXPECT_LT(often, 0.4);
        EXPECT_GT(often, 0.395);
    }
}

// The limit for large samples goes on where the exact sum ends, and stays near it.
TEST(KolSmiPower, OfALargeSampleIsNearItsOwnDistribution) {
    constexpr f64 near = 0.001;
    const auto slightly = [](f64 p) { return std::pow(p, 1.04); };
    for (const i32 n : {1001, 2000, 5000})
        for (const Crossing side : {Crossing::Above, Crossing::Below, Crossing::Either}) {
            const f64 level = side == Crossing::Either ? 0.025 : 0.05;
            EXPECT_NEAR(KolSmiPower(n, 0.05, side, slightly),
                        KolSmiCrossing(n, KolSmiCriticalDistance(n, level), side, slightly), near)
                << n;
        }
}

TEST(KolSmiCriticalDistance, IsThatOfTheNullUpToFifty) {
    for (const f32 n : {1.0F, 12.0F, 50.0F})
        EXPECT_EQ(KolSmiCriticalDistance(static_cast<i32>(n), 0.05),
                  f64{KolSmiInv(n, 1 - 0.05F, 0)});
    EXPECT_GE(KolSmiCriticalDistance(51, 0.99999), 0);
}

} // namespace
} // namespace quorvanta
