// Draws of every generator, a million in all, against the distribution that it stands for.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "support/fit.h"
#include "support/statistics.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <span>
#include <vector>

namespace quorvanta {
namespace {

using checks::CountProbabilities;
using checks::ExpectContinuousFit;
using checks::ExpectCountFit;
using checks::ExpectMoments;
using checks::ExpectNearZero;
using checks::GammaCdf;
using checks::Moments;
using checks::MomentsOf;
using checks::NormalCdf;

const int draws = checks::DrawsOf(1000000);
constexpr f64 pi = std::numbers::pi;

class RandDistFit : public ::testing::Test {
  protected:
    void SetUp() override {
        Rnd(-20240501.0);
        Randomize(20240501.0);
        RandSample.ReDim(0, draws);
        ClearFloatFaults();
    }
    void TearDown() override { EXPECT_FALSE(HasFloatFault()); }

    static std::span<const f32> Draws() {
        return std::span<const f32>(RandSample.Raw()).subspan(1);
    }
};

TEST_F(RandDistFit, Uniform01) {
    RandUniform01();
    ExpectMoments(Draws(), {0.5, 1.0 / 12.0, -1.2});
    ExpectContinuousFit(Draws(), [](f64 x) { return x; });
}

TEST_F(RandDistFit, UniformCentred) {
    RandUniformCentred();
    ExpectMoments(Draws(), {0.0, 1.0 / 12.0, -1.2});
    ExpectContinuousFit(Draws(), [](f64 x) { return x + 0.5; });
}

TEST_F(RandDistFit, Normal) {
    RandNormal();
    ExpectMoments(Draws(), {0.0, 1.0, 0.0});
    ExpectContinuousFit(Draws(), NormalCdf);
}

TEST_F(RandDistFit, Exponential) {
    RandExponential();
    ExpectMoments(Draws(), {1.0, 1.0, 6.0});
    ExpectContinuousFit(Draws(), [](f64 x) { return -std::expm1(-x); });
}

TEST_F(RandDistFit, Laplace) {
    RandLaplace();
    ExpectMoments(Draws(), {0.0, 2.0, 3.0});
    ExpectContinuousFit(Draws(),
                        [](f64 x) { return x < 0 ? 0.5 * std::exp(x) : 1.0 - 0.5 * std::exp(-x); });
}

TEST_F(RandDistFit, Cauchy) {
    RandCauchy(); // has no moments
    ExpectContinuousFit(Draws(), [](f64 x) { return 0.5 + std::atan(x) / pi; });
}

TEST_F(RandDistFit, Logistic) {
    RandLogistic();
    ExpectMoments(Draws(), {0.0, pi * pi / 3.0, 1.2});
    ExpectContinuousFit(Draws(), [](f64 x) { return 1.0 / (1.0 + std::exp(-x)); });
}

TEST_F(RandDistFit, ExtremeValue) {
    RandExtremeValue();
    ExpectMoments(Draws(), {std::numbers::egamma, pi * pi / 6.0, 2.4});
    ExpectContinuousFit(Draws(), [](f64 x) { return std::exp(-std::exp(-x)); });
}

Moments WeibullMoments(f64 shape) {
    const auto raw = [shape](f64 k) { return std::tgamma(1.0 + k / shape); };
    const f64 mean = raw(1);
    const f64 variance = raw(2) - mean * mean;
    const f64 fourth =
        raw(4) - 4.0 * mean * raw(3) + 6.0 * mean * mean * raw(2) - 3.0 * std::pow(mean, 4);
    return {mean, variance, fourth / (variance * variance) - 3.0};
}

TEST_F(RandDistFit, Weibull) {
    for (const f32 shape : {0.5F, 1.0F, 2.0F, 3.5F}) {
        SCOPED_TRACE(shape);
        RandWeibull(shape);
        ExpectMoments(Draws(), WeibullMoments(shape));
        ExpectContinuousFit(Draws(), [shape](f64 x) { return -std::expm1(-std::pow(x, shape)); });
    }
}

TEST_F(RandDistFit, Lognormal) {
    for (const f32 shape : {2.0F, 4.0F}) {
        SCOPED_TRACE(shape);
        const f64 s = 1.0 / shape;
        const f64 q = std::exp(s * s);
        RandLognormal(shape);
        ExpectMoments(Draws(), {std::sqrt(q), q * (q - 1.0),
                                std::pow(q, 4) + 2.0 * std::pow(q, 3) + 3.0 * q * q - 6.0});
        ExpectContinuousFit(Draws(), [s](f64 x) { return NormalCdf(std::log(x) / s); });
    }
}

TEST_F(RandDistFit, Gamma) {
    for (const f32 shape : {0.1F, 0.5F, 1.0F, 2.5F, 3.0F, 7.3F}) {
        SCOPED_TRACE(shape);
        RandGamma(shape);
        ExpectMoments(Draws(), {shape, shape, 6.0 / shape});
        ExpectContinuousFit(Draws(), [shape](f64 x) { return GammaCdf(shape, x); });
    }
}

TEST_F(RandDistFit, Chi2SumOfSquares) {
    for (const f32 df : {1.0F, 2.0F, 5.0F, 30.0F}) {
        SCOPED_TRACE(df);
        RandChi2(df);
        ExpectMoments(Draws(), {df, 2.0 * df, 12.0 / df});
        ExpectContinuousFit(Draws(), [df](f64 x) { return GammaCdf(0.5 * df, 0.5 * x); });
    }
}

// The cube of a normal variable is its own distribution, with these moments of (m + s z)^3.
TEST_F(RandDistFit, Chi2Cube) {
    for (const f32 df : {30.5F, 50.0F, 400.0F}) {
        SCOPED_TRACE(df);
        const f64 v = 2.0 / 9.0 / df;
        const f64 m = 1.0 - v;
        RandChi2(df);
        ExpectMoments(
            Draws(),
            {df * (m * m * m + 3.0 * m * v),
             df * df * (9.0 * std::pow(m, 4) * v + 36.0 * m * m * v * v + 15.0 * v * v * v),
             12.0 / df});
        ExpectContinuousFit(Draws(), [df, v, m](f64 x) {
            return NormalCdf((std::cbrt(x / df) - m) / std::sqrt(v));
        });
    }
}

// Correlation, and the quadratic form of the pair, exponential with mean 2.
TEST_F(RandDistFit, BivNormal) {
    for (const f32 rho : {-0.9F, 0.0F, 0.5F}) {
        SCOPED_TRACE(rho);
        const f64 r = rho;
        RandSample2.ReDim(0, draws);
        RandBivNormal(rho);
        const auto second = std::span<const f32>(RandSample2.Raw()).subspan(1);
        ExpectMoments(Draws(), {0.0, 1.0, 0.0});
        ExpectMoments(second, {0.0, 1.0, 0.0});
        ExpectContinuousFit(Draws(), NormalCdf);
        ExpectContinuousFit(second, NormalCdf);
        f64 product = 0;
        std::vector<f32> form;
        for (int i = 1; i <= draws; ++i) {
            const f64 x = RandSample(i);
            const f64 y = RandSample2(i);
            product += x * y;
            form.push_back(static_cast<f32>((x * x - 2.0 * r * x * y + y * y) / (1.0 - r * r)));
        }
        ExpectNearZero((product / draws - r) / std::sqrt((1.0 + r * r) / draws));
        ExpectContinuousFit(form, [](f64 q) { return -std::expm1(-0.5 * q); });
    }
}

// Three variables with the covariance matrix T'T and the means M: each mean, each covariance, and
// the squared distance from the mean, a chi-square variable with 3 degrees of freedom.
TEST_F(RandDistFit, MultiNormal) {
    constexpr int n = 3;
    constexpr int vectors = 300000;
    const f64 factor[n][n] = {{2.0, 0.5, -1.0}, {0.0, 1.5, 0.7}, {0.0, 0.0, 0.6}};
    Array2<f64> T(1, n, 1, n);
    Array2<f32> M(1, n, 1, 1);
    for (int i = 0; i < n; ++i) {
        M(i + 1, 1) = 10.0F * static_cast<f32>(i) - 5.0F;
        for (int j = 0; j < n; ++j)
            T(i + 1, j + 1) = factor[i][j];
    }
    f64 sums[n] = {};
    f64 products[n][n] = {};
    std::vector<f32> distances;
    for (int k = 0; k < vectors; ++k) {
        RandMultiNormal(T, M);
        ASSERT_EQ(RandSample.HighBound(), n);
        f64 x[n];
        f64 z[n]; // x = T'z by forward substitution
        f64 distance = 0;
        for (int i = 0; i < n; ++i) {
            x[i] = static_cast<f64>(RandSample(i + 1)) - M(i + 1, 1);
            z[i] = x[i];
            for (int j = 0; j < i; ++j)
                z[i] -= factor[j][i] * z[j];
            z[i] /= factor[i][i];
            distance += z[i] * z[i];
            sums[i] += x[i];
            for (int j = 0; j <= i; ++j)
                products[i][j] += x[i] * x[j];
        }
        distances.push_back(static_cast<f32>(distance));
    }
    f64 covariance[n][n] = {};
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k)
                covariance[i][j] += factor[k][i] * factor[k][j];
    for (int i = 0; i < n; ++i) {
        ExpectNearZero(sums[i] / std::sqrt(covariance[i][i] * vectors));
        for (int j = 0; j <= i; ++j) {
            const f64 c = covariance[i][j];
            ExpectNearZero((products[i][j] / vectors - c) /
                           std::sqrt((covariance[i][i] * covariance[j][j] + c * c) / vectors));
        }
    }
    ExpectContinuousFit(distances, [](f64 d) { return GammaCdf(1.5, 0.5 * d); });
}

// Hazards 0.5, 0.1, 2 on the intervals from 0, 1 and 3; the last one goes on for ever, and the
// hazard of the bound at 4 is never used.
TEST_F(RandDistFit, PiecewiseExp) {
    Array1<f32> S(1, 4);
    Array1<f32> H(1, 4);
    const f32 starts[] = {0.0F, 1.0F, 3.0F, 4.0F};
    const f32 hazards[] = {0.5F, 0.1F, 2.0F, 77.0F};
    for (int j = 1; j <= 4; ++j) {
        S(j) = starts[j - 1];
        H(j) = hazards[j - 1];
    }
    RandPiecewiseExp(S, H);
    ExpectContinuousFit(Draws(), [](f64 x) {
        const f64 hazard = x < 1 ? 0.5 * x : x < 3 ? 0.5 + 0.1 * (x - 1) : 0.7 + 2.0 * (x - 3);
        return -std::expm1(-hazard);
    });
    // The mean is the area below the survival function.
    const f64 mean = (1.0 - std::exp(-0.5)) / 0.5 + std::exp(-0.5) * (1.0 - std::exp(-0.2)) / 0.1 +
                     std::exp(-0.7) / 2.0;
    f64 sum = 0;
    f64 squares = 0;
    for (const f32 x : Draws()) {
        sum += x;
        squares += static_cast<f64>(x) * x;
    }
    const f64 variance = squares / draws - mean * mean;
    ExpectNearZero((sum / draws - mean) / std::sqrt(variance / draws));
}

f64 LogChoose(f64 n, f64 k) {
    return std::lgamma(n + 1.0) - std::lgamma(k + 1.0) - std::lgamma(n - k + 1.0);
}

TEST_F(RandDistFit, Binomial) {
    const struct {
        i16 N;
        f32 P;
    } cases[] = {{1, 0.4F}, {20, 0.3F}, {200, 0.02F}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.N);
        CountProbabilities probabilities;
        for (int x = 0; x <= c.N; ++x)
            probabilities.push_back(std::exp(LogChoose(c.N, x) +
                                             x * std::log(static_cast<f64>(c.P)) +
                                             (c.N - x) * std::log1p(-static_cast<f64>(c.P))));
        RandBinomial(c.N, c.P);
        ExpectMoments(Draws(), MomentsOf(probabilities));
        ExpectCountFit(Draws(), probabilities);
    }
}

