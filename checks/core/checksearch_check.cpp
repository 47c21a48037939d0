#include "core/checksearch.h"
#include "core/fault.h"
#include "core/kinds.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

// A list of one significance level, a power, two means and a standard deviation.
class CheckSearch : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        NoOfPar = 4;
        const i16 kinds[] = {Kind::SignificanceLevel, Kind::Power, Kind::H0Mean, Kind::H1Mean,
                             Kind::Sd};
        for (i16 i = 0; i <= NoOfPar; ++i) {
            ParKind(i) = kinds[i];
            ParText(kinds[i]) = "1";
            ParValue(i) = 1;
        }
        UnknownParNo = 1;
    }

    void Put(i16 i, f64 value) { ParValue(i) = value; }
};

TEST_F(CheckSearch, ABlankTextOrAMinusHasNoValue) {
    for (const char* text : {"", "   ", "-", " - "}) {
        ParText(Kind::SignificanceLevel) = text;
        platform.Messages.clear();
        EXPECT_FALSE(CheckRange(0, 0.00001F, 0.99999F)) << '"' << text << '"';
        EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Significance Level Has No Value."});
        EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
        EXPECT_EQ(platform.Messages[0].ShownButtons, Buttons::Ok);
    }
}

TEST_F(CheckSearch, AnOpenRangeTakesEveryValue) {
    Put(2, 1e12);
    EXPECT_TRUE(CheckRange(2, -99999, 99999));
    EXPECT_TRUE(platform.Messages.empty());
}

// Whether a limit is one at all is asked in 32 bits, where the next number below 99999 is 99998.99.
TEST_F(CheckSearch, ALimitThatIsOpenIn32BitsIsNone) {
    Put(2, 123456);
    EXPECT_TRUE(CheckRange(2, -99998.999, 99998.999));
    EXPECT_FALSE(CheckRange(2, -99998.999, 99998.99));
    Put(2, -123456);
    EXPECT_TRUE(CheckRange(2, -99998.999, 99998.999));
    EXPECT_FALSE(CheckRange(2, -99998.99, 99998.999));
    EXPECT_EQ(platform.Messages.size(), 2U);
}

TEST_F(CheckSearch, ALowerLimitAlone) {
    Put(4, 0);
    EXPECT_FALSE(CheckRange(4, 0.00001F, 99999));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Standard Deviation Has To Be Greater Than or Equal to "
                                       "0.00001."});
    Put(4, 1e7);
    EXPECT_TRUE(CheckRange(4, 0.00001F, 99999));
}

TEST_F(CheckSearch, AnUpperLimitAlone) {
    Put(2, 5.25);
    EXPECT_FALSE(CheckRange(2, -99999, 5));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H0: Mean Has To Be Less Than or Equal to 5."});
    Put(2, -1e7);
    EXPECT_TRUE(CheckRange(2, -99999, 5));
}

TEST_F(CheckSearch, BothLimitsAreTestedAndTheLimitItselfPasses) {
    Put(0, 0.99999F);
    EXPECT_TRUE(CheckRange(0, 0.00001F, 0.99999F));
    Put(0, 0);
    EXPECT_FALSE(CheckRange(0, 0.00001F, 0.99999F));
    Put(0, 1);
    EXPECT_FALSE(CheckRange(0, 0.00001F, 0.99999F));
    EXPECT_EQ(
        platform.Texts(),
        (std::vector<std::string>{"Significance Level Has To Be Greater Than or Equal to 0.00001.",
                                  "Significance Level Has To Be Less Than or Equal to 0.99999."}));
}

TEST_F(CheckSearch, AnEmptyRangeIsToldTwice) {
    Put(2, 3);
    EXPECT_FALSE(CheckRange(2, 4, 2));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"H0: Mean Has To Be Greater Than or Equal to 4.",
                                        "H0: Mean Has To Be Less Than or Equal to 2."}));
}

