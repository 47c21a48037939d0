#include "multcomp/procedures.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/platform.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace quorvanta {

i16 PowerKind = DisjunctivePower;
i16 SerialGate = 0;
i16 ParallelGate = 0;
i16 NoOfTests = 0;
i16 NoOfMeans = 0;
FixedArray<i16, 1, MostAnalyses> NoOfFamilies;
FamilyArray<i16> FamilySize;
FamilyArray<i16> FamilyMethod;
FamilyArray<f32> FamilyLevel;
FamilyPositions<i16> FamilyTest;
FamilyPositions<f32> FamilyWeight;
FamilyPositions<f32> TestCrit;
FixedGrid<f32, 1, MostGroups, 1, MostTests> Contrast;
FixedArray<f32, 1, MostGroups> H1Means;
FixedArray<bool, 1, MostTests> TrueNull;
i16 NoOfFalseNull = 0;
i32 SimCount = 0;
FixedArray<FixedGrid<i32, 1, MostAnalyses, 1, MostFamilies>, 1, MostTests> RejectCount;

i16 GateCount() {
    return static_cast<i16>(SerialGate + ParallelGate);
}

// --- The plan -----------------------------------------------------------------------------------

namespace {

i16 CountOf(std::size_t count) {
    return static_cast<i16>(count);
}

f64 AtPosition(const std::vector<f32>& values, i16 position) {
    return values.at(static_cast<std::size_t>(position - 1));
}

void AddFamily(i16 k, const std::vector<i16>& tests, f64 level, i16 method) {
    const i16 f = ++NoOfFamilies(k);
    FamilySize(f, k) = CountOf(tests.size());
    FamilyMethod(f, k) = method;
    FamilyLevel(f, k) = Single(level);
    for (i16 t = 1; t <= FamilySize(f, k); ++t) {
        FamilyTest(t)(f, k) = tests[static_cast<std::size_t>(t - 1)];
        FamilyWeight(t)(f, k) = 1.0F / static_cast<f32>(FamilySize(f, k));
    }
}

void SetContrast(i16 test, i16 plus, i16 minus) {
    for (i16 i = 1; i <= MostGroups; ++i)
        Contrast(i, test) = 0;
    Contrast(plus, test) = 1;
    if (minus != 0)
        Contrast(minus, test) = -1;
}

constexpr i16 nothing = 0;

} // namespace

void McDefaultFamilies(const std::vector<f32>& levels, i16 method) {
    std::vector<i16> all;
    for (i16 test = 1; test <= NoOfTests; ++test)
        all.push_back(test);
    NoOfFamilies.Fill(0);
    for (i16 k = 1; k <= CountOf(levels.size()); ++k)
        AddFamily(k, all, AtPosition(levels, k), method);
}

namespace {

// The tests of each family that has some, by analysis.
using FamiliesOf = std::vector<std::vector<std::vector<i16>>>;

FamiliesOf InOrder(const std::vector<std::vector<i16>>& familyNo) {
    FamiliesOf families;
    for (const std::vector<i16>& ofTests : familyNo) {
        families.emplace_back();
        for (i16 number = 1; number <= MostFamilies; ++number) {
            std::vector<i16> tests;
            for (std::size_t i = 0; i < ofTests.size(); ++i)
                if (ofTests[i] == number)
                    tests.push_back(static_cast<i16>(i + 1));
            if (!tests.empty())
                families.back().push_back(tests);
        }
    }
    return families;
}

} // namespace

bool McHaveRoom(const std::vector<std::vector<i16>>& familyNo) {
    std::size_t combinations = 0;
    for (const auto& ofAnalysis : InOrder(familyNo))
        combinations += ofAnalysis.size();
    if (combinations <= static_cast<std::size_t>(MostFamilies))
        return true;
    ShowMessage("Number of Combinations of Interim and Final Analyses and Families Within an "
                "Analysis Must Not Exceed 9.");
    return false;
}

bool McSetUpFamilies(const std::vector<std::vector<i16>>& familyNo, const std::vector<f32>& levels,
                     i16 method) {
    if (!McHaveRoom(familyNo)) {
        Cancelled = True;
        return false;
    }
    NoOfFamilies.Fill(0);
    i16 k = 0;
    for (const auto& ofAnalysis : InOrder(familyNo)) {
        ++k;
        for (const std::vector<i16>& tests : ofAnalysis)
            AddFamily(k, tests, AtPosition(levels, k), method);
    }
    return true;
}

