#include "output/html.h"

#include "core/codepage.h"
#include "core/number_text.h"
#include "core/program_name.h"

#include <algorithm>
#include <vector>

namespace quorvanta {

namespace {

constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD"; // U+FFFD

// XML 1.0 (fifth edition), section 2.2.
bool IsXmlCharacter(char32_t c) {
    return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c != 0xFFFE && c != 0xFFFF);
}

std::string Escaped(char32_t code, std::string_view character) {
    switch (code) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return std::string(IsXmlCharacter(code) ? character : "");
    }
}

// Spreadsheets read a number's text in the language of their user, in which "0.80" may be a date.
// LibreOffice takes it from the attributes sdval and sdnum (1033: American English), Excel from
// x:num.
std::string NumberAttributes(const std::string& cell) {
    const auto number = DecimalText(cell);
    if (!number)
        return "";
    return " sdval=\"" + *number + "\" sdnum=\"1033;\" x:num=\"" + *number + "\"";
}

std::string Cell(const std::string& cell) {
    const std::string text = TrimmedCell(cell);
    return "<td align=\"right\"" + NumberAttributes(text) + ">" + MarkupText(text) + "</td>";
}

std::string HeadCell(const std::string& attributes, const std::string& text) {
    return "<th" + attributes + ">" + MarkupText(text) + "</th>";
}

// Over the heads, what the cells and the heads are; then the heads.
std::string Heads(const TableLayout& table, const TableBlock& block) {
    std::string rows;
    const std::string span = " align=\"left\" colspan=\"" +
                             std::to_string(std::max<std::size_t>(block.Heads.size(), 1)) + "\"";
    for (const std::string* label : {&table.CellLabel, &table.HeadLabel})
        if (!label->empty())
            rows += "<tr><td></td>" + HeadCell(span, *label) + "</tr>\n";
    if (!table.StartsWithWords) {
        rows += "<tr>" + HeadCell(" scope=\"col\" align=\"left\"", table.CornerLabel);
        for (const std::string& head : block.Heads)
            rows += HeadCell(" scope=\"col\" align=\"right\"" + NumberAttributes(head), head);
        rows += "</tr>\n";
    }
    return rows.empty() ? "" : "<thead>\n" + rows + "</thead>\n";
}

std::string BlockTable(const TableLayout& table, const TableBlock& block) {
    std::string html =
        "<table border=\"1\" cellpadding=\"3\" style=\"border-collapse:collapse\">\n" +
        Heads(table, block) + "<tbody>\n";
    for (const auto& row : block.Rows) {
        html += "<tr>";
        for (std::size_t j = 0; j < row.size(); ++j)
            html += j == 0 && table.StartsWithWords
                        ? HeadCell(" scope=\"row\" align=\"left\"", TrimmedCell(row[j]))
                        : Cell(row[j]);
        html += "</tr>\n";
    }
    return html + "</tbody>\n</table>\n";
}

} // namespace

std::string MarkupText(std::string_view text) {
    std::string markup;
    while (!text.empty()) {
        const std::string_view former = text;
        const auto code = TakeCharacter(text);
        markup += code ? Escaped(*code, former.substr(0, former.size() - text.size()))
                       : std::string(ReplacementCharacter);
    }
    return markup;
}

std::string HtmlParagraphs(std::string_view text) {
    std::string html;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        html += "<p>" + MarkupText(text.substr(0, end)) + "</p>\n";
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return html;
}

std::string HtmlTable(const TableLayout& table) {
    std::string html;
    for (const std::string& line : table.Title)
        html += "<p><b>" + MarkupText(line) + "</b></p>\n";
    for (const TableBlock& block : table.Blocks)
        html += (html.ends_with("</table>\n") ? "<p></p>\n" : "") + BlockTable(table, block);
    return html;
}

std::string HtmlPage(const std::string& title, const std::string& description,
                     const std::string& body) {
    return "<!DOCTYPE html>\n"
           "<html lang=\"en\" xmlns:x=\"urn:schemas-microsoft-com:office:excel\">\n<head>\n"
           "<meta charset=\"utf-8\">\n<title>" +
           MarkupText(title) + "</title>\n<meta name=\"generator\" content=\"" +
           MarkupText(ProgramNameAndVersion) + "\">\n<meta name=\"description\" content=\"" +
           MarkupText(description) + "\">\n</head>\n<body>\n" + body + "</body>\n</html>\n";
}

} // namespace quorvanta
