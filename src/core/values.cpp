#include "core/values.h"

#include "core/analysis_state.h"
#include "core/general.h"

namespace quorvanta {

bool HasValue(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return false;
    const std::size_t last = text.find_last_not_of(' ');
    return text.compare(first, last - first + 1, "-") != 0;
}

bool AllValuesPresent() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !HasValue(ParText(ParKind(i))))
            return false;
    return true;
}

void ReadParValues() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        ParValue(i) = ReadNumber(ParText(ParKind(i)));
}

} // namespace quorvanta
