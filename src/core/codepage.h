// Between UTF-8, in which the program holds its texts, and the single-byte code page Windows-1252,
// in which an analysis file holds them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// One byte per character. A character that the code page lacks becomes "?", and so does each byte
// that is no part of a valid UTF-8 character.
std::string ToWindows1252(std::string_view utf8);

// Every byte is a character: the five that the code page leaves undefined (0x81, 0x8D, 0x8F, 0x90,
// 0x9D) stand for the control characters of the same number, so that no byte is lost on the way
// to UTF-8 and back.
std::string FromWindows1252(std::string_view bytes);

// Takes the character off the front of a text that is not empty; one byte, and nothing is
// returned, if no valid UTF-8 character stands there.
std::optional<char32_t> TakeCharacter(std::string_view& utf8);

// The bytes of the UTF-8 character that begins at i.
std::size_t CharacterLength(std::string_view utf8, std::size_t i);

// The characters of a text; a byte that is no part of one counts as one.
std::size_t CharacterCount(std::string_view utf8);

} // namespace quorvanta
