#include "numeric/randdist.h"

#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/general.h"
#include "numeric/fastlog.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"
#include "numeric/variateblocks.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvanta {

Array1<f32> RandSample;
Array1<f32> RandSample2;
f32 SimDistrPar;

namespace {

// Guards that several generators share.
constexpr f64 NormalGuard = 0.0000000001;
constexpr f64 LognormalGuard = 0.00000001;
constexpr f64 OneGuarded = 1.0000000001; // of exponential times
constexpr f64 OneGuardedWeibull = 1.000000001;
constexpr f64 OneGuardedSum = 1.00000001; // of exponential terms of a sum
constexpr f64 HazardGuard = 0.00000001;

// Uniforms are drawn in blocks of this size and transformed in a loop of their own, which is
// vectorised.
constexpr std::size_t BlockSize = 128;

std::span<f32> ElementsOf(Array1<f32>& sample) {
    const std::span<f32> all = sample.Raw();
    if (all.empty())
        throw RunTimeError(Fault::BadIndex);
    return all.subspan(1);
}

// Calls action with one stretch of cells after another, none longer than limit.
template <class T, class Action>
void ForEachBlock(std::span<T> cells, std::size_t limit, Action&& action) {
    while (!cells.empty()) {
        const std::size_t size = std::min(limit, cells.size());
        action(cells.first(size));
        cells = cells.subspan(size);
    }
}

// Exponential variates with mean 1; one is 1 with the guard of the generator.
void DrawExponentials(std::span<f64> times, f64 one) {
    DrawUniforms(times);
    MakeExponentials(times, one);
}

// RandSample by a transform of one variate per element, drawn by drawBlock.
template <class DrawBlock, class Transform>
void Fill(DrawBlock&& drawBlock, Transform&& transform) {
    ForEachBlock(ElementsOf(RandSample), BlockSize, [&](std::span<f32> block) {
        std::array<f64, BlockSize> variates;
        drawBlock(std::span(variates).first(block.size()));
        for (std::size_t i = 0; i < block.size(); ++i)
            block[i] = Single(transform(variates[i]));
    });
}

template <class Transform>
void FillFromUniform(Transform&& transform) {
    Fill(DrawUniforms, transform);
}

template <class Transform>
void FillFromExponential(f64 one, Transform&& transform) {
    Fill([one](std::span<f64> times) { DrawExponentials(times, one); }, transform);
}

template <class Transform>
void FillFromNormal(f64 guard, Transform&& transform) {
    Fill([guard](std::span<f64> normals) { DrawNormals(normals, guard); }, transform);
}

} // namespace

void RandFromDistrCode(i16 n) {
    RandSample.ReDim(0, n);
    switch (SimDistrNo) {
    case SimUniform:
        return RandUniformCentred();
    case SimNormal:
        return RandNormal();
    case SimExponential:
        return RandExponential();
    case SimLaplace:
        return RandLaplace();
    case SimCauchy:
        return RandCauchy();
    case SimWeibull:
        return RandWeibull(SimDistrPar);
    case SimLogistic:
        return RandLogistic();
    case SimLognormal:
        if (SimDistrPar == 0)
            SimDistrPar = 0.00001F;
        return RandLognormal(SimDistrPar);
    case SimExtremeValue:
        return RandExtremeValue();
    case SimGamma:
        return RandGamma(SimDistrPar);
    case SimChi2:
        return RandChi2(SimDistrPar);
    default:
        return;
    }
}

// --- Continuous families ----------------------------------------------------------------------

void RandUniform01() {
    for (f32& cell : ElementsOf(RandSample))
        cell = Rnd();
}

void RandUniformCentred() {
    for (f32& cell : ElementsOf(RandSample))
        cell = Rnd() - 0.5F;
}

void RandNormal() {
    FillFromNormal(NormalGuard, [](f64 z) { return z; });
}

void RandExponential() {
    FillFromExponential(OneGuarded, [](f64 e) { return e; });
}

