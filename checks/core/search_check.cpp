// The root search on the driver's own equation: how often it evaluates, and that the same inputs
// give the same bits whatever the compiler and its options.
#include "core/checksearch.h"
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/root.h"
#include "core/search.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/tsv.h"

#include <bit>
#include <cinttypes>
#include <cstdio>

namespace quorvanta::checks {
namespace {

class Search : public AnalysisFixture {
  protected:
    void OpenPlan(const std::string& level, const std::string& power, const std::string& effect,
                  const std::string& deviation) {
        OpenTest(0);
        Pick(Group::Mean2, 1);
        Pick(Group::Size2, 2);
        AcceptOptions();
        Type(Kind::SignificanceLevel, level);
        Type(Kind::Power, power);
        Type(Kind::H0Mean2Minus1, "0");
        Type(Kind::H1Mean2Minus1, effect);
        Type(Kind::Sd, deviation);
        Type(Kind::Size1, "30");
        Type(Kind::Size2Over1, "1");
    }

    // Searches for a kind within its limits; the number of evaluations.
    int Evaluations(i16 kind, f64& root) {
        UnknownParNo = PositionOf(kind);
        for (i16 i = 0; i <= NoOfPar; ++i)
            ParValue(i) = ReadNumber(ParText(ParKind(i)));
        f64 lower = ParMin(kind);
        f64 upper = ParMax(kind);
        SelSearchLimits(lower, upper);
        int evaluations = 0;
        const auto counted = [&evaluations](f64 x) {
            ++evaluations;
            return TryValue(x);
        };
        i16 iterations = 0;
        f64 residual = NoValue;
        FindRootOf(counted, lower, upper, RootTolerance, RootIterations, iterations, root,
                   residual);
        return evaluations;
    }
};

// Limits that no number holds are a fault of the narrowing, before any trial value.
TEST_F(Search, AFaultWhileTheLimitsAreNarrowedIsARunTimeError) {
    OpenPlan("0.05", "0.80", "0.5", "1");
    UnknownParNo = PositionOf(Kind::Size2Over1);
    for (i16 i = 0; i <= NoOfPar; ++i)
        ParValue(i) = ReadNumber(ParText(ParKind(i)));
    EXPECT_NO_THROW(FindUnknown());
    ParValue(UnknownParNo) = 1;
    ParMax(Kind::Size2) = 1e300; // of which the first size has a share that no number holds
    ParValue(PositionOf(Kind::Size1)) = 1e-20;
    EXPECT_THROW(FindUnknown(), RunTimeError);
    EXPECT_EQ(ParValue(UnknownParNo), 1) << "no value was tried";
}

// The expected numbers come from checks/reference/search.py, which follows the formulas alone.
TEST_F(Search, TakesAsManyEvaluationsAsItsStepsSay) {
    f64 root = 0;
    OpenPlan("0.05", "0.80", "0.5", "1");
    EXPECT_EQ(Evaluations(Kind::Size1, root), 20);
    EXPECT_NEAR(root, 63.7860281, 1e-4);
    OpenPlan("0.01", "0.90", "1.2", "2");
    EXPECT_EQ(Evaluations(Kind::Size1, root), 21);
    EXPECT_NEAR(root, 84.3566736, 1e-4);
    OpenPlan("0.05", "0.80", "0.5", "1");
    EXPECT_EQ(Evaluations(Kind::H1Mean2Minus1, root), 26);
    EXPECT_NEAR(root, 0.735759404, 1e-5);
}

// --- Which roots count --------------------------------------------------------------------------

// The test of an exponential location has power = level * exp(n (H1 - H0) / scale) in its right
// tail: linear in the level, and every root is known.
class Location : public AnalysisFixture {
  protected:
    static constexpr i16 level = Kind::SignificanceLevel;
    static constexpr i16 power = Kind::Power;
    static constexpr i16 h0 = Kind::H0Location;
    static constexpr i16 h1 = Kind::H1Location;
    static constexpr i16 scale = Kind::Scale;
    static constexpr i16 size = Kind::Size;
    static constexpr f64 levelMin = static_cast<f64>(0.00001F);
    static constexpr f64 levelMax = static_cast<f64>(0.99999F);

    void SetUp() override {
        AnalysisFixture::SetUp();
        OpenDistribution(DistrExponential, 0, ProcedureTest);
        ChooseTails(OneSided);
        ChooseLeftTail(false);
        Pick(Group::H1Location, AsValue);
        AcceptOptions();
        platform.Messages.clear();
    }

    static std::string Text(f64 x) { return NumberText(x, 12, std::chars_format::fixed); }