// N, n and the number marked.
CountProbabilities HypergeometricProbabilities(int N, int n, int marked) {
    CountProbabilities probabilities;
    for (int x = 0; x <= n; ++x) {
        const bool possible = x <= marked && n - x <= N - marked;
        probabilities.push_back(possible ? std::exp(LogChoose(marked, x) +
                                                    LogChoose(N - marked, n - x) - LogChoose(N, n))
                                         : 0.0);
    }
    return probabilities;
}

TEST_F(RandDistFit, Hypergeometric) {
    const struct {
        i16 N;
        i16 n;
        f32 P;
        int Marked;
    } cases[] = {{50, 20, 0.3F, 15}, {20, 15, 0.5F, 10}, {1000, 100, 0.1F, 100}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.N);
        const CountProbabilities probabilities = HypergeometricProbabilities(c.N, c.n, c.Marked);
        RandHypergeometric(c.N, c.n, c.P);
        ExpectMoments(Draws(), MomentsOf(probabilities));
        ExpectCountFit(Draws(), probabilities);
    }
}

TEST_F(RandDistFit, Poisson) {
    for (const f32 lambda : {0.5F, 4.0F, 30.0F}) {
        SCOPED_TRACE(lambda);
        CountProbabilities probabilities;
        for (int x = 0; x < 200; ++x)
            probabilities.push_back(
                std::exp(x * std::log(static_cast<f64>(lambda)) - lambda - std::lgamma(x + 1.0)));
        RandPoisson(lambda);
        ExpectMoments(Draws(), MomentsOf(probabilities));
        ExpectCountFit(Draws(), probabilities);
    }
}

// Trials over five categories, as one sample of categories.
TEST_F(RandDistFit, Multinomial) {
    const CountProbabilities proportions{0.1, 0.4, 0.05, 0.25, 0.2};
    Array1<f32> P(1, 5);
    for (int i = 1; i <= 5; ++i)
        P(i) = static_cast<f32>(proportions[static_cast<std::size_t>(i - 1)]);
    RandSample.ReDim(0, 5);
    for (int k = 0; k < draws / 10000; ++k)
        RandMultinomial(10000, P);
    std::vector<f32> categories;
    for (int i = 1; i <= 5; ++i)
        categories.insert(categories.end(), static_cast<std::size_t>(RandSample(i)),
                          static_cast<f32>(i - 1));
    ASSERT_EQ(categories.size(), static_cast<std::size_t>(draws));
    ExpectCountFit(categories, proportions);
    ExpectMoments(categories, MomentsOf(proportions));
}

} // namespace
} // namespace quorvanta
