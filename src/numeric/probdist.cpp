#include "numeric/probdist.h"

#include "core/fault.h"
#include "core/general.h"
#include "numeric/rounding.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

namespace quorvanta {

namespace {

f64 ExpClamped64(f64 v) {
    return ExpClamped(Single(v));
}

// 0! to 50!.
constexpr std::array<f64, 51> ExactFactorials = {
    1.0,
    1.0,
    2.0,
    6.0,
    24.0,
    120.0,
    720.0,
    5040.0,
    40320.0,
    362880.0,
    3628800.0,
    39916800.0,
    479001600.0,
    6227020800.0,
    87178291200.0,
    1307674368000.0,
    20922789888000.0,
    355687428096000.0,
    6402373705728000.0,
    121645100408832000.0,
    2432902008176640000.0,
    51090942171709440000.0,
    1124000727777607680000.0,
    25852016738884976640000.0,
    620448401733239439360000.0,
    15511210043330985984000000.0,
    403291461126605635584000000.0,
    10888869450418352160768000000.0,
    304888344611713860501504000000.0,
    8841761993739701954543616000000.0,
    265252859812191058636308480000000.0,
    8222838654177922817725562880000000.0,
    263130836933693530167218012160000000.0,
    8683317618811886495518194401280000000.0,
    295232799039604140847618609643520000000.0,
    10333147966386144929666651337523200000000.0,
    371993326789901217467999448150835200000000.0,
    13763753091226345046315979581580902400000000.0,
    523022617466601111760007224100074291200000000.0,
    20397882081197443358640281739902897356800000000.0,
    815915283247897734345611269596115894272000000000.0,
    33452526613163807108170062053440751665152000000000.0,
    1405006117752879898543142606244511569936384000000000.0,
    60415263063373835637355132068513997507264512000000000.0,
    2658271574788448768043625811014615890319638528000000000.0,
    119622220865480194561963161495657715064383733760000000000.0,
    5502622159812088949850305428800254892961651752960000000000.0,
    258623241511168180642964355153611979969197632389120000000000.0,
    12413915592536072670862289047373375038521486354677760000000000.0,
    608281864034267560872252163321295376887552831379210240000000000.0,
    30414093201713378043612608166064768844377641568960512000000000000.0};

} // namespace

// --- Normal family ----------------------------------------------------------------------------

f64 CenterShare(f32 x) {
    const f64 a = std::fabs(f64{x});
    if (a >= 10)
        return Sgn(f64{x});
    const f64 t = Single(1 / (1 + 0.2316419 * a));
    const f64 q = Single(((1.061405429 * t - 1.453152027) * t + 1.421413741) * t - 0.284496736);
    const f64 e = std::exp(-f64{x} * f64{x} / 2);
    const f64 s = 1 - (q * t + 0.254829592) * (t * e);
    return s * Sgn(f64{x});
}

f32 NorCdf(f32 x) {
    return Single((CenterShare(x) + 1) / 2);
}

f32 NorDensity(f32 x) {
    return Single(1 / std::sqrt(TwoPi) * ExpClamped64(-f64{x} * f64{x} / 2));
}

f32 NorInv(f32 p) {
    if (p <= 0)
        return QuantileBelowAll;
    if (p >= 1)
        return QuantileAboveAll;
    const f64 m = 0.5 - std::fabs(0.5 - f64{p});
    if (m == 0)
        return QuantileBelowAll;
    const f64 t = Single(std::sqrt(-2 * std::log(m)));
    const f64 n = (0.010328 * t + 0.802853) * t + 2.515517;
    const f64 d = ((0.001308 * t + 0.189269) * t + 1.432788) * t + 1;
    return Single((t - n / d) * Sgn(f64{p} - 0.5));
}

namespace {

f32 NorUpperTail(f32 z) {
    const f64 a = std::fabs(f64{z});
    f32 p = 0;
    if (a <= 7) {
        const f64 b = Single(((5.383e-6 * a + 4.88906e-5) * a + 3.80036e-5) * a);
        const f64 c = Single((((b + 0.0032776263) * a + 0.0211410061) * a + 0.049867347) * a + 1);
        p = Single(0.5 * std::pow(c, -16));
    }
    return z < 0 ? Single(1 - f64{p}) : p;
}

f32 NorUpperQuantile(f32 p) {
    if (p == 0.5F)
        return 0;
    const f32 q = p > 0.5F ? Single(1 - f64{p}) : p;
    f32 z = 0;
    if (q == 0.05F)
        z = 1.64485F;
    else if (q == 0.025F)
        z = 1.95996F;
    else if (q == 0.01F)
        z = 2.32635F;
    else if (q == 0.005F)
        z = 2.57583F;
    else {
        const f64 w = Single(-std::log(4 * f64{q} * (1 - f64{q})));
        const f64 e1 = Single((-3.231081277e-9 * w + 8.360937017e-8) * w - 1.04527497e-6);
        const f64 e2 = Single((e1 * w + 5.824238515e-6) * w + 6.841218299e-6);
        const f64 e3 =
            Single(((e2 * w - 0.0002250947176) * w - 0.000836435359) * w + 0.03706987906);
        const f64 e4 = Single(e3 * w + 1.570796288);
        z = Single(std::sqrt(e4 * w));
    }
    return p > 0.5F ? -z : z;
}

} // namespace

void NorTail(i16 mode, f32& z, f32& p) {
    if (mode == 1)
        p = NorUpperTail(z);
    else if (mode == 2)
        z = NorUpperQuantile(p);
}

// --- Gamma and beta functions -----------------------------------------------------------------

f32 LogGammaStar(f32 x) {
    f32 p32 = 1;
    while (x < 10) {
        p32 = Single(f64{p32} * f64{x});
        x = Single(f64{x} + 1);
    }
    const f64 p = p32;
    const f64 w = x;
    return Single(1 / (12 * w) + (w - 0.5) * std::log(w) - 1 / (360 * w * w * w) +
                  1 / (1260 * w * w * w * w * w) - std::log(p) - w);
}

f64 Factorial(i16 n) {
    if (n < 0)
        throw RunTimeError(Fault::BadIndex);
    if (n < 51)
        return ExactFactorials[static_cast<std::size_t>(n)];
    if (n > 140)
        return FactorialTooLarge;
    const f64 w = n;
    return std::exp((2 - 1 / (12 * w + 1)) / (24 * w) - w) * std::sqrt(TwoPi * w) * std::pow(w, w);
}

namespace {

// Gamma(a + b)/(Gamma(a + 1) Gamma(b)), without the constant of the logarithms. A simulated test
// asks again and again for the two orders of one pair.
f64 GammaRatio(f32 a, f32 b) {
    struct Kept {
        f32 A = std::numeric_limits<f32>::quiet_NaN();
        f32 B = 0;
        f64 Ratio = 0;
    };
    static std::array<Kept, 2> kept;
    Kept& last = kept[a < b ? 1 : 0];
    if (last.A == a && last.B == b)
        return last.Ratio;
    const f64 logarithm = f64{LogGammaStar(Single(f64{a} + f64{b}))} -
                          f64{LogGammaStar(Single(f64{a} + 1))} - f64{LogGammaStar(b)};
    const f64 ratio = ExpClamped64(logarithm);
    // What has raised a fault raises it the next time as well.
    if (std::isfinite(logarithm))
        last = {a, b, ratio};
    return ratio;
}

} // namespace

f32 BetaInc(f32& x32, f32 a32, f32 b32) {
    x32 = MaxSingle(x32, 1e-5F);
    const f64 x = x32;
    const f64 a = a32;
    const f64 b = b32;
    if ((a + 1) / (a + b + 2) < x) {
        f32 mirrored = Single(1 - x);
        return Single(1 - f64{BetaInc(mirrored, b32, a32)});
    }
    const f64 p = Single(a + 2);
    const f64 q = Single(b + 2);
    f32 A1 = 1;
    f32 A2 = 1;
    f32 B1 = 0;
    f32 B2 = 1;
    f32 R2 = 0;
    f64 m = 0;
    do {
        const f64 d = Single((q + p + m) * (p + m) * x / (2 * m + p) / (2 * m + p + 1));
        const f32 A3 = Single(f64{A2} - d * f64{A1});
        const f32 B3 = Single(f64{B2} - d * f64{B1});
        m += 1;
        const f64 e = Single((q - m) * m * x / (2 * m + p - 1) / (2 * m + p));
        const f32 A4 = Single(e * f64{A2} + f64{A3});
        const f32 B4 = Single(e * f64{B2} + f64{B3});
        if (A3 == 0 || A4 == 0)
            break;
        const f32 R1 = Single(f64{B3} / f64{A3});
        R2 = Single(f64{B4} / f64{A4});
        A1 = A3;
        B1 = B3;
        A2 = A4;
        B2 = B4;
        // In 32 bits a ratio within 1e-10 of 1 is equality.
        if (R1 == R2)
            break;
    } while (m <= 25);
    const f64 k1 = Single((a + b) * x / (a + 1));
    const f64 k2 = Single((a + b + 1) * x / p);
    const f64 y = 1 - x;
    f64 f = Single(((a + b + 3) * y * f64{R2} - p) * (a + b + 2) * y / (b + 1));
    f = Single((f - p) * k2 / b);
    f = Single((f + 1) * k1 + 1);
    return Single(std::pow(x, a) * std::pow(y, b) * f * GammaRatio(a32, b32) / std::sqrt(TwoPi));
}

// --- Student's t ------------------------------------------------------------------------------

f32 TCdf(f32 t, f32 df) {
    f32 x = Single(f64{df} / (f64{t} * f64{t} + f64{df}));
    const f32 i = BetaInc(x, df / 2, 0.5F) / 2;
    return t < 0 ? i : Single(1 - f64{i});
}

f32 TInv(f32 p, f32 df) {
    if (df <= 1)
        return Single(std::tan((f64{p} - 0.5) * Pi));
    const f64 z = NorInv(p);
    const f64 s = Single(z * z);
    const f64 g1 = Single((s + 1) / 4);
    const f64 g2 = Single(((5 * s + 16) * s + 3) / 96);
    const f64 g3 = Single((((3 * s + 19) * s + 17) * s - 15) / 384);
    const f64 g4 = Single(((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160);
    const f64 nu = df;
    return Single(z * (1 + (g1 + (g2 + (g3 + g4 / nu) / nu) / nu) / nu));
}

f32 NcTCdf(f32 t, f32 df, f32 delta) {
    const f64 x = t;
    const f64 nu = df;
    return NorCdf(Single((x * (1 - 1 / (4 * nu)) - f64{delta}) / std::sqrt(1 + x * x / (2 * nu))));
}

// --- Chi-square -------------------------------------------------------------------------------

namespace {

// The w in (0, 1) at which a tail that grows with w reaches the target.
template <class Tail>
f64 BisectTail(f32 target, Tail&& tail) {
    f32 low = 0;
    f32 high = 1;
    f32 w = 0.5F;
    f32 previous = 0;
    do {
        if (tail(f64{w}) <= target)
            low = w;
        else
            high = w;
        previous = w;
        w = Single((f64{low} + f64{high}) / 2);
    } while (std::fabs(f64{w} - f64{previous}) > 1e-5 * f64{w});
    return w;
}

// The standard normal value of a chi-square value by Wilson and Hilferty; h is 2/(9 df).
f32 WilsonHilferty(f64 x, f64 df, f64 h) {
    return Single((std::cbrt(x / df) - (1 - h)) / std::sqrt(h));
}

f32 Chi2UpperTail(f32 df32, f32 chi2) {
    const f64 x = chi2;
    const f64 df = df32;
    if (x == 0)
        return 1;
    if (df > 40)
        return NorUpperTail(WilsonHilferty(x, df, Single(2 / (9 * df))));
    const bool odd = Int(df) != 2 * Int(df / 2);
    f32 p = 0;
    f32 term = 0;
    if (odd) {
        p = Single(2 * f64{NorUpperTail(Single(std::sqrt(x)))});
        term = Single(0.3989422804 * std::exp(-x / 2) / std::sqrt(x));
    } else {
        p = Single(std::exp(-x / 2));
        term = Single(std::exp(-x / 2) / 2);
    }
    for (i16 i = odd ? 1 : 2; i <= df - 1; i = static_cast<i16>(i + 2)) {
        term = Single(f64{term} * x / i);
        p = Single(f64{p} + 2 * f64{term});
    }
    return p;
}

} // namespace

void Chi2Tail(i16 mode, f32 df, f32& chi2, f32& p) {
    if (mode == 1)
        p = Chi2UpperTail(df, chi2);
    if (mode != 2)
        return;
    if (df == 1) {
        p = p / 2;
        const f64 z = NorUpperQuantile(p);
        chi2 = Single(z * z);
    } else if (df == 2)
        chi2 = Single(-2 * std::log(f64{p}));
    else
        chi2 = Single(
            1 / BisectTail(p, [df](f64 w) { return Chi2UpperTail(df, Single(1 / w - 1)); }) - 1);
}

f32 Chi2Cdf(f32 x, f32 df) {
    if (x <= 1e-10F)
        return 0;
    if (df <= 0)
        return 1;
    if (df <= 21)
        return FCdf(Single(f64{x} / f64{df}), df, 10000.0F);
    return NorCdf(WilsonHilferty(f64{x}, f64{df}, 2 / (9 * f64{df})));
}

f32 Chi2Inv(f32 p, f32 df) {
    f32 tail = Single(1 - f64{p});
    if (df <= 10) {
        f32 chi2 = 0;
        Chi2Tail(2, df, chi2, tail);
        return chi2;
    }
    f32 many = 999999.0F;
    f32 nu = df;
    return Single(f64{df} / f64{FInv(tail, many, nu)});
}

namespace {

// The sum of cdf(i), i = 0 to 100, weighted with the Poisson probabilities of mean h.
template <class Cdf>
f64 PoissonMixture(f64 h, Cdf&& cdf) {
    constexpr i16 lastTerm = 100;
    constexpr f64 negligible = 0x1p-55;
    const f64 none = std::exp(-h);
    f64 power = 1;
    f64 sum = 0;
    for (i16 i = 0; i <= lastTerm; ++i) {
        const f64 weight = power * none / Factorial(i);
        // From here on no term is large enough to change the sum in 64 bits.
        if (i > h && weight < sum * negligible)
            break;
        sum += weight * f64{cdf(i)};
        power *= h;
    }
    return sum;
}

} // namespace

f32 NcChi2Cdf(f32 x, f32 df, f32 lambda) {
    if (x <= 0)
        return 0;
    const f64 nu = df;
    if (nu > 10 || lambda > 50) {
        const f64 r = Single(f64{lambda} / (nu + f64{lambda}));
        return Chi2Cdf(Single(f64{x} / (1 + r)), Single((nu + f64{lambda}) / (1 + r)));
    }
    return Single(
        PoissonMixture(f64{lambda} / 2, [x, nu](i16 i) { return Chi2Cdf(x, Single(nu + 2 * i)); }));
}

// --- F ----------------------------------------------------------------------------------------

namespace {

f32 FUpperTail(f32 df1, f32 df2, f32 f) {
    const f64 x = Single(f64{df2} / (f64{df1} * f64{f} + f64{df2}));
    const f64 y = Single(std::sqrt(1 - x));
    const bool odd1 = Int(f64{df1}) != 2 * Int(f64{df1} / 2);
    const bool odd2 = Int(f64{df2}) != 2 * Int(f64{df2} / 2);
    const int e1 = odd1 ? 1 : 2;
    const int e2 = odd2 ? 1 : 2;
    f32 p = 0;
    f32 term = 0;
    if (odd1 && odd2) {
        p = Single(1 - 2 / Pi * std::atan(y / std::sqrt(x)));
        term = Single(y * std::sqrt(x) / Pi);
    } else if (odd2) {
        p = Single(std::sqrt(x));
        term = Single((1 - x) * std::sqrt(x) / 2);
    } else if (odd1) {
        p = Single(1 - y);
        term = Single(y * x / 2);
    } else {
        p = Single(x);
        term = Single((1 - x) * x);
    }
    // Both sums also end where a term is too small to matter; the second goes on from the place u
    // where the first ended, even when that was too early.
    const auto add = [&p, &term](f64 sign, int first, f32 last, int factor, f64 share) {
        int i = first;
        while (static_cast<f32>(i) < last) {
            const f64 step = 2 * f64{term} / i;
            if (std::fabs(step) < 1e-5 * f64{p})
                break;
            p = Single(f64{p} + sign * step);
            term = Single((static_cast<f64>(factor) / i + 1) * share * f64{term});
            i += 2;
        }
        return i;
    };
    const int u = add(-1, e2, df2, e1, x);
    add(1, e1, df1, u, 1 - x);
    return p;
}

// F in Paulson's form at the upper tail p.
f32 PaulsonQuantile(f32 df1, f32 df2, f32 p) {
    const f64 z = NorUpperQuantile(p);
    const f64 a = Single(2 / (9 * f64{df1}));
    const f64 b = Single(2 / (9 * f64{df2}));
    const f64 root = std::sqrt((1 - a) * (1 - a) * b + (1 - b) * (1 - b) * a - a * b * z * z);
    const f64 cubeRoot = ((1 - a) * (1 - b) + z * root) / ((1 - b) * (1 - b) - b * z * z);
    return Single(cubeRoot * cubeRoot * cubeRoot);
}

} // namespace

void FTail(i16 mode, f32 df1, f32 df2, f32& f, f32& p) {
    if (mode == 1)
        p = FUpperTail(df1, df2, f);
    if (mode != 2)
        return;
    if (df1 > 30 && df2 > 30) {
        f = PaulsonQuantile(df1, df2, p);
        return;
    }
    const auto value = [df1, df2](f64 w) { return Single((1 / w - 1) * f64{df2} / f64{df1}); };
    f = value(BisectTail(p, [&](f64 w) { return FUpperTail(df1, df2, value(w)); }));
}

f32 FCdf(f32 value, f32 df1, f32 df2) {
    const f64 f = value;
    const f64 nu1 = df1;
    const f64 nu2 = df2;
    f32 x = Single(nu2 / (f * nu1 + nu2));
    if (f < 0 || x <= 0)
        return 0;
    if (df1 > 10 && df2 > 10 && (df1 > 100 || df2 > 100)) {
        const f64 root = std::cbrt(f);
        return NorCdf(Single(((1 - 2 / (9 * nu2)) * root - (1 - 2 / (9 * nu1))) /
                             std::sqrt(2 * root * root / (9 * nu2) + 2 / (9 * nu1))));
    }
    return Single(1 - f64{BetaInc(x, df2 / 2, df1 / 2)});
}

namespace {

bool SmallDf(f32 df1, f32 df2) {
    return df1 <= 10 || df2 <= 10;
}

// A bisection over sums of up to 500 terms. The search for a size asks for the same quantiles again
// and again, above all for those of 999 degrees of freedom, and so do the points of a table: the
// last ones of each kind are remembered.
f32 FInvByTail(f32 p, f32 df1, f32 df2) {
    struct Quantile {
        f32 P = -1;
        f32 Df1 = 0;
        f32 Df2 = 0;
        f32 F = 0;
    };
    constexpr unsigned places = 1024;
    constexpr unsigned spread = 37;
    static std::array<Quantile, places> last;
    const unsigned place = static_cast<unsigned>(df1) * spread + static_cast<unsigned>(df2) +
                           std::bit_cast<unsigned>(p);
    Quantile& known = last[place % places];
    if (known.P != p || known.Df1 != df1 || known.Df2 != df2) {
        f32 tail = Single(1 - f64{p});
        known = {p, df1, df2, 0};
        FTail(2, df1, df2, known.F, tail);
    }
    return known.F;
}

// The quantile for whole df.
f32 FInvWhole(f32 p, f32 df1, f32 df2) {
    if (SmallDf(df1, df2)) {
        if (df1 <= 0.5F || df2 <= 0.5F)
            return static_cast<f32>(NoValue);
        return FInvByTail(p, df1, df2);
    }
    const f64 z = NorInv(p);
    const f64 g = Single((z * z - 3) / 6);
    const f64 inverse1 = 1 / (f64{df1} - 1);
    const f64 inverse2 = 1 / (f64{df2} - 1);
    const f64 h = Single(2 / (inverse1 + inverse2));
    const f64 w =
        Single(z * std::sqrt(h + g) / h - (inverse1 - inverse2) * (g + 5.0 / 6 - 2 / (3 * h)));
    return Single(ExpClamped64(2 * w));
}

} // namespace

f32 FInv(f32 p, f32& df1, f32& df2) {
    if (std::isnan(df1) || std::isnan(df2))
        return static_cast<f32>(NoValue);
    if (SmallDf(df1, df2)) {
        df1 = MinSingle(df1, 999);
        df2 = MinSingle(df2, 999);
    }
    const f32 w1 = FracPart(df1);
    const f32 w2 = FracPart(df2);
    if (w1 == 0 && w2 == 0)
        return FInvWhole(p, df1, df2);
    f32 low1 = Single(Int(f64{df1}));
    f32 high1 = Single(f64{low1} + 1);
    f32 low2 = Single(Int(f64{df2}));
    f32 high2 = Single(f64{low2} + 1);
    if (w1 == 0) {
        const f32 atLow = FInv(p, df1, low2);
        const f32 atHigh = FInv(p, df1, high2);
        return InterpLinear(atLow, atHigh, w2);
    }
    if (w2 == 0) {
        const f32 atLow = FInv(p, low1, df2);
        const f32 atHigh = FInv(p, high1, df2);
        return InterpLinear(atLow, atHigh, w1);
    }
    const auto corner = [p](f32 nu1, f32 nu2) { return FInv(p, nu1, nu2); };
    return InterpLinear(InterpLinear(corner(low1, low2), corner(high1, low2), w1),
                        InterpLinear(corner(low1, high2), corner(high1, high2), w1), w2);
}

f32 NcFCdf(f32 f, f32 df1, f32 df2, f32& lambda32) {
    if (f <= 0)
        return 0;
    lambda32 = MaxSingle(lambda32, 1e-5F);
    const f64 lambda = lambda32;
    const f64 nu1 = df1;
    const f64 scaled = f64{f} * nu1;
    if ((df1 > 10 && df2 > 10) || lambda > 50) {
        const f64 sum = lambda + nu1;
        return FCdf(Single(scaled / sum), Single(sum * sum / (2 * lambda + nu1)), df2);
    }
    f32 w = Single(scaled / (scaled + f64{df2}));
    return Single(PoissonMixture(lambda / 2,
                                 [&](i16 i) { return BetaInc(w, Single(nu1 / 2 + i), df2 / 2); }));
}

// --- Interpolation ----------------------------------------------------------------------------

f32 FracPart(f32 x) {
    return Single(f64{x} - Int(f64{x}));
}

f32 InterpLinear(f32 a, f32 b, f32 w) {
    return Single((1 - f64{w}) * f64{a} + f64{w} * f64{b});
}

} // namespace quorvanta
