// The rich text format, version 1.9 (2008).
#pragma once

#include <string>
#include <string_view>

namespace quorvanta {

// A UTF-8 text in RTF: whatever is not plain ASCII is escaped, a line separator ends a paragraph.
std::string RtfText(std::string_view text);

// A document in the Summary settings from what is RTF already.
std::string RtfDocumentOf(const std::string& body);

// The text as a document of one paragraph style. The text is UTF-8.
std::string RtfDocument(std::string_view text);

} // namespace quorvanta