// As a 32-bit float 0.99999 is 0.99998998...: the typed number lies above it in 64 bits.
TEST_F(CheckSearch, ATypedLimitOfTheCatalogueIsWithinIt) {
    Put(0, 0.99999);
    EXPECT_TRUE(CheckRange(0, ParMin(Kind::SignificanceLevel), ParMax(Kind::SignificanceLevel)));
    Put(0, 0.00001);
    EXPECT_TRUE(CheckRange(0, ParMin(Kind::SignificanceLevel), ParMax(Kind::SignificanceLevel)));
    Put(0, 0.999991);
    EXPECT_FALSE(CheckRange(0, ParMin(Kind::SignificanceLevel), ParMax(Kind::SignificanceLevel)));
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{
                                    "Significance Level Has To Be Less Than or Equal to 0.99999."});
}

TEST_F(CheckSearch, APairIsCheckedOnTheScaleOfItsQuantity) {
    // The quantity lies within 1..10; parameter 2 is 4.
    Put(2, 4);
    Put(3, 11);
    EXPECT_FALSE(CheckPair(2, 3, 1, 10, AsValue));
    EXPECT_EQ(platform.Texts().back(), "H1: Mean Has To Be Less Than or Equal to 10.");
    Put(3, 7);
    EXPECT_FALSE(CheckPair(2, 3, 1, 10, AsDifference));
    EXPECT_EQ(platform.Texts().back(), "H1: Mean Has To Be Less Than or Equal to 6.");
    Put(3, 0.125);
    EXPECT_FALSE(CheckPair(2, 3, 1, 10, AsRatio));
    EXPECT_EQ(platform.Texts().back(), "H1: Mean Has To Be Greater Than or Equal to 0.25.");
    Put(3, 2.5);
    EXPECT_TRUE(CheckPair(2, 3, 1, 10, AsRatio));
}

TEST_F(CheckSearch, ARatioToANegativeValueExchangesTheBounds) {
    Put(2, -2);
    Put(3, 3);
    EXPECT_TRUE(CheckPair(2, 3, -10, -4, AsRatio));
    Put(3, 1);
    EXPECT_FALSE(CheckPair(2, 3, -10, -4, AsRatio));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H1: Mean Has To Be Greater Than or Equal to 2."});
}

TEST_F(CheckSearch, APairThatCannotBeKnownPasses) {
    Put(2, 0);
    Put(3, 1e9);
    EXPECT_TRUE(CheckPair(2, 3, 1, 10, AsRatio)) << "a ratio to 0";
    UnknownParNo = 3;
    EXPECT_TRUE(CheckPair(2, 3, 1, 10, AsValue)) << "the second is the unknown";
    UnknownParNo = 2;
    EXPECT_TRUE(CheckPair(2, 3, 1, 10, AsDifference)) << "the first is the unknown";
    EXPECT_FALSE(CheckPair(2, 3, 1, 10, AsValue)) << "a value needs no first one";
}

TEST_F(CheckSearch, TheLeftLimitMustNotPassTheRightOne) {
    Put(2, 0.5);
    Put(3, 0.4);
    EXPECT_FALSE(CheckPairs(2));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H0: Mean Has To Be Less Than or Equal to 0.4."});
    Put(2, -0.5);
    EXPECT_TRUE(CheckPairs(2));
    UnknownParNo = 3;
    Put(2, 9);
    EXPECT_TRUE(CheckPairs(2));
}

