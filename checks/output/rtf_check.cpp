#include "output/statement.h"

#include <cctype>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

// --- A reader of RTF, as small as the documents allow -----------------------------------------

struct Token {
    enum class Type { Open, Close, Word, Symbol, Text } Kind;
    std::string Value; // of a control word its letters
    bool HasNumber = false;
    int Number = 0;
};

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// Follows the RTF specification: a control word is letters, an optional number, and one blank that
// belongs to it; a control symbol is one character that is no letter. Fails on a byte that is not
// ASCII and on a brace left open.
std::vector<Token> Tokens(const std::string& rtf) {
    std::vector<Token> tokens;
    int depth = 0;
    for (std::size_t i = 0; i < rtf.size();) {
        const char c = rtf[i];
        EXPECT_LT(static_cast<unsigned char>(c), 0x80);
        if (c == '{' || c == '}') {
            depth += c == '{' ? 1 : -1;
            EXPECT_GE(depth, 0);
            tokens.push_back({c == '{' ? Token::Type::Open : Token::Type::Close, {c}});
            ++i;
        } else if (c == '\\' && i + 1 < rtf.size() && !IsLetter(rtf[i + 1])) {
            tokens.push_back({Token::Type::Symbol, {rtf[i + 1]}});
            i += 2;
        } else if (c == '\\') {
            Token token{Token::Type::Word, ""};
            for (++i; i < rtf.size() && IsLetter(rtf[i]); ++i)
                token.Value += rtf[i];
            std::string number;
            if (i < rtf.size() && rtf[i] == '-')
                number += rtf[i++];
            while (i < rtf.size() && std::isdigit(static_cast<unsigned char>(rtf[i])) != 0)
                number += rtf[i++];
            if (!number.empty()) {
                token.HasNumber = true;
                token.Number = std::stoi(number);
            }
            if (i < rtf.size() && rtf[i] == ' ')
                ++i;
            tokens.push_back(token);
        } else {
            if (tokens.empty() || tokens.back().Kind != Token::Type::Text)
                tokens.push_back({Token::Type::Text, ""});
            tokens.back().Value += c;
            ++i;
        }
    }
    EXPECT_EQ(depth, 0);
    return tokens;
}

// What a reader would show: the text of the last group, "\n" for a paragraph mark, UTF-16 units
// for whatever is not ASCII.
struct Shown {
    std::u16string Text;
    bool Bold = false;
    int FontSize = 0; // half points
};

Shown Read(const std::string& rtf) {
    const std::vector<Token> tokens = Tokens(rtf);
    Shown shown;
    int group = 0;
    int depth = 0;
    int skip = 0; // characters that stand for the Unicode one before them
    for (const Token& token : tokens) {
        if (token.Kind == Token::Type::Open) {
            ++depth;
            group += depth == 2 ? 1 : 0;
        } else if (token.Kind == Token::Type::Close) {
            --depth;
        }
        if (depth != 2 || group != 3) // the font table and the style sheet come first
            continue;
        if (token.Kind == Token::Type::Text) {
            for (const char c : token.Value) {
                if (skip > 0)
                    --skip;
                else
                    shown.Text += static_cast<char16_t>(c);
            }
        } else if (token.Kind == Token::Type::Symbol) {
            shown.Text += static_cast<char16_t>(token.Value[0]);
        } else if (token.Kind == Token::Type::Word) {
            if (token.Value == "par")
                shown.Text += u'\n';
            else if (token.Value == "tab")
                shown.Text += u'\t';
            else if (token.Value == "b")
                shown.Bold = true;
            else if (token.Value == "fs")
                shown.FontSize = token.Number;
            else if (token.Value == "u") {
                shown.Text += static_cast<char16_t>(static_cast<std::uint16_t>(token.Number));
                skip = 1;
            } else
                EXPECT_TRUE(token.Value == "s" || token.Value == "f") << token.Value;
        }
    }
    return shown;
}

class Rtf : public ::testing::Test {
  protected:
    void SetUp() override {
        SummaryFont = "Arial";
        SummaryFontSize = 10;
        SummaryBold = 0;
    }
    void TearDown() override { SetUp(); }
};

// --- The document -----------------------------------------------------------------------------

TEST_F(Rtf, IsTheDocumentWordForWord) {
    EXPECT_EQ(RtfDocument("The power is 0.80."),
              "{\\rtf0\\ansi{\\fonttbl\\f1\\fnil Arial;}{\\stylesheet {\\s0 Normal;}}"
              "{\\s0\\f1\\fs20 The power is 0.80.\\par}}");
}

