#include "core/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quorvanta {

namespace {

// The characters 0x80 to 0x9F of the code page; all others have the numbers of Unicode.
constexpr char32_t FirstOwn = 0x80;
constexpr std::array<char32_t, 32> OwnCharacters = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

bool IsOwn(char32_t number) {
    return number >= FirstOwn && number < FirstOwn + OwnCharacters.size();
}

// The character's byte, if the code page has it.
std::optional<char> ToByte(char32_t character) {
    const auto* const own = std::ranges::find(OwnCharacters, character);
    if (own != OwnCharacters.end())
        return static_cast<char>(FirstOwn + static_cast<char32_t>(own - OwnCharacters.begin()));
    if (character > 0xFF || IsOwn(character))
        return std::nullopt;
    return static_cast<char>(character);
}

struct Utf8Character {
    char32_t Number;
    std::size_t Length;
};

// The character that the text begins with; nothing if its first byte begins none.
std::optional<Utf8Character> FirstCharacter(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(0);
    if (lead < 0x80)
        return Utf8Character{lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return std::nullopt;
    char32_t number = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return std::nullopt;
        number = number << 6 | (byte(i) & 0x3FU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (number < smallest[length] || number > 0x10FFFF || isSurrogate)
        return std::nullopt;
    return Utf8Character{number, length};
}

void AppendUtf8(std::string& text, char32_t number) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (number < 0x80) {
        append(number);
    } else if (number < 0x800) {
        append(0xC0 | number >> 6);
        append(0x80 | (number & 0x3F));
    } else { // no character of the code page lies above 0xFFFF
        append(0xE0 | number >> 12);
        append(0x80 | (number >> 6 & 0x3F));
        append(0x80 | (number & 0x3F));
    }
}

} // namespace

std::string ToWindows1252(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = TakeCharacter(utf8);
        bytes.push_back(character ? ToByte(*character).value_or('?') : '?');
    }
    return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char c : bytes) {
        const char32_t byte = static_cast<std::uint8_t>(c);
        AppendUtf8(utf8, IsOwn(byte) ? OwnCharacters[byte - FirstOwn] : byte);
    }
    return utf8;
}

std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
    const auto character = FirstCharacter(utf8);
    utf8.remove_prefix(character ? character->Length : 1);
    return character ? std::optional(character->Number) : std::nullopt;
}

std::size_t CharacterLength(std::string_view utf8, std::size_t i) {
    std::size_t length = 1;
    while (i + length < utf8.size() && (static_cast<std::uint8_t>(utf8[i + length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

std::size_t CharacterCount(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < utf8.size(); i += CharacterLength(utf8, i))
        ++count;
    return count;
}

} // namespace quorvanta
