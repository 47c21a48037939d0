#include "output/document.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"
#include "output/statement.h"
#include "output/titles.h"
#include "output/xyzplot.h"

#include <sstream>
#include <vector>

namespace quorvanta {

namespace {

TableLayout ParameterTable() {
    TableLayout table;
    table.Title = CurrentTitle();
    table.StartsWithWords = true;
    table.Type = PresentationOf(AnalysisNo).Type;
    table.Blocks.resize(1);
    for (i16 i = 0; i <= NoOfPar; ++i)
        table.Blocks[0].Rows.push_back({StripAmpersand(ParLabel(ParKind(i))), ParText(ParKind(i))});
    return table;
}

// The text of a graph has the columns of an unedited table: its own setting is the curve width.
TableLayout ResultTable() {
    Presentation result = PresentationOf(AnalysisNo);
    if (CurrentWindowKind() == GraphWindow)
        result.CurveWidth = UsualCurveWidth;
    return LayOutTable(result);
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// WrapText fills a text of one line up with blanks, which only a window needs.
std::vector<std::string> WrappedLines(const std::string& statement) {
    auto lines = SplitLines(WrapText(statement, [](std::string_view) { return 0.0; }).Text);
    for (std::string& line : lines)
        line.erase(line.find_last_not_of(' ') + 1);
    return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty())
            text += NewLine;
        text += line;
    }
    return text;
}

void Append(std::vector<std::string>& lines, const std::vector<std::string>& more) {
    if (!lines.empty() && !more.empty())
        lines.emplace_back();
    lines.insert(lines.end(), more.begin(), more.end());
}

bool IsEmpty(const TableLayout& table) {
    return table.Blocks.empty();
}

} // namespace

OutputDocument StatementDocument() {
    OutputDocument document;
    document.Table.Type = {SummaryFont, static_cast<f64>(SummaryFontSize), SummaryBold == 1};
    document.Statement = SumStatement();
    return document;
}

OutputDocument ResultDocument() {
    return {IsTableOrGraph() ? ResultTable() : ParameterTable(), SumStatement()};
}

std::string PlainText(const OutputDocument& document) {
    std::vector<std::string> lines;
    if (!IsEmpty(document.Table))
        lines = TableLines(document.Table);
    Append(lines, WrappedLines(document.Statement));
    return Joined(lines);
}

std::string RtfOf(const OutputDocument& document) {
    std::vector<std::string> lines;
    if (!IsEmpty(document.Table))
        lines = TabbedLines(document.Table);
    Append(lines, {document.Statement});
    return RtfDocument(Joined(lines));
}

Point DrawDocument(Surface& surface, const OutputDocument& document) {
    return DrawTable(surface, document.Table,
                     surface.HasPages() ? std::vector{document.Statement}
                                        : WrappedLines(document.Statement));
}

} // namespace quorvanta