void RandLaplace() {
    const f64 ln2 = std::log(2.0);
    constexpr f64 Guard = 0.00001F;
    FillFromUniform([ln2](f64 u) {
        const f64 upper = -ln2 - FastLog(1.0 - u);
        const f64 lower = ln2 + FastLog(u + Guard);
        return u >= 0.5 ? upper : lower;
    });
}

void RandCauchy() {
    FillFromUniform([](f64 u) { return FastTan((u - 0.5) * Pi); });
}

void RandLogistic() {
    FillFromUniform([](f64 u) { return -FastLog(1.0 / (u + 0.00000001) - 1.0); });
}

void RandExtremeValue() {
    constexpr f64 Floor = 0.00001F;
    constexpr f64 Ceiling = 0.99999F;
    FillFromUniform([](f64 u) { return -FastLog(-FastLog(MinOf(MaxOf(u, Floor), Ceiling))); });
}

void RandWeibull(f32 shape) {
    const f64 r = Single(1.0 / shape);
    FillFromExponential(OneGuardedWeibull, [r](f64 e) { return FastPow(std::fabs(e), r); });
}

void RandLognormal(f32 shape) {
    const f64 r = Single(1.0 / shape);
    FillFromNormal(LognormalGuard,
                   [r](f64 z) { return FastExp(f64{MinSingle(Single(r * z), 75)}); });
}

namespace {

// The broken part d of a gamma shape, 0 < d < 1.
f64 DrawGammaBelowOne(f64 d) {
    constexpr f64 E = 2.71828F;
    constexpr f64 AcceptedAtOnce = 0.00001F;
    const f64 c = E / (d + E);
    for (;;) {
        const f64 u = Rnd();
        const f64 v = Rnd();
        const bool belowOne = u <= c;
        const f32 x =
            Single(belowOne ? FastPow(u / c, 1.0 / d) : 1.0 - FastLog((u - c) / (1.0 - c)));
        if (belowOne && x < AcceptedAtOnce)
            return x;
        const f64 power = FastPow(f64{x}, 1.0 - d);
        const f64 decay = FastExp(-f64{x});
        const f32 w = Single(belowOne ? v / power : v * decay);
        const f32 t = Single(decay / power);
        if (w <= t)
            return x;
    }
}

} // namespace

void RandGamma(f32 shape) {
    const i32 k = ToI32(Int(shape));
    const f32 d = Single(shape - Int(shape));
    for (f32& cell : ElementsOf(RandSample)) {
        f32 s = 0;
        for (i32 term = 1; term <= k; ++term)
            s = Single(s - FastLog(OneGuardedSum - Rnd()));
        cell = d > 0 ? Single(DrawGammaBelowOne(d) + s) : s;
    }
}

namespace {

// The cube root of a chi-square variate over its df is nearly normal with this mean and variance.
void FillByWilsonHilferty(f32 df) {
    const f64 f = df;
    const f64 c = Single(2.0 / 9.0 / f);
    const f64 rootC = std::sqrt(c);
    FillFromNormal(NormalGuard, [=](f64 normal) {
        const f64 z = Single(normal);
        const f64 root = 1.0 - c + z * rootC;
        return f * (root * root * root);
    });
}

} // namespace

void RandChi2(f32 df) {
    if (df > 30.0F)
        return FillByWilsonHilferty(df);
    const auto k = static_cast<std::size_t>(MaxInteger(ToI16(df), 0));
    const std::size_t limit = BlockSize / std::max(k, std::size_t{1});
    ForEachBlock(ElementsOf(RandSample), limit, [k](std::span<f32> block) {
        std::array<f64, BlockSize> normals;
        const auto terms = std::span(normals).first(k * block.size());
        DrawNormals(terms, NormalGuard);
        for (std::size_t i = 0; i < block.size(); ++i) {
            f32 s = 0;
            for (const f64 z : terms.subspan(k * i, k))
                s = Single(s + z * z);
            block[i] = s;
        }
    });
}