TEST_F(Rtf, BoldMarkEndsBeforeTheText) {
    SummaryBold = 1;
    EXPECT_EQ(RtfDocument("The power"),
              "{\\rtf0\\ansi{\\fonttbl\\f1\\fnil Arial;}{\\stylesheet {\\s0 Normal;}}"
              "{\\s0\\f1\\fs20 \\b The power\\par}}");
    const Shown shown = Read(RtfDocument("a power"));
    EXPECT_TRUE(shown.Bold);
    EXPECT_EQ(shown.Text, u"a power\n");
}

TEST_F(Rtf, FontSizeIsInPointsAndWrittenInHalfPoints) {
    SummaryFontSize = 12;
    EXPECT_EQ(Read(RtfDocument("x")).FontSize, 24);
    EXPECT_FALSE(Read(RtfDocument("x")).Bold);
}

TEST_F(Rtf, EveryNewLineIsAParagraph) {
    const std::string line(NewLine);
    EXPECT_EQ(Read(RtfDocument("one" + line + "two" + line + line + "three")).Text,
              u"one\ntwo\n\nthree\n");
}

TEST_F(Rtf, SpecialCharactersAreShownAsTheyAre) {
    EXPECT_EQ(Read(RtfDocument("a{b}c\\d")).Text, u"a{b}c\\d\n");
    EXPECT_EQ(Read(RtfDocument("\\par}")).Text, u"\\par}\n");
    EXPECT_EQ(Read(RtfDocument("{{{")).Text, u"{{{\n");
    EXPECT_EQ(Read(RtfDocument("a\tb")).Text, u"a\tb\n");
}

TEST_F(Rtf, TextBeyondAsciiIsWrittenAsUnicode) {
    // U+00FC, U+2265, U+03B1; above U+FFFF a pair of surrogates.
    EXPECT_EQ(Read(RtfDocument("\xC3\xBC")).Text, u"\u00FC\n");
    EXPECT_EQ(Read(RtfDocument("p \xE2\x89\xA5 0.8, \xCE\xB1")).Text, u"p \u2265 0.8, \u03B1\n");
    EXPECT_EQ(Read(RtfDocument("\xF0\x9D\x9B\xBC")).Text, u"\U0001D6FC\n");
    // Above U+7FFF the number is negative: it has 16 bits and a sign.
    EXPECT_NE(RtfDocument("\xEF\xBF\xBD").find("\\u-3?"), std::string::npos);
    // A digit may follow the replacement for old readers, not the number.
    EXPECT_EQ(Read(RtfDocument("\xC3\xBC"
                               "7"))
                  .Text,
              u"\u00FC7\n");
}

TEST_F(Rtf, BytesThatAreNoTextDoNoHarm) {
    // A lone continuation byte, a cut sequence, an overlong form, a value above U+10FFFF.
    EXPECT_EQ(Read(RtfDocument("a\x80"
                               "b"))
                  .Text,
              u"a\uFFFDb\n");
    EXPECT_EQ(Read(RtfDocument("a\xE2\x89")).Text, u"a\uFFFD\uFFFD\n");
    EXPECT_EQ(Read(RtfDocument("\xC0\xAF")).Text, u"\uFFFD\uFFFD\n");
    EXPECT_EQ(Read(RtfDocument("\xF5\x80\x80\x80")).Text, u"\uFFFD\uFFFD\uFFFD\uFFFD\n");
    EXPECT_EQ(Read(RtfDocument(std::string("a\x01\x7F\0b", 5))).Text, u"ab\n");
}

TEST_F(Rtf, EveryByteGivesAValidDocument) {
    for (int byte = 0; byte < 256; ++byte)
        for (const char* after : {"", "{", "\x80", "a"})
            Tokens(RtfDocument(std::string(1, static_cast<char>(byte)) + after));
}

TEST_F(Rtf, AFontNameCantBreakTheFontTable) {
    SummaryFont = "Strange; {Font}\\";
    const std::string rtf = RtfDocument("text");
    EXPECT_EQ(Read(rtf).Text, u"text\n");
    EXPECT_NE(rtf.find("{\\fonttbl\\f1\\fnil Strange \\{Font\\}\\\\;}"), std::string::npos);
}

TEST_F(Rtf, AnEmptyTextIsAnEmptyParagraph) {
    EXPECT_EQ(Read(RtfDocument("")).Text, u"\n");
}

} // namespace
} // namespace quorvanta