    // What is shown for the level when the power entered is the power of this level.
    std::string LevelOf(f64 root, f64 powerEntered) {
        platform.Messages.clear();
        Type(power, Text(powerEntered));
        Type(h0, "0");
        Type(h1, Text(std::log(powerEntered / root)));
        Type(scale, "10");
        Type(size, "10");
        return Solve(level);
    }

    // What is shown for the H1 location that lies there.
    std::string LocationAt(f64 root) {
        platform.Messages.clear();
        Type(level, "0.05");
        Type(power, "0.8");
        Type(scale, "1000");
        Type(size, "10");
        Type(h0, Text(root - 100 * std::log(16.0)));
        return Solve(h1);
    }

    bool SaysCantCalculate() const {
        return platform.Messages.size() == 1 &&
               platform.Messages[0].Text.starts_with("Can't Be Calculated.");
    }
};

TEST_F(Location, ALevelInsideItsLimitsIsFound) {
    EXPECT_EQ(LevelOf(0.03, 0.8), "0.03");
    EXPECT_EQ(LevelOf(0.00002, 0.8), "0.00002");
    EXPECT_TRUE(platform.Messages.empty());
}

// 0.000004 would be shown as 0, and 0.999995 as 1.0: no level that could be typed.
TEST_F(Location, NoLevelIsShownAs0Or1) {
    EXPECT_EQ(LevelOf(0.000004, 0.5), "-");
    EXPECT_TRUE(SaysCantCalculate());
    EXPECT_EQ(LevelOf(0.000004, 0.00001), "0.00001") << "the limit solves the equation as well";
    EXPECT_EQ(ParValue(0), levelMin);
    EXPECT_EQ(LevelOf(0.999995, 0.9), "0.99999");
    EXPECT_EQ(ParValue(0), levelMax);
    Type(power, "0.9");
    EXPECT_NE(Solve(power), "-") << "what is shown can be typed";
    // Where the limit does not solve the equation, though the search ends beside it.
    EXPECT_EQ(LevelOf(0.000004, 0.001), "-");
    EXPECT_TRUE(SaysCantCalculate());
}

// In the left tail power = 1 - (1 - level) exp(n (H1 - H0) / scale).
TEST_F(Location, NoLevelIsShownAs1WhereThePowerIsSteep) {
    OpenDistribution(DistrExponential, 0, ProcedureTest);
    ChooseTails(OneSided);
    ChooseLeftTail(true);
    AcceptOptions();
    platform.Messages.clear();
    constexpr f64 factor = 250;
    Type(h0, "0");
    Type(h1, Text(std::log(factor)));
    Type(scale, "10");
    Type(size, "10");
    const auto levelOf = [this](f64 root) {
        Type(power, Text(1 - (1 - root) * factor));
        return Solve(level);
    };
    EXPECT_EQ(levelOf(0.9997), "0.9997");
    EXPECT_EQ(levelOf(0.999996), "-");
    EXPECT_TRUE(SaysCantCalculate());
}

// Two one-sided tests of which each rejects so seldom that both together seem to do it less often
// than never: level u - (1 - level) / u with u = exp(n limit / scale).
TEST_F(Location, APowerBelow0IsNone) {
    OpenDistribution(DistrExponential, 0, ProcedureTest);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    platform.Messages.clear();
    Type(level, "0.05");
    Type(h1, "0");
    Type(scale, "10");
    Type(size, "10");
    const auto powerOf = [this](f64 factor) {
        Type(Kind::LocationLeftLimit, Text(-std::log(factor)));
        Type(Kind::LocationRightLimit, Text(std::log(factor)));
        return Solve(power);
    };
    EXPECT_EQ(powerOf(5), "0.06");
    EXPECT_EQ(powerOf(4.354), "-"); // -0.0005
    EXPECT_TRUE(SaysCantCalculate());
}

// A test at the level 1.0005, were there one, would reject so often.
TEST_F(Location, APowerAbove1IsNone) {
    OpenDistribution(DistrExponential, 0, ProcedureTest);
    ChooseTails(TwoSided);
    Pick(Group::H1Location, AsValue);
    AcceptOptions();
    platform.Messages.clear();
    ParMax(level) = 2;
    Type(h0, "0");
    Type(h1, "0");
    Type(level, "1.0005");
    EXPECT_EQ(Solve(power), "-");
    EXPECT_TRUE(SaysCantCalculate());
    // What rounding may have put above 1 is 1.
    Type(level, "1.000005");
    EXPECT_EQ(Solve(power), "1");
    EXPECT_EQ(ParValue(1), 1);
}

TEST_F(Location, ARootOutsideItsLimitsIsNone) {
    EXPECT_EQ(LevelOf(1.2, 0.9), "-");
    EXPECT_TRUE(SaysCantCalculate());
    EXPECT_EQ(LevelOf(1.0001, 0.9), "-");
    EXPECT_TRUE(SaysCantCalculate());
}

// Where the H0 location moves with H1 it has no influence: the residual is constant.
TEST_F(Location, AConstantResidualIsNoSolution) {
    OpenDistribution(DistrExponential, 0, ProcedureTest);
    Pick(Group::H1Location, AsDifference);
    AcceptOptions();
    platform.Messages.clear();
    Type(power, "0.8");
    Type(Kind::H1LocationMinusH0, "0.5");
    EXPECT_EQ(Solve(h0), "-");
    EXPECT_TRUE(SaysCantCalculate());
}

TEST_F(Location, TheMarksOfARangeThatWasSearchedToItsEndAreNoRoots) {
    for (const f64 mark : {66666.0, 6666.0, 66667.0, 9999.0}) {
        EXPECT_EQ(LocationAt(mark + 0.5), "-") << mark;
        EXPECT_TRUE(SaysCantCalculate()) << mark;
        for (const f64 next : {mark - 1.5, mark + 2.5}) {
            EXPECT_NEAR(ReadNumber(LocationAt(next)), next, 0.51) << next;
            EXPECT_TRUE(platform.Messages.empty()) << next;
        }
    }
    for (const f64 noValue : {99999.0, -99999.0}) {
        EXPECT_EQ(LocationAt(noValue), "-") << noValue << " is no value";
        EXPECT_TRUE(SaysCantCalculate());
    }
    EXPECT_EQ(LocationAt(99998), "99998");
    EXPECT_EQ(LocationAt(-99998), "-99998");
}

// While a run shows its progress each evaluation lets an event through.
TEST_F(Location, ACancelledSearchDoesNotGoOn) {
    LevelOf(0.00002, 0.8);
    Calculating = True;
    platform.Yields = 0;
    EXPECT_NE(SolveUnknown(), NoValue);
    EXPECT_GT(platform.Yields, 5);
    for (int last = 1; last <= 5; ++last) {
        platform.Yields = 0;
        platform.OnDoEvents = [this, last] { Cancelled = platform.Yields >= last ? True : False; };
        EXPECT_EQ(SolveUnknown(), NoValue);
        EXPECT_EQ(platform.Yields, last == 2 ? 3 : last)
            << "a cancel is seen after the first evaluation and from the third on";
    }
    Cancelled = False;
    Calculating = False;
}

// A small level, where the power is steep: the trial values are as close as the tolerance asks
// before one of them solves the equation.
TEST_F(Search, ASmallLevelIsFoundBetweenItsLastTrialValues) {
    OpenPlan("0.05", "0.80", "0.5", "1");
    for (const char* effect : {"0.9", "1.1", "1.2", "1.25", "1.3", "1.35", "1.4"}) {
        Type(Kind::H1Mean2Minus1, effect);
        EXPECT_NE(Solve(Kind::SignificanceLevel), "-") << effect;
        UnknownParNo = 1;
        EXPECT_NEAR(SolveUnknown(), 0.8, RootResidual) << effect << ", level " << ParValue(0);
    }
    EXPECT_TRUE(platform.Messages.empty());
}

// Of every level down to the limit.
TEST_F(Location, EveryLevelDownToTheLimitIsFound) {
    for (f64 root = 0.5; root > 1.05 * levelMin; root *= 0.93) {
        EXPECT_NE(LevelOf(root, 0.8), "-") << root;
        EXPECT_NEAR(ParValue(0), root, 0.0015 * root + 1e-5) << root;
    }
}

std::string Bits(f64 value) {
    char text[20];
    std::snprintf(text, sizeof text, "%016" PRIx64, std::bit_cast<std::uint64_t>(value));
    return text;
}

// Not a question of right or wrong but of sameness: every build, debug or release, with GCC or
// Clang, must give these bits.
TEST_F(Search, EveryBuildGivesTheSameBits) {
    for (const auto& row : ReadTsv("solution_bits.tsv")) {
        OpenPlan(row[0], row[1], row[2], row[3]);
        const i16 kind = static_cast<i16>(std::stoi(row[4]));
        Solve(kind);
        EXPECT_EQ(Bits(ParValue(UnknownParNo)), row[5])
            << row[0] << " " << row[1] << " " << row[2] << " " << row[3] << " " << row[4];
    }
}

} // namespace
} // namespace quorvanta::checks
