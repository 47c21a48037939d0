// Reference data as text: tab-separated columns, the first line names them, after lines
// of comment that begin with "#".
#pragma once

#include <string>
#include <vector>

namespace quorvanta::checks {

// The rows of a file of checks/data, without the line of names; every row has as many cells as that
// line. Throws std::runtime_error if the file is missing, empty or ragged.
std::vector<std::vector<std::string>> ReadTsv(const std::string& fileName);

} // namespace quorvanta::checks