bool McStandardContrasts(i16 k) {
    NoOfMeans = k;
    NoOfTests = 0;
    switch (MultCompKind()) {
    case Comparison::ControlTest:
    case Comparison::NormalControlTest:
        for (i16 group = 2; group <= k; ++group)
            SetContrast(++NoOfTests, group, 1);
        return true;
    case Comparison::PairwiseTest:
    case Comparison::NormalPairwiseTest:
        if (NoOfComparisons(k) > MostTests) {
            ShowMessage("Number of Pair-wise Comparisons Exceeds 10.");
            Cancelled = True;
            return false;
        }
        for (i16 i = 1; i <= k; ++i)
            for (i16 j = static_cast<i16>(i + 1); j <= k; ++j)
                SetContrast(++NoOfTests, i, j);
        return true;
    default:
        for (i16 group = 1; group <= k; ++group)
            SetContrast(++NoOfTests, group, nothing);
        return true;
    }
}

bool McCheckPowerKind(i16 noOfInterim) {
    if (PowerKind != AveragePower || noOfInterim == 0)
        return true;
    ShowMessage("Average Power Is Calculated Only When No Interim Analyses.");
    Cancelled = True;
    return false;
}

// --- The true state -----------------------------------------------------------------------------

void McMarkNulls() {
    NoOfFalseNull = 0;
    for (i16 test = 1; test <= NoOfTests; ++test) {
        f64 effect = 0;
        f64 size = 0;
        for (i16 i = 1; i <= NoOfMeans; ++i) {
            const f64 term = f64{Contrast(i, test)} * f64{H1Means(i)};
            effect += term;
            size += std::fabs(term);
        }
        // Three thirds of a mean are no effect, though they don't add up to 0 in 32 bits.
        constexpr f64 rounding = 1e-6;
        TrueNull(test) = std::fabs(effect) <= rounding * size;
        NoOfFalseNull = static_cast<i16>(NoOfFalseNull + (TrueNull(test) ? 0 : 1));
    }
}

Array2<f64> McCovariance(i16 form, i16 dimension, f64 sd, f64 r) {
    Array2<f64> covariance(1, dimension, 1, dimension);
    for (i16 i = 1; i <= dimension; ++i) {
        f64 correlation = 1; // by multiplication: the same bits everywhere
        for (i16 j = i; j <= dimension; ++j) {
            covariance(i, j) = sd * sd * correlation;
            covariance(j, i) = covariance(i, j);
            correlation = form == 0 ? r : correlation * r;
        }
    }
    return covariance;
}

bool McCholesky(const Array2<f64>& covariance, Array2<f64>& factor) {
    const int d = covariance.HighBound1();
    factor.ReDim(1, d, 1, d);
    for (int i = 1; i <= d; ++i)
        for (int j = 1; j <= i; ++j) {
            f64 rest = covariance(i, j);
            for (int l = 1; l < j; ++l)
                rest -= factor(i, l) * factor(j, l);
            // A component that follows from those before it has none of its own.
            constexpr f64 rounding = 1e-12;
            if (i == j && rest < -rounding * covariance(i, i))
                return false;
            if (i == j)
                factor(i, j) = rest > rounding * covariance(i, i) ? std::sqrt(rest) : 0;
            else
                factor(i, j) = factor(j, j) == 0 ? 0 : rest / factor(j, j);
        }
    return true;
}

// --- Critical values ----------------------------------------------------------------------------

namespace {

// Those of one family, at the level that it is tested at.
void FamilyCrit(i16 f, i16 k, f32 df, f32 level) {
    const i16 size = FamilySize(f, k);
    FamilyGroups = NoOfMeans;
    for (i16 t = 1; t <= size; ++t) {
        WeightedLevel = Single(f64{FamilyWeight(t)(f, k)} * f64{level});
        TestCrit(t)(f, k) = McCritValue(t, size, df, Single(1 - f64{level}), FamilyMethod(f, k));
    }
}

// Levels that a family was handed, with its critical values there: there are few of them, and a
// quantile takes as long as a thousand decisions.
struct HandedLevel {
    i16 F;
    i16 K;
    f32 Df;
    f32 Level;
    FixedArray<f32, 1, MostTests> Crit;
};
std::vector<HandedLevel> handedLevels;

void HandedCrit(i16 f, i16 k, f32 df, f32 level) {
    for (const HandedLevel& kept : handedLevels)
        if (kept.F == f && kept.K == k && kept.Df == df && kept.Level == level) {
            for (i16 t = 1; t <= FamilySize(f, k); ++t)
                TestCrit(t)(f, k) = kept.Crit(t);
            return;
        }
    FamilyCrit(f, k, df, level);
    constexpr std::size_t most = 200;
    if (handedLevels.size() == most)
        handedLevels.clear();
    HandedLevel& kept = handedLevels.emplace_back(HandedLevel{f, k, df, level, {}});
    for (i16 t = 1; t <= FamilySize(f, k); ++t)
        kept.Crit(t) = TestCrit(t)(f, k);
}

} // namespace