void RandBivNormal(f32 rho) {
    const f64 r = rho;
    const f64 residual = std::sqrt(1.0 - r * r);
    int i = 0;
    ForEachBlock(ElementsOf(RandSample), BlockSize / 2, [&](std::span<f32> block) {
        std::array<f64, BlockSize> normals;
        DrawNormals(std::span(normals).first(2 * block.size()), NormalGuard);
        for (std::size_t j = 0; j < block.size(); ++j) {
            const f32 z1 = Single(normals[2 * j]);
            const f32 z2 = Single(normals[2 * j + 1]);
            block[j] = z1;
            RandSample2(++i) = Single(z1 * r + z2 * residual);
        }
    });
}

void RandMultiNormal(const Array2<f64>& T, const Array2<f32>& M) {
    const int n = T.HighBound2();
    RandSample.ReDim(0, n);
    static std::vector<f64> z; // keeps its memory between replicates
    z.resize(RandSample.Raw().size());
    DrawNormals(std::span(z).subspan(1), NormalGuard);
    for (int i = 1; i <= n; ++i) {
        f32 s = 0;
        for (int j = 1; j <= n; ++j)
            s = Single(s + z[static_cast<std::size_t>(j)] * T(j, i));
        RandSample(i) = Single(f64{s} + M(i, 1));
    }
}

namespace {

// One event time under the hazards H; without an interval to draw in, the time before.
f32 DrawPiecewiseExp(const Array1<f32>& S, const Array1<f32>& H, f32 before) {
    f32 time = before;
    for (int j = 1; j < S.HighBound(); ++j) {
        const f64 start = S(j);
        const f64 e = -FastLog(OneGuarded - Rnd());
        const f32 d = Single(e / (H(j) + HazardGuard));
        time = Single(start + d);
        if (Single(S(j + 1) - start) > d)
            break;
    }
    return time;
}

} // namespace

void RandPiecewiseExp(const Array1<f32>& S, const Array1<f32>& H) {
    for (f32& cell : ElementsOf(RandSample))
        cell = DrawPiecewiseExp(S, H, cell);
}

void RandPiecewiseExpSized(i16 n, const Array1<f32>& S, const Array1<f32>& H) {
    RandSample.ReDim(0, n);
    RandPiecewiseExp(S, H);
}

// --- Survival studies -------------------------------------------------------------------------

void SurvivalRecord::ReDim(int n) {
    Entry.ReDim(1, n);
    Time.ReDim(1, n);
    Group.ReDim(1, n);
    Status.ReDim(1, n);
}

namespace {

// Entry times over an accrual period A of shape g.
class EntryTime {
  public:
    EntryTime(f32 A, f32 g) : A_(A), g_(g), accrued_(1.0 - ExpClamped(Single(-g_ * A_))) {}

    f32 Draw() const { return At(Rnd()); }

    // The entry time of a uniform number.
    f32 At(f64 u) const { return Single(g_ == 0 ? u * A_ : -FastLog(1.0 - accrued_ * u) / g_); }

    // Those of several, with the shape looked at once.
    void Fill(std::span<const f64> uniforms, std::span<f32> entries) const {
        if (g_ == 0)
            std::ranges::transform(uniforms, entries.begin(),
                                   [this](f64 u) { return Single(u * A_); });
        else
            std::ranges::transform(uniforms, entries.begin(), [this](f64 u) { return At(u); });
    }

