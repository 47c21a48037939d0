#include "tests/teststatistic.h"

namespace quorvanta {

TestStatistic NotedStatistic;

} // namespace quorvanta
