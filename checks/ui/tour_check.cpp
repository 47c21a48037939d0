// The road of one request, from the empty main window to the number.
#include "core/analysis_state.h"
#include "core/general.h"
#include "core/search.h"
#include "tour/tour.h"
#include "ui/program.h"
#include "ui/qttext.h"

#include <gtest/gtest.h>
#include <sstream>

namespace quorvanta {
namespace {

// Two-sample t-test, two-sided, level 0.05, difference 0.5, standard deviation 1: the exact
// noncentral t distribution (R 4.2, power.t.test) gives n = 63.76561 per group for power 0.80, and
// power 0.8014596 for n = 64.
constexpr f64 exactSize = 63.76561;
constexpr f64 exactPower = 0.8014596;

TEST(Tour, EndsAtTheSampleSizeOfTheExactTest) {
    Program program;
    std::ostringstream story;
    const TourReading reading = RunTour(program.Window(), story, QString());
    EXPECT_EQ(reading.Headline, "Student's t-test, Unpaired, two-sided.");
    EXPECT_EQ(reading.SampleSize, "64") << story.str();
    EXPECT_NEAR(ReadNumber(FromQt(reading.Power)), exactPower, 0.001);

    // The size before it was rounded up to whole subjects.
    UnknownParNo = 5;
    ParValue(1) = 0.80;
    EXPECT_NEAR(SolveUnknown(), exactSize, 0.5);
}

} // namespace
} // namespace quorvanta
