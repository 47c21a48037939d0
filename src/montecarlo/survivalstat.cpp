#include "montecarlo/survivalstat.h"

#include "core/analysis_state.h"
#include "numeric/fastlog.h"
#include "numeric/rounding.h"
#include "numeric/sortind.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvanta {

namespace {

// A subject in one word, in whose order events come before losses at the same time: the bits of its
// time and whether it is censored above, whether it is of group 2 below.
using Subject = std::uint64_t;
constexpr Subject InGroup2 = 1;
constexpr Subject IsCensored = Subject{1} << 32;
constexpr int TimeShift = 33;

// Work arrays that keep their memory between the replicates of a simulation.
std::vector<Subject> subjects;
std::vector<f64> reciprocals{0};

bool IsGroup2(f32 group) {
    return group > 1.5F;
}

// The outcomes of one time.
struct Moment {
    int Events1 = 0;
    int Events2 = 0;
    int Lost1 = 0;
    int Lost2 = 0;

    int Events() const { return Events1 + Events2; }
    int Lost() const { return Lost1 + Lost2; }
    int All() const { return Events() + Lost(); }
};

// The subjects in the order of their times.
class InOrder {
  public:
    explicit InOrder(const SeenSurvival& seen) {
        const auto n = static_cast<std::size_t>(seen.Size);
        subjects.resize(n);
        const auto time = seen.Time.Raw();
        const auto group = seen.Group.Raw();
        const auto cens = seen.Cens.Raw();
        for (std::size_t i = 0; i < n; ++i) {
            // A drawn time may be 0 less the guard of its logarithm.
            const auto bits = std::bit_cast<std::uint32_t>(std::max(time[i], 0.0F));
            const Subject isSecond = IsGroup2(group[i]) ? InGroup2 : 0;
            subjects[i] = Subject{bits} << TimeShift | (cens[i] != 0 ? IsCensored : 0) | isSecond;
            n2_ += isSecond != 0 ? 1 : 0;
        }
        n_ = seen.Size;
        SortByUpperHalf(subjects);
    }

    int N() const { return n_; }
    int N1() const { return n_ - n2_; }
    int N2() const { return n2_; }

    // act(moment, r) for each time at which anything happens, r being those still at risk.
    template <class Act>
    void ForEachTime(Act&& act) const {
        int r = n_;
        for (std::size_t i = 0; i < subjects.size();) {
            const Subject time = subjects[i] >> TimeShift;
            Moment moment;
            do {
                const int isSecond = static_cast<int>(subjects[i] & InGroup2);
                const int isLost = static_cast<int>((subjects[i] & IsCensored) != 0);
                moment.Events1 += (1 - isLost) & (1 - isSecond);
                moment.Events2 += (1 - isLost) & isSecond;
                moment.Lost1 += isLost & (1 - isSecond);
                moment.Lost2 += isLost & isSecond;
                ++i;
            } while (i < subjects.size() && subjects[i] >> TimeShift == time);
            act(moment, r);
            r -= moment.All();
        }
    }

    // Does each subject have a time of its own?
    bool HasNoTies() const {
        std::size_t ties = 0;
        for (std::size_t i = 1; i < subjects.size(); ++i)
            ties += subjects[i - 1] >> TimeShift == subjects[i] >> TimeShift ? 1 : 0;
        return ties == 0;
    }

    // act(event, isSecond, r) for each subject: whether its time ends by an event, whether it is of
    // group 2, as 1 or 0, and how many are at risk.
    template <class Act>
    void ForEachSubject(Act&& act) const {
        int r = n_;
        for (const Subject subject : subjects)
            act(static_cast<int>((subject & IsCensored) == 0), static_cast<int>(subject & InGroup2),
                r--);
    }

    // n1 n2 Q/(N (N - 1)): the variance of the sum of one group's scores over all ways to form the
    // groups, Q being the sum of the squares of all scores, whose sum is 0.
    f64 PermutationVariance(f64 squares) const {
        const f64 n = n_;
        return n_ > 1 ? static_cast<f64>(N1()) * N2() * squares / (n * (n - 1)) : 0;
    }

