// Where the reference values lie: in the program itself, or in a folder of the user's.
#pragma once

#include "validation/run.h"

#include <QString>

#include <string>
#include <vector>

namespace quorvanta::validation {

// Those that are compiled into the program, so that they can't be changed without changing its
// file, whose checksum the package and the report name. In the order of their names.
std::vector<DataFile> BuiltInData();

// Those in a folder that is laid out like checks/data; files of other names there are left alone.
// Throws std::runtime_error if one can't be read.
std::vector<DataFile> DataInFolder(const QString& folder);

// SHA-256 over the names and the bytes of all of them, in hexadecimal digits.
std::string ChecksumOf(const std::vector<DataFile>& data);

} // namespace quorvanta::validation