void McAllCrit(const std::vector<f32>& df) {
    handedLevels.clear();
    for (i16 k = 1; k <= CountOf(df.size()); ++k)
        for (i16 f = 1; f <= NoOfFamilies(k); ++f)
            FamilyCrit(f, k, Single(AtPosition(df, k)), FamilyLevel(f, k));
}

// --- One data set -------------------------------------------------------------------------------

namespace {

// An estimate in its standard errors.
f32 Turned(f64 estimate, f64 error) {
    constexpr f64 beyond = 1e30; // of all critical values
    const f64 size = std::fabs(estimate) < beyond * error ? std::fabs(estimate) / error : beyond;
    if (NoOfTails != OneSided)
        return Single(size);
    const bool isLow = (estimate < 0) != (LeftTail == True);
    return Single(isLow ? -size : size);
}

} // namespace

void McGroupStatistics(const std::vector<f64>& means, const std::vector<f64>& sizes, f64 within,
                       Array1<f32>& z) {
    f64 total = 0;
    for (const f64 size : sizes)
        total += size;
    const f64 sd = std::sqrt(within / (total - static_cast<f64>(means.size())));
    for (i16 test = 1; test <= NoOfTests; ++test) {
        f64 estimate = 0;
        f64 variance = 0;
        for (std::size_t i = 0; i < means.size(); ++i) {
            const f64 c{Contrast(static_cast<i16>(i + 1), test)};
            if (c == 0)
                continue;
            estimate += c * means[i];
            variance += c * c / sizes[i];
        }
        z(test) = Turned(estimate, std::sqrt(variance) * sd);
    }
}

void McVectorStatistics(const std::vector<f64>& means, const Array2<f64>& covariance, f64 n,
                        Array1<f32>& z) {
    const auto d = CountOf(means.size());
    for (i16 test = 1; test <= NoOfTests; ++test) {
        f64 estimate = 0;
        f64 variance = 0;
        for (i16 i = 1; i <= d; ++i) {
            const f64 c{Contrast(i, test)};
            if (c == 0)
                continue;
            estimate += c * means[static_cast<std::size_t>(i - 1)];
            for (i16 j = 1; j <= d; ++j)
                variance += c * f64{Contrast(j, test)} * covariance(i, j);
        }
        z(test) = Turned(estimate, std::sqrt(MaxOf(variance, 0) / n));
    }
}

namespace {

// Which tests earlier analyses of the trial have rejected.
FixedArray<bool, 1, MostTests> rejectedBefore;

// The families of one analysis, one after the other.
class Analysis {
  public:
    Analysis(const Array1<f32>& z, i16 k, f32 df) : k_(k), df_(df) {
        constexpr f32 beyond = 1e30F;
        for (i16 test = 1; test <= NoOfTests; ++test)
            z_(test) = rejectedBefore(test) ? beyond : z(test);
    }

    McDecision Decide() {
        f32 level = 0; // handed on by the family before
        for (i16 f = 1; f <= NoOfFamilies(k_); ++f) {
            if (f > 1 && ParallelGate == 1)
                HandedCrit(f, k_, df_, MinSingle(level, FamilyLevel(f, k_)));
            const Passed passed = DecideFamily(f);
            if (GateCount() == 0)
                continue;
            if (passed.Rejected == 0 || (SerialGate == 1 && passed.Rejected < FamilySize(f, k_)))
                break;
            level = Single((NoOfTails == OneSided ? 1 : 2) * passed.Spent);
        }
        for (i16 test = 1; test <= NoOfTests; ++test)
            if (rejectedBefore(test) && !decision_.Rejected(test))
                Reject(test, 0);
        return decision_;
    }

  private:
    struct Passed {
        i16 Rejected = 0;
        f64 Spent = 0; // the errors of the tests that were rejected
    };

    // The order in which a method looks at its tests: a step-down procedure from the largest
    // statistic, a step-up one from the smallest.
    void Order(i16 f) {
        const i16 size = FamilySize(f, k_);
        const i16 method = FamilyMethod(f, k_);
        for (i16 t = 1; t <= size; ++t)
            tests_(t) = FamilyTest(t)(f, k_);
        if (method != Adjust::Holm && method != Adjust::Hochberg)
            return;
        // By insertion: a handful of tests, equal ones in their own order.
        const bool down = method == Adjust::Holm;
        for (i16 t = 2; t <= size; ++t)
            for (i16 s = t; s > 1; --s) {
                const f32 before = z_(tests_(s - 1));
                const f32 here = z_(tests_(s));
                if (down ? here <= before : here >= before)
                    break;
                std::swap(tests_(s), tests_(s - 1));
            }
    }

