#include "output/csv.h"
#include "support/csv_reader.h"

#include <gtest/gtest.h>

namespace quorvanta::checks {
namespace {

// Two blocks of a table, as they stand under each other on a page.
TableLayout TwoBlocks() {
    TableLayout table;
    table.Title = {"A \"title\", of", "two lines"};
    table.CornerLabel = "x, in mm";
    table.CellLabel = "Power";
    table.HeadLabel = "Size";
    table.Blocks = {
        {{"10", "20"}, {{"0.1 ", "  0.50 ", "  0.60 "}, {"0.2 ", "  0.70 ", "     - "}}},
        {{"30"}, {{"0.1 ", "  0.90 "}, {"0.2 ", " -0.95 "}}}};
    return table;
}

TEST(Csv, BlocksStandSideBySideWithTheNotesBehindThem) {
    const std::string statement = "With a size,\nthe \"power\" is ü.";
    const CsvRecords expected = {
        {"x, in mm", "Power (Size = 10)", "Power (Size = 20)", "Power (Size = 30)", "Title",
         "Statement", "Program"},
        {"0.1", "0.50", "0.60", "0.90", "A \"title\", of two lines", statement, "Quorvanta 3.0"},
        {"0.2", "0.70", "", "-0.95", "", "", ""}};
    EXPECT_EQ(ReadCsv(CsvTable(TwoBlocks(), statement)), expected);
}

TEST(Csv, NumbersHaveADecimalPoint) {
    TableLayout table;
    table.StartsWithWords = true;
    table.Blocks = {{{}, {{"Power", "0,80"}, {"Level", " 1E-05 "}, {"Note", "1,5 or 2"}}}};
    const CsvRecords records = ReadCsv(CsvTable(table, ""));
    ASSERT_EQ(records.size(), 4U);
    EXPECT_EQ(records[0][0], "Parameter");
    EXPECT_EQ(records[0][1], "Value");
    EXPECT_EQ(records[1][1], "0.80");
    EXPECT_EQ(records[2][1], "1E-05");
    EXPECT_EQ(records[3][1], "1,5 or 2");
}

// RFC 4180, section 2; what begins like a formula is a text, and a negative number is a number.
TEST(Csv, FieldsAreQuotedWhereTheyHaveToBe) {
    EXPECT_EQ(CsvField("plain text"), "plain text");
    EXPECT_EQ(CsvField(""), "");
    EXPECT_EQ(CsvField("a,b"), "\"a,b\"");
    EXPECT_EQ(CsvField("say \"no\""), "\"say \"\"no\"\"\"");
    EXPECT_EQ(CsvField("two\nlines"), "\"two\nlines\"");
    EXPECT_EQ(CsvField("two\r\nlines"), "\"two\r\nlines\"");
    EXPECT_EQ(CsvField("Größe <α>"), "Größe <α>");
    EXPECT_EQ(CsvField("=1+2"), "'=1+2");
    EXPECT_EQ(CsvField("@SUM(A1,A2)"), "\"'@SUM(A1,A2)\"");
    EXPECT_EQ(CsvField("-x"), "'-x");
    EXPECT_EQ(CsvField("-0.5"), "-0.5");
}

} // namespace
} // namespace quorvanta::checks
