#include "output/csv.h"

#include "core/general.h"
#include "core/number_text.h"
#include "core/program_name.h"

#include <vector>

namespace quorvanta {

namespace {

constexpr const char* ByteOrderMark = "\xEF\xBB\xBF";
constexpr const char* NoCellValue = "-";

using Record = std::vector<std::string>;

std::string HeadOf(const TableLayout& table, const std::string& head) {
    if (head.empty())
        return table.CellLabel;
    return table.CellLabel + " (" + table.HeadLabel + " = " + TrimmedCell(head) + ")";
}

// The first record of a table, then the rows, those of further blocks beside those of the first.
std::vector<Record> RecordsOf(const TableLayout& table) {
    std::vector<Record> records;
    if (table.StartsWithWords)
        records.push_back({"Parameter", "Value"});
    else
        records.push_back({table.CornerLabel});
    for (const TableBlock& block : table.Blocks) {
        for (const std::string& head : block.Heads)
            records.front().push_back(HeadOf(table, head));
        records.resize(block.Rows.size() + 1);
        for (std::size_t k = 0; k < block.Rows.size(); ++k) {
            Record& record = records[k + 1];
            const std::vector<std::string>& row = block.Rows[k];
            for (std::size_t j = record.empty() ? 0 : 1; j < row.size(); ++j) {
                const std::string cell = TrimmedCell(row[j]);
                record.push_back(cell == NoCellValue ? "" : DecimalText(cell).value_or(cell));
            }
        }
    }
    return records;
}

} // namespace

std::string CsvField(std::string_view text) {
    const bool seemsFormula =
        std::string_view("=+-@\t\r").find(text.substr(0, 1)) != std::string_view::npos &&
        !text.empty() && !DecimalText(text);
    std::string field = seemsFormula ? "'" : "";
    for (const char c : text)
        field += c == '"' ? std::string("\"\"") : std::string(1, c);
    const bool isQuoted = text.find_first_of(",;\"\r\n\t") != std::string_view::npos;
    return isQuoted ? '"' + field + '"' : field;
}

std::string CsvTable(const TableLayout& table, const std::string& statement) {
    std::vector<Record> records = RecordsOf(table);
    const Record notes[] = {{"Title", "Statement", "Program"},
                            {OneLine(table.Title), statement, ProgramNameAndVersion}};
    std::string csv = ByteOrderMark;
    for (std::size_t k = 0; k < records.size(); ++k) {
        const Record own = k < std::size(notes) ? notes[k] : Record(notes[0].size());
        records[k].insert(records[k].end(), own.begin(), own.end());
        for (std::size_t j = 0; j < records[k].size(); ++j)
            csv += (j == 0 ? "" : ",") + CsvField(records[k][j]);
        csv += "\r\n";
    }
    return csv;
}

} // namespace quorvanta