    Passed DecideFamily(i16 f) {
        Order(f);
        const i16 size = FamilySize(f, k_);
        const i16 method = FamilyMethod(f, k_);
        const bool endsAtAcceptance = method == Adjust::Sequence || method == Adjust::Holm;
        Passed passed;
        for (i16 t = 1; t <= size; ++t) {
            const f32 crit = TestCrit(t)(f, k_);
            if (rejectedBefore(tests_(t)) || z_(tests_(t)) > crit) {
                passed.Spent += 1 - f64{NorCdf(crit)};
                const i16 last = method == Adjust::Hochberg ? size : t;
                for (i16 s = t; s <= last; ++s)
                    Reject(tests_(s), f);
                passed.Rejected = static_cast<i16>(passed.Rejected + last - t + 1);
                if (last == size)
                    break;
            } else if (endsAtAcceptance) {
                break;
            }
        }
        return passed;
    }

    void Reject(i16 test, i16 f) {
        rejectedIn_(test) = f;
        decision_.Rejected(test) = true;
        i16& count = TrueNull(test) ? decision_.TrueRejected : decision_.FalseRejected;
        ++count;
    }

  public:
    // The family in which a test was rejected; 0: it was not.
    i16 RejectedIn(i16 test) const { return rejectedIn_(test); }

  private:
    FixedArray<f32, 1, MostTests> z_;
    i16 k_;
    f32 df_;
    FixedArray<i16, 1, MostTests> tests_;
    FixedArray<i16, 1, MostTests> rejectedIn_;
    McDecision decision_;
};

f64 ResultUnderH1(const McDecision& decision) {
    if (NoOfFalseNull == 0)
        return 1;
    switch (PowerKind) {
    case DisjunctivePower:
        return decision.FalseRejected > 0 ? 0 : 1;
    case ConjunctivePower:
        return decision.FalseRejected == NoOfFalseNull ? 0 : 1;
    default:
        return -100.0 * decision.FalseRejected / NoOfFalseNull;
    }
}

} // namespace

McDecision McRunOne(const Array1<f32>& z, i16 k, f32 df, i16 mode) {
    if (k == 1) {
        SimCount += mode == UnderH1 ? 1 : 0;
        rejectedBefore.Fill(false);
    }
    Analysis analysis(z, k, df);
    McDecision decision = analysis.Decide();
    for (i16 test = 1; test <= NoOfTests; ++test) {
        const bool isNew = decision.Rejected(test) && !rejectedBefore(test);
        if (isNew && TrueNull(test) == (mode == UnderH0))
            ++RejectCount(test)(k, analysis.RejectedIn(test));
        rejectedBefore(test) = decision.Rejected(test);
    }
    const i16 rejected = static_cast<i16>(decision.TrueRejected + decision.FalseRejected);
    const i16 errors = NoOfFalseNull == NoOfTests ? rejected : decision.TrueRejected;
    decision.Stop = (PowerKind == DisjunctivePower && rejected > 0) ||
                    (PowerKind == ConjunctivePower && rejected == NoOfTests);
    decision.Result = mode == UnderH0 ? (errors > 0 ? 0.0 : 1.0) : ResultUnderH1(decision);
    return decision;
}

// --- Counts -------------------------------------------------------------------------------------

void McClearCounts() {
    SimCount = 0;
    for (i16 test = 1; test <= MostTests; ++test)
        RejectCount(test).Fill(0);
}

namespace {

std::string ShareText(i32 count, bool dashes) {
    if (dashes && count == 0)
        return "     --";
    return Format(SimCount == 0 ? 0.0 : static_cast<f64>(count) / SimCount, "0.0000");
}

std::string HeadOf(i16 k, i16 f, i16 analyses) {
    const std::string head = k == analyses ? "Final      " : "Interim" + std::to_string(k);
    return NoOfFamilies(k) == 1 ? head : head + "/" + "Family" + std::to_string(f);
}

} // namespace

McTable McShowResult(i16 analyses) {
    McTable table;
    table.Rows.resize(static_cast<std::size_t>(NoOfTests));
    const bool isSingle = GateCount() == 0 && analyses == 1;
    for (i16 k = 1; k <= analyses; ++k)
        for (i16 f = 1; f <= NoOfFamilies(k); ++f) {
            table.Heads.push_back(isSingle ? "" : HeadOf(k, f, analyses));
            for (i16 test = 1; test <= NoOfTests; ++test)
                table.Rows[static_cast<std::size_t>(test - 1)].push_back(
                    ShareText(RejectCount(test)(k, f), !isSingle));
        }
    if (isSingle)
        return table;
    table.Heads.emplace_back("Over-All");
    for (i16 test = 1; test <= NoOfTests; ++test) {
        i32 all = 0;
        for (i16 k = 1; k <= analyses; ++k)
            for (i16 f = 1; f <= NoOfFamilies(k); ++f)
                all += RejectCount(test)(k, f);
        table.Rows[static_cast<std::size_t>(test - 1)].push_back(ShareText(all, true));
    }
    return table;
}

} // namespace quorvanta
