// What a search that finds nothing may say.
#pragma once

#include <regex>
#include <string>

namespace quorvanta::checks {

// "Can't Be Calculated.", with or without the word on the left tail, or the range of a parameter.
inline bool IsSearchMessage(const std::string& text) {
    static const std::regex failure("Can't Be Calculated\\.( Please Check if TickBox 'Reject in "
                                    "Left Tail' Should Be (UnT|T)icked\\.)?");
    static const std::regex range(
        ".+ Has To Be ((Less|Greater) Than or )?Equal to -?[0-9]+(\\.[0-9]+)?\\.");
    return std::regex_match(text, failure) || std::regex_match(text, range);
}

} // namespace quorvanta::checks