TEST_F(CheckSearch, LimitsOfAPairFollowItsForm) {
    const auto limits = [](Form form) {
        f64 lower = -99999;
        f64 upper = 99999;
        PairLimits(lower, upper, 2, 1, 10, form);
        return std::pair(lower, upper);
    };
    Put(2, 4);
    UnknownParNo = 3;
    EXPECT_EQ(limits(AsValue), std::pair(1.0, 10.0));
    EXPECT_EQ(limits(AsDifference), std::pair(-3.0, 6.0));
    EXPECT_EQ(limits(AsRatio), std::pair(0.25, 2.5));
    Put(2, -2);
    EXPECT_EQ(limits(AsRatio), std::pair(-5.0, -0.5));
    // The first one, given the second in its form.
    UnknownParNo = 2;
    Put(3, 3);
    EXPECT_EQ(limits(AsValue), std::pair(-99999.0, 99999.0));
    EXPECT_EQ(limits(AsDifference), std::pair(-2.0, 7.0));
    Put(3, 2);
    EXPECT_EQ(limits(AsRatio), std::pair(0.5, 5.0));
    UnknownParNo = 4;
    EXPECT_EQ(limits(AsRatio), std::pair(-99999.0, 99999.0));
}

// In 32 bits a difference of -300 and one of 0.00001 - 300 are the same, but a deviation of 0 is
// not one of 0.00001.
TEST_F(CheckSearch, ADependentValueHasToReachItsOwnRange) {
    Put(2, 300);
    Put(3, -300);
    EXPECT_FALSE(CheckPair(2, 3, 0.00001F, 99999, AsDifference));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H1: Mean Has To Be Greater Than or Equal to -299.99999."});
    Put(3, -299.99999);
    EXPECT_TRUE(CheckPair(2, 3, 0.00001F, 99999, AsDifference));
    Put(2, 0.7);
    Put(3, 0.29999);
    EXPECT_TRUE(CheckPair(2, 3, 0.00001F, 0.99999F, AsDifference));
    Put(3, 0.3);
    EXPECT_FALSE(CheckPair(2, 3, 0.00001F, 0.99999F, AsDifference));
    Put(2, 3000);
    Put(3, 1e-9);
    EXPECT_FALSE(CheckPair(2, 3, 0.00001F, 99999, AsRatio));
    Put(3, 1e-8);
    EXPECT_TRUE(CheckPair(2, 3, 0.00001F, 99999, AsRatio));
}

TEST_F(CheckSearch, OnlyALimitOfTheKindItselfIsReachedIn32Bits) {
    Put(2, 500.00001);
    EXPECT_EQ(static_cast<f32>(ParValue(2)), 500.0F);
    EXPECT_FALSE(CheckRange(2, 3, 500));
    Put(2, 500);
    EXPECT_TRUE(CheckRange(2, 3, 500));
    Put(2, 2.9999999);
    EXPECT_FALSE(CheckRange(2, 3, 500));
}

// At the limits of the search, and next to them, the equation finds the dependent value in its
// range, whatever the size of the base.
TEST_F(CheckSearch, AtTheLimitsOfAPairTheDependentValueIsInItsRange) {
    const f64 min = static_cast<f64>(0.00001F);
    const f64 max = static_cast<f64>(0.99999F);
    const auto expectInside = [](f32 value, f64 low, f64 high, const std::string& where) {
        EXPECT_GE(static_cast<f64>(value), low) << where;
        EXPECT_LE(static_cast<f64>(value), high) << where;
    };
    for (const f64 base : {0.0012345, 0.1, 0.3, 0.7, 3.3, 256.7, 300.0, 1282.1, 2195.7, 98765.4})
        for (const f64 high : {max, 99999.0})
            for (const Form form : {AsDifference, AsRatio}) {
                const std::string where = std::to_string(base) + " to " + std::to_string(high);
                const auto dependent = [form](f64 first, f64 entered) {
                    const f64 b = static_cast<f64>(static_cast<f32>(first));
                    return static_cast<f32>(form == AsDifference ? b + entered : b * entered);
                };
                f64 lower = -1e9;
                f64 upper = 1e9;
                UnknownParNo = 3;
                Put(2, base);
                PairLimits(lower, upper, 2, min, high, form);
                EXPECT_LT(lower, upper) << where;
                expectInside(dependent(base, lower), min, high, where + ", entry");
                expectInside(dependent(base, upper), min, high, where + ", entry");
                lower = -1e9;
                upper = 1e9;
                UnknownParNo = 2;
                Put(3, form == AsDifference ? -base : base);
                PairLimits(lower, upper, 2, min, high, form);
                expectInside(dependent(lower, ParValue(3)), min, high, where + ", base");
                expectInside(dependent(upper, ParValue(3)), min, high, where + ", base");
            }
}

