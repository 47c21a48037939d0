#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/number_text.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {
namespace {

Array1<f32> Column(const std::vector<f32>& values) {
    Array1<f32> column(1, static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
        column(static_cast<int>(i) + 1) = values[i];
    return column;
}

std::string ColumnPicture(const std::vector<f32>& values) {
    return FormatForColumn(1, static_cast<int>(values.size()), Column(values));
}

// --- Val --------------------------------------------------------------------------------------

TEST(Val, ReadsTheNumberAtTheStart) {
    EXPECT_EQ(Val("0.30"), 0.30);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("5."), 5.0);
    EXPECT_EQ(Val("-12.5"), -12.5);
    EXPECT_EQ(Val("+3"), 3.0);
    EXPECT_EQ(Val("  7"), 7.0);
    EXPECT_EQ(Val("\t7"), 7.0);
    EXPECT_EQ(Val("1E-5"), 1e-5);
    EXPECT_EQ(Val("1d3"), 1000.0);
    EXPECT_EQ(Val("2.5e+2"), 250.0);
}

TEST(Val, StopsAtTheFirstCharacterThatIsNoPartOfANumber) {
    EXPECT_EQ(Val("12abc"), 12.0);
    EXPECT_EQ(Val("1.2.3"), 1.2);
    EXPECT_EQ(Val("1,5"), 1.0);
    EXPECT_EQ(Val("3 4"), 3.0);
    EXPECT_EQ(Val("4-2"), 4.0);
    EXPECT_EQ(Val("1E"), 1.0);
    EXPECT_EQ(Val("1E+"), 1.0);
    EXPECT_EQ(Val("1Ex"), 1.0);
}

TEST(Val, ATextWithoutANumberIsZero) {
    for (const char* text :
         {"", "   ", "-", "+", ".", "-.", "abc", "e5", ".e5", "- 5", "inf", "nan", "0x10", "&H10"})
        EXPECT_EQ(Val(text), 0.0) << text;
}

TEST(Val, NeverGivesNegativeZero) {
    EXPECT_FALSE(std::signbit(Val("-0")));
    EXPECT_FALSE(std::signbit(Val("-0.000E5")));
}

TEST(Val, TooLargeIsAFaultAndTooSmallIsZero) {
    EXPECT_EQ(Val("1E308"), 1e308);
    EXPECT_THROW(Val("1E309"), RunTimeError);
    EXPECT_THROW(Val("-1E99999999999999999999"), RunTimeError);
    EXPECT_THROW(Val(std::string(400, '9')), RunTimeError);
    EXPECT_EQ(Val("1E-400"), 0.0);
    EXPECT_EQ(Val("1E-99999999999999999999"), 0.0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(Val("0E99999999999999999999"), 0.0);
}

// --- Str --------------------------------------------------------------------------------------

TEST(Str, ShowsSevenDigitsOfA32BitFloat) {
    EXPECT_EQ(Str(0.1F), "0.1");
    EXPECT_EQ(Str(0.5F), "0.5");
    EXPECT_EQ(Str(-0.25F), "-0.25");
    EXPECT_EQ(Str(1.0F / 3.0F), "0.3333333");
    EXPECT_EQ(Str(2.0F / 3.0F), "0.6666667");
    EXPECT_EQ(Str(30.0F), "30");
    EXPECT_EQ(Str(123.456F), "123.456");
    EXPECT_EQ(Str(0.0F), "0");
    EXPECT_EQ(Str(-0.0F), "0");
}

TEST(Str, ShowsFifteenDigitsOfA64BitFloat) {
    EXPECT_EQ(Str(0.1), "0.1");
    EXPECT_EQ(Str(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(Str(0.1 + 0.2), "0.3");
    EXPECT_EQ(Str(99999.0), "99999");
    EXPECT_EQ(Str(-0.0), "0");
}

TEST(Str, TurnsToAnExponentAtItsBounds) {
    EXPECT_EQ(Str(0.0001F), "0.0001");
    EXPECT_EQ(Str(0.00001F), "1E-05");
    EXPECT_EQ(Str(9999999.0F), "9999999");
    EXPECT_EQ(Str(10000000.0F), "1E+07");
    EXPECT_EQ(Str(0.0001), "0.0001");
    EXPECT_EQ(Str(0.00001), "1E-05");
    EXPECT_EQ(Str(999999999999999.0), "999999999999999");
    EXPECT_EQ(Str(1e15), "1E+15");
    EXPECT_EQ(Str(1.5e20), "1.5E+20");
    EXPECT_EQ(Str(1.5e-120), "1.5E-120");
}

// --- Format -----------------------------------------------------------------------------------

TEST(Format, RoundsHalfAwayFromZeroOnTheDecimalText) {
    EXPECT_EQ(Format(0.5, "0"), "1");
    EXPECT_EQ(Format(1.5, "0"), "2");
    EXPECT_EQ(Format(2.5, "0"), "3");
    EXPECT_EQ(Format(-2.5, "0"), "-3");
    EXPECT_EQ(Format(0.125, "0.00"), "0.13");
    // The 64-bit float of 2.675 lies below it; its text of 15 digits does not.
    EXPECT_EQ(Format(2.675, "0.00"), "2.68");
    EXPECT_EQ(Format(1.005, "0.00"), "1.01");
    EXPECT_EQ(Format(0.999996, "0.0####"), "1.0");
    EXPECT_EQ(Format(0.999994, "0.0####"), "0.99999");
    EXPECT_EQ(Format(9.99996, "0.0###"), "10.0");
    EXPECT_EQ(Format(-9.99996, "0.0###"), "-10.0");
    EXPECT_EQ(Format(999999.99999, "#####0.00"), "1000000.00");
}

TEST(Format, ShowsZerosWhereThePictureHasThem) {
    EXPECT_EQ(Format(0.3, "0.0####"), "0.3");
    EXPECT_EQ(Format(3, "0.0####"), "3.0");
    EXPECT_EQ(Format(0.5, "#0.0000"), "0.5000");
    EXPECT_EQ(Format(7, "000"), "007");
    EXPECT_EQ(Format(0.25, ".0#"), ".25");
    EXPECT_EQ(Format(12.5, ".0#"), "12.5");
    EXPECT_EQ(Format(0, ".0#"), ".0");
    EXPECT_EQ(Format(0.05, "#.##"), ".05");
    EXPECT_EQ(Format(12345.678, "0.00"), "12345.68");
}

TEST(Format, DropsABareTrailingPoint) {
    EXPECT_EQ(Format(5, "#####0.######"), "5");
    EXPECT_EQ(Format(0, "#####0.######"), "0");
    EXPECT_EQ(Format(0.00001F, "#####0.######"), "0.00001");
    EXPECT_EQ(Format(-99999, "#####0.######"), "-99999");
}

TEST(Format, APictureThatYieldsNoDigitShowsZero) {
    EXPECT_EQ(Format(0, "##########"), "0");
    EXPECT_EQ(Format(0.4, "##########"), "0");
    EXPECT_EQ(Format(0, "########## "), "0 ");
    EXPECT_EQ(Format(0, "#.##"), "0");
}

TEST(Format, NegativeZeroIsZero) {
    EXPECT_EQ(Format(-0.0, "0.00"), "0.00");
    EXPECT_EQ(Format(-0.001, "0.00"), "0.00");
    EXPECT_EQ(Format(-0.005, "0.00"), "-0.01");
    EXPECT_EQ(Format(-0.4, "##########"), "0");
}

TEST(Format, BlanksStandAsTheyAre) {
    EXPECT_EQ(Format(1.25, "######0.00 "), "1.25 ");
    EXPECT_EQ(Format(-1.25, " 0.0"), " -1.3");
}

TEST(Format, LargeAndSmallNumbersKeepFifteenDigits) {
    EXPECT_EQ(Format(1e15, "0"), "1000000000000000");
    EXPECT_EQ(Format(1.23456789012345678e20, "0"), "123456789012346000000");
    EXPECT_EQ(Format(1e-20, "0.0####"), "0.0");
    EXPECT_EQ(Format(1e300, "0").size(), 301U);
}

TEST(Format, WhatIsNoFiniteNumberIsShownAsSuch) {
    EXPECT_EQ(Format(std::numeric_limits<f64>::infinity(), "0.00"), "INF");
    EXPECT_EQ(Format(-std::numeric_limits<f64>::infinity(), "0.00"), "-INF");
    EXPECT_EQ(Format(std::numeric_limits<f64>::quiet_NaN(), "0.00"), "NAN");
}

// --- FormatBySize -----------------------------------------------------------------------------

TEST(FormatBySize, ChoosesByTheSize) {
    EXPECT_EQ(FormatBySize(0), "0");
    EXPECT_EQ(FormatBySize(30), "0");
    EXPECT_EQ(FormatBySize(-30), "0");
    EXPECT_EQ(FormatBySize(0.9), "0.0####");
    EXPECT_EQ(FormatBySize(-0.9), "0.0####");
    EXPECT_EQ(FormatBySize(1.5), "0.0###");
    EXPECT_EQ(FormatBySize(9.5), "0.0###");
    EXPECT_EQ(FormatBySize(10.5), "0.0##");
    EXPECT_EQ(FormatBySize(99.5), "0.0##");
    EXPECT_EQ(FormatBySize(100.5), "0.0#");
    EXPECT_EQ(FormatBySize(999.5), "0.0#");
    EXPECT_EQ(FormatBySize(1000.5), "0.0");
    EXPECT_EQ(FormatBySize(9999.5), "0.0");
    EXPECT_EQ(FormatBySize(10000.5), "0");
}

TEST(FormatBySize, BelowFiveMillionthsIsZero) {
    EXPECT_EQ(FormatBySize(4.9e-6), "0");
    EXPECT_EQ(FormatBySize(-4.9e-6), "0");
    EXPECT_EQ(FormatBySize(5e-6), "0.0####");
}

// --- FormatByRange ----------------------------------------------------------------------------

TEST(FormatByRange, EachThresholdBelongsToTheLargerStep) {
    EXPECT_EQ(FormatByRange(1, 0, 100), "#########0 ");
    EXPECT_EQ(FormatByRange(10, 0, 999), "#######0.0 ");
    EXPECT_EQ(FormatByRange(10, 0, 10), "#######0.0 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.9F), "######0.00 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.1F), "######0.00 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.09F), "#####0.000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.01F), "#####0.000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.009F), "####0.0000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.001F), "####0.0000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.0009F), "###0.00000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.0001F), "###0.00000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.00009F), "##0.000000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.00001F), "##0.000000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.000009F), "#0.0000000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.000001F), "#0.0000000 ");
    EXPECT_EQ(FormatByRange(1, 0, 0.0000009F), "0.00000000 ");
}

TEST(FormatByRange, ElevenCharactersAlways) {
    for (f32 step = 1e-9F; step < 1e6F; step *= 3.0F)
        EXPECT_EQ(FormatByRange(1, 0, step).size(), 11U) << step;
}

TEST(FormatByRange, TheSignOfTheStepDoesNotMatter) {
    EXPECT_EQ(FormatByRange(10, 1, 0), FormatByRange(10, 0, 1));
}

TEST(FormatByRange, NoRangeTakesTheFormatOfAStepOfOne) {
    EXPECT_EQ(FormatByRange(5, 0.3F, 0.3F), "#######0.0 ");
    EXPECT_EQ(FormatByRange(0, 0.3F, 0.3F), "#######0.0 ");
}

// --- FormatForColumn --------------------------------------------------------------------------

TEST(FormatForColumn, AColumnOfIntegersGetsTenPlaceholders) {
    EXPECT_EQ(ColumnPicture({1, 20, 300}), "########## ");
    EXPECT_EQ(ColumnPicture({0}), "########## ");
}

TEST(FormatForColumn, TheValueWithTheMostDecimalsDecides) {
    EXPECT_EQ(ColumnPicture({0.25F, 1, 0.5F}), "######0.00 ");
    EXPECT_EQ(ColumnPicture({0.1F, 0.2F, 0.3F}), "#######0.0 ");
    EXPECT_EQ(ColumnPicture({-0.125F}), "#####0.000 ");
    EXPECT_EQ(ColumnPicture({0.1234567F}), "#0.0000000 ");
}

TEST(FormatForColumn, OnlyTheValuesAskedForCount) {
    const Array1<f32> column = Column({0.123F, 0.5F, 0.25F, 0.125F});
    EXPECT_EQ(FormatForColumn(2, 3, column), "######0.00 ");
}

TEST(FormatForColumn, ANegativeExponentCountsAsDecimals) {
    EXPECT_EQ(ColumnPicture({1E-5F}), "###0.00000 ");
    EXPECT_EQ(ColumnPicture({1.5E-6F}), "##0.000000 ");
}

TEST(FormatForColumn, RoundedToSevenDecimals) {
    // 1E-08 is 0 at 7 decimals and counts none.
    EXPECT_EQ(ColumnPicture({1E-8F}), "########## ");
    EXPECT_EQ(ColumnPicture({1E-8F, 0.5F}), "#######0.0 ");
    // 2E-07 keeps an exponent after rounding.
    EXPECT_EQ(ColumnPicture({2E-7F}), "#0.0000000 ");
    EXPECT_EQ(ColumnPicture({9.6E-7F}), "#0.0000000 ");
    // 8, 9 and 10 decimals without an exponent.
    EXPECT_EQ(ColumnPicture({0.01234567F}), "#0.0000000 ");
    EXPECT_EQ(ColumnPicture({0.001234567F}), "#0.0000000 ");
    EXPECT_EQ(ColumnPicture({0.0001234567F}), "#0.0000000 ");
}

TEST(FormatForColumn, APositiveExponentCountsNoDecimals) {
    EXPECT_EQ(ColumnPicture({1.5E20F}), "########## ");
    EXPECT_EQ(ColumnPicture({1.5E20F, 0.5F}), "#######0.0 ");
}

TEST(FormatForColumn, ElevenCharactersAlways) {
    for (f32 x = 1e-9F; x < 1e9F; x *= 1.7F)
        EXPECT_EQ(ColumnPicture({x}).size(), 11U) << x;
}

TEST(FormatForColumn, BoundsOutsideTheArrayAreAFault) {
    EXPECT_THROW(FormatForColumn(0, 1, Column({1})), RunTimeError);
}

// --- FormatCell -------------------------------------------------------------------------------

TEST(FormatCell, NoValueIsADash) {
    EXPECT_EQ(FormatCell(99999, "######0.00 "), "         - ");
    EXPECT_EQ(FormatCell(-99999, "######0.00 "), "         - ");
    EXPECT_EQ(FormatCell(static_cast<f64>(99999.0F), "########## "), "         - ");
    EXPECT_EQ(FormatCell(99998, "########## "), "     99998 ");
}

TEST(FormatCell, RightAlignedToTheWidthOfThePicture) {
    EXPECT_EQ(FormatCell(0.5, "######0.00 "), "      0.50 ");
    EXPECT_EQ(FormatCell(-1.5, "#######0.0 "), "      -1.5 ");
    EXPECT_EQ(FormatCell(0, "########## "), "         0 ");
    EXPECT_EQ(FormatCell(12345678901.0, "######0.00 "), "12345678901.00 ");
}

// --- RoundPow10 -------------------------------------------------------------------------------

TEST(RoundPow10, RoundsToAMultipleOfAPowerOfTen) {
    EXPECT_DOUBLE_EQ(RoundPow10(1234.5, 2), 1200);
    EXPECT_DOUBLE_EQ(RoundPow10(1250, 2), 1300);
    EXPECT_DOUBLE_EQ(RoundPow10(0.123456, -3), 0.123);
    EXPECT_DOUBLE_EQ(RoundPow10(2.5, 0), 3);
    EXPECT_DOUBLE_EQ(RoundPow10(-2.5, 0), -2);
    EXPECT_DOUBLE_EQ(RoundPow10(1e-8, -7), 0);
}

// --- FormatPar --------------------------------------------------------------------------------

TEST(FormatPar, CountsAreRoundedUp) {
    constexpr i16 sampleSize = 85;
    EXPECT_EQ(FormatPar(sampleSize, 30), "30");
    EXPECT_EQ(FormatPar(sampleSize, 30.2), "31");
    EXPECT_EQ(FormatPar(sampleSize, 30.000009), "30");
    EXPECT_EQ(FormatPar(sampleSize, 30.00002), "31");
    EXPECT_EQ(FormatPar(sampleSize, 29.99999), "30");
    EXPECT_EQ(FormatPar(sampleSize, 0), "0");
    EXPECT_EQ(FormatPar(sampleSize, 99998.5), "99999");
    constexpr i16 sizeDifference = 38;
    EXPECT_EQ(FormatPar(sizeDifference, -3.4), "-3");
    EXPECT_EQ(FormatPar(sizeDifference, -0.3), "0");
}

// The power falls as a population grows: with the next whole one it would be short of what is
// asked.
TEST(FormatPar, PopulationsAreRoundedDown) {
    for (const i16 population : std::vector<i16>{31, 196, 197, 198}) {
        EXPECT_EQ(FormatPar(population, 91.9), "91");
        EXPECT_EQ(FormatPar(population, 92), "92");
        EXPECT_EQ(FormatPar(population, 91.999991), "92");
        EXPECT_EQ(FormatPar(population, 91.99998), "91");
    }
    constexpr i16 difference = 198;
    EXPECT_EQ(FormatPar(difference, -3.4), "-4");
}

TEST(FormatPar, OtherValuesAreShownByTheirSize) {
    constexpr i16 power = 1;
    EXPECT_EQ(FormatPar(power, 0.8), "0.8");
    EXPECT_EQ(FormatPar(power, 0.812345678), "0.81235");
    EXPECT_EQ(FormatPar(power, 1), "1");
    constexpr i16 mean = 58;
    EXPECT_EQ(FormatPar(mean, 12.34567), "12.346");
    EXPECT_EQ(FormatPar(mean, -12.34567), "-12.346");
    EXPECT_EQ(FormatPar(mean, 12345.6), "12346");
    EXPECT_EQ(FormatPar(mean, 0.999999), "1.0");
}

TEST(FormatPar, NegativeZeroIsZero) {
    EXPECT_EQ(FormatPar(Kind::H1Mean, -0.0), "0");
    EXPECT_EQ(FormatPar(Kind::H1Mean, -1e-9), "0");
    EXPECT_EQ(FormatPar(Kind::Size2Minus1, -0.0), "0");
}

} // namespace
} // namespace quorvanta
