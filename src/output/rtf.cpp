#include "output/statement.h"

#include <cstdint>
#include <string>

namespace quorvanta {

namespace {

constexpr std::uint32_t replacementCharacter = 0xFFFD;

// Takes the next code point off a UTF-8 text; a byte that begins none counts as one replacement
// character.
std::uint32_t TakeCodePoint(std::string_view& text) {
    const auto byte = [&text](std::size_t i) {
        return i < text.size() ? static_cast<std::uint32_t>(static_cast<unsigned char>(text[i]))
                               : 0U;
    };
    const std::uint32_t first = byte(0);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    constexpr std::uint32_t leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    std::uint32_t code = first & leadBits[length];
    bool isWhole = length > 0;
    for (std::size_t i = 1; i < length; ++i) {
        isWhole = isWhole && (byte(i) & 0xC0U) == 0x80;
        code = code << 6U | (byte(i) & 0x3FU);
    }
    text.remove_prefix(isWhole ? length : 1);
    return isWhole ? code : replacementCharacter;
}

// A 16-bit unit as RTF wants it: signed, with a question mark for readers that don't know Unicode.
std::string UnicodeUnit(std::uint32_t unit) {
    return "\\u" + std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(unit))) +
           "?";
}

std::string Escaped(std::uint32_t code) {
    constexpr std::uint32_t firstOfPairs = 0x10000;
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

std::string RtfText(std::string_view text) {
    std::string rtf;
    while (!text.empty()) {
        if (text.starts_with(NewLine)) {
            rtf += "\\par ";
            text.remove_prefix(NewLine.size());
        } else {
            rtf += Escaped(TakeCodePoint(text));
        }
    }
    return rtf;
}

// The name of a font ends at the first semicolon, which can't be escaped there.
std::string FontName(std::string name) {
    std::erase(name, ';');
    return RtfText(name);
}

} // namespace

std::string RtfDocument(std::string_view text) {
    // The font size of RTF counts half points.
    const i32 halfPoints = 2 * static_cast<i32>(SummaryFontSize);
    // The blank ends the control word, which would take the first letters of the text otherwise.
    const std::string bold = SummaryBold == 1 ? "\\b " : "";
    return "{\\rtf0\\ansi{\\fonttbl\\f1\\fnil " + FontName(SummaryFont) +
           ";}{\\stylesheet {\\s0 Normal;}}" + "{\\s0\\f1\\fs" + std::to_string(halfPoints) + " " +
           bold + RtfText(text) + "\\par}}";
}

} // namespace quorvanta
