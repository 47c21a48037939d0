// Tables of reference values, for checks of functions.
#pragma once

#include "support/number.h"
#include "validation/functions.h"

namespace quorvanta {

using validation::ReadReferenceTable;
using validation::ReferenceFunction;
using validation::ReferenceFunctions;
using validation::ReferenceRow;
using validation::ReferenceSection;

} // namespace quorvanta
