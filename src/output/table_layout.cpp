#include "output/table_layout.h"

#include "core/catalogue.h"
#include "core/codepage.h"
#include "core/general.h"
#include "output/format.h"
#include "output/formatpar.h"
#include "output/xyzplot.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

constexpr int PictureWidth = 11;

// The picture of the y-values for the chosen number of decimals.
std::string CellPicture(const Presentation& result) {
    constexpr int mostDecimals = 8;
    int decimals = result.Decimals;
    if (decimals < 0) {
        const ValueRange range = RangeOf(result.Y.Raw());
        if (!IsCountKind(result.YKind))
            return FormatByRange(static_cast<i16>(result.X.Raw().size()), range.Low, range.High);
        decimals = 0;
    }
    decimals = std::min(decimals, mostDecimals);
    if (decimals == 0)
        return "########## ";
    return std::string(static_cast<std::size_t>(mostDecimals - decimals), '#') + "0." +
           std::string(static_cast<std::size_t>(decimals), '0') + " ";
}

// The text of a y-value. A count without decimals is a whole one: 23.4 subjects are 24.
std::string CellText(f32 y, i16 kind, const std::string& picture) {
    const f64 value{y};
    const bool isWhole = picture.find('.') == std::string::npos;
    if (isWhole && IsCountKind(kind) && HasCellValue(y))
        return FormatCell(WholeCount(kind, value), picture);
    return FormatCell(value, picture);
}

TableBlock LayOutBlock(const Presentation& result, int firstColumn, int lastColumn) {
    TableBlock block;
    for (int j = firstColumn; j <= lastColumn; ++j)
        block.Heads.push_back(result.ZLabel.empty() ? "" : Str(result.Z(j)));
    const std::string xPicture = FormatForColumn(1, result.X.HighBound(), result.X);
    const std::string yPicture = CellPicture(result);
    for (int k = 1; k <= result.X.HighBound(); ++k) {
        std::vector<std::string> row = {FormatCell(f64{result.X(k)}, xPicture)};
        for (int j = firstColumn; j <= lastColumn; ++j)
            row.push_back(CellText(result.Y(k, j), result.YKind, yPicture));
        block.Rows.push_back(row);
    }
    return block;
}

std::string Padding(const std::string& text, std::size_t width) {
    const std::size_t characters = CharacterCount(text);
    return std::string(characters < width ? width - characters : 0, ' ');
}

// Draws one block after the other, with a new page where one is full.
class TableDrawer {
  public:
    TableDrawer(Surface& surface, const TableLayout& table) : surface_(surface), table_(table) {
        surface.SetFont(table.Type);
        height_ = surface.TextHeight();
        gap_ = 2 * surface.TextWidth("0");
    }

    Point Draw(const std::vector<std::string>& paragraphs) {
        surface_.SetPen({});
        for (const std::string& line : table_.Title)
            DrawText(line);
        for (const TableBlock& block : table_.Blocks) {
            y_ += height_;
            DrawBlock(block);
        }
        if (y_ > Margin)
            y_ += height_;
        for (const std::string& paragraph : paragraphs)
            DrawText(paragraph);
        return {right_ + Margin, y_ + Margin};
    }

  private:
    static constexpr f64 Margin = 0.1;

    void TextAt(f64 x, const std::string& text) {
        surface_.Text({x, y_}, text);
        right_ = MaxOf(right_, x + surface_.TextWidth(text));
    }

    void TextLine(const std::string& text) {
        if (IsFull(1))
            TurnPage();
        TextAt(Margin, text);
        y_ += height_;
    }

    void DrawText(const std::string& text) {
        if (!surface_.HasPages())
            return TextLine(text);
        for (const std::string& line :
             BreakLines(surface_, text, surface_.ScaleWidth() - 2 * Margin))
            TextLine(line);
    }

    void Measure(const TableBlock& block) {
        first_ = surface_.TextWidth(table_.CornerLabel);
        column_ = 0;
        for (const std::string& head : block.Heads)
            column_ = MaxOf(column_, surface_.TextWidth(head));
        for (const auto& row : block.Rows)
            for (std::size_t i = 0; i < row.size(); ++i) {
                f64& width = i == 0 ? first_ : column_;
                width = MaxOf(width, surface_.TextWidth(TrimmedCell(row[i])));
            }
        column_ += gap_;
        columns_ = block.Rows.empty() ? 0 : block.Rows.front().size() - 1;
    }

    f64 RightEdge() const {
        const f64 widest =
            MaxOf(surface_.TextWidth(table_.CellLabel), surface_.TextWidth(table_.HeadLabel));
        return Margin + first_ + MaxOf(static_cast<f64>(columns_) * column_, gap_ + widest);
    }

    // The right edge of a column after the first.
    f64 Edge(std::size_t column) const {
        return Margin + first_ + static_cast<f64>(column) * column_;
    }

