// The simulated survival studies: draws by replay, and probabilities of event and loss against
// their closed forms.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "support/fit.h"
#include "support/statistics.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <numbers>
#include <vector>

namespace quorvanta {
namespace {

using checks::ExpectContinuousFit;
using checks::ExpectShare;

void Restart() {
    Rnd(-11.0);
    Randomize(11.0);
}

f64 Exponential() {
    return -std::log(1.0000000001 - static_cast<f64>(Rnd()));
}

Array1<f32> Cells(std::initializer_list<f32> values) {
    Array1<f32> cells(1, static_cast<int>(values.size()));
    std::ranges::copy(values, cells.Raw().begin());
    return cells;
}

void ExpectSubject(const SurvivalRecord& record, int i, f64 entry, f64 time, int group,
                   int status) {
    SCOPED_TRACE(i);
    EXPECT_FLOAT_EQ(record.Entry(i), static_cast<f32>(entry));
    EXPECT_FLOAT_EQ(record.Time(i), static_cast<f32>(time));
    EXPECT_EQ(record.Group(i), static_cast<f32>(group));
    EXPECT_EQ(record.Status(i), status);
}

// --- Order of draws ---------------------------------------------------------------------------

// All events of a group first, then for each subject entry and, with a positive rate, loss. The
// loss of group 2 is compared with the time before its second factor.
TEST(SurvivalRecord, TwoGroupsDrawInOrder) {
    constexpr int n1 = 40;
    constexpr int n2 = 30;
    SimDistrNo = SimExponential;
    for (const bool withLoss : {true, false}) {
        const f64 L1 = withLoss ? 0.5F : 0.0F;
        const f64 L2 = withLoss ? 0.25F : 0.0F;
        SurvivalRecord record;
        record.ReDim(n1 + n2);
        Restart();
        SimSurvivalTwoGroups(n1, n2, 1.5F, 2.0F, 3.0F, static_cast<f32>(L1), static_cast<f32>(L2),
                             2.5F, 0.75F, record);
        const f32 next = Rnd();
        Restart();
        const auto replayGroup = [&record](int before, int n, int group, f64 scale, f64 later,
                                           f64 loss) {
            std::vector<f32> events;
            for (int i = 0; i < n; ++i)
                events.push_back(static_cast<f32>(Exponential()));
            for (int i = 1; i <= n; ++i) {
                const f64 accrued = 1.0 - std::exp(-0.75 * 2.5);
                const f64 entry = -std::log(1.0 - accrued * static_cast<f64>(Rnd())) / 0.75;
                const f32 x = static_cast<f32>(events[static_cast<std::size_t>(i - 1)] * scale);
                const f64 y = loss > 0 ? Exponential() / loss : 1.0e30;
                ExpectSubject(record, before + i, entry, y < x ? y : x * later, group,
                              y < x ? 1 : 0);
            }
        };
        replayGroup(0, n1, 1, 1.5, 1.0, L1);
        replayGroup(n1, n2, 2, 2.0, 3.0, L2);
        EXPECT_EQ(Rnd(), next);
    }
}

TEST(SurvivalRecord, PiecewiseGroupsDrawInOrder) {
    constexpr int n1 = 30;
    constexpr int n2 = 40;
    const auto S = Cells({0.0F, 1.0F, 2.0F});
    const auto H0 = Cells({0.3F, 0.6F, 9.0F});
    const auto H1a = Cells({0.4F, 0.1F, 9.0F});
    const auto H1b = Cells({0.9F, 0.2F, 9.0F});
    const auto Q1 = Cells({0.1F, 0.5F, 9.0F});
    const auto Q2 = Cells({0.2F, 0.0F, 9.0F});
    const auto piecewise = [&S](const Array1<f32>& H) {
        f32 time = 0;
        for (int j = 1; j <= 2; ++j) {
            const f32 d = static_cast<f32>(Exponential() / (H(j) + 1.0e-8));
            time = S(j) + d;
            if (S(j + 1) - S(j) > d)
                break;
        }
        return time;
    };
    for (const bool IsH1 : {true, false}) {
        SurvivalRecord record;
        record.ReDim(n1 + n2);
        Restart();
        SimSurvivalPiecewise(n1, n2, S, H0, H1a, H1b, IsH1, Q1, Q2, 2.0F, 0.0F, record);
        const f32 next = Rnd();
        Restart();
        const auto replayGroup = [&](int before, int n, int group, const Array1<f32>& H,
                                     const Array1<f32>& Q) {
            std::vector<f32> events;
            for (int i = 0; i < n; ++i)
                events.push_back(piecewise(H));
            for (int i = 1; i <= n; ++i) {
                const f64 entry = Rnd() * 2.0;
                const f32 x = events[static_cast<std::size_t>(i - 1)];
                const f32 y = piecewise(Q);
                ExpectSubject(record, before + i, entry, std::min(x, y), group, y < x ? 1 : 0);
            }
        };
        replayGroup(0, n1, 1, IsH1 ? H1a : H0, Q1);
        replayGroup(n1, n2, 2, IsH1 ? H1b : H0, Q2);
        EXPECT_EQ(Rnd(), next);
    }
}

TEST(SurvivalRecord, EmptyGroupsDrawNothing) {
    SimDistrNo = SimExponential;
    SurvivalRecord record;
    record.ReDim(5);
    Restart();
    const f32 next = Rnd();
    Restart();
    SimSurvivalTwoGroups(0, -1, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 0.0F, record);
    const auto one = Cells({0.0F, 1.0F});
    SimSurvivalPiecewise(0, 0, one, one, one, one, true, one, one, 1.0F, 0.0F, record);
    EXPECT_EQ(Rnd(), next);
    EXPECT_EQ(record.Group, Array1<f32>(1, 5));
    Restart();
    SimSurvivalTwoGroups(0, 5, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 0.0F, record);
    for (int i = 1; i <= 5; ++i)
        EXPECT_EQ(record.Group(i), 2.0F);
}

TEST(SurvivalRecord, ASingleIntervalLosesNobody) {
    SurvivalRecord record;
    record.ReDim(10);
    const auto one = Cells({0.0F});
    Restart();
    SimSurvivalPiecewise(5, 5, one, one, one, one, true, one, one, 1.0F, 0.0F, record);
    EXPECT_EQ(record.Time, Array1<f32>(1, 10));
    EXPECT_EQ(record.Status, Array1<i16>(1, 10));
}

// --- Probabilities ----------------------------------------------------------------------------

constexpr i16 groupSize = 16000;
constexpr i16 studySize = 2 * groupSize;
const int studies = checks::DrawsOf(63);
const int subjects = groupSize * studies; // of each group: a million in the whole

// What many studies hold of one group, and what is seen of it at a study time.
struct GroupTally {
    int Lost = 0;
    int Entered = 0;
    int Events = 0;
    std::vector<f32> Entry;
};

struct Tally {
    GroupTally Group1;
    GroupTally Group2;
    GroupTally& Of(f32 group) { return group == 1.0F ? Group1 : Group2; }
};

Tally TallyStudies(f32 studyTime, const std::function<void(SurvivalRecord&)>& simulate) {
    Tally tally;
    Restart();
    ClearFloatFaults();
    for (int study = 0; study < studies; ++study) {
        SurvivalRecord record;
        record.ReDim(studySize);
        simulate(record);
        for (int i = 1; i <= studySize; ++i) {
            tally.Of(record.Group(i)).Lost += record.Status(i);
            tally.Of(record.Group(i)).Entry.push_back(record.Entry(i));
        }
        Array1<f32> time(1, studySize);
        Array1<f32> group(1, studySize);
        Array1<i16> censored(1, studySize);
        TruncateAtStudyTime(studySize, studyTime, record, time, group, censored);
        for (int i = 1; i <= time.HighBound(); ++i) {
            ++tally.Of(group(i)).Entered;
            tally.Of(group(i)).Events += 1 - censored(i);
        }
    }
    EXPECT_FALSE(HasFloatFault());
    EXPECT_EQ(tally.Group1.Entry.size(), static_cast<std::size_t>(subjects));
    EXPECT_EQ(tally.Group2.Entry.size(), static_cast<std::size_t>(subjects));
    return tally;
}

// Exponential event times (hazards 1/2 and 1/4) and losses, uniform entry over two years, looked at
// after three: with m = hazard + loss rate the share of events is
// hazard/m (1 - exp(-m (t - A)) (1 - exp(-m A))/(m A)).
TEST(SurvivalRecord, ExponentialSharesWithUniformEntry) {
    constexpr f32 A = 2.0F;
    constexpr f32 t = 3.0F;
    SimDistrNo = SimExponential;
    const Tally tally = TallyStudies(t, [](SurvivalRecord& record) {
        SimSurvivalTwoGroups(groupSize, groupSize, 2.0F, 4.0F, 1.0F, 0.25F, 0.125F, A, 0.0F,
                             record);
    });
    const auto expectShares = [](const GroupTally& group, f64 hazard, f64 loss) {
        const f64 m = hazard + loss;
        ExpectContinuousFit(group.Entry, [](f64 x) { return x / A; });
        ExpectShare(group.Lost, subjects, loss / m);
        EXPECT_EQ(group.Entered, subjects);
        ExpectShare(group.Events, subjects,
                    hazard / m * (1.0 + std::exp(-m * (t - A)) * std::expm1(-m * A) / (m * A)));
    };
    expectShares(tally.Group1, 0.5, 0.25);
    expectShares(tally.Group2, 0.25, 0.125);
}

// Looked at before accrual ends: those who enter later are not seen at all.
TEST(SurvivalRecord, ExponentialSharesBeforeAccrualEnds) {
    constexpr f32 A = 4.0F;
    constexpr f32 t = 1.5F;
    SimDistrNo = SimExponential;
    const Tally tally = TallyStudies(t, [](SurvivalRecord& record) {
        SimSurvivalTwoGroups(groupSize, groupSize, 1.0F, 2.0F, 1.0F, 0.5F, 0.0F, A, 0.0F, record);
    });
    const auto expectShares = [](const GroupTally& group, f64 hazard, f64 loss) {
        const f64 m = hazard + loss;
        ExpectShare(group.Entered, subjects, t / A);
        ExpectShare(group.Events, subjects, hazard / m * (t + std::expm1(-m * t) / m) / A);
    };
    expectShares(tally.Group1, 1.0, 0.5);
    expectShares(tally.Group2, 0.5, 0.0);
    EXPECT_EQ(tally.Group2.Lost, 0);
}

// Entry that gets rarer (rate 0.8) or denser (rate -0.8) over the accrual time: entry has the
// density c exp(-g x), and the share of events is hazard/m (1 - c exp(-m t) (exp((m - g) A) - 1)
// /(m - g)).
TEST(SurvivalRecord, ExponentialSharesWithExponentialEntry) {
    constexpr f32 A = 2.0F;
    constexpr f32 t = 2.5F;
    SimDistrNo = SimExponential;
    for (const f32 g : {0.8F, -0.8F}) {
        SCOPED_TRACE(g);
        const Tally tally = TallyStudies(t, [g](SurvivalRecord& record) {
            SimSurvivalTwoGroups(groupSize, groupSize, 2.0F, 4.0F, 1.0F, 0.125F, 0.25F, A, g,
                                 record);
        });
        const auto expectShares = [g](const GroupTally& group, f64 hazard, f64 loss) {
            const f64 m = hazard + loss;
            const f64 c = g / -std::expm1(-g * static_cast<f64>(A));
            ExpectContinuousFit(group.Entry, [g](f64 x) {
                return std::expm1(-g * x) / std::expm1(-g * static_cast<f64>(A));
            });
            ExpectShare(group.Events, subjects,
                        hazard / m *
                            (1.0 - c * std::exp(-m * t) * std::expm1((m - g) * A) / (m - g)));
        };
        expectShares(tally.Group1, 0.5, 0.125);
        expectShares(tally.Group2, 0.25, 0.25);
    }
}

// Weibull event times of shape 2 and scale f with losses at the rate L: the share lost is the
// integral of L exp(-L x - (x/f)^2), which is L f sqrt(pi)/2 exp((L f/2)^2) erfc(L f/2).
TEST(SurvivalRecord, WeibullShareOfLosses) {
    SimDistrNo = SimWeibull;
    SimDistrPar = 2.0F;
    const Tally tally = TallyStudies(1.0F, [](SurvivalRecord& record) {
        SimSurvivalTwoGroups(groupSize, groupSize, 1.5F, 3.0F, 1.0F, 0.4F, 0.2F, 1.0F, 0.0F,
                             record);
    });
    const auto lost = [](f64 f, f64 L) {
        const f64 x = 0.5 * L * f;
        return x * std::sqrt(std::numbers::pi) * std::exp(x * x) * std::erfc(x);
    };
    ExpectShare(tally.Group1.Lost, subjects, lost(1.5, 0.4));
    ExpectShare(tally.Group2.Lost, subjects, lost(3.0, 0.2));
}

// Hazards and loss hazards that are constant within intervals: the shares add up over them. Without
// accrual (all enter at 0) the study time cuts every subject at the same age.
TEST(SurvivalRecord, PiecewiseShares) {
    const auto S = Cells({0.0F, 1.0F, 2.0F, 5.0F});
    const auto H0 = Cells({0.3F, 0.6F, 0.2F, 0.0F});
    const auto H1a = Cells({0.5F, 0.1F, 0.4F, 0.0F});
    const auto H1b = Cells({0.2F, 0.8F, 0.1F, 0.0F});
    const auto Q1 = Cells({0.1F, 0.3F, 0.2F, 0.0F});
    const auto Q2 = Cells({0.4F, 0.0F, 0.1F, 0.0F});
    constexpr f64 t = 3.0;
    for (const bool IsH1 : {true, false}) {
        SCOPED_TRACE(IsH1);
        const Tally tally = TallyStudies(t, [&](SurvivalRecord& record) {
            SimSurvivalPiecewise(groupSize, groupSize, S, H0, H1a, H1b, IsH1, Q1, Q2, 0.0F, 0.0F,
                                 record);
        });
        const auto expectShares = [&S](const GroupTally& group, const Array1<f32>& H,
                                       const Array1<f32>& Q) {
            f64 atRisk = 1.0;
            f64 lost = 0;
            f64 events = 0;
            for (int j = 1; j <= 3; ++j) {
                const f64 m = static_cast<f64>(H(j)) + Q(j);
                const f64 seen = j < 3 ? S(j + 1) - S(j) : t - S(j);
                lost += atRisk * Q(j) / m * (j < 3 ? -std::expm1(-m * seen) : 1.0);
                events += atRisk * H(j) / m * -std::expm1(-m * seen);
                atRisk *= std::exp(-m * seen);
            }
            ExpectShare(group.Lost, subjects, lost);
            ExpectShare(group.Events, subjects, events);
        };
        expectShares(tally.Group1, IsH1 ? H1a : H0, Q1);
        expectShares(tally.Group2, IsH1 ? H1b : H0, Q2);
    }
}

// --- The cut at study time --------------------------------------------------------------------

SurvivalRecord SmallRecord() {
    SurvivalRecord record;
    record.Entry = Cells({0.0F, 1.0F, 2.0F, 3.0F, 0.5F});
    record.Time = Cells({1.0F, 1.0F, 9.0F, 1.0F, 2.5F});
    record.Group = Cells({1.0F, 1.0F, 2.0F, 2.0F, 2.0F});
    record.Status.ReDim(1, 5);
    record.Status(2) = 1;
    return record;
}

// At time 3: an event, a loss, one still at risk, one not yet in the study, and one whose event
// falls on the study time, which counts as not seen.
TEST(TruncateAtStudyTime, KeepsWhatIsSeen) {
    Array1<f32> time(1, 5);
    Array1<f32> group(1, 5);
    Array1<i16> censored(1, 5);
    TruncateAtStudyTime(5, 3.0F, SmallRecord(), time, group, censored);
    EXPECT_EQ(time, Cells({1.0F, 1.0F, 1.0F, 2.5F}));
    EXPECT_EQ(group, Cells({1.0F, 1.0F, 2.0F, 2.0F}));
    Array1<i16> expected(1, 4);
    expected(2) = expected(3) = expected(4) = 1;
    EXPECT_EQ(censored, expected);
}

// The end of follow-up is compared in 32 bits: 1 and the float below 1 add up to 2.
TEST(TruncateAtStudyTime, ComparesIn32Bits) {
    SurvivalRecord record;
    record.ReDim(1);
    record.Entry(1) = 1.0F;
    record.Time(1) = 1.0F - 0x1p-24F;
    Array1<f32> time(1, 1);
    Array1<f32> group(1, 1);
    Array1<i16> censored(1, 1);
    TruncateAtStudyTime(1, 2.0F, record, time, group, censored);
    EXPECT_EQ(time(1), 1.0F);
    EXPECT_EQ(censored(1), 1);
}

TEST(TruncateAtStudyTime, ReadsTheFirstSubjectsOnly) {
    Array1<f32> time(1, 5);
    Array1<f32> group(1, 5);
    Array1<i16> censored(1, 5);
    TruncateAtStudyTime(1, 3.0F, SmallRecord(), time, group, censored);
    EXPECT_EQ(time, Cells({1.0F}));
    TruncateAtStudyTime(0, 3.0F, SmallRecord(), time, group, censored);
    EXPECT_EQ(time, Cells({1.0F}));
}

TEST(TruncateAtStudyTime, WithNobodyInTheStudyLeavesTheOutputs) {
    const auto before = Cells({7.0F, 8.0F, 9.0F, 10.0F, 11.0F});
    Array1<f32> time = before;
    Array1<f32> group = before;
    Array1<i16> censored(1, 5);
    TruncateAtStudyTime(5, 0.0F, SmallRecord(), time, group, censored);
    EXPECT_EQ(time, before);
    EXPECT_EQ(group, before);
    EXPECT_EQ(censored.HighBound(), 5);
}

} // namespace
} // namespace quorvanta
