// Numbers in texts, by the names of the checks.
#pragma once

#include "validation/number.h"

namespace quorvanta::checks {

using validation::NumberText;
using validation::ParseNumber;

} // namespace quorvanta::checks
