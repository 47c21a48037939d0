#include "core/analysis_codec.h"
#include "core/records.h"

#include <bit>
#include <gtest/gtest.h>
#include <string>

namespace quorvanta {
namespace {

// A file put together by hand, byte after byte.
class Bytes {
  public:
    Bytes& I16(int value) {
        const auto bits = static_cast<std::uint16_t>(static_cast<i16>(value));
        Byte(bits & 0xFFU);
        Byte(bits >> 8U);
        return *this;
    }
    Bytes& F32(f32 value) {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        for (unsigned shift = 0; shift < 32; shift += 8)
            Byte(bits >> shift & 0xFFU);
        return *this;
    }
    Bytes& Text(const std::string& text) {
        Byte(static_cast<unsigned>(text.size()) & 0xFFU);
        Byte(static_cast<unsigned>(text.size()) >> 8U);
        text_ += text;
        return *this;
    }
    Bytes& I16s(int count, int first) {
        for (int i = 0; i < count; ++i)
            I16(first + i);
        return *this;
    }
    Bytes& F32s(int count, f32 first) {
        for (int i = 0; i < count; ++i)
            F32(first + static_cast<f32>(i) / 4);
        return *this;
    }
    Bytes& Texts(int count, char mark) {
        for (int i = 0; i < count; ++i)
            Text(mark + std::to_string(i));
        return *this;
    }

    std::string All() const { return text_; }

  private:
    void Byte(unsigned byte) { text_.push_back(static_cast<char>(byte)); }

