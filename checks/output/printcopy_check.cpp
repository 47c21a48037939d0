#include "core/analysis_file.h"
#include "core/driver.h"
#include "core/records.h"
#include "core/run.h"
#include "core/save_file.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "output/printcopy.h"
#include "output/saving.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"
#include "support/recording_surface.h"
#include "support/temporary_folder.h"

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = 0;
constexpr i16 size1 = 4;

class Outputs : public AnalysisFixture {
  protected:
    void OpenWithResult(i16 windowKind) {
        FileCommand(windowKind);
        NewTest(unpaired);
        Pick(1, 1);
        AcceptOptions();
        if (windowKind == CalculationWindow)
            SolveFor(PositionOf(size1));
        else
            RunOrCancel();
    }

    std::string Saved(const std::string& name) {
        return LoadFile(folder.Path(name), 1U << 20U).value_or("(not saved)");
    }

    bool HasText(const RecordingSurface& surface, const std::string& part) {
        for (const auto& text : surface.Texts)
            if (text.Text.find(part) != std::string::npos)
                return true;
        return false;
    }

    TemporaryFolder folder;
};

TEST_F(Outputs, NamesOfTheWindowInFront) {
    OpenWithResult(CalculationWindow);
    EXPECT_EQ(WindowKindName(), "Calculation");
    platform.Show(FloatingWindow::DistrGraph);
    EXPECT_EQ(WindowKindName(), "Distribution Graph");
    platform.Show(FloatingWindow::Summary);
    EXPECT_EQ(WindowKindName(), "Summary");
    platform.Shown.clear();
    OpenWithResult(TableWindow);
    EXPECT_EQ(WindowKindName(), "Table");
    OpenWithResult(GraphWindow);
    EXPECT_EQ(WindowKindName(), "Graph");
    Analysis(AnalysisNo).WindowKind = SimulationWindow;
    EXPECT_EQ(WindowKindName(), "Monte Carlo");
}

TEST_F(Outputs, ACalculationIsCopiedWithItsStatement) {
    OpenWithResult(CalculationWindow);
    FileCommand(FileCopyOutput);
    const std::string& text = platform.PlainClipboard;
    EXPECT_NE(text.find("Student's t-test, Unpaired, two-sided."), std::string::npos);
    EXPECT_NE(text.find("Significance Level"), std::string::npos);
    EXPECT_NE(text.find("Sample Size 1"), std::string::npos);
    EXPECT_NE(text.find("  " + ParText(size1)), std::string::npos);
    EXPECT_NE(text.find("The test used is"), std::string::npos);
    EXPECT_EQ(platform.RtfClipboard.substr(0, 6), "{\\rtf0");
    EXPECT_NE(platform.RtfClipboard.find("Sample Size 1\\tab " + ParText(size1)),
              std::string::npos);
    ASSERT_EQ(platform.Messages.size(), 1U);
    EXPECT_EQ(platform.Messages[0].Text,
              "Calculation Has Been Copied To the Clipboard for Pasting Into Other Applications");
    EXPECT_EQ(platform.Messages[0].Title, "Copy");
}

TEST_F(Outputs, ATableIsCopiedWithItsNumbers) {
    OpenWithResult(TableWindow);
    FileCommand(FileCopyOutput);
    EXPECT_NE(platform.PlainClipboard.find("H1: Mean 2 - Mean 1"), std::string::npos);
    EXPECT_NE(platform.PlainClipboard.find("ranging from"), std::string::npos);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Table Has Been Copied To the Clipboard for Pasting Into Other Applications"});
    EXPECT_TRUE(platform.FormsAsked.empty());
}

TEST_F(Outputs, AGraphAsksForPictureOrText) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture, OutputForm::Text, std::nullopt};
    FileCommand(FileCopyOutput);
    ASSERT_EQ(platform.CopiedPictures.size(), 1U);
    RecordingSurface surface(6, 4);
    platform.CopiedPictures[0](surface);
    EXPECT_TRUE(HasText(surface, "Student's t-test"));
    EXPECT_GT(surface.Lines.size(), 5U);
    EXPECT_TRUE(platform.PlainClipboard.empty());

    FileCommand(FileCopyOutput);
    EXPECT_FALSE(platform.PlainClipboard.empty());
    EXPECT_EQ(platform.CopiedPictures.size(), 1U);

    platform.Messages.clear();
    FileCommand(FileCopyOutput);
    EXPECT_TRUE(platform.Messages.empty()) << "given up";
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(platform.FormsAsked, (std::vector<OutputAction>(3, OutputAction::Copy)));
}

TEST_F(Outputs, TheSummaryInFrontIsCopiedAlone) {
    OpenWithResult(TableWindow);
    platform.Show(FloatingWindow::Summary);
    FileCommand(FileCopyOutput);
    EXPECT_EQ(platform.PlainClipboard.find("\n\n"), std::string::npos);
    EXPECT_EQ(platform.RtfClipboard, RtfDocument(SumStatement()));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Summary Has Been Copied To the Clipboard for Pasting Into Other Applications"});
}

