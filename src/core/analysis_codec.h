// The bytes of an analysis file: one record, field after field without gaps, integers and floats
// little-endian, each text as its length in bytes (16 bits, unsigned) and its bytes in the code
// page Windows-1252. There is no magic number, no version and no checksum.
//
// A letter that the code page lacks stands as "?" in its field. The texts that have one follow in
// UTF-8 after the last field, if there are any: "UTF8", the number of texts, and for each its place
// among the texts of the record, its length in bytes (16 bits each, unsigned) and its bytes. A
// reader that doesn't know them reads the fields. This one takes a text only where it says what
// the field says, so that what another writer has left there can do no harm.
#pragma once

#include "core/records.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// The length of the record. What follows its last field need have no meaning.
inline constexpr std::size_t AnalysisFileBytes = 6350;

// What its texts may take together: the rest is numbers and the lengths of texts.
inline constexpr std::size_t MaxTextBytes = 1500;

// What the texts of the record take in the file, without their lengths.
std::size_t TextBytes(const AnalysisRecord& record);

// The whole file, AnalysisFileBytes long; nothing if the texts take more than MaxTextBytes.
std::optional<std::string> EncodeAnalysis(const AnalysisRecord& record);

// False if texts have letters that the code page lacks and that find no room after the last field:
// they are "?" when the file is read.
bool KeepsAllLetters(const AnalysisRecord& record);

// The record of a file, whatever bytes it has; nothing if a field ends past the end of the file or
// of the record. What the fields say is not looked at.
std::optional<AnalysisRecord> DecodeAnalysis(std::string_view file);

} // namespace quorvanta
