#include "tests/repeatedeq.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/eigenvalue.h"
#include "numeric/inverse.h"
#include "numeric/matmultmat.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/teststud.h"

#include <cmath>

namespace quorvanta {

namespace {

// Means of the cells on the diagonal and of the others; k 2 or more.
struct CellMeans {
    f64 Diagonal = 0;
    f64 Others = 0;
};

CellMeans MeansOf(const Array2<f64>& s) {
    const int k = s.HighBound1();
    CellMeans sums;
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j)
            (i == j ? sums.Diagonal : sums.Others) += s(i, j);
    return {sums.Diagonal / k, sums.Others / (k * (k - 1))};
}

f32 RootOrNone(f64 variance) {
    return variance < 0 ? Single(NoValue) : Single(std::sqrt(variance));
}

// Divided by their mean: what follows must not depend on the unit of measurement.
void DivideByMean(Array1<f64>& values) {
    f64 sum = 0;
    for (const f64 value : values.Raw())
        sum += value;
    const f64 mean = sum / static_cast<f64>(values.HighBound());
    for (f64& value : values.Raw())
        value /= mean;
}

ErrorTerms CsErrors(i16 k, f32 sd, f32 rho) {
    Array2<f64> s;
    ErrorTerms errors;
    RepCsMatrix(k, sd, rho, s, errors.Eps, errors.Bias);
    errors.Eps = 1;
    return errors;
}

ErrorTerms ErrorsAt(CorrelationStructure structure, i16 k, f32 sd, f32 rho) {
    if (structure == CorrelationStructure::CompoundSymmetry)
        return CsErrors(k, sd, rho);
    Array2<f64> s;
    ErrorTerms errors;
    RepArMatrix(k, sd, rho, s, errors);
    return errors;
}

ErrorTerms Between(const ErrorTerms& a, const ErrorTerms& b, f32 weight) {
    return {InterpLinear(a.Within, b.Within, weight), InterpLinear(a.Between, b.Between, weight),
            InterpLinear(a.Eps, b.Eps, weight), InterpLinear(a.Bias, b.Bias, weight)};
}

// Of compound symmetry these two are known without a matrix, for a broken k as well.
void SetCsErrors(ErrorTerms& errors, f32 k, f32 sd, f32 rho) {
    errors.Within = Single(f64{sd} * std::sqrt(1 - f64{rho}));
    errors.Between = Single(f64{sd} * std::sqrt(1 + (f64{k} - 1) * f64{rho}));
}

} // namespace

void OrthoPolyContrasts(i16 k, Array2<f64>& c) {
    c.ReDim(1, k - 1, 1, k);
    const f64 points{static_cast<f64>(k)};
    for (int i = 1; i <= k; ++i) {
        const f64 x = i - (points + 1) / 2;
        f64 former = 0;
        f64 value = 1;
        for (int degree = 1; degree < k; ++degree) {
            const f64 j = degree - 1;
            const f64 factor = j * j * (points * points - j * j) / (4 * (4 * j * j - 1));
            const f64 next = x * value - factor * former;
            former = value;
            value = next;
            c(degree, i) = value;
        }
    }
    for (int degree = 1; degree < k; ++degree) {
        f64 squares = 0;
        for (int i = 1; i <= k; ++i)
            squares += c(degree, i) * c(degree, i);
        for (int i = 1; i <= k; ++i)
            c(degree, i) /= std::sqrt(squares);
    }
}

Array2<f64> ContrastCovariance(const Array2<f64>& s, i16 k) {
    Array2<f64> c;
    OrthoPolyContrasts(k, c);
    Array2<f64> half;
    MatMultMat(c, s, half);
    Array2<f64> transposed;
    MatTranspose(c, transposed);
    Array2<f64> m;
    MatMultMat(half, transposed, m);
    return m;
}

// S. W. Greenhouse and S. Geisser, Psychometrika 24, 1959, 95-112; the bias by K. E. Muller and
// C. N. Barton, Journal of the American Statistical Association 84, 1989, 549-555.
void RepEpsilon(const Array2<f64>& s, i16 k, f32& eps, f32& bias) {
    if (k == 2) {
        eps = 1;
        bias = 0;
        return;
    }
    const i16 m = static_cast<i16>(k - 1);
    Array1<f64> l;
    Array1<f64> imaginary;
    if (!EigenValues(m, ContrastCovariance(s, k), l, imaginary) || Cancelled == True)
        return;
    DivideByMean(l);
    f64 a = 0;
    f64 b = 0;
    for (const f64 value : l.Raw()) {
        a += value;
        b += value * value;
    }
    const f64 share = 2 / static_cast<f64>(m);
    f64 sum = 0;
    for (i16 i = 1; i <= m; ++i) {
        // First and second derivative of epsilon with respect to l(i).
        const f64 d1 = (a / b - a * a * l(i) / (b * b)) * share;
        const f64 d2 = (4 * l(i) * l(i) * a * a / (b * b * b) + 1 / b - 4 * l(i) * a / (b * b) -
                        a * a / (b * b)) *
                       share;
        sum += d2 * l(i) * l(i);
        for (i16 j = 1; j <= m; ++j) {
            constexpr f64 equal = 1e-6;
            if (j != i && std::fabs(l(i) - l(j)) > equal)
                sum += d1 * l(i) * l(j) / (l(i) - l(j));
        }
    }
    eps = Single(a * a / b / m);
    bias = Single(sum);
}

