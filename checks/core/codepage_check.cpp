#include "core/codepage.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvanta {
namespace {

TEST(CodePage, PlainTextStaysAsItIs) {
    EXPECT_EQ(ToWindows1252("Power = 0.80"), "Power = 0.80");
    EXPECT_EQ(FromWindows1252("Power = 0.80"), "Power = 0.80");
}

// Bytes from the code page's table in the Unicode Consortium's mapping file CP1252.TXT.
TEST(CodePage, CharactersOfItsOwnRange) {
    EXPECT_EQ(ToWindows1252("€"), "\x80");
    EXPECT_EQ(ToWindows1252("„Größe”"), "\x84Gr\xF6\xDF"
                                        "e\x94");
    EXPECT_EQ(ToWindows1252("Œ–ž™Ÿ"), "\x8C\x96\x9E\x99\x9F");
    EXPECT_EQ(ToWindows1252("ÿ\u00A0"), "\xFF\xA0");
}

TEST(CodePage, WhatItLacksBecomesAQuestionMark) {
    EXPECT_EQ(ToWindows1252("α ≤ 0.05"), "? ? 0.05");
    EXPECT_EQ(ToWindows1252("試験"), "??");
    EXPECT_EQ(ToWindows1252("😀"), "?");
}

TEST(CodePage, BytesThatAreNoTextBecomeQuestionMarks) {
    EXPECT_EQ(ToWindows1252("a\xFFz"), "a?z");
    EXPECT_EQ(ToWindows1252("a\xE2\x82"), "a??");         // a character cut short
    EXPECT_EQ(ToWindows1252("\xC0\xAF"), "??");           // an overlong "/"
    EXPECT_EQ(ToWindows1252("\xED\xA0\x80"), "???");      // half of a surrogate pair
    EXPECT_EQ(ToWindows1252("\xF4\x90\x80\x80"), "????"); // beyond the last character
}

TEST(CodePage, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    const std::string utf8 = FromWindows1252(all);
    EXPECT_EQ(ToWindows1252(utf8), all);
    EXPECT_EQ(utf8.substr(0x80, 3), "€");
}

TEST(CodePage, CharactersAreTakenOneByOne) {
    std::string_view text = "a\u00DF\u20AC\U0001F600\x80z";
    for (const auto& expected :
         {std::optional(U'a'), std::optional(U'\u00DF'), std::optional(U'\u20AC'),
          std::optional(U'\U0001F600'), std::optional<char32_t>(), std::optional(U'z')})
        EXPECT_EQ(TakeCharacter(text), expected);
    EXPECT_TRUE(text.empty());
}

TEST(CodePage, LengthOfCharacters) {
    const std::string text = "aß€😀";
    EXPECT_EQ(CharacterLength(text, 0), 1U);
    EXPECT_EQ(CharacterLength(text, 1), 2U);
    EXPECT_EQ(CharacterLength(text, 3), 3U);
    EXPECT_EQ(CharacterLength(text, 6), 4U);
}

} // namespace
} // namespace quorvanta
