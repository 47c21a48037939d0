#include "output/rtf_table.h"

#include "core/codepage.h"
#include "output/rtf.h"
#include "output/statement.h"

#include <algorithm>
#include <vector>

namespace quorvanta {

namespace {

constexpr int TwipsPerPoint = 20;
constexpr int PageTwips = 9000; // between the usual margins of the narrower paper
constexpr int GapTwips = 70;    // beside a text in its cell

std::string Word(const char* word, int number) {
    return std::string("\\") + word + std::to_string(number);
}

// The right edge of each column, twips.
std::vector<int> ColumnEdges(const TableLayout& table, const TableBlock& block) {
    const std::size_t columns = block.Rows.empty() ? 1 : block.Rows.front().size();
    std::vector<std::size_t> characters(columns, 1);
    const auto widen = [&characters](std::size_t column, const std::string& text) {
        characters[column] = std::max(characters[column], CharacterCount(text));
    };
    widen(0, table.CornerLabel);
    for (std::size_t j = 0; j < block.Heads.size(); ++j)
        widen(j + 1, block.Heads[j]);
    for (const auto& row : block.Rows)
        for (std::size_t j = 0; j < row.size(); ++j)
            widen(j, TrimmedCell(row[j]));

    // Most characters of most types are narrower.
    constexpr f64 ems = 0.6;
    const f64 perCharacter = ems * TwipsPerPoint * static_cast<f64>(SummaryFontSize);
    std::vector<f64> edges;
    f64 edge = 0;
    for (const std::size_t count : characters)
        edges.push_back(edge += static_cast<f64>(count) * perCharacter + 4 * GapTwips);
    const f64 shrink = std::min(1.0, PageTwips / edge);
    std::vector<int> twips;
    for (const f64 wide : edges)
        twips.push_back(static_cast<int>(wide * shrink));
    return twips;
}

struct RowStyle {
    bool IsHead = false;
    bool HasTopRule = false;
    bool HasBottomRule = false;
    bool StartsLeft = false; // the first cell holds words
    bool AllLeft = false;
};

std::string Row(const std::vector<int>& edges, const std::vector<std::string>& cells,
                const RowStyle& style) {
    std::string rtf = "\\trowd\\trkeep" + Word("trgaph", GapTwips);
    if (style.IsHead)
        rtf += "\\trhdr";
    for (const int edge : edges) {
        if (style.HasTopRule)
            rtf += "\\clbrdrt\\brdrs\\brdrw10";
        if (style.HasBottomRule)
            rtf += "\\clbrdrb\\brdrs\\brdrw10";
        rtf += Word("cellx", edge);
    }
    for (std::size_t j = 0; j < cells.size(); ++j) {
        const bool isLeft = style.AllLeft || (j == 0 && style.StartsLeft);
        rtf += std::string("\\pard\\intbl") + (isLeft ? "\\ql " : "\\qr ") + RtfText(cells[j]) +
               "\\cell ";
    }
    return rtf + "\\row ";
}

// Over the heads, what the cells and the heads are; then the heads.
std::string HeadRows(const TableLayout& table, const TableBlock& block,
                     const std::vector<int>& edges) {
    std::string rtf;
    RowStyle style;
    style.IsHead = true;
    style.HasTopRule = true;
    for (const std::string* label : {&table.CellLabel, &table.HeadLabel})
        if (!label->empty()) {
            style.AllLeft = true;
            rtf += Row({edges.front(), edges.back()}, {"", *label}, style);
            style.HasTopRule = false;
        }
    if (table.StartsWithWords)
        return rtf;
    style.AllLeft = false;
    style.StartsLeft = true;
    style.HasBottomRule = true;
    std::vector<std::string> heads = {table.CornerLabel};
    heads.insert(heads.end(), block.Heads.begin(), block.Heads.end());
    return rtf + Row(edges, heads, style);
}

std::string BlockTable(const TableLayout& table, const TableBlock& block) {
    const std::vector<int> edges = ColumnEdges(table, block);
    std::string rtf = HeadRows(table, block, edges);
    RowStyle style;
    style.StartsLeft = table.StartsWithWords;
    for (std::size_t k = 0; k < block.Rows.size(); ++k) {
        style.HasTopRule = k == 0 && rtf.empty();
        style.HasBottomRule = k + 1 == block.Rows.size();
        std::vector<std::string> cells;
        for (const std::string& cell : block.Rows[k])
            cells.push_back(TrimmedCell(cell));
        rtf += Row(edges, cells, style);
    }
    return rtf;
}

} // namespace

std::string RtfTable(const TableLayout& table) {
    std::string rtf;
    for (const std::string& line : table.Title)
        rtf += RtfText(line) + "\\par ";
    for (const TableBlock& block : table.Blocks)
        rtf += "\\par " + BlockTable(table, block) + "\\pard ";
    return rtf;
}

} // namespace quorvanta
