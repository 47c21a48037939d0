#include "output/statement.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvanta {
namespace {

// A surface whose characters are 10 wide each.
f64 TenWide(std::string_view text) {
    return 10.0 * static_cast<f64>(text.size());
}

WrappedText Wrap(const std::string& text) {
    return WrapText(text, TenWide);
}

// n words of that length, a blank between them.
std::string Words(int n, std::size_t length) {
    std::string text;
    for (int i = 0; i < n; ++i)
        text += (i > 0 ? " " : "") + std::string(length, static_cast<char>('a' + i % 26));
    return text;
}

TEST(WrapText, FillsAShortTextTo80) {
    const WrappedText wrapped = Wrap("The power is 0.80.");
    EXPECT_EQ(wrapped.Text, "The power is 0.80." + std::string(62, ' '));
    EXPECT_EQ(wrapped.Lines, 1);
    EXPECT_EQ(wrapped.MaxWidth, 800);
}

TEST(WrapText, MakesDoubleBlanksSingle) {
    EXPECT_EQ(Wrap("a  b    c").Text, "a b c" + std::string(75, ' '));
}

TEST(WrapText, FillsAnEmptyTextAsWell) {
    EXPECT_EQ(Wrap("").Text, std::string(80, ' '));
    EXPECT_EQ(Wrap("").Lines, 1);
}

TEST(WrapText, LeavesATextOf80OnOneLine) {
    const std::string text = Words(9, 8); // 9 words of 8 and 8 blanks are 80 characters
    ASSERT_EQ(text.size(), 80U);
    EXPECT_EQ(Wrap(text).Text, text);
    EXPECT_EQ(Wrap(text).Lines, 1);
}

TEST(WrapText, BreaksAtTheLastBlankBefore80) {
    // 9 words of 8 reach 80 exactly; the 10th word begins the second line.
    const WrappedText wrapped = Wrap(Words(12, 8));
    EXPECT_EQ(wrapped.Text, Words(9, 8) + "\n" + "jjjjjjjj kkkkkkkk llllllll");
    EXPECT_EQ(wrapped.Lines, 2);
    EXPECT_EQ(wrapped.MaxWidth, 800);
}

TEST(WrapText, CountsTheMarksFromTheStartOfTheText) {
    // 7 words of 10 end at 76, and the 8th at 87 is past 80: the first line has 76 characters. The
    // second may go to 160 of the whole text: the 14th word ends at 153, the 15th at 164. So it
    // holds the words 8 to 14, and the third goes to 240: the 21st word ends at 230, the 22nd would
    // at 241.
    const WrappedText wrapped = Wrap(Words(22, 10));
    EXPECT_EQ(wrapped.Lines, 4);
    std::string expected = Words(22, 10);
    for (const std::size_t blank : {76U, 153U, 230U})
        expected[blank] = '\n';
    EXPECT_EQ(wrapped.Text, expected);
    EXPECT_EQ(wrapped.MaxWidth, 760);
}

TEST(WrapText, ALineAfterAShortOneMayBeLonger) {
    // A word of 60, one of 30 (past 80, so on line 2 from 61), and words of 9 up to 160: 91, 101,
    // 111, 121, 131, 141, 151 and not 161. Line 2 runs from 61 to 161: 30 + 6 x 10 = 90 and one
    // more of 10 would end at 161.
    const std::string text = std::string(60, 'x') + " " + std::string(30, 'y') + " " + Words(8, 9);
    const WrappedText wrapped = Wrap(text);
    std::string expected = text;
    expected[60] = '\n';
    expected[151] = '\n';
    EXPECT_EQ(wrapped.Text, expected);
    EXPECT_EQ(wrapped.Lines, 3);
    EXPECT_EQ(wrapped.MaxWidth, 900);
}

TEST(WrapText, KeepsAWordThatIsLongerThanALine) {
    const std::string word(100, 'x');
    EXPECT_EQ(Wrap(word).Text, word);
    EXPECT_EQ(Wrap(word).MaxWidth, 1000);
}

TEST(WrapText, CountsCharactersNotBytes) {
    // 40 words of one letter of two bytes: 79 characters, filled up to 80.
    std::string text;
    for (int i = 0; i < 40; ++i)
        text += i > 0 ? " \xC3\xBC" : "\xC3\xBC";
    EXPECT_EQ(Wrap(text).Text, text + " ");
    EXPECT_EQ(Wrap(text).Lines, 1);
}

} // namespace
} // namespace quorvanta
