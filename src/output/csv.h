// Tables as comma-separated values (RFC 4180, 2005), for spreadsheets and statistics programs.
#pragma once

#include "output/table_layout.h"

#include <string>
#include <string_view>

namespace quorvanta {

// A field of a record: quoted where it has to be, with an apostrophe before what is no number but
// what a spreadsheet would take for a formula.
std::string CsvField(std::string_view text);

// The table in UTF-8 with a byte order mark, without which some spreadsheets take the bytes for
// another character set. The blocks stand side by side. The first record names the columns: x, then
// the y of each z. A number has a decimal point, whatever was typed; a cell without a value is
// empty.
//
// What the table is of stands in further columns, each in the first record below its name: "Title",
// "Statement", "Program". Comments before or behind the table would have to be left out by hand in
// one program and would be taken for values in another; so every record has the same fields.
std::string CsvTable(const TableLayout& table, const std::string& statement);

} // namespace quorvanta
