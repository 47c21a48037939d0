// The help, opened by context number.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Opens the help on the topic of that number, 0: on its contents.
void OpenHelp(i32 number);

} // namespace quorvanta