  private:
    int n_ = 0;
    int n2_ = 0;
};

SurvivalScore Standardised(f64 s, f64 v) {
    return {v > 0 ? Single(s / std::sqrt(v)) : 0.0F, s, v};
}

// The sum of group 2's scores and its permutation variance. score(moment, r) answers the scores of
// an event and of a loss at that time.
struct Scores {
    f64 Event;
    f64 Loss;
};
template <class Score>
SurvivalScore SumOfScores(const InOrder& order, Score&& score) {
    f64 s = 0;
    f64 squares = 0;
    order.ForEachTime([&](const Moment& moment, int r) {
        const auto [event, loss] = score(moment, r);
        s += moment.Events2 * event + moment.Lost2 * loss;
        squares += moment.Events() * (event * event) + moment.Lost() * (loss * loss);
    });
    return Standardised(s, order.PermutationVariance(squares));
}

// What a time adds to the cumulated hazard: d/r. The reciprocals save a division for each event.
class HazardSteps {
  public:
    explicit HazardSteps(int most) {
        for (auto r = reciprocals.size(); r <= static_cast<std::size_t>(most); ++r)
            reciprocals.push_back(1.0 / static_cast<f64>(r));
    }
    f64 operator()(int d, int r) const { return d > 1 ? static_cast<f64>(d) / r : d * OfOne(r); }
    f64 OfOne(int r) const { return reciprocals[static_cast<std::size_t>(r)]; }
};

} // namespace

void SeenSurvival::CutAt(f32 t, i16 n, const SurvivalRecord& record) {
    Time.ReDim(1, n);
    Group.ReDim(1, n);
    Cens.ReDim(1, n);
    if (n > 0)
        static_cast<void>(record.Entry(n)); // the bounds, as it goes over the bare cells
    const auto entries = record.Entry.Raw().first(static_cast<std::size_t>(n));
    Size = static_cast<int>(std::ranges::count_if(entries, [t](f32 entry) { return entry < t; }));
    if (Size > 0)
        TruncateAtStudyTime(n, t, record, Time, Group, Cens);
}

namespace {

// The same sums where each time is that of one subject, without a jump.
SurvivalScore LogRankWithoutTies(const InOrder& order, const HazardSteps& step) {
    f64 hazard = 0;
    f64 s = 0;
    f64 squares = 0;
    order.ForEachSubject([&](int event, int isSecond, int r) {
        hazard += event * step.OfOne(r);
        const f64 score = event - hazard;
        s += isSecond * score;
        squares += score * score;
    });
    return Standardised(s, order.PermutationVariance(squares));
}

} // namespace

SurvivalScore LogRankZ(const SeenSurvival& seen) {
    const HazardSteps step(seen.Size);
    const InOrder order(seen);
    if (order.HasNoTies())
        return LogRankWithoutTies(order, step);
    f64 hazard = 0;
    return SumOfScores(order, [&](const Moment& moment, int r) {
        hazard += step(moment.Events(), r);
        return Scores{1 - hazard, -hazard};
    });
}

// With E events before, an event at a time with d events and r at risk has E smaller outcomes, and
// r - d larger ones; a loss has E + d smaller ones, and none is clearly larger.
SurvivalScore GehanZ(const SeenSurvival& seen) {
    int before = 0;
    const SurvivalScore ofGroup2 =
        SumOfScores(InOrder(seen), [&before](const Moment& moment, int r) {
            const f64 event = before - (r - moment.Events());
            before += moment.Events();
            return Scores{event, static_cast<f64>(before)};
        });
    // All scores add up to 0: the sum of group 1 is that of group 2, turned.
    return {-ofGroup2.Z, -ofGroup2.S, ofGroup2.V};
}

SurvivalScore CoxMantelZ(const SeenSurvival& seen) {
    const InOrder order(seen);
    int r2 = order.N2();
    f64 u = 0;
    f64 v = 0;
    order.ForEachTime([&](const Moment& moment, int r) {
        const f64 p = static_cast<f64>(r2) / r;
        u += moment.Events2 - moment.Events() * p;
        v += moment.Events() * (p * (1 - p));
        r2 -= moment.Events2 + moment.Lost2;
    });
    return Standardised(u, v);
}

SurvivalScore PetoZ(const SeenSurvival& seen) {
    f64 survival = 1;
    return SumOfScores(InOrder(seen), [&survival](const Moment& moment, int r) {
        const f64 before = survival;
        survival *= 1 - static_cast<f64>(moment.Events()) / r;
        return Scores{survival + before - 1, survival - 1};
    });
}

