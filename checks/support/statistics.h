// How much a statistical check draws: a tenth of the whole, which finds what is plainly wrong, or
// the whole, which takes minutes:
//   QUORVANTA_STATISTICS=whole ./test
#pragma once

#include <cstdlib>
#include <string_view>

namespace quorvanta::checks {

inline bool WholeStatistics() {
    const char* wish = std::getenv("QUORVANTA_STATISTICS");
    return wish != nullptr && std::string_view(wish) == "whole";
}

inline int DrawsOf(int whole) {
    return WholeStatistics() ? whole : whole / 10;
}

} // namespace quorvanta::checks
