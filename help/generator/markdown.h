// The small Markdown of the help topics, and the HTML that it becomes.
//
// Blocks, separated by blank lines: headings "## " and "### ", paragraphs, lists "- " and "1. "
// (further lines of an item are indented), formulas "> ", tables "| a | b |" with a line "|---|"
// under their head, fenced blocks "```name". In a line: *italic*, **bold**, `code`, [text](301) or
// [text](301#place) with the number of a topic, x_{1} and x^{2} for what stands lower and higher;
// a backslash takes the meaning from the next character.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quorvanta::help {

// The HTML of a fenced block, by its name and its lines.
using FencedBlock = std::function<std::string(const std::string& name, const std::string& lines)>;

// The HTML of a text. A fenced block goes to fenced. Throws std::runtime_error for a mark without
// its end and for a link that is no topic's number.
std::string ToHtml(std::string_view markdown, const FencedBlock& fenced);

// Likewise, for a text without fenced blocks.
std::string ToHtml(std::string_view markdown);

// A text as it stands, fit for HTML.
std::string Escape(std::string_view text);

// The file of a topic's page.
std::string PageOf(std::string_view number);

} // namespace quorvanta::help
