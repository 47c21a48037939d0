// The help, opened by context number.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The number of the contents.
inline constexpr i32 HelpContents = 0;

// Opens the help on the topic of that number.
void OpenHelp(i32 number);

// Opens the help on its search.
void OpenHelpSearch();

} // namespace quorvanta
