#include "numeric/integra2.h"

#include "core/general.h"
#include "numeric/gamma0.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <array>
#include <cmath>

namespace quorvanta {

namespace {

constexpr f32 ExactBelow = 60;  // degrees of freedom
constexpr f32 NormalUpTo = 300; // of quantiles

bool IsWidth(i16 funcNo) {
    return funcNo >= Studentized::DunnettWidth && funcNo <= Studentized::BestWidth;
}

// The same figure for a whole exponent wherever the program was built.
f64 PowerOf(f64 base, f64 exponent) {
    constexpr f64 mostFactors = 64;
    if (exponent != std::floor(exponent) || exponent < 0 || exponent > mostFactors)
        return std::pow(base, exponent);
    f64 product = 1;
    for (int i = 0; i < static_cast<int>(exponent); ++i)
        product *= base;
    return product;
}

struct Rule {
    f64 XLower;
    f64 XUpper;
    i16 XPairs; // half the number of intervals
    i16 SPairs;
};

Rule RuleOf(i16 funcNo) {
    return funcNo == Studentized::MaximumModulus ? Rule{0, 1, 1, 30} : Rule{-10, 10, 30, 50};
}

// The points of s with their weights in the integral over it, kept for the last integral asked for:
// a search for c asks for one integral again and again.
struct Deviations {
    StudentizedIntegral Of;
    bool Filled = false;
    f64 Lower = 0;
    f64 Step = 0;
    int Points = 0;
    int Densest = 0; // the point of the largest weight
    std::array<f64, 101> Weight{};

    f64 At(int point) const { return Lower + point * Step; }
    f64 WeightAt(int point) const { return Weight[static_cast<std::size_t>(point)]; }
};

bool HasSameDeviations(const StudentizedIntegral& a, const StudentizedIntegral& b) {
    return a.Df == b.Df && a.Upper == b.Upper && IsWidth(a.FuncNo) == IsWidth(b.FuncNo) &&
           RuleOf(a.FuncNo).SPairs == RuleOf(b.FuncNo).SPairs;
}

struct Range {
    f64 Lower;
    f64 Upper;
};

// From 0 up, but for widths with so many degrees of freedom that the points would be farther apart
// than the density is wide: there only where the density is. Critical values have at most 250
// degrees of freedom and stay as they are.
Range RangeOf(const StudentizedIntegral& integral) {
    constexpr f64 resolved = 1.4; // steps to a standard deviation of s
    constexpr f64 reach = 7;      // standard deviations
    const f64 upper{integral.Upper};
    const f64 sd = 1 / std::sqrt(2 * f64{integral.Df});
    const f64 step = upper / (2 * RuleOf(integral.FuncNo).SPairs);
    if (!IsWidth(integral.FuncNo) || integral.Df < ExactBelow || sd >= resolved * step)
        return {0, upper};
    const f64 lower = MinOf(upper, 1 - reach * sd);
    return {lower, MinOf(upper, 1 + reach * sd)};
}

const Deviations& DeviationsOf(const StudentizedIntegral& integral) {
    static Deviations kept;
    if (kept.Filled && HasSameDeviations(kept.Of, integral))
        return kept;
    kept.Filled = false;
    kept.Of = integral;
    const int intervals = 2 * RuleOf(integral.FuncNo).SPairs;
    const Range range = RangeOf(integral);
    kept.Lower = range.Lower;
    kept.Step = (range.Upper - range.Lower) / intervals;
    kept.Points = intervals + 1;
    kept.Densest = 0;
    for (int j = 0; j < kept.Points; ++j) {
        const f64 density = DeviationDensity(integral, kept.At(j));
        kept.Weight[static_cast<std::size_t>(j)] =
            SimpsonWeight(j, intervals) * density * kept.Step / 3.0;
        if (kept.WeightAt(j) > kept.WeightAt(kept.Densest))
            kept.Densest = j;
    }
    kept.Filled = true;
    return kept;
}

i16 FamilyOf(i16 funcNo) {
    return IsWidth(funcNo) ? static_cast<i16>(funcNo - Studentized::ToWidth) : funcNo;
}

// The integrand at one x, for any s: what does not depend on s is found once.
class IntegrandAt {
  public:
    IntegrandAt(const StudentizedIntegral& integral, f32 c, f64 x)
        : family_(FamilyOf(integral.FuncNo)), others_(f64{integral.Groups} - 1) {
        const f64 r{integral.SizeRatio};
        density_ = NorDensity(Single(x));
        center_ = x;
        reach_ = std::sqrt(2.0) * f64{c};
        switch (family_) {
        case Studentized::Dunnett:
            center_ = std::sqrt(r) * x;
            reach_ = f64{c} * std::sqrt(1 + r);
            break;
        case Studentized::Tukey:
            density_ *= f64{integral.Groups};
            below_ = NorCdf(Single(x));
            break;
        case Studentized::Best:
            break;
        default:
            density_ = 1;
            center_ = 0;
            others_ = integral.Groups;
            reach_ = c;
        }
    }

