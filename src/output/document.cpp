#include "output/document.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/program_name.h"
#include "core/records.h"
#include "output/csv.h"
#include "output/html.h"
#include "output/rtf.h"
#include "output/rtf_table.h"
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

// Each paragraph by WrapText, which fills a text of one line up with blanks that only a window
// needs.
std::vector<std::string> WrappedLines(const std::string& statement) {
    std::vector<std::string> lines;
    for (const std::string& paragraph : SplitLines(statement))
        for (std::string& line :
             SplitLines(WrapText(paragraph, [](std::string_view) { return 0.0; }).Text)) {
            line.erase(line.find_last_not_of(' ') + 1);
            lines.push_back(line);
        }
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

bool IsEmpty(const TableLayout& table) {
    return table.Blocks.empty();
}

// The upper part of a page, on which a drawing is as high as the part.
class UpperPart : public Surface {
  public:
    UpperPart(Surface& page, f64 height) : page_(page), height_(height) {}

    f64 ScaleWidth() const override { return page_.ScaleWidth(); }
    f64 ScaleHeight() const override { return height_; }
    f64 PixelsPerInch() const override { return page_.PixelsPerInch(); }
    bool IsPrinter() const override { return page_.IsPrinter(); }
    void SetFont(const Font& font) override { page_.SetFont(font); }
    f64 TextWidth(std::string_view text) const override { return page_.TextWidth(text); }
    f64 TextHeight() const override { return page_.TextHeight(); }
    void Text(Point upperLeft, std::string_view text) override { page_.Text(upperLeft, text); }
    void SetPen(const Pen& pen) override { page_.SetPen(pen); }
    void Polyline(std::span<const Point> points) override { page_.Polyline(points); }

  private:
    Surface& page_;
    f64 height_;
};

} // namespace

OutputDocument StatementDocument() {
    OutputDocument document;
    document.Table.Type = {SummaryFont, static_cast<f64>(SummaryFontSize), SummaryBold == 1};
    document.Statement = StatementText();
    return document;
}

OutputDocument ResultDocument() {
    return {IsTableOrGraph() ? ResultTable() : ParameterTable(), StatementText()};
}

std::string PlainText(const OutputDocument& document) {
    std::vector<std::string> lines;
    if (!IsEmpty(document.Table)) {
        lines = TabbedLines(document.Table);
        lines.emplace_back();
    }
    lines.push_back(document.Statement);
    return Joined(lines);
}

std::string RtfOf(const OutputDocument& document) {
    const std::string table = IsEmpty(document.Table) ? "" : RtfTable(document.Table) + "\\par ";
    return RtfDocumentOf(table + RtfText(document.Statement));
}

std::string HtmlOf(const OutputDocument& document) {
    const std::string title =
        document.Table.Title.empty() ? ParListName : document.Table.Title.front();
    return HtmlPage(title, document.Statement,
                    HtmlTable(document.Table) + HtmlParagraphs(document.Statement) +
                        HtmlParagraphs(ProgramNameAndVersion));
}

std::string CsvOf(const OutputDocument& document) {
    return CsvTable(document.Table, document.Statement);
}

Point DrawDocument(Surface& surface, const OutputDocument& document) {
    return DrawTable(surface, document.Table,
                     surface.HasPages() ? SplitLines(document.Statement)
                                        : WrappedLines(document.Statement));
}

void DrawGraphPage(Surface& surface, const Presentation& graph, const std::string& statement) {
    constexpr f64 margin = 0.1;
    surface.SetFont(graph.Type);
    const f64 height = surface.TextHeight();
    std::vector<std::string> lines;
    for (const std::string& paragraph : SplitLines(statement))
        for (const std::string& line :
             BreakLines(surface, paragraph, surface.ScaleWidth() - 2 * margin))
            lines.push_back(line);
    const f64 below = (static_cast<f64>(lines.size()) + 1) * height;
    const bool isTooLong = below > surface.ScaleHeight() / 2;
    UpperPart part(surface, surface.ScaleHeight() - (isTooLong ? 0 : below));
    if (!PlotGraph(part, graph))
        return;
    if (isTooLong)
        surface.NewPage();
    surface.SetFont(graph.Type);
    f64 y = isTooLong ? margin : part.ScaleHeight() + height / 2;
    for (const std::string& line : lines) {
        surface.Text({margin, y}, line);
        y += height;
    }
}

} // namespace quorvanta
