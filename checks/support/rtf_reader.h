// A reader of RTF documents, as small as those of the program allow, for the checks alone.
#pragma once

#include <string>

namespace quorvanta::checks {

// What a reader would show: the text of the last group, "\n" for a paragraph mark, UTF-16 units
// for whatever is not ASCII.
struct ShownRtf {
    std::u16string Text;
    bool Bold = false;
    int FontSize = 0; // half points
};

// Reads the document. A check fails on a byte that is not ASCII, on a brace that is left open, and
// on a control word that the program has no reason to write.
ShownRtf Read(const std::string& rtf);

} // namespace quorvanta::checks
