#include "core/records.h"
#include "core/showpar.h"
#include "output/settings.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"

namespace quorvanta::checks {
namespace {

class Settings : public AnalysisFixture {
  protected:
    void Open(i16 windowKind) {
        FileCommand(windowKind);
        NewTest(0);
        AcceptOptions();
        RunOrCancel();
        StoreAnalysis();
        AnalysisState(1).Changed = False;
        before = Analysis(1);
    }

    // Refused with this message, and nothing has changed.
    template <class Edited>
    void ExpectRefused(const Edited& edited, const std::string& text,
                       const std::string& title = "") {
        platform.Messages.clear();
        EXPECT_FALSE(ApplySettings(edited));
        ASSERT_EQ(platform.Messages.size(), 1U) << text;
        EXPECT_EQ(platform.Messages[0].Text, text);
        EXPECT_EQ(platform.Messages[0].Title, title);
        EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
        StoreAnalysis();
        EXPECT_EQ(Analysis(1), before);
        EXPECT_EQ(AnalysisState(1).Changed, False);
    }

    AnalysisRecord before;
};

TEST_F(Settings, ATableStartsWithItsOwn) {
    Open(TableWindow);
    const TableSettings settings = CurrentTableSettings();
    EXPECT_EQ(settings.Title, std::vector<std::string>{"Student's t-test, Unpaired, two-sided."});
    EXPECT_EQ(settings.Columns, "4");
    EXPECT_EQ(settings.Decimals, "Auto");
    EXPECT_EQ(settings.Type.FontName, "Arial");
    EXPECT_EQ(settings.Type.FontSize, "9");
    EXPECT_TRUE(settings.Type.Bold);
}

TEST_F(Settings, ATableTakesWhatIsTyped) {
    Open(TableWindow);
    const int refreshes = platform.Refreshes;
    EXPECT_TRUE(ApplySettings(TableSettings{{"One", "Two"}, "2", "3", {"Serif", "12,5", false}}));
    EXPECT_EQ(OutTitle.HighBound(), 1);
    EXPECT_EQ(OutTitle(1), "Two");
    EXPECT_EQ(OutCurveWidth, 2);
    EXPECT_EQ(OutDecimals, 3);
    EXPECT_EQ(OutFontName, "Serif");
    EXPECT_EQ(OutFontSize, "12,5");
    EXPECT_EQ(OutFontBold, 0);
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(Analysis(1).OutDecimals, 3);
    EXPECT_GT(platform.Refreshes, refreshes);
    EXPECT_EQ(Calculated, True) << "the result is the same";
    EXPECT_TRUE(ApplySettings(TableSettings{{}, "2", "Auto", {"Serif", "12", false}}));
    EXPECT_EQ(OutDecimals, -1);
    EXPECT_EQ(OutTitle.HighBound(), 0);
    EXPECT_EQ(OutTitle(0), "");
}

TEST_F(Settings, NoDecimalsAreNotAutomaticOnes) {
    Open(TableWindow);
    TableSettings settings = CurrentTableSettings();
    settings.Decimals = "0";
    EXPECT_TRUE(ApplySettings(settings));
    EXPECT_EQ(CurrentTableSettings().Decimals, "0");
}

TEST_F(Settings, ATableRefusesWhatItCantBe) {
    Open(TableWindow);
    const TableSettings good = CurrentTableSettings();
    const auto edited = [&good](auto edit) {
        TableSettings settings = good;
        edit(settings);
        return settings;
    };
    constexpr const char* missing = "A Value Is Missing.";
    constexpr const char* title = "Can't Calculate.";
    ExpectRefused(edited([](auto& s) { s.Columns = ""; }), missing, title);
    ExpectRefused(edited([](auto& s) { s.Decimals = " "; }), missing, title);
    ExpectRefused(edited([](auto& s) { s.Type.FontName = ""; }), missing, title);
    ExpectRefused(edited([](auto& s) { s.Type.FontSize = ""; }), missing, title);
    for (const char* columns : {"0", "101", "2.5", "x", "-1"})
        ExpectRefused(edited([columns](auto& s) { s.Columns = columns; }),
                      "No Of Columns Has To Be a Whole Number from 1 to 100.");
    for (const char* decimals : {"-1", "9", "auto"})
        ExpectRefused(edited([decimals](auto& s) { s.Decimals = decimals; }),
                      "No Of Decimals Has To Be a Whole Number from 0 to 8.");
    ExpectRefused(edited([](auto& s) { s.Type.FontSize = "0"; }),
                  "Font Size Has To Be a Number from 1 to 200.");
    ExpectRefused(edited([](auto& s) { s.Title.resize(17); }), "The Title Has More Than 16 Lines.");
}

TEST_F(Settings, AGraphTakesWhatIsTyped) {
    Open(GraphWindow);
    GraphSettings settings = CurrentGraphSettings();
    EXPECT_EQ(settings.CurveWidth, "4");
    EXPECT_EQ(settings.XAxis(1), "Auto");
    settings.XAxis(1) = "-0,5";
    settings.YAxis(2) = "1";
    settings.YAxis(3) = "0.25";
    settings.ZLabel = "Level";
    settings.CurveWidth = "0";
    EXPECT_TRUE(ApplySettings(settings));
    EXPECT_EQ(OutXAxis(1), "-0,5");
    EXPECT_EQ(OutYAxis(2), "1");
    EXPECT_EQ(OutYAxis(3), "0.25");
    EXPECT_EQ(OutZLabel, "Level");
    EXPECT_EQ(OutCurveWidth, 0);
    EXPECT_EQ(AnalysisState(1).Changed, True);
}

TEST_F(Settings, AGraphRefusesWhatItCantBe) {
    Open(GraphWindow);
    const GraphSettings good = CurrentGraphSettings();
    const auto edited = [&good](auto edit) {
        GraphSettings settings = good;
        edit(settings);
        return settings;
    };
    for (int i = 1; i <= 3; ++i) {
        ExpectRefused(edited([i](auto& s) { s.XAxis(i) = ""; }), "A Value Is Missing.",
                      "Can't Calculate.");
        ExpectRefused(edited([i](auto& s) { s.YAxis(i) = "  "; }), "A Value Is Missing.",
                      "Can't Calculate.");
    }
    ExpectRefused(edited([](auto& s) { s.XAxis(1) = "x"; }), "Xmin Has To Be a Number or Auto.");
    ExpectRefused(edited([](auto& s) { s.YAxis(2) = "1e5"; }), "Ymax Has To Be a Number or Auto.");
    ExpectRefused(edited([](auto& s) { s.YAxis(3) = "auto"; }),
                  "Ytick Has To Be a Number or Auto.");
    ExpectRefused(edited([](auto& s) { s.XAxis(1) = "2", s.XAxis(2) = "1"; }),
                  "Xmin Must Be < Xmax.");
    ExpectRefused(edited([](auto& s) { s.YAxis(1) = "1", s.YAxis(2) = "1"; }),
                  "Ymin Must Be < Ymax.");
    ExpectRefused(edited([](auto& s) { s.XAxis(3) = "0"; }), "Xtick Has To Be Greater Than 0.");
    ExpectRefused(edited([](auto& s) { s.CurveWidth = "51"; }),
                  "Curve Width Has To Be a Whole Number from 0 to 50.");
    ExpectRefused(edited([](auto& s) { s.CurveWidth = ""; }), "A Value Is Missing.",
                  "Can't Calculate.");
}

TEST_F(Settings, ASummaryHasATypeOfItsOwn) {
    const TypeSettings former = CurrentSummarySettings();
    EXPECT_TRUE(ApplySummarySettings({"Serif", "14", true}));
    EXPECT_EQ(SummaryFont, "Serif");
    EXPECT_EQ(SummaryFontSize, 14);
    EXPECT_EQ(SummaryBold, 1);
    EXPECT_FALSE(ApplySummarySettings({"Serif", "9.5", true}));
    EXPECT_FALSE(ApplySummarySettings({"", "9", true}));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"Font Size Has To Be a Whole Number from 1 to 200.",
                                        "A Value Is Missing."}));
    EXPECT_EQ(SummaryFontSize, 14);
    EXPECT_TRUE(ApplySummarySettings(former));
}

} // namespace
} // namespace quorvanta::checks