f32 RepErrorTerm(const Array2<f64>& s) {
    const CellMeans means = MeansOf(s);
    return RootOrNone(means.Diagonal - means.Others);
}

f32 RepBetweenErrorTerm(const Array2<f64>& s) {
    const CellMeans means = MeansOf(s);
    return RootOrNone(means.Diagonal + (s.HighBound1() - 1) * means.Others);
}

void RepCsMatrix(i16 k, f32 sd, f32 rho, Array2<f64>& s, f32& eps, f32& bias) {
    s.ReDim(1, k, 1, k);
    const f64 variance = f64{sd} * f64{sd};
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j)
            s(i, j) = i == j ? variance : variance * f64{rho};
    RepEpsilon(s, k, eps, bias);
}

void RepArMatrix(i16 k, f32 sd, f32 rho, Array2<f64>& s, ErrorTerms& errors) {
    s.ReDim(1, k, 1, k);
    for (int i = 1; i <= k; ++i) {
        f64 covariance = f64{sd} * f64{sd};
        for (int j = i; j <= k; ++j) {
            s(i, j) = covariance;
            s(j, i) = covariance;
            covariance *= f64{rho};
        }
    }
    errors.Within = RepErrorTerm(s);
    errors.Between = RepBetweenErrorTerm(s);
    RepEpsilon(s, k, errors.Eps, errors.Bias);
}

ErrorTerms ErrorTermsOf(CorrelationStructure structure, f32 k, f32 sd, f32 rho) {
    const f64 levels = MinOf(MaxOf(f64{k}, MinWithinLevels), MaxWithinLevels);
    const i16 below = ToI16(Int(levels));
    ErrorTerms errors = ErrorsAt(structure, below, sd, rho);
    if (const f32 weight = FracPart(Single(levels)); weight > 0)
        errors = Between(errors, ErrorsAt(structure, static_cast<i16>(below + 1), sd, rho), weight);
    if (structure == CorrelationStructure::CompoundSymmetry)
        SetCsErrors(errors, k, sd, rho);
    return errors;
}

namespace {

constexpr f64 Hair = 1e-5;

} // namespace

f64 SmallestCorrelation(f64 k) {
    return -1 / (k - 1) + Hair;
}

f64 MostLevels(f64 correlation) {
    return correlation >= 0 ? NoValue : 1 + 1 / (Hair - correlation);
}

// The corrected degrees of freedom at the expected value of the estimated epsilon: K. E. Muller and
// C. N. Barton, Journal of the American Statistical Association 84, 1989, 549-555.
f64 RepPower(const AnovaDesign& design, AnovaEffectType type, f32 effect, const ErrorTerms& errors,
             f32 n) {
    const f64 standardised = f64{effect} / f64{errors.Within};
    const f32 r = Single(standardised * standardised);
    const f32 lambda = Single(f64{r} * design.Lambda[static_cast<int>(type)]);
    const f32 e = Single(f64{errors.Bias} / (f64{n} - 1) + f64{errors.Eps});
    const f32 df1 = MaxSingle(Single(f64{design.Df1} * f64{e}), 1);
    const f32 df2 = MaxSingle(Single(f64{design.Df2} * f64{e}), 1);
    return FTestEq(df1, df2, Single(f64{lambda} * f64{e}));
}

AnovaDesign WithinDesign(f32 k, f32 n) {
    return MainEffect(k, n, (f64{k} - 1) * (f64{n} - 1));
}

f64 RepContrastPower(f64 perMean, f32 df, f32 mean, f32 sd, f32 deltaLow, f32 deltaHigh) {
    return TPowerEq(mean, Single(f64{sd} / std::sqrt(perMean)), deltaLow, deltaHigh, df);
}

// H. Hotelling, Annals of Mathematical Statistics 2, 1931, 360-378; T. W. Anderson, An Introduction
// to Multivariate Statistical Analysis, 1958, section 5.4.
f64 HotellingEq(f32 df1, f64 df2, f64 lambda) {
    return FTestEq(df1, MaxSingle(Single(df2), 1), Single(lambda));
}

f64 SquaredDistance(const Array2<f64>& x, const Array2<f64>& s) {
    const i16 p = static_cast<i16>(s.HighBound1());
    // The limit of a pivot is absolute: the matrix is inverted with variances near 1.
    const f64 scale = s(1, 1);
    Array2<f64> inverse = s;
    for (f64& cell : inverse.Raw())
        cell /= scale;
    if (!MatInverse(inverse, p))
        return NoValue;
    Array2<f64> product;
    MatMultMat(inverse, x, product);
    Array2<f64> row;
    MatTranspose(x, row);
    Array2<f64> distance;
    MatMultMat(row, product, distance);
    return distance(1, 1) / scale;
}

} // namespace quorvanta