SurvivalScore LifeTableZ(const SeenSurvival& seen, std::span<const f64> starts) {
    static std::vector<Moment> intervals;
    intervals.assign(starts.size(), {});
    f64 atRisk1 = 0;
    f64 atRisk2 = 0;
    for (int i = 1; i <= seen.Size; ++i) {
        const auto after = std::ranges::upper_bound(starts, f64{seen.Time(i)});
        Moment& in = intervals[static_cast<std::size_t>(
            std::max<std::ptrdiff_t>(after - starts.begin() - 1, 0))];
        const bool isSecond = IsGroup2(seen.Group(i));
        const bool isLost = seen.Cens(i) != 0;
        ++(isSecond ? isLost ? in.Lost2 : in.Events2 : isLost ? in.Lost1 : in.Events1);
        ++(isSecond ? atRisk2 : atRisk1);
    }
    f32 u = 0;
    f32 v = 0;
    for (const Moment& in : intervals) {
        const f64 n1 = atRisk1 - in.Lost1 / 2.0;
        const f64 n2 = atRisk2 - in.Lost2 / 2.0;
        const f64 n = n1 + n2;
        const f64 d = in.Events();
        if (n > 0)
            u = Single(f64{u} + in.Events1 - d * n1 / n);
        if (n > 1)
            v = Single(f64{v} + (d / n) * ((n - d) / (n - 1)) * (n1 / n) * n2);
        atRisk1 -= in.Events1 + in.Lost1;
        atRisk2 -= in.Events2 + in.Lost2;
    }
    return Standardised(-f64{u}, f64{v});
}

FRatio CoxFStat(const SeenSurvival& seen, TimeScale scale) {
    EventCounts counts;
    if (scale == TimeScale::Time) {
        counts = CountEvents(seen);
    } else {
        const HazardSteps step(seen.Size);
        f64 hazard = 0;
        InOrder(seen).ForEachTime([&](const Moment& moment, int r) {
            hazard += step(moment.Events(), r);
            counts.Events1 += moment.Events1;
            counts.Events2 += moment.Events2;
            counts.Time1 += hazard * (moment.Events1 + moment.Lost1);
            counts.Time2 += hazard * (moment.Events2 + moment.Lost2);
        });
    }
    constexpr f64 guard{1e-5F};
    const f64 a = counts.Time1 / (counts.Events1 + guard);
    const f64 b = counts.Time2 / (counts.Events2 + guard);
    return {b > 0 ? Single(a / b) : Single(NoValue), static_cast<f32>(2 * counts.Events1),
            static_cast<f32>(2 * counts.Events2)};
}

EventCounts CountEvents(const SeenSurvival& seen) {
    EventCounts counts;
    for (int i = 1; i <= seen.Size; ++i) {
        const bool isSecond = IsGroup2(seen.Group(i));
        (isSecond ? counts.Events2 : counts.Events1) += seen.Cens(i) == 0 ? 1 : 0;
        (isSecond ? counts.Time2 : counts.Time1) += f64{seen.Time(i)};
    }
    return counts;
}

RateEffect LogRate(const EventCounts& counts) {
    if (counts.Events1 == 0 || !(counts.Time1 > 0))
        return {};
    return {FastLog(counts.Events1 / counts.Time1), 1.0 / counts.Events1};
}

RateEffect Rate(const EventCounts& counts) {
    if (counts.Events1 == 0 || !(counts.Time1 > 0))
        return {};
    return {counts.Events1 / counts.Time1, counts.Events1 / (counts.Time1 * counts.Time1)};
}

namespace {

// What two independent groups differ by.
RateEffect Difference(const EventCounts& counts, RateEffect (*of)(const EventCounts&)) {
    const RateEffect first = of(counts);
    const RateEffect second = of({counts.Events2, 0, counts.Time2, 0});
    if (first.V == 0 || second.V == 0)
        return {};
    return {second.X - first.X, first.V + second.V};
}

} // namespace

RateEffect LogRateRatio(const EventCounts& counts) {
    return Difference(counts, &LogRate);
}

RateEffect RateDifference(const EventCounts& counts) {
    return Difference(counts, &Rate);
}

} // namespace quorvanta
