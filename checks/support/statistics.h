// How much a statistical check draws: a tenth of the whole, which finds what is plainly wrong, or
// the whole, which takes minutes:
//   QUORVANTA_STATISTICS=whole ./test
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace quorvanta::checks {

inline bool WholeStatistics() {
    const char* wish = std::getenv("QUORVANTA_STATISTICS");
    return wish != nullptr && std::string_view(wish) == "whole";
}

// The step through many like cases: each of them, or under the sanitizers, which make them all ten
// times slower and look at memory alone, one of so many.
constexpr std::size_t StepOfCases([[maybe_unused]] std::size_t underSanitizers) {
#if defined(QUORVANTA_SANITIZED)
    return underSanitizers;
#else
    return 1;
#endif
}

inline int DrawsOf(int whole) {
    return WholeStatistics() ? whole : whole / 10;
}

} // namespace quorvanta::checks