// The base counts as the equation will see it, in 32 bits.
TEST_F(CheckSearch, LimitsOfAPairAreFormedWithThe32BitBase) {
    const f64 base = 0.1;
    const f64 seen = static_cast<f64>(0.1F);
    ASSERT_NE(base, seen);
    f64 lower = -1e9;
    f64 upper = 1e9;
    UnknownParNo = 3;
    Put(2, base);
    PairLimits(lower, upper, 2, 0.25, 0.5, AsDifference);
    EXPECT_EQ(lower, 0.25 - seen);
    EXPECT_EQ(upper, 0.5 - seen);
    lower = -1e9;
    upper = 1e9;
    PairLimits(lower, upper, 2, 0.25, 0.5, AsRatio);
    EXPECT_NEAR(lower, 0.25 / seen, 1e-12);
    EXPECT_NEAR(upper, 0.5 / seen, 1e-12);
}

// A limit that is no 32-bit value, and a base next to it: the entry at the limit is about 1e-9, and
// from there it is 1e16 steps of 64 bits to the first one whose sum with the base is inside.
TEST_F(CheckSearch, ALimitOfAPairBetweenTwo32BitValuesIsFoundAtOnce) {
    constexpr f64 least = -1.0 / 9;
    Put(2, -0.1111111119389534F);
    UnknownParNo = 3;
    f64 lower = -1;
    f64 upper = 1;
    PairLimits(lower, upper, 2, least, 0.5, AsDifference);
    const f64 base{static_cast<f32>(ParValue(2))};
    EXPECT_GE(f64{static_cast<f32>(base + lower)}, least);
    EXPECT_NEAR(lower, 0, 1e-8);
}

// No 32-bit base lies between -0.3 and -0.3 + 2e-10: nothing is left to search.
TEST_F(CheckSearch, APairThatNo32BitBaseServesLeavesNothing) {
    Put(3, 0.3);
    UnknownParNo = 2;
    f64 lower = -1;
    f64 upper = 1;
    PairLimits(lower, upper, 2, 0, 2e-10, AsDifference);
    EXPECT_GE(lower, upper);
}

TEST_F(CheckSearch, ARatioToNothingLeavesTheLimitsAlone) {
    ClearFloatFaults();
    for (const i16 unknown : {i16{2}, i16{3}}) {
        f64 lower = -7;
        f64 upper = 8;
        UnknownParNo = unknown;
        Put(2, 0);
        Put(3, 0);
        PairLimits(lower, upper, 2, 1, 2, AsRatio);
        EXPECT_EQ(lower, -7);
        EXPECT_EQ(upper, 8);
    }
    EXPECT_FALSE(HasFloatFault());
}

TEST_F(CheckSearch, TheTailDecidesTheSide) {
    const auto sides = [](auto limit) {
        f64 lower = -5;
        f64 upper = 5;
        limit(lower, upper, 1.0);
        return std::pair(lower, upper);
    };
    NoOfTails = OneSided;
    LeftTail = False;
    EXPECT_EQ(sides(LeftTailLimit), std::pair(1.0, 5.0));
    EXPECT_EQ(sides(RightTailLimit), std::pair(-5.0, 1.0));
    LeftTail = True;
    EXPECT_EQ(sides(LeftTailLimit), std::pair(-5.0, 1.0));
    EXPECT_EQ(sides(RightTailLimit), std::pair(1.0, 5.0));
    NoOfTails = TwoSided;
    EXPECT_EQ(sides(LeftTailLimit), std::pair(1.0, 5.0)) << "two tails take the right side";
}

} // namespace
} // namespace quorvanta::checks
