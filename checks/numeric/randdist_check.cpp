// Order and number of the uniform draws, edges and faults of the generators. The draws are checked
// by replay: the written formula, with the C library's functions, on the same stream.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "support/fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace quorvanta {
namespace {

constexpr int sampleSize = 300; // more than two blocks and not a multiple of one

void Restart() {
    Rnd(-7.0);
    Randomize(7.0);
}

f64 U() {
    return Rnd();
}

f64 BoxMuller(f64 guard) {
    const f64 a = std::log(U() + guard);
    const f64 b = std::cos(6.283185308 * U());
    return std::sqrt(-2.0 * a) * b;
}

// Elements of `sample` equal to four units in the last place, and afterwards the stream stands
// where the replay has left it: no draw more or less, and none in another place.
void ExpectReplay(const std::function<void()>& generate, const std::function<f64()>& element) {
    RandSample.ReDim(0, sampleSize);
    RandSample(0) = -77.0F;
    Restart();
    generate();
    const f32 next = Rnd();
    ASSERT_EQ(RandSample.HighBound(), sampleSize);
    EXPECT_EQ(RandSample(0), -77.0F);
    Restart();
    for (int i = 1; i <= sampleSize; ++i)
        EXPECT_FLOAT_EQ(RandSample(i), static_cast<f32>(element())) << i;
    EXPECT_EQ(Rnd(), next);
}

TEST(RandDist, ContinuousFamiliesDrawInOrder) {
    ExpectReplay(RandUniform01, U);
    ExpectReplay(RandUniformCentred, [] { return U() - 0.5; });
    ExpectReplay(RandNormal, [] { return BoxMuller(1.0e-10); });
    ExpectReplay(RandExponential, [] { return -std::log(1.0000000001 - U()); });
    ExpectReplay(RandLaplace, [] {
        const f64 u = U();
        return u >= 0.5 ? -std::log(2.0) - std::log(1.0 - u)
                        : std::log(2.0) + std::log(u + static_cast<f64>(1.0e-5F));
    });
    ExpectReplay(RandCauchy, [] { return std::tan((U() - 0.5) * 3.141592654); });
    ExpectReplay(RandLogistic, [] { return -std::log(1.0 / (U() + 1.0e-8) - 1.0); });
    ExpectReplay(RandExtremeValue, [] {
        const f32 w = std::clamp(Rnd(), 1.0e-5F, 0.99999F);
        return -std::log(-std::log(static_cast<f64>(w)));
    });
    ExpectReplay([] { RandWeibull(3.0F); },
                 [] {
                     return std::pow(std::fabs(-std::log(1.000000001 - U())),
                                     static_cast<f64>(1.0F / 3.0F));
                 });
    ExpectReplay([] { RandLognormal(3.0F); },
                 [] {
                     const f32 exponent =
                         static_cast<f32>(static_cast<f64>(1.0F / 3.0F) * BoxMuller(1.0e-8));
                     return std::exp(static_cast<f64>(exponent));
                 });
}

// To the last bit, from an implementation of the stream in Python's big integers and of the
// formulas in 40 digits (mpmath).
TEST(RandDist, ASeedGivesTheSameVariatesEverywhere) {
    const std::array<f32, 6> normals{0x1.76e526p-1F, 0x1.03ce2ap-1F,  0x1.bca62ep+0F,
                                     0x1.47799ep-3F, -0x1.d50492p-1F, -0x1.16c39ap-2F};
    const std::array<f32, 6> exponentials{0x1.3f0070p+0F, 0x1.4258d4p-4F, 0x1.5fb6b4p-1F,
                                          0x1.b7ceacp+0F, 0x1.f99d04p-3F, 0x1.125622p+2F};
    const auto expectDraws = [](void (*generate)(), const std::array<f32, 6>& expected) {
        Rnd(-123.0);
        Randomize(123.0);
        RandSample.ReDim(0, 6);
        generate();
        EXPECT_TRUE(std::ranges::equal(RandSample.Raw().subspan(1), expected));
    };
    expectDraws(RandNormal, normals);
    expectDraws(RandExponential, exponentials);
}

f64 SumOfSquares(int k) {
    f32 s = 0;
    for (int i = 0; i < k; ++i) {
        const f64 z = BoxMuller(1.0e-10);
        s = static_cast<f32>(s + z * z);
    }
    return s;
}

// Up to 30 degrees of freedom a sum of squares, rounded half to even: 2.5 gives two, 3.5 four.
TEST(RandDist, Chi2AddsSquaresUpTo30) {
    ExpectReplay([] { RandChi2(1.0F); }, [] { return SumOfSquares(1); });
    ExpectReplay([] { RandChi2(2.5F); }, [] { return SumOfSquares(2); });
    ExpectReplay([] { RandChi2(3.5F); }, [] { return SumOfSquares(4); });
    ExpectReplay([] { RandChi2(30.0F); }, [] { return SumOfSquares(30); });
}

TEST(RandDist, Chi2TakesTheCubeAbove30) {
    ExpectReplay([] { RandChi2(30.5F); },
                 [] {
                     const f64 z = static_cast<f32>(BoxMuller(1.0e-10));
                     const f64 c = static_cast<f32>(2.0 / 9.0 / 30.5);
                     return 30.5 * std::pow(1.0 - c + z * std::sqrt(c), 3);
                 });
}

TEST(RandDist, Chi2WithoutDegreesOfFreedomIsZeroAndDrawsNothing) {
    ExpectReplay([] { RandChi2(0.4F); }, [] { return 0.0; });
    for (int i = 1; i <= sampleSize; ++i)
        EXPECT_EQ(RandSample(i), 0.0F);
}

f32 ExponentialSum(int k) {
    f32 s = 0;
    for (int i = 0; i < k; ++i)
        s = static_cast<f32>(s - std::log(1.00000001 - U()));
    return s;
}

f64 GammaBelowOne(f64 d) {
    const f64 c = static_cast<f64>(2.71828F) / (d + static_cast<f64>(2.71828F));
    for (;;) {
        const f64 u = U();
        const f64 v = U();
        f32 x = 0;
        f32 w = 0;
        if (u <= c) {
            x = static_cast<f32>(std::pow(u / c, 1.0 / d));
            if (x < 1.0e-5F)
                return x;
            w = static_cast<f32>(v / std::pow(static_cast<f64>(x), 1.0 - d));
        } else {
            x = static_cast<f32>(1.0 - std::log((u - c) / (1.0 - c)));
            w = static_cast<f32>(v * std::exp(-static_cast<f64>(x)));
        }
        const f64 t = std::exp(-static_cast<f64>(x)) / std::pow(static_cast<f64>(x), 1.0 - d);
        if (w <= static_cast<f32>(t))
            return x;
    }
}

TEST(RandDist, GammaOfAWholeShapeUsesOneDrawForEachUnit) {
    ExpectReplay([] { RandGamma(3.0F); }, [] { return ExponentialSum(3); });
}

TEST(RandDist, GammaBelowOneGoesStraightToTheRejection) {
    ExpectReplay([] { RandGamma(0.5F); }, [] { return GammaBelowOne(0.5); });
}

TEST(RandDist, GammaDrawsTheWholePartFirst) {
    ExpectReplay([] { RandGamma(2.25F); },
                 [] {
                     const f32 s = ExponentialSum(2);
                     return static_cast<f32>(GammaBelowOne(0.25)) + s;
                 });
}

TEST(RandDist, BivariateNormalDrawsBothCoordinatesOfAnElement) {
    RandSample2.ReDim(0, sampleSize);
    std::vector<f32> second;
    ExpectReplay([] { RandBivNormal(0.6F); },
                 [&second] {
                     const f64 rho = 0.6F;
                     const f64 z1 = static_cast<f32>(BoxMuller(1.0e-10));
                     const f64 z2 = static_cast<f32>(BoxMuller(1.0e-10));
                     second.push_back(static_cast<f32>(z1 * rho + z2 * std::sqrt(1.0 - rho * rho)));
                     return z1;
                 });
    for (int i = 1; i <= sampleSize; ++i)
        EXPECT_FLOAT_EQ(RandSample2(i), second[static_cast<std::size_t>(i - 1)]);
}

TEST(RandDist, MultivariateNormalDrawsOneVector) {
    constexpr int n = 5;
    Array2<f64> T(1, n, 1, n);
    Array2<f32> M(1, n, 1, 1);
    for (int i = 1; i <= n; ++i) {
        M(i, 1) = static_cast<f32>(i);
        for (int j = 1; j <= n; ++j)
            T(i, j) = 1.0 / (i + 2 * j);
    }
    Restart();
    RandMultiNormal(T, M);
    const f32 next = Rnd();
    Restart();
    std::array<f64, n> z{};
    for (f64& normal : z)
        normal = BoxMuller(1.0e-10);
    ASSERT_EQ(RandSample.HighBound(), n);
    for (int i = 1; i <= n; ++i) {
        f32 s = 0;
        for (int j = 1; j <= n; ++j)
            s = static_cast<f32>(s + z[static_cast<std::size_t>(j - 1)] * T(j, i));
        EXPECT_FLOAT_EQ(RandSample(i), s + M(i, 1));
    }
    EXPECT_EQ(Rnd(), next);
}

TEST(RandDist, CountsDrawInOrder) {
    ExpectReplay([] { RandBinomial(13, 0.4F); },
                 [] {
                     int count = 0;
                     for (int i = 0; i < 13; ++i)
                         count += Rnd() < 0.4F ? 1 : 0;
                     return count;
                 });
    // A sample of 2 from 5 of whom 3 are marked: probabilities 0.1, 0.6, 0.3.
    ExpectReplay([] { RandHypergeometric(5, 2, 0.6F); },
                 [] {
                     const f64 u = U();
                     return u < 0.1 ? 0 : (u < 0.7 ? 1 : 2);
                 });
    ExpectReplay([] { RandPoisson(2.5F); },
                 [] {
                     int k = -1;
                     f64 s = 0;
                     while (s <= 1.0) {
                         ++k;
                         s -= std::log(1.00000001 - U()) / 2.5;
                     }
                     return k;
                 });
}

TEST(RandDist, MultinomialDrawsOneNumberForEachTrial) {
    Array1<f32> P(1, 3);
    P(1) = 0.2F;
    P(2) = 0.5F;
    P(3) = 0.3F;
    RandSample.ReDim(0, 3);
    Restart();
    RandMultinomial(500, P);
    const f32 next = Rnd();
    Restart();
    std::array<int, 3> counts{};
    for (int trial = 0; trial < 500; ++trial) {
        const f64 u = U();
        ++counts[u <= 0.2F ? 0U : (u <= 0.2F + 0.5F ? 1U : 2U)];
    }
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(RandSample(i), static_cast<f32>(counts[static_cast<std::size_t>(i - 1)]));
    EXPECT_EQ(Rnd(), next);
}

// --- The extremes of the uniform source -------------------------------------------------------

// The next uniform number is 0: see the check of Rnd.
void MakeNextSmallest() {
    UniformSource = Xoshiro256({0, 1, 0, 0});
}

void MakeNextLargest() {
    UniformSource = Xoshiro256({~std::uint64_t{0}, 1, 0, 1});
}

f32 OneDraw(const std::function<void()>& generate) {
    RandSample.ReDim(0, 1);
    generate();
    return RandSample(1);
}

TEST(RandDist, GuardsHoldTheTailsAtTheSmallestUniform) {
    const struct {
        std::function<void()> Generate;
        f64 Value; // with the first number 0; mpmath, guards in their binary width
    } cases[] = {
        {RandUniform01, 0.0},
        {RandUniformCentred, -0.5},
        {RandExponential, -1.000000082690371e-10},
        {RandLaplace, -10.81977830967241},
        {RandCauchy, 4875588902.821542},
        {RandLogistic, -18.42068073395237},
        {RandExtremeValue, -2.443470359876296},
        {[] { RandWeibull(1.0F); }, 1.000000082240371e-9},
        {[] { RandGamma(1.0F); }, -9.999999889225291e-9},
    };
    ClearFloatFaults();
    for (const auto& c : cases) {
        MakeNextSmallest();
        EXPECT_NEAR(OneDraw(c.Generate), c.Value, 1.0e-6 * std::fabs(c.Value)) << c.Value;
    }
    // Box-Muller: at most sqrt(-2 ln guard) = 6.786 and 6.070 standard deviations.
    MakeNextSmallest();
    Rnd();
    const f64 cosine = std::cos(6.283185308 * Rnd());
    MakeNextSmallest();
    EXPECT_FLOAT_EQ(OneDraw(RandNormal), static_cast<f32>(6.786140424415112 * cosine));
    MakeNextSmallest();
    EXPECT_FLOAT_EQ(OneDraw([] { RandLognormal(1.0F); }),
                    static_cast<f32>(std::exp(6.069708517540586 * cosine)));
    EXPECT_FALSE(HasFloatFault());
}

TEST(RandDist, GuardsHoldTheTailsAtTheLargestUniform) {
    const struct {
        std::function<void()> Generate;
        f64 Value; // with the first number 1 - 2^-24; mpmath
    } cases[] = {
        {RandUniform01, 1.0 - 0x1p-24},
        {RandUniformCentred, 0.5 - 0x1p-24},
        {RandExponential, 16.63385601750284},
        {RandLaplace, 15.94238517887872},
        {RandCauchy, 5346209.550952070},
        {RandLogistic, 16.81918131333014},
        {RandExtremeValue, 11.51156334722439},
        {[] { RandWeibull(1.0F); }, 16.61889429898449},
        {[] { RandGamma(1.0F); }, 16.48043453742728},
    };
    ClearFloatFaults();
    for (const auto& c : cases) {
        MakeNextLargest();
        EXPECT_NEAR(OneDraw(c.Generate), c.Value, 1.0e-6 * std::fabs(c.Value)) << c.Value;
    }
    MakeNextLargest();
    EXPECT_TRUE(std::isfinite(OneDraw(RandNormal)));
    MakeNextLargest();
    EXPECT_TRUE(std::isfinite(OneDraw([] { RandLognormal(1.0F); })));
    EXPECT_FALSE(HasFloatFault());
}

TEST(RandDist, NoFaultWithinTheDomain) {
    RandSample.ReDim(0, 2000);
    RandSample2.ReDim(0, 2000);
    Restart();
    ClearFloatFaults();
    for (const f32 shape : {0.2F, 0.5F, 1.0F, 2.0F, 10.0F, 100.0F})
        RandWeibull(shape);
    for (const f32 shape : {1.0e-5F, 0.01F, 0.3F, 1.0F, 10.0F, 1000.0F})
        RandLognormal(shape);
    for (const f32 shape : {0.0F, 1.0e-4F, 0.01F, 0.999F, 1.0001F, 3.0F, 99.5F})
        RandGamma(shape);
    for (const f32 df : {0.0F, 0.5F, 1.0F, 30.0F, 31.0F, 1000.0F})
        RandChi2(df);
    for (const f32 rho : {-1.0F, 0.0F, 1.0F})
        RandBivNormal(rho);
    for (const f32 lambda : {1.0e-4F, 1.0F, 500.0F})
        RandPoisson(lambda);
    for (const f32 p : {0.0F, 0.5F, 1.0F})
        RandHypergeometric(5000, 100, p);
    for (const f32 p : {0.0F, 0.5F, 1.0F})
        RandBinomial(100, p);
    EXPECT_FALSE(HasFloatFault());
    for (const f32 x : RandSample.Raw().subspan(1))
        EXPECT_EQ(x, 100.0F); // p = 1: every trial succeeds, as 1 itself is never drawn
}

// --- The dispatcher ---------------------------------------------------------------------------

TEST(RandDist, CodesChooseTheirGenerator) {
    const struct {
        i16 Code;
        std::function<void()> Generate;
    } cases[] = {
        {SimUniform, RandUniformCentred},
        {SimNormal, RandNormal},
        {SimExponential, RandExponential},
        {SimLaplace, RandLaplace},
        {SimCauchy, RandCauchy},
        {SimWeibull, [] { RandWeibull(2.5F); }},
        {SimLogistic, RandLogistic},
        {SimLognormal, [] { RandLognormal(2.5F); }},
        {SimExtremeValue, RandExtremeValue},
        {SimGamma, [] { RandGamma(2.5F); }},
        {SimChi2, [] { RandChi2(2.5F); }},
    };
    SimDistrPar = 2.5F;
    for (const auto& c : cases) {
        SimDistrNo = c.Code;
        RandSample.ReDim(0, 3);
        Restart();
        RandFromDistrCode(40);
        const Array1<f32> dispatched = RandSample;
        RandSample.ReDim(0, 40);
        Restart();
        c.Generate();
        EXPECT_EQ(dispatched, RandSample) << c.Code;
    }
}

TEST(RandDist, CodesOfFamiliesCalledDirectlyOnlyResize) {
    for (const i16 code :
         {SimPiecewise, SimBinomial, SimMultinomial, SimPoisson, SimHypergeometric}) {
        SimDistrNo = code;
        RandSample.ReDim(0, 3);
        RandSample(2) = 5.0F;
        Restart();
        const f32 next = Rnd();
        Restart();
        RandFromDistrCode(25);
        EXPECT_EQ(RandSample, Array1<f32>(0, 25)) << code;
        EXPECT_EQ(Rnd(), next);
    }
}

TEST(RandDist, ALognormalShapeOfZeroBecomesTiny) {
    SimDistrNo = SimLognormal;
    SimDistrPar = 0.0F;
    Restart();
    ClearFloatFaults();
    RandFromDistrCode(1000);
    EXPECT_EQ(SimDistrPar, 1.0e-5F);
    EXPECT_FALSE(HasFloatFault());
    const f32 cap = static_cast<f32>(std::exp(75.0));
    int extreme = 0;
    for (const f32 x : RandSample.Raw().subspan(1))
        extreme += x == cap || x < 1.0e-30F ? 1 : 0;
    EXPECT_GT(extreme, 990);
    EXPECT_EQ(*std::ranges::max_element(RandSample.Raw()), cap);
}

TEST(RandDist, CentredUniformsStayBelowTheUpperEnd) {
    RandSample.ReDim(0, 100000);
    Restart();
    RandUniformCentred();
    for (const f32 x : RandSample.Raw()) {
        ASSERT_GE(x, -0.5F);
        ASSERT_LT(x, 0.5F);
    }
}

// --- Piecewise hazards ------------------------------------------------------------------------

Array1<f32> Cells(std::initializer_list<f32> values) {
    Array1<f32> cells(1, static_cast<int>(values.size()));
    std::ranges::copy(values, cells.Raw().begin());
    return cells;
}

f64 PiecewiseTime(const Array1<f32>& S, const Array1<f32>& H, f32 before) {
    f32 time = before;
    for (int j = 1; j < S.HighBound(); ++j) {
        const f32 d = static_cast<f32>(-std::log(1.0000000001 - U()) / (H(j) + 1.0e-8));
        time = S(j) + d;
        if (S(j + 1) - S(j) > d)
            break;
    }
    return time;
}

TEST(RandDist, PiecewiseHazardsDrawAfreshInEachInterval) {
    const auto S = Cells({0.0F, 0.5F, 2.0F, 2.5F});
    const auto H = Cells({0.4F, 0.9F, 0.2F, 50.0F});
    ExpectReplay([&] { RandPiecewiseExp(S, H); }, [&] { return PiecewiseTime(S, H, 0); });
}

TEST(RandDist, WithoutHazardEveryEventFallsPastTheLastInterval) {
    const auto S = Cells({0.0F, 1.0F, 2.0F});
    const auto H = Cells({0.0F, 0.0F, 0.0F});
    Restart();
    ClearFloatFaults();
    RandPiecewiseExpSized(1000, S, H);
    ASSERT_EQ(RandSample.HighBound(), 1000);
    for (int i = 1; i <= 1000; ++i)
        EXPECT_GT(RandSample(i), 2.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(RandDist, ASingleIntervalDrawsNothing) {
    RandSample.ReDim(0, 2);
    RandSample(1) = 4.0F;
    Restart();
    const f32 next = Rnd();
    Restart();
    RandPiecewiseExp(Cells({0.0F}), Cells({1.0F}));
    EXPECT_EQ(RandSample(1), 4.0F);
    EXPECT_EQ(Rnd(), next);
    RandPiecewiseExpSized(2, Cells({0.0F}), Cells({1.0F}));
    EXPECT_EQ(RandSample, Array1<f32>(0, 2));
}

// --- Counts -----------------------------------------------------------------------------------

// No sample of 6 comes from a population of 5: every probability is 0.
TEST(RandDist, AHypergeometricElementWithoutAProbabilityKeepsItsValue) {
    RandSample.ReDim(0, 2);
    RandSample(1) = 4.0F;
    Restart();
    RandHypergeometric(5, 6, 0.6F);
    EXPECT_EQ(RandSample(1), 4.0F);
    EXPECT_EQ(RandSample(2), 0.0F);
    RandHypergeometric(5, 0, 0.6F);
    EXPECT_EQ(RandSample(1), 0.0F);
}

TEST(RandDist, MultinomialAddsToTheCountsThatAreThere) {
    RandSample.ReDim(0, 2);
    RandSample(1) = 100.0F;
    Restart();
    RandMultinomial(50, Cells({1.0F, 0.0F}));
    EXPECT_EQ(RandSample(1), 150.0F);
    EXPECT_EQ(RandSample(2), 0.0F);
}

TEST(RandDist, ProportionsBelowOneDropTheRest) {
    constexpr i16 trials = 30000;
    RandSample.ReDim(0, 3);
    Restart();
    RandMultinomial(trials, Cells({0.3F, 0.4F, 0.2F}));
    const int counted = static_cast<int>(RandSample(1) + RandSample(2) + RandSample(3));
    checks::ExpectShare(trials - counted, trials, 0.1);
}

TEST(RandDist, AUniformOfZeroCountsInNoCategory) {
    RandSample.ReDim(0, 2);
    MakeNextSmallest();
    RandMultinomial(1, Cells({0.5F, 0.5F}));
    EXPECT_EQ(RandSample, Array1<f32>(0, 2));
}

Fault FaultOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RunTimeError& fault) {
        return fault.Kind();
    }
    ADD_FAILURE() << "no fault";
    return Fault::BadIndex;
}

TEST(RandDist, APoissonRateOfZeroDividesByZero) {
    RandSample.ReDim(0, 3);
    EXPECT_EQ(FaultOf([] { RandPoisson(0.0F); }), Fault::DivisionByZero);
}

TEST(RandDist, APoissonCountPast16BitsOverflows) {
    RandSample.ReDim(0, 3);
    Restart();
    EXPECT_EQ(FaultOf([] { RandPoisson(40000.0F); }), Fault::Overflow);
    EXPECT_EQ(FaultOf([] { RandPoisson(-1.0F); }), Fault::Overflow);
    RandPoisson(30000.0F);
    EXPECT_NEAR(RandSample(1), 30000.0F, checks::FalseAlarmZ * std::sqrt(30000.0F));
}

TEST(RandDist, AShapeOfZeroDividesByZero) {
    RandSample.ReDim(0, 3);
    for (const auto& generate : {RandWeibull, RandLognormal}) {
        Restart();
        ClearFloatFaults();
        EXPECT_EQ(FaultOf([&generate] {
                      generate(0.0F);
                      ThrowIfFloatFault();
                  }),
                  Fault::DivisionByZero);
    }
}

TEST(RandDist, ACorrelationBeyondOneIsAnInvalidArgument) {
    RandSample.ReDim(0, 3);
    RandSample2.ReDim(0, 3);
    ClearFloatFaults();
    EXPECT_EQ(FaultOf([] {
                  RandBivNormal(1.5F);
                  ThrowIfFloatFault();
              }),
              Fault::InvalidArgument);
}

TEST(RandDist, AnArrayThatIsNotThereIsAFault) {
    RandSample = {};
    EXPECT_EQ(FaultOf(RandNormal), Fault::BadIndex);
    EXPECT_EQ(FaultOf([] { RandBinomial(5, 0.5F); }), Fault::BadIndex);
    RandSample.ReDim(0, 5);
    RandSample2.ReDim(0, 4);
    EXPECT_EQ(FaultOf([] { RandBivNormal(0.5F); }), Fault::BadIndex);
    RandSample.ReDim(0, 2);
    EXPECT_EQ(FaultOf([] { RandMultinomial(100, Cells({0.0F, 0.0F, 1.0F})); }), Fault::BadIndex);
}

} // namespace
} // namespace quorvanta