    f64 operator()(f64 s) const { return density_ * PowerOf(Within(reach_ * s), others_); }

    // The integrand of two-sided comparisons at x and at -x together: both are made of the same two
    // shares.
    f64 AtBothSides(f64 s) const {
        const f64 reach = reach_ * s;
        const f64 right = Share(center_ + reach);
        const f64 left = Share(center_ - reach);
        const auto below = [](f64 share) { return f64{Single((share + 1) / 2)}; };
        return density_ * (PowerOf(below(right) - below(left), others_) +
                           PowerOf(below(-left) - below(-right), others_));
    }

    // What it is at most, whatever s is.
    f64 Largest() const {
        return family_ == Studentized::Tukey ? density_ * PowerOf(below_, others_) : density_;
    }

  private:
    // The probability that one comparison stays within its reach.
    f64 Within(f64 reach) const {
        switch (family_) {
        case Studentized::Tukey:
            return below_ - Below(center_ - reach);
        case Studentized::Best:
            return Below(center_ + reach);
        default:
            return Below(center_ + reach) - Below(center_ - reach);
        }
    }

    // The same 32 bits as the function itself, which is 1 from 6 on.
    static f64 Below(f64 z) {
        constexpr f64 certain = 6;
        return z >= certain ? 1 : f64{NorCdf(Single(z))};
    }

    static f64 Share(f64 z) {
        constexpr f64 certain = 7.5;
        return z >= certain ? 1 : CenterShare(Single(z));
    }

    i16 family_;
    f64 others_;
    f64 density_ = 0;
    f64 center_ = 0;
    f64 below_ = 0;
    f64 reach_ = 0;
};

// The integral over s at one x: from the densest point up to where the rest can add next to
// nothing, and from there down to where the integrand, which grows with s, does.
template <class Integrand>
f64 OverDeviations(const Deviations& deviations, f64 largest, Integrand&& integrand) {
    constexpr f64 negligible = 1e-15; // of a single point
    f64 sum = 0;
    for (int j = deviations.Densest; j < deviations.Points; ++j) {
        const f64 weight = deviations.WeightAt(j);
        if (weight * largest < negligible)
            break;
        sum += weight * integrand(deviations.At(j));
    }
    for (int j = deviations.Densest - 1; j >= 0; --j) {
        const f64 weight = deviations.WeightAt(j);
        if (weight * largest < negligible)
            break;
        const f64 term = weight * integrand(deviations.At(j));
        sum += term;
        if (term < negligible)
            break;
    }
    return sum;
}

} // namespace

f32 Chi2DensityRaw(f32 x, f32 df) {
    constexpr f32 largest = 100;
    if (x <= 0 || x >= largest)
        return 0;
    const f64 half = f64{df} / 2;
    return Single(std::pow(f64{x}, half - 1) * ExpClamped(Single(-f64{x} / 2)) /
                  (std::pow(2.0, half) * GammaFn(half)));
}

f64 ComparisonIntegrand(const StudentizedIntegral& integral, f32 c, f64 x, f64 s) {
    return IntegrandAt(integral, c, x)(s);
}

f64 DeviationDensity(const StudentizedIntegral& integral, f64 s) {
    const f64 d{integral.Df};
    if (integral.Df < ExactBelow)
        return 2 * d * s * f64{Chi2DensityRaw(Single(d * s * s), integral.Df)};
    if (integral.Df <= NormalUpTo || IsWidth(integral.FuncNo))
        return std::sqrt(2 * d) *
               f64{NorDensity(Single(std::sqrt(2 * d) * s - std::sqrt(2 * d - 1)))};
    return 1 / f64{SUpper};
}

f32 StudentizedProbability(const StudentizedIntegral& integral, f32 c) {
    const Deviations& deviations = DeviationsOf(integral);
    const auto at = [&](f64 x) {
        const IntegrandAt integrand(integral, c, x);
        return OverDeviations(deviations, integrand.Largest(), integrand);
    };
    // x does nothing there, and its rule makes 1 of 1.
    if (integral.FuncNo == Studentized::MaximumModulus)
        return Single(at(0));
    const auto atBothSides = [&](f64 x) {
        const IntegrandAt integrand(integral, c, x);
        return OverDeviations(deviations, 2 * integrand.Largest(),
                              [&integrand](f64 s) { return integrand.AtBothSides(s); });
    };
    const bool isEven = FamilyOf(integral.FuncNo) == Studentized::Dunnett;
    const Rule rule = RuleOf(integral.FuncNo);
    const int intervals = 2 * rule.XPairs;
    const f64 step = (rule.XUpper - rule.XLower) / intervals;
    f64 sum = 0;
    for (int i = 0; i <= (isEven ? rule.XPairs : intervals); ++i) {
        const f64 x = rule.XLower + i * step;
        sum += SimpsonWeight(i, intervals) * (isEven && i < rule.XPairs ? atBothSides(x) : at(x));
    }
    return Single(sum * step / 3.0);
}

} // namespace quorvanta
