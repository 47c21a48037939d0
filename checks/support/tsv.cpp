#include "support/tsv.h"

#include "validation/cells.h"

#include <fstream>
#include <stdexcept>

namespace quorvanta::checks {

std::vector<std::vector<std::string>> ReadTsv(const std::string& fileName) {
    std::ifstream file(std::string(CHECK_DATA_DIR) + "/" + fileName);
    std::string line;
    do
        std::getline(file, line);
    while (file && line.starts_with('#'));
    if (!file)
        throw std::runtime_error("no data in " + fileName);
    const std::size_t columns = validation::CellsOf(line).size();
    std::vector<std::vector<std::string>> rows;
    while (std::getline(file, line)) {
        rows.push_back(validation::CellsOf(line));
        if (rows.back().size() != columns)
            throw std::runtime_error(fileName + ": " + line);
    }
    if (rows.empty())
        throw std::runtime_error("no rows in " + fileName);
    return rows;
}

} // namespace quorvanta::checks
