// The module DIMPRINTCOPY: what a result means, as a paragraph of plain English, and the forms in
// which it leaves the program. No test has a text of its own: the paragraph is put together from
// the labels of the parameter catalogue, by one grammar for every analysis.
#pragma once

#include "core/types.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvanta {

// How the Summary window and RTF documents show a statement, as the user last set it in this run.
extern std::string SummaryFont;
extern i16 SummaryFontSize; // points
extern i16 SummaryBold;     // 1 bold

// The line separator of wrapped texts.
inline constexpr std::string_view NewLine = "\n";

// The statement of the current analysis; empty as long as that has no result.
std::string SumStatement();

// The statement as it goes out: as the user has edited it, as long as SumStatement is still the one
// that was edited. It may then have several lines.
std::string StatementText();

// The user has edited the statement of the current analysis. Nothing but blanks brings back ours.
void EditStatement(const std::string& text);

// What the head of a calculation with a valid result has to say beside the name of the analysis: that
// the power is an approximation, although the test is called exact. Empty for most.
std::string HeadlineNote();

// A text broken into lines for the screen.
struct WrappedText {
    std::string Text;
    i16 Lines = 0;
    f64 MaxWidth = 0; // of the widest line, by textWidth
};

// Breaks a text at blanks, line k before the character 80 k of the whole text: a line that ends
// short of its mark leaves the rest to the next, which may then be longer than 80 characters. A
// text of one line is filled up with blanks to 80, so that short texts are as wide as long ones.
WrappedText WrapText(std::string_view text, const std::function<f64(std::string_view)>& textWidth);

} // namespace quorvanta