    std::string text_;
};

// Every field with a value of its own, in the order of the file.
Bytes HandMadeFile() {
    Bytes file;
    file.I16(2).I16(7);                      // window kind and number
    file.Text("Study A.dim");                // file name
    file.I16(-1).I16(125);                   // is a test, test number
    file.Text("Student's t-test, Unpaired"); // test name
    file.I16(10);                            // distribution number
    file.Text("Bivariate Normal");           // distribution name
    file.Text("Gr\xF6\xDF"
              "e, two-sided."); // headline
    file.I16(2).I16(1).I16(-1).I16(3).I16(1).I16(
        5);                                    // samples, tails, left, list, procedure, interim
    file.I16(4).I16s(5, 20).I16s(59, 100);     // groups in use, their kinds, all options
    file.I16(5).I16s(5, 30).I16s(40, 200);     // check boxes in use, their kinds, all values
    file.I16(1).I16(2).I16(3).I16(61).I16(62); // unknown, x, z, kinds of x and z
    file.Text("0.1").Text("0.5").Text("0.2").Text("1 2 3");
    file.I16(7).I16s(13, 300);        // highest parameter, kinds
    file.Texts(13, 'p');              // value texts
    file.I16(2).Texts(16, 't');       // titles
    file.Texts(4, 'x').Texts(4, 'y'); // axes
    file.Text("Z").Text("Arial").Text("9");
    file.I16(1).I16(4).I16(-1).I16(-1).I16(3); // bold, width, decimals, grid data, grids
    file.I16s(8, 400).I16s(8, 410);            // rows, columns
    file.Texts(8, 'g').Texts(8, 'h');          // grid titles and heads
    file.I16s(8, 420).I16s(8, 430);            // flags, stores
    file.Text("Set");
    file.F32s(121, 1).F32s(22, 2); // stores 1 and 2
    for (int store = 3; store <= 9; ++store)
        file.F32s(121, static_cast<f32>(store));
    file.Texts(132, 'c');                                         // store 10
    file.Texts(6, 'a').Texts(6, 'b').Texts(6, 'r').Texts(6, 's'); // interim sizes and limits
    file.Text("10000").Text("77");                                // number of simulations, seed
    file.Texts(8, 'i').Texts(8, 'j').Texts(8, 'k').Texts(3, 'l'); // estimates
    file.I16(-1).I16(0).I16(5).I16(8).I16(9); // sequential, multiple, distribution, options
    file.F32(0.25F).F32(-1.5F).F32(3.5F).F32(1e10F);
    file.I16(2).I16(-1).I16(32); // graph style, has a graph, grid test
    return file;
}

template <class Cells>
void ExpectRun(const Cells& cells, int first) {
    for (const i16 cell : cells.Raw())
        EXPECT_EQ(cell, first++);
}

template <class Cells>
void ExpectRun(const Cells& cells, f32 first) {
    for (const f32 cell : cells.Raw()) {
        EXPECT_EQ(cell, first);
        first += 0.25F;
    }
}

template <class Cells>
void ExpectRun(const Cells& cells, char mark) {
    int i = 0;
    for (const std::string& cell : cells.Raw())
        EXPECT_EQ(cell, mark + std::to_string(i++));
}

TEST(AnalysisCodec, AllFieldsStandInTheOrderOfTheFile) {
    const auto decoded = DecodeAnalysis(HandMadeFile().All());
    ASSERT_TRUE(decoded.has_value());
    const AnalysisRecord& record = *decoded;
    EXPECT_EQ(record.WindowKind, 2);
    EXPECT_EQ(record.WindowNo, 7);
    EXPECT_EQ(record.AnalysisFileName, "Study A.dim");
    EXPECT_EQ(record.IsTest, -1);
    EXPECT_EQ(record.TestNo, 125);
    EXPECT_EQ(record.TestName, "Student's t-test, Unpaired");
    EXPECT_EQ(record.DistrNo, 10);
    EXPECT_EQ(record.DistrName, "Bivariate Normal");
    EXPECT_EQ(record.ParListName, "Größe, two-sided.");
    EXPECT_EQ(record.NoOfSamples, 2);
    EXPECT_EQ(record.NoOfTails, 1);
    EXPECT_EQ(record.LeftTail, -1);
    EXPECT_EQ(record.ParListNo, 3);
    EXPECT_EQ(record.ProcedureNo, 1);
    EXPECT_EQ(record.NoOfInterim, 5);
    EXPECT_EQ(record.NoOfIntPar, 4);
    ExpectRun(record.IntParList, 20);
    ExpectRun(record.IntParValue, 100);
    EXPECT_EQ(record.NoOfCheck, 5);
    ExpectRun(record.CheckList, 30);
    ExpectRun(record.CheckValue, 200);
    EXPECT_EQ(record.UnknownParNo, 1);
    EXPECT_EQ(record.XParNo, 2);
    EXPECT_EQ(record.ZParNo, 3);
    EXPECT_EQ(record.XKind, 61);
    EXPECT_EQ(record.ZKind, 62);
    EXPECT_EQ(record.XminText, "0.1");
    EXPECT_EQ(record.XmaxText, "0.5");
    EXPECT_EQ(record.XstepText, "0.2");
    EXPECT_EQ(record.ZValuesText, "1 2 3");
    EXPECT_EQ(record.NoOfPar, 7);
    ExpectRun(record.ParKind, 300);
    ExpectRun(record.ParText, 'p');
    EXPECT_EQ(record.NoOfTitles, 2);
    ExpectRun(record.OutTitle, 't');
    ExpectRun(record.OutXAxis, 'x');
    ExpectRun(record.OutYAxis, 'y');
    EXPECT_EQ(record.OutZLabel, "Z");
    EXPECT_EQ(record.OutFontName, "Arial");
    EXPECT_EQ(record.OutFontSize, "9");
    EXPECT_EQ(record.OutFontBold, 1);
    EXPECT_EQ(record.OutCurveWidth, 4);
    EXPECT_EQ(record.OutDecimals, -1);
    EXPECT_EQ(record.HasGridData, -1);
    EXPECT_EQ(record.NoOfGrids, 3);
    ExpectRun(record.GridRows, 400);
    ExpectRun(record.GridCols, 410);
    ExpectRun(record.GridTitle, 'g');
    ExpectRun(record.GridHead, 'h');
    ExpectRun(record.GridFlag, 420);
    ExpectRun(record.GridKind, 430);
    EXPECT_EQ(record.GridName, "Set");
    ExpectRun(record.GridData(1), 1.0F);
    for (int row = 0; row <= 10; ++row)
        for (int column = 0; column <= 1; ++column)
            EXPECT_EQ(record.GridData(2)(row, column),
                      2.0F + 0.25F * static_cast<f32>(2 * row + column));
    ExpectRun(record.GridData(3), 3.0F);
    ExpectRun(record.GridData(4), 4.0F);
    ExpectRun(record.GridData(5), 5.0F);
    ExpectRun(record.GridData(6), 6.0F);
    ExpectRun(record.GridData(7), 7.0F);
    ExpectRun(record.GridData(8), 8.0F);
    ExpectRun(record.GridData(9), 9.0F);
    ExpectRun(record.GridTexts, 'c');
    ExpectRun(record.InterimSize1Text, 'a');
    ExpectRun(record.InterimSize2Text, 'b');
    ExpectRun(record.RejectH0Text, 'r');
    ExpectRun(record.AcceptH0Text, 's');
    EXPECT_EQ(record.MaxNoOfSimText, "10000");
    EXPECT_EQ(record.SeedText, "77");
    ExpectRun(record.SignEstimateText, 'i');
    ExpectRun(record.PowerEstimateText, 'j');
    ExpectRun(record.PrAcceptEstimateText, 'k');
    ExpectRun(record.SampleSizeEstimateText, 'l');
    EXPECT_EQ(record.IsGroupSeq, -1);
    EXPECT_EQ(record.IsMultComp, 0);
    EXPECT_EQ(record.SimDistrNo, 5);
    ExpectRun(record.SimDistrOption, 8);
    EXPECT_EQ(record.SimDistrPar1(1), 0.25F);
    EXPECT_EQ(record.SimDistrPar1(2), -1.5F);
    EXPECT_EQ(record.SimDistrPar2(1), 3.5F);
    EXPECT_EQ(record.SimDistrPar2(2), 1e10F);
    EXPECT_EQ(record.DistrGraphStyle, 2);
    EXPECT_EQ(record.HasDistrGraph, -1);
    EXPECT_EQ(record.GridTestNo, 32);
}

TEST(AnalysisCodec, WritesTheBytesThatAreReadFromTheHandMadeFile) {
    const std::string bytes = HandMadeFile().All();
    const auto encoded = EncodeAnalysis(*DecodeAnalysis(bytes));
    ASSERT_TRUE(encoded.has_value());
    EXPECT_EQ(encoded->size(), 6350U);
    EXPECT_EQ(encoded->substr(0, bytes.size()), bytes);
}

// Numbers and lengths alone: 4,350 bytes of numbers and 250 texts.
TEST(AnalysisCodec, TheNumbersAndLengthsTakeTheSizeTold) {
    const std::string file = HandMadeFile().All();
    EXPECT_EQ(file.size() - TextBytes(*DecodeAnalysis(file)), 4350U + 500U);
}

TEST(AnalysisCodec, WhatFollowsTheFieldsHasNoMeaning) {
    std::string file = HandMadeFile().All();
    const auto record = DecodeAnalysis(file);
    EXPECT_EQ(DecodeAnalysis(file + std::string(6350 - file.size(), '\xA5')), record);
    EXPECT_EQ(DecodeAnalysis(file + std::string(100000, '\xFF')), record);
}

TEST(AnalysisCodec, RefusesAFileCutShortAnywhere) {
    const std::string file = HandMadeFile().All();
    for (std::size_t size = 0; size < file.size(); ++size)
        ASSERT_FALSE(DecodeAnalysis(std::string_view(file).substr(0, size)).has_value()) << size;
    EXPECT_TRUE(DecodeAnalysis(file).has_value());
}

TEST(AnalysisCodec, RefusesATextThatEndsPastTheRecord) {
    std::string file = HandMadeFile().All();
    file.resize(20000, 'x');
    file[4] = '\xFF'; // the length of the file name: 65,535
    file[5] = '\xFF';
    EXPECT_FALSE(DecodeAnalysis(file).has_value());
    file[4] = '\xD0'; // 4,560: within the record, but the fields after it are not
    file[5] = '\x11';
    EXPECT_FALSE(DecodeAnalysis(file).has_value());
}

TEST(AnalysisCodec, ZerosAreARecordWithoutAnything) {
    EXPECT_EQ(DecodeAnalysis(std::string(6350, '\0')), AnalysisRecord());
}

TEST(AnalysisCodec, HoldsFifteenHundredBytesOfTextAndNoMore) {
    AnalysisRecord record;
    record.OutTitle(0) = std::string(1500, 't');
    EXPECT_EQ(TextBytes(record), 1500U);
    ASSERT_TRUE(EncodeAnalysis(record).has_value());
    EXPECT_EQ(DecodeAnalysis(*EncodeAnalysis(record)), record);
    record.SeedText = "1";
    EXPECT_EQ(TextBytes(record), 1501U);
    EXPECT_FALSE(EncodeAnalysis(record).has_value());
    record.SeedText.clear();
    record.OutTitle(0) = std::string(70000, 't'); // more than a length can say
    EXPECT_FALSE(EncodeAnalysis(record).has_value());
}

// A character takes one byte in the file, however many it has in the program.
TEST(AnalysisCodec, CountsTheBytesOfTheFile) {
    AnalysisRecord record;
    for (int i = 0; i < 1500; ++i)
        record.OutTitle(0) += "ß";
    EXPECT_EQ(TextBytes(record), 1500U);
    EXPECT_EQ(DecodeAnalysis(*EncodeAnalysis(record)), record);
}

} // namespace
} // namespace quorvanta
