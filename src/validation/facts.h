// What a report says of the validation itself: versions, files with their checksums, machine, date.
#pragma once

#include "validation/report.h"
#include "validation/run.h"

#include <QString>

#include <string>
#include <utility>
#include <vector>

namespace quorvanta::validation {

// `dataFolder` is empty for the values that are part of the program, `startedFrom` the program file
// that asked for the validation, empty without one.
std::vector<std::pair<std::string, std::string>>
FactsOf(const std::vector<DataFile>& data, const QString& dataFolder, const QString& startedFrom);

// The foot of each page: program, version and date.
QString FootOf(const Report& report);

} // namespace quorvanta::validation
