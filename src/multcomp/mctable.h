// The table "Prob (Reject Test No)" of a simulated multiple comparison.
#pragma once

#include <string>
#include <vector>

namespace quorvanta {

// Heads of its columns, and a row for each test.
struct McTable {
    std::vector<std::string> Heads;
    std::vector<std::vector<std::string>> Rows;
};

} // namespace quorvanta