  private:
    f64 A_;
    f64 g_;
    f64 accrued_; // share of an untruncated exponential that falls into the accrual period
};

// Which of two times comes first is anybody's guess: taken by their bits, without a jump.
f32 Chosen(bool first, f32 a, f32 b) {
    const std::uint32_t mask = 0U - static_cast<std::uint32_t>(first);
    return std::bit_cast<f32>((std::bit_cast<std::uint32_t>(a) & mask) |
                              (std::bit_cast<std::uint32_t>(b) & ~mask));
}

void SetLost(SurvivalRecord& record, int subject, f64 lossTime) {
    record.Time(subject) = Single(lossTime);
    record.Status(subject) = 1;
}

// n subjects after the first `before` ones of the record. The uniform numbers of a block of
// subjects are drawn in their order first, so that the logarithms are taken side by side.
void DrawGroup(i16 n, int before, f32 group, f32 scale, f32 laterScale, f32 lossRate,
               const EntryTime& entry, SurvivalRecord& record) {
    if (n <= 0)
        return;
    RandFromDistrCode(n);
    const auto drawn = RandSample.Raw().subspan(1);
    const auto part = [first = static_cast<std::size_t>(before), size = drawn.size()](auto& field) {
        return field.Raw().subspan(first, size);
    };
    const auto entries = part(record.Entry);
    const auto times = part(record.Time);
    const auto status = part(record.Status);
    std::ranges::fill(part(record.Group), group);
    const bool hasLosses = lossRate > 0;
    const f64 rate{lossRate};
    std::array<f64, BlockSize> entryDraws;
    std::array<f64, BlockSize> lossTimes;
    for (std::size_t begin = 0; begin < drawn.size(); begin += BlockSize) {
        const std::size_t size = std::min(BlockSize, drawn.size() - begin);
        const auto entryBlock = std::span(entryDraws).first(size);
        const auto lossBlock = std::span(lossTimes).first(size);
        if (hasLosses) {
            DrawUniformPairs(entryBlock, lossBlock);
            MakeExponentials(lossBlock, OneGuarded);
            for (f64& time : lossBlock)
                time /= rate;
        } else {
            DrawUniforms(entryBlock);
            std::ranges::fill(lossBlock, 0.0);
        }
        entry.Fill(entryBlock, entries.subspan(begin, size));
        for (std::size_t i = 0; i < size; ++i) {
            const f32 eventTime = Single(f64{drawn[begin + i]} * scale);
            const bool isLost = hasLosses && lossTimes[i] < f64{eventTime};
            times[begin + i] =
                Chosen(isLost, Single(lossTimes[i]), Single(f64{eventTime} * laterScale));
            status[begin + i] = static_cast<i16>(status[begin + i] | i16{isLost});
        }
    }
}

void DrawPiecewiseGroup(i16 n, int before, f32 group, const Array1<f32>& S, const Array1<f32>& H,
                        const Array1<f32>& Q, const EntryTime& entry, SurvivalRecord& record) {
    if (n <= 0)
        return;
    RandPiecewiseExpSized(n, S, H);
    for (int i = 1; i <= n; ++i) {
        const int subject = before + i;
        record.Entry(subject) = entry.Draw();
        record.Time(subject) = RandSample(i);
        record.Group(subject) = group;
        const f32 lossTime = DrawPiecewiseExp(S, Q, 0);
        if (lossTime < RandSample(i))
            SetLost(record, subject, lossTime);
    }
}

} // namespace

void SimSurvivalTwoGroups(i16 n1, i16 n2, f32 f1, f32 f2, f32 f3, f32 L1, f32 L2, f32 A, f32 g,
                          SurvivalRecord& record) {
    const EntryTime entry(A, g);
    DrawGroup(n1, 0, 1.0F, f1, 1.0F, L1, entry, record);
    DrawGroup(n2, n1, 2.0F, f2, f3, L2, entry, record);
}

void SimSurvivalPiecewise(i16 n1, i16 n2, const Array1<f32>& S, const Array1<f32>& H0,
                          const Array1<f32>& H1a, const Array1<f32>& H1b, bool IsH1,
                          const Array1<f32>& Q1, const Array1<f32>& Q2, f32 A, f32 g,
                          SurvivalRecord& record) {
    const EntryTime entry(A, g);
    DrawPiecewiseGroup(n1, 0, 1.0F, S, IsH1 ? H1a : H0, Q1, entry, record);
    DrawPiecewiseGroup(n2, n1, 2.0F, S, IsH1 ? H1b : H0, Q2, entry, record);
}

