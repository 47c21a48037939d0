// A reader of comma-separated values, strict as RFC 4180 has them, for the checks alone.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvanta::checks {

using CsvRecords = std::vector<std::vector<std::string>>;

// The records without the byte order mark, which has to be there. An exception tells of a line end
// that is not CR LF, of a quote where none may stand, and of records of different lengths.
inline CsvRecords ReadCsv(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (!bytes.starts_with(mark))
        throw std::runtime_error("no byte order mark");
    bytes.remove_prefix(mark.size());
    CsvRecords records;
    while (!bytes.empty()) {
        std::vector<std::string> record(1);
        for (;;) {
            if (bytes.starts_with('"')) {
                std::size_t end = 1;
                while (end < bytes.size() &&
                       !(bytes[end] == '"' && !bytes.substr(end + 1).starts_with('"'))) {
                    record.back() += bytes[end];
                    end += bytes[end] == '"' ? 2 : 1;
                }
                if (end >= bytes.size())
                    throw std::runtime_error("an open quote");
                bytes.remove_prefix(end + 1);
            } else {
                const std::size_t end = bytes.find_first_of(",\r\n\"");
                record.back() = bytes.substr(0, end);
                bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end);
            }
            if (!bytes.starts_with(','))
                break;
            bytes.remove_prefix(1);
            record.emplace_back();
        }
        if (!bytes.starts_with("\r\n"))
            throw std::runtime_error("a record without its end");
        bytes.remove_prefix(2);
        if (!records.empty() && records.front().size() != record.size())
            throw std::runtime_error("records of different lengths");
        records.push_back(record);
    }
    return records;
}

} // namespace quorvanta::checks
