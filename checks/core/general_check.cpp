#include "core/fault.h"
#include "core/general.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvanta {
namespace {

TEST(ExpClamped, GrowsNoFurtherThanAnExponentOf75) {
    EXPECT_EQ(ExpClamped(80.0F), std::exp(75.0));
    EXPECT_EQ(ExpClamped(75.0F), std::exp(75.0));
    EXPECT_LT(ExpClamped(74.9F), std::exp(75.0));
    EXPECT_EQ(ExpClamped(0.0F), 1.0);
    EXPECT_EQ(ExpClamped(-1e6F), 0.0);
}

TEST(ExpClamped, TheExponentIsA32BitFloat) {
    EXPECT_EQ(ExpClamped(0.1F), std::exp(0.100000001490116119384765625));
}

TEST(SmallHelpers, SmallerAndLarger) {
    EXPECT_EQ(MinSingle(1.5F, -2.5F), -2.5F);
    EXPECT_EQ(MaxSingle(1.5F, -2.5F), 1.5F);
    EXPECT_EQ(MinDouble(1e-300, 1e300), 1e-300);
    EXPECT_EQ(MinInteger(3, -4), -4);
    EXPECT_EQ(MaxInteger(3, -4), 3);
    EXPECT_EQ(MaxOf(0.25, 0.5), 0.5);
    EXPECT_EQ(MinOf(0.25, 0.5), 0.25);
}

TEST(SmallHelpers, SignOfANumber) {
    EXPECT_EQ(Sgn(-3.5), -1);
    EXPECT_EQ(Sgn(0.0), 0);
    EXPECT_EQ(Sgn(-0.0), 0);
    EXPECT_EQ(Sgn(1e-300), 1);
}

TEST(SmallHelpers, IntGoesDown) {
    EXPECT_EQ(Int(2.7), 2);
    EXPECT_EQ(Int(-2.2), -3);
    EXPECT_EQ(Int(5.0), 5);
}

TEST(ToInteger, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(ToI16(0.5), 0);
    EXPECT_EQ(ToI16(1.5), 2);
    EXPECT_EQ(ToI16(2.5), 2);
    EXPECT_EQ(ToI16(-2.5), -2);
    EXPECT_EQ(ToI16(2.51), 3);
    EXPECT_EQ(ToI32(100000.5), 100000);
}

TEST(ToInteger, WhatDoesNotFitIsAFault) {
    EXPECT_EQ(ToI16(32767.4), 32767);
    EXPECT_EQ(ToI16(-32768.5), -32768);
    EXPECT_THROW(ToI16(32767.5), RunTimeError);
    EXPECT_THROW(ToI16(-32768.6), RunTimeError);
    EXPECT_THROW(ToI16(99999), RunTimeError);
    EXPECT_THROW(ToI16(std::numeric_limits<f64>::quiet_NaN()), RunTimeError);
    EXPECT_THROW(ToI16(std::numeric_limits<f64>::infinity()), RunTimeError);
    EXPECT_EQ(ToI32(2147483647.0), 2147483647);
    EXPECT_THROW(ToI32(2147483648.0), RunTimeError);
    try {
        ToI16(1e9);
        ADD_FAILURE() << "no fault";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.Kind(), Fault::Overflow);
    }
}

TEST(LetterCase, IsThatOfAsciiInAnyLocale) {
    EXPECT_EQ(LowerCase('I'), 'i');
    EXPECT_EQ(UpperCase('i'), 'I');
    for (const char c : {'5', '.', '@', '[', '`', '{', '\xC9'}) {
        EXPECT_EQ(LowerCase(c), c);
        EXPECT_EQ(UpperCase(c), c);
    }
}

TEST(StripAmpersand, TakesOutEveryMark) {
    EXPECT_EQ(StripAmpersand("S&ignificance Level"), "Significance Level");
    EXPECT_EQ(StripAmpersand("&&x&"), "x");
    EXPECT_EQ(StripAmpersand(""), "");
}

TEST(ReadNumber, ACommaCountsAsADecimalPoint) {
    EXPECT_EQ(ReadNumber("0,25"), 0.25);
    EXPECT_EQ(ReadNumber("0.25"), 0.25);
    EXPECT_EQ(ReadNumber("-1,5E-3"), -0.0015);
    EXPECT_EQ(ReadNumber("1,2,3"), 1.2);
}

TEST(ReadNumber, ATextWhoseNumberIsTooLargeIsNotReadable) {
    EXPECT_FALSE(IsReadable(std::string(400, '9')));
    EXPECT_FALSE(IsReadable("1,5E400"));
    EXPECT_THROW(ReadNumber("1,5E400"), RunTimeError);
    for (const char* text : {"1E300", "1E-400", "0,5", "", "-", "x"})
        EXPECT_TRUE(IsReadable(text)) << text;
}

TEST(ReadNumber, WhatIsNoNumberIsZero) {
    EXPECT_EQ(ReadNumber(""), 0.0);
    EXPECT_EQ(ReadNumber("-"), 0.0);
    EXPECT_EQ(ReadNumber("   "), 0.0);
}

} // namespace
} // namespace quorvanta
