// The bytes of an analysis file: one record, field after field without gaps, integers and floats
// little-endian, each text as its length in bytes (16 bits, unsigned) and its bytes in the code
// page Windows-1252. There is no magic number, no version and no checksum.
//
// A text that the code page can't hold ("α ≤ 5 %") stands in its field with question marks, and a
// second time after the last field, in UTF-8: there a reader that knows fields alone never looks.
// These are the letters "UTF8", the number of such texts, and for each the number of its field
// among the texts of the record, from 0, its length in bytes and its bytes (numbers of 16 bits).
#pragma once

#include "core/analysis.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// The length of the record. What else follows its last field has no meaning.
inline constexpr std::size_t AnalysisFileBytes = 6350;

// What its texts may take together: the rest is numbers and the lengths of texts.
inline constexpr std::size_t MaxTextBytes = 1500;

// What the texts of the record take in the file: those of its fields without their lengths, and
// all of what is written a second time.
std::size_t TextBytes(const AnalysisRecord& record);

// The whole file, AnalysisFileBytes long; nothing if the texts take more than MaxTextBytes.
std::optional<std::string> EncodeAnalysis(const AnalysisRecord& record);

// The record of a file, whatever bytes it has; nothing if a field ends past the end of the file or
// of the record. What the fields say is not looked at.
std::optional<AnalysisRecord> DecodeAnalysis(std::string_view file);

} // namespace quorvanta
