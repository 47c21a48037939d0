#include "output/rtf.h"
#include "output/statement.h"
#include "support/rtf_reader.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvanta {
namespace {

using checks::Read;
using checks::ShownRtf;

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
    const ShownRtf shown = Read(RtfDocument("a power"));
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
            Read(RtfDocument(std::string(1, static_cast<char>(byte)) + after));
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
