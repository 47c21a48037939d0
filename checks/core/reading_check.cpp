#include "core/kinds.h"
#include "core/reading.h"
#include "core/showpar.h"
#include "support/analysis_fixture.h"
#include "support/number.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = Kind::SignificanceLevel;

// --- What was typed and what is read ----------------------------------------------------------

TEST(Readings, OfPlainNumbersNeedNoNote) {
    for (const char* text : {"0",     "5",      "05",    "0.8",     "0,8",      ".5",     ",5",
                             "5.",    "5,",     "-2",    "-0,05",   " 12.5 ",   "1.645",  "-1.645",
                             "0,125", "0,0459", "15,42", "15,4200", "1234,567", "100000", ""})
        EXPECT_EQ(ReadingNote(text), "") << text;
    EXPECT_EQ(ReadingNote(std::string(400, '9')), "") << "no number of 64 bits, told elsewhere";
}

TEST(Readings, OfNoValueNeedNoNote) {
    for (const char* text : {"-", " - ", " ", ""})
        EXPECT_EQ(ReadingNote(text), "") << text;
}

TEST(Readings, OfOtherTextsAreTold) {
    const std::pair<const char*, const char*> notes[] = {
        {"15,420", "15,420 is read as 15.42"},
        {"-1,000", "-1,000 is read as -1"},
        {"1,234,567", "1,234,567 is read as 1.234"},
        {"1.2.3", "1.2.3 is read as 1.2"},
        {"12-5", "12-5 is read as 12"},
        {"0.8,0.9", "0.8,0.9 is read as 0.8"},
        {"1 000", "1 000 is read as 1"},
        {"- 5", "- 5 is read as 0"},
        {"--5", "--5 is read as 0"},
        {".", ". is read as 0"},
        {",-", ",- is read as 0"},
        {" 1-  ", "1- is read as 1"}};
    for (const auto& [text, note] : notes)
        EXPECT_EQ(ReadingNote(text), note);
}

// The judgement and the reading are two: what has no note is read as it stands.
TEST(Readings, TheNumberOfTheNoteIsTheOneRead) {
    for (const char* text : {"15,420", "1.2.3", "12-5", "1 000", "- 5"}) {
        const std::string note = ReadingNote(text);
        const std::string number = note.substr(note.rfind(' ') + 1);
        EXPECT_EQ(checks::ParseNumber(number), ReadNumber(text)) << text;
    }
}

TEST(Readings, OfAListAreToldWordForWord) {
    EXPECT_EQ(ReadingNoteOfList("0.8 0,9  1"), "");
    EXPECT_EQ(ReadingNoteOfList("0.7 0.8,0.9 1.2.3"), "0.8,0.9 is read as 0.8");
    EXPECT_EQ(ReadingNoteOfList(""), "");
}

class WindowReadings : public AnalysisFixture {};

TEST_F(WindowReadings, OfACalculationAreThoseOfItsValues) {
    EXPECT_EQ(CurrentReadingNote(), "");
    OpenTest(unpaired);
    EXPECT_EQ(CurrentReadingNote(), "");
    AcceptOptions();
    EXPECT_EQ(CurrentReadingNote(), "");
    Type(alpha, "0.0.5");
    EXPECT_EQ(CurrentReadingNote(), "0.0.5 is read as 0");
    EXPECT_EQ(ParText(alpha), "0.0.5") << "the text stays as typed";
    Type(alpha, "0.05");
    EXPECT_EQ(CurrentReadingNote(), "");
}

TEST_F(WindowReadings, OfATableAreThoseOfItsAxesToo) {
    FileCommand(TableWindow);
    NewTest(unpaired);
    AcceptOptions();
    for (const AxisText which :
         {AxisText::Xmin, AxisText::Xmax, AxisText::Xstep, AxisText::ZValues}) {
        const std::string former = AxisTextOf(which);
        TypedAxisText(which, "1-2");
        EXPECT_EQ(CurrentReadingNote(), "1-2 is read as 1");
        TypedAxisText(which, former);
        EXPECT_EQ(CurrentReadingNote(), "");
    }
    TypedAxisText(AxisText::ZValues, "0.01 0.05");
    EXPECT_EQ(CurrentReadingNote(), "") << "blanks set z-values apart";
    const i16 fixed = ParKind(FixedPar(0));
    Type(fixed, "3-4");
    EXPECT_EQ(CurrentReadingNote(), "3-4 is read as 3");
}

// --- Pasted texts -----------------------------------------------------------------------------

void ExpectPasted(const std::string& text, const std::string& pasted, const std::string& note) {
    EXPECT_EQ(FromPasted(text).Text, pasted) << text;
    EXPECT_EQ(FromPasted(text).Note, note) << text;
}

TEST(Pasting, TakesNumbersAsTheyStandBetweenBlanksAndLineEnds) {
    const std::pair<const char*, const char*> pasted[] = {{"0.8", "0.8"},
                                                          {"-1,5 2", "-1,5 2"},
                                                          {"  0.8\r\n", "0.8"},
                                                          {"\n\t 12 \t\n \n", "12"},
                                                          {"\u00A00.8\u202F", "0.8"},
                                                          {"0.8\t0.9", "0.8 0.9"},
                                                          {"\u22125", "-5"},
                                                          {"\u20135,5", "-5,5"},
                                                          {"", ""},
                                                          {" \n\n ", ""}};
    for (const auto& [text, value] : pasted)
        ExpectPasted(text, value, "");
}

TEST(Pasting, TakesTheFirstLine) {
    ExpectPasted("12\n34\n56", "12", "Left out of the pasted text: the lines after the first.");
    ExpectPasted("12\r\n34", "12", "Left out of the pasted text: the lines after the first.");
}

TEST(Pasting, LeavesOutWhatIsNotAllowed) {
    ExpectPasted("$15,420.00", "15,420.00", "Left out of the pasted text: \"$\".");
    ExpectPasted("n = 20%", "20", "Left out of the pasted text: \"n\", \"=\" and \"%\".");
    ExpectPasted("µ1µ\n2", "1",
                 "Left out of the pasted text: \"µ\" and the lines after the first.");
    ExpectPasted("abc", "", "Left out of the pasted text: \"a\", \"b\" and \"c\".");
}

TEST(Pasting, OfAnyBytesGivesOnlyWhatABoxMayHold) {
    std::string bytes;
    for (int byte = 255; byte >= 0; --byte)
        bytes += static_cast<char>(byte);
    EXPECT_EQ(FromPasted(bytes).Text.find_first_not_of("0123456789.-, "), std::string::npos);
}

TEST_F(WindowReadings, PastingTellsInTheStatusLine) {
    EXPECT_EQ(TakePasted("5%"), "5");
    EXPECT_EQ(platform.Statuses, std::vector<std::string>{"Left out of the pasted text: \"%\"."});
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(TakePasted("5"), "5");
    EXPECT_EQ(platform.Statuses.back(), "");
}

} // namespace
} // namespace quorvanta::checks
