#include "core/kinds.h"
#include "output/sizes_note.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 paired = 1;
constexpr i16 power = Kind::Power;
constexpr i16 sd = Kind::Sd;
constexpr i16 size1 = Kind::Size1;
constexpr i16 ratio = Kind::Size2Over1;

class SizesNotes : public AnalysisFixture {};

// 1.5 times 17 are 25.5: 26 whole subjects, 43 together.
TEST_F(SizesNotes, TellTheSecondSizeAndTheTotalBesideARatio) {
    OpenTest(unpaired);
    Pick(Group::Size2, 2);
    AcceptOptions();
    ASSERT_GE(PositionOf(ratio), 0);
    Type(size1, "17");
    Type(ratio, "1.5");
    Solve(power);
    const std::string note = "Total sample size of 43 (17 in sample 1 and 26 in sample 2)";
    EXPECT_EQ(SizesNote(PositionOf(size1)), note);
    EXPECT_EQ(SizesNote(PositionOf(ratio)), note);
    EXPECT_EQ(SizesNote(PositionOf(sd)), "");
    EXPECT_EQ(SizesNote(static_cast<i16>(NoOfPar + 1)), "");
    Type(size1, "18");
    EXPECT_EQ(SizesNote(PositionOf(size1)), "") << "no longer what was calculated with";
}

// As a file may hold it beside a result: what shows the note is not to fail.
TEST_F(SizesNotes, AreNotToldOfSizesThatNoNumberHolds) {
    OpenTest(unpaired);
    Pick(Group::Size2, 2);
    AcceptOptions();
    Solve(power);
    for (const std::string& text : {std::string(400, '9'), std::string("1E400"),
                                    std::string(300, '9'), std::string("-5"), std::string("x")}) {
        ParText(size1) = text;
        Calculated = True;
        EXPECT_NO_THROW(SizesNote(PositionOf(ratio))) << text;
    }
    ParText(size1) = "1E400";
    EXPECT_EQ(SizesNote(PositionOf(ratio)), "");
}

TEST_F(SizesNotes, AreNotNeededForASingleSize) {
    OpenTest(paired);
    AcceptOptions();
    ASSERT_EQ(Calculated, True);
    for (i16 i = 0; i <= NoOfPar; ++i)
        EXPECT_EQ(SizesNote(i), "");
}

} // namespace
} // namespace quorvanta::checks