TEST_F(Outputs, SavesAsRtf) {
    OpenWithResult(TableWindow);
    platform.FileNames.push_back(folder.Path("t.rtf"));
    FileCommand(FileSaveOutput);
    EXPECT_EQ(platform.FileDialogs[0].Title, "Save Table");
    EXPECT_EQ(platform.FileDialogs[0].DefaultExtension, "rtf");
    EXPECT_EQ(platform.FileDialogs[0].FileName, "Table1");
    EXPECT_EQ(Saved("t.rtf").substr(0, 6), "{\\rtf0");
    EXPECT_EQ(Saved("t.rtf").back(), '}');
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(AnalysisState(1).Changed, True) << "the analysis itself is not saved";
}

TEST_F(Outputs, SavesAGraphAsABitmap) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture};
    platform.BitmapBytes = "BM....";
    platform.FileNames.push_back(folder.Path("g.bmp"));
    FileCommand(FileSaveOutput);
    EXPECT_EQ(platform.FileDialogs[0].Filter, "Graph Files (*.bmp)|*.bmp");
    EXPECT_EQ(Saved("g.bmp"), "BM....");
    EXPECT_EQ(platform.FormsAsked, std::vector<OutputAction>{OutputAction::Save});
}

TEST_F(Outputs, AnOutputThatCantBeWrittenEndsLikeACancel) {
    OpenWithResult(TableWindow);
    platform.FileNames.push_back(folder.Path("no/t.rtf"));
    FileCommand(FileSaveOutput);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(platform.Statuses,
              std::vector<std::string>{"The Output Can't Be Saved. The File " +
                                       folder.Path("no/t.rtf") + " Can't Be Written."});
}

TEST_F(Outputs, PrintingATextShowsItFirst) {
    OpenWithResult(CalculationWindow);
    FileCommand(FilePrintOutput);
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Output));
    EXPECT_TRUE(platform.Printed.empty());
    OutputResult(OutputAction::Print);
    ASSERT_EQ(platform.PrintedForms, std::vector<OutputForm>{OutputForm::Text});
    RecordingSurface page(7, 10);
    page.Pages = true;
    platform.Printed[0](page);
    EXPECT_TRUE(HasText(page, "Sample Size 1"));
    EXPECT_TRUE(HasText(page, "The test used is"));
    for (const auto& text : page.Texts)
        EXPECT_LE(text.At.X + text.Width, 7) << text.Text;
}

TEST_F(Outputs, PrintingAGraph) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture, OutputForm::Text};
    FileCommand(FilePrintOutput);
    ASSERT_EQ(platform.PrintedForms, std::vector<OutputForm>{OutputForm::Picture});
    RecordingSurface page(10, 7);
    page.Printer = true;
    platform.Printed[0](page);
    EXPECT_GT(page.Lines.size(), 5U);
    FileCommand(FilePrintOutput);
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Output));
}

TEST_F(Outputs, PrintingTheSummaryPrintsIt) {
    OpenWithResult(CalculationWindow);
    platform.Show(FloatingWindow::Summary);
    FileCommand(FilePrintOutput);
    EXPECT_EQ(platform.Printed.size(), 1U);
}

// What is given out belongs to the values that the window shows.
TEST_F(Outputs, AStaleTableIsCalculatedAnew) {
    OpenWithResult(TableWindow);
    const auto before = TableY;
    Type(alpha, "0.01");
    ASSERT_EQ(Calculated, False);
    FileCommand(FileCopyOutput);
    EXPECT_EQ(Calculated, True);
    EXPECT_NE(TableY, before);
    EXPECT_FALSE(platform.PlainClipboard.empty());
}

TEST_F(Outputs, AStaleTableThatCantBeCalculatedGivesNothing) {
    OpenWithResult(TableWindow);
    TypedAxisText(AxisText::Xstep, "0");
    FileCommand(FileCopyOutput);
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xstep Must Be # 0."});
    EXPECT_TRUE(platform.PlainClipboard.empty());
    EXPECT_EQ(Cancelled, False);
}

TEST_F(Outputs, WithoutAResultThereIsNothingToGive) {
    FileCommand(FileCopyOutput);
    FileCommand(CalculationWindow);
    FileCommand(FileCopyOutput);
    NewTest(unpaired);
    AcceptOptions();
    Type(alpha, "");
    Type(alpha, "0.05");
    ASSERT_EQ(Calculated, False);
    for (const i16 entry : {FilePrintOutput, FileCopyOutput, FileSaveOutput})
        FileCommand(entry);
    EXPECT_FALSE(HasOutput());
    EXPECT_TRUE(platform.PlainClipboard.empty());
    EXPECT_TRUE(platform.FileDialogs.empty());
    EXPECT_TRUE(platform.Messages.empty());
}

} // namespace
} // namespace quorvanta::checks
