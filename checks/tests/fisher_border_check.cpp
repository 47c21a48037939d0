// Fisher's test on both sides of 50 subjects per group: exact below, an approximation above, and
// the help says how far apart they are.
#include "core/driver.h"
#include "core/kinds.h"
#include "core/values.h"
#include "output/format.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/tsv.h"
#include "tests/testfisher.h"

#include <fstream>
#include <sstream>

namespace quorvanta::checks {
namespace {

class FisherBorder : public AnalysisFixture {};

std::string HelpTopic() {
    std::ifstream file(HELP_DIR "/topics/320-fishers-exact-test.md");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_F(FisherBorder, IsExactBelowAndPublishedAbove) {
    const std::string help = HelpTopic();
    int above = 0;
    for (const auto& row : ReadTsv("fisher_border.tsv")) {
        const f64 exact = ParseNumber(row[3]);
        const f64 approximation = ParseNumber(row[4]);
        OpenTest(100);
        ChooseTails(TwoSided);
        AcceptOptions();
        Type(Kind::SignificanceLevel, "0.05");
        Type(Kind::H1Proportion1, row[0]);
        Type(Kind::H1Proportion2, row[1]);
        Type(Kind::Size1, row[2]);
        Type(Kind::Size2, row[2]);
        Solve(Kind::Power);
        const bool isAbove = ParseNumber(row[2]) > TESTFISHER::ExactUpTo();
        const f64 shown = ParValue(PowerParNo);
        EXPECT_NEAR(shown, isAbove ? approximation : exact, 1e-4) << row[2];
        EXPECT_NE(help.find("| " + row[0] + " | " + row[1] + " | " + row[2] + " | " +
                            Format(shown, "0.000") + " | " + Format(exact, "0.000") + " |"),
                  std::string::npos)
            << row[2];
        above += isAbove ? 1 : 0;
    }
    EXPECT_EQ(above, 3);
}

} // namespace
} // namespace quorvanta::checks
