// The reference cases of the program's own validation, by the names of the checks.
#pragma once

#include "validation/cases.h"

namespace quorvanta::checks {

using namespace validation;

} // namespace quorvanta::checks