void TruncateAtStudyTime(i16 n, f32 t, const SurvivalRecord& record, Array1<f32>& OutTime,
                         Array1<f32>& OutGroup, Array1<i16>& OutCens) {
    if (n < 1)
        return;
    // The bounds, so that the loop may go over the bare cells.
    static_cast<void>(record.Entry(n));
    static_cast<void>(OutTime(n));
    const auto entries = record.Entry.Raw();
    const auto times = record.Time.Raw();
    const auto outTimes = OutTime.Raw();
    const auto outGroups = OutGroup.Raw();
    const auto outCens = OutCens.Raw();
    const auto groups = record.Group.Raw();
    const auto status = record.Status.Raw();
    int k = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i) {
        const f32 entry = entries[i];
        if (!(entry < t))
            continue;
        const bool isCut = entry + times[i] >= t;
        const auto at = static_cast<std::size_t>(k++);
        outTimes[at] = Chosen(isCut, t - entry, times[i]);
        outGroups[at] = groups[i];
        outCens[at] = static_cast<i16>(isCut | (status[i] & -static_cast<int>(!isCut)));
    }
    if (k == 0)
        return;
    OutTime.ReDimPreserve(k);
    OutGroup.ReDimPreserve(k);
    OutCens.ReDimPreserve(k);
}

// --- Counts -----------------------------------------------------------------------------------

void RandBinomial(i16 n, f32 p) {
    for (f32& cell : ElementsOf(RandSample)) {
        i16 count = 0;
        for (i16 trial = 0; trial < n; ++trial)
            count = static_cast<i16>(count + (Rnd() < p ? 1 : 0));
        cell = count;
    }
}

void RandPoisson(f32 lambda) {
    // The spacing of a rate of 0 would be infinite, or minus infinite for ever when U is 0.
    if (lambda == 0)
        throw RunTimeError(Fault::DivisionByZero);
    for (f32& cell : ElementsOf(RandSample)) {
        i32 k = -1;
        f64 s = 0;
        do {
            k = ToI16(k + 1.0);
            s -= FastLog(OneGuardedSum - Rnd()) / lambda;
        } while (!(s > 1.0));
        cell = static_cast<f32>(k);
    }
}

void RandHypergeometric(i16 N, i16 n, f32 p) {
    // P(X <= 0), P(X <= 1), ... as far as the draws have asked for them.
    static std::vector<f32> c; // keeps its memory between replicates
    c.clear();
    for (f32& cell : ElementsOf(RandSample)) {
        const f32 u = Rnd();
        while ((c.empty() || c.back() <= u) && static_cast<int>(c.size()) <= n) {
            const f64 density = HyperDensity(N, n, static_cast<i16>(c.size()), p);
            c.push_back(Single(c.empty() ? density : c.back() + density));
        }
        const auto x = std::ranges::upper_bound(c, u);
        if (x != c.end())
            cell = static_cast<f32>(x - c.begin());
    }
}

void RandMultinomial(i16 n, const Array1<f32>& P) {
    const int k = P.HighBound();
    static std::vector<f32> Cum; // (0..k); keeps its memory between replicates
    Cum.assign(1, 0.0F);
    for (int i = 1; i <= k; ++i)
        Cum.push_back(Single(f64{Cum.back()} + P(i)));
    for (i16 trial = 0; trial < n; ++trial) {
        const f32 u = Rnd();
        for (int i = 1; i <= k; ++i) {
            const auto category = static_cast<std::size_t>(i);
            if (u > Cum[category - 1] && u <= Cum[category]) {
                RandSample(i) += 1.0F;
                break;
            }
        }
    }
}

} // namespace quorvanta
