// Statistics of survival records: 32 records against their definitions in another program
// (checks/reference/survivalstat.py), small ones by hand, and what no statistic is to be asked.
#include "core/analysis_state.h"
#include "core/fault.h"
#include "montecarlo/survivalstat.h"
#include "numeric/randdist.h"
#include "numeric/sortind.h"
#include "support/number.h"
#include "support/tsv.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

struct Outcome {
    f64 Time;
    int Group;
    bool IsLost = false;
};

SeenSurvival Seen(const std::vector<Outcome>& outcomes) {
    SeenSurvival seen;
    const int n = static_cast<int>(outcomes.size());
    seen.Size = n;
    seen.Time.ReDim(1, n);
    seen.Group.ReDim(1, n);
    seen.Cens.ReDim(1, n);
    for (int i = 1; i <= n; ++i) {
        const Outcome& outcome = outcomes[static_cast<std::size_t>(i - 1)];
        seen.Time(i) = static_cast<f32>(outcome.Time);
        seen.Group(i) = static_cast<f32>(outcome.Group);
        seen.Cens(i) = outcome.IsLost ? 1 : 0;
    }
    return seen;
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

const std::vector<f64>& HalfYears() {
    static const std::vector<f64> starts = [] {
        std::vector<f64> all;
        for (int j = 0; j < 200; ++j)
            all.push_back(0.5 * j);
        return all;
    }();
    return starts;
}

SurvivalScore LifeTableOfHalfYears(const SeenSurvival& seen) {
    return LifeTableZ(seen, HalfYears());
}

using Statistic = SurvivalScore (*)(const SeenSurvival&);
const std::map<std::string, Statistic> statistics = {{"LogRank", &LogRankZ},
                                                     {"Gehan", &GehanZ},
                                                     {"CoxMantel", &CoxMantelZ},
                                                     {"Peto", &PetoZ},
                                                     {"LifeTable", &LifeTableOfHalfYears}};

void ExpectScore(const SurvivalScore& score, f64 s, f64 v, f64 tolerance) {
    EXPECT_NEAR(score.S, s, tolerance * std::max(1.0, std::fabs(s)));
    EXPECT_NEAR(score.V, v, tolerance * std::max(1.0, v));
    EXPECT_NEAR(score.Z, v > 0 ? s / std::sqrt(v) : 0, std::max(3 * tolerance, 1e-6));
}

TEST(SurvivalStatistics, AreThoseOfTheirDefinitions) {
    int records = 0;
    for (const auto& row : ReadTsv("survival_statistics.tsv")) {
        SCOPED_TRACE(row[0]);
        ++records;
        const auto times = Words(row[1]);
        const auto groups = Words(row[2]);
        const auto censored = Words(row[3]);
        std::vector<Outcome> outcomes;
        for (std::size_t i = 0; i < times.size(); ++i)
            outcomes.push_back(
                {ParseNumber(times[i]), groups[i] == "2" ? 2 : 1, censored[i] == "1"});
        const SeenSurvival seen = Seen(outcomes);
        const auto value = [&row](std::size_t i) { return ParseNumber(row[i]); };
        std::size_t column = 4;
        for (const char* name : {"LogRank", "Gehan", "CoxMantel", "Peto", "LifeTable"}) {
            SCOPED_TRACE(name);
            // The sums of the life table are kept in 32 bits.
            const f64 tolerance = std::string(name) == "LifeTable" ? 3e-6 : 1e-7;
            ExpectScore(statistics.at(name)(seen), value(column), value(column + 1), tolerance);
            column += 2;
        }
        const f64 bits32 = 1e-6;
        EXPECT_NEAR(CoxFStat(seen, TimeScale::Time).F / value(14), 1, bits32);
        EXPECT_NEAR(CoxFStat(seen, TimeScale::Hazard).F / value(15), 1, bits32);
        const EventCounts counts = CountEvents(seen);
        EXPECT_NEAR(LogRateRatio(counts).X, value(16), bits32);
        EXPECT_NEAR(LogRateRatio(counts).V, value(17), bits32);
        EXPECT_NEAR(RateDifference(counts).X, value(18), bits32 * std::max(1.0, value(18)));
        EXPECT_NEAR(RateDifference(counts).V, value(19), bits32 * std::max(1.0, value(19)));
    }
    EXPECT_EQ(records, 32);
}

// Two against two, without ties: events at 1 (group 2), 2 (group 1), 4 (group 1), a loss at 3
// (group 2).
TEST(SurvivalStatistics, ByHand) {
    const SeenSurvival seen = Seen({{2, 1}, {4, 1}, {1, 2}, {3, 2, true}});
    const f64 h1 = 1.0 / 4;
    const f64 h2 = h1 + 1.0 / 3;
    const f64 h4 = h2 + 1;
    const f64 squares = (1 - h1) * (1 - h1) + (1 - h2) * (1 - h2) + h2 * h2 + (1 - h4) * (1 - h4);
    ExpectScore(LogRankZ(seen), 1 - h1 - h2, 4 * squares / 12, 1e-12);
    // Larger than group 1's 2: the loss at 3; than 4: none. Smaller than both: the event at 1.
    ExpectScore(GehanZ(seen), (1 - 2) + (2 - 0), 4 * (9.0 + 1 + 4 + 4) / 12, 1e-12);
    ExpectScore(CoxMantelZ(seen), 1 - (0.5 + 1.0 / 3 + 0), 0.25 + 2.0 / 9, 1e-12);
    ExpectScore(PetoZ(seen), 0.75 + (0.5 - 1),
                4 * (0.75 * 0.75 + 0.25 * 0.25 + 0.5 * 0.5 + 0.5 * 0.5) / 12, 1e-12);
    // One interval: risk sets 2 and 1.5, events 2 and 1.
    const std::vector<f64> one{0};
    ExpectScore(LifeTableZ(seen, one), -(2 - 3 * 2 / 3.5),
                (3 / 3.5) * (0.5 / 2.5) * (2 / 3.5) * 1.5, 1e-6);
    const FRatio ratio = CoxFStat(seen, TimeScale::Time);
    EXPECT_NEAR(ratio.F, (6 / 2.00001) / (4 / 1.00001), 1e-6);
    EXPECT_EQ(ratio.Df1, 4);
    EXPECT_EQ(ratio.Df2, 2);
}

// A larger hazard of group 2 is positive in every one, and the groups exchanged turn the sign.
TEST(SurvivalStatistics, HaveOneDirection) {
    std::vector<Outcome> early;
    std::vector<Outcome> exchanged;
    for (int i = 1; i <= 20; ++i) {
        const bool isLost = i % 7 == 0;
        early.push_back({0.1 * i, i % 3 != 0 ? 2 : 1, isLost});
        early.push_back({0.1 * i + 1.5, i % 3 == 0 ? 2 : 1, isLost});
    }
    for (Outcome outcome : early) {
        outcome.Group = 3 - outcome.Group;
        exchanged.push_back(outcome);
    }
    const SeenSurvival seen = Seen(early);
    const SeenSurvival turned = Seen(exchanged);
    for (const auto& [name, statistic] : statistics) {
        EXPECT_GT(statistic(seen).Z, 0) << name;
        EXPECT_NEAR(statistic(turned).Z, -statistic(seen).Z, 1e-6) << name;
    }
    EXPECT_GT(CoxFStat(seen, TimeScale::Time).F, 1);
    EXPECT_GT(CoxFStat(seen, TimeScale::Hazard).F, 1);
    EXPECT_GT(LogRateRatio(CountEvents(seen)).X, 0);
    EXPECT_GT(RateDifference(CountEvents(seen)).X, 0);
}

TEST(SurvivalStatistics, WithoutEventsAreZero) {
    const SeenSurvival seen = Seen({{1, 1, true}, {2, 1, true}, {1, 2, true}, {3, 2, true}});
    for (const auto& [name, statistic] : statistics) {
        EXPECT_EQ(statistic(seen).Z, 0) << name;
        EXPECT_EQ(statistic(seen).V, 0) << name;
    }
    EXPECT_EQ(LogRateRatio(CountEvents(seen)).V, 0);
    EXPECT_EQ(RateDifference(CountEvents(seen)).V, 0);
    const FRatio ratio = CoxFStat(seen, TimeScale::Time);
    EXPECT_EQ(ratio.Df1, 0);
    EXPECT_EQ(ratio.Df2, 0);
}

TEST(SurvivalStatistics, WithoutAGroupOrWithoutSubjectsAreZero) {
    for (const SeenSurvival& seen :
         {Seen({}), Seen({{1, 1}}), Seen({{1, 1}, {2, 1}}), Seen({{1, 2}, {2, 2, true}})}) {
        ClearFloatFaults();
        for (const auto& [name, statistic] : statistics)
            EXPECT_EQ(statistic(seen).Z, 0) << name;
        EXPECT_EQ(LogRateRatio(CountEvents(seen)).V, 0);
        const FRatio ratio = CoxFStat(seen, TimeScale::Hazard);
        EXPECT_TRUE(std::isfinite(ratio.F));
        EXPECT_FALSE(HasFloatFault());
    }
    EXPECT_EQ(CoxFStat(Seen({{1, 1}, {2, 1}}), TimeScale::Time).F, static_cast<f32>(NoValue));
}

TEST(SurvivalStatistics, OneAgainstOne) {
    const SeenSurvival seen = Seen({{1, 1}, {2, 2}});
    for (const auto& [name, statistic] : statistics) {
        EXPECT_LE(statistic(seen).Z, 0) << name;
        EXPECT_TRUE(std::isfinite(statistic(seen).Z)) << name;
    }
}

// An event comes before a loss at the same time, in whatever order they stand.
TEST(SurvivalStatistics, TiesDoNotDependOnTheOrderOfSubjects) {
    const std::vector<Outcome> outcomes{{1, 1}, {1, 2, true}, {1, 2},       {2, 1, true}, {2, 2},
                                        {2, 1}, {3, 2},       {3, 1, true}, {3, 1}};
    std::vector<Outcome> turned = outcomes;
    std::ranges::reverse(turned);
    for (const auto& [name, statistic] : statistics)
        EXPECT_FLOAT_EQ(statistic(Seen(outcomes)).Z, statistic(Seen(turned)).Z) << name;
}

// --- Intervals -----------------------------------------------------------------------------------

TEST(LifeTableStatistic, AnIntervalWithOneGroupAddsNoVariance) {
    // The second interval has two of group 1, of whom one has the event.
    const SeenSurvival seen =
        Seen({{0.5, 1}, {0.6, 2}, {0.7, 2, true}, {1.2, 1}, {1.5, 1}, {2.5, 1, true}});
    EXPECT_EQ(LifeTableZ(seen, std::vector<f64>{0, 1}).V,
              LifeTableZ(seen, std::vector<f64>{0, 1, 1.3}).V);
    EXPECT_GT(LifeTableZ(seen, std::vector<f64>{0, 1}).V, 0);
}

TEST(LifeTableStatistic, LossesAloneAddNothing) {
    const std::vector<f64> starts{0, 1};
    // All at risk in the second interval leave it censored: the risk set is halved, d is 0.
    const SeenSurvival seen = Seen({{0.5, 1}, {0.6, 2}, {0.7, 2}, {1.5, 1, true}, {1.5, 2, true}});
    const SurvivalScore score = LifeTableZ(seen, starts);
    EXPECT_NEAR(score.V, 3 * (2.0 / 4) * (2.0 / 5) * (3.0 / 5), 1e-6);
    EXPECT_NEAR(score.S, -(1 - 3 * 2.0 / 5), 1e-6);
    const SurvivalScore none = LifeTableZ(Seen({{1.5, 1, true}, {1.5, 2, true}}), starts);
    EXPECT_EQ(none.V, 0);
    EXPECT_EQ(none.S, 0);
}

// The risk set of the second interval is one subject: no variance, and no division by zero.
TEST(LifeTableStatistic, OneAtRiskHasNoVariance) {
    const std::vector<f64> starts{0, 1};
    ClearFloatFaults();
    const SurvivalScore with = LifeTableZ(Seen({{0.5, 1}, {0.5, 2}, {1.5, 1}}), starts);
    EXPECT_FALSE(HasFloatFault());
    // 2 of 3 in the first interval, risk sets 2 and 1.
    EXPECT_NEAR(with.V, (2.0 / 3) * (1.0 / 2) * (2.0 / 3) * 1, 1e-7);
}

// --- The cut at the study time -------------------------------------------------------------------

TEST(SeenSurvival, IsCutAtTheStudyTime) {
    SurvivalRecord record;
    record.ReDim(4);
    const std::array<std::array<f32, 3>, 4> subjects{
        {{0, 1, 1}, {1, 5, 1}, {2, 0.5F, 2}, {4, 1, 2}}};
    for (int i = 1; i <= 4; ++i) {
        const auto& [entry, time, group] = subjects[static_cast<std::size_t>(i - 1)];
        record.Entry(i) = entry;
        record.Time(i) = time;
        record.Group(i) = group;
    }
    record.Status(3) = 1;
    SeenSurvival seen;
    seen.CutAt(3, 4, record);
    ASSERT_EQ(seen.Size, 3);
    EXPECT_EQ(seen.Time(2), 2);
    EXPECT_EQ(seen.Cens(1), 0);
    EXPECT_EQ(seen.Cens(2), 1) << "by the cut";
    EXPECT_EQ(seen.Cens(3), 1) << "a loss";
    seen.CutAt(10, 4, record);
    EXPECT_EQ(seen.Size, 4);
    seen.CutAt(0, 4, record);
    EXPECT_EQ(seen.Size, 0);
    EXPECT_EQ(LogRankZ(seen).Z, 0);
}

// Where every status comes from the cut, no event counts.
TEST(SeenSurvival, ACutBeforeEveryEventLeavesNone) {
    SurvivalRecord record;
    record.ReDim(6);
    for (int i = 1; i <= 6; ++i) {
        record.Time(i) = static_cast<f32>(i + 2);
        record.Group(i) = static_cast<f32>(1 + i % 2);
    }
    SeenSurvival seen;
    seen.CutAt(2, 6, record);
    EXPECT_EQ(CountEvents(seen).Events1 + CountEvents(seen).Events2, 0);
    EXPECT_EQ(LogRankZ(seen).V, 0);
}

// --- Order ---------------------------------------------------------------------------------------

TEST(SortByUpperHalf, KeepsTheOrderOfEqualKeys) {
    std::vector<std::uint64_t> words;
    for (std::uint64_t i = 0; i < 300; ++i)
        words.push_back((i * 7919 % 37) << 32 | i);
    std::vector<std::uint64_t> expected = words;
    std::ranges::stable_sort(expected, {}, [](std::uint64_t word) { return word >> 32; });
    SortByUpperHalf(words);
    EXPECT_EQ(words, expected);
    std::vector<std::uint64_t> none;
    SortByUpperHalf(none);
    EXPECT_TRUE(none.empty());
}

} // namespace
} // namespace quorvanta::checks