    void Rule() {
        surface_.Line({Margin, y_}, {RightEdge(), y_});
        right_ = MaxOf(right_, RightEdge());
    }

    void DrawHeads(const TableBlock& block) {
        const f64 overColumns = Margin + first_ + gap_;
        Rule();
        if (!table_.CellLabel.empty()) {
            TextAt(overColumns, table_.CellLabel);
            y_ += height_;
        }
        if (!table_.HeadLabel.empty()) {
            TextAt(overColumns, table_.HeadLabel);
            y_ += height_;
        }
        if (!table_.StartsWithWords) {
            TextAt(Margin, table_.CornerLabel);
            for (std::size_t j = 0; j < block.Heads.size(); ++j)
                TextAt(Edge(j + 1) - surface_.TextWidth(block.Heads[j]), block.Heads[j]);
            y_ += height_;
            Rule();
        }
    }

    void DrawBlock(const TableBlock& block) {
        Measure(block);
        constexpr f64 linesWithHeads = 5; // a page with less room than this begins no block
        if (IsFull(linesWithHeads))
            TurnPage();
        DrawHeads(block);
        for (const auto& row : block.Rows) {
            if (IsFull(1)) {
                TurnPage();
                DrawHeads(block);
            }
            for (std::size_t i = 0; i < row.size(); ++i) {
                const std::string cell = TrimmedCell(row[i]);
                const bool fromLeft = i == 0 && table_.StartsWithWords;
                TextAt(fromLeft ? Margin : Edge(i) - surface_.TextWidth(cell), cell);
            }
            y_ += height_;
        }
        Rule();
    }

    bool IsFull(f64 lines) const {
        return surface_.HasPages() && y_ + lines * height_ > surface_.ScaleHeight() - Margin;
    }

    void TurnPage() {
        surface_.NewPage();
        y_ = Margin;
    }

    Surface& surface_;
    const TableLayout& table_;
    f64 height_ = 0;
    f64 gap_ = 0;
    f64 first_ = 0;
    f64 column_ = 0;
    std::size_t columns_ = 0;
    f64 y_ = Margin;
    f64 right_ = Margin;
};

} // namespace

TableLayout LayOutTable(const Presentation& result) {
    TableLayout table;
    table.Title = result.Title;
    table.CornerLabel = result.XAxis(0);
    table.CellLabel = result.YAxis(0);
    table.HeadLabel = result.ZLabel;
    table.Type = result.Type;
    const int columns = result.Y.HighBound2();
    const int inBlock = std::max<int>(result.CurveWidth, 1);
    for (int j = 1; j <= columns; j += inBlock)
        table.Blocks.push_back(LayOutBlock(result, j, std::min(j + inBlock - 1, columns)));
    return table;
}

std::vector<std::string> TableLines(const TableLayout& table) {
    std::vector<std::string> lines = table.Title;
    const bool startsLeft = table.StartsWithWords;
    for (const TableBlock& block : table.Blocks) {
        std::size_t first =
            std::max<std::size_t>(PictureWidth, CharacterCount(table.CornerLabel) + 1);
        for (const auto& row : block.Rows)
            first = std::max(first, CharacterCount(row.front()) + (startsLeft ? 2 : 0));
        const std::string indent(first, ' ');
        lines.emplace_back();
        for (const std::string* label : {&table.CellLabel, &table.HeadLabel})
            if (!label->empty())
                lines.push_back(indent + "  " + *label);
        if (!startsLeft) {
            std::string heads = table.CornerLabel + Padding(table.CornerLabel, first);
            for (const std::string& head : block.Heads)
                heads += Padding(head + " ", PictureWidth) + head + " ";
            lines.push_back(heads);
            lines.emplace_back(CharacterCount(heads), '-');
        }
        for (const auto& row : block.Rows) {
            std::string line = startsLeft ? row.front() + Padding(row.front(), first)
                                          : Padding(row.front(), first) + row.front();
            for (std::size_t i = 1; i < row.size(); ++i)
                line += row[i];
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<std::string> TabbedLines(const TableLayout& table) {
    std::vector<std::string> lines = table.Title;
    for (const TableBlock& block : table.Blocks) {
        lines.emplace_back();
        for (const std::string* label : {&table.CellLabel, &table.HeadLabel})
            if (!label->empty())
                lines.push_back("\t" + *label);
        if (!table.StartsWithWords) {
            lines.push_back(table.CornerLabel);
            for (const std::string& head : block.Heads)
                lines.back() += "\t" + head;
        }
        for (const auto& row : block.Rows) {
            lines.push_back(TrimmedCell(row.front()));
            for (std::size_t i = 1; i < row.size(); ++i)
                lines.back() += "\t" + TrimmedCell(row[i]);
        }
    }
    return lines;
}

std::string TrimmedCell(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Point DrawTable(Surface& surface, const TableLayout& table,
                const std::vector<std::string>& paragraphs) {
    return TableDrawer(surface, table).Draw(paragraphs);
}

} // namespace quorvanta
