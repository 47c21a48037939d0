#include "output/rtf.h"

#include "core/codepage.h"
#include "output/statement.h"

#include <cstdint>
#include <string>

namespace quorvanta {

namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD; // for a byte that is no text

// A 16-bit unit as RTF wants it: signed, with a question mark for readers that don't know Unicode.
std::string UnicodeUnit(char32_t unit) {
    return "\\u" + std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(unit))) +
           "?";
}

std::string Escaped(char32_t code) {
    constexpr char32_t firstOfPairs = 0x10000;
    if (code == '\\' || code == '{' || code == '}')
        return {'\\', static_cast<char>(code)};
    if (code == '\t')
        return "\\tab ";
    if (code < ' ' || code == 0x7F)
        return "";
    if (code < 0x7F)
        return {static_cast<char>(code)};
    if (code < firstOfPairs)
        return UnicodeUnit(code);
    return UnicodeUnit(0xD800 + ((code - firstOfPairs) >> 10U)) +
           UnicodeUnit(0xDC00 + ((code - firstOfPairs) & 0x3FFU));
}

// The name of a font ends at the first semicolon, which can't be escaped there.
std::string FontName(std::string name) {
    std::erase(name, ';');
    return RtfText(name);
}

} // namespace

std::string RtfText(std::string_view text) {
    std::string rtf;
    while (!text.empty()) {
        if (text.starts_with(NewLine)) {
            rtf += "\\par ";
            text.remove_prefix(NewLine.size());
        } else {
            rtf += Escaped(TakeCharacter(text).value_or(ReplacementCharacter));
        }
    }
    return rtf;
}

std::string RtfDocumentOf(const std::string& body) {
    // The font size of RTF counts half points.
    const i32 halfPoints = 2 * static_cast<i32>(SummaryFontSize);
    // The blank ends the control word, which would take the first letters of the text otherwise.
    const std::string bold = SummaryBold == 1 ? "\\b " : "";
    return "{\\rtf0\\ansi{\\fonttbl\\f1\\fnil " + FontName(SummaryFont) +
           ";}{\\stylesheet {\\s0 Normal;}}" + "{\\s0\\f1\\fs" + std::to_string(halfPoints) + " " +
           bold + body + "\\par}}";
}

std::string RtfDocument(std::string_view text) {
    return RtfDocumentOf(RtfText(text));
}

} // namespace quorvanta
