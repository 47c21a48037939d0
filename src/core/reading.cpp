#include "core/reading.h"

#include "core/analysis_state.h"
#include "core/codepage.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/run.h"
#include "core/showpar.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "output/format.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace quorvanta {

namespace {

constexpr std::string_view Digits = "0123456789";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The parts of a plain number; nothing of them for a text that is none.
struct PlainNumber {
    std::string_view Whole;
    char Separator = 0;
    std::string_view Fraction;

    bool IsOne() const { return !Whole.empty() || !Fraction.empty(); }
};

PlainNumber PlainNumberIn(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    PlainNumber number;
    const std::size_t end = std::min(text.find_first_not_of(Digits), text.size());
    number.Whole = text.substr(0, end);
    text.remove_prefix(end);
    if (text.empty())
        return number;
    number.Separator = text.front();
    number.Fraction = text.substr(1);
    const bool isSeparator = number.Separator == '.' || number.Separator == ',';
    const bool isFraction = number.Fraction.find_first_not_of(Digits) == std::string_view::npos;
    return isSeparator && isFraction ? number : PlainNumber{};
}

// 15,420 and 1,000 but not 0,125: three digits after the comma, and before it what may be
// thousands.
bool LooksLikeThousands(const PlainNumber& number) {
    constexpr std::size_t groupLength = 3;
    return number.Separator == ',' && number.Fraction.size() == groupLength &&
           number.Whole.size() <= groupLength && !number.Whole.empty() &&
           number.Whole.front() != '0';
}

bool IsBlank(char32_t c) {
    return c == ' ' || c == '\t' || c == 0xA0 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

bool IsLineEnd(char32_t c) {
    return c == '\n' || c == '\r' || c == '\v' || c == '\f' || c == 0x85 || c == 0x2028 ||
           c == 0x2029;
}

// A minus sign, or a dash in its place.
bool IsMinus(char32_t c) {
    return c == '-' || (c >= 0x2010 && c <= 0x2013) || c == 0x2212 || c == 0xFE63 || c == 0xFF0D;
}

// The characters of a line, blanks and minus signs plain, in UTF-8.
using Line = std::vector<std::string>;

bool IsBlankLine(const Line& line) {
    return std::ranges::all_of(line, [](const std::string& c) { return c == " "; });
}

std::vector<Line> PlainLines(std::string_view text) {
    std::vector<Line> lines(1);
    while (!text.empty()) {
        const std::string_view former = text;
        const char32_t c = TakeCharacter(text).value_or(0);
        if (IsLineEnd(c))
            lines.emplace_back();
        else if (IsBlank(c))
            lines.back().emplace_back(" ");
        else if (IsMinus(c))
            lines.back().emplace_back("-");
        else
            lines.back().emplace_back(former.substr(0, former.size() - text.size()));
    }
    return lines;
}

bool IsAllowed(const std::string& character) {
    return character.size() == 1 && ValueCharacters.find(character) != std::string_view::npos;
}

std::string NoteOf(const std::vector<std::string>& leftOut, bool hasMoreLines) {
    std::vector<std::string> parts;
    for (const std::string& character : leftOut)
        parts.push_back('"' + character + '"');
    if (hasMoreLines)
        parts.emplace_back("the lines after the first");
    std::string note;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isLast = i > 0 && i + 1 == parts.size();
        note += (i == 0 ? "" : isLast ? " and " : ", ") + parts[i];
    }
    return note.empty() ? "" : "Left out of the pasted text: " + note + ".";
}

} // namespace

std::string ReadingNote(std::string_view text) {
    const std::string_view typed = Trimmed(text);
    if (!HasValue(std::string(typed)) || !IsReadable(typed))
        return "";
    const PlainNumber number = PlainNumberIn(typed);
    if (number.IsOne() && !LooksLikeThousands(number))
        return "";
    return std::string(typed) + " is read as " + Str(ReadNumber(typed));
}

std::string ReadingNoteOfList(std::string_view text) {
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;)
        if (std::string note = ReadingNote(word); !note.empty())
            return note;
    return "";
}

std::string CurrentReadingNote() {
    if (AnalysisNo == 0 || NoOfPar < 1)
        return "";
    std::vector<std::string> notes;
    if (IsTableOrGraph()) {
        for (const AxisText which : {AxisText::Xmin, AxisText::Xmax, AxisText::Xstep})
            notes.push_back(ReadingNote(AxisTextOf(which)));
        notes.push_back(ReadingNoteOfList(AxisTextOf(AxisText::ZValues)));
        for (i16 box = 0; FixedPar(box) >= 0; ++box)
            notes.push_back(ReadingNote(ParText(ParKind(FixedPar(box)))));
    } else {
        for (i16 i = 0; i <= NoOfPar; ++i)
            notes.push_back(ReadingNote(ParText(ParKind(i))));
    }
    const auto first =
        std::ranges::find_if(notes, [](const std::string& note) { return !note.empty(); });
    return first == notes.end() ? "" : *first;
}

PastedText FromPasted(std::string_view text) {
    const std::vector<Line> lines = PlainLines(text);
    const auto first = std::ranges::find_if_not(lines, IsBlankLine);
    if (first == lines.end())
        return {};
    std::string kept;
    std::vector<std::string> leftOut;
    for (const std::string& character : *first) {
        if (IsAllowed(character))
            kept += character;
        else if (std::ranges::find(leftOut, character) == leftOut.end())
            leftOut.push_back(character);
    }
    const bool hasMoreLines = !std::all_of(first + 1, lines.end(), IsBlankLine);
    return {std::string(Trimmed(kept)), NoteOf(leftOut, hasMoreLines)};
}

std::string TakePasted(std::string_view text) {
    const PastedText pasted = FromPasted(text);
    ThePlatform().ShowStatus(pasted.Note);
    return pasted.Text;
}

} // namespace quorvanta
