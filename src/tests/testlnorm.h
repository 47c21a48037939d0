// TESTLNORM and TESTLSTU: tests of medians of lognormal distributions, with known and with
// estimated shape. They are the tests of means on the logarithms of the observations.
#pragma once

#include "tests/testnor.h"
#include "tests/teststud.h"

namespace quorvanta {

struct TESTLNORM : TESTNOR {};

struct TESTLSTU : TESTSTUD {};

} // namespace quorvanta
